// SPDX-License-Identifier: GPL-3.0-or-later
// The network cards of a machine.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "machine/file_tree.h"
#include "machine/machine.h"

namespace veltrin {

struct CardFacts {
  std::string name;        // of the adapter
  std::string connection;  // NetworkManager's name of it, else the interface's
  bool connected = false;  // to its medium; the rest is known of connected cards only
  std::optional<bool> dhcp;
  std::string dhcpServer;              // empty when not known
  std::vector<std::string> addresses;  // IPv4 first
};

// The cards that are devices come first, then those that are software, each kind in
// the order of the kernel. Nothing when the system does not tell its interfaces.
std::optional<std::vector<CardFacts>> cardFacts(const FileTree& files, const Machine& machine);

}  // namespace veltrin
