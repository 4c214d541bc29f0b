// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/privileges.h"

#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace veltrin {

bool dropPrivileges() {
  const gid_t group = getgid();
  const uid_t user = getuid();
  if (getegid() != group && setresgid(group, group, group) != 0) {
    return false;
  }
  if (geteuid() != user && setresuid(user, user, user) != 0) {
    return false;
  }
  __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
  const __user_cap_data_struct none[_LINUX_CAPABILITY_U32S_3] = {};
  if (syscall(SYS_capset, &header, none) != 0) {
    return false;
  }
  // Without this, a superuser's program has all capabilities again as soon as it
  // starts another one (capabilities(7)).
  return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0;
}

}  // namespace veltrin
