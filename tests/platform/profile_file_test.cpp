// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portable/profile_file.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>

#include "scratch_folder.h"

namespace veltrin {
namespace {

using namespace std::string_literals;

constexpr std::size_t kRoom = 1024;
const std::optional<std::string> kNone;

// Reads and writes "Veltrin.dat" of a scratch folder by the program's path of it.
class ProfileFileTest : public testing::Test {
 protected:
  static constexpr const char* kPath = "\\Files\\Veltrin.dat";

  std::string read(const std::optional<std::string>& section, const std::optional<std::string>& key,
                   const std::string& fallback = "", std::size_t size = kRoom) {
    return file_.read(section, key, fallback, size, kPath);
  }

  bool write(const std::string& section, const std::optional<std::string>& key,
             const std::optional<std::string>& value) {
    return file_.write(section, key, value, kPath);
  }

  void fill(const std::string& content) { scratch_.fill("Veltrin.dat", content); }
  std::string content() const { return scratch_.content("Veltrin.dat"); }

  ScratchFolder scratch_;
  ProfileFile file_{[this](const std::string& path) {
    return path == kPath ? scratch_.path("Veltrin.dat") : scratch_.path("missing/Veltrin.dat");
  }};
};

TEST_F(ProfileFileTest, ReadsAValue) {
  fill("[Settings]\r\nPath=C:\\Veltrin\r\n");
  EXPECT_EQ(read("Settings", "Path"), "C:\\Veltrin");
}

TEST_F(ProfileFileTest, CutsAValueToOneLessThanTheSize) {
  fill("[A]\r\nk=12345\r\n");
  EXPECT_EQ(read("A", "k", "", 6), "12345");
  EXPECT_EQ(read("A", "k", "", 5), "1234");
  EXPECT_EQ(read("A", "k", "", 1), "");
  EXPECT_EQ(read("A", "k", "", 0), "");
}

TEST_F(ProfileFileTest, TakesQuotationMarksOffBeforeItCuts) {
  fill("[A]\r\nk='12345'\r\n");
  EXPECT_EQ(read("A", "k", "", 6), "12345");
}

TEST_F(ProfileFileTest, CutsAValueBehindAWholeCharacter) {
  fill("[A]\r\nk=\u00E9\u20AC\U0001F600x\r\n");
  EXPECT_EQ(read("A", "k", "", 5), "\u00E9\u20AC\U0001F600x");
  EXPECT_EQ(read("A", "k", "", 4), "\u00E9\u20AC\U0001F600");
  EXPECT_EQ(read("A", "k", "", 3), "\u00E9\u20AC");
  EXPECT_EQ(read("A", "k", "", 2), "\u00E9");
  EXPECT_EQ(read("A", "k", "", 1), "");
}

TEST_F(ProfileFileTest, CutsAValueOfOtherBytesAtAnyOfThem) {
  fill("[A]\r\nk=\xE4\xFF\xE2\x82x\r\n");
  EXPECT_EQ(read("A", "k", "", 5), "\xE4\xFF\xE2\x82");
  EXPECT_EQ(read("A", "k", "", 4), "\xE4\xFF\xE2");
}

TEST_F(ProfileFileTest, CutsTheFallbackBehindAWholeCharacter) {
  EXPECT_EQ(read("A", "k", "\u00E9\u20ACx", 3), "\u00E9\u20AC");
}

TEST_F(ProfileFileTest, GivesTheFallbackForAMissingFile) {
  EXPECT_EQ(read("A", "k", "other"), "other");
}

TEST_F(ProfileFileTest, GivesTheFallbackForAMissingKey) {
  fill("[A]\r\nk=1\r\n");
  EXPECT_EQ(read("A", "j", "other"), "other");
}

TEST_F(ProfileFileTest, GivesAnEmptyValueAndNotTheFallback) {
  fill("[A]\r\nk=\r\n");
  EXPECT_EQ(read("A", "k", "other"), "");
}

TEST_F(ProfileFileTest, StripsBlanksAtTheEndOfTheFallbackOnly) {
  EXPECT_EQ(read("A", "k", "  other  "), "  other");
  EXPECT_EQ(read("A", "k", "   "), "");
}

TEST_F(ProfileFileTest, CutsTheFallbackToOneLessThanTheSize) {
  EXPECT_EQ(read("A", "k", "other", 4), "oth");
}

TEST_F(ProfileFileTest, ListsKeysWithANulBehindEach) {
  fill("[A]\r\nk1=1\r\nk2=2\r\n[B]\r\nk3=3\r\n");
  EXPECT_EQ(read("A", kNone), "k1\0k2\0"s);
}

TEST_F(ProfileFileTest, ListsSectionsWithANulBehindEach) {
  fill("[A]\r\nk1=1\r\n[B]\r\n");
  EXPECT_EQ(read(kNone, kNone), "A\0B\0"s);
}

TEST_F(ProfileFileTest, ListsSectionsAlsoWhenAKeyIsGiven) {
  fill("[A]\r\nk=1\r\n");
  EXPECT_EQ(read(kNone, "k"), "A\0"s);
}

TEST_F(ProfileFileTest, GivesAListWholeWhenItFitsExactly) {
  fill("[A]\r\nk1=1\r\nk2=2\r\n");
  EXPECT_EQ(read("A", kNone, "", 7), "k1\0k2\0"s);
}

TEST_F(ProfileFileTest, CutsAListToTwoLessThanTheSize) {
  fill("[A]\r\nk1=1\r\nk2=2\r\n");
  EXPECT_EQ(read("A", kNone, "", 6), "k1\0k"s);
  EXPECT_EQ(read("A", kNone, "", 5), "k1\0"s);
  EXPECT_EQ(read("A", kNone, "", 4), "k1");
  EXPECT_EQ(read("A", kNone, "", 3), "k");
}

TEST_F(ProfileFileTest, CutsAListBehindAWholeCharacter) {
  fill("[A]\r\n\u00E91=1\r\n\u20AC2=2\r\n");
  EXPECT_EQ(read("A", kNone, "", 7), "\u00E91\0\u20AC2\0"s);
  EXPECT_EQ(read("A", kNone, "", 6), "\u00E91\0\u20AC"s);
  EXPECT_EQ(read("A", kNone, "", 5), "\u00E91\0"s);
  EXPECT_EQ(read("A", kNone, "", 3), "\u00E9");
}

TEST_F(ProfileFileTest, GivesNothingOfAListWithoutRoomForTwoNuls) {
  fill("[A]\r\nk1=1\r\n");
  EXPECT_EQ(read("A", kNone, "other", 2), "");
  EXPECT_EQ(read("A", kNone, "other", 1), "");
  EXPECT_EQ(read("A", kNone, "other", 0), "");
}

TEST_F(ProfileFileTest, GivesTheFallbackForAListWithoutKeys) {
  fill("[A]\r\n");
  EXPECT_EQ(read("A", kNone, "other"), "other");
  EXPECT_EQ(read("B", kNone, "other"), "other");
}

TEST_F(ProfileFileTest, GivesNothingForAListWithoutSections) {
  fill("");
  EXPECT_EQ(read(kNone, kNone, "other"), "");
}

TEST_F(ProfileFileTest, MakesAMissingFileWithTheFirstWrite) {
  EXPECT_TRUE(write("Settings", "Version", "1.03"));
  EXPECT_EQ(content(), "[Settings]\r\nVersion=1.03\r\n");
}

TEST_F(ProfileFileTest, MakesNoFileToDeleteFromIt) {
  EXPECT_TRUE(write("Settings", "Version", kNone));
  EXPECT_FALSE(scratch_.has("Veltrin.dat"));
}

TEST_F(ProfileFileTest, FailsWithoutTheFolder) {
  EXPECT_FALSE(file_.write("A", "k", "1", "\\elsewhere"));
}

TEST_F(ProfileFileTest, DeletesAKeyWithoutAValue) {
  fill("[A]\r\nk=1\r\nj=2\r\n");
  EXPECT_TRUE(write("A", "k", kNone));
  EXPECT_EQ(content(), "[A]\r\nj=2\r\n");
}

TEST_F(ProfileFileTest, DeletesASectionWithoutAKeyWhateverTheValue) {
  fill("[A]\r\nk=1\r\n[B]\r\nj=2\r\n");
  EXPECT_TRUE(write("A", kNone, "0"));
  EXPECT_EQ(content(), "[B]\r\nj=2\r\n");
}

TEST_F(ProfileFileTest, KeepsTheKeyOfAnEmptyValue) {
  fill("[A]\r\nk=1\r\n");
  EXPECT_TRUE(write("A", "k", ""));
  EXPECT_EQ(content(), "[A]\r\nk=\r\n");
}

TEST_F(ProfileFileTest, GivesBackAValueOfTwoThousandBytes) {
  const std::string value(2000, 'x');
  EXPECT_TRUE(write("A", "k", value));
  EXPECT_EQ(read("A", "k", "", 4096), value);
}

TEST_F(ProfileFileTest, EndsTextsAtTheFirstNul) {
  EXPECT_TRUE(write("A\0x"s, "k\0x"s, "1\0x"s));
  EXPECT_EQ(content(), "[A]\r\nk=1\r\n");
  EXPECT_EQ(read("A\0y"s, "k\0y"s), "1");
}

TEST_F(ProfileFileTest, RefusesNamesWithALineBreak) {
  fill("[A]\r\nk=1\r\n");
  EXPECT_FALSE(write("B\r\nC", "k", "1"));
  EXPECT_FALSE(write("A", "k\nj", "1"));
  EXPECT_EQ(content(), "[A]\r\nk=1\r\n");
}

TEST_F(ProfileFileTest, KeepsBytesThatAreNoUtf8) {
  fill("[A]\nother \xE4\xFF\nk=1\n");
  EXPECT_TRUE(write("A", "k", "\xC3\xA4"));
  EXPECT_EQ(content(), "[A]\nother \xE4\xFF\nk=\xC3\xA4\n");
}

TEST_F(ProfileFileTest, SeesWhatOthersWroteInBetween) {
  fill("[A]\nk=1\n");
  read("A", "k");
  fill("[A]\nk=2\n");
  EXPECT_EQ(read("A", "k"), "2");
}

TEST_F(ProfileFileTest, LeavesAloneWhatIsNoFile) {
  std::filesystem::create_directory(scratch_.path("Veltrin.dat"));
  EXPECT_FALSE(write("A", "k", "1"));
  EXPECT_TRUE(std::filesystem::is_directory(scratch_.path("Veltrin.dat")));
}

TEST_F(ProfileFileTest, LeavesNoOtherFileBehind) {
  write("A", "k", "1");
  write("A", "k", "2");
  EXPECT_EQ(scratch_.count(), 1U);
}

}  // namespace
}  // namespace veltrin
