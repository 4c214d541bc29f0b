// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <gmock/gmock.h>
#include <string>
#include <vector>

#include "monitor/CIpHelper.h"
#include "support/simulated_downloads.h"
#include "text/strings.h"

namespace veltrin {
namespace {

using testing::ElementsAre;

// The number of the failure that a reading ends with; 0 for none.
int failureOf(CIpHelper& helper) {
  try {
    helper.Interfaces();
    return 0;
  } catch (const StatementFailed& failure) {
    return failure.number();
  }
}

class IpHelper : public testing::Test {
 protected:
  // Adds an interface of this traffic and index to the system's table.
  MIB_IFROW& addRow(std::uint32_t received = 0, std::uint32_t sent = 0) {
    MIB_IFROW row;
    row.dwIndex = static_cast<std::uint32_t>(table.rows.size() + 1);
    row.dwInOctets = received;
    row.dwOutOctets = sent;
    table.rows.push_back(row);
    return table.rows.back();
  }

  static void describe(MIB_IFROW& row, const std::string& bytes, std::uint32_t length) {
    std::copy(bytes.begin(), bytes.end(), row.bDescr.begin());
    row.dwDescrLen = length;
  }

  static void setAddress(MIB_IFROW& row, const std::vector<std::uint8_t>& bytes) {
    std::copy(bytes.begin(), bytes.end(), row.bPhysAddr.begin());
    row.dwPhysAddrLen = static_cast<std::uint32_t>(bytes.size());
  }

  std::string addressOf(const std::vector<std::uint8_t>& bytes) {
    table.rows.clear();
    setAddress(addRow(), bytes);
    return helper.Interfaces()->Item(1)->AdapterAddress;
  }

