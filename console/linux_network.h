// SPDX-License-Identifier: GPL-3.0-or-later
// The Network of a Linux system.
#pragma once

#include <deque>
#include <optional>
#include <string>

#include "console/echo_socket.h"
#include "console/name_lookups.h"
#include "console/network.h"

namespace veltrin {

class LinuxNetwork : public Network {
 public:
  // Opens an echo socket of each family, as far as the system allows. This alone
  // needs a privilege; a program drops its own right behind it.
  LinuxNetwork();

  std::optional<Destination> resolve(const std::string& name, FamilyChoice choice) override;
  std::optional<std::string> nameOf(const Address& address) override;
  void beginNameOf(const Address& address) override { names_.begin(address); }
  std::optional<NameAnswer> takeName() override;
  std::optional<Address> sourceFor(const Address& destination) override;
  std::string hostName() override;

  // Closes the other family's socket, and from here on turns the user's Ctrl-C
  // into the end of a wait.
  OpenResult open(Family family, const std::optional<Address>& source) override;

  Sending send(const EchoRequest& request) override;
  WaitEnd wait(Microseconds deadline, Incoming& incoming) override;
  void rest(Microseconds until) override;
  Microseconds now() override;

 private:
  bool keepErrors();
  bool take(Incoming& incoming);

  EchoSocket ipv4_;
  EchoSocket ipv6_;
  EchoSocket* socket_ = nullptr;
  // Errors that were read before anybody waited for them.
  std::deque<Incoming> kept_;
  NameLookups names_;
  // A name that ended a wait.
  std::optional<NameAnswer> name_;
};

}  // namespace veltrin
