// SPDX-License-Identifier: GPL-3.0-or-later
// The reading of the text that `tracert` prints.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace veltrin {

// What one line of a trace says.
enum class TracertLine {
  Header,     // the list of hops begins
  Complete,   // the list of hops has ended
  SilentHop,  // a hop that answered none of the three probes
  Hop,        // a hop with an address
  Ignored     // nothing, or a line outside the list
};

struct TracertEvent {
  TracertLine line = TracertLine::Ignored;

  // Of a hop: from between brackets as it stands there; a bare one with the blank that
  // ends its line, and with one before it when it is shorter than eight characters.
  std::string address;

  friend bool operator==(const TracertEvent&, const TracertEvent&) = default;
};

// Reads a trace line by line. A line counts by the words of the English tool that it
// holds, in any case of letters, and by whether the list of hops has begun; numbers
// of hops, times and the name of the destination are not looked at. A trace with
// another limit than 30 hops has no hops.
class TracertReader {
 public:
  // Reads one line, without its line break.
  TracertEvent read(std::string_view line);

  // Whether the list of hops has begun and not ended.
  bool isReading() const { return reading_; }

 private:
  bool reading_ = false;
};

// Reads a whole text, cut into lines at each carriage return and line feed pair: one
// event for each line.
std::vector<TracertEvent> readTracert(std::string_view text);

}  // namespace veltrin
