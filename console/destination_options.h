// SPDX-License-Identifier: GPL-3.0-or-later
// The part of a command line that all of the tools share: where to send, from
// where, and over which version of IP.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "console/network.h"
#include "console/options.h"

namespace veltrin {

struct DestinationSettings {
  std::string destination;        // a name or an address
  std::optional<Address> source;  // an address of this machine to send from
  FamilyChoice family = FamilyChoice::Any;
};

// Takes these settings from the present argument of a reader, whose mistakes it
// adds to. Both outlive it.
class DestinationReader {
 public:
  DestinationReader(OptionReader& reader, DestinationSettings& settings)
      : reader_(reader), settings_(settings) {}

  // The present argument is the destination. An empty one counts for nothing; a
  // second one is a mistake.
  void takeDestination();

  // The present option's value is the source.
  void takeSource();

  // The present option chooses a version of IP.
  void chooseFamily(FamilyChoice choice);

  // The present option exists in IPv4 alone.
  void needIpv4();

  // To be called behind the last argument: finds the mistakes that no option
  // shows by itself. `missing` is the sentence for a line without a destination.
  void check(std::string_view missing);

 private:
  void chooseFamilyOfSource();

  OptionReader& reader_;
  DestinationSettings& settings_;
  std::string ipv4Option_;  // the first option that is for IPv4 only, as typed
};

}  // namespace veltrin
