// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/destination_options.h"

namespace veltrin {

void DestinationReader::takeDestination() {
  if (reader_.text().empty()) {
    return;
  }
  if (!settings_.destination.empty()) {
    reader_.badParameter();
    return;
  }
  settings_.destination = reader_.text();
}

void DestinationReader::takeSource() {
  const std::string option = reader_.text();
  const std::optional<std::string> text = reader_.value();
  if (!text) {
    return;
  }
  settings_.source = Address::parse(*text);
  if (!settings_.source) {
    reader_.mistake("Bad value for option " + option + ", " + *text + " is not an IP address.");
  }
}

void DestinationReader::chooseFamily(FamilyChoice choice) {
  if (settings_.family != FamilyChoice::Any && settings_.family != choice) {
    reader_.mistake("Options -4 and -6 exclude each other.");
    return;
  }
  settings_.family = choice;
}

void DestinationReader::needIpv4() {
  if (ipv4Option_.empty()) {
    ipv4Option_ = reader_.text();
  }
}

void DestinationReader::check(std::string_view missing) {
  if (settings_.destination.empty()) {
    reader_.mistake(std::string(missing));
    return;
  }
  chooseFamilyOfSource();
  const std::optional<Address> literal = Address::parse(settings_.destination);
  const bool ipv6 =
      settings_.family == FamilyChoice::IPv6 || (literal && literal->family == Family::IPv6);
  if (!ipv4Option_.empty() && ipv6) {
    reader_.mistake("Option " + ipv4Option_ + " is only supported for IPv4.");
  }
  if (!ipv4Option_.empty()) {
    settings_.family = FamilyChoice::IPv4;
  }
}

void DestinationReader::chooseFamilyOfSource() {
  if (!settings_.source) {
    return;
  }
  const FamilyChoice choice =
      settings_.source->family == Family::IPv4 ? FamilyChoice::IPv4 : FamilyChoice::IPv6;
  if (settings_.family != FamilyChoice::Any && settings_.family != choice) {
    reader_.mistake("The source address is not of the chosen IP version.");
  }
  settings_.family = choice;
}

}  // namespace veltrin
