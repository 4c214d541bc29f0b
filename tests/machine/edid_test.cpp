// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/edid.h"

#include <gtest/gtest.h>

#include "edid_block.h"

namespace veltrin {
namespace {

TEST(Edid, TellsMakerProductNameAndRates) {
  const auto facts = readEdid(
      EdidBlock("DEL", 0xA07A).withTiming().withName("DELL U2412M").withRefresh(50, 61).bytes());
  ASSERT_TRUE(facts);
  EXPECT_EQ(facts->maker, "DEL");
  EXPECT_EQ(facts->product, 0xA07A);
  EXPECT_EQ(facts->name, "DELL U2412M");
  EXPECT_EQ(facts->refresh, (RefreshRange{50, 61}));
}

TEST(Edid, ReadsEachOfTheFourDescriptors) {
  EXPECT_EQ(readEdid(EdidBlock().withName("First").bytes())->name, "First");
  EXPECT_EQ(readEdid(EdidBlock().withTiming().withName("Second").bytes())->name, "Second");
  EXPECT_EQ(readEdid(EdidBlock().withTiming().withTiming().withName("Third").bytes())->name,
            "Third");
  EXPECT_EQ(
      readEdid(EdidBlock().withTiming().withTiming().withTiming().withName("Fourth").bytes())->name,
      "Fourth");
}

TEST(Edid, TellsNoNameAndNoRatesWhereTheMonitorTellsNone) {
  const auto facts = readEdid(EdidBlock("AUO", 0x38ED).withText(0xFE, "B140HAN01.3").bytes());
  ASSERT_TRUE(facts);
  EXPECT_EQ(facts->maker, "AUO");
  EXPECT_EQ(facts->name, "");
  EXPECT_EQ(facts->refresh, std::nullopt);
}

TEST(Edid, TakesANameThatFillsItsDescriptor) {
  EXPECT_EQ(readEdid(EdidBlock().withName("THIRTEEN-LONG").bytes())->name, "THIRTEEN-LONG");
}

TEST(Edid, MakesANameOfForeignBytesPrintable) {
  EXPECT_EQ(readEdid(EdidBlock().withName("A\xFF\x01Z").bytes())->name, "A? Z");
}

TEST(Edid, TakesTheFirstOfSeveralNamesAndRates) {
  const auto facts = readEdid(
      EdidBlock().withName("One").withName("Two").withRefresh(40, 60).withRefresh(1, 2).bytes());
  EXPECT_EQ(facts->name, "One");
  EXPECT_EQ(facts->refresh, (RefreshRange{40, 60}));
}

TEST(Edid, DoesNotTakeATimingForAText) {
  // The first three bytes of a descriptor that is none are zero.
  EXPECT_EQ(readEdid(EdidBlock().withName("Name").withByte(54, 1).bytes())->name, "");
  EXPECT_EQ(readEdid(EdidBlock().withName("Name").withByte(55, 1).bytes())->name, "");
  EXPECT_EQ(readEdid(EdidBlock().withName("Name").withByte(56, 1).bytes())->name, "");
}

TEST(Edid, RaisesTheRatesThatAreTooHighForAByte) {
  EXPECT_EQ(readEdid(EdidBlock().withRefresh(48, 33, 2).bytes())->refresh, (RefreshRange{48, 288}));
  EXPECT_EQ(readEdid(EdidBlock().withRefresh(5, 105, 3).bytes())->refresh,
            (RefreshRange{260, 360}));
}

TEST(Edid, RaisesNoRateByTheFlagsOfTheLines) {
  EXPECT_EQ(readEdid(EdidBlock().withRefresh(48, 75, 0x0C).bytes())->refresh,
            (RefreshRange{48, 75}));
}

TEST(Edid, TellsNoRatesThatCannotBe) {
  EXPECT_EQ(readEdid(EdidBlock().withRefresh(0, 75).bytes())->refresh, std::nullopt);
  EXPECT_EQ(readEdid(EdidBlock().withRefresh(76, 75).bytes())->refresh, std::nullopt);
  EXPECT_EQ(readEdid(EdidBlock().withRefresh(75, 75).bytes())->refresh, (RefreshRange{75, 75}));
}

TEST(Edid, TellsNoMakerWhoseLettersAreNone) {
  // Three times 5 bits: 0 stands before A, 27 behind Z.
  EXPECT_EQ(readEdid(EdidBlock().withByte(8, 0).withByte(9, 0x21).bytes())->maker, "");
  EXPECT_EQ(readEdid(EdidBlock().withByte(8, 0x04).withByte(9, 0x3B).bytes())->maker, "");
  EXPECT_EQ(readEdid(EdidBlock("AAA").bytes())->maker, "AAA");
  EXPECT_EQ(readEdid(EdidBlock("ZZZ").bytes())->maker, "ZZZ");
}

TEST(Edid, ReadsABlockWithExtensionsBehindIt) {
  const std::string bytes = EdidBlock().withName("Name").bytes() + std::string(128, '\x02');
  ASSERT_TRUE(readEdid(bytes));
  EXPECT_EQ(readEdid(bytes)->name, "Name");
}

TEST(Edid, IsNothingWhenItIsCutOff) {
  const std::string whole = EdidBlock().bytes();
  EXPECT_TRUE(readEdid(whole));
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_FALSE(readEdid(whole.substr(0, size))) << size;
  }
}

TEST(Edid, IsNothingWhenAnyByteIsDamaged) {
  const std::string whole = EdidBlock().withName("Name").bytes();
  for (std::size_t at = 0; at < whole.size(); ++at) {
    std::string damaged = whole;
    damaged[at] = static_cast<char>(damaged[at] ^ 0x10);
    EXPECT_FALSE(readEdid(damaged)) << at;
  }
}

TEST(Edid, IsNothingWithAnotherStartOrVersionThoughItAddsUp) {
  EXPECT_FALSE(readEdid(EdidBlock().withByte(0, 1).bytes()));
  EXPECT_FALSE(readEdid(EdidBlock().withByte(7, 1).bytes()));
  EXPECT_FALSE(readEdid(EdidBlock().withByte(18, 2).bytes()));
  EXPECT_FALSE(readEdid(std::string(128, '\0')));
}

}  // namespace
}  // namespace veltrin
