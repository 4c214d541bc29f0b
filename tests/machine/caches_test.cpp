// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/caches.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "smbios_table.h"
#include "temporary_tree.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// --- The firmware's table ---

CacheFacts inTable(const SmbiosPart& part) {
  const auto caches = cachesIn(SmbiosTable(smbiosTable({part})));
  return caches.size() == 1 ? caches[0] : CacheFacts{999, 999, 999, false};
}

SmbiosPart cacheOf(std::uint64_t configuration) {
  return SmbiosPart(7, 0x0F).number(0x05, configuration, 2);
}

TEST(CachesOfTheTable, TellTheirLevelFromOneOn) {
  for (unsigned level = 1; level <= 8; ++level) {
    EXPECT_EQ(inTable(cacheOf(0x0180 + level - 1)).level, level);
  }
}

TEST(CachesOfTheTable, TellWhereTheyAre) {
  EXPECT_EQ(inTable(cacheOf(0x0180)).location, 0U);
  EXPECT_EQ(inTable(cacheOf(0x01A0)).location, 1U);
  EXPECT_EQ(inTable(cacheOf(0x01C0)).location, 2U);
  EXPECT_EQ(inTable(cacheOf(0x01E0)).location, 3U);
}

TEST(CachesOfTheTable, TellWhetherTheyAreEnabled) {
  EXPECT_EQ(inTable(cacheOf(0x0080)).enabled, true);
  EXPECT_EQ(inTable(cacheOf(0x0F7F)).enabled, false);
}

std::optional<std::uint64_t> sizeOf(std::uint64_t size, std::uint64_t behind) {
  return inTable(SmbiosPart(7, 0x1B).number(0x07, size, 2).number(0x13, behind, 4)).kilobytes;
}

TEST(CachesOfTheTable, TellTheirSizeInEitherUnit) {
  EXPECT_EQ(sizeOf(384, 0), 384U);
  EXPECT_EQ(sizeOf(0x7FFF, 0), 32767U);
  EXPECT_EQ(sizeOf(0x8000 + 512, 0), 32768U);
}

