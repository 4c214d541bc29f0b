// SPDX-License-Identifier: GPL-3.0-or-later
#include "caller.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/sockios.h>
#include <linux/tcp.h>
#include <netinet/in.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

#include "tools/update_endpoint/address.h"

namespace veltrin::endpoint {
namespace {

constexpr int kLongestWait = 60'000;  // milliseconds

// What the caller's own kernel keeps of what it sends, so that a test counts what the
// server took and not what lies around on the way.
constexpr int kSendBuffer = 32 * 1024;

struct Kernel {
  sockaddr_storage storage{};
  socklen_t length = 0;

  Kernel(const std::string& text, std::uint16_t port, unsigned int interface) {
    const auto address = Address::parse(text);
    if (!address) {
      ADD_FAILURE() << text << " is no address";
      return;
    }
    const auto bytes = address->bytes();
    if (address->isV6()) {
      sockaddr_in6 whole{};
      whole.sin6_family = AF_INET6;
      whole.sin6_port = htons(port);
      whole.sin6_scope_id = interface;
      std::memcpy(&whole.sin6_addr, bytes.data(), bytes.size());
      take(whole);
    } else {
      sockaddr_in whole{};
      whole.sin_family = AF_INET;
      whole.sin_port = htons(port);
      std::memcpy(&whole.sin_addr, bytes.data(), bytes.size());
      take(whole);
    }
  }

  const sockaddr* pointer() const { return reinterpret_cast<const sockaddr*>(&storage); }

 private:
  template <typename Whole>
  void take(const Whole& whole) {
    std::memcpy(&storage, &whole, sizeof(whole));
    length = sizeof(whole);
  }
};

}  // namespace

Caller::Caller(const Place& place, const std::string& from) { connectTo(place, from, 0); }

Caller::Caller(const Place& place, unsigned int interface) { connectTo(place, "", interface); }

void Caller::connectTo(const Place& place, const std::string& from, unsigned int interface) {
  const Kernel target(place.address, place.port, interface);
  socket_ = Descriptor(::socket(target.storage.ss_family, SOCK_STREAM | SOCK_CLOEXEC, 0));
  if (socket_.get() < 0) {
    ADD_FAILURE() << "no socket: " << std::strerror(errno);
    return;
  }
  setWait(kLongestWait);
  setsockopt(socket_.get(), SOL_SOCKET, SO_SNDBUF, &kSendBuffer, sizeof(kSendBuffer));
  if (!from.empty()) {
    const Kernel source(from, 0, 0);
    EXPECT_EQ(bind(socket_.get(), source.pointer(), source.length), 0) << std::strerror(errno);
  }
  EXPECT_EQ(connect(socket_.get(), target.pointer(), target.length), 0)
      << place.address << " " << place.port << ": " << std::strerror(errno);
}

void Caller::setWait(int milliseconds) {
  timeval wait{};
  wait.tv_sec = milliseconds / 1000;
  wait.tv_usec = suseconds_t{milliseconds % 1000} * 1000;
  setsockopt(socket_.get(), SOL_SOCKET, SO_RCVTIMEO, &wait, sizeof(wait));
  setsockopt(socket_.get(), SOL_SOCKET, SO_SNDTIMEO, &wait, sizeof(wait));
}

Heard Caller::listen() {
  Heard heard;
  std::array<char, 256> piece{};
  ssize_t length = 0;
  while ((length = recv(socket_.get(), piece.data(), piece.size(), 0)) > 0) {
    heard.text.append(piece.data(), static_cast<std::size_t>(length));
    if (heard.first.empty()) heard.first = heard.text;
  }
  if (length == 0) {
    heard.ending = Ending::Closed;
  } else if (errno == ECONNRESET) {
    heard.ending = Ending::Reset;
  }
  return heard;
}

Heard Caller::listenFor(int milliseconds) {
  setWait(milliseconds);
  Heard heard = listen();
  setWait(kLongestWait);
  return heard;
}

std::size_t Caller::send(std::size_t bytes) {
  static const std::string kGarbage(std::size_t{16} * 1024, '\xE7');
  std::size_t sent = 0;
  while (sent < bytes) {
    const ssize_t length = ::send(socket_.get(), kGarbage.data(),
                                  std::min(kGarbage.size(), bytes - sent), MSG_NOSIGNAL);
    if (length <= 0) break;
    sent += static_cast<std::size_t>(length);
  }
  return sent;
}

std::size_t Caller::sendFor(std::size_t bytes, int milliseconds) {
  setWait(milliseconds);
  const std::size_t sent = send(bytes);
  setWait(kLongestWait);
  return sent;
}

std::size_t Caller::unconfirmed() const {
  int bytes = 0;
  EXPECT_EQ(ioctl(socket_.get(), SIOCOUTQ, &bytes), 0) << std::strerror(errno);
  return static_cast<std::size_t>(bytes);
}

std::size_t Caller::packetsHeard() const {
  tcp_info info{};
  socklen_t length = sizeof(info);
  EXPECT_EQ(getsockopt(socket_.get(), IPPROTO_TCP, TCP_INFO, &info, &length), 0)
      << std::strerror(errno);
  return info.tcpi_data_segs_in;
}

void Caller::finish() { EXPECT_EQ(shutdown(socket_.get(), SHUT_WR), 0) << std::strerror(errno); }

void Caller::hangUp() { socket_.reset(); }

void Caller::slam() {
  const linger abrupt{1, 0};
  setsockopt(socket_.get(), SOL_SOCKET, SO_LINGER, &abrupt, sizeof(abrupt));
  socket_.reset();
}

void Caller::goDeaf() {
  sock_filter dropAll = BPF_STMT(BPF_RET | BPF_K, 0);
  const sock_fprog filter{1, &dropAll};
  EXPECT_EQ(setsockopt(socket_.get(), SOL_SOCKET, SO_ATTACH_FILTER, &filter, sizeof(filter)), 0)
      << std::strerror(errno);
}

std::uint16_t Caller::port() const {
  sockaddr_in name{};
  socklen_t length = sizeof(name);
  EXPECT_EQ(getsockname(socket_.get(), reinterpret_cast<sockaddr*>(&name), &length), 0);
  return ntohs(name.sin_port);
}

std::vector<Caller> callersOf(const std::vector<Place>& places, std::size_t count) {
  std::vector<Caller> callers;
  callers.reserve(count);
  for (std::size_t at = 0; at < count; ++at) callers.emplace_back(places[at % places.size()]);
  return callers;
}

}  // namespace veltrin::endpoint
