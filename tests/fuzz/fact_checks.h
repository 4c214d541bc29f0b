// SPDX-License-Identifier: GPL-3.0-or-later
// What holds of every fact, whatever the bytes that it was read from.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>

#include "machine/fact_text.h"

namespace veltrin {

inline void check(bool holds) {
  if (!holds) {
    std::abort();
  }
}

inline void checkPrintable(const std::string& text) {
  check(std::none_of(text.begin(), text.end(),
                     [](char character) { return character >= 0 && character < ' '; }));
  check(printable(text) == text);
}

inline void checkWithin(const std::string& text, std::string_view bytes) {
  checkPrintable(text);
  check(text.size() <= bytes.size());
}

}  // namespace veltrin
