// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/memory_banks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "smbios_table.h"
#include "temporary_tree.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::uint64_t kGibibyte = std::uint64_t{1} << 30;

SmbiosPart device(std::uint64_t size, std::uint64_t speed = 3200) {
  return SmbiosPart(17, 0x5C)
      .number(0x0C, size, 2)
      .text(0x10, "A1_DIMM0")
      .text(0x11, "BANK 0")
      .number(0x15, speed, 2);
}

std::vector<MemoryBank> inTable(const SmbiosPart& part) {
  return banksIn(SmbiosTable(smbiosTable({part})));
}

std::optional<std::uint64_t> bytesOf(const SmbiosPart& part) {
  const auto banks = inTable(part);
  return banks.size() == 1 ? banks[0].bytes : std::optional<std::uint64_t>(1);
}

std::optional<std::uint64_t> speedOf(const SmbiosPart& part) {
  const auto banks = inTable(part);
  return banks.size() == 1 ? banks[0].speed : std::optional<std::uint64_t>(1);
}

TEST(MemoryBanks, TellSocketBankSizeAndSpeed) {
  EXPECT_THAT(inTable(device(4096)),
              ElementsAre(MemoryBank{"A1_DIMM0", "BANK 0", 4 * kGibibyte, 3200}));
}

TEST(MemoryBanks, CountSmallModulesInKilobytes) {
  EXPECT_EQ(bytesOf(device(0x8000 + 512)), 524'288U);
  EXPECT_EQ(bytesOf(device(0x7FFE)), 34'357'641'216U);
}

TEST(MemoryBanks, CountLargeModulesInTheirOwnField) {
  EXPECT_EQ(bytesOf(device(0x7FFF).number(0x1C, 65'536, 4)), 64 * kGibibyte);
  EXPECT_EQ(bytesOf(device(0x7FFF).number(0x1C, 0x8001'0000, 4)), 64 * kGibibyte);
}

TEST(MemoryBanks, CountALargeModuleAsItStandsInAnOldTable) {
  EXPECT_EQ(bytesOf(SmbiosPart(17, 0x15).number(0x0C, 0x7FFF, 2)), 34'358'689'792U);
}

TEST(MemoryBanks, HaveNoSizeWhereTheSocketIsEmpty) {
  EXPECT_THAT(inTable(device(0, 0)),
              ElementsAre(MemoryBank{"A1_DIMM0", "BANK 0", std::nullopt, std::nullopt}));
}

TEST(MemoryBanks, LeaveOutAModuleOfUnknownSize) {
  EXPECT_THAT(inTable(device(0xFFFF)), IsEmpty());
  EXPECT_THAT(inTable(SmbiosPart(17, 0x0D)), IsEmpty());
}

TEST(MemoryBanks, TellNoUnknownSpeed) {
  EXPECT_EQ(speedOf(device(4096, 0)), std::nullopt);
  EXPECT_EQ(speedOf(SmbiosPart(17, 0x15).number(0x0C, 4096, 2)), std::nullopt);
}

TEST(MemoryBanks, TellAHighSpeedFromItsOwnField) {
  EXPECT_EQ(speedOf(device(4096, 0xFFFF).number(0x54, 70'000, 4)), 70'000U);
  EXPECT_EQ(speedOf(device(4096, 0xFFFF).number(0x54, 0x8001'1170, 4)), 70'000U);
  EXPECT_EQ(speedOf(SmbiosPart(17, 0x17).number(0x0C, 4096, 2).number(0x15, 0xFFFF, 2)),
            std::nullopt);
}

// --- What udev notes ---

constexpr const char* kNotes =
    "I:1000\n"
    "E:MEMORY_ARRAY_LOCATION=System Board Or Motherboard\n"
    "E:MEMORY_DEVICE_0_PRESENT=0\n"
    "E:MEMORY_DEVICE_0_LOCATOR=DIMM 0\n"
    "E:MEMORY_DEVICE_0_BANK_LOCATOR=P0 CHANNEL A\n"
    "E:MEMORY_DEVICE_0_SPEED_MTS=0\n"
    "E:MEMORY_DEVICE_10_SIZE=17179869184\n"
    "E:MEMORY_DEVICE_10_LOCATOR=Last\n"
    "E:MEMORY_DEVICE_1_TOTAL_WIDTH=64\n"
    "E:MEMORY_DEVICE_1_SIZE=17179869184\n"
    "E:MEMORY_DEVICE_1_LOCATOR=DIMM 1\n"
    "E:MEMORY_DEVICE_1_BANK_LOCATOR=P0 CHANNEL A\n"
    "E:MEMORY_DEVICE_1_SPEED_MTS=3000\n"
    "E:MEMORY_DEVICE_1_CONFIGURED_SPEED_MTS=2933\n"
    "E:MEMORY_ARRAY_NUM_DEVICES=3\n";

const MemoryBank kEmptySocket{"DIMM 0", "P0 CHANNEL A", std::nullopt, std::nullopt};
const MemoryBank kSecondSocket{"DIMM 1", "P0 CHANNEL A", 16 * kGibibyte, 3000};
const MemoryBank kLastSocket{"Last", "", 16 * kGibibyte, std::nullopt};

TEST(NotedMemoryBanks, StandInTheOrderOfTheirNumbers) {
  EXPECT_THAT(banksInNotes(kNotes), ElementsAre(kEmptySocket, kSecondSocket, kLastSocket));
}

TEST(NotedMemoryBanks, DoNotTellTextsThatTheTableLacks) {
  EXPECT_THAT(banksInNotes("E:MEMORY_DEVICE_0_SIZE=1024\n"
                           "E:MEMORY_DEVICE_0_LOCATOR=Not Specified\n"
                           "E:MEMORY_DEVICE_0_BANK_LOCATOR=<BAD INDEX>\n"
                           "E:MEMORY_DEVICE_0_SPEED_MTS=65535\n"),
              ElementsAre(MemoryBank{"", "", 1024, std::nullopt}));
}

TEST(NotedMemoryBanks, LeaveOutAModuleOfUnknownSize) {
  EXPECT_THAT(banksInNotes("E:MEMORY_DEVICE_0_LOCATOR=DIMM 0\nE:MEMORY_DEVICE_1_SIZE=much\n"
                           "E:MEMORY_DEVICE_2_PRESENT=1\n"),
              IsEmpty());
}

TEST(NotedMemoryBanks, AreNoneInGarbage) {
  EXPECT_THAT(banksInNotes(""), IsEmpty());
  EXPECT_THAT(banksInNotes("E:MEMORY_DEVICE_\nE:MEMORY_DEVICE_0\nE:MEMORY_DEVICE_=1\n"
                           "E:MEMORY_DEVICE_0=SIZE_1\nE:MEMORY_DEVICE_x_SIZE=1024\n"
                           "MEMORY_DEVICE_0_SIZE=1024\n"),
              IsEmpty());
}

TEST(NotedMemoryBanks, ArePrintable) {
  EXPECT_EQ(banksInNotes("E:MEMORY_DEVICE_0_SIZE=1\nE:MEMORY_DEVICE_0_LOCATOR= \xFF\x01 \n")
                .at(0)
                .locator,
            "?");
}

// --- Which of the two ---

TEST(MemoryBanks, AreTakenFromTheTableWhereItMayBeRead) {
  const TemporaryTree tree;
  tree.put(kSmbiosFile, smbiosTable({device(4096)}));
  tree.put("/run/udev/data/+dmi:id", kNotes);
  EXPECT_THAT(memoryBanks(tree.files()),
              ElementsAre(MemoryBank{"A1_DIMM0", "BANK 0", 4 * kGibibyte, 3200}));
}

TEST(MemoryBanks, AreTakenFromUdevsNotesElse) {
  const TemporaryTree tree;
  // Not a plain file stands for one that may not be read, also when root tests.
  tree.makeFolder(kSmbiosFile);
  tree.put("/run/udev/data/+dmi:id", kNotes);
  EXPECT_THAT(memoryBanks(tree.files()), ElementsAre(kEmptySocket, kSecondSocket, kLastSocket));
}

TEST(MemoryBanks, AreNoneWhereNobodyTellsThem) {
  EXPECT_THAT(memoryBanks(TemporaryTree().files()), IsEmpty());
}

}  // namespace
}  // namespace veltrin
