// SPDX-License-Identifier: GPL-3.0-or-later
// Other sides of connections, for tests of sockets, on the loopback of this machine.
#pragma once

#include <array>
#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <netinet/in.h>
#include <string>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "gtest/gtest.h"

namespace veltrin {

// A descriptor of a socket that is closed with its owner.
class Descriptor {
 public:
  explicit Descriptor(int number = -1) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~Descriptor() {
    if (number_ >= 0) ::close(number_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int number() const { return number_; }
  bool isOpen() const { return number_ >= 0; }

 private:
  int number_;
};

inline sockaddr_in loopback(std::uint16_t port, std::uint32_t last = 1) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(0x7F000000U + last);
  return address;
}

// One end of a connection. Nothing waits.
class Peer {
 public:
  explicit Peer(Descriptor socket) : socket_(std::move(socket)) {
    fcntl(socket_.number(), F_SETFL, O_NONBLOCK);
  }

  // Connects to a port; what becomes of it shows later.
  static Peer calling(std::uint16_t port) {
    Peer peer(Descriptor(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)));
    const sockaddr_in address = loopback(port);
    static_cast<void>(::connect(peer.socket_.number(), reinterpret_cast<const sockaddr*>(&address),
                                sizeof address));
    return peer;
  }

  // Hands over as much as the system takes; how many bytes that was.
  std::size_t say(const std::string& bytes) const {
    const ssize_t taken = send(socket_.number(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
    return taken < 0 ? 0 : static_cast<std::size_t>(taken);
  }

  // All that has come in.
  std::string heard() {
    std::array<char, 65536> buffer{};
    for (;;) {
      const ssize_t taken = recv(socket_.number(), buffer.data(), buffer.size(), 0);
      if (taken == 0) ended_ = true;
      if (taken < 0 && errno == ECONNRESET) ended_ = true;
      if (taken <= 0) return text_;
      text_.append(buffer.data(), static_cast<std::size_t>(taken));
    }
  }

  // Whether the other side has ended the connection.
  bool hasEnded() {
    heard();
    return ended_;
  }

  std::uint16_t farPort() const {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    getpeername(socket_.number(), reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
  }

  void close() { socket_ = Descriptor(); }

  // Ends the connection in the way in which a crash does.
  void reset() {
    const linger atOnce{1, 0};
    setsockopt(socket_.number(), SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    close();
  }

 private:
  Descriptor socket_;
  std::string text_;
  bool ended_ = false;
};

// A listening port.
class Endpoint {
 public:
  // On 127.0.0.`last`. Port 0 is any free one.
  explicit Endpoint(std::uint16_t port = 0, std::uint32_t last = 1, int backlog = 16)
      : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {
    const int on = 1;
    setsockopt(socket_.number(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    sockaddr_in address = loopback(port, last);
    EXPECT_EQ(bind(socket_.number(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(listen(socket_.number(), backlog), 0);
    socklen_t size = sizeof address;
    getsockname(socket_.number(), reinterpret_cast<sockaddr*>(&address), &size);
    port_ = ntohs(address.sin_port);
  }

  std::uint16_t port() const { return port_; }

  // A caller that waits; without a socket when there is none.
  Descriptor answer() const {
    return Descriptor(accept4(socket_.number(), nullptr, nullptr, SOCK_CLOEXEC));
  }

 private:
  Descriptor socket_;
  std::uint16_t port_ = 0;
};

// A port that answers nobody: its queue of callers is full, so that the system drops
// what comes behind.
class SilentEndpoint {
 public:
  explicit SilentEndpoint(std::uint16_t port = 0, std::uint32_t last = 1)
      : endpoint_(port, last, 0) {
    const sockaddr_in address = loopback(endpoint_.port(), last);
    for (int i = 0; i < 4; ++i) {
      Descriptor& caller =
          callers_.emplace_back(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
      static_cast<void>(
          ::connect(caller.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address));
    }
  }

  std::uint16_t port() const { return endpoint_.port(); }

 private:
  Endpoint endpoint_;
  std::vector<Descriptor> callers_;
};

// A port on which nobody listens.
inline std::uint16_t closedPort() { return Endpoint().port(); }

}  // namespace veltrin
