// SPDX-License-Identifier: GPL-3.0-or-later
// The modules of the performance counters: which ones they add, in which order they read.
#include <gmock/gmock.h>

#include "monitor/CounterIPV4.h"
#include "monitor/CounterIPV6.h"
#include "monitor/CounterNetwork.h"
#include "simulated/monitor_run.h"

namespace veltrin {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::SizeIs;

const std::vector<std::string> kSeven = {"Card One",  "Card Two", "Card Three", "Card Four",
                                         "Card Five", "Card Six", "Card Seven"};

class InterfaceCounters : public MonitorRun {
 protected:
  void enumerate(std::vector<std::string> instances) {
    simulation.counters.instances = std::move(instances);
    EnumNetworkInterfaces(program());
  }

  // The names in the table up to the first empty place.
  std::vector<std::string> names() {
    std::vector<std::string> found;
    for (const std::string& name : counters().NetInterfaceNames) {
      if (name.empty()) break;
      found.push_back(name);
    }
    return found;
  }
};

// --- The items of an object ---

TEST_F(InterfaceCounters, TheItemsOfAnObjectAreCutToTheirLengths) {
  simulation.counters.instances = {"Card One", "Card Two"};
  std::string counterNames;
  std::string instances;
  EXPECT_EQ(GetObjectItems(program(), "MYPC", "Network Interface", counterNames, instances), 0);
  EXPECT_EQ(counterNames, std::string("Bytes Total/sec\0\0", 17));
  EXPECT_EQ(instances, std::string("Card One\0Card Two\0\0", 19));
  EXPECT_THAT(simulation.counters.enumerations, ElementsAre("MYPC|Network Interface|300|0"));
}

TEST_F(InterfaceCounters, AnEnumerationThatFailsLeavesItsTextsAsTheyWere) {
  simulation.counters.enumStatus = kPdhMoreData;
  std::string counterNames = "before";
  std::string instances = "too";
  EXPECT_EQ(GetObjectItems(program(), "MYPC", "Network Interface", counterNames, instances),
            kPdhMoreData);
  EXPECT_EQ(counterNames, "before");
  EXPECT_EQ(instances, "too");
}

TEST_F(InterfaceCounters, BothBuffersHaveRoomFor32768Characters) {
  std::string counterNames;
  std::string instances;
  GetObjectItems(program(), "", "Network Interface", counterNames, instances);
  EXPECT_THAT(simulation.counters.enumBuffers, ElementsAre(32768U, 32768U, 32768U, 32768U));
}

// --- The accepted interfaces ---

TEST_F(InterfaceCounters, TheInterfacesOfThisMachineAreAskedFor) {
  enumerate({"Card One"});
  EXPECT_THAT(simulation.counters.enumerations, ElementsAre("|Network Interface|300|0"));
}

TEST_F(InterfaceCounters, AcceptedInterfacesAreCountedAndNamedInTheirOrder) {
  enumerate({"Card One", "Card Two"});
  EXPECT_EQ(counters().NetInterfaceCount, 2);
  EXPECT_THAT(names(), ElementsAre("Card One", "Card Two"));
}

TEST_F(InterfaceCounters, WithoutInstancesThereIsNoInterface) {
  enumerate({});
  EXPECT_EQ(counters().NetInterfaceCount, 0);
  EXPECT_THAT(names(), IsEmpty());
}

TEST_F(InterfaceCounters, AFailedEnumerationFindsNoInterface) {
  enumerate({"Card One"});
  simulation.counters.enumStatus = kPdhMoreData;
  enumerate({"Card One"});
  EXPECT_EQ(counters().NetInterfaceCount, 0);
}

TEST_F(InterfaceCounters, OfSevenAcceptedInterfacesSixHaveNames) {
  enumerate(kSeven);
  EXPECT_EQ(counters().NetInterfaceCount, 7);
  EXPECT_THAT(names(), ElementsAre("Card One", "Card Two", "Card Three", "Card Four", "Card Five",
                                   "Card Six"));
}

TEST_F(InterfaceCounters, ANameThatBeginsWithLocalIsLeftOutInAnyCase) {
  enumerate({"Local Area Connection", "LOCALHOST", "local", "lOcAlX", "Non-local"});
  EXPECT_THAT(names(), ElementsAre("Non-local"));
  EXPECT_EQ(counters().NetInterfaceCount, 1);
}

TEST_F(InterfaceCounters, ATunnelIsLeftOutInAnyCase) {
  enumerate({"isatap.example", "ISATAP.EXAMPLE", "Isata", "isat-x"});
  EXPECT_THAT(names(), ElementsAre("isat-x"));
}

TEST_F(InterfaceCounters, ANameOfFourCharactersIsLeftOutAndOneOfFiveIsNot) {
  enumerate({"eth0", "wlan0", "", "x"});
  EXPECT_THAT(names(), ElementsAre("wlan0"));
  EXPECT_EQ(counters().NetInterfaceCount, 1);
}

TEST_F(InterfaceCounters, TheLengthOfANameIsThatInCharacters) {
  enumerate({"\xC3\xA9th0", "\xC3\xA9th01"});
  EXPECT_THAT(names(), ElementsAre("\xC3\xA9th01"));
}

TEST_F(InterfaceCounters, NamesOfAnEarlierEnumerationKeepTheirPlaces) {
  enumerate({"Card One", "Card Two"});
  enumerate({"Card Three"});
  EXPECT_EQ(counters().NetInterfaceCount, 1);
  EXPECT_THAT(names(), ElementsAre("Card One", "Card Two", "Card Three"));
}

// --- Their counters ---

TEST_F(InterfaceCounters, EachInterfaceAddsTotalReceivedAndSentAndLetsEventsRunBehindEach) {
  enumerate({"Card One", "Card Two"});
  noteEvents();
  AddNetworkCounters(program());
  EXPECT_THAT(simulation.journal,
              ElementsAre("add \\\\MYPC\\Network Interface(Card One)\\Bytes Total/sec", "events",
                          "add \\\\MYPC\\Network Interface(Card One)\\Bytes Received/sec", "events",
                          "add \\\\MYPC\\Network Interface(Card One)\\Bytes Sent/sec", "events",
                          "add \\\\MYPC\\Network Interface(Card Two)\\Bytes Total/sec", "events",
                          "add \\\\MYPC\\Network Interface(Card Two)\\Bytes Received/sec", "events",
                          "add \\\\MYPC\\Network Interface(Card Two)\\Bytes Sent/sec", "events"));
  EXPECT_THAT(counters().TotalCounter, ElementsAre(1, 4, 0, 0, 0, 0));
  EXPECT_THAT(counters().ReceivedCounter, ElementsAre(2, 5, 0, 0, 0, 0));
  EXPECT_THAT(counters().SentCounter, ElementsAre(3, 6, 0, 0, 0, 0));
}

TEST_F(InterfaceCounters, EachInterfaceIsSampledAndReadTotalSentReceived) {
  enumerate({"Card One", "Card Two"});
  AddNetworkCounters(program());
  noteEvents();
  ReadNetworkCounters(program());
  EXPECT_THAT(
      simulation.journal,
      ElementsAre("collect", "value \\\\MYPC\\Network Interface(Card One)\\Bytes Total/sec",
                  "events", "events", "value \\\\MYPC\\Network Interface(Card One)\\Bytes Sent/sec",
                  "events", "value \\\\MYPC\\Network Interface(Card One)\\Bytes Received/sec",
                  "events", "collect",
                  "value \\\\MYPC\\Network Interface(Card Two)\\Bytes Total/sec", "events",
                  "events", "value \\\\MYPC\\Network Interface(Card Two)\\Bytes Sent/sec", "events",
                  "value \\\\MYPC\\Network Interface(Card Two)\\Bytes Received/sec", "events"));
}

TEST_F(InterfaceCounters, ReadingsComeIntoTheTables) {
  enumerate({"Card One", "Card Two"});
  AddNetworkCounters(program());
  traffic("Card One", 1, 2, 3);
  traffic("Card Two", 10, 20, 30);
  ReadNetworkCounters(program());
  EXPECT_THAT(counters().ReceivedValue, ElementsAre(1, 10, 0, 0, 0, 0));
  EXPECT_THAT(counters().SentValue, ElementsAre(2, 20, 0, 0, 0, 0));
  EXPECT_THAT(counters().TotalValue, ElementsAre(3, 30, 0, 0, 0, 0));
}

TEST_F(InterfaceCounters, TheSeventhInterfaceIsNeitherAddedNorRead) {
  enumerate(kSeven);
  AddNetworkCounters(program());
  EXPECT_THAT(simulation.counters.paths, SizeIs(18));
  for (const std::string& name : kSeven) traffic(name, 5, 6, 7);
  ReadNetworkCounters(program());
  EXPECT_THAT(counters().ReceivedValue, Each(5));
  EXPECT_THAT(counters().SentValue, Each(6));
  EXPECT_THAT(counters().TotalValue, Each(7));
}

TEST_F(InterfaceCounters, ACounterThatCannotBeAddedHasTheHandle0AndReads0) {
  enumerate({"Card One"});
  AddNetworkCounters(program());
  traffic("Card One", 5, 6, 7);
  ReadNetworkCounters(program());
  simulation.counters.addStatus = kPdhMoreData;
  AddNetworkCounters(program());
  EXPECT_THAT(counters().TotalCounter, Each(0));
  ReadNetworkCounters(program());
  EXPECT_THAT(counters().TotalValue, Each(0));
}

TEST_F(InterfaceCounters, AddingAgainPutsNewHandlesInThePlaceOfTheOld) {
  enumerate({"Card One"});
  AddNetworkCounters(program());
  AddNetworkCounters(program());
  EXPECT_THAT(simulation.counters.paths, SizeIs(6));
  EXPECT_EQ(counters().TotalCounter[0], 4);
}

TEST_F(InterfaceCounters, WithoutAQueryEverythingReads0) {
  program().start.PdhQuery = 0;
  enumerate({"Card One"});
  AddNetworkCounters(program());
  ReadNetworkCounters(program());
  EXPECT_THAT(counters().TotalValue, Each(0));
}

// --- The counters of the protocols ---

class ProtocolCounters : public MonitorRun {
 protected:
  // What a call with each counter of a protocol enters in the journal, and the events.
  static std::vector<std::string> entries(const std::string& call, const std::string& protocol) {
    const std::string object = call + " \\\\MYPC\\" + protocol + "\\";
    std::vector<std::string> expected;
    for (const std::string& name : kProtocolNames) {
      expected.push_back(object + name);
      expected.emplace_back("events");
    }
    return expected;
  }

