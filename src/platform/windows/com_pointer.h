// SPDX-License-Identifier: GPL-3.0-or-later
// One reference to an object of COM.
#pragma once

#include <utility>

namespace veltrin {

// Releases its reference at its end, so it has to end where the object is at home (ComThread).
template <class Interface>
class ComPointer {
 public:
  ComPointer() = default;
  ComPointer(ComPointer&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  ComPointer& operator=(ComPointer&& other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ComPointer(const ComPointer&) = delete;
  ComPointer& operator=(const ComPointer&) = delete;
  ~ComPointer() {
    if (object_ != nullptr) object_->Release();
  }

  Interface* get() const { return object_; }
  Interface* operator->() const { return object_; }
  Interface& operator*() const { return *object_; }
  explicit operator bool() const { return object_ != nullptr; }

  // For a call that hands out a reference. Only while there is none.
  Interface** out() { return &object_; }

 private:
  Interface* object_ = nullptr;
};

}  // namespace veltrin
