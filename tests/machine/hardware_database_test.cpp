// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/hardware_database.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "hardware_database_file.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

// --- Patterns ---

TEST(FitsPattern, ComparesPlainCharacters) {
  EXPECT_TRUE(fitsPattern("abc", "abc"));
  EXPECT_FALSE(fitsPattern("abc", "ab"));
  EXPECT_FALSE(fitsPattern("ab", "abc"));
  EXPECT_TRUE(fitsPattern("", ""));
}

TEST(FitsPattern, LetsAStarStandForAnything) {
  EXPECT_TRUE(fitsPattern("", "*"));
  EXPECT_TRUE(fitsPattern("abc", "a*"));
  EXPECT_TRUE(fitsPattern("abcbd", "a*b*d"));
  EXPECT_TRUE(fitsPattern("aab", "*ab"));
  EXPECT_FALSE(fitsPattern("abc", "a*d"));
  EXPECT_TRUE(fitsPattern("v1d2sv3sd4bc02sc00i00", "v*d*sv*sd*bc02*"));
}

TEST(FitsPattern, LetsAQuestionMarkStandForOneCharacter) {
  EXPECT_TRUE(fitsPattern("abc", "a?c"));
  EXPECT_FALSE(fitsPattern("ac", "a?c"));
}

TEST(FitsPattern, LetsBracketsStandForOneOfSome) {
  EXPECT_TRUE(fitsPattern("b", "[abc]"));
  EXPECT_FALSE(fitsPattern("d", "[abc]"));
  EXPECT_TRUE(fitsPattern("x5", "x[0-9]"));
  EXPECT_FALSE(fitsPattern("x5", "x[!0-9]"));
  EXPECT_TRUE(fitsPattern("xa", "x[!0-9]"));
  EXPECT_TRUE(fitsPattern("]", "[]]"));
  EXPECT_TRUE(fitsPattern("-", "[a-]"));
}

TEST(FitsPattern, TakesBracketsWithoutAnEndAsTheyAre) {
  EXPECT_TRUE(fitsPattern("[ab", "[ab"));
  EXPECT_FALSE(fitsPattern("a", "["));
}

// A pattern of many stars is decided at once, though there are more ways to spread a
// text among them than can be tried.
TEST(FitsPattern, DecidesManyStarsAtOnce) {
  std::string pattern;
  for (int i = 0; i < 100; ++i) {
    pattern += "*a";
  }
  EXPECT_FALSE(fitsPattern(std::string(5000, 'a') + "b", pattern));
}

// --- The database ---

const std::vector<DatabaseEntry> kCards{
    {"pci:v00008086*", " VENDOR", "Example Corporation", 10, 1},
    {"pci:v00008086d000015F3*", " MODEL", "Card Seven", 11, 1},
    {"pci:v00008086d000015F3sv00001028*", " MODEL", "Card Seven of a brand", 12, 1},
    {"pci:v00008086d00001539*", " MODEL", "Card Five", 13, 1},
    {"pci:v*d*sv*sd*bc02*", " CLASS", "Network", 5, 0},
    {"pci:v00008087*", " VENDOR", "Another", 20, 1},
    {"usb:v0BDAp8153", " MODEL", "Exactly this", 30, 1},
};

std::map<std::string, std::string> search(const std::vector<DatabaseEntry>& entries,
                                          const std::string& id, bool ranks = true) {
  const std::string file = databaseFile(entries, ranks);
  return HardwareDatabase(file).properties(id);
}

TEST(HardwareDatabase, GathersThePropertiesOfAllPatternsThatFit) {
  EXPECT_THAT(search(kCards, "pci:v00008086d00001539sv00000000sd00000000bc02sc00i00"),
              ElementsAre(Pair("CLASS", "Network"), Pair("MODEL", "Card Five"),
                          Pair("VENDOR", "Example Corporation")));
}

TEST(HardwareDatabase, PrefersTheEntryFurtherDownInItsSource) {
  EXPECT_THAT(
      search(kCards, "pci:v00008086d000015F3sv00001028sd0bc01"),
      ElementsAre(Pair("MODEL", "Card Seven of a brand"), Pair("VENDOR", "Example Corporation")));
  EXPECT_THAT(search({{"a*", " X", "later", 9, 1}, {"ab*", " X", "earlier", 8, 1}}, "abc"),
              ElementsAre(Pair("X", "later")));
}

