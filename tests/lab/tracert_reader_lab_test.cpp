// SPDX-License-Identifier: GPL-3.0-or-later
// What the reader of the windows takes from the real text of tracert on every path of
// the lab. Skipped with the lab's reason where it cannot run.
#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

#include "lab_program.h"
#include "route/tracert_reader.h"

namespace veltrin::lab {
namespace {

using Lines = std::vector<std::string>;

// One trace: where, with which arguments, and what the reader takes from its text: an
// address, or "*" for a silent hop.
struct Path {
  std::string name;
  std::string scenario;
  std::string arguments;
  Lines hops;
};

std::ostream& operator<<(std::ostream& out, const Path& path) { return out << path.name; }

// The routers of the longer paths from one hop to another, each with `end` behind it.
Lines routers(int first, int last, const std::string& end) {
  Lines hops;
  for (int hop = first; hop <= last; ++hop) {
    hops.push_back("198.51.100." + std::to_string(hop) + end);
  }
  return hops;
}

Lines operator+(Lines left, const Lines& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

// The usual fifteen hops, as addresses in brackets or as bare ones with their blank.
Lines fifteen(const std::string& end) {
  return Lines{"192.0.2.1" + end} + routers(2, 14, end) + Lines{"203.0.113.80" + end};
}

Lines fifteenWithout(const std::set<std::size_t>& silent, const std::string& end) {
  Lines hops = fifteen(end);
  for (const std::size_t hop : silent) hops[hop - 1] = "*";
  return hops;
}

const std::vector<Path> kPaths = {
    {"CleanNamed", "clean-15", "-4 target.example", fifteen("")},
    {"CleanBare", "clean-15", "-d -4 target.example", fifteen(" ")},
    {"DyingNamed", "dies-and-returns", "target.example", fifteen("")},
    {"LossyNamed", "lossy-middle", "target.example", fifteen("")},
    {"RateLimitedNamed", "rate-limited", "target.example", fifteen("")},
    {"RateLimitedBareWithStars", "rate-limited", "-d target.example", fifteen(" ")},
    {"SilentNamed", "silent-15", "target.example", fifteenWithout({3, 8, 9}, "")},
    {"SilentBare", "silent-15", "-d target.example", fifteenWithout({3, 8, 9}, " ")},
    {"SlowRouterBare", "slow-router", "-d target.example",
     Lines{"192.0.2.1 "} + routers(2, 8, " ") + Lines{"203.0.113.80 "}},
    {"LongNamed", "long-30", "target.example",
     Lines{"192.0.2.1"} + routers(2, 29, "") + Lines{"203.0.113.80"}},
    {"LongBare", "long-30", "-d target.example",
     Lines{"192.0.2.1 "} + routers(2, 29, " ") + Lines{"203.0.113.80 "}},
    {"TooFarBare", "long-30", "-d too-far.example", Lines{"192.0.2.1 "} + routers(2, 30, " ")},
    {"AnotherLimit", "clean-15", "-4 -h 20 target.example", {}},
    {"BalancedBare",
     "balanced",
     "-d target.example",
     {"192.0.2.1 ", "198.51.100.2 ", "198.51.100.3 ", "198.51.100.44 ", "198.51.100.54 ",
      "198.51.100.6 ", "198.51.100.7 ", "203.0.113.80 "}},
    {"OddRepliesBareWithOneStar", "odd-replies", "-d target.example",
     Lines{"192.0.2.1 "} + routers(2, 6, " ") + Lines{"203.0.113.80 "}},
    {"DemoWithASilentHop",
     "demo",
     "-4 far.example",
     {"192.0.2.1", "198.51.100.1", "198.51.100.9", "*", "198.51.100.25", "203.0.113.80"}},
    {"DownloadNamed",
     "download",
     "-4 download.example",
     {"192.0.2.1", "198.51.100.1", "198.51.100.9", "203.0.113.60"}},
    {"JitteryNamed",
     "jittery-hop",
     "target.example",
     {"192.0.2.1", "198.51.100.2", "198.51.100.3", "198.51.100.4", "203.0.113.80"}},
    {"TwoOutagesBare",
     "two-outages",
     "-d target.example",
     {"192.0.2.1 ", "198.51.100.2 ", "203.0.113.80 "}},
    {"OneHop", "ping-test", "-d -4 near.example", {"203.0.113.2 "}},
    {"NarrowBare",
     "mtu-1400",
     "-d -4 hole.example",
     {"192.0.2.1 ", "198.51.100.2 ", "198.51.100.3 ", "198.51.100.4 ", "*", "203.0.113.82 "}},
    {"Ipv6Named",
     "ipv6",
     "target.example",
     {"2001:db8::1", "2001:db8:0:2::1", "2001:db8:0:3::1", "2001:db8:0:4::1", "2001:db8:0:5::1",
      "2001:db8:0:6::1", "2001:db8:0:7::1", "2001:db8:0:8::1", "2001:db8:0:9::1", "2001:db8:0:a::1",
      "2001:db8:0:b::1", "2001:db8:0:c::1", "2001:db8:0:d::1", "2001:db8:0:e::1",
      "2001:db8:0:80::1"}},
    // The last address is one character longer than the search from the line's end goes.
    {"Ipv6Bare",
     "ipv6",
     "-d target.example",
     {"2001:db8::1 ", "2001:db8:0:2::1 ", "2001:db8:0:3::1 ", "2001:db8:0:4::1 ",
      "2001:db8:0:5::1 ", "2001:db8:0:6::1 ", "2001:db8:0:7::1 ", "2001:db8:0:8::1 ",
      "2001:db8:0:9::1 ", "2001:db8:0:a::1 ", "2001:db8:0:b::1 ", "2001:db8:0:c::1 ",
      "2001:db8:0:d::1 ", "2001:db8:0:e::1 ", "001:db8:0:80::1 "}},
    {"UnreachableNamed", "unreachable", "-4 target.example",
     Lines{"192.0.2.1"} + routers(2, 5, "") + Lines{"198.51.100.5"}},
    {"UnreachableBare", "unreachable", "-d -4 target.example",
     Lines{"192.0.2.1 "} + routers(2, 5, " ") + Lines{"unreachable."}},
};

class TracertReaderLab : public LabRunning, public testing::WithParamInterface<Path> {
 protected:
  static std::string textOf(const Path& path) {
    return runLine(std::string("export TRACERT='") + ROUTE_TRACERT + "'; \"$LAB\" " +
                   path.scenario + " -- \"$TRACERT\" " + path.arguments)
        .text;
  }

  // Where two routers share a hop, either may answer; both count as the western one.
  static std::string western(const std::string& address) {
    if (GetParam().scenario != "balanced") return address;
    if (address == "198.51.100.45 ") return "198.51.100.44 ";
    return address == "198.51.100.55 " ? "198.51.100.54 " : address;
  }

  static Lines hopsOf(const std::vector<TracertEvent>& events) {
    Lines hops;
    for (const TracertEvent& event : events) {
      if (event.line == TracertLine::Hop) hops.push_back(western(event.address));
      if (event.line == TracertLine::SilentHop) hops.emplace_back("*");
    }
    return hops;
  }
};

TEST_P(TracertReaderLab, TakesTheHopsOfThePath) {
  const std::string text = textOf(GetParam());
  EXPECT_EQ(hopsOf(readTracert(text)), GetParam().hops) << text;
}

INSTANTIATE_TEST_SUITE_P(Paths, TracertReaderLab, testing::ValuesIn(kPaths),
                         [](const testing::TestParamInfo<Path>& path) { return path.param.name; });

TEST(TracertReaderLabPaths, AreOfEveryScenario) {
  std::set<std::string> scenarios;
  for (const auto& file : std::filesystem::directory_iterator(LAB_SCENARIOS)) {
    scenarios.insert(file.path().stem().string());
  }
  std::set<std::string> traced;
  for (const Path& path : kPaths) traced.insert(path.scenario);
  EXPECT_EQ(traced, scenarios);
}

}  // namespace
}  // namespace veltrin::lab
