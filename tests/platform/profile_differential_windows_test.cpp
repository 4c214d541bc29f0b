// SPDX-License-Identifier: GPL-3.0-or-later
// The program's own profile files against those of the system: thousands of random
// operations on random files, every answer and every file compared. Where the
// system's calls of Wine, under which this runs, are known to depart from what is
// documented, the random operations keep away and a test of its own tells what the
// program does instead.
#include <array>
#include <gtest/gtest.h>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>
#include <windows.h>

#include "platform/portable/profile_file.h"
#include "platform/portable/profile_text.h"
#include "platform/windows/windows_profile_store.h"
#include "scratch_folder.h"

namespace veltrin {
namespace {

using namespace std::string_literals;
using Text = std::optional<std::string>;

constexpr const char* kOurs = "ours.ini";
constexpr const char* kTheirs = "theirs.ini";
constexpr std::size_t kRoom = 4096;
const Text kNone;

// Both implementations, each with a file of its own.
class Pair {
 public:
  void fill(const std::string& content) {
    scratch_.fill(kOurs, content);
    scratch_.fill(kTheirs, content);
    forget();
  }

  std::string readOurs(const Text& section, const Text& key, const std::string& fallback,
                       std::size_t size = kRoom) {
    return ours_.read(section, key, fallback, size, kOurs);
  }
  std::string readTheirs(const Text& section, const Text& key, const std::string& fallback,
                         std::size_t size = kRoom) {
    return theirs_.read(section, key, fallback, size, theirPath_);
  }
  bool writeOurs(const std::string& section, const Text& key, const Text& value) {
    return ours_.write(section, key, value, kOurs);
  }
  bool writeTheirs(const std::string& section, const Text& key, const Text& value) {
    const bool written = theirs_.write(section, key, value, theirPath_);
    forget();
    return written;
  }

  std::string ourFile() const { return scratch_.content(kOurs); }
  std::string theirFile() const { return scratch_.content(kTheirs); }

 private:
  // Makes the system forget what it has kept of the file in memory.
  void forget() { WritePrivateProfileStringA(nullptr, nullptr, nullptr, theirPath_.c_str()); }

  ScratchFolder scratch_;
  std::string theirPath_ = scratch_.path(kTheirs);
  ProfileFile ours_{[this](const std::string& name) { return scratch_.path(name); }};
  WindowsProfileStore theirs_;
};

// What a file means, for messages and comparison: each section with its keys and
// values in their order, then its other lines in theirs. Blank lines, blanks around
// things and the kind of line break mean nothing.
std::string meaning(const std::string& file) {
  std::string keys;
  std::string others;
  std::string result;
  const auto trimmed = [](const std::string& line) {
    const auto first = line.find_first_not_of(" \t");
    if (first == std::string::npos) return std::string();
    return line.substr(first, line.find_last_not_of(" \t") - first + 1);
  };
  const auto closeSection = [&] {
    result += keys + others;
    keys.clear();
    others.clear();
  };
  for (std::size_t at = 0; at < file.size();) {
    const auto end = std::min(file.find_first_of("\r\n", at), file.size());
    const std::string line = trimmed(file.substr(at, end - at));
    at = end + 1;
    if (line.empty()) continue;
    const auto equals = line.find('=');
    const auto bracket = line.rfind(']');
    if (line.front() == '[' && bracket != std::string::npos) {
      closeSection();
      result += "section <" + trimmed(line.substr(1, bracket - 1)) + ">\n";
    } else if (line.front() != ';' && equals != std::string::npos) {
      keys += "key <" + trimmed(line.substr(0, equals)) + "> value <" +
              trimmed(line.substr(equals + 1)) + ">\n";
    } else {
      others += "other <" + line + ">\n";
    }
  }
  closeSection();
  return result;
}

// Random material. All choices come from one seeded generator, so that a seed shows
// a failure again; its raw numbers are the same on every system.
class Dice {
 public:
  explicit Dice(unsigned seed) : generator_(seed) {}

  std::size_t below(std::size_t limit) { return generator_() % limit; }
  bool oneIn(std::size_t chances) { return below(chances) == 0; }

