// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/connection_race.h"

#include <algorithm>
#include <utility>

#include <QNetworkProxy>

namespace veltrin {
namespace {

// RFC 8305, section 5: the recommended delay between two attempts, in ms.
constexpr int kPatience = 250;

using Addresses = std::vector<QHostAddress>;

// The same addresses with the families in turn, the first one's family ahead.
Addresses alternating(const Addresses& addresses) {
  Addresses same;
  Addresses other;
  for (const QHostAddress& address : addresses) {
    const bool asFirst = address.protocol() == addresses.front().protocol();
    (asFirst ? same : other).push_back(address);
  }
  Addresses order;
  for (std::size_t i = 0; i < std::max(same.size(), other.size()); ++i) {
    if (i < same.size()) order.push_back(same[i]);
    if (i < other.size()) order.push_back(other[i]);
  }
  return order;
}

bool bindTo(QTcpSocket& socket, const QHostAddress& address, std::uint16_t localPort) {
  if (localPort == 0) return true;
  const bool ipv6 = address.protocol() == QAbstractSocket::IPv6Protocol;
  return socket.bind(ipv6 ? QHostAddress::AnyIPv6 : QHostAddress::AnyIPv4, localPort);
}

}  // namespace

ConnectionRace::ConnectionRace(const Addresses& addresses, std::uint16_t port,
                               std::uint16_t localPort, Done done, MakeSocket makeSocket)
    : addresses_(alternating(addresses)),
      port_(port),
      localPort_(localPort),
      done_(std::move(done)),
      makeSocket_(std::move(makeSocket)) {
  patience_.setSingleShot(true);
  patience_.callOnTimeout([this] { tryNext(); });
  tryNext();
}

void ConnectionRace::tryNext() {
  if (attempts_.size() == addresses_.size()) return;
  attempts_.emplace_back();
  begin(attempts_.size() - 1);
  patience_.start(kPatience);
}

// Everything that a socket tells is queued, so that none of its own routines is on the
// stack when it is destroyed.
void ConnectionRace::begin(std::size_t number) {
  attempts_[number].socket = makeSocket_();
  QTcpSocket& socket = *attempts_[number].socket;
  socket.setProxy(QNetworkProxy::NoProxy);
  socket.setReadBufferSize(kMostWaiting);
  const auto fail = [this, number] { failed(number); };
  QObject::connect(
      &socket, &QTcpSocket::connected, &context_, [this, number] { connected(number); },
      Qt::QueuedConnection);
  QObject::connect(&socket, &QTcpSocket::errorOccurred, &context_, fail, Qt::QueuedConnection);
  if (bindTo(socket, addresses_[number], localPort_)) {
    socket.connectToHost(addresses_[number], port_);
  } else {
    context_.call(fail);
  }
}

void ConnectionRace::connected(std::size_t number) { finish(std::move(attempts_[number].socket)); }

void ConnectionRace::failed(std::size_t number) {
  attempts_[number].failed = true;
  const auto hasFailed = [](const Attempt& attempt) { return attempt.failed; };
  const bool allFailed = std::all_of(attempts_.begin(), attempts_.end(), hasFailed);
  if (allFailed && attempts_.size() == addresses_.size()) {
    finish(nullptr);
  } else {
    tryNext();
  }
}

// Whoever is told may destroy this race.
void ConnectionRace::finish(std::unique_ptr<QTcpSocket> connection) {
  const Done done = std::move(done_);
  done(std::move(connection));
}

}  // namespace veltrin
