// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/qt_tcp_socket.h"

#include <utility>

#include <QNetworkProxy>

#include "platform/qt/qt_text.h"
#include "text/statement.h"

namespace veltrin {
namespace {

// Callers that wait to be accepted; more are turned away.
constexpr std::size_t kMostCallers = 30;

}  // namespace

QtTcpSocket::QtTcpSocket(HostLookup::Resolver resolver, Routines routines)
    : resolver_(std::move(resolver)),
      routines_(std::make_shared<const Routines>(std::move(routines))),
      use_(std::make_unique<Later>()) {}

void QtTcpSocket::connect(const std::string& host, std::uint16_t port, std::uint16_t localPort) {
  giveUp();
  callers_.clear();
  if (host.empty() || host.find('\0') != std::string::npos) {
    state_ = SocketState::Error;
    return;
  }
  QHostAddress address;
  if (address.setAddress(toQt(host))) {
    race({address}, port, localPort);
    return;
  }
  state_ = SocketState::ResolvingHost;
  lookup_ = std::make_unique<HostLookup>(
      resolver_, host, [this, port, localPort](const std::vector<std::string>& addresses) {
        lookup_.reset();
        resolved(addresses, port, localPort);
      });
}

void QtTcpSocket::resolved(const std::vector<std::string>& addresses, std::uint16_t port,
                           std::uint16_t localPort) {
  std::vector<QHostAddress> known;
  for (const std::string& text : addresses) {
    QHostAddress address;
    if (address.setAddress(toQt(text))) known.push_back(address);
  }
  if (known.empty()) {
    state_ = SocketState::Error;
  } else {
    race(known, port, localPort);
  }
}

void QtTcpSocket::race(const std::vector<QHostAddress>& addresses, std::uint16_t port,
                       std::uint16_t localPort) {
  state_ = SocketState::Connecting;
  race_ = std::make_unique<ConnectionRace>(addresses, port, localPort,
                                           [this](std::unique_ptr<QTcpSocket> connection) {
                                             race_.reset();
                                             if (connection == nullptr) {
                                               state_ = SocketState::Error;
                                             } else {
                                               adopt(std::move(connection));
                                             }
                                           });
}

void QtTcpSocket::listen(std::uint16_t localPort) {
  giveUp();
  callers_.clear();
  server_ = std::make_unique<QTcpServer>();
  server_->setProxy(QNetworkProxy::NoProxy);
  QObject::connect(
      server_.get(), &QTcpServer::newConnection, use_.get(), [this] { takeCallers(); },
      Qt::QueuedConnection);
  const bool listening = server_->listen(QHostAddress::Any, localPort);
  state_ = listening ? SocketState::Listening : SocketState::Error;
}

void QtTcpSocket::takeCallers() {
  while (QTcpSocket* next = server_->nextPendingConnection()) {
    std::unique_ptr<QTcpSocket> caller(next);
    if (callers_.size() == kMostCallers) continue;
    caller->setParent(nullptr);  // it outlives the server
    caller->setReadBufferSize(kMostWaiting);
    const std::intptr_t request = ++lastRequest_;
    callers_.emplace(request, std::move(caller));
    use_->call([routines = routines_, request] {
      if (routines->connectionRequest) routines->connectionRequest(request);
    });
  }
}

void QtTcpSocket::accept(std::intptr_t request) {
  const auto found = callers_.find(request);
  if (found == callers_.end()) throw StatementFailed("No such request", kInvalidProcedureCall);
  std::unique_ptr<QTcpSocket> caller = std::move(found->second);
  giveUp();
  callers_.clear();
  adopt(std::move(caller));
}

// It may have taken in bytes already, and even have ended.
void QtTcpSocket::adopt(std::unique_ptr<QTcpSocket> connection) {
  connection_ = std::move(connection);
  state_ = SocketState::Connected;
  QObject::connect(
      connection_.get(), &QTcpSocket::readyRead, use_.get(), [this] { arrived(); },
      Qt::QueuedConnection);
  QObject::connect(
      connection_.get(), &QTcpSocket::errorOccurred, use_.get(),
      [this](QAbstractSocket::SocketError error) { lost(error); }, Qt::QueuedConnection);
  use_->call([this] { arrived(); });
  if (connection_->state() != QAbstractSocket::ConnectedState) {
    use_->call([this] { lost(connection_->error()); });
  }
}

// The last statement is the call: the socket may not live on behind it.
void QtTcpSocket::arrived() {
  const auto routines = routines_;
  if (connection_->bytesAvailable() > 0 && routines->dataArrival) routines->dataArrival();
}

void QtTcpSocket::lost(QAbstractSocket::SocketError error) {
  if (state_ != SocketState::Connected) return;
  if (error != QAbstractSocket::RemoteHostClosedError) {
    state_ = SocketState::Error;
    return;
  }
  state_ = SocketState::Closing;
  const auto routines = routines_;
  if (routines->closed) routines->closed();
}

void QtTcpSocket::send(const std::string& bytes) {
  const auto size = static_cast<qint64>(bytes.size());
  if (state_ != SocketState::Connected || connection_->write(bytes.data(), size) != size) {
    throw StatementFailed("No connection", kInvalidProcedureCall);
  }
  connection_->flush();
}

std::string QtTcpSocket::receive() {
  return connection_ == nullptr ? std::string() : connection_->readAll().toStdString();
}

void QtTcpSocket::close() {
  giveUp();
  state_ = SocketState::Closed;
}

// What was queued is dropped with the object that it was queued for.
void QtTcpSocket::giveUp() {
  use_ = std::make_unique<Later>();
  lookup_.reset();
  race_.reset();
  server_.reset();
  connection_.reset();
}

}  // namespace veltrin
