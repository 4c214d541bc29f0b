// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <string>
#include <windows.h>

#include "platform/windows/code_page.h"

namespace veltrin {
namespace {

using namespace std::string_literals;

// Most machines of the western world have this code page, and so have these tests.
constexpr UINT kWestern = 1252;

TEST(CodePage, GivesUtf16AndBack) {
  EXPECT_EQ(toWide("a\xC3\xA4\xF0\x9F\x98\x80"), L"a\u00E4\xD83D\xDE00");
  EXPECT_EQ(fromWide(L"a\u00E4\xD83D\xDE00"), "a\xC3\xA4\xF0\x9F\x98\x80");
}

TEST(CodePage, GivesAnsiAndBack) {
  if (GetACP() != kWestern) GTEST_SKIP() << "the code page of this machine is not 1252";
  EXPECT_EQ(toAnsi("\xC3\xA4\xE2\x82\xAC"), "\xE4\x80");
  EXPECT_EQ(fromAnsi("\xE4\x80"), "\xC3\xA4\xE2\x82\xAC");
}

TEST(CodePage, GivesAQuestionMarkForWhatTheCodePageLacks) {
  if (GetACP() != kWestern) GTEST_SKIP() << "the code page of this machine is not 1252";
  EXPECT_EQ(toAnsi("\xE4\xB8\xAD"), "?");
}

TEST(CodePage, KeepsNuls) {
  EXPECT_EQ(toAnsi("a\0b\0"s), "a\0b\0"s);
  EXPECT_EQ(fromAnsi("a\0b\0"s), "a\0b\0"s);
}

constexpr UINT kJapanese = 932;  // characters of one and of two bytes

TEST(CodePage, DropsTheCutCharacterAtTheEndOfUtf8) {
  EXPECT_EQ(withoutCutCharacter("ab\xC3", CP_UTF8), "ab");
  EXPECT_EQ(withoutCutCharacter("ab\xE2\x82", CP_UTF8), "ab");
  EXPECT_EQ(withoutCutCharacter("ab\xF0\x9F\x98", CP_UTF8), "ab");
  EXPECT_EQ(withoutCutCharacter("\xC3\xA4\xC3", CP_UTF8), "\xC3\xA4");
}

TEST(CodePage, DropsTheCutCharacterAtTheEndOfAPageOfTwoBytes) {
  EXPECT_EQ(withoutCutCharacter("\x93\xFA\x96", kJapanese), "\x93\xFA");
  EXPECT_EQ(withoutCutCharacter("\x93\xFA\x96\x7B", kJapanese), "\x93\xFA\x96\x7B");
}

TEST(CodePage, KeepsWholeCharactersAtTheEnd) {
  EXPECT_EQ(withoutCutCharacter("ab\xC3\xA4", CP_UTF8), "ab\xC3\xA4");
  EXPECT_EQ(withoutCutCharacter("ab\xE4", kWestern), "ab\xE4");
  EXPECT_EQ(withoutCutCharacter("ab", CP_UTF8), "ab");
  EXPECT_EQ(withoutCutCharacter("", CP_UTF8), "");
}

TEST(CodePage, DropsNothingOfOtherBytesThatAreNoCharacters) {
  EXPECT_EQ(withoutCutCharacter("a\xFFz", CP_UTF8), "a\xFFz");
}

TEST(CodePage, KeepsTheEmptyText) {
  EXPECT_EQ(toAnsi(""), "");
  EXPECT_EQ(fromAnsi(""), "");
}

}  // namespace
}  // namespace veltrin
