// SPDX-License-Identifier: GPL-3.0-or-later
// Whether a routine goes on behind a statement that fails.
#pragma once

#include <utility>

#include "text/statement.h"

namespace veltrin {

// Of two routines that do the same, one may skip what fails and the other leave. They share
// their statements and have each its own guard.
class Guard {
 public:
  static Guard skipping() { return Guard(true); }
  static Guard leaving() { return Guard(false); }

  // Runs one statement. A leaving guard lets its failure through.
  template <class Statement>
  void run(Statement&& statement) const {
    if (skips_) {
      skip(std::forward<Statement>(statement));
    } else {
      std::forward<Statement>(statement)();
    }
  }

  // The condition of a test. To a skipping guard one that fails is true, as control falls
  // into the body.
  template <class Condition>
  bool test(Condition&& condition) const {
    return skips_ ? holds(std::forward<Condition>(condition))
                  : std::forward<Condition>(condition)();
  }

 private:
  explicit Guard(bool skips) : skips_(skips) {}

  bool skips_;
};

}  // namespace veltrin
