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

TEST(TextPlace, PlacesBehindTheEndAreTheEnd) {
  EXPECT_EQ(byteOf("ab\r\n", {7, 3}), 4U);
  EXPECT_EQ(bytesAt("ab", {0, 1}, 9).length, 1U);
}

TEST(TextPlace, TypedLineBreaksBecomeTheProgramsAndBack) {
  EXPECT_EQ(offScreen(QString("a\nb\u2029")), "a\r\nb\r\n");
  EXPECT_EQ(onScreen("a\r\nb\rc\n"), QString("a\nb\nc\n"));
}

// The decoder that shows the text says how many units its bytes make.
TEST(TextPlace, CountsAnyBytesAsTheScreenDoes) {
  std::mt19937 random(7);
  const std::string_view alphabet = "ab\xC3\xA9\xE2\x82\xAC\xF0\x9F\x99\x82\xED\xA0\xFF\x80\xC0";
  for (int round = 0; round < 2000; ++round) {
    std::string text;
    for (int byte = 0; byte < 12; ++byte) text += alphabet[random() % alphabet.size()];
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    const QString shown = decoder.decode(QByteArrayView(text));
    const auto units = static_cast<int>(shown.size());

    const std::size_t end = byteOf(text, {0, units});
    QStringDecoder again(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    const QString before = again.decode(QByteArrayView(text.data(), qsizetype(end)));

    EXPECT_EQ(before, shown)
        << QByteArray(text.data(), qsizetype(text.size())).toHex().toStdString();
  }
}

}  // namespace
}  // namespace veltrin
