// SPDX-License-Identifier: GPL-3.0-or-later
#include "route/tracert_reader.h"

#include "text/statement.h"
#include "text/strings.h"

namespace veltrin {
namespace {

constexpr std::string_view kHeader = "30 hops";
constexpr std::string_view kComplete = "Trace complete";
constexpr std::string_view kThreeStars = "*        *        *";

// How far from its end a line is searched for the blank before a bare address.
constexpr std::int64_t kFirstFromEnd = 9;
constexpr std::int64_t kLastFromEnd = 15;

bool holdsMark(std::string_view line, std::string_view mark) {
  return InStr(1, line, mark, Compare::IgnoreCase) > 0;
}

// The text behind "[" up to the first "]" of the line. Where that one is missing or
// stands before the "[", nothing can be cut off, and the text goes to the line's end.
std::string addressInBrackets(std::string_view line, std::int64_t open) {
  const std::string behind = Mid(line, open + 1);
  std::string address = behind;
  skip([&] { address = Left(behind, InStr(1, line, "]") - open - 1); });
  return address;
}

// What stands behind the blank nearest to the place of nine characters before the
// line's end, sixteen characters where there is none. The search stops where the line
// begins, too. Throws StatementFailed for a line of fewer than nine characters.
std::string bareAddress(std::string_view line) {
  const std::string end = Right(line, kLastFromEnd + 1);
  const std::int64_t length = Len(end);
  std::int64_t fromEnd = kFirstFromEnd;
  while (fromEnd <= kLastFromEnd && !holds([&] { return Mid(end, length - fromEnd, 1) == " "; })) {
    ++fromEnd;
  }
  return Mid(end, length - fromEnd + 1);
}

// A line that is too short to hold an address gives none.
TracertEvent readHop(std::string_view line) {
  if (holdsMark(line, kThreeStars)) return {TracertLine::SilentHop, {}};
  const std::int64_t bracket = InStr(1, line, "[");
  TracertEvent event;
  skip([&] {
    event.address = bracket > 0 ? addressInBrackets(line, bracket) : bareAddress(line);
    event.line = TracertLine::Hop;
  });
  return event;
}

}  // namespace

TracertEvent TracertReader::read(std::string_view line) {
  if (Trim(line).empty()) return {};
  if (holdsMark(line, kHeader)) {
    reading_ = true;
    return {TracertLine::Header, {}};
  }
  if (holdsMark(line, kComplete)) {
    reading_ = false;
    return {TracertLine::Complete, {}};
  }
  return reading_ ? readHop(line) : TracertEvent();
}

std::vector<TracertEvent> readTracert(std::string_view text) {
  TracertReader reader;
  std::vector<TracertEvent> events;
  for (;;) {
    const std::size_t end = text.find(kLineBreak);
    events.push_back(reader.read(text.substr(0, end)));
    if (end == std::string_view::npos) return events;
    text.remove_prefix(end + kLineBreak.size());
  }
}

}  // namespace veltrin
