// SPDX-License-Identifier: GPL-3.0-or-later
// Echoes through a socket of the kernel.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/echo_bytes.h"
#include "platform/linux/echo_way.h"

namespace veltrin {

// One ICMP socket. Replies of earlier echoes, and what other programs' echoes bring in, are
// passed over: a reply must have its question's sequence number and data.
class SocketEcho : public EchoWay {
 public:
  // A datagram socket is for users in net.ipv4.ping_group_range, a raw one takes
  // CAP_NET_RAW.
  enum class Kind { Datagram, Raw };

  // Nothing when the kernel refuses the socket.
  static std::unique_ptr<SocketEcho> open(Kind kind, Wait wait);

  SocketEcho(int socket, Kind kind, Wait wait);
  ~SocketEcho() override;
  SocketEcho(const SocketEcho&) = delete;
  SocketEcho& operator=(const SocketEcho&) = delete;

  // The time is that between the sending and the reply's arrival in the kernel, however
  // late this program wakes up. An ICMP error about the echo ends the wait.
  bool exchange(const EchoQuestion& question, ICMP_ECHO_REPLY& reply) override;

 private:
  using Moment = std::chrono::steady_clock::time_point;
  struct Message;

  // Both return the system's error number, 0 when there is none.
  int send(const std::string& request, std::uint32_t address, Moment& sentAt) const;
  int receive(int flags, Message& message);

  bool readReply(const std::string& request, Message& message);
  bool readError(const std::string& request, ICMP_ECHO_REPLY& reply);
  bool dropErrors() const;

  int socket_;
  Kind kind_;
  EchoIdentity identity_;
  Wait wait_;
  std::vector<char> room_;  // for one packet
};

}  // namespace veltrin
