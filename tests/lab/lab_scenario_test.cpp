#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "lab/scenario.h"
#include "lab_packets.h"

namespace veltrin::lab {
namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;

// Lines 1 to 3 of the texts below.
const std::string kInternet =
    "[internet]\n"
    "machine = 192.0.2.2/24\n"
    "dns = 198.51.100.53\n";

std::string errorOf(const std::string& text) {
  try {
    readScenario(text);
  } catch (const ScenarioError& error) {
    return error.what();
  }
  return "no error";
}

TEST(LabScenario, ReadsTheInternet) {
  const Scenario scenario = readScenario(
      "# A comment.\r\n"
      "[internet]\r\n"
      "title = A = B\r\n"
      "machine = 192.0.2.2/24, 2001:db8::2/64\r\n"
      "gateway = 192.0.2.1, 2001:db8::1\r\n"
      "dns = 198.51.100.53\r\n"
      "seed = 18446744073709551615\r\n"
      "mtu = 1400");
  EXPECT_EQ(scenario.title, "A = B");
  ASSERT_EQ(scenario.machine.size(), 2U);
  EXPECT_EQ(scenario.machine[1].address.text(), "2001:db8::2");
  EXPECT_EQ(scenario.machine[1].prefixLength, 64);
  EXPECT_THAT(scenario.gateways, ElementsAre(addressOf("192.0.2.1"), addressOf("2001:db8::1")));
  EXPECT_THAT(scenario.dns, ElementsAre(addressOf("198.51.100.53")));
  EXPECT_EQ(scenario.seed, 18446744073709551615ULL);
  EXPECT_EQ(scenario.mtu, 1400U);
}

TEST(LabScenario, ReadsAHost) {
  const Scenario scenario = readScenario(kInternet +
                                         "[host far.example]\n"
                                         "address = 203.0.113.80, 2001:db8::80\n"
                                         "delay = 1.5 s\n"
                                         "jitter = 250us\n"
                                         "loss = 12.5 %\n"
                                         "silent = yes\n"
                                         "nameless = yes\n");
  ASSERT_EQ(scenario.nodes.size(), 1U);
  const Node& host = scenario.nodes[0];
  EXPECT_EQ(host.name, "far.example");
  EXPECT_FALSE(host.router);
  EXPECT_THAT(host.addresses, ElementsAre(addressOf("203.0.113.80"), addressOf("2001:db8::80")));
  EXPECT_EQ(host.delay, milliseconds(1500));
  EXPECT_EQ(host.jitter, microseconds(250));
  EXPECT_EQ(host.loss, 0.125);
  EXPECT_TRUE(host.silent);
  EXPECT_TRUE(host.nameless);
}

TEST(LabScenario, GivesAHostWithAnAddressAloneQuietDefaults) {
  const Node host = readScenario(kInternet + "[host a]\naddress = 203.0.113.1\n").nodes.at(0);
  EXPECT_EQ(host.delay, Time::zero());
  EXPECT_EQ(host.jitter, Time::zero());
  EXPECT_EQ(host.loss, 0);
  EXPECT_EQ(host.loseEvery, 0U);
  EXPECT_FALSE(host.silent);
  EXPECT_FALSE(host.nameless);
  EXPECT_THAT(host.via, IsEmpty());
}

TEST(LabScenario, ReadsEveryOrdinalOfAPattern) {
  const auto everyOf = [](const std::string& pattern) {
    return readScenario(kInternet + "[host a]\naddress = 203.0.113.1\nloss-pattern = " + pattern)
        .nodes.at(0)
        .loseEvery;
  };
  EXPECT_EQ(everyOf("every 1st"), 1U);
  EXPECT_EQ(everyOf("every 2nd"), 2U);
  EXPECT_EQ(everyOf("every 3rd"), 3U);
  EXPECT_EQ(everyOf("every 11th"), 11U);
  EXPECT_EQ(everyOf("every 122nd"), 122U);
}

TEST(LabScenario, TiesTheWayOfAHostAndOfTheRoutersOnIt) {
  const Scenario scenario = readScenario(kInternet +
                                         "[host far]\naddress = 203.0.113.1\nvia = one, TWO\n"
                                         "[router one]\naddress = 203.0.113.2\n"
                                         "[router two]\naddress = 203.0.113.3\n");
  EXPECT_THAT(scenario.nodes[0].via, ElementsAre(1U, 2U));
  EXPECT_THAT(scenario.nodes[1].via, IsEmpty());
  EXPECT_THAT(scenario.nodes[2].via, ElementsAre(1U));
}

struct Fault {
  std::string text;
  std::string error;
};

class LabScenarioFault : public testing::TestWithParam<Fault> {};

TEST_P(LabScenarioFault, IsToldWithItsLine) {
  EXPECT_EQ(errorOf(GetParam().text), GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(
    Structure, LabScenarioFault,
    testing::Values(
        Fault{"", "line 0: the file ends without a section [internet]"},
        Fault{"\n# nothing\n", "line 2: the file ends without a section [internet]"},
        Fault{"seed = 1\n", "line 1: a key before the first section"},
        Fault{"[internet]\nseed\n", "line 2: expected [SECTION] or KEY = VALUE, found \"seed\""},
        Fault{"[lan]\n",
              "line 1: expected [internet], [host NAME] or [router NAME], found \"[lan]\""},
        Fault{"[host a\n",
              "line 1: expected [internet], [host NAME] or [router NAME], found \"[host a\""},
        Fault{kInternet + kInternet, "line 4: a second section [internet]"},
        Fault{"[internet]\nseed = 1\nseed = 1\n", "line 3: \"seed\" stands twice in this section"},
        Fault{"[internet]\nspeed = 1\n",
              "line 2: [internet] has no key \"speed\"; it has title, machine, gateway, dns, seed "
              "and mtu"},
        Fault{kInternet + "[host a]\ndealy = 2 ms\n",
              "line 5: a host has no key \"dealy\"; it has address, delay, jitter, loss, "
              "loss-pattern, silent, nameless and via"},
        Fault{kInternet + "[router a]\nvia = b\n",
              "line 5: a router has no key \"via\"; it has address, delay, jitter, loss, "
              "loss-pattern, silent and nameless"},
        Fault{"\n[internet]\ndns = 198.51.100.53\n",
              "line 2: [internet] lacks the key \"machine\""},
        Fault{"[internet]\nmachine = 192.0.2.2/24\n[host a]\n",
              "line 1: [internet] lacks the key \"dns\""},
        Fault{kInternet + "[host a]\ndelay = 2 ms\n", "line 4: \"a\" lacks the key \"address\""},
        Fault{kInternet + "[host a]\naddress = 203.0.113.1\n[router A]\n",
              "line 6: \"A\" stands already in line 4"},
        Fault{kInternet + "[host a]\naddress = 203.0.113.1\n[host b]\naddress = 203.0.113.1\n",
              "line 7: 203.0.113.1 stands already in line 5"},
        Fault{kInternet + "[host a]\naddress = 192.0.2.2\n",
              "line 5: 192.0.2.2 stands already in line 2"},
        Fault{kInternet + "[host a]\naddress = 203.0.113.1\ndelay = 2 ms\njitter = 3 ms\n",
              "line 4: \"a\" has a jitter longer than its delay"},
        Fault{kInternet + "[host a]\naddress = 203.0.113.1\nloss = 1 %\nloss-pattern = every 5th\n",
              "line 4: \"a\" has both loss and loss-pattern"},
        Fault{kInternet + "[host a]\naddress = 203.0.113.1\nvia = b\n",
              "line 6: no section [router b] in this file"},
        Fault{kInternet + "[host b]\naddress = 203.0.113.2\n[host a]\naddress = 203.0.113.1\n"
                          "via = b\n",
              "line 8: no section [router b] in this file"},
        Fault{"[internet]\ngateway = 192.0.2.1, 192.0.2.3\n",
              "line 2: more than one gateway of a kind"}));

INSTANTIATE_TEST_SUITE_P(
    Values, LabScenarioFault,
    testing::Values(
        Fault{"[internet]\nmachine = 192.0.2.2\n",
              "line 2: expected an address with the length of its network, such as "
              "\"192.0.2.2/24\", found \"192.0.2.2\""},
        Fault{"[internet]\nmachine = 192.0.2.2/33\n",
              "line 2: expected an address with the length of its network, such as "
              "\"192.0.2.2/24\", found \"192.0.2.2/33\""},
        Fault{"[internet]\ndns = far.example\n",
              "line 2: expected an IPv4 or IPv6 address, found \"far.example\""},
        Fault{"[internet]\ndns = 198.51.100.53,\n",
              "line 2: expected an IPv4 or IPv6 address, found \"\""},
        Fault{"[internet]\nseed = -1\n",
              "line 2: expected a whole number from 0 to 18446744073709551615, found \"-1\""},
        Fault{"[internet]\nmtu = 1000\n",
              "line 2: expected a whole number from 1280 to 65535, found \"1000\""},
        Fault{"[host a..b]\n", "line 1: expected a name, such as \"far.example\", found \"a..b\""},
        Fault{"[host a b]\n", "line 1: expected a name, such as \"far.example\", found \"a b\""},
        Fault{"[host ]\n", "line 1: expected a name, such as \"far.example\", found \"\""},
        Fault{"[host a]\ndelay = 2\n",
              "line 2: expected a time from 0 to 60 s, such as \"2 ms\", found \"2\""},
        Fault{"[host a]\ndelay = -2 ms\n",
              "line 2: expected a time from 0 to 60 s, such as \"2 ms\", found \"-2 ms\""},
        Fault{"[host a]\ndelay = 61 s\n",
              "line 2: expected a time from 0 to 60 s, such as \"2 ms\", found \"61 s\""},
        Fault{"[host a]\ndelay = nan ms\n",
              "line 2: expected a time from 0 to 60 s, such as \"2 ms\", found \"nan ms\""},
        Fault{"[host a]\nloss = 20\n",
              "line 2: expected a share from 0 % to 100 %, such as \"20 %\", found \"20\""},
        Fault{"[host a]\nloss = 101 %\n",
              "line 2: expected a share from 0 % to 100 %, such as \"20 %\", found \"101 %\""},
        Fault{"[host a]\nloss-pattern = every 2th\n",
              "line 2: expected a pattern, such as \"every 5th\", found \"every 2th\""},
        Fault{"[host a]\nloss-pattern = every 0th\n",
              "line 2: expected a pattern, such as \"every 5th\", found \"every 0th\""},
        Fault{"[host a]\nsilent = true\n", "line 2: expected \"yes\" or \"no\", found \"true\""}));

}  // namespace
}  // namespace veltrin::lab
