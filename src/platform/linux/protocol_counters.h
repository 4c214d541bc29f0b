// SPDX-License-Identifier: GPL-3.0-or-later
// The counters of the objects "IPv4" and "IPv6".
#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/portable/counter_source.h"

namespace veltrin {

// What both protocols have in common: one set of counters, under the same names.
class ProtocolCounters : public CounterSource {
 public:
  explicit ProtocolCounters(std::string procFolder) : procFolder_(std::move(procFolder)) {}

  std::vector<CounterName> counters() const override;
  bool hasInstances() const override { return false; }

  // Nothing when the kernel does not have the protocol. What an old kernel does not count
  // is 0.
  std::vector<CounterInstance> read() const override;

 protected:
  // The kernel's counters by their names in the MIB ("InReceives", RFC 4293).
  using Figures = std::map<std::string, double, std::less<>>;
  virtual Figures figures() const = 0;

  const std::string& procFolder() const { return procFolder_; }

 private:
  std::string procFolder_;
};

class IPv4Counters : public ProtocolCounters {
 public:
  using ProtocolCounters::ProtocolCounters;
  std::string object() const override { return "IPv4"; }

 protected:
  // From the two lines "Ip:" of "net/snmp", names and numbers.
  Figures figures() const override;
};

class IPv6Counters : public ProtocolCounters {
 public:
  using ProtocolCounters::ProtocolCounters;
  std::string object() const override { return "IPv6"; }

 protected:
  // From "net/snmp6", a line for each. There is no such file in a kernel without IPv6.
  Figures figures() const override;
};

}  // namespace veltrin
