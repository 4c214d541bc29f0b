// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/linux_machine.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <linux/rtnetlink.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/utsname.h>
#include <systemd/sd-id128.h>

#include "machine/display_modes.h"
#include "machine/network_interfaces.h"
#include "machine/route_socket.h"

namespace veltrin {

Kernel LinuxMachine::kernel() const {
  utsname facts{};
  uname(&facts);
  return {facts.nodename, facts.release, facts.version, facts.machine};
}

std::int64_t LinuxMachine::now() const { return time(nullptr); }

LocalMoment LinuxMachine::local(std::int64_t seconds) const {
  const time_t moment = seconds;
  tm parts{};
  tzset();
  localtime_r(&moment, &parts);
  LocalMoment local;
  local.time = {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday,
                parts.tm_hour,        parts.tm_min,     parts.tm_sec};
  local.offset = static_cast<int>(parts.tm_gmtoff / 60);
  local.zone = parts.tm_zone != nullptr ? parts.tm_zone : "";
  return local;
}

std::string LinuxMachine::environment(const std::string& name) const {
  const char* value = getenv(name.c_str());
  return value != nullptr ? value : "";
}

std::optional<std::int64_t> LinuxMachine::born(const std::string& path) const {
  struct statx facts {};
  if (statx(AT_FDCWD, path.c_str(), AT_STATX_SYNC_AS_STAT, STATX_BTIME, &facts) != 0 ||
      (facts.stx_mask & STATX_BTIME) == 0) {
    return std::nullopt;
  }
  return facts.stx_btime.tv_sec;
}

std::optional<std::vector<NetworkInterface>> LinuxMachine::interfaces() const {
  RouteSocket kernel;
  LinkDump dump;
  if (!kernel.ask(RTM_GETLINK, dump) || !kernel.ask(RTM_GETADDR, dump)) {
    return std::nullopt;
  }
  return networkInterfaces(dump);
}

std::optional<FileSystemRoom> LinuxMachine::room(const std::string& folder) const {
  struct statvfs told {};
  if (statvfs(folder.c_str(), &told) != 0) {
    return std::nullopt;
  }
  return FileSystemRoom{told.f_frsize,  told.f_blocks, told.f_bfree, told.f_bavail,
                        told.f_namemax, told.f_files,  told.f_ffree};
}

std::optional<Id128> LinuxMachine::applicationId(const Id128& application) const {
  sd_id128_t asked{};
  std::copy(application.begin(), application.end(), asked.bytes);
  sd_id128_t told{};
  if (sd_id128_get_machine_app_specific(asked, &told) < 0) {
    return std::nullopt;
  }
  return std::to_array(told.bytes);
}

std::vector<DisplayMode> LinuxMachine::displayModes(const std::string& card) const {
  return displayModesOf("/dev/dri/" + card);
}

}  // namespace veltrin
