// SPDX-License-Identifier: GPL-3.0-or-later
// fsutil for systems that have none. It needs no privilege and changes nothing.
#include <cstdlib>
#include <memory>
#include <signal.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "console/fsutil.h"
#include "console/output.h"
#include "machine/file_tree.h"
#include "machine/linux_machine.h"

namespace {

std::string realFolder(const std::string& folder) {
  char* path = realpath(folder.c_str(), nullptr);
  std::string real = path != nullptr ? path : "";
  free(path);
  struct stat kind {};
  return stat(real.c_str(), &kind) == 0 && S_ISDIR(kind.st_mode) ? real : std::string();
}

}  // namespace

int main(int count, char** arguments) {
  // A reader that is gone shows as a failed write, and the tool ends in order.
  signal(SIGPIPE, SIG_IGN);
  const veltrin::FileTree files;
  veltrin::FileOutput output(STDOUT_FILENO);
  return veltrin::FsUtil(files, std::make_shared<veltrin::LinuxMachine>(), realFolder, output)
      .run(std::vector<std::string>(arguments + 1, arguments + count));
}
