// SPDX-License-Identifier: GPL-3.0-or-later
// One request to a web server, and what comes back.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <QTcpSocket>
#include <QUrl>

#include "platform/qt/connection_race.h"
#include "platform/qt/host_lookup.h"
#include "platform/qt/later.h"

namespace veltrin {

// Asks for a URL by HTTP/1.1, over a connection of its own: one to the host's port, or one
// that TLS secures, with a certificate that the system trusts and that is the host's. The
// server is asked for a body that is not packed and not a copy that somebody kept, and to
// end the connection behind it. It is told nothing that would make it know us again, and
// proxies are not used. Nothing waits, and nothing ends a server that falls silent.
class WebConnection {
 public:
  // Told from the event loop. Either may destroy the connection.
  struct Routines {
    // What has come, in order; the bytes go with the call.
    std::function<void(std::string_view bytes)> arrived;

    // Once, and the last that is told: the server has ended the connection in good order,
    // or there is none: no such host, nobody who answers, no certificate to rely on, a
    // failure of the network. An abrupt end of an open connection is told as one in good
    // order, since systems tell both alike.
    std::function<void(bool inGoodOrder)> ended;
  };

  // Starts at once. `url` is one of http or https, with a host.
  WebConnection(const HostLookup::Resolver& resolver, const QUrl& url, Routines routines);

 private:
  bool isSecured() const;
  void resolved(const std::vector<std::string>& addresses);
  void connected(std::unique_ptr<QTcpSocket> connection);
  void arrived();
  void lost(QAbstractSocket::SocketError error);
  void end(bool inGoodOrder);

  QUrl url_;
  std::shared_ptr<const Routines> routines_;  // a running one outlives its connection
  std::vector<char> buffer_;
  bool isLost_ = false;
  bool inGoodOrder_ = false;
  std::unique_ptr<HostLookup> lookup_;
  std::unique_ptr<ConnectionRace> race_;
  std::unique_ptr<QTcpSocket> connection_;
  Later use_;  // of what is told; goes first
};

}  // namespace veltrin
