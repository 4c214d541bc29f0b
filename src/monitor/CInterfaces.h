// SPDX-License-Identifier: GPL-3.0-or-later
// A collection of network interfaces.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "monitor/CInterface.h"
#include "text/statement.h"
#include "text/strings.h"

namespace veltrin {

// The number of the failure that a key is in the collection already.
inline constexpr int kKeyInUse = 457;

// Keeps interfaces in the order in which they were added. Indexes run from 1; keys are
// compared without case, and an item need not have one.
class CInterfaces {
 public:
  using Pointer = std::shared_ptr<CInterface>;

  // Throws StatementFailed (kKeyInUse) for a key that another item has.
  void Add(Pointer item, std::string key = {}) {
    if (!key.empty() && find(key) != entries_.end()) {
      throw StatementFailed("This key is already associated with an element of this collection",
                            kKeyInUse);
    }
    entries_.push_back({std::move(item), std::move(key)});
  }

  // By place or by key. Throws StatementFailed for what is not there: kSubscriptOutOfRange
  // for a place, kInvalidProcedureCall for a key.
  Pointer Item(std::int32_t index) const { return entries_.at(placeOf(index)).item; }
  Pointer Item(std::string_view key) const { return existing(key)->item; }

  std::int32_t Count() const { return static_cast<std::int32_t>(entries_.size()); }

  // Throw like Item.
  void Remove(std::int32_t index) {
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(placeOf(index)));
  }
  void Remove(std::string_view key) { entries_.erase(existing(key)); }

  // The items of this moment, to walk through: what is added or removed on the way changes
  // nothing.
  std::vector<Pointer> NewEnum() const {
    std::vector<Pointer> items;
    items.reserve(entries_.size());
    for (const Entry& entry : entries_) items.push_back(entry.item);
    return items;
  }

 private:
  struct Entry {
    Pointer item;
    std::string key;  // empty for none
  };
  using Entries = std::vector<Entry>;

  std::size_t placeOf(std::int32_t index) const {
    if (index < 1 || index > Count()) {
      throw StatementFailed("Subscript out of range", kSubscriptOutOfRange);
    }
    return static_cast<std::size_t>(index - 1);
  }

  Entries::const_iterator find(std::string_view key) const {
    auto at = entries_.begin();
    while (at != entries_.end() && (at->key.empty() || !equalIgnoringCase(at->key, key))) ++at;
    return at;
  }

  Entries::const_iterator existing(std::string_view key) const {
    const auto found = find(key);
    if (found == entries_.end()) {
      throw StatementFailed("Invalid procedure call or argument", kInvalidProcedureCall);
    }
    return found;
  }

  Entries entries_;
};

}  // namespace veltrin
