// SPDX-License-Identifier: GPL-3.0-or-later
// A list of texts.
#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "forms/control.h"
#include "text/strings.h"

namespace veltrin {

// How a list keeps its items: as they come, or by their texts, ASCII letters folded; of
// equal ones the older first.
enum class ListOrder { Arrival, Text };

class ListBox : public Control {
 public:
  ListBox() = default;
  explicit ListBox(ListOrder order) : order_(order) {}

  // Number of items.
  std::size_t count() const { return items_.size(); }

  // The item at an index from 0; the empty text past the end.
  std::string item(std::size_t index) const {
    return index < items_.size() ? items_[index] : std::string();
  }

  void add(std::string item) {
    auto place = items_.end();
    if (order_ == ListOrder::Text) {
      place = std::upper_bound(items_.begin(), items_.end(), item,
                               [](const std::string& one, const std::string& other) {
                                 return LCase(one) < LCase(other);
                               });
    }
    items_.insert(place, std::move(item));
    if (changed_) changed_();
  }

  // The index of the first item that is this text, ASCII letters folded.
  std::optional<std::size_t> find(std::string_view text) const {
    const auto found = std::find_if(items_.begin(), items_.end(), [&](const std::string& item) {
      return equalIgnoringCase(item, text);
    });
    if (found == items_.end()) return std::nullopt;
    return static_cast<std::size_t>(found - items_.begin());
  }

  // Takes the item at an index from 0 away; there has to be one.
  void remove(std::size_t index) {
    items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(index));
    if (changed_) changed_();
  }

  void clear() {
    items_.clear();
    if (changed_) changed_();
  }

  // Sets the observer; an empty function takes it away.
  void observe(std::function<void()> changed) { changed_ = std::move(changed); }

 private:
  ListOrder order_ = ListOrder::Arrival;
  std::vector<std::string> items_;
  std::function<void()> changed_;
};

}  // namespace veltrin
