// SPDX-License-Identifier: GPL-3.0-or-later
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
  EXPECT_EQ(host.atFirst.delay, milliseconds(1500));
  EXPECT_EQ(host.atFirst.jitter, microseconds(250));
  EXPECT_EQ(host.atFirst.loss.share, 0.125);
  EXPECT_TRUE(host.atFirst.silent);
  EXPECT_TRUE(host.nameless);
}

TEST(LabScenario, GivesAHostWithAnAddressAloneQuietDefaults) {
  const Node host = readScenario(kInternet + "[host a]\naddress = 203.0.113.1\n").nodes.at(0);
  EXPECT_EQ(host.atFirst.delay, Time::zero());
  EXPECT_EQ(host.atFirst.jitter, Time::zero());
  EXPECT_EQ(host.atFirst.loss.share, 0);
  EXPECT_EQ(host.atFirst.loss.pattern, Pattern{});
  EXPECT_FALSE(host.atFirst.silent);
  EXPECT_FALSE(host.nameless);
  EXPECT_THAT(host.via, IsEmpty());
}

TEST(LabScenario, ReadsEveryFormOfAPattern) {
  const auto patternOf = [](const std::string& pattern) {
    return readScenario(kInternet + "[host a]\naddress = 203.0.113.1\nloss-pattern = " + pattern)
        .nodes.at(0)
        .atFirst.loss.pattern;
  };
  EXPECT_EQ(patternOf("every 1st"), (Pattern{1, 1}));
  EXPECT_EQ(patternOf("every 2nd"), (Pattern{1, 2}));
  EXPECT_EQ(patternOf("every 3rd"), (Pattern{1, 3}));
  EXPECT_EQ(patternOf("every 11th"), (Pattern{1, 11}));
  EXPECT_EQ(patternOf("every 122nd"), (Pattern{1, 122}));
  EXPECT_EQ(patternOf("13 of 100"), (Pattern{13, 100}));
  EXPECT_EQ(patternOf("0 of 1"), (Pattern{0, 1}));
}

TEST(LabScenario, TiesTheWayOfAHostAndOfTheRoutersOnIt) {
  const Scenario scenario = readScenario(kInternet +
                                         "[host far]\naddress = 203.0.113.1\nvia = one, TWO\n"
                                         "[router one]\naddress = 203.0.113.2\n"
                                         "[router two]\naddress = 203.0.113.3\n");
  EXPECT_THAT(scenario.nodes[0].via, ElementsAre(ElementsAre(1U), ElementsAre(2U)));
  EXPECT_THAT(scenario.nodes[1].via, IsEmpty());
  EXPECT_THAT(scenario.nodes[2].via, ElementsAre(ElementsAre(1U)));
}

TEST(LabScenario, ReadsTheBehaviourOfARouter) {
  const Behaviour router = readScenario(kInternet +
                                        "[router one]\n"
                                        "address = 198.51.100.1\n"
                                        "twice = every 4th\n"
                                        "late = every 5th by 300 ms\n"
                                        "rate-limit = 2\n"
                                        "link-delay = 5 ms\n"
                                        "link-loss = 12.5 %\n"
                                        "mtu = 1400\n"
                                        "beyond = host-unreachable\n")
                               .nodes.at(0)
                               .atFirst;
  EXPECT_EQ(router.twice, (Pattern{1, 4}));
  EXPECT_EQ(router.late, (Pattern{1, 5}));
  EXPECT_EQ(router.lateBy, milliseconds(300));
  EXPECT_EQ(router.rateLimit, 2U);
  EXPECT_EQ(router.linkDelay, milliseconds(5));
  EXPECT_EQ(router.linkLoss.share, 0.125);
  EXPECT_EQ(router.mtu, 1400U);
  EXPECT_EQ(router.beyond, Beyond::HostUnreachable);
}

TEST(LabScenario, TiesTheHostsThatAnswerForTheInternetOutside) {
  const Scenario scenario = readScenario(kInternet +
                                         "public = two, ONE\n"
                                         "[host one]\naddress = 203.0.113.1\n"
                                         "[host other]\naddress = 203.0.113.2\n"
                                         "[host two]\naddress = 203.0.113.3\n");
  EXPECT_THAT(scenario.publicHosts, ElementsAre(2U, 0U));
}

TEST(LabScenario, TiesTheTurnsOfRoutersAtOneHop) {
  const Scenario scenario = readScenario(kInternet +
                                         "[router one]\naddress = 203.0.113.1\n"
                                         "[router two-a]\naddress = 203.0.113.2\n"
                                         "[router two-b]\naddress = 203.0.113.3\n"
                                         "[router three-a]\naddress = 203.0.113.4\n"
                                         "[router three-b]\naddress = 203.0.113.5\n"
                                         "[host far]\naddress = 203.0.113.6\n"
                                         "via = one, two-a | two-b, three-a|three-b\n");
  EXPECT_THAT(scenario.nodes[5].via,
              ElementsAre(ElementsAre(0U), ElementsAre(1U, 2U), ElementsAre(3U, 4U)));
  EXPECT_THAT(scenario.nodes[4].via, ElementsAre(ElementsAre(0U), ElementsAre(2U)));
}

