// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/memory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "temporary_tree.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

MemoryFacts factsOf(const std::string& text) {
  const TemporaryTree tree;
  tree.put("/proc/meminfo", text);
  return memoryFacts(tree.files());
}

TEST(Memory, IsReadInMegabytesRoundedDown) {
  const MemoryFacts facts = factsOf(
      "MemTotal:        4052991 kB\n"
      "MemFree:         1000000 kB\n"
      "MemAvailable:    2096127 kB\n"
      "SwapTotal:       4050944 kB\n"
      "SwapFree:        3645440 kB\n");
  EXPECT_EQ(facts.total, 3957U);
  EXPECT_EQ(facts.available, 2046U);
  EXPECT_EQ(facts.virtualTotal, 7913U);
  EXPECT_EQ(facts.virtualAvailable, 5606U);
}

TEST(Memory, OfAnEmptyOrMissingListIsUnknown) {
  for (const MemoryFacts& facts : {factsOf(""), memoryFacts(TemporaryTree().files())}) {
    EXPECT_EQ(facts.total, std::nullopt);
    EXPECT_EQ(facts.available, std::nullopt);
    EXPECT_EQ(facts.virtualTotal, std::nullopt);
    EXPECT_EQ(facts.virtualAvailable, std::nullopt);
  }
}

TEST(Memory, WithoutSwapFiguresHasNoVirtualOnes) {
  const MemoryFacts facts = factsOf("MemTotal: 2048 kB\nMemAvailable: 1024 kB\n");
  EXPECT_EQ(facts.total, 2U);
  EXPECT_EQ(facts.available, 1U);
  EXPECT_EQ(facts.virtualTotal, std::nullopt);
  EXPECT_EQ(facts.virtualAvailable, std::nullopt);
}

TEST(Memory, OfGarbageIsUnknown) {
  EXPECT_EQ(factsOf("MemTotal: x kB\n").total, std::nullopt);
  EXPECT_EQ(factsOf("MemTotal: 12\n").total, std::nullopt);
  EXPECT_EQ(factsOf("MemTotal: 12 MB\n").total, std::nullopt);
  EXPECT_EQ(factsOf("MemTotal: 99999999999999999999999 kB\n").total, std::nullopt);
}

TEST(Memory, BeyondWhatCanBeCountedIsUnknown) {
  EXPECT_EQ(factsOf("MemTotal: 18446744073709551615 kB\nSwapTotal: 1 kB\n").virtualTotal,
            std::nullopt);
}

std::vector<std::string> placesOf(const std::string& text) {
  const TemporaryTree tree;
  tree.put("/proc/swaps", text);
  return swapPlaces(tree.files());
}

TEST(SwapPlaces, AreTheFilesAndDevicesOfTheList) {
  EXPECT_THAT(placesOf("Filename\t\t\t\tType\t\tSize\t\tUsed\t\tPriority\n"
                       "/dev/nvme0n1p3  partition\t8388604\t\t0\t\t-2\n"
                       "/my\\040swap  file\t2097148\t\t0\t\t-3\n"),
              ElementsAre("/dev/nvme0n1p3", "/my swap"));
}

TEST(SwapPlaces, AreNoneInAListOfNoneOrOfGarbage) {
  EXPECT_THAT(placesOf("Filename\tType\tSize\tUsed\tPriority\n"), IsEmpty());
  EXPECT_THAT(placesOf(""), IsEmpty());
  EXPECT_THAT(placesOf("\x02\xFF\n\n garbage\n"), IsEmpty());
}

}  // namespace
}  // namespace veltrin
