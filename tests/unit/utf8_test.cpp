// SPDX-License-Identifier: GPL-3.0-or-later
// What stands at the start of a text.
#include "text/utf8.h"

#include <gtest/gtest.h>
#include <string>

namespace veltrin {
namespace {

void expectFront(const std::string& text, Utf8Front::Kind kind, std::size_t bytes) {
  const Utf8Front front = utf8Front(text);
  EXPECT_EQ(front.kind, kind) << testing::PrintToString(text);
  EXPECT_EQ(front.bytes, bytes) << testing::PrintToString(text);
}

TEST(Utf8Front, IsACharacterOfOneToFourBytes) {
  expectFront("a\xC3\xA9", Utf8Front::Kind::Character, 1);
  expectFront("\x7F", Utf8Front::Kind::Character, 1);
  expectFront("\xC3\xA9x", Utf8Front::Kind::Character, 2);
  expectFront("\xE2\x82\xACx", Utf8Front::Kind::Character, 3);
  expectFront("\xF0\x9F\x98\x80x", Utf8Front::Kind::Character, 4);
}

TEST(Utf8Front, IsCutWhereTheTextEndsInsideASequence) {
  expectFront("\xC3", Utf8Front::Kind::Cut, 1);
  expectFront("\xE2\x82", Utf8Front::Kind::Cut, 2);
  expectFront("\xF0\x9F\x98", Utf8Front::Kind::Cut, 3);
}

TEST(Utf8Front, IsStrayForOneByteThatBelongsToNoSequence) {
  for (const char* text :
       {"\x80x", "\xBFx", "\xC0\x80", "\xC1\xBF", "\xC3x", "\xE0\x9F\xBF", "\xE2\x82x",
        "\xED\xA0\x80", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF"}) {
    expectFront(text, Utf8Front::Kind::Stray, 1);
  }
}

}  // namespace
}  // namespace veltrin
