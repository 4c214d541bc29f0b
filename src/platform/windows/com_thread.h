// SPDX-License-Identifier: GPL-3.0-or-later
// A thread on which objects of COM are at home.
#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <type_traits>
#include <utility>

#include "platform/windows/pool_call.h"

namespace veltrin {

// Carries out calls one after the other, in the multithreaded apartment of the process, so that
// it does not matter whether and how whoever calls has COM initialised. Nobody else touches the
// objects: they are made, called and released here.
class ComThread {
 public:
  // How long the end waits for calls that are still to be done.
  static constexpr std::chrono::milliseconds kLongestEnd{2000};

  // Starts the thread. `whileSilent` is called while a call has not returned; without it the
  // caller blocks. Throws StatementFailed when the system has no thread to give.
  explicit ComThread(WhileSilent whileSilent = {},
                     std::chrono::milliseconds longestEnd = kLongestEnd);

  // Everything that was posted is done first. A thread that hangs in the system is left to
  // itself, as nothing can end it, and to the end of the process.
  ~ComThread();

  ComThread(const ComThread&) = delete;
  ComThread& operator=(const ComThread&) = delete;

  // Does `work` and returns what it returns, or throws what it throws. The work must own what
  // it writes to: it goes on when `whileSilent` throws, and what it returns then ends here.
  template <class Work>
  std::invoke_result_t<Work> call(Work work) {
    using Result = std::invoke_result_t<Work>;
    auto task = std::make_shared<std::packaged_task<Result()>>(std::move(work));
    auto result = std::make_shared<std::future<Result>>(task->get_future());
    try {
      postAndWait([task] { (*task)(); });
    } catch (...) {
      post([task = std::move(task), result = std::move(result)] {});
      throw;
    }
    return result->get();
  }

  // Does `work` behind all that came before; nobody waits. It throws nothing.
  void post(std::function<void()> work);

 private:
  struct State;

  void postAndWait(std::function<void()> work);

  WhileSilent whileSilent_;
  std::chrono::milliseconds longestEnd_;
  std::shared_ptr<State> state_;  // shared with the thread, which may outlive this
};

}  // namespace veltrin
