// SPDX-License-Identifier: GPL-3.0-or-later
// Connects to whichever address of a host answers first.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include <QHostAddress>
#include <QTcpSocket>
#include <QTimer>

#include "platform/qt/later.h"

namespace veltrin {

// Bytes that a connection takes in ahead of whoever receives them; what comes behind
// stays with the sender.
inline constexpr qint64 kMostWaiting = qint64{1024} * 1024;

// Tries the addresses in turn, IPv6 and IPv4 alternating (RFC 8305, sections 4 and 5):
// the next one as soon as one has failed or has been silent for 250 ms. The first that
// answers wins, and the others are given up.
class ConnectionRace {
 public:
  // Told from the event loop, once: the connection, or null when every address failed.
  // May destroy the race.
  using Done = std::function<void(std::unique_ptr<QTcpSocket> connection)>;

  // Makes the socket of one attempt.
  using MakeSocket = std::function<std::unique_ptr<QTcpSocket>()>;

  // Starts at once and waits for nothing. `addresses` is not empty. `localPort` 0 is any
  // free one.
  ConnectionRace(const std::vector<QHostAddress>& addresses, std::uint16_t port,
                 std::uint16_t localPort, Done done,
                 MakeSocket makeSocket = std::make_unique<QTcpSocket>);

 private:
  struct Attempt {
    std::unique_ptr<QTcpSocket> socket;
    bool failed = false;
  };

  void tryNext();
  void begin(std::size_t number);
  void connected(std::size_t number);
  void failed(std::size_t number);
  void finish(std::unique_ptr<QTcpSocket> connection);

  std::vector<QHostAddress> addresses_;
  std::uint16_t port_;
  std::uint16_t localPort_;
  Done done_;
  MakeSocket makeSocket_;
  std::vector<Attempt> attempts_;  // in the order of the addresses
  QTimer patience_;
  Later context_;  // of what the sockets tell; goes first
};

}  // namespace veltrin
