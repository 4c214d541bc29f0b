// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/sysinfo/report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veltrin {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using Lines = std::vector<std::string>;

// The lines from one that begins with a label up to the next label or the end.
Lines partOf(const SystemFacts& facts, const std::string& label) {
  Lines part;
  for (const std::string& line : reportLines(facts)) {
    const bool labelled = !line.starts_with(std::string(27, ' '));
    if (labelled && !part.empty()) {
      break;
    }
    if (!part.empty() || line.starts_with(label)) {
      part.push_back(line);
    }
  }
  return part;
}

CardFacts connectedCard(const std::string& name) {
  CardFacts card;
  card.name = name;
  card.connection = "eth0";
  card.connected = true;
  return card;
}

TEST(Report, OfNothingKnownSaysSoOnEveryLine) {
  EXPECT_THAT(reportLines(SystemFacts()),
              ElementsAre("",  //
                          "Host Name:                 N/A", "OS Name:                   N/A",
                          "OS Version:                N/A", "OS Manufacturer:           N/A",
                          "OS Configuration:          N/A", "OS Build Type:             N/A",
                          "Registered Owner:          N/A", "Registered Organization:   N/A",
                          "Product ID:                N/A", "Original Install Date:     N/A",
                          "System Boot Time:          N/A", "System Manufacturer:       N/A",
                          "System Model:              N/A", "System Type:               N/A",
                          "Processor(s):              N/A", "BIOS Version:              N/A",
                          "Windows Directory:         N/A", "System Directory:          N/A",
                          "Boot Device:               N/A", "System Locale:             N/A",
                          "Input Locale:              N/A", "Time Zone:                 N/A",
                          "Total Physical Memory:     N/A", "Available Physical Memory: N/A",
                          "Virtual Memory: Max Size:  N/A", "Virtual Memory: Available: N/A",
                          "Virtual Memory: In Use:    N/A", "Page File Location(s):     N/A",
                          "Domain:                    N/A", "Logon Server:              N/A",
                          "Hotfix(s):                 N/A", "Network Card(s):           N/A"));
}

TEST(Report, CountsProcessorsAndListsEach) {
  SystemFacts facts;
  facts.processors = {"First", "Second"};
  EXPECT_THAT(partOf(facts, "Processor(s):"),
              ElementsAre("Processor(s):              2 Processor(s) Installed.",
                          "                           [01]: First",
                          "                           [02]: Second"));
}

TEST(Report, WritesMemoryWithThousandsAndUnits) {
  SystemFacts facts;
  facts.memory = {3957, 2046, 7912, 5605};
  const Lines lines = reportLines(facts);
  EXPECT_THAT(lines, Contains("Total Physical Memory:     3,957 MB"));
  EXPECT_THAT(lines, Contains("Available Physical Memory: 2,046 MB"));
  EXPECT_THAT(lines, Contains("Virtual Memory: Max Size:  7,912 MB"));
  EXPECT_THAT(lines, Contains("Virtual Memory: Available: 5,605 MB"));
  EXPECT_THAT(lines, Contains("Virtual Memory: In Use:    2,307 MB"));
}

TEST(Report, TellsNoUseOfMemoryThatIsMoreAvailableThanThere) {
  SystemFacts facts;
  facts.memory = {3957, 2046, 5605, 7912};
  EXPECT_THAT(reportLines(facts), Contains("Virtual Memory: In Use:    N/A"));
}

TEST(Report, ContinuesSeveralPageFilesBelow) {
  SystemFacts facts;
  facts.swapPlaces = {"/dev/sda3", "/swapfile"};
  EXPECT_THAT(
      partOf(facts, "Page File Location(s):"),
      ElementsAre("Page File Location(s):     /dev/sda3", "                           /swapfile"));
}

// --- Updates ---

// A machine with updates "update 1" and on, and their part of the report.
Lines updatesPart(std::size_t count) {
  SystemFacts facts;
  facts.updates.emplace();
  for (std::size_t i = 1; i <= count; ++i) {
    facts.updates->push_back("update " + std::to_string(i));
  }
  return partOf(facts, "Hotfix(s):");
}

