// SPDX-License-Identifier: GPL-3.0-or-later
// A file descriptor that closes itself, and the failure to serve.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace veltrin::endpoint {

// Owns a file descriptor; moves, never copies.
class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    if (this != &other) {
      reset();
      number_ = std::exchange(other.number_, -1);
    }
    return *this;
  }
  ~Descriptor() { reset(); }

  // -1 when it holds none.
  int get() const { return number_; }

  // Closes it now.
  void reset();

 private:
  int number_ = -1;
};

// The server cannot do its work on this machine. what() gives the reason in words.
class CannotServe : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Throws CannotServe: `what`, a colon and the words of the present errno.
[[noreturn]] void failWithErrno(const std::string& what);

// The descriptor, when it is one; throws as above when it is negative.
Descriptor opened(int number, const std::string& what);

}  // namespace veltrin::endpoint