  template <std::size_t Count>
  std::string oneOf(const std::array<const char*, Count>& choices) {
    return choices[below(Count)];
  }

  std::string blanks() { return oneOf(std::array{"", "", "", " ", "  ", "\t", " \t "}); }
  std::string section() {
    return oneOf(std::array{"A", "a", "Settings", "SETTINGS", "Rated Speed", "In]Depth", "B", "x=1",
                            "'q'", "Missing"});
  }
  std::string key() {
    return oneOf(std::array{"k", "K", "Path", "path", "My Key", "\"q\"", "#k", "n1", "n2", "N3",
                            "a longer name of a key"});
  }
  std::string value() {
    if (oneIn(20)) return std::string(2000 - below(3), static_cast<char>('a' + below(26)));
    return oneOf(std::array{"", "1", "two words", "\"quoted\"", "'quoted'", "\"\"twice\"\"", "\"",
                            "'", "\"mixed'", "a=b", "=", "; no comment", "[B]", "' blanks '",
                            "C:\\Folder\\File.txt", "http://host/path?x=1&y=2", "30,000", "%41"});
  }
  std::string otherLine() {
    return oneOf(std::array{"; comment", ";k=comment", ";[A]", "words without meaning", "[unclosed",
                            "[open=1", "", "", "\t", "!", "]"});
  }
  std::string fallback() {
    return oneOf(std::array{"", "other", "two words", "blanks behind  ", "  blanks before"});
  }
  std::size_t size() { return oneIn(3) ? 3 + below(30) : kRoom; }

  std::string file() {
    const std::string lineBreak = oneIn(3) ? "\n" : "\r\n";
    std::string text;
    for (std::size_t lines = below(40); lines > 0; --lines) {
      text += line();
      if (lines > 1 || !oneIn(4)) text += lineBreak;
    }
    return text;
  }

 private:
  std::string line() {
    if (oneIn(5)) return blanks() + "[" + blanks() + section() + blanks() + "]" + blanks();
    if (oneIn(4)) return blanks() + otherLine() + blanks();
    return blanks() + key() + blanks() + "=" + blanks() + value() + blanks();
  }

