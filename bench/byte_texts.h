// SPDX-License-Identifier: GPL-3.0-or-later
// The text functions and the readings of tools' texts as they are when lengths and
// positions count bytes: what those that count characters are measured against.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "route/tracert_reader.h"
#include "text/loose.h"
#include "text/statement.h"
#include "text/strings.h"

namespace bytes {

using veltrin::Compare;
using veltrin::StatementFailed;

inline void requirePosition(std::int64_t start) {
  if (start < 1) throw StatementFailed("Invalid position", veltrin::kInvalidProcedureCall);
}

inline void requireNotNegative(std::int64_t length) {
  if (length < 0) throw StatementFailed("Invalid length", veltrin::kInvalidProcedureCall);
}

inline std::int64_t Len(std::string_view text) { return static_cast<std::int64_t>(text.size()); }

// What follows is kept from being inlined, as the program's own functions are.

[[gnu::noinline]] inline std::string Mid(std::string_view text, std::int64_t start,
                                         std::int64_t length) {
  requirePosition(start);
  requireNotNegative(length);
  if (start > Len(text)) return {};
  return std::string(
      text.substr(static_cast<std::size_t>(start - 1), static_cast<std::size_t>(length)));
}

[[gnu::noinline]] inline std::string Mid(std::string_view text, std::int64_t start) {
  return Mid(text, start, Len(text));
}

[[gnu::noinline]] inline std::string Left(std::string_view text, std::int64_t length) {
  requireNotNegative(length);
  return std::string(text.substr(0, static_cast<std::size_t>(length)));
}

inline char folded(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

[[gnu::noinline]] inline std::int64_t InStr(std::int64_t start, std::string_view text,
                                            std::string_view wanted,
                                            Compare compare = Compare::Exact) {
  requirePosition(start);
  if (start > Len(text)) return 0;
  const auto same = [compare](char left, char right) {
    return compare == Compare::Exact ? left == right : folded(left) == folded(right);
  };
  const auto found =
      std::search(text.begin() + (start - 1), text.end(), wanted.begin(), wanted.end(), same);
  if (found == text.end() && !wanted.empty()) return 0;
  return found - text.begin() + 1;
}

// The chain reading of a chunk of ping's text.
[[gnu::noinline]] inline void readAverage(const std::string& chunk, veltrin::Loose& time) {
  constexpr std::string_view kAverage = "Average = ";
  if (bytes::InStr(1, chunk, "Average = 0ms", Compare::IgnoreCase) > 0) {
    time = 0;
    return;
  }
  const std::int64_t found = bytes::InStr(1, chunk, kAverage, Compare::IgnoreCase);
  if (found == 0) return;
  time = Mid(chunk, found + Len(kAverage));
  if (Left(time.text(), 1) == "0") {
    time = 0;
    return;
  }
  veltrin::skip([&] {
    const std::string text = time.text();
    time = Left(text, bytes::InStr(1, text, "ms", Compare::IgnoreCase) - 1);
  });
}

// The tail reading.
[[gnu::noinline]] inline std::optional<std::string> readTail(const std::string& chunk,
                                                             veltrin::Loose& time) {
  const std::int64_t length = Len(chunk);
  if (!veltrin::holds([&] { return Mid(chunk, length - 4, 2) == "ms"; })) return std::nullopt;
  veltrin::skip([&] { time = Mid(chunk, length - 11, 9); });
  const std::string window = time.text();
  std::optional<std::string> value;
  for (std::int64_t i = 1; i <= 9; ++i) {
    if (Mid(window, i, 1) != "=") continue;
    veltrin::skip([&] { value = Mid(window, i + 2, 6 - i); });
    break;
  }
  return value;
}

// The reading of one line of tracert's text.
class TracertReader {
 public:
  [[gnu::noinline]] veltrin::TracertEvent read(std::string_view line) {
    using veltrin::TracertLine;
    if (veltrin::Trim(line).empty()) return {};
    if (bytes::InStr(1, line, "30 hops", Compare::IgnoreCase) > 0) {
      reading_ = true;
      return {TracertLine::Header, {}};
    }
    if (bytes::InStr(1, line, "Trace complete", Compare::IgnoreCase) > 0) {
      reading_ = false;
      return {TracertLine::Complete, {}};
    }
    return reading_ ? readHop(line) : veltrin::TracertEvent();
  }

 private:
  static veltrin::TracertEvent readHop(std::string_view line) {
    using veltrin::TracertLine;
    if (bytes::InStr(1, line, "*        *        *", Compare::IgnoreCase) > 0) {
      return {TracertLine::SilentHop, {}};
    }
    const std::int64_t open = bytes::InStr(1, line, "[");
    veltrin::TracertEvent event;
    veltrin::skip([&] {
      event.address = open > 0 ? inBrackets(line, open) : bare(line);
      event.line = TracertLine::Hop;
    });
    return event;
  }

  static std::string inBrackets(std::string_view line, std::int64_t open) {
    const std::string behind = Mid(line, open + 1);
    std::string address = behind;
    veltrin::skip([&] { address = Left(behind, bytes::InStr(1, line, "]") - open - 1); });
    return address;
  }

  static std::string bare(std::string_view line) {
    const std::int64_t length = Len(line);
    std::int64_t fromEnd = 9;
    while (fromEnd <= 15 &&
           !veltrin::holds([&] { return Mid(line, length - fromEnd, 1) == " "; })) {
      ++fromEnd;
    }
    return Mid(line, length - fromEnd + 1);
  }

  bool reading_ = false;
};

// A whole text, cut into lines.
[[gnu::noinline]] inline std::vector<veltrin::TracertEvent> readTracert(std::string_view text) {
  TracertReader reader;
  std::vector<veltrin::TracertEvent> events;
  for (;;) {
    const std::size_t end = text.find(veltrin::kLineBreak);
    events.push_back(reader.read(text.substr(0, end)));
    if (end == std::string_view::npos) return events;
    text.remove_prefix(end + veltrin::kLineBreak.size());
  }
}

}  // namespace bytes
