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

TEST(CodePage, KeepsTheEmptyText) {
  EXPECT_EQ(toAnsi(""), "");
  EXPECT_EQ(fromAnsi(""), "");
}

}  // namespace
}  // namespace veltrin
