// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/hop_names.h"

namespace veltrin {

std::string nameAndAddress(const std::string& name, const Address& address) {
  return name + " [" + address.text() + "]";
}

void HopNames::see(const Address& address, Microseconds now) {
  if (wanted_ && entries_.try_emplace(address.text(), Entry{now, false, ""}).second) {
    network_.beginNameOf(address);
  }
}

void HopNames::collect() {
  while (const std::optional<NameAnswer> answer = network_.takeName()) {
    Entry& entry = entries_[answer->address.text()];
    entry.ended = true;
    entry.name = answer->name.value_or("");
  }
}

std::optional<std::string> HopNames::label(const Address& address, Microseconds now) const {
  const auto found = entries_.find(address.text());
  if (found == entries_.end()) {
    return address.text();
  }
  const Entry& entry = found->second;
  if (!entry.name.empty()) {
    return nameAndAddress(entry.name, address);
  }
  if (!entry.ended && now < entry.seenAt + kWait) {
    return std::nullopt;
  }
  return address.text();
}

Microseconds HopNames::labelAt(const Address& address) const {
  const auto found = entries_.find(address.text());
  return found == entries_.end() ? 0 : found->second.seenAt + kWait;
}

}  // namespace veltrin
