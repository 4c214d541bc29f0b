// SPDX-License-Identifier: GPL-3.0-or-later
// Questions to which no answer may ever come.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace veltrin {

// A server that is gone holds up whoever asks for anything on it, for ever. So a question is put
// on a thread beside. One that is not answered in time is given up, and nothing more is asked
// about the same matter until its answer comes after all: a matter costs the wait once, and one
// thread at most. For any number of threads; copies share what they have given up.
class TimedQuestions {
 public:
  using Patience = std::chrono::milliseconds;
  static constexpr Patience kPatience{1000};

  explicit TimedQuestions(Patience patience = kPatience);

  // Whether the question was asked to its end. If not, it may still run, whenever that is over:
  // it must own all that it uses, and nobody may look at what it writes.
  bool ask(const std::string& matter, std::function<void()> question) const;

 private:
  struct Open;
  std::shared_ptr<Open> open_;
  Patience patience_;
};

}  // namespace veltrin
