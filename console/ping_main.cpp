// SPDX-License-Identifier: GPL-3.0-or-later
// ping for systems whose own does not print the English texts that the windows
// read.
//
// It needs an ICMP socket: Linux gives one to everybody whose group is in
// net.ipv4.ping_group_range. Elsewhere the one capability it needs is CAP_NET_RAW
// (setcap cap_net_raw+ep ping). Both sockets are open, and every privilege is
// gone, before a word of the command line is read.
#include "console/linux_network.h"
#include "console/ping.h"
#include "console/tool.h"

int main(int count, char** arguments) {
  veltrin::LinuxNetwork network;
  return veltrin::runTool<veltrin::Ping>(network, count, arguments);
}
