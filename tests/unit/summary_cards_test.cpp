// SPDX-License-Identifier: GPL-3.0-or-later
// The network cards in the text of the system's own tool.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sysinfo/summary_reader.h"
#include "tests/support/systeminfo_text.h"

namespace veltrin {
namespace {

using testing::ElementsAre;

class SummaryCards : public testing::Test {
 protected:
  void read(const Lines& lines) {
    for (const std::string& line : lines) reader.readLine(line);
  }

  // A card's fields in the order name, connection, DHCP server, address.
  Lines card(std::size_t number) const {
    const SystemSummary::NetCard& card = summary.NetCards.at(number - 1);
    return {card.Name, card.Connection, card.Dhcp, card.Ip};
  }

  SystemSummary summary;
  SummaryReader reader{summary};
};

const Lines kNothing{"", "", "", ""};

TEST_F(SummaryCards, NoneOfThemFillsNothing) {
  read(networkCards(usualCards(0)));
  EXPECT_EQ(reader.cardCount(), "0");
  EXPECT_EQ(card(1), kNothing);
}

TEST_F(SummaryCards, OneIsFilled) {
  read(networkCards(usualCards(1)));
  EXPECT_EQ(reader.cardCount(), "1");
  EXPECT_THAT(card(1), ElementsAre("Card 1", "Connection 1", "198.51.100.1", "192.0.2.1"));
  EXPECT_EQ(card(2), kNothing);
  EXPECT_EQ(card(3), kNothing);
}

TEST_F(SummaryCards, TwoAreFilled) {
  read(networkCards(usualCards(2)));
  EXPECT_THAT(card(1), ElementsAre("Card 1", "Connection 1", "198.51.100.1", "192.0.2.1"));
  EXPECT_THAT(card(2), ElementsAre("Card 2", "Connection 2", "198.51.100.2", "192.0.2.2"));
  EXPECT_EQ(card(3), kNothing);
}

TEST_F(SummaryCards, ThreeAreFilled) {
  read(networkCards(usualCards(3)));
  EXPECT_THAT(card(1), ElementsAre("Card 1", "Connection 1", "198.51.100.1", "192.0.2.1"));
  EXPECT_THAT(card(2), ElementsAre("Card 2", "Connection 2", "198.51.100.2", "192.0.2.2"));
  EXPECT_THAT(card(3), ElementsAre("Card 3", "Connection 3", "198.51.100.3", "192.0.2.3"));
}

TEST_F(SummaryCards, BehindTheLastOfThreeNothingIsRead) {
  read(networkCards(usualCards(3)));
  read(joined({{"                           [01]: Another"},
               {"                                 Connection Name: Another"}}));
  EXPECT_THAT(card(1), ElementsAre("Card 1", "Connection 1", "198.51.100.1", "192.0.2.1"));
  EXPECT_THAT(card(3), ElementsAre("Card 3", "Connection 3", "198.51.100.3", "192.0.2.3"));
}

TEST_F(SummaryCards, OfFiveTheThirdKeepsItsNameAndTakesTheDetailsOfTheLast) {
  read(networkCards(usualCards(5)));
  EXPECT_EQ(reader.cardCount(), "5");
  EXPECT_THAT(card(2), ElementsAre("Card 2", "Connection 2", "198.51.100.2", "192.0.2.2"));
  EXPECT_THAT(card(3), ElementsAre("Card 3", "Connection 5", "198.51.100.5", "192.0.2.5"));
}

TEST_F(SummaryCards, OfFiveTheThirdKeepsWhatTheLastDoesNotTell) {
  auto cards = usualCards(5);
  cards[4].dhcp.clear();
  cards[4].addresses.clear();
  read(networkCards(cards));
  EXPECT_THAT(card(3), ElementsAre("Card 3", "Connection 5", "198.51.100.4", "192.0.2.4"));
}

TEST_F(SummaryCards, TwelveReadAsOneThatTakesTheDetailsOfTheLast) {
  read(networkCards(usualCards(12)));
  EXPECT_EQ(reader.cardCount(), "1");
  EXPECT_THAT(card(1), ElementsAre("Card 1", "Connection 12", "198.51.100.12", "192.0.2.12"));
  EXPECT_EQ(card(2), kNothing);
  EXPECT_EQ(card(3), kNothing);
}

TEST_F(SummaryCards, TwentyReadAsTwo) {
  read(networkCards(usualCards(20)));
  EXPECT_EQ(reader.cardCount(), "2");
  EXPECT_THAT(card(1), ElementsAre("Card 1", "Connection 1", "198.51.100.1", "192.0.2.1"));
  EXPECT_THAT(card(2), ElementsAre("Card 2", "Connection 20", "198.51.100.20", "192.0.2.20"));
  EXPECT_EQ(card(3), kNothing);
}

TEST_F(SummaryCards, ADisconnectedOneTakesTheDetailsOfTheNext) {
  read(networkCards({{"Wired", "Local Area", "", {}}, usualCard(2)}));
  EXPECT_THAT(card(1), ElementsAre("Wired", "Connection 2", "198.51.100.2", "192.0.2.2"));
  EXPECT_EQ(card(2), kNothing);
}

TEST_F(SummaryCards, ADisconnectedOneInTheMiddleLeavesTheThirdWithoutAName) {
  read(networkCards({usualCard(1), {"Wireless", "Air", "", {}}, usualCard(3), usualCard(4)}));
  EXPECT_THAT(card(2), ElementsAre("Wireless", "Connection 3", "198.51.100.3", "192.0.2.3"));
  EXPECT_THAT(card(3), ElementsAre("", "Connection 4", "198.51.100.4", "192.0.2.4"));
}

TEST_F(SummaryCards, ADisconnectedLastOneHasNeitherServerNorAddress) {
  read(networkCards({usualCard(1), {"Wireless", "Air", "", {}}}));
  EXPECT_THAT(card(1), ElementsAre("Card 1", "Connection 1", "198.51.100.1", "192.0.2.1"));
  EXPECT_THAT(card(2), ElementsAre("Wireless", "Air", "", ""));
}

TEST_F(SummaryCards, OneWithoutAnAddressMayHaveAServer) {
  read(networkCards({{"Wired", "Local Area", "198.51.100.9", {}}, {"Other", "Second", "", {}}}));
  EXPECT_THAT(card(1), ElementsAre("Wired", "Second", "198.51.100.9", ""));
  EXPECT_EQ(card(2), kNothing);
}

TEST_F(SummaryCards, OnlyTheFirstAddressIsRead) {
  read(networkCards({{"Wired", "Local Area", "", {"192.0.2.1", "192.0.2.55", "192.0.2.56"}}}));
  EXPECT_EQ(summary.NetCards[0].Ip, "192.0.2.1");
}

TEST_F(SummaryCards, BehindTheThirdOfThreeNothingIsRead) {
  read(networkCards(usualCards(3)));
  read({"                                 Connection Name: stray",
        "                                 DHCP Server:     stray",
        "                                 [01]: stray", "                           [03]: stray"});
  EXPECT_THAT(card(3), ElementsAre("Card 3", "Connection 3", "198.51.100.3", "192.0.2.3"));
}

TEST_F(SummaryCards, BehindTheSecondOfTwoItsLinesAreStillRead) {
  read(networkCards(usualCards(2)));
  read({"                                 Connection Name: stray"});
  EXPECT_EQ(summary.NetCards[1].Connection, "stray");
}

TEST_F(SummaryCards, NoLineIsReadBeforeTheirCount) {
  read({"                           [01]: Example64 Family 6",
        "                                 Connection Name: stray",
        "                                 DHCP Server:     stray",
        "                                 [01]: stray"});
  EXPECT_EQ(card(1), kNothing);
  EXPECT_EQ(reader.cardCount(), "");
}

TEST_F(SummaryCards, NoLineIsReadBehindACountOfZero) {
  read({"Network Card(s):           0 NIC(s) Installed.", "                           [01]: stray",
        "                                 [01]: stray"});
  EXPECT_EQ(card(1), kNothing);
}

TEST_F(SummaryCards, ACountThatIsNoNumberLetsTheLinesBeRead) {
  read({"Network Card(s):           N/A", "                           [01]: Wired"});
  EXPECT_EQ(reader.cardCount(), "N");
  EXPECT_EQ(summary.NetCards[0].Name, "Wired");
}

TEST_F(SummaryCards, AMissingCountLetsTheLinesBeRead) {
  read({"Network Card(s):           ", "                           [01]: Wired"});
  EXPECT_EQ(reader.cardCount(), "");
  EXPECT_EQ(summary.NetCards[0].Name, "Wired");
}

TEST_F(SummaryCards, AnUnpaddedLabelIsNoCount) {
  read({"Network Card(s): 1 NIC(s) Installed.", "                           [01]: Wired"});
  EXPECT_EQ(reader.cardCount(), "");
  EXPECT_EQ(card(1), kNothing);
}

TEST_F(SummaryCards, OtherIndentsAreNotRead) {
  read({"Network Card(s):           1 NIC(s) Installed.", "                          [01]: less",
        "                            [01]: more",
        "                                Connection Name: less",
        "                                  Connection Name: more",
        "                                DHCP Server:     less",
        "                                  DHCP Server:     more",
        "                                [01]: less",
        "                                  [01]: more"});
  EXPECT_EQ(card(1), kNothing);
}

TEST_F(SummaryCards, TheDetailsArePaddedToTheirPlace) {
  read({"Network Card(s):           1 NIC(s) Installed.",
        "                                 Connection Name:Local",
        "                                 DHCP Server: 198.51.100.1",
        "                                 [01]:192.0.2.1",
        "                           [01]:Wired"});
  EXPECT_EQ(card(1), kNothing);
}

TEST_F(SummaryCards, ANameOfAnotherNumberIsNotRead) {
  read({"Network Card(s):           3 NIC(s) Installed.",
        "                           [02]: Second"});
  EXPECT_EQ(card(1), kNothing);
  EXPECT_EQ(card(2), kNothing);
}

TEST_F(SummaryCards, DetailsMayBeEmpty) {
  summary.NetCards[0] = {"old", "old", "old", "old"};
  read({"Network Card(s):           1 NIC(s) Installed.",
        "                           [01]: ", "                                 Connection Name: ",
        "                                 DHCP Server:     ",
        "                                 [01]: "});
  EXPECT_EQ(card(1), kNothing);
}

TEST_F(SummaryCards, AnotherReadingKeepsWhatItDoesNotTell) {
  read(networkCards(usualCards(2)));
  SummaryReader next(summary);
  for (const std::string& line : networkCards({{"Wired", "Local Area", "", {}}})) {
    next.readLine(line);
  }
  EXPECT_THAT(card(1), ElementsAre("Wired", "Local Area", "198.51.100.1", "192.0.2.1"));
  EXPECT_THAT(card(2), ElementsAre("Card 2", "Connection 2", "198.51.100.2", "192.0.2.2"));
}

TEST_F(SummaryCards, ASecondCountStartsAgainAtTheFirst) {
  read(networkCards(usualCards(2)));
  read(
      {"Network Card(s):           1 NIC(s) Installed.", "                           [01]: Again"});
  EXPECT_EQ(reader.cardCount(), "1");
  EXPECT_EQ(summary.NetCards[0].Name, "Again");
  EXPECT_EQ(summary.NetCards[1].Name, "Card 2");
}

TEST_F(SummaryCards, AreReadBehindHotfixesOfAnyCount) {
  read(desktop(12, 1));
  EXPECT_THAT(card(1), ElementsAre("Card 1", "Connection 1", "198.51.100.1", "192.0.2.1"));
}

TEST_F(SummaryCards, AHotfixBehindThemIsNoNameOfACard) {
  read(networkCards({usualCard(1)}));
  read({"Hotfix(s):                 12 Hotfix(s) Installed.",
        "                           [01]: KB1"});
  EXPECT_EQ(summary.NetCards[0].Name, "Card 1");
  EXPECT_THAT(reader.hotfixes(), ElementsAre("KB1"));
}

TEST_F(SummaryCards, AHotfixThatIsNotListedBehindThemIsReadAsAName) {
  read(networkCards({usualCard(1)}));
  read({"Hotfix(s):                 9 Hotfix(s) Installed.",
        "                           [01]: KB1"});
  EXPECT_EQ(summary.NetCards[0].Name, "KB1");
}

}  // namespace
}  // namespace veltrin
