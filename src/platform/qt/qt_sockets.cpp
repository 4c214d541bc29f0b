// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/qt_sockets.h"

#include <QHostAddress>
#include <QHostInfo>
#include <QNetworkInterface>
#include <QNetworkProxy>
#include <QUdpSocket>

#include "platform/qt/qt_tcp_socket.h"
#include "platform/qt/qt_text.h"

namespace veltrin {
namespace {

// The first of the root name servers, which is always somewhere on the Internet
// (www.iana.org/domains/root/servers). Nothing is sent there.
constexpr const char* kFarIpv4 = "198.41.0.4";
constexpr const char* kFarIpv6 = "2001:503:ba3e::2:30";
constexpr quint16 kDomainPort = 53;

// The address from which packets would go to another one; null without a way there.
// A datagram socket takes it on when it is connected, which sends nothing.
QHostAddress sourceFor(const char* destination) {
  QUdpSocket socket;
  socket.setProxy(QNetworkProxy::NoProxy);
  socket.connectToHost(QHostAddress(QString::fromLatin1(destination)), kDomainPort);
  return socket.localAddress();
}

QHostAddress anyOfAnInterface() {
  QHostAddress fallback;
  for (const QHostAddress& address : QNetworkInterface::allAddresses()) {
    if (address.isLoopback()) continue;
    if (address.protocol() == QAbstractSocket::IPv4Protocol) return address;
    if (fallback.isNull()) fallback = address;
  }
  return fallback;
}

}  // namespace

std::unique_ptr<TcpSocket> QtSockets::makeTcpSocket(TcpSocket::Routines routines) {
  return std::make_unique<QtTcpSocket>(resolver_, std::move(routines));
}

std::string QtSockets::localHostName() const { return fromQt(QHostInfo::localHostName()); }

std::string QtSockets::localAddress() const {
  QHostAddress address = sourceFor(kFarIpv4);
  if (address.isNull()) address = sourceFor(kFarIpv6);
  if (address.isNull()) address = anyOfAnInterface();
  return address.isNull() ? "127.0.0.1" : fromQt(address.toString());
}

}  // namespace veltrin
