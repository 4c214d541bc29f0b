// SPDX-License-Identifier: GPL-3.0-or-later
#include "monitor/CounterNetwork.h"

#include <algorithm>
#include <array>
#include <vector>

#include "text/strings.h"

namespace veltrin {
namespace {

constexpr std::uint32_t kNamesBuffer = 32768;  // characters
constexpr std::int64_t kPrefix = 5;            // characters of a name that tell its kind
constexpr std::array<const char*, 2> kIgnored = {"local", "isata"};

// The counters of one kind, by interface.
struct Adding {
  CounterValues::InterfaceHandles& handles;
  const char* counter;
};
struct Reading {
  const CounterValues::InterfaceHandles& handles;
  CounterValues::InterfaceValues& values;
};

std::vector<std::string> splitAtNul(const std::string& text) {
  std::vector<std::string> pieces;
  if (text.empty()) return pieces;
  std::size_t start = 0;
  for (std::size_t end = text.find('\0'); end != std::string::npos; end = text.find('\0', start)) {
    pieces.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  pieces.push_back(text.substr(start));
  return pieces;
}

bool countsAsInterface(const std::string& name) {
  if (Len(name) < kPrefix) return false;
  const std::string kind = LCase(Left(name, kPrefix));
  return std::find(kIgnored.begin(), kIgnored.end(), kind) == kIgnored.end();
}

void accept(const std::string& name, CounterValues& values) {
  auto& names = values.NetInterfaceNames;
  const auto place =
      std::find_if(names.begin(), names.end(), [](const auto& taken) { return taken.empty(); });
  if (place != names.end()) *place = name;
  ++values.NetInterfaceCount;
}

}  // namespace

std::int32_t GetObjectItems(Program& program, const std::string& machine, const std::string& object,
                            std::string& counters, std::string& instances) {
  std::string counterNames(kNamesBuffer, '\0');
  std::string instanceNames(kNamesBuffer, '\0');
  std::uint32_t countersLength = kNamesBuffer;
  std::uint32_t instancesLength = kNamesBuffer;
  const std::int32_t status = program.platform.counters.PdhEnumObjectItemsA(
      machine, object, counterNames, countersLength, instanceNames, instancesLength,
      kPerfDetailExpert, 0);
  if (status != 0) return status;
  counters = counterNames.substr(0, countersLength);
  instances = instanceNames.substr(0, instancesLength);
  return status;
}

// The last piece is what stands behind the last NUL.
void EnumNetworkInterfaces(Program& program) {
  auto& values = program.shared<CounterValues>();
  values.NetInterfaceCount = 0;
  std::string counters;
  std::string instances;
  const std::int32_t status =
      GetObjectItems(program, values.ComputerName, "Network Interface", counters, instances);
  if (status != 0) return;
  std::vector<std::string> pieces = splitAtNul(instances);
  if (!pieces.empty()) pieces.pop_back();
  for (const std::string& piece : pieces) {
    if (countsAsInterface(piece)) accept(piece, values);
  }
}

// A counter that cannot be added has the handle 0. Behind the end of the tables nothing is
// added, and events run all the same.
void AddNetworkCounters(Program& program) {
  auto& values = program.shared<CounterValues>();
  const std::array<Adding, 3> tables = {{{values.TotalCounter, "Total"},
                                         {values.ReceivedCounter, "Received"},
                                         {values.SentCounter, "Sent"}}};
  for (int i = 0; i < values.NetInterfaceCount; ++i) {
    for (const Adding& table : tables) {
      skip([&] {
        const std::string path = "\\\\" + program.start.HostName + "\\Network Interface(" +
                                 elementOf(values.NetInterfaceNames, i) + ")\\Bytes " +
                                 table.counter + "/sec";
        Counters::Counter added = 0;
        program.platform.counters.PdhVbAddCounter(program.start.PdhQuery, path, added);
        elementOf(table.handles, i) = added;
      });
      program.platform.events.DoEvents();
    }
  }
}

// The query is sampled for each interface.
void ReadNetworkCounters(Program& program) {
  auto& values = program.shared<CounterValues>();
  const std::array<Reading, 3> tables = {{{values.TotalCounter, values.TotalValue},
                                          {values.SentCounter, values.SentValue},
                                          {values.ReceivedCounter, values.ReceivedValue}}};
  for (int i = 0; i < values.NetInterfaceCount; ++i) {
    program.platform.counters.PdhCollectQueryData(program.start.PdhQuery);
    for (const Reading& table : tables) {
      skip([&] {
        std::int32_t status = 0;
        elementOf(table.values, i) = program.platform.counters.PdhVbGetDoubleCounterValue(
            elementOf(table.handles, i), status);
      });
      program.platform.events.DoEvents();
    }
  }
}

}  // namespace veltrin
