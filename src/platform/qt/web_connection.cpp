// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/web_connection.h"

#include <utility>

#include <QByteArray>
#include <QHostAddress>
#include <QSslSocket>

#include "platform/qt/qt_text.h"

namespace veltrin {
namespace {

// Registered ports (RFC 9110, section 4.2).
constexpr int kHttpPort = 80;
constexpr int kHttpsPort = 443;

// Bytes that are taken in at a time. More do not make it faster, and a turn of the event
// loop that takes so many is a short one.
constexpr std::size_t kMostAtOnce = std::size_t{256} * 1024;

// The part of a URL that is asked for (RFC 9112, section 3.2.1).
QByteArray targetOf(const QUrl& url) {
  QString target = url.path(QUrl::FullyEncoded);
  if (!target.startsWith(QLatin1Char('/'))) target.prepend(QLatin1Char('/'));
  if (url.hasQuery()) target += QLatin1Char('?') + url.query(QUrl::FullyEncoded);
  return target.toLatin1();
}

// The host, with the port where the URL names one (RFC 9110, section 7.2).
QByteArray hostOf(QUrl url) {
  url.setUserInfo(QString());
  return url.authority(QUrl::FullyEncoded).toLatin1();
}

QByteArray requestFor(const QUrl& url) {
  return "GET " + targetOf(url) +
         " HTTP/1.1\r\n"
         "Host: " +
         hostOf(url) +
         "\r\n"
         "User-Agent: Veltrin\r\n"
         "Accept: */*\r\n"
         "Accept-Encoding: identity\r\n"
         "Cache-Control: no-cache\r\n"
         "Pragma: no-cache\r\n"
         "Connection: close\r\n\r\n";
}

std::unique_ptr<QTcpSocket> makeSecurableSocket() { return std::make_unique<QSslSocket>(); }

}  // namespace

WebConnection::WebConnection(const HostLookup::Resolver& resolver, const QUrl& url,
                             Routines routines)
    : url_(url),
      routines_(std::make_shared<const Routines>(std::move(routines))),
      lookup_(std::make_unique<HostLookup>(
          resolver, fromQt(url.host(QUrl::FullyEncoded)),
          [this](const std::vector<std::string>& addresses) { resolved(addresses); })) {}

bool WebConnection::isSecured() const { return url_.scheme() == QStringLiteral("https"); }

void WebConnection::resolved(const std::vector<std::string>& addresses) {
  lookup_.reset();
  std::vector<QHostAddress> known;
  for (const std::string& text : addresses) {
    QHostAddress address;
    if (address.setAddress(toQt(text))) known.push_back(address);
  }
  if (known.empty()) return end(false);
  const auto port = static_cast<std::uint16_t>(url_.port(isSecured() ? kHttpsPort : kHttpPort));
  ConnectionRace::MakeSocket makeSocket = std::make_unique<QTcpSocket>;
  if (isSecured()) makeSocket = makeSecurableSocket;
  race_ = std::make_unique<ConnectionRace>(
      known, port, 0,
      [this](std::unique_ptr<QTcpSocket> connection) { connected(std::move(connection)); },
      std::move(makeSocket));
}

// It may have ended already. What is said before the connection is secured waits until it
// is, and goes nowhere when it cannot be.
void WebConnection::connected(std::unique_ptr<QTcpSocket> connection) {
  race_.reset();
  if (connection == nullptr) return end(false);
  buffer_.resize(kMostAtOnce);
  connection_ = std::move(connection);
  connection_->setReadBufferSize(kMostAtOnce);
  QObject::connect(
      connection_.get(), &QTcpSocket::readyRead, &use_, [this] { arrived(); },
      Qt::QueuedConnection);
  QObject::connect(
      connection_.get(), &QTcpSocket::errorOccurred, &use_,
      [this](QAbstractSocket::SocketError error) { lost(error); }, Qt::QueuedConnection);
  if (connection_->state() != QAbstractSocket::ConnectedState) {
    const auto error = connection_->error();
    use_.call([this, error] { lost(error); });
    return;
  }
  if (auto* const secured = qobject_cast<QSslSocket*>(connection_.get())) {
    secured->setPeerVerifyName(url_.host(QUrl::FullyEncoded));
    secured->startClientEncryption();
  }
  connection_->write(requestFor(url_));
}

// Bytes that have come go ahead of the end. The last statement is the call: the connection
// may not live on behind it.
void WebConnection::arrived() {
  qint64 taken = 0;
  if (connection_->bytesAvailable() > 0) {
    taken = connection_->read(buffer_.data(), static_cast<qint64>(buffer_.size()));
  }
  if (taken <= 0) {
    if (isLost_) end(inGoodOrder_);
    return;
  }
  use_.call([this] { arrived(); });
  const auto routines = routines_;
  routines->arrived({buffer_.data(), static_cast<std::size_t>(taken)});
}

void WebConnection::lost(QAbstractSocket::SocketError error) {
  if (isLost_) return;
  isLost_ = true;
  inGoodOrder_ = error == QAbstractSocket::RemoteHostClosedError;
  arrived();
}

void WebConnection::end(bool inGoodOrder) {
  const auto routines = routines_;
  routines->ended(inGoodOrder);
}

}  // namespace veltrin
