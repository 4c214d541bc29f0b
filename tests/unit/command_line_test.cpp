// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portable/command_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::string_literals;

TEST(SplitCommandLine, FindsNothingInAnEmptyText) { EXPECT_THAT(splitCommandLine(""), IsEmpty()); }

TEST(SplitCommandLine, SeparatesByRunsOfBlanksAndTabs) {
  EXPECT_THAT(splitCommandLine("ping  -n\t1 \t 127.0.0.1"),
              ElementsAre("ping", "-n", "1", "127.0.0.1"));
}

TEST(SplitCommandLine, DropsSeparatorsAtTheEnd) {
  EXPECT_THAT(splitCommandLine("ping near \t "), ElementsAre("ping", "near"));
}

TEST(SplitCommandLine, GivesAnEmptyNameToATextThatStartsWithASeparator) {
  EXPECT_THAT(splitCommandLine(" ping near"), ElementsAre("", "ping", "near"));
  EXPECT_THAT(splitCommandLine("\t"), ElementsAre(""));
}

TEST(SplitCommandLine, KeepsLineBreaksWithinAnArgument) {
  EXPECT_THAT(splitCommandLine("ping a\r\nb"), ElementsAre("ping", "a\r\nb"));
}

TEST(SplitCommandLine, KeepsBytesAbove127AndNul) {
  EXPECT_THAT(splitCommandLine("ping h\xC3\xB6st a\0b"s),
              ElementsAre("ping", "h\xC3\xB6st", "a\0b"s));
}

TEST(ProgramName, KeepsSeparatorsWithinQuotes) {
  EXPECT_THAT(splitCommandLine(R"("C:\Program Files\ping.exe" near)"),
              ElementsAre(R"(C:\Program Files\ping.exe)", "near"));
}

TEST(ProgramName, TakesQuotesAwayAnywhere) {
  EXPECT_THAT(splitCommandLine(R"(C:\"Program Files"\ping near)"),
              ElementsAre(R"(C:\Program Files\ping)", "near"));
}

TEST(ProgramName, TreatsABackslashBeforeAQuoteAsPlain) {
  EXPECT_THAT(splitCommandLine(R"("C:\tools\" near)"), ElementsAre(R"(C:\tools\)", "near"));
}

TEST(ProgramName, DoesNotReadTwoQuotesAsOne) {
  EXPECT_THAT(splitCommandLine(R"("a""b" c)"), ElementsAre("ab", "c"));
}

TEST(ProgramName, EndsWithTheTextWhenAQuoteIsMissing) {
  EXPECT_THAT(splitCommandLine(R"("ping near)"), ElementsAre("ping near"));
}

TEST(ProgramName, MayBeAnEmptyPairOfQuotes) {
  EXPECT_THAT(splitCommandLine(R"("" near)"), ElementsAre("", "near"));
}

TEST(Argument, KeepsSeparatorsWithinQuotes) {
  EXPECT_THAT(splitCommandLine(R"(x "a b c" d e)"), ElementsAre("x", "a b c", "d", "e"));
}

TEST(Argument, MayChangeBetweenQuotedAndPlain) {
  EXPECT_THAT(splitCommandLine(R"(x a\\b d"e f"g h)"), ElementsAre("x", R"(a\\b)", "de fg", "h"));
}

TEST(Argument, KeepsBackslashesThatStandBeforeNoQuote) {
  EXPECT_THAT(splitCommandLine(R"(x a\b \\host\share c\)"),
              ElementsAre("x", R"(a\b)", R"(\\host\share)", R"(c\)"));
}

TEST(Argument, TakesAQuoteBehindOneBackslashAsPlain) {
  EXPECT_THAT(splitCommandLine(R"(x "ab\"c" "\\" d)"), ElementsAre("x", R"(ab"c)", R"(\)", "d"));
}

TEST(Argument, HalvesAnEvenRunOfBackslashesBeforeAQuote) {
  EXPECT_THAT(splitCommandLine(R"(x a\\\\"b c" d e)"), ElementsAre("x", R"(a\\b c)", "d", "e"));
}

TEST(Argument, HalvesAnOddRunOfBackslashesAndKeepsTheQuote) {
  EXPECT_THAT(splitCommandLine(R"(x a\\\"b c d)"), ElementsAre("x", R"(a\"b)", "c", "d"));
}

TEST(Argument, ReadsTwoQuotesWithinQuotesAsOneAndStaysQuoted) {
  EXPECT_THAT(splitCommandLine(R"(x a"b"" c d)"), ElementsAre("x", R"(ab" c d)"));
  EXPECT_THAT(splitCommandLine(R"(x "a""b" c)"), ElementsAre("x", R"(a"b)", "c"));
}

TEST(Argument, ReadsTwoQuotesBehindAnEvenRunOfBackslashesAsOne) {
  EXPECT_THAT(splitCommandLine(R"(x "a\\""b c" d)"), ElementsAre("x", R"(a\"b c)", "d"));
}

TEST(Argument, IsEmptyForAPairOfQuotes) {
  EXPECT_THAT(splitCommandLine(R"(x "" "" y)"), ElementsAre("x", "", "", "y"));
}

TEST(Argument, ReadsThreeQuotesAsAnOpenStretchWithOneQuote) {
  EXPECT_THAT(splitCommandLine(R"(x """a b""" c)"), ElementsAre("x", R"("a b")", "c"));
}

TEST(Argument, EndsWithTheTextWhenAQuoteIsMissing) {
  EXPECT_THAT(splitCommandLine(R"(x "a b)"), ElementsAre("x", "a b"));
  EXPECT_THAT(splitCommandLine(R"(x ")"), ElementsAre("x", ""));
}

TEST(Argument, KnowsNoOtherQuotesOrShellCharacters) {
  EXPECT_THAT(splitCommandLine("x 'a b' $HOME `c` *;|&>f %d%"),
              ElementsAre("x", "'a", "b'", "$HOME", "`c`", "*;|&>f", "%d%"));
}

}  // namespace
}  // namespace veltrin
