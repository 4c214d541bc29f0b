// SPDX-License-Identifier: GPL-3.0-or-later
#include "route_reading.h"

#include <algorithm>
#include <regex>

namespace veltrin {
namespace {

constexpr const char* kTitle = "\r\nTracing route to 192.0.2.7 over a maximum of 30 hops\r\n\r\n";
constexpr const char* kEnd = "\r\nTrace complete.\r\n";

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::size_t from = 0;
  for (std::size_t end = 0; (end = text.find("\r\n", from)) != std::string::npos; from = end + 2) {
    lines.push_back(text.substr(from, end - from));
  }
  return lines;
}

// The address at a line's end as its reader finds it: counted from the end, the
// first blank at the ninth to fifteenth place bounds it.
std::string addressAtEnd(const std::string& line) {
  std::size_t places = 16;
  for (std::size_t place = 15; place >= 9; --place) {
    if (line.size() > place && line[line.size() - place - 1] == ' ') {
      places = place;
    }
  }
  const std::string address = line.size() < places ? line : line.substr(line.size() - places);
  const std::size_t first = address.find_first_not_of(' ');
  return address.substr(first, address.find_last_not_of(' ') - first + 1);
}

std::string faultOfHop(const std::string& line, std::size_t number) {
  static const std::regex kHop(
      " {0,2}([0-9]+)  "
      "(?:(?:(?:  <1|[ 0-9]{3}[0-9]) ms  |   \\*     ){3}(?:[0-9.]+ |Request timed out\\.)|"
      "(?:(?:  <1|[ 0-9]{3}[0-9]) ms  |   \\*     ){0,2}[0-9.]+  reports: .*\\.)");
  std::smatch parts;
  if (!std::regex_match(line, parts, kHop)) {
    return "no hop: " + line;
  }
  return std::stoul(parts[1]) == number ? "" : "out of order: " + line;
}

}  // namespace

std::string faultOfTrace(const std::string& text) {
  const std::string title = kTitle;
  const std::string end = kEnd;
  if (!text.starts_with(title) || text.find("Tracing", 3) != std::string::npos) {
    return "not one title: " + text;
  }
  if (!text.ends_with(end) || text.find("Trace complete") != text.size() - end.size() + 2) {
    return "not one end: " + text;
  }
  const std::vector<std::string> lines =
      linesOf(text.substr(title.size(), text.size() - title.size() - end.size()));
  for (std::size_t at = 0; at < lines.size(); ++at) {
    std::string fault = faultOfHop(lines[at], at + 1);
    if (!fault.empty()) {
      return fault;
    }
  }
  return lines.empty() || lines.size() > 30 ? "no or too many hops" : "";
}

std::vector<std::string> hopsOfTrace(const std::string& text) {
  std::vector<std::string> hops;
  bool reading = false;
  for (const std::string& line : linesOf(text)) {
    if (line.find_first_not_of(' ') == std::string::npos) {
      continue;
    }
    if (line.find("30 hops") != std::string::npos) {
      reading = true;
    } else if (line.find("Trace complete") != std::string::npos) {
      reading = false;
    } else if (reading && line.find("*        *        *") != std::string::npos) {
      hops.emplace_back("*");
    } else if (reading) {
      hops.push_back(addressAtEnd(line));
    }
  }
  return hops;
}

}  // namespace veltrin
