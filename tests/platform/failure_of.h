// SPDX-License-Identifier: GPL-3.0-or-later
// What a statement of the program fails with.
#pragma once

#include <functional>

#include "text/statement.h"

namespace veltrin {

// Number of the failure of a statement; 0 when it does not fail.
inline int failureOf(const std::function<void()>& statement) {
  try {
    statement();
    return 0;
  } catch (const StatementFailed& failure) {
    return failure.number();
  }
}

}  // namespace veltrin
