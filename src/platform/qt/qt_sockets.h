// SPDX-License-Identifier: GPL-3.0-or-later
// TCP sockets and the addresses of this computer, by Qt.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "platform/portable/host_addresses.h"
#include "platform/qt/host_lookup.h"
#include "platform/sockets.h"

namespace veltrin {

class QtSockets : public Sockets {
 public:
  explicit QtSockets(HostLookup::Resolver resolver = addressesOf)
      : resolver_(std::move(resolver)) {}

  std::unique_ptr<TcpSocket> makeTcpSocket(TcpSocket::Routines routines) override;
  std::string localHostName() const override;
  std::string localAddress() const override;

 private:
  HostLookup::Resolver resolver_;
};

}  // namespace veltrin
