// SPDX-License-Identifier: GPL-3.0-or-later
// systeminfo for systems whose own does not print the English texts that the windows
// read. It needs no privilege: what only root may read is not told.
#include <signal.h>
#include <string>
#include <unistd.h>
#include <vector>

#include "console/output.h"
#include "console/sysinfo/systeminfo.h"
#include "machine/file_tree.h"
#include "machine/linux_machine.h"

int main(int count, char** arguments) {
  // A reader that is gone shows as a failed write, and the tool ends in order.
  signal(SIGPIPE, SIG_IGN);
  const veltrin::FileTree files;
  const veltrin::LinuxMachine machine;
  veltrin::FileOutput output(STDOUT_FILENO);
  return veltrin::SystemInfo(files, machine, output)
      .run(std::vector<std::string>(arguments + 1, arguments + count));
}
