// SPDX-License-Identifier: GPL-3.0-or-later
// Sends echoes as the program does: echo_sender TOOLS-FOLDER WAY [ADDRESS TIMEOUT]...
// One line for each: the number of replies, status, time and address of whoever replied.
#include <arpa/inet.h>
#include <array>
#include <cstdlib>
#include <iostream>
#include <string_view>

#include "platform/linux/linux_icmp.h"

namespace {

using veltrin::LinuxIcmp;

LinuxIcmp::Way wayOf(std::string_view word) {
  if (word == "datagram") return LinuxIcmp::Way::Datagram;
  return word == "raw" ? LinuxIcmp::Way::Raw : LinuxIcmp::Way::Tool;
}

void send(LinuxIcmp& icmp, const char* address, std::uint32_t timeout) {
  veltrin::ICMP_ECHO_REPLY reply;
  const auto handle = icmp.IcmpCreateFile();
  const auto replies =
      icmp.IcmpSendEcho(handle, inet_addr(address), "PING!PING!PING!PING!PING!PING!", reply,
                        veltrin::kEchoReplySize, timeout);
  icmp.IcmpCloseHandle(handle);
  std::array<char, INET_ADDRSTRLEN> replier{};
  const in_addr bytes{reply.Address};
  inet_ntop(AF_INET, &bytes, replier.data(), replier.size());
  std::cout << replies << ' ' << reply.Status << ' ' << reply.RoundTripTime << ' ' << replier.data()
            << '\n';
}

}  // namespace

int main(int count, char** words) {
  if (count < 3) return 2;
  LinuxIcmp icmp(words[1], {}, {wayOf(words[2])});
  for (int at = 3; at + 1 < count; at += 2) {
    send(icmp, words[at], static_cast<std::uint32_t>(std::atoi(words[at + 1])));
  }
  return 0;
}