  std::mt19937 generator_;
};

// Whether a list, or a value in quotation marks, fills its buffer to the last byte: two
// known departures.
bool fillsExactly(Pair& pair, const Text& section, const Text& key, std::size_t size) {
  return pair.readOurs(section, key, "").size() + 1 == size;
}

// Whether the key stands in a later section of the same name only: a known departure
// of deletes.
bool standsInLaterSection(const std::string& file, const std::string& section,
                          const std::string& key) {
  ProfileText rest(file);
  if (rest.value(section, key)) return false;
  while (rest.hasSection(section)) {
    if (rest.value(section, key)) return true;
    rest.removeSection(section);
  }
  return false;
}

std::string amongBlanks(Dice& dice, const std::string& name) {
  return dice.blanks() + name + dice.blanks();
}

void compareRead(Pair& pair, Dice& dice) {
  Text section = dice.section();
  Text key = amongBlanks(dice, dice.key());
  std::string fallback = dice.fallback();
  if (dice.oneIn(6)) {
    key = kNone;
    fallback = "other";
  } else {
    section = amongBlanks(dice, *section);
  }
  if (dice.oneIn(8)) section = kNone;
  const std::size_t size = dice.size();
  if (size < kRoom && fillsExactly(pair, section, key, size)) return;
  EXPECT_EQ(pair.readOurs(section, key, fallback, size),
            pair.readTheirs(section, key, fallback, size))
      << "section " << section.value_or("(none)") << ", key " << key.value_or("(none)") << ", size "
      << size;
}

void compareWrite(Pair& pair, Dice& dice) {
  const std::string section = amongBlanks(dice, dice.section());
  const std::string key = amongBlanks(dice, dice.key());
  const std::string value = dice.value() + dice.blanks();
  EXPECT_EQ(pair.writeOurs(section, key, value), pair.writeTheirs(section, key, value));
}

// No blanks stand around the names here: a known departure.
void compareDelete(Pair& pair, Dice& dice) {
  const std::string section = dice.section();
  const Text key = dice.oneIn(4) ? kNone : Text(dice.key());
  if (key && standsInLaterSection(pair.ourFile(), section, *key)) return;
  EXPECT_EQ(pair.writeOurs(section, key, kNone), pair.writeTheirs(section, key, kNone));
}

void compareOne(Pair& pair, Dice& dice) {
  const std::size_t chance = dice.below(12);
  if (chance < 6) return compareRead(pair, dice);
  if (chance < 11) return compareWrite(pair, dice);
  compareDelete(pair, dice);
}

class ProfileDifferential : public testing::TestWithParam<unsigned> {};

TEST_P(ProfileDifferential, AnswersAndFilesAreThoseOfTheSystem) {
  constexpr int kFiles = 50;
  constexpr int kOperations = 20;
  Dice dice(GetParam());
  Pair pair;
  for (int file = 0; file < kFiles; ++file) {
    pair.fill(dice.file());
    for (int operation = 0; operation < kOperations; ++operation) {
      const std::string before = pair.ourFile();
      compareOne(pair, dice);
      ASSERT_EQ(meaning(pair.ourFile()), meaning(pair.theirFile())) << "before:\n" << before;
      if (HasFailure()) FAIL() << "file " << file << " was:\n" << before;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, ProfileDifferential, testing::Range(1U, 5U));

TEST(ProfileAgreement, AnEmptyKeyNameIsReadAndWritten) {
  Pair pair;
  pair.fill("[A]\r\n=1\r\n");
  EXPECT_EQ(pair.readOurs("A", "", "other"), "1");
  EXPECT_EQ(pair.readTheirs("A", "", "other"), "1");
  pair.writeOurs("A", "", "2");
  pair.writeTheirs("A", "", "2");
  EXPECT_EQ(pair.ourFile(), "[A]\r\n=2\r\n");
  EXPECT_EQ(pair.theirFile(), "[A]\r\n=2\r\n");
}

TEST(ProfileAgreement, AValueWithLineBreaksIsWrittenAsItIs) {
  Pair pair;
  pair.fill("[A]\r\nk=1\r\n");
  pair.writeOurs("A", "k", "one\r\n[B]\r\nj=two");
  pair.writeTheirs("A", "k", "one\r\n[B]\r\nj=two");
  EXPECT_EQ(pair.ourFile(), "[A]\r\nk=one\r\n[B]\r\nj=two\r\n");
  EXPECT_EQ(pair.theirFile(), "[A]\r\nk=one\r\n[B]\r\nj=two\r\n");
}

TEST(ProfileAgreement, AValueWithoutQuotationMarksThatFitsExactlyComesWhole) {
  Pair pair;
  pair.fill("[A]\r\nk=12345\r\n");
  EXPECT_EQ(pair.readOurs("A", "k", "", 6), "12345");
  EXPECT_EQ(pair.readTheirs("A", "k", "", 6), "12345");
}

class KnownDeparture : public testing::Test {
 protected:
  Pair pair_;
};

// Documented: a list that is not too long for the buffer comes whole. Wine counts
// one less when it fits exactly, though the same bytes stand in the buffer.
TEST_F(KnownDeparture, AListThatFitsExactlyIsCountedWhole) {
  pair_.fill("[A]\r\nk1=1\r\nk2=2\r\n");
  EXPECT_EQ(pair_.readOurs("A", kNone, "", 7), "k1\0k2\0"s);
  EXPECT_EQ(pair_.readTheirs("A", kNone, "", 7), "k1\0k2"s);
}

// Documented: a value is cut to what the buffer holds. Wine takes one byte more from
// a value in quotation marks that would just fit.
TEST_F(KnownDeparture, AValueInQuotationMarksThatFitsExactlyComesWhole) {
  pair_.fill("[A]\r\nk='quoted'\r\n");
  EXPECT_EQ(pair_.readOurs("A", "k", "", 7), "quoted");
  EXPECT_EQ(pair_.readTheirs("A", "k", "", 7), "quote");
}

// Documented: a list that is cut counts the size less two. With a size of 2 Wine
// gives the fallback instead.
TEST_F(KnownDeparture, AListWithRoomForItsNulsAloneIsEmpty) {
  pair_.fill("[A]\r\nk=1\r\n");
  EXPECT_EQ(pair_.readOurs("A", kNone, "other", 2), "");
  EXPECT_EQ(pair_.readTheirs("A", kNone, "other", 2), "o");
}

// Documented: blanks at the end of the fallback are stripped. Wine leaves the first
// of nothing but blanks, and all of them when keys are listed.
TEST_F(KnownDeparture, TheFallbackLosesItsBlanksAlwaysAndAll) {
  pair_.fill("[A]\r\n");
  EXPECT_EQ(pair_.readOurs("A", "k", "   "), "");
  EXPECT_EQ(pair_.readTheirs("A", "k", "   "), " ");
  EXPECT_EQ(pair_.readOurs("A", kNone, "other "), "other");
  EXPECT_EQ(pair_.readTheirs("A", kNone, "other "), "other ");
}

// Blanks around names do not count. Wine agrees where a key is given, and does not
// where the keys of a section are listed or anything is deleted.
TEST_F(KnownDeparture, NamesAreFoundWithBlanksAroundThemAlways) {
  pair_.fill("[A]\r\nk=1\r\n");
  EXPECT_EQ(pair_.readOurs(" A ", kNone, "other"), "k\0"s);
  EXPECT_EQ(pair_.readTheirs(" A ", kNone, "other"), "other");
  pair_.writeOurs("A", " k ", kNone);
  pair_.writeTheirs("A", " k ", kNone);
  EXPECT_EQ(pair_.ourFile(), "[A]\r\n");
  EXPECT_EQ(pair_.theirFile(), "[A]\r\nk=1\r\n");
  pair_.writeOurs(" A ", kNone, kNone);
  pair_.writeTheirs(" A ", kNone, kNone);
  EXPECT_EQ(pair_.ourFile(), "");
  EXPECT_EQ(pair_.theirFile(), "[A]\r\nk=1\r\n");
}

// Documented: quotation marks around the text that belongs to the key are taken off.
// Wine takes them off the fallback too, which belongs to no key.
TEST_F(KnownDeparture, TheFallbackKeepsItsQuotationMarks) {
  pair_.fill("[A]\r\n");
  EXPECT_EQ(pair_.readOurs("A", "k", "\"other\""), "\"other\"");
  EXPECT_EQ(pair_.readTheirs("A", "k", "\"other\""), "other");
}

// Comments hold no keys. Wine leaves them out of lists and yet finds a key whose
// name starts with the semicolon.
TEST_F(KnownDeparture, ACommentIsNoKey) {
  pair_.fill("[A]\r\n;k=1\r\n");
  EXPECT_EQ(pair_.readOurs("A", ";k", "other"), "other");
  EXPECT_EQ(pair_.readTheirs("A", ";k", "other"), "1");
}

// Documented: keys stand below the line of their section. Wine takes the lines in
// front of all sections for a section with an empty name, and never finds "[]".
TEST_F(KnownDeparture, TheEmptySectionIsTheOneInEmptyBrackets) {
  pair_.fill("k=1\r\n[]\r\nk=2\r\n");
  EXPECT_EQ(pair_.readOurs("", "k", "other"), "2");
  EXPECT_EQ(pair_.readTheirs("", "k", "other"), "1");
}

// Names in a list end with a NUL, so that an empty one would end the whole list.
// Wine lists it all the same, or gives the fallback when it comes first.
TEST_F(KnownDeparture, AnEmptyNameIsLeftOutOfLists) {
  pair_.fill("[A]\r\nk=1\r\n=2\r\nj=3\r\n[B]\r\n=4\r\nk=5\r\n");
  EXPECT_EQ(pair_.readOurs("A", kNone, "other"), "k\0j\0"s);
  EXPECT_EQ(pair_.readTheirs("A", kNone, "other"), "k\0\0j\0"s);
  EXPECT_EQ(pair_.readOurs("B", kNone, "other"), "k\0"s);
  EXPECT_EQ(pair_.readTheirs("B", kNone, "other"), "other");
}

// Documented: a key has the form key=string, and a line that has not stays. Wine
// takes the line for a key without a string when it is written to or deleted.
TEST_F(KnownDeparture, ALineWithoutAnEqualsSignIsNoKey) {
  pair_.fill("[A]\r\nk\r\n");
  pair_.writeOurs("A", "k", kNone);
  pair_.writeTheirs("A", "k", kNone);
  EXPECT_EQ(pair_.ourFile(), "[A]\r\nk\r\n");
  EXPECT_EQ(pair_.theirFile(), "[A]\r\n");
}

// The first section of a name is the one that counts. Wine reads from it and writes
// to it alone, but deletes from a later one.
TEST_F(KnownDeparture, AKeyIsDeletedFromTheFirstSectionOfTheNameOnly) {
  pair_.fill("[A]\r\nk=1\r\n[A]\r\nj=2\r\n");
  pair_.writeOurs("A", "j", kNone);
  pair_.writeTheirs("A", "j", kNone);
  EXPECT_EQ(pair_.ourFile(), "[A]\r\nk=1\r\n[A]\r\nj=2\r\n");
  EXPECT_EQ(pair_.theirFile(), "[A]\r\nk=1\r\n[A]\r\n");
}

// A write changes what it was asked to change. Wine writes the whole file in its own
// form: without blank lines and blanks, with CR LF.
TEST_F(KnownDeparture, AWriteLeavesTheRestOfTheFileAsItIs) {
  pair_.fill("  ; comment\n\n[ A ]\n k = 1\n\n[B]\n");
  pair_.writeOurs("A", "k", "2");
  pair_.writeTheirs("A", "k", "2");
  EXPECT_EQ(pair_.ourFile(), "  ; comment\n\n[ A ]\n k =2\n\n[B]\n");
  EXPECT_EQ(pair_.theirFile(), "; comment\r\n[A]\r\nk=2\r\n[B]\r\n");
}

// A name with a line break could never be read again. Wine writes it all the same.
TEST_F(KnownDeparture, ANameWithALineBreakIsRefused) {
  pair_.fill("");
  EXPECT_FALSE(pair_.writeOurs("A", "k\r\nj", "1"));
  EXPECT_TRUE(pair_.writeTheirs("A", "k\r\nj", "1"));
}

TEST(WindowsProfileStore, KeepsTextsOutsideAsciiInTheCodePage) {
  if (GetACP() != 1252) GTEST_SKIP() << "the code page of this machine is not 1252";
  Pair pair;
  pair.fill("");
  EXPECT_TRUE(pair.writeTheirs("S\xC3\xA4", "k\xC3\xBC", "\xE2\x82\xAC"));
  EXPECT_EQ(pair.theirFile(), "[S\xE4]\r\nk\xFC=\x80\r\n");
  EXPECT_EQ(pair.readTheirs("S\xC3\xA4", "k\xC3\xBC", ""), "\xE2\x82\xAC");
}

TEST(WindowsProfileStore, CutsLettersOfTheCodePageWhereOursAreCut) {
  if (GetACP() != 1252) GTEST_SKIP() << "the code page of this machine is not 1252";
  Pair pair;
  pair.fill("");
  const std::string value = "a\xC3\xA4\xE2\x82\xAC\xC3\xBC z";
  pair.writeOurs("A", "k\xC3\xBC", value);
  pair.writeTheirs("A", "k\xC3\xBC", value);
  for (std::size_t size = 3; size <= 9; ++size) {
    EXPECT_EQ(pair.readOurs("A", "k\xC3\xBC", "", size),
              pair.readTheirs("A", "k\xC3\xBC", "", size))
        << size;
  }
  EXPECT_EQ(pair.readOurs("A", kNone, "", 3), "k");
  EXPECT_EQ(pair.readTheirs("A", kNone, "", 3), "k");
}

TEST(WindowsProfileStore, GivesBackItsOwnFilesByteOrderMark) {
  Pair pair;
  pair.fill("\xEF\xBB\xBF[A]\r\nk=1\r\n");
  EXPECT_EQ(pair.readTheirs("A", "k", ""), pair.readOurs("A", "k", ""));
}

}  // namespace
}  // namespace veltrin