  SimulatedInterfaces table;
  CIpHelper helper{table};
};

// --- Each field ---

struct NumberOfInterface {
  const char* name;
  std::uint32_t MIB_IFROW::*field;
  std::int32_t CInterface::*property;
};

constexpr std::array kNumbers{
    NumberOfInterface{"OutputQueueLength", &MIB_IFROW::dwOutQLen, &CInterface::OutputQueueLength},
    NumberOfInterface{"OutgoingErrors", &MIB_IFROW::dwOutErrors, &CInterface::OutgoingErrors},
    NumberOfInterface{"DiscardedOutgoingPackets", &MIB_IFROW::dwOutDiscards,
                      &CInterface::DiscardedOutgoingPackets},
    NumberOfInterface{"NonunicastPacketsSent", &MIB_IFROW::dwOutNUcastPkts,
                      &CInterface::NonunicastPacketsSent},
    NumberOfInterface{"UnicastPacketsSent", &MIB_IFROW::dwOutUcastPkts,
                      &CInterface::UnicastPacketsSent},
    NumberOfInterface{"OctetsSent", &MIB_IFROW::dwOutOctets, &CInterface::OctetsSent},
    NumberOfInterface{"UnknownProtocolPackets", &MIB_IFROW::dwInUnknownProtos,
                      &CInterface::UnknownProtocolPackets},
    NumberOfInterface{"IncomingErrors", &MIB_IFROW::dwInErrors, &CInterface::IncomingErrors},
    NumberOfInterface{"DiscardedIncomingPackets", &MIB_IFROW::dwInDiscards,
                      &CInterface::DiscardedIncomingPackets},
    NumberOfInterface{"NonunicastPacketsReceived", &MIB_IFROW::dwInNUcastPkts,
                      &CInterface::NonunicastPacketsReceived},
    NumberOfInterface{"MaximumTransmissionUnit", &MIB_IFROW::dwMtu,
                      &CInterface::MaximumTransmissionUnit},
    NumberOfInterface{"UnicastPacketsReceived", &MIB_IFROW::dwInUcastPkts,
                      &CInterface::UnicastPacketsReceived},
    NumberOfInterface{"OctetsReceived", &MIB_IFROW::dwInOctets, &CInterface::OctetsReceived},
    NumberOfInterface{"OperationalStatus", &MIB_IFROW::dwOperStatus,
                      &CInterface::OperationalStatus},
    NumberOfInterface{"AdminStatus", &MIB_IFROW::dwAdminStatus, &CInterface::AdminStatus},
    NumberOfInterface{"Speed", &MIB_IFROW::dwSpeed, &CInterface::Speed},
    NumberOfInterface{"InterfaceType", &MIB_IFROW::dwType, &CInterface::InterfaceType},
    NumberOfInterface{"InterfaceIndex", &MIB_IFROW::dwIndex, &CInterface::InterfaceIndex},
};

class IpHelperNumber : public IpHelper, public testing::WithParamInterface<NumberOfInterface> {};

TEST_P(IpHelperNumber, IsThatOfItsFieldAlone) {
  addRow().dwIndex = 0;
  table.rows[0].*GetParam().field = 1234567;

  const auto interface = helper.Interfaces()->Item(1);

  for (const NumberOfInterface& each : kNumbers) {
    EXPECT_EQ((*interface).*each.property, each.property == GetParam().property ? 1234567 : 0)
        << each.name;
  }
}

TEST_P(IpHelperNumber, IsNegativeAboveTheMiddleOf32Bits) {
  addRow();
  table.rows[0].*GetParam().field = 0xFFFFFFFE;

  EXPECT_EQ((*helper.Interfaces()->Item(1)).*GetParam().property, -2);
}

TEST_P(IpHelperNumber, CanBeSet) {
  CInterface interface;
  interface.*GetParam().property = 5;
  EXPECT_EQ(interface.*GetParam().property, 5);
}

INSTANTIATE_TEST_SUITE_P(All, IpHelperNumber, testing::ValuesIn(kNumbers),
                         [](const auto& info) { return info.param.name; });

TEST_F(IpHelper, LeavesTheLastChangeAtZero) {
  addRow().dwLastChange = 99;
  EXPECT_EQ(helper.Interfaces()->Item(1)->LastChange, 0);
}

TEST_F(IpHelper, CutsTheDescriptionToItsLength) {
  describe(addRow(), "Fast Ethernet and old bytes", 13);
  EXPECT_EQ(helper.Interfaces()->Item(1)->InterfaceDescription, "Fast Ethernet");
}

TEST_F(IpHelper, KeepsAZeroWithinTheLengthOfTheDescription) {
  describe(addRow(), "Card", 5);
  EXPECT_EQ(helper.Interfaces()->Item(1)->InterfaceDescription, std::string("Card\0", 5));
}

TEST_F(IpHelper, TakesTheWholeDescriptionForALengthBeyondItsEnd) {
  describe(addRow(), std::string(256, 'd'), 300);
  EXPECT_EQ(helper.Interfaces()->Item(1)->InterfaceDescription, std::string(256, 'd'));
}

TEST_F(IpHelper, EndsTheReadingAtADescriptionOfNegativeLength) {
  addRow(1, 2);
  addRow(4, 8).dwDescrLen = 0xFFFFFFFF;
  addRow(16, 32);

  EXPECT_EQ(failureOf(helper), kInvalidProcedureCall);
  EXPECT_EQ(helper.BytesReceived(), 1);
}

TEST_F(IpHelper, TakesEachByteOfTheNameAsACharacterAndLeavesTheZeros) {
  MIB_IFROW& row = addRow();
  row.wszName[0] = 'e';
  row.wszName[2] = 0xE9;
  row.wszName[3] = 0x20;

  const std::string name = helper.Interfaces()->Item(1)->InterfaceName;

  EXPECT_EQ(Len(name), 512);
  EXPECT_EQ(name.substr(0, 5), std::string("e\0\u00E9 ", 5));
  EXPECT_EQ(name.substr(5), std::string(508, '\0'));
}

// --- The address of the card ---

TEST_F(IpHelper, ShowsACardAddressOfTheBytes00_1A_2B_03_04_05As00_1A_2B_3_4_5) {
  EXPECT_EQ(addressOf({0x00, 0x1A, 0x2B, 0x03, 0x04, 0x05}), "00-1A-2B-3-4-5");
}

TEST_F(IpHelper, HasAnEmptyAddressOfAnInterfaceWithoutOne) {
  addRow().bPhysAddr.fill(0x77);
  EXPECT_EQ(helper.Interfaces()->Item(1)->AdapterAddress, "");
}

TEST_F(IpHelper, ShowsTheGreatestByteOfOneDigitAndTheLeastOfTwo) {
  EXPECT_EQ(addressOf({0x0F, 0x10, 0xFF}), "F-10-FF");
}

TEST_F(IpHelper, ShowsEightBytesOfAnAddress) {
  EXPECT_EQ(addressOf({1, 2, 3, 4, 5, 6, 7, 8}), "1-2-3-4-5-6-7-8");
}

TEST_F(IpHelper, EndsTheReadingAtAnAddressOfNineBytes) {
  addRow(1, 2);
  addRow(4, 8).dwPhysAddrLen = 9;
  addRow(16, 32);

  EXPECT_EQ(failureOf(helper), kSubscriptOutOfRange);
  EXPECT_EQ(helper.BytesReceived(), 1);
  EXPECT_EQ(helper.BytesSent(), 2);
}

TEST_F(IpHelper, TakesANegativeLengthOfAnAddressForNone) {
  addRow().dwPhysAddrLen = 0x80000000;
  EXPECT_EQ(helper.Interfaces()->Item(1)->AdapterAddress, "");
}

// --- Readings and their sums ---

TEST_F(IpHelper, SumsTheBytesOfAllInterfaces) {
  addRow(100, 7);
  addRow(2000000000, 80);

  EXPECT_EQ(helper.Interfaces()->Count(), 2);

  EXPECT_EQ(helper.BytesReceived(), 2000000100);
  EXPECT_EQ(helper.BytesSent(), 87);
}

TEST_F(IpHelper, HasNothingBeforeTheFirstReading) {
  addRow(100, 7);
  EXPECT_EQ(helper.BytesReceived(), 0);
  EXPECT_EQ(helper.BytesSent(), 0);
  EXPECT_TRUE(table.orders.empty());
}

TEST_F(IpHelper, GivesTwoCollectionsForTwoGetsAndCountsTheSumsAnew) {
  addRow(100, 7);
  const auto first = helper.Interfaces();
  table.rows[0].dwInOctets = 150;

  const auto second = helper.Interfaces();

  EXPECT_NE(first, second);
  EXPECT_EQ(first->Count(), 1);
  EXPECT_EQ(first->Item(1)->OctetsReceived, 100);
  EXPECT_EQ(second->Count(), 1);
  EXPECT_EQ(second->Item(1)->OctetsReceived, 150);
  EXPECT_EQ(helper.BytesReceived(), 150);
}

TEST_F(IpHelper, ReachesTheGreatestSumOf32Bits) {
  addRow(2147483646, 0);
  addRow(1, 0);

  EXPECT_EQ(helper.Interfaces()->Count(), 2);
  EXPECT_EQ(helper.BytesReceived(), 2147483647);
}

TEST_F(IpHelper, EndsTheReadingWhenTheBytesReceivedAreAbove2147483647) {
  addRow(2147483647, 1);
  addRow(1, 2);
  addRow(5, 4);

  EXPECT_EQ(failureOf(helper), kOverflow);
  EXPECT_EQ(helper.BytesReceived(), 2147483647);
  EXPECT_EQ(helper.BytesSent(), 1);
}

TEST_F(IpHelper, EndsTheReadingWhenTheBytesSentAreAbove2147483647) {
  addRow(1, 2147483647);
  addRow(2, 1);

  EXPECT_EQ(failureOf(helper), kOverflow);
  EXPECT_EQ(helper.BytesReceived(), 3);
  EXPECT_EQ(helper.BytesSent(), 2147483647);
}

TEST_F(IpHelper, AddsWhatRanBeyondTheMiddleOf32BitsAsNegative) {
  addRow(0xFFFFFFFF, 0);
  addRow(5, 0);

  EXPECT_EQ(helper.Interfaces()->Count(), 2);
  EXPECT_EQ(helper.BytesReceived(), 4);
}

TEST_F(IpHelper, EndsTheReadingWhenASumIsBelowTheLeastOf32Bits) {
  addRow(0x80000000, 0);
  addRow(0xFFFFFFFF, 0);

  EXPECT_EQ(failureOf(helper), kOverflow);
  EXPECT_EQ(helper.BytesReceived(), -2147483647 - 1);
}

TEST_F(IpHelper, AsksForTheSizeAndThenForTheTableWithoutOrder) {
  addRow();
  helper.Interfaces();
  EXPECT_THAT(table.orders, ElementsAre(false, false));
}

TEST_F(IpHelper, ReadsATableWithoutRows) {
  EXPECT_EQ(helper.Interfaces()->Count(), 0);
  EXPECT_EQ(table.orders.size(), 2U);
}

// --- Failures of the system ---

TEST_F(IpHelper, IsEmptyWhereTheSystemHasNoTable) {
  addRow(1, 1);
  table.answers = {kErrorNotSupported};

  EXPECT_EQ(helper.Interfaces()->Count(), 0);
  EXPECT_EQ(table.orders.size(), 1U) << "it is not asked for the table then";
}

TEST_F(IpHelper, IsEmptyWhenTheTableCannotBeHad) {
  addRow(1, 1);
  table.answers = {0, 5};
  EXPECT_EQ(helper.Interfaces()->Count(), 0);
}

TEST_F(IpHelper, CountsTheSumsAnewAlsoWhenTheTableCannotBeHad) {
  addRow(100, 7);
  helper.Interfaces();
  table.answers = {kErrorNotSupported};

  helper.Interfaces();

  EXPECT_EQ(helper.BytesReceived(), 0);
  EXPECT_EQ(helper.BytesSent(), 0);
}

// A table whose rows are fewer than it says, as it never told a size.
class ShortTable : public InterfaceTable {
 public:
  std::uint32_t told = 0;   // rows
  std::uint32_t bytes = 0;  // of the table