TEST(CachesOfTheTable, TellALargeSizeInItsOwnField) {
  EXPECT_EQ(sizeOf(0xFFFF, 3'000'000), 3'000'000U);
  EXPECT_EQ(sizeOf(0xFFFF, 0x8001'0000), 4'194'304U);
}

TEST(CachesOfTheTable, TellTheSizeThatFitsWhereTheTableIsOld) {
  EXPECT_EQ(inTable(SmbiosPart(7, 0x0F).number(0x07, 0xFFFF, 2)).kilobytes, 2'097'088U);
}

TEST(CachesOfTheTable, LeaveOutWhatTheirStructureIsTooShortFor) {
  EXPECT_EQ(inTable(SmbiosPart(7, 0x06)), CacheFacts());
  EXPECT_EQ(inTable(SmbiosPart(7, 0x07).number(0x05, 0x0181, 2)),
            (CacheFacts{2, std::nullopt, 0, true}));
}

TEST(CachesOfTheTable, StandInItsOrder) {
  const SmbiosTable table(smbiosTable({cacheOf(0x182), cacheOf(0x180), cacheOf(0x181)}));
  EXPECT_THAT(cachesIn(table), ElementsAre(CacheFacts{3, 0, 0, true}, CacheFacts{1, 0, 0, true},
                                           CacheFacts{2, 0, 0, true}));
}

// --- The kernel's list ---

class CachesOfTheKernel : public ::testing::Test {
 protected:
  void put(int processor, int index, const std::string& level, const std::string& kind,
           const std::string& size, const std::string& sharedBy) {
    const std::string folder = "/sys/devices/system/cpu/cpu" + std::to_string(processor) +
                               "/cache/index" + std::to_string(index) + "/";
    tree_.put(folder + "level", level + "\n");
    tree_.put(folder + "type", kind + "\n");
    tree_.put(folder + "size", size + "\n");
    tree_.put(folder + "shared_cpu_list", sharedBy + "\n");
  }

  // A core with caches of its own, and one that the package shares.
  void putCore(int processor, const std::string& firstLevel = "48K") {
    const std::string own = std::to_string(processor);
    put(processor, 0, "1", "Data", firstLevel, own);
    put(processor, 1, "1", "Instruction", "32K", own);
    put(processor, 2, "2", "Unified", "1280K", own);
    put(processor, 3, "3", "Unified", "24576K", "0-3");
  }

  std::vector<CacheFacts> facts(const std::vector<std::uint64_t>& processors) {
    return cachesOf(tree_.files(), processors);
  }

  static CacheFacts cache(std::uint64_t level, std::optional<std::uint64_t> kilobytes) {
    return {level, kilobytes, std::nullopt, std::nullopt};
  }

  TemporaryTree tree_;
};

TEST_F(CachesOfTheKernel, AreSummedUpOverTheCoresOfAPackage) {
  for (int core = 0; core < 4; ++core) {
    putCore(core);
  }
  EXPECT_THAT(facts({0, 1, 2, 3}),
              ElementsAre(cache(1, 192), cache(1, 128), cache(2, 5120), cache(3, 24576)));
}

TEST_F(CachesOfTheKernel, CountThoseOfOnePackageOnly) {
  putCore(0);
  putCore(1);
  EXPECT_THAT(facts({1}), ElementsAre(cache(1, 48), cache(1, 32), cache(2, 1280), cache(3, 24576)));
}

TEST_F(CachesOfTheKernel, CountWhatTwoThreadsShareOnce) {
  for (int thread : {0, 2}) {
    put(thread, 0, "1", "Data", "32K", "0,2");
  }
  for (int thread : {1, 3}) {
    put(thread, 0, "1", "Data", "32K", "1,3");
  }
  EXPECT_THAT(facts({0, 1, 2, 3}), ElementsAre(cache(1, 64)));
}

TEST_F(CachesOfTheKernel, AddUpCoresOfTwoKinds) {
  putCore(0, "48K");
  putCore(1, "32K");
  EXPECT_EQ(facts({0, 1}).front(), cache(1, 80));
}

TEST_F(CachesOfTheKernel, PutDataBeforeInstructions) {
  put(0, 0, "2", "Unified", "4K", "0");
  put(0, 1, "1", "Instruction", "2K", "0");
  put(0, 2, "1", "Data", "1K", "0");
  EXPECT_THAT(facts({0}), ElementsAre(cache(1, 1), cache(1, 2), cache(2, 4)));
}

TEST_F(CachesOfTheKernel, CountEachWhereNobodyTellsWhoSharesThem) {
  put(0, 0, "1", "Data", "32K", "");
  put(1, 0, "1", "Data", "32K", "garbage,-,3-");
  EXPECT_THAT(facts({0, 1}), ElementsAre(cache(1, 64)));
}

TEST_F(CachesOfTheKernel, HaveNoSizeWhereItIsGarbage) {
  put(0, 0, "1", "Data", "32", "0");
  put(0, 1, "2", "Unified", "99999999999999999K", "0");
  put(0, 2, "3", "Unified", "xK", "0");
  EXPECT_THAT(facts({0}),
              ElementsAre(cache(1, std::nullopt), cache(2, std::nullopt), cache(3, std::nullopt)));
}

TEST_F(CachesOfTheKernel, TakeAnAbsurdListOfProcessorsForWhatItIs) {
  put(0, 0, "1", "Data", "32K", "0-18446744073709551615");
  put(1, 0, "1", "Data", "32K", "0-18446744073709551615");
  EXPECT_THAT(facts({0, 1}), ElementsAre(cache(1, 32)));
}

TEST_F(CachesOfTheKernel, EndAtAFolderWithoutFiles) {
  put(0, 0, "1", "Data", "32K", "0");
  tree_.makeFolder("/sys/devices/system/cpu/cpu0/cache/index1");
  put(0, 2, "2", "Unified", "1M", "0");
  EXPECT_THAT(facts({0}), ElementsAre(cache(1, 32)));
}

TEST_F(CachesOfTheKernel, AreNoneWhereItListsNone) { EXPECT_THAT(facts({0, 1}), IsEmpty()); }

}  // namespace
}  // namespace veltrin
