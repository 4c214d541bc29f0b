// SPDX-License-Identifier: GPL-3.0-or-later
// A file descriptor that closes itself, and the failure to set up the lab.
#pragma once

#include <stdexcept>
#include <string>
#include <unistd.h>
#include <utility>

namespace veltrin::lab {

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
  void reset() {
    if (number_ >= 0) close(number_);
    number_ = -1;
  }

 private:
  int number_ = -1;
};

// The lab cannot run on this machine. what() gives the reason in words.
class CannotRun : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Throws CannotRun: `what`, a colon and the words of the present errno.
[[noreturn]] void failWithErrno(const std::string& what);

}  // namespace veltrin::lab
