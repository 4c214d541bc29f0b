// SPDX-License-Identifier: GPL-3.0-or-later
// Feeds texts of `tracert`, whole and broken, to the reader, and checks what must hold
// for every line and for the text as a whole.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "route/tracert_reader.h"
#include "tests/support/characters.h"
#include "text/strings.h"

namespace {

using veltrin::TracertEvent;
using veltrin::TracertLine;

// Pieces of which texts are built. A byte of the input below their number stands for
// its piece.
constexpr std::array<std::string_view, 20> kPieces = {
    "Tracing route to target.example [203.0.113.80]\r\n",
    "over a maximum of 30 hops:\r\n",
    "over a maximum of 15 hops:\r\n",
    "30 HOPS",
    "Trace complete.\r\n",
    "trace COMPLETE",
    "  1    <1 ms    <1 ms    <1 ms  192.0.2.1 \r\n",
    " 10    12 ms     *       14 ms  hop-10.example [198.51.100.10] \r\n",
    "  3     *        *        *     Request timed out.\r\n",
    "  6  198.51.100.5  reports: Destination host unreachable.\r\n",
    "  2     1 ms     1 ms     1 ms  2001:db8:0:2:a:b:c:d \r\n",
    "*        *",
    "        *",
    "[",
    "]",
    "\r\n",
    "\r",
    "\n",
    " ",
    "         ",
};

void check(bool holds) {
  if (!holds) std::abort();
}

std::string textOf(const std::uint8_t* data, std::size_t size) {
  std::string text;
  for (std::size_t at = 0; at < size; ++at) {
    if (data[at] < kPieces.size()) {
      text += kPieces[data[at]];
    } else {
      text += static_cast<char>(data[at]);
    }
  }
  return text;
}

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::size_t start = 0;
  for (std::size_t end = text.find("\r\n"); end != std::string::npos;
       end = text.find("\r\n", start)) {
    lines.push_back(text.substr(start, end - start));
    start = end + 2;
  }
  lines.push_back(text.substr(start));
  return lines;
}

bool has(const std::string& text, std::string_view wanted) {
  return text.find(wanted) != std::string::npos;
}

// An address is part of its line, and a bare one is its end.
void checkAddress(const std::string& line, const std::string& address) {
  check(has(line, address));
  if (has(line, "[")) return;
  const std::size_t length = veltrin::charactersOf(address).size();
  check(length >= 9 && length <= 16);
  check(line.ends_with(address));
}

void checkLine(const std::string& line, const TracertEvent& event, bool wasReading,
               bool isReading) {
  const std::string lower = veltrin::LCase(line);
  check((event.line == TracertLine::Header) == has(lower, "30 hops"));
  if (event.line == TracertLine::Complete) check(has(lower, "trace complete"));
  if (event.line == TracertLine::SilentHop) check(has(line, "*        *        *"));
  if (event.line == TracertLine::Hop) {
    checkAddress(line, event.address);
  } else {
    check(event.address.empty());
  }
  const bool isHop = event.line == TracertLine::Hop || event.line == TracertLine::SilentHop;
  if (isHop) check(wasReading);
  if (event.line == TracertLine::Header) {
    check(isReading);
  } else if (event.line == TracertLine::Complete) {
    check(!isReading);
  } else {
    check(isReading == wasReading);
  }
  if (wasReading && event.line == TracertLine::Ignored) {
    check(veltrin::charactersOf(line).size() < 9 || veltrin::Trim(line).empty());
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = textOf(data, size);
  const std::vector<std::string> lines = linesOf(text);
  const std::vector<TracertEvent> events = veltrin::readTracert(text);
  check(events.size() == lines.size());
  veltrin::TracertReader reader;
  for (std::size_t index = 0; index < lines.size(); ++index) {
    const bool wasReading = reader.isReading();
    const TracertEvent event = reader.read(lines[index]);
    check(event == events[index]);
    checkLine(lines[index], event, wasReading, reader.isReading());
  }
  return 0;
}
