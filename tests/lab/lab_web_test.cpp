// SPDX-License-Identifier: GPL-3.0-or-later
// Web hosts in scenario files and on the simulated way, without a server.
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <string>

#include "lab/installation.h"
#include "lab/internet.h"
#include "lab/library.h"
#include "lab/web_pattern.h"
#include "lab_packets.h"

namespace veltrin::lab {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using testing::ElementsAre;
using testing::IsEmpty;

// Lines 1 to 5 of the texts below.
const std::string kHost =
    "[internet]\n"
    "machine = 192.0.2.2/24, 2001:db8::2/64\n"
    "dns = 198.51.100.53\n"
    "[host far.example]\n"
    "address = 203.0.113.80, 2001:db8:0:80::1\n";

std::string errorOf(const std::string& text) {
  try {
    readScenario(text);
  } catch (const ScenarioError& error) {
    return error.what();
  }
  return "no error";
}

TEST(LabWeb, ReadsWhatAHostServes) {
  const Scenario scenario = readScenario(kHost +
                                         "[web FAR.example]\n"
                                         "port = 8080\n"
                                         "rate = 625000\n"
                                         "stall = after 50000 for 1.5 s\n"
                                         "files = /one.bin 80000, /a/b_c~d-e 0\n");
  const WebSite& site = scenario.nodes.at(0).web.value();
  EXPECT_EQ(site.port, 8080);
  EXPECT_EQ(site.rate, 625000U);
  EXPECT_EQ(site.stall, (WebStall{50000, milliseconds(1500)}));
  EXPECT_THAT(site.files, ElementsAre(WebFile{"/one.bin", 80000}, WebFile{"/a/b_c~d-e", 0}));
}

TEST(LabWeb, ServesAtTheUsualPortAsFastAsItGoes) {
  const WebSite site =
      readScenario(kHost + "[web far.example]\nfiles = /one 1\n").nodes.at(0).web.value();
  EXPECT_EQ(site.port, 80);
  EXPECT_EQ(site.rate, kMostWebRate);
  EXPECT_FALSE(site.stall.has_value());
}

TEST(LabWeb, HostWithoutASectionServesNothing) {
  EXPECT_FALSE(readScenario(kHost).nodes.at(0).web.has_value());
}

TEST(LabWeb, ReadsTheSettingsOfTheProgram) {
  EXPECT_THAT(readScenario(kHost + "[installation]\nProbeHost = far.example\nUrl = http://a/?b=c\n")
                  .installation,
              ElementsAre(Setting{"ProbeHost", "far.example"}, Setting{"Url", "http://a/?b=c"}));
}

struct WebFault {
  std::string text;  // behind the host
  std::string error;
};

class LabWebFault : public testing::TestWithParam<WebFault> {};

TEST_P(LabWebFault, IsToldWithItsLine) {
  EXPECT_EQ(errorOf(kHost + GetParam().text), GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(
    Sections, LabWebFault,
    testing::Values(
        WebFault{"[web near.example]\n", "line 6: no section of \"near.example\" above this one"},
        WebFault{"[router r]\naddress = 192.0.2.1\n[web r]\n",
                 "line 8: \"r\" is a router, which serves nothing"},
        WebFault{"[web far.example]\nfiles = /a 1\n[web far.example]\n",
                 "line 8: a second section [web far.example]"},
        WebFault{"[web far.example]\nrate = 5\n",
                 "line 6: [web far.example] lacks the key \"files\""},
        WebFault{"[web far.example]\n[installation]\n",
                 "line 6: [web far.example] lacks the key \"files\""},
        WebFault{"[web far.example]\nspeed = 5\n",
                 "line 7: \"speed\" is no key here; known are port, rate, stall, files"},
        WebFault{"[web far.example]\nrate = 5\nrate = 5\n",
                 "line 8: \"rate\" stands twice in this section"},
        WebFault{"[installation]\n[installation]\n", "line 7: a second section [installation]"},
        WebFault{"[installation]\nA = 1\nA = 1\n", "line 8: \"A\" stands twice in this section"}));

INSTANTIATE_TEST_SUITE_P(
    Values, LabWebFault,
    testing::Values(
        WebFault{"[web far.example]\nport = 0\n",
                 "line 7: expected a whole number from 1 to 65535, found \"0\""},
        WebFault{"[web far.example]\nport = 65536\n",
                 "line 7: expected a whole number from 1 to 65535, found \"65536\""},
        WebFault{"[web far.example]\nrate = 0\n",
                 "line 7: expected a whole number from 1 to 1000000000, found \"0\""},
        WebFault{"[web far.example]\nrate = 5 KB\n",
                 "line 7: expected a whole number from 1 to 1000000000, found \"5 KB\""},
        WebFault{"[web far.example]\nstall = 2 s\n",
                 "line 7: expected bytes and a time, such as \"after 50000 for 2 s\", found \"2 "
                 "s\""},
        WebFault{"[web far.example]\nstall = after for 2 s\n",
                 "line 7: expected bytes and a time, such as \"after 50000 for 2 s\", found "
                 "\"after for 2 s\""},
        WebFault{"[web far.example]\nstall = after half for 2 s\n",
                 "line 7: expected a whole number from 0 to 1000000000000, found \"half\""},
        WebFault{"[web far.example]\nstall = after 5 for 61 s\n",
                 "line 7: expected a time from 0 to 60 s, such as \"2 ms\", found \"61 s\""},
        WebFault{"[web far.example]\nfiles =\n",
                 "line 7: expected a path and a size in bytes, such as \"/one.bin 5000\", found "
                 "\"\""},
        WebFault{"[web far.example]\nfiles = one.bin 5\n",
                 "line 7: expected a path and a size in bytes, such as \"/one.bin 5000\", found "
                 "\"one.bin 5\""},
        WebFault{"[web far.example]\nfiles = /one?a 5\n",
                 "line 7: expected a path and a size in bytes, such as \"/one.bin 5000\", found "
                 "\"/one?a 5\""},
        WebFault{"[web far.example]\nfiles = /one.bin\n",
                 "line 7: expected a path and a size in bytes, such as \"/one.bin 5000\", found "
                 "\"/one.bin\""},
        WebFault{"[web far.example]\nfiles = /one.bin big\n",
                 "line 7: expected a whole number from 0 to 1000000000000, found \"big\""},
        WebFault{"[web far.example]\nfiles = /a 1, /b 2, /a 3\n",
                 "line 7: \"/a\" stands twice here"}));

// --- The settings of the program ---

TEST(LabInstallation, SettingsStandInPlaceOfTheirNamesakes) {
  const std::vector<Setting> settings = {{"Url", "http://a/"}, {"probehost", "near.example"}};
  EXPECT_EQ(
      withSettings("; words\r\n[Installation]\r\n; more\r\nProbeHost=x\r\nServer=y\r\n", settings),
      "; words\r\n[Installation]\r\nUrl=http://a/\r\nprobehost=near.example\r\n; "
      "more\r\nServer=y\r\n");
}

TEST(LabInstallation, SettingsOfOtherSectionsStay) {
  EXPECT_EQ(withSettings("[Other]\nUrl=1\n[installation]\nUrl=2\n[More]\nUrl=3",
                         std::vector<Setting>{{"Url", "4"}}),
            "[Other]\nUrl=1\n[Installation]\r\nUrl=4\r\n[More]\nUrl=3");
}

TEST(LabInstallation, AFileWithoutTheSectionGetsIt) {
  EXPECT_EQ(withSettings("; words\n", std::vector<Setting>{{"Url", "4"}}),
            "[Installation]\r\nUrl=4\r\n; words\n");
  EXPECT_EQ(withSettings("", std::vector<Setting>{{"Url", "4"}}), "[Installation]\r\nUrl=4\r\n");
}

// --- What is in the files ---

TEST(LabWebPattern, HasNoStretchThatComesAgain) {
  std::set<std::string> stretches;
  constexpr std::uint64_t kPlaces = 100'000;
  for (std::uint64_t place = 0; place < kPlaces; ++place) {
    std::string stretch;
    for (std::uint64_t at = 0; at < 8; ++at) {
      stretch += static_cast<char>(webByte(place + at));
    }
    stretches.insert(stretch);
  }
  EXPECT_EQ(stretches.size(), kPlaces);
}

// --- On the way ---

constexpr std::uint8_t kTcp = 6;

// The headers of a segment are the ends' own affair.
Packet segmentTo(std::string_view to, std::uint8_t ttl = 64) {
  return makeV4(kMachine, to, kTcp, Packet(20, 7), ttl);
}
Packet segmentFrom(std::string_view from) { return makeV4(from, kMachine, kTcp, Packet(20, 9)); }

class LabWebWay : public testing::Test {
 protected:
  Internet internet_{readScenario(
      "[internet]\nmachine = 192.0.2.2/24, 2001:db8::2/64\ndns = 198.51.100.53\n"
      "[router gateway]\naddress = 192.0.2.1\ndelay = 1 ms\nlink-delay = 4 ms\n"
      "[at 50 s gateway]\nbeyond = lost\n"
      "[host far]\naddress = 203.0.113.80, 2001:db8:0:80::1\ndelay = 30 ms\nlink-delay = 6 ms\n"
      "via = gateway\n"
      "[at 20 s far]\nsilent = yes\n"
      "[at 40 s far]\nsilent = no\n"
      "[web far]\nfiles = /one 1\n"
      "[host other]\naddress = 203.0.113.81\n"
      "[host lossy]\naddress = 203.0.113.82\nlink-loss-pattern = every 2nd\n"
      "[web lossy]\nfiles = /one 1\n")};
};

TEST_F(LabWebWay, SegmentReachesTheServerAfterHalfTheDelay) {
  const Packet segment = segmentTo("203.0.113.80");
  const auto packets = internet_.receive(seconds(1), segment);
  ASSERT_EQ(packets.size(), 1U);
  EXPECT_EQ(packets[0].to, Side::Servers);
  EXPECT_EQ(packets[0].due, seconds(1) + milliseconds(20));
  EXPECT_EQ(packets[0].bytes, segment);
}

TEST_F(LabWebWay, SegmentReachesTheMachineAfterTheOtherHalf) {
  const Packet segment = segmentFrom("203.0.113.80");
  const auto packets = internet_.receiveFromServers(seconds(1), segment);
  ASSERT_EQ(packets.size(), 1U);
  EXPECT_EQ(packets[0].to, Side::Machine);
  EXPECT_EQ(packets[0].due, seconds(1) + milliseconds(20));
  EXPECT_EQ(packets[0].bytes, segment);
}

TEST_F(LabWebWay, SegmentOverIpv6GoesBothWays) {
  const std::string_view host = "2001:db8:0:80::1";
  EXPECT_EQ(internet_.receive(Time::zero(), makeV6(kMachineV6, host, kTcp, Packet(20, 7))).at(0).to,
            Side::Servers);
  EXPECT_EQ(
      internet_.receiveFromServers(Time::zero(), makeV6(host, kMachineV6, kTcp, Packet(20, 9)))
          .at(0)
          .to,
      Side::Machine);
}

TEST_F(LabWebWay, SegmentThatEndsOnTheWayIsTold) {
  const auto packets = internet_.receive(Time::zero(), segmentTo("203.0.113.80", 1));
  ASSERT_EQ(packets.size(), 1U);
  EXPECT_EQ(packets[0].to, Side::Machine);
  EXPECT_EQ(readIp(packets[0].bytes)->source, addressOf("192.0.2.1"));
}

TEST_F(LabWebWay, SegmentOnTheWayOutIsLostAsAnEchoIs) {
  EXPECT_EQ(internet_.receive(Time::zero(), segmentTo("203.0.113.82")).size(), 1U);
  EXPECT_THAT(internet_.receive(Time::zero(), segmentTo("203.0.113.82")), IsEmpty());
}

TEST_F(LabWebWay, SegmentForAHostThatServesNothingVanishes) {
  EXPECT_THAT(internet_.receive(Time::zero(), segmentTo("203.0.113.81")), IsEmpty());
}

TEST_F(LabWebWay, NothingComesFromAHostThatServesNothing) {
  EXPECT_THAT(internet_.receiveFromServers(Time::zero(), segmentFrom("203.0.113.81")), IsEmpty());
  EXPECT_THAT(internet_.receiveFromServers(Time::zero(), segmentFrom("203.0.113.99")), IsEmpty());
}

TEST_F(LabWebWay, ServersSayNothingButTcp) {
  EXPECT_THAT(internet_.receiveFromServers(Time::zero(),
                                           makeV4("203.0.113.80", kMachine, 17, Packet(8, 0))),
              IsEmpty());
  EXPECT_THAT(internet_.receiveFromServers(Time::zero(), Packet{1, 2, 3}), IsEmpty());
}

TEST_F(LabWebWay, SilentHostIsCutOffBothWays) {
  internet_.receive(Time::zero(), segmentTo("203.0.113.80"));
  EXPECT_THAT(internet_.receive(seconds(21), segmentTo("203.0.113.80")), IsEmpty());
  EXPECT_THAT(internet_.receiveFromServers(seconds(21), segmentFrom("203.0.113.80")), IsEmpty());
  EXPECT_EQ(internet_.receiveFromServers(seconds(41), segmentFrom("203.0.113.80")).size(), 1U);
}

TEST_F(LabWebWay, RouterThatPassesNothingOnCutsBothWays) {
  internet_.receive(Time::zero(), segmentTo("203.0.113.80"));
  EXPECT_THAT(internet_.receive(seconds(51), segmentTo("203.0.113.80")), IsEmpty());
  EXPECT_THAT(internet_.receiveFromServers(seconds(51), segmentFrom("203.0.113.80")), IsEmpty());
}

TEST_F(LabWebWay, EchoIsAnsweredWithoutTheServer) {
  const auto packets = internet_.receive(Time::zero(), makeEcho("203.0.113.80"));
  ASSERT_EQ(packets.size(), 1U);
  EXPECT_EQ(packets[0].to, Side::Machine);
}

// --- The scenarios for the download test ---

const Node& webHostOf(const Scenario& scenario) {
  return *std::find_if(scenario.nodes.begin(), scenario.nodes.end(),
                       [](const Node& node) { return node.web.has_value(); });
}

class LabDownload : public testing::TestWithParam<const char*> {};

TEST_P(LabDownload, EachAddressOfTheProgramIsAFileOfTheHostTheLargestFirst) {
  const Scenario scenario = loadScenario(findScenario(LAB_SCENARIOS, GetParam()));
  const Node& host = webHostOf(scenario);
  const WebSite& site = host.web.value();
  ASSERT_EQ(site.files.size(), 6U);
  ASSERT_EQ(scenario.installation.size(), 6U);
  for (std::size_t index = 0; index < 6; ++index) {
    EXPECT_EQ(scenario.installation[index].key, "DownloadTestUrl" + std::to_string(index + 1));
    EXPECT_EQ(scenario.installation[index].value, "http://" + host.name + site.files[index].path);
    if (index > 0) EXPECT_LT(site.files[index].size, site.files[index - 1].size);
  }
}

INSTANTIATE_TEST_SUITE_P(Scenarios, LabDownload, testing::Values("demo", "download"));

TEST(LabDownloadScenario, SmallestFileTakesTwelveSecondsWithTheStall) {
  const Scenario scenario = loadScenario(findScenario(LAB_SCENARIOS, "download"));
  const WebSite& site = webHostOf(scenario).web.value();
  EXPECT_EQ(seconds(site.files.back().size / site.rate) + site.stall.value().length, seconds(12));
  EXPECT_LT(site.stall.value().after, site.files.back().size);
}

}  // namespace
}  // namespace veltrin::lab
