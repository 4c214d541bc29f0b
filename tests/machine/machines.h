// SPDX-License-Identifier: GPL-3.0-or-later
// Whole machines for tests: the files of each below a root folder, and the rest of
// it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "fake_machine.h"
#include "temporary_tree.h"

namespace veltrin {

// A laptop with a wired card, connected by DHCP, and a wireless one that is not.
void makeLaptop(const TemporaryTree& tree, FakeMachine& machine);

// A server with two processors and some cards, "eth0" and on, each with one lasting
// address.
void makeServer(const TemporaryTree& tree, FakeMachine& machine, std::size_t cards);

// Writes the same bytes into each file that the tool may read.
void fillEveryFile(const TemporaryTree& tree, std::string_view bytes);

}  // namespace veltrin
