// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/fact_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

namespace veltrin {
namespace {

using namespace std::string_view_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> linesOf(std::string_view text) {
  std::vector<std::string> lines;
  LineReader reader(text);
  for (std::string_view line; reader.next(line);) {
    lines.emplace_back(line);
  }
  return lines;
}

TEST(LineReader, HandsOverLinesOfBothKindsWithoutTheirEnds) {
  EXPECT_THAT(linesOf("one\r\n\ntwo\n"), ElementsAre("one", "", "two"));
}

TEST(LineReader, TakesALastLineWithoutEnd) {
  EXPECT_THAT(linesOf("one\ntwo"), ElementsAre("one", "two"));
}

TEST(LineReader, FindsNothingInNothing) { EXPECT_THAT(linesOf(""), IsEmpty()); }

TEST(Trimmed, DropsBlanksLineEndsAndZeroBytes) {
  EXPECT_EQ(trimmed(" \t a b\r\n\0\0"sv), "a b");
  EXPECT_EQ(trimmed(" \n\0"sv), "");
}

TEST(WordsOf, SplitsAtBlanksAndTabs) {
  EXPECT_THAT(wordsOf(" a\t\tbc  d "), ElementsAre("a", "bc", "d"));
  EXPECT_THAT(wordsOf(" \t"), IsEmpty());
}

TEST(WholeNumber, TakesAWholeTextOfDigitsOnly) {
  EXPECT_EQ(wholeNumber("0042"), 42U);
  EXPECT_EQ(wholeNumber("18446744073709551615"), std::numeric_limits<std::uint64_t>::max());
  for (const char* text : {"", "-1", "+1", "12 ", " 12", "1x", "18446744073709551616"}) {
    EXPECT_EQ(wholeNumber(text), std::nullopt) << text;
  }
}

TEST(Printable, KeepsWellFormedText) { EXPECT_EQ(printable(" Zoë 日本 𝄞 "), "Zoë 日本 𝄞"); }

TEST(Printable, TurnsControlCharactersIntoBlanks) {
  EXPECT_EQ(printable("a\r\nb\tc\x7F"
                      "d\0e"sv),
            "a  b c d e");
}

TEST(Printable, MarksEachByteThatIsNoText) {
  // A lone continuation, an overlong form, a half of a pair, one beyond the last.
  EXPECT_EQ(printable("a\x80z"), "a?z");
  EXPECT_EQ(printable("\xC0\xAF"), "??");
  EXPECT_EQ(printable("\xE0\x80\x80"), "???");
  EXPECT_EQ(printable("\xED\xA0\x80"), "???");
  EXPECT_EQ(printable("\xF4\x90\x80\x80"), "????");
  EXPECT_EQ(printable("\xE2\x82"), "??");
}

TEST(Unescaped, UndoesOctalNumbersOfOneByte) {
  EXPECT_EQ(unescaped(R"(/a\040b\011c\134d)"), "/a b\tc\\d");
  EXPECT_EQ(unescaped(R"(\04)"), R"(\04)");
  EXPECT_EQ(unescaped(R"(\777 \089)"), R"(\777 \089)");
}

TEST(ShellValue, UndoesQuotesAndEscapes) {
  const std::string text =
      "A=plain\n"
      "B=\"with \\\"quotes\\\" and \\$\"\n"
      "C='single \\ stays'\r\n"
      "# D=comment\n"
      "  E=indented\n";
  EXPECT_EQ(shellValue(text, "A"), "plain");
  EXPECT_EQ(shellValue(text, "B"), "with \"quotes\" and $");
  EXPECT_EQ(shellValue(text, "C"), "single \\ stays");
  EXPECT_EQ(shellValue(text, "D"), "");
  EXPECT_EQ(shellValue(text, "E"), "indented");
}

TEST(ShellValue, IsTheLastOfSeveralAndOfTheWholeKeyOnly) {
  EXPECT_EQ(shellValue("NAME=a\nNAME=b\nNAMES=c\nXNAME=d\n", "NAME"), "b");
}

TEST(SectionValue, LooksIntoItsSectionOnly) {
  const std::string text =
      "key = outside\n"
      "[One]\n"
      "key = first\n"
      "; key = comment\n"
      "[ two ]\n"
      "KEY=second\n";
  EXPECT_EQ(sectionValue(text, "one", "key"), "first");
  EXPECT_EQ(sectionValue(text, "Two", "Key"), "second");
  EXPECT_EQ(sectionValue(text, "three", "key"), "");
}

TEST(LittleEndian, ReadsTheLowestByteFirst) {
  EXPECT_EQ(littleEndian("\x01\x02\x80", 0, 2), 0x0201U);
  EXPECT_EQ(littleEndian("\x01\x02\x80", 1, 2), 0x8002U);
}

TEST(LittleEndian, OfMissingBytesIsNothing) {
  EXPECT_EQ(littleEndian("\x01\x02", 1, 2), std::nullopt);
  EXPECT_EQ(littleEndian("\x01\x02", 3, 1), std::nullopt);
  EXPECT_EQ(littleEndian("\x01", std::numeric_limits<std::size_t>::max(), 8), std::nullopt);
}

TEST(WithCommas, SeparatesThousands) {
  EXPECT_EQ(withCommas(0), "0");
  EXPECT_EQ(withCommas(999), "999");
  EXPECT_EQ(withCommas(3957), "3,957");
  EXPECT_EQ(withCommas(1234567), "1,234,567");
}

}  // namespace
}  // namespace veltrin
