// A list of texts that only grows, or is emptied.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "forms/control.h"

namespace veltrin {

class ListBox : public Control {
 public:
  // Number of items.
  std::size_t count() const { return items_.size(); }

  // The item at an index from 0; the empty text past the end.
  std::string item(std::size_t index) const {
    return index < items_.size() ? items_[index] : std::string();
  }

  void add(std::string item) {
    items_.push_back(std::move(item));
    if (changed_) changed_();
  }

  void clear() {
    items_.clear();
    if (changed_) changed_();
  }

  // Sets the observer; an empty function takes it away.
  void observe(std::function<void()> changed) { changed_ = std::move(changed); }

 private:
  std::vector<std::string> items_;
  std::function<void()> changed_;
};

}  // namespace veltrin
