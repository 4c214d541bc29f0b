// SPDX-License-Identifier: GPL-3.0-or-later
// How a network interface came to its settings.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "machine/file_tree.h"
#include "machine/machine.h"

namespace veltrin {

// What is known of an interface's connection.
struct ConnectionFacts {
  // As NetworkManager calls it; empty when it does not manage the interface, or
  // keeps its name from this user.
  std::string name;
  std::optional<bool> dhcp;  // whether it gets its IPv4 address by DHCP
  std::string dhcpServer;    // its address; empty when not known
};

ConnectionFacts connectionFacts(const FileTree& files, const NetworkInterface& interface);

// The address that a DHCP server has lent, and the server's; either may be missing.
struct DhcpLease {
  std::optional<Address> address;
  std::optional<Address> server;
};

// The lease in a message of a DHCP server (RFC 2131 section 2), as dhcpcd keeps it;
// nothing for other bytes.
std::optional<DhcpLease> leaseInMessage(std::string_view message);

// The last lease of an interface for one of its addresses in a file of dhclient
// (dhclient.leases(5)).
std::optional<DhcpLease> leaseOfDhclient(std::string_view text, const NetworkInterface& interface);

}  // namespace veltrin
