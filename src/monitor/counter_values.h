// SPDX-License-Identifier: GPL-3.0-or-later
// What the network monitors read from the performance counters.
#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "platform/counters.h"
#include "text/statement.h"

namespace veltrin {

// One for the whole program. A handle of 0 is that of a counter that could not be added.
struct CounterValues {
  static constexpr std::size_t kInterfaces = 6;  // that have a place in the tables
  static constexpr std::size_t kProtocolCounters = 17;

  using InterfaceHandles = std::array<Counters::Counter, kInterfaces>;
  using InterfaceValues = std::array<double, kInterfaces>;  // bytes per second
  using ProtocolHandles = std::array<Counters::Counter, kProtocolCounters>;
  using ProtocolValues = std::array<double, kProtocolCounters>;

  // Of the machine whose interfaces are listed. Nothing sets it: no name is this machine.
  std::string ComputerName;

  int NetInterfaceCount = 0;  // accepted ones; may be more than have a place
  std::array<std::string, kInterfaces> NetInterfaceNames;

  InterfaceHandles TotalCounter{};
  InterfaceHandles ReceivedCounter{};
  InterfaceHandles SentCounter{};
  InterfaceValues TotalValue{};
  InterfaceValues ReceivedValue{};
  InterfaceValues SentValue{};

  ProtocolHandles IPv4Counter{};
  ProtocolHandles IPv6Counter{};
  ProtocolValues IPv4Value{};
  ProtocolValues IPv6Value{};
};

// An element of a table by its index. Throws StatementFailed outside the table.
template <class Table>
auto& elementOf(Table& table, int index) {
  if (index < 0 || static_cast<std::size_t>(index) >= table.size()) {
    throw StatementFailed("The table has no such element", kSubscriptOutOfRange);
  }
  return table[static_cast<std::size_t>(index)];
}

}  // namespace veltrin