TEST(LabScenario, ChangeKeepsWhatItDoesNotName) {
  const Node node = readScenario(kInternet +
                                 "[host a]\naddress = 203.0.113.1\ndelay = 9 ms\n"
                                 "[at 20 s a]\nsilent = yes\n"
                                 "[at 3600 s A]\ndelay = 1 ms\n")
                        .nodes.at(0);
  ASSERT_EQ(node.changes.size(), 2U);
  EXPECT_EQ(node.changes[0].at, std::chrono::seconds(20));
  EXPECT_TRUE(node.changes[0].behaviour.silent);
  EXPECT_EQ(node.changes[0].behaviour.delay, milliseconds(9));
  EXPECT_TRUE(node.changes[1].behaviour.silent);
  EXPECT_EQ(node.changes[1].behaviour.delay, milliseconds(1));
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
              "line 1: expected [internet], [host NAME], [router NAME], [at TIME NAME], [web NAME] "
              "or "
              "[installation], found "
              "\"[lan]\""},
        Fault{"[host a\n",
              "line 1: expected [internet], [host NAME], [router NAME], [at TIME NAME], [web NAME] "
              "or "
              "[installation], found "
              "\"[host a\""},
        Fault{kInternet + kInternet, "line 4: a second section [internet]"},
        Fault{"[internet]\nseed = 1\nseed = 1\n", "line 3: \"seed\" stands twice in this section"},
        Fault{
            "[internet]\nspeed = 1\n",
            "line 2: \"speed\" is no key here; known are title, machine, gateway, dns, seed, mtu, "
            "public"},
        Fault{kInternet + "[host a]\ndealy = 2 ms\n",
              "line 5: \"dealy\" is no key here; known are address, nameless, via, delay, jitter, "
              "loss, loss-pattern, twice, late, silent, link-delay, link-loss, link-loss-pattern"},
        Fault{kInternet + "[router a]\nvia = b\n",
              "line 5: \"via\" is no key here; known are address, nameless, delay, jitter, loss, "
              "loss-pattern, twice, late, silent, link-delay, link-loss, link-loss-pattern, "
              "rate-limit, mtu, beyond"},
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
        Fault{kInternet + "public = a, b\n[host a]\naddress = 203.0.113.1\n",
              "line 4: no section [host b] in this file"},
        Fault{kInternet + "public = a\n[router a]\naddress = 203.0.113.1\n",
              "line 4: no section [host a] in this file"},
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
              "line 2: expected a pattern, such as \"every 5th\" or \"13 of 100\", found \"every "
              "2th\""},
        Fault{"[host a]\nloss-pattern = every 0th\n",
              "line 2: expected a pattern, such as \"every 5th\" or \"13 of 100\", found \"every "
              "0th\""},
        Fault{"[host a]\nsilent = true\n", "line 2: expected \"yes\" or \"no\", found \"true\""},
        Fault{"[host a]\nlink-loss-pattern = 101 of 100\n",
              "line 2: expected a pattern, such as \"every 5th\" or \"13 of 100\", found \"101 of "
              "100\""},
        Fault{
            "[host a]\nlink-loss-pattern = 0 of 0\n",
            "line 2: expected a pattern, such as \"every 5th\" or \"13 of 100\", found \"0 of 0\""},
        Fault{"[host a]\nlate = every 5th\n",
              "line 2: expected a pattern and a time, such as \"every 5th by 300 ms\", found "
              "\"every 5th\""},
        Fault{"[host a]\nlink-delay = 61 s\n",
              "line 2: expected a time from 0 to 60 s, such as \"2 ms\", found \"61 s\""},
        Fault{"[host a]\nlink-loss = all\n",
              "line 2: expected a share from 0 % to 100 %, such as \"20 %\", found \"all\""},
        Fault{"[router a]\nrate-limit = 0\n",
              "line 2: expected a whole number from 1 to 1000000, found \"0\""},
        Fault{"[router a]\nmtu = 67\n",
              "line 2: expected a whole number from 68 to 65535, found \"67\""},
        Fault{"[router a]\nbeyond = dead\n",
              "line 2: expected \"passes\", \"lost\", \"host-unreachable\" or "
              "\"net-unreachable\", found \"dead\""}));

INSTANTIATE_TEST_SUITE_P(
    Paths, LabScenarioFault,
    testing::Values(
        Fault{kInternet + "[host a]\naddress = 203.0.113.1\nvia = b |\n[router b]\naddress = "
                          "203.0.113.2\n",
              "line 6: no section [router ] in this file"},
        Fault{kInternet + "[host a]\naddress = 203.0.113.1\nlink-loss = 1 %\nlink-loss-pattern = "
                          "every 5th\n",
              "line 4: \"a\" has both link-loss and link-loss-pattern"},
        Fault{kInternet + "[host a]\naddress = 203.0.113.1\nbeyond = lost\n",
              "line 6: \"beyond\" is no key here; known are address, nameless, via, delay, jitter, "
              "loss, loss-pattern, twice, late, silent, link-delay, link-loss, link-loss-pattern"},
        Fault{"[at 20 s a]\n", "line 1: no section of \"a\" above this one"},
        Fault{"[at 20]\n",
              "line 1: expected a time from 0 to 86400 s, such as \"2 ms\", found \"20\""},
        Fault{"[at soon a]\n",
              "line 1: expected a time from 0 to 86400 s, such as \"2 ms\", found \"soon\""},
        Fault{kInternet + "[host a]\naddress = 203.0.113.1\n[at 20 s a]\naddress = 203.0.113.2\n",
              "line 7: \"address\" is no key here; known are delay, jitter, loss, loss-pattern, "
              "twice, late, silent, link-delay, link-loss, link-loss-pattern"},
        Fault{kInternet + "[host a]\naddress = 203.0.113.1\n[at 20 s a]\n[at 20 s a]\n",
              "line 7: the changes of \"a\" are not in the order of their times"},
        Fault{kInternet + "[host a]\naddress = 203.0.113.1\n[at 20 s a]\njitter = 1 ms\n",
              "line 6: \"a\" has a jitter longer than its delay"}));

}  // namespace
}  // namespace veltrin::lab