  std::uint32_t GetIfTable(std::uint8_t* table, std::uint32_t& size, bool /*order*/) override {
    size = bytes;
    if (table == nullptr) return kErrorInsufficientBuffer;
    std::memcpy(table, &told, std::min<std::size_t>(bytes, sizeof told));
    return 0;
  }
};

TEST(IpHelperOverAShortTable, FailsBehindTheRowsThatAreThere) {
  ShortTable table;
  table.told = 3;
  table.bytes = 4 + 860 + 859;
  CIpHelper helper(table);

  EXPECT_EQ(failureOf(helper), kSubscriptOutOfRange);
}

TEST(IpHelperOverAShortTable, FailsWithoutAWholeCountOfRows) {
  ShortTable table;
  table.told = 1;
  table.bytes = 3;
  CIpHelper helper(table);

  EXPECT_EQ(failureOf(helper), kSubscriptOutOfRange);
}

TEST(IpHelperOverAShortTable, ReadsNoneFromATableOfNoBytes) {
  ShortTable table;
  CIpHelper helper(table);

  EXPECT_EQ(helper.Interfaces()->Count(), 0);
}

TEST(IpHelperOverAShortTable, ReadsNoneForANegativeCountOfRows) {
  ShortTable table;
  table.told = 0x80000001;
  table.bytes = 4 + 860;
  CIpHelper helper(table);

  EXPECT_EQ(helper.Interfaces()->Count(), 0);
}

// --- The collection ---

std::shared_ptr<CInterface> named(const std::string& description) {
  auto interface = std::make_shared<CInterface>();
  interface->InterfaceDescription = description;
  return interface;
}

std::vector<std::string> descriptionsIn(const CInterfaces& interfaces) {
  std::vector<std::string> all;
  for (const auto& each : interfaces.NewEnum()) all.push_back(each->InterfaceDescription);
  return all;
}

int failureOf(const std::function<void()>& statement) {
  try {
    statement();
  } catch (const StatementFailed& failure) {
    return failure.number();
  }
  return 0;
}

class InterfaceCollection : public testing::Test {
 protected:
  InterfaceCollection() {
    interfaces.Add(named("first"));
    interfaces.Add(named("second"), "Key");
    interfaces.Add(named("third"));
  }

