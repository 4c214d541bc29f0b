// SPDX-License-Identifier: GPL-3.0-or-later
// The names of a path's addresses, as far as they are known in time.
#pragma once

#include <map>
#include <optional>
#include <string>

#include "console/network.h"

namespace veltrin {

class HopNames {
 public:
  // A name that has not come this long after its address was first seen is done
  // without.
  static constexpr Microseconds kWait = 2 * kSecond;

  explicit HopNames(Network& network) : network_(network) {}

  // Whether names are looked up at all; unless told so, every address stands for
  // itself.
  void want(bool wanted) { wanted_ = wanted; }

  // An address was seen: its lookup begins, unless it has.
  void see(const Address& address, Microseconds now);

  // Takes the names that have come in.
  void collect();

  // "name [address]", or the address where no name is known and none is worth
  // waiting for; nothing until then. Of an address that was seen.
  std::optional<std::string> label(const Address& address, Microseconds now) const;

  // When an address that was seen has its label at the latest.
  Microseconds labelAt(const Address& address) const;

 private:
  struct Entry {
    Microseconds seenAt = 0;
    bool ended = false;
    std::string name;  // empty when there is none
  };

  Network& network_;
  bool wanted_ = false;
  std::map<std::string, Entry> entries_;  // by the address's text
};

// "name [address]".
std::string nameAndAddress(const std::string& name, const Address& address);

}  // namespace veltrin
