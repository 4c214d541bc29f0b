// SPDX-License-Identifier: GPL-3.0-or-later
// A TCP socket by Qt.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <QTcpServer>
#include <QTcpSocket>

#include "platform/qt/connection_race.h"
#include "platform/qt/host_lookup.h"
#include "platform/qt/later.h"
#include "platform/sockets.h"

namespace veltrin {

// No call waits, and every routine is told from the event loop; a routine may destroy
// the socket. A connection takes in 1 MB ahead of receive(). Proxies are not used.
class QtTcpSocket : public TcpSocket {
 public:
  QtTcpSocket(HostLookup::Resolver resolver, Routines routines);

  SocketState state() const override { return state_; }

  // A host without a name, or with a NUL in it, is an error at once.
  void connect(const std::string& host, std::uint16_t port, std::uint16_t localPort) override;

  // Takes callers of IPv4 and IPv6. The state tells of an error at once, as for a port
  // that another socket has.
  void listen(std::uint16_t localPort) override;

  // Callers can be accepted until the next connect(), listen() or accept(), also when
  // the socket was closed meanwhile.
  void accept(std::intptr_t request) override;

  void send(const std::string& bytes) override;
  std::string receive() override;
  void close() override;

 private:
  void giveUp();
  void resolved(const std::vector<std::string>& addresses, std::uint16_t port,
                std::uint16_t localPort);
  void race(const std::vector<QHostAddress>& addresses, std::uint16_t port,
            std::uint16_t localPort);
  void adopt(std::unique_ptr<QTcpSocket> connection);
  void takeCallers();
  void arrived();
  void lost(QAbstractSocket::SocketError error);

  HostLookup::Resolver resolver_;
  std::shared_ptr<const Routines> routines_;  // a running one outlives its socket
  SocketState state_ = SocketState::Closed;
  std::intptr_t lastRequest_ = 0;
  std::map<std::intptr_t, std::unique_ptr<QTcpSocket>> callers_;  // not accepted yet
  std::unique_ptr<HostLookup> lookup_;
  std::unique_ptr<ConnectionRace> race_;
  std::unique_ptr<QTcpServer> server_;
  std::unique_ptr<QTcpSocket> connection_;
  std::unique_ptr<Later> use_;  // of what is told; a new one with each giving up
};

}  // namespace veltrin