  CInterfaces interfaces;
};

TEST_F(InterfaceCollection, IsWalkedInTheOrderOfAdding) {
  EXPECT_THAT(descriptionsIn(interfaces), ElementsAre("first", "second", "third"));
}

TEST_F(InterfaceCollection, GivesAnItemByItsPlaceFromOneOn) {
  EXPECT_EQ(interfaces.Item(1)->InterfaceDescription, "first");
  EXPECT_EQ(interfaces.Item(3)->InterfaceDescription, "third");
}

TEST_F(InterfaceCollection, GivesAnItemByItsKeyInAnyCase) {
  EXPECT_EQ(interfaces.Item("kEY")->InterfaceDescription, "second");
}

TEST_F(InterfaceCollection, RemovesAnItemByItsPlace) {
  interfaces.Remove(1);
  EXPECT_EQ(interfaces.Count(), 2);
  EXPECT_THAT(descriptionsIn(interfaces), ElementsAre("second", "third"));
}

TEST_F(InterfaceCollection, RemovesAnItemByItsKey) {
  interfaces.Remove("Key");
  EXPECT_THAT(descriptionsIn(interfaces), ElementsAre("first", "third"));
}

TEST_F(InterfaceCollection, FailsForAPlaceThatIsNotThere) {
  for (const std::int32_t place : {-1, 0, 4}) {
    EXPECT_EQ(failureOf([&] { interfaces.Item(place); }), 9) << place;
    EXPECT_EQ(failureOf([&] { interfaces.Remove(place); }), 9) << place;
  }
}

TEST_F(InterfaceCollection, FailsForAKeyThatIsNotThere) {
  for (const char* key : {"", "other"}) {
    EXPECT_EQ(failureOf([&] { interfaces.Item(key); }), 5) << key;
    EXPECT_EQ(failureOf([&] { interfaces.Remove(key); }), 5) << key;
  }
}

TEST_F(InterfaceCollection, FailsForAKeyThatIsThereAlready) {
  EXPECT_EQ(failureOf([&] { interfaces.Add(named("again"), "key"); }), 457);
  EXPECT_EQ(interfaces.Count(), 3);
}

TEST_F(IpHelper, KeepsACollectionThatIsSetUntilTheNextReading) {
  const auto own = std::make_shared<CInterfaces>();
  helper.Interfaces(own);
  EXPECT_EQ(own.use_count(), 2);

  const auto read = helper.Interfaces();

  EXPECT_NE(read, own);
  EXPECT_EQ(own.use_count(), 1);
}

}  // namespace
}  // namespace veltrin
