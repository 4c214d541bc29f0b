// SPDX-License-Identifier: GPL-3.0-or-later
// Answers a trace, and then the statistics of a path, with whatever the bytes say,
// and checks that their texts stay whole: each echo takes bytes that tell how its
// answers come.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <regex>
#include <string>
#include <vector>

#include "console/pathping.h"
#include "console/tracert.h"
#include "path_network.h"
#include "route_reading.h"

namespace {

using veltrin::Microseconds;
using veltrin::TimedAnswer;

// Hands out the bytes one by one, then zeros.
class Source {
 public:
  Source(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

  std::uint8_t next() { return at_ < size_ ? data_[at_++] : 0; }

 private:
  const std::uint8_t* data_;
  std::size_t size_;
  std::size_t at_ = 0;
};

// An answer of any kind, from -1 to 6.5 seconds after its echo, from any of 256
// addresses.
TimedAnswer answerFrom(Source& source) {
  const int kind = source.next() % 11;
  const Microseconds delay = (source.next() * 256 + source.next()) * Microseconds{115} - 1'000'000;
  TimedAnswer answer = veltrin::passing("203.0.113." + std::to_string(source.next()), delay);
  answer.incoming.error.reset();
  if (kind < 9) {
    answer.incoming.error = static_cast<veltrin::IcmpError>(kind);
  }
  return answer;
}

// The text that a tool prints when the bytes decide about the answers.
template <class Tool>
std::string textOf(Source& source, const std::vector<std::string>& arguments) {
  veltrin::PathNetwork network;
  network.decide = [&](int /*hop*/, int /*number*/) {
    veltrin::PathNetwork::Answers answers;
    for (int left = source.next() % 4; left > 0; --left) {
      answers.push_back(answerFrom(source));
    }
    return answers;
  };
  veltrin::KeptOutput output;
  Tool(network, output).run(arguments);
  return output.text();
}

// What is wrong with a text of pathping with two queries a hop; empty for a sound one.
std::string faultOfTable(const std::string& text) {
  const std::string end = "\r\n\r\nTrace complete.\r\n";
  if (!text.ends_with(end)) {
    return "no end: " + text;
  }
  static const std::regex kRow(
      "\r\n(?: {27}|[ 0-9]{3}(?:[ 0-9]{5}ms|  ---  )     [0-2]/   2 =[ 0-9]{3}%)"
      "     [0-2]/   2 =[ 0-9]{3}%  [ 0-9a-f.|]");
  const auto rows = std::distance(std::sregex_iterator(text.begin(), text.end(), kRow), {});
  const auto shares = std::count(text.begin(), text.end(), '/');
  // "Lost/Sent" and "Node/Link" stand in the titles; a link has one share, a hop two.
  return (shares - 3) * 2 == rows * 3 ? "" : "no table: " + text;
}

void mustBeSound(const std::string& fault) {
  if (!fault.empty()) {
    std::fprintf(stderr, "%s\n", fault.c_str());
    std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Source source(data, size);
  mustBeSound(veltrin::faultOfTrace(textOf<veltrin::Tracert>(source, {"-d", "192.0.2.7"})));
  std::vector<std::string> arguments = {"-n", "-h", "4", "-q", "2", "-p", "50", "192.0.2.7"};
  if (source.next() % 2 == 1) {
    arguments.emplace_back("-b");
  }
  mustBeSound(faultOfTable(textOf<veltrin::Pathping>(source, arguments)));
  return 0;
}
