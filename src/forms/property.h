// SPDX-License-Identifier: GPL-3.0-or-later
// Values of controls that tell a view when they change.
#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "text/numbers.h"

namespace veltrin {

// One value of a control. Assigning another value tells the one observer, the
// view that shows the control; assigning the same value does nothing.
template <class Value>
class Property {
 public:
  Property() = default;
  explicit Property(Value value) : value_(std::move(value)) {}
  Property(const Property&) = delete;
  Property& operator=(const Property&) = delete;

  const Value& get() const { return value_; }
  operator const Value&() const { return value_; }

  Property& operator=(Value value) {
    if (value == value_) return *this;
    value_ = std::move(value);
    if (changed_) changed_();
    return *this;
  }

  // Sets the observer; an empty function takes it away.
  void observe(std::function<void()> changed) { changed_ = std::move(changed); }

  friend bool operator==(const Property& left, const Value& right) { return left.value_ == right; }

 private:
  Value value_{};
  std::function<void()> changed_;
};

// The text of a control that may grow to megabytes: appending costs no more
// for a long text than for a short one, and the observer learns what was added.
class TextProperty {
 public:
  TextProperty() = default;
  TextProperty(const TextProperty&) = delete;
  TextProperty& operator=(const TextProperty&) = delete;

  const std::string& get() const { return value_; }
  operator const std::string&() const { return value_; }

  TextProperty& operator=(std::string value) {
    if (value == value_) return *this;
    value_ = std::move(value);
    tell(0);
    return *this;
  }

  TextProperty& operator+=(std::string_view added) {
    if (added.empty()) return *this;
    const std::size_t kept = value_.size();
    value_ += added;
    tell(kept);
    return *this;
  }

  // Puts `added` in the place of `removed` bytes from `position` on; what lies behind
  // the end is left out. Costs no copy of the text.
  void replace(std::size_t position, std::size_t removed, std::string_view added) {
    const std::size_t start = std::min(position, value_.size());
    const std::size_t length = std::min(removed, value_.size() - start);
    if (std::string_view(value_).substr(start, length) == added) return;
    value_.replace(start, length, added);
    tell(start);
  }

  // Sets the observer, which is called with the number of leading bytes that
  // stayed as they were. An empty function takes it away.
  void observe(std::function<void(std::size_t kept)> changed) { changed_ = std::move(changed); }

  // Sets what the control itself does after each change.
  void onChange(std::function<void()> routine) { routine_ = std::move(routine); }

  friend bool operator==(const TextProperty& left, std::string_view right) {
    return left.value_ == right;
  }

 private:
  void tell(std::size_t kept) {
    if (changed_) changed_(kept);
    if (routine_) routine_();
  }

  std::string value_;
  std::function<void(std::size_t)> changed_;
  std::function<void()> routine_;
};

inline double Val(const Property<std::string>& property) { return Val(property.get()); }
inline double Val(const TextProperty& property) { return Val(property.get()); }

}  // namespace veltrin
