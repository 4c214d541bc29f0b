// SPDX-License-Identifier: GPL-3.0-or-later
// Answers echoes as a test wants it, in a network whose kernel is silent (Linux).
#pragma once

#include <array>
#include <cstdint>
#include <netinet/in.h>
#include <string>
#include <sys/socket.h>
#include <unistd.h>

namespace veltrin {

class EchoAnswerer {
 public:
  EchoAnswerer()
      : socket_(socket(AF_INET, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, IPPROTO_ICMP)) {}
  ~EchoAnswerer() { close(socket_); }
  EchoAnswerer(const EchoAnswerer&) = delete;
  EchoAnswerer& operator=(const EchoAnswerer&) = delete;

  // The next echo request that has come in, without its IP header; empty when there is none.
  std::string nextRequest() {
    std::array<char, 2048> packet{};
    for (;;) {
      const ssize_t size = recv(socket_, packet.data(), packet.size(), 0);
      if (size <= 0) return {};
      const std::size_t header = static_cast<std::size_t>(packet[0] & 0x0F) * 4;
      if (packet[header] != 8) continue;
      header_.assign(packet.data(), header);
      return {packet.data() + header, static_cast<std::size_t>(size) - header};
    }
  }

  // The reply to a request.
  static std::string replyTo(std::string request) {
    request[0] = 0;
    return request;
  }

  // Says of a request that it went wrong, and quotes its head alone.
  std::string errorAbout(const std::string& request, char type, char code) const {
    return std::string{type, code} + std::string(6, '\0') + header_ + request.substr(0, 8);
  }

  // Sends a message to this machine, with its right checksum.
  void send(std::string message) const {
    message[2] = message[3] = 0;
    std::uint32_t sum = 0;
    for (std::size_t at = 0; at < message.size(); ++at) {
      const std::uint32_t byte = static_cast<std::uint8_t>(message[at]);
      sum += at % 2 == 0 ? byte << 8 : byte;
    }
    sum = ~((sum & 0xFFFF) + (sum >> 16));
    message[2] = static_cast<char>(sum >> 8 & 0xFF);
    message[3] = static_cast<char>(sum & 0xFF);
    sockaddr_in to{};
    to.sin_family = AF_INET;
    to.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    sendto(socket_, message.data(), message.size(), 0, reinterpret_cast<const sockaddr*>(&to),
           sizeof to);
  }

 private:
  int socket_;
  std::string header_;  // of the last request's packet
};

}  // namespace veltrin