TEST(Report, OfNoUpdatesCountsNone) {
  EXPECT_THAT(updatesPart(0), ElementsAre("Hotfix(s):                 0 Hotfix(s) Installed."));
}

TEST(Report, OfNineUpdatesCountsWithOneDigit) {
  const Lines part = updatesPart(9);
  ASSERT_EQ(part.size(), 10U);
  EXPECT_EQ(part[0], "Hotfix(s):                 9 Hotfix(s) Installed.");
  EXPECT_EQ(part[1], "                           [01]: update 1");
  EXPECT_EQ(part[9], "                           [09]: update 9");
}

TEST(Report, OfTwelveUpdatesCountsWithTwoDigits) {
  const Lines part = updatesPart(12);
  ASSERT_EQ(part.size(), 13U);
  EXPECT_EQ(part[0], "Hotfix(s):                 12 Hotfix(s) Installed.");
  EXPECT_EQ(part[9], "                           [09]: update 9");
  EXPECT_EQ(part[12], "                           [12]: update 12");
}

TEST(Report, OfManyUpdatesCountsWithThreeDigits) {
  const Lines part = updatesPart(120);
  ASSERT_EQ(part.size(), 121U);
  EXPECT_EQ(part[0], "Hotfix(s):                 120 Hotfix(s) Installed.");
  EXPECT_EQ(part[1], "                           [01]: update 1");
  EXPECT_EQ(part[99], "                           [99]: update 99");
  EXPECT_EQ(part[100], "                           [100]: update 100");
  EXPECT_EQ(part[120], "                           [120]: update 120");
}

// --- Network cards ---

TEST(Report, OfNoCardsCountsNone) {
  SystemFacts facts;
  facts.cards.emplace();
  EXPECT_THAT(partOf(facts, "Network Card(s):"),
              ElementsAre("Network Card(s):           0 NIC(s) Installed."));
}

TEST(Report, TellsAllThatIsKnownOfACard) {
  SystemFacts facts;
  CardFacts card = connectedCard("Example Gigabit");
  card.connection = "Wired connection 1";
  card.dhcp = true;
  card.dhcpServer = "198.51.100.1";
  card.addresses = {"198.51.100.20", "fe80::1"};
  facts.cards = std::vector<CardFacts>{card};
  EXPECT_THAT(partOf(facts, "Network Card(s):"),
              ElementsAre("Network Card(s):           1 NIC(s) Installed.",
                          "                           [01]: Example Gigabit",
                          "                                 Connection Name: Wired connection 1",
                          "                                 DHCP Enabled:    Yes",
                          "                                 DHCP Server:     198.51.100.1",
                          "                                 IP address(es)",
                          "                                 [01]: 198.51.100.20",
                          "                                 [02]: fe80::1"));
}

TEST(Report, LeavesOutWhatIsNotKnownOfACard) {
  SystemFacts facts;
  facts.cards = std::vector<CardFacts>{connectedCard("Example Gigabit")};
  EXPECT_THAT(partOf(facts, "Network Card(s):"),
              ElementsAre("Network Card(s):           1 NIC(s) Installed.",
                          "                           [01]: Example Gigabit",
                          "                                 Connection Name: eth0"));
}

TEST(Report, TellsThatACardDoesNotUseDhcp) {
  SystemFacts facts;
  CardFacts card = connectedCard("Example Gigabit");
  card.dhcp = false;
  facts.cards = std::vector<CardFacts>{card};
  EXPECT_THAT(reportLines(facts), Contains("                                 DHCP Enabled:    No"));
}

TEST(Report, TellsThatACardHasNoMedium) {
  SystemFacts facts;
  CardFacts card;
  card.name = "Example Wireless";
  card.connection = "wlan0";
  facts.cards = std::vector<CardFacts>{card};
  EXPECT_THAT(partOf(facts, "Network Card(s):"),
              ElementsAre("Network Card(s):           1 NIC(s) Installed.",
                          "                           [01]: Example Wireless",
                          "                                 Connection Name: wlan0",
                          "                                 Status:          Media disconnected"));
}

}  // namespace
}  // namespace veltrin