  // The same behind the sampling, whose own note of events comes with the first ones.
  static std::vector<std::string> readEntries(const std::string& protocol) {
    std::vector<std::string> expected = entries("value", protocol);
    expected.insert(expected.begin() + 1, "events");
    expected.insert(expected.begin(), "collect");
    return expected;
  }
};

TEST_F(ProtocolCounters, Those17OfVersion4AreAddedInTheirOrderWithEventsBehindEach) {
  noteEvents();
  AddIPv4Counters(program());
  EXPECT_THAT(simulation.journal, ElementsAreArray(entries("add", "IPv4")));
  EXPECT_THAT(counters().IPv4Counter,
              ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17));
  EXPECT_THAT(counters().IPv6Counter, Each(0));
}

TEST_F(ProtocolCounters, Those17OfVersion6AreAddedInTheirOrderWithEventsBehindEach) {
  noteEvents();
  AddIPv6Counters(program());
  EXPECT_THAT(simulation.journal, ElementsAreArray(entries("add", "IPv6")));
  EXPECT_THAT(counters().IPv6Counter,
              ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17));
  EXPECT_THAT(counters().IPv4Counter, Each(0));
}

TEST_F(ProtocolCounters, ThoseOfVersion4AreSampledOnceAndReadInTheirOrder) {
  AddIPv4Counters(program());
  noteEvents();
  ReadIPv4Counters(program());
  EXPECT_THAT(simulation.journal, ElementsAreArray(readEntries("IPv4")));
}

