// SPDX-License-Identifier: GPL-3.0-or-later
// The texts of the machine's memory modules.
#include "sysinfo/memory_slots.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veltrin {
namespace {

using testing::ElementsAre;
using Slots = std::array<std::string, 4>;

WmiObject bank(const Loose& capacity, const std::string& label = "BANK 0",
               const std::string& locator = "A1_DIMM0") {
  return {
      {{"DeviceLocator", locator}, {"Capacity", capacity}, {"Speed", 1333}, {"BankLabel", label}}};
}

WmiObject without(const std::string& property, WmiObject object) {
  object.properties.erase(property);
  return object;
}

std::string slotOf(const Loose& capacity) {
  Slots slots;
  fillMemorySlots({bank(capacity)}, slots);
  return slots[0];
}

TEST(MemorySlots, FourGibibytesAreFourGigabytes) {
  EXPECT_EQ(slotOf("4294967296"), "Slot 1:   4 GB  Speed: 1333 Mhz   (BANK 0)");
}

TEST(MemorySlots, OneGibibyteIsOneGigabyte) {
  EXPECT_EQ(slotOf("1073741824"), "Slot 1:   1 GB  Speed: 1333 Mhz   (BANK 0)");
}

TEST(MemorySlots, ABillionBytesAreMegabytes) {
  EXPECT_EQ(slotOf("1000000000"), "Slot 1:   977 MB  Speed: 1333 Mhz   (BANK 0)");
}

TEST(MemorySlots, AThousandMegabytesAreStillMegabytes) {
  EXPECT_EQ(slotOf("1024000000"), "Slot 1:   1,000 MB  Speed: 1333 Mhz   (BANK 0)");
  EXPECT_EQ(slotOf("1024511999"), "Slot 1:   1,000 MB  Speed: 1333 Mhz   (BANK 0)");
}

TEST(MemorySlots, WhatRoundsToMoreIsGigabytes) {
  EXPECT_EQ(slotOf("1024512000"), "Slot 1:   1 GB  Speed: 1333 Mhz   (BANK 0)");
}

TEST(MemorySlots, ThousandsOfGigabytesHaveASeparator) {
  EXPECT_EQ(slotOf("2048000000000"), "Slot 1:   2,000 GB  Speed: 1333 Mhz   (BANK 0)");
}

TEST(MemorySlots, ACapacityMayBeANumber) {
  EXPECT_EQ(slotOf(2147483648.0), "Slot 1:   2 GB  Speed: 1333 Mhz   (BANK 0)");
}

TEST(MemorySlots, NoCapacityIsAnEmptyBank) {
  EXPECT_EQ(slotOf("0"), "Slot 1:   Empty     (BANK 0)");
  EXPECT_EQ(slotOf(Loose()), "Slot 1:   Empty     (BANK 0)");
}

TEST(MemorySlots, ACapacityThatRoundsToNothingIsAnEmptyBank) {
  EXPECT_EQ(slotOf("511999"), "Slot 1:   Empty     (BANK 0)");
  EXPECT_EQ(slotOf("512000"), "Slot 1:   1 MB  Speed: 1333 Mhz   (BANK 0)");
}

TEST(MemorySlots, BanksFillThemInOrderAndAFifthIsDropped) {
  Slots slots;
  fillMemorySlots({bank("1073741824", "BANK 0"), bank("2147483648", "BANK 1"),
                   bank("4294967296", "BANK 2"), bank("0", "BANK 3"), bank("8589934592", "BANK 4")},
                  slots);
  EXPECT_THAT(slots, ElementsAre("Slot 1:   1 GB  Speed: 1333 Mhz   (BANK 0)",
                                 "Slot 2:   2 GB  Speed: 1333 Mhz   (BANK 1)",
                                 "Slot 3:   4 GB  Speed: 1333 Mhz   (BANK 2)",
                                 "Slot 4:   Empty     (BANK 3)"));
}

TEST(MemorySlots, AFilledOneIsNotWrittenAgain) {
  Slots slots{"old", "", "other", ""};
  fillMemorySlots({bank("1073741824", "BANK 0"), bank("2147483648", "BANK 1")}, slots);
  EXPECT_THAT(slots, ElementsAre("old", "Slot 2:   1 GB  Speed: 1333 Mhz   (BANK 0)", "other",
                                 "Slot 4:   2 GB  Speed: 1333 Mhz   (BANK 1)"));
}

TEST(MemorySlots, OnlyLocatorsThatBeginWithACapitalACount) {
  Slots slots;
  fillMemorySlots({bank("1073741824", "one", "DIMM_A"), bank("1073741824", "two", "a1"),
                   bank("1073741824", "three", ""), bank("1073741824", "four", "A")},
                  slots);
  EXPECT_THAT(slots, ElementsAre("Slot 1:   1 GB  Speed: 1333 Mhz   (four)", "", "", ""));
}

TEST(MemorySlots, ALocatorThatIsNullDoesNotCount) {
  WmiObject unnamed = bank("1073741824");
  unnamed.properties["DeviceLocator"] = Loose();
  Slots slots;
  fillMemorySlots({unnamed}, slots);
  EXPECT_THAT(slots, ElementsAre("", "", "", ""));
}

TEST(MemorySlots, ALocatorThatCannotBeReadLetsTheBankCount) {
  Slots slots;
  fillMemorySlots({without("DeviceLocator", bank("1073741824"))}, slots);
  EXPECT_EQ(slots[0], "Slot 1:   1 GB  Speed: 1333 Mhz   (BANK 0)");
}

TEST(MemorySlots, NullTextsDropOutOfTheLine) {
  WmiObject object = bank("1073741824");
  object.properties["Speed"] = Loose();
  object.properties["BankLabel"] = Loose();
  Slots slots;
  fillMemorySlots({object}, slots);
  EXPECT_EQ(slots[0], "Slot 1:   1 GB  Speed:  Mhz   ()");
}

TEST(MemorySlots, APropertyThatCannotBeReadLeavesTheSlotToTheNextBank) {
  Slots slots;
  fillMemorySlots({without("Speed", bank("1073741824", "one")),
                   without("BankLabel", bank("1073741824", "two")), bank("2147483648", "three")},
                  slots);
  EXPECT_THAT(slots, ElementsAre("Slot 1:   2 GB  Speed: 1333 Mhz   (three)", "", "", ""));
}

TEST(MemorySlots, AFirstBankWhoseCapacityCannotBeReadIsEmpty) {
  Slots slots;
  fillMemorySlots({without("Capacity", bank("1"))}, slots);
  EXPECT_EQ(slots[0], "Slot 1:   Empty     (BANK 0)");
}

TEST(MemorySlots, ALaterBankWhoseCapacityCannotBeReadIsNotEmptyAndHasNoText) {
  Slots slots;
  fillMemorySlots(
      {bank("1073741824", "one"), without("Capacity", bank("1", "two")), bank("0", "three")},
      slots);
  EXPECT_THAT(slots, ElementsAre("Slot 1:   1 GB  Speed: 1333 Mhz   (one)",
                                 "Slot 2:   Empty     (three)", "", ""));
}

TEST(MemorySlots, ACapacityThatIsNoNumberCountsAsOneThatCannotBeRead) {
  EXPECT_EQ(slotOf("unknown"), "Slot 1:   Empty     (BANK 0)");
}

TEST(MemorySlots, NoBanksChangeNothing) {
  Slots slots{"old", "", "", ""};
  fillMemorySlots({}, slots);
  EXPECT_THAT(slots, ElementsAre("old", "", "", ""));
}

}  // namespace
}  // namespace veltrin
