// SPDX-License-Identifier: GPL-3.0-or-later
// A file server that is gone.
#pragma once

#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>

#include "fake_machine.h"

namespace veltrin {

// The answer about a folder without a room of its own does not come until it is let go.
class SilentServer : public FakeMachine {
 public:
  std::optional<FileSystemRoom> room(const std::string& folder) const override {
    if (rooms.contains(folder)) return FakeMachine::room(folder);
    wait();
    return FileSystemRoom{4096, 10, 5, 4};
  }

  // Holds up the thread that calls it.
  void wait() const {
    std::unique_lock lock(mutex_);
    ++asked_;
    ++waiting_;
    changed_.notify_all();
    changed_.wait(lock, [&] { return back_; });
    --waiting_;
    changed_.notify_all();
  }

  // Returns when a question has come.
  void waitForQuestion() const {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return asked_ > 0; });
  }

  // Lets all answers go, and waits until they have. Returns how many there were.
  int comeBack() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return asked_ > 0; });
    back_ = true;
    changed_.notify_all();
    changed_.wait(lock, [&] { return waiting_ == 0; });
    return asked_;
  }

 private:
  mutable std::mutex mutex_;
  mutable std::condition_variable changed_;
  mutable int asked_ = 0;
  mutable int waiting_ = 0;
  bool back_ = false;
};

}  // namespace veltrin
