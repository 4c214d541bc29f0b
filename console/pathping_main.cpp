// SPDX-License-Identifier: GPL-3.0-or-later
// pathping for systems whose own does not print the English texts that the windows
// read. It needs what ping needs, and like it is rid of every privilege before a
// word of the command line is read.
#include <unistd.h>

#include "console/linux_network.h"
#include "console/pathping.h"
#include "console/tool.h"

int main(int count, char** arguments) {
  veltrin::LinuxNetwork network;
  // Names that are still being looked up have nobody to wait for them.
  _exit(veltrin::runTool<veltrin::Pathping>(network, count, arguments));
}
