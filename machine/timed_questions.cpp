// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/timed_questions.h"

#include <future>
#include <mutex>
#include <set>
#include <system_error>
#include <thread>
#include <utility>

namespace veltrin {

// The matters about which an answer is still out.
struct TimedQuestions::Open {
  bool add(const std::string& matter) {
    const std::lock_guard lock(mutex);
    return matters.insert(matter).second;
  }
  void remove(const std::string& matter) {
    const std::lock_guard lock(mutex);
    matters.erase(matter);
  }

  std::mutex mutex;
  std::set<std::string> matters;
};

TimedQuestions::TimedQuestions(Patience patience)
    : open_(std::make_shared<Open>()), patience_(patience) {}

bool TimedQuestions::ask(const std::string& matter, std::function<void()> question) const {
  if (!open_->add(matter)) return false;
  std::promise<void> promise;
  const std::future<void> answer = promise.get_future();
  try {
    std::thread([open = open_, matter, question = std::move(question),
                 promise = std::move(promise)]() mutable {
      question();
      open->remove(matter);
      promise.set_value();
    }).detach();
  } catch (const std::system_error&) {
    open_->remove(matter);
    return false;
  }
  return answer.wait_for(patience_) == std::future_status::ready;
}

}  // namespace veltrin
