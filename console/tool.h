// SPDX-License-Identifier: GPL-3.0-or-later
// How the main function of a console tool that uses the network runs it.
#pragma once

#include <signal.h>
#include <string>
#include <unistd.h>
#include <vector>

#include "console/network.h"
#include "console/output.h"
#include "console/privileges.h"

namespace veltrin {

// Drops all privileges, then runs a Tool, which is made of a network and an
// output and runs with its arguments, on the standard output. Returns its exit
// code; 1 when the privileges cannot be dropped.
template <typename Tool>
int runTool(Network& network, int count, char** arguments) {
  FileOutput output(STDOUT_FILENO);
  if (!dropPrivileges()) {
    output.write("The privileges of this program could not be dropped.\r\n");
    return 1;
  }
  // A reader that is gone shows as a failed write, and the tool ends in order.
  signal(SIGPIPE, SIG_IGN);
  return Tool(network, output).run(std::vector<std::string>(arguments + 1, arguments + count));
}

}  // namespace veltrin
