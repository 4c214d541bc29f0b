// SPDX-License-Identifier: GPL-3.0-or-later
// A new user's destinations, in the scenarios that come with the lab: whoever presses
// Start without a word of his own sees something.
#include <algorithm>
#include <array>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "frame/destinations.h"
#include "lab/internet.h"
#include "lab/library.h"
#include "lab_packets.h"
#include "support/simulation.h"

namespace veltrin::lab {
namespace {

constexpr std::uint8_t kA = 1;
constexpr std::uint8_t kAaaa = 28;

// Scenarios whose targets do not answer, and that is their point: routers tell of
// hosts and networks that they cannot reach.
const std::set<std::string> kOutOfReach = {"unreachable"};

// What a window's boxes hold at first, with the installation file as it comes.
std::vector<std::string> defaultDestinations() {
  Simulation simulation;
  std::ifstream installation(INSTALLATION);
  simulation.profiles.contents[simulation.files.programFolder() + "\\installation.ini"] =
      std::string(std::istreambuf_iterator<char>(installation), {});
  std::array<TextBox, Destinations::kCount> boxes;
  Destinations::Boxes pointers{};
  for (std::size_t index = 0; index < boxes.size(); ++index) pointers[index] = &boxes[index];
  Destinations(simulation.program(), "Trace", "Trace", pointers).setDefaults();
  std::vector<std::string> names;
  names.reserve(boxes.size());
  for (const TextBox& box : boxes) names.push_back(box.text.get());
  return names;
}

// A question to a DNS server, of either family.
Packet questionTo(const IpAddress& server, const std::string& name, std::uint8_t type) {
  constexpr std::size_t kDnsPort = 53;
  const Packet question = makeQuestion(name, type);
  if (server.family() == Family::V4) return makeUdp(server.text(), kDnsPort, question);
  Packet body(8);
  putNumber(body, 0, 40000);
  putNumber(body, 2, kDnsPort);
  putNumber(body, 4, 8 + question.size());
  body.insert(body.end(), question.begin(), question.end());
  putNumber(body, 6, checksumWithAddresses(kMachineV6, server.text(), 17, body));
  return makeV6(kMachineV6, server.text(), 17, body);
}

class LabDestinations : public testing::TestWithParam<std::string> {
 protected:
  // The address that a name leads to; nothing when it has none of the type.
  std::optional<IpAddress> lookUp(const std::string& name, std::uint8_t type) {
    const auto replies =
        internet_.receive(Time::zero(), questionTo(scenario_.dns.at(0), name, type));
    if (replies.empty()) return std::nullopt;
    const Bytes answer = udpData(*readIp(replies[0].bytes));
    if (numberAt(answer, 6) == 0) return std::nullopt;
    return IpAddress(answer.last(type == kA ? IpAddress::kV4Length : IpAddress::kV6Length));
  }

  // Whether an echo to an address is answered with an echo reply.
  bool answers(const IpAddress& address) {
    const bool v4 = address.family() == Family::V4;
    const auto replies =
        internet_.receive(Time::zero(), v4 ? makeEcho(address.text()) : makeEchoV6(address.text()));
    return !replies.empty() && readIp(replies[0].bytes)->payload()[0] == (v4 ? 0 : 129);
  }

  Scenario scenario_ = loadScenario(findScenario(LAB_SCENARIOS, GetParam()));
  Internet internet_{scenario_};
};

TEST_P(LabDestinations, AllAnswer) {
  for (const std::string& name : defaultDestinations()) {
    auto address = lookUp(name, kA);
    if (!address) address = lookUp(name, kAaaa);
    ASSERT_TRUE(address) << name;
    EXPECT_EQ(answers(*address), !kOutOfReach.contains(GetParam())) << name;
  }
}

INSTANTIATE_TEST_SUITE_P(Scenarios, LabDestinations,
                         testing::ValuesIn(listScenarios(LAB_SCENARIOS)),
                         [](const testing::TestParamInfo<std::string>& scenario) {
                           std::string name = scenario.param;
                           std::replace(name.begin(), name.end(), '-', '_');
                           return name;
                         });

TEST(LabDemonstration, LeadsTheDestinationsOfAWindowToDifferentHosts) {
  Internet internet(loadScenario(findScenario(LAB_SCENARIOS, "demo")));
  std::set<Packet> addresses;
  for (const std::string& name : defaultDestinations()) {
    const auto replies =
        internet.receive(Time::zero(), questionTo(addressOf("198.51.100.53"), name, kA));
    ASSERT_EQ(replies.size(), 1U) << name;
    addresses.insert(tail(replies[0].bytes, IpAddress::kV4Length));
  }
  EXPECT_EQ(addresses.size(), 5U);
}

}  // namespace
}  // namespace veltrin::lab
