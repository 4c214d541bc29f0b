// SPDX-License-Identifier: GPL-3.0-or-later
// Where the letters on the screen lie in the program's text.
#include "view/text_place.h"

#include <random>

#include <QStringDecoder>

#include "gtest/gtest.h"

namespace veltrin {
namespace {

std::size_t byteOf(std::string_view text, TextPlace place) { return bytesAt(text, place, 0).begin; }

TEST(TextPlace, LinesEndAtEachKindOfLineBreak) {
  const std::string_view text = "a\r\nb\rc\nd";

  EXPECT_EQ(byteOf(text, {0, 1}), 1U);
  EXPECT_EQ(byteOf(text, {1, 0}), 3U);
  EXPECT_EQ(byteOf(text, {2, 0}), 5U);
  EXPECT_EQ(byteOf(text, {3, 1}), 8U);
}

TEST(TextPlace, ALineBreakIsOneUnit) {
  EXPECT_EQ(bytesAt("a\r\nb", {0, 1}, 1).length, 2U);
  EXPECT_EQ(bytesAt("a\rb", {0, 1}, 1).length, 1U);
  EXPECT_EQ(bytesAt("a\nb", {0, 1}, 1).length, 1U);
}

TEST(TextPlace, ALetterOfFourBytesIsTwoUnits) {
  EXPECT_EQ(bytesAt("\xF0\x9F\x99\x82x", {0, 0}, 2).length, 4U);
}

TEST(TextPlace, WhatTheEndCutsIsNotReached) {
  EXPECT_EQ(byteOf("ab\xE2\x82", {0, 3}), 2U);
  EXPECT_EQ(byteOf("ab\r", {0, 3}), 2U);
}

TEST(TextPlace, TheWholePartEndsBeforeWhatTheEndCuts) {
  EXPECT_EQ(wholePart("ab\xF0\x9F\x99"), 2U);
  EXPECT_EQ(wholePart("ab\r"), 2U);
  EXPECT_EQ(wholePart("ab\xC3\xA9"), 4U);
  EXPECT_EQ(wholePart("ab\xA9"), 3U);
}

TEST(TextPlace, PlacesBehindTheEndAreTheEnd) {
  EXPECT_EQ(byteOf("ab\r\n", {7, 3}), 4U);
  EXPECT_EQ(bytesAt("ab", {0, 1}, 9).length, 1U);
}

TEST(TextPlace, TypedLineBreaksBecomeTheProgramsAndBack) {
  EXPECT_EQ(offScreen(QString("a\nb\u2029")), "a\r\nb\r\n");
  EXPECT_EQ(onScreen("a\r\nb\rc\n"), QString("a\nb\nc\n"));
}

TEST(TextPlace, ALineFeedBehindWhatGoesDoesNotJoinTheReturnBeforeIt) {
  ByteRange taken{2, 1};

  EXPECT_EQ(keepApart("a\rX\nb", {1, 0}, taken), "\r\n");
  EXPECT_EQ(taken.begin, 1U);
  EXPECT_EQ(taken.length, 2U);
}

TEST(TextPlace, BytesAroundWhatGoesDoNotBecomeALetter) {
  ByteRange taken{1, 1};

  EXPECT_EQ(keepApart("\xC3X\xA9", {0, 1}, taken), "\xEF\xBF\xBD");
  EXPECT_EQ(taken.begin, 0U);
  EXPECT_EQ(taken.length, 2U);
}

TEST(TextPlace, OtherwiseNothingTakesThePlaceOfWhatGoes) {
  ByteRange taken{2, 1};

  EXPECT_EQ(keepApart("abXd", {0, 2}, taken), "");
  EXPECT_EQ(taken.begin, 2U);
  EXPECT_EQ(taken.length, 1U);
}

// What the decoder that shows the text makes of its bytes, without those that wait.
QString decoded(std::string_view text) {
  QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
  return decoder.decode(QByteArrayView(text.data(), static_cast<qsizetype>(text.size())));
}

TEST(TextPlace, CountsAnyBytesAsTheScreenDoes) {
  std::mt19937 random(7);
  const std::string_view alphabet = "ab\xC3\xA9\xE2\x82\xAC\xF0\x9F\x99\x82\xED\xA0\xFF\x80\xC0";
  for (int round = 0; round < 2000; ++round) {
    std::string text;
    for (int byte = 0; byte < 12; ++byte) text += alphabet[random() % alphabet.size()];
    const QString shown = decoded(text);
    for (int unit = 0; unit <= shown.size(); ++unit) {
      if (unit < shown.size() && shown[unit].isLowSurrogate()) continue;

      const std::string_view rest = std::string_view(text).substr(byteOf(text, {0, unit}));

      EXPECT_EQ(decoded(rest), shown.mid(unit)) << testing::PrintToString(text) << unit;
    }
  }
}

}  // namespace
}  // namespace veltrin