TEST(HardwareDatabase, PrefersTheSourceOfHigherRank) {
  EXPECT_THAT(search({{"a*", " X", "high", 1, 2}, {"ab*", " X", "low", 9, 1}}, "abc"),
              ElementsAre(Pair("X", "high")));
}

TEST(HardwareDatabase, ReadsTheOlderFormWithoutRanks) {
  EXPECT_THAT(search(kCards, "usb:v0BDAp8153", false), ElementsAre(Pair("MODEL", "Exactly this")));
}

TEST(HardwareDatabase, WantsAPatternWithoutWildcardsWhole) {
  EXPECT_THAT(search(kCards, "usb:v0BDAp8153d3100"), IsEmpty());
  EXPECT_THAT(search(kCards, "usb:v0BDAp815"), IsEmpty());
}

TEST(HardwareDatabase, FindsWildcardsInsideAPattern) {
  const std::vector<DatabaseEntry> entries{{"a?c[12]x", " X", "found"}, {"*z", " Z", "end"}};
  EXPECT_THAT(search(entries, "abc2x"), ElementsAre(Pair("X", "found")));
  EXPECT_THAT(search(entries, "abc3x"), IsEmpty());
  EXPECT_THAT(search(entries, "a1z"), ElementsAre(Pair("Z", "end")));
}

TEST(HardwareDatabase, LeavesOutPropertiesOfOtherReaders) {
  EXPECT_THAT(search({{"a", "X", "not udev's"}, {"a", " Y", "udev's"}}, "a"),
              ElementsAre(Pair("Y", "udev's")));
}

TEST(HardwareDatabase, OfNoBytesIsEmpty) {
  EXPECT_THAT(HardwareDatabase("").properties("pci:v00008086"), IsEmpty());
}

TEST(HardwareDatabase, CutOffAnywhereIsEmpty) {
  const std::string file = databaseFile(kCards);
  for (std::size_t size = 0; size < file.size(); ++size) {
    EXPECT_THAT(
        HardwareDatabase(std::string_view(file).substr(0, size)).properties("usb:v0BDAp8153"),
        IsEmpty())
        << size;
  }
}

TEST(HardwareDatabase, LongerThanItSaysIsEmpty) {
  const std::string file = databaseFile(kCards) + "x";
  EXPECT_THAT(HardwareDatabase(file).properties("usb:v0BDAp8153"), IsEmpty());
}

TEST(HardwareDatabase, OfAnotherSignatureIsEmpty) {
  std::string file = databaseFile(kCards);
  file[0] = 'X';
  EXPECT_THAT(HardwareDatabase(file).properties("usb:v0BDAp8153"), IsEmpty());
}

TEST(HardwareDatabase, WhoseStructuresAreTooSmallIsEmpty) {
  for (const std::size_t place : {32U, 40U, 48U}) {
    std::string file = databaseFile(kCards);
    file[place] = 8;
    EXPECT_THAT(HardwareDatabase(file).properties("usb:v0BDAp8153"), IsEmpty()) << place;
  }
}

TEST(HardwareDatabase, WhoseRootLiesOutsideFindsNothing) {
  std::string file = databaseFile(kCards);
  file[56 + 7] = '\x7F';
  EXPECT_THAT(HardwareDatabase(file).properties("usb:v0BDAp8153"), IsEmpty());
}

// A node "*" whose only child is the node itself.
TEST(HardwareDatabase, ThatRunsInACircleComesToAnEnd) {
  std::string file = databaseFile({{"*", " X", "x"}, {"*ab", " Y", "y"}});
  const std::size_t root =
      static_cast<unsigned char>(file[56]) + 256U * static_cast<unsigned char>(file[57]);
  // Behind the node's 24 bytes stand the child's character and place.
  file[root + 24 + 8] = file[56];
  file[root + 24 + 9] = file[57];
  EXPECT_THAT(HardwareDatabase(file).properties("anything"), ElementsAre(Pair("X", "x")));
}

}  // namespace
}  // namespace veltrin