TEST_F(ProtocolCounters, ThoseOfVersion6AreSampledOnceAndReadInTheirOrder) {
  AddIPv6Counters(program());
  noteEvents();
  ReadIPv6Counters(program());
  EXPECT_THAT(simulation.journal, ElementsAreArray(readEntries("IPv6")));
}

TEST_F(ProtocolCounters, EachReadingComesToItsPlaceOfItsProtocol) {
  AddIPv4Counters(program());
  AddIPv6Counters(program());
  for (std::size_t i = 0; i < kProtocolNames.size(); ++i) {
    figure("IPv4", kProtocolNames[i], 100 + static_cast<double>(i));
    figure("IPv6", kProtocolNames[i], 200 + static_cast<double>(i));
  }
  ReadIPv4Counters(program());
  EXPECT_THAT(counters().IPv6Value, Each(0));
  ReadIPv6Counters(program());
  EXPECT_THAT(counters().IPv4Value, ElementsAre(100, 101, 102, 103, 104, 105, 106, 107, 108, 109,
                                                110, 111, 112, 113, 114, 115, 116));
  EXPECT_THAT(counters().IPv6Value, ElementsAre(200, 201, 202, 203, 204, 205, 206, 207, 208, 209,
                                                210, 211, 212, 213, 214, 215, 216));
}

TEST_F(ProtocolCounters, OneThatCannotBeAddedHasTheHandle0AndReads0) {
  AddIPv4Counters(program());
  simulation.counters.addStatus = kPdhMoreData;
  AddIPv4Counters(program());
  EXPECT_THAT(counters().IPv4Counter, Each(0));
  ReadIPv4Counters(program());
  EXPECT_THAT(counters().IPv4Value, Each(0));
}

}  // namespace
}  // namespace veltrin
