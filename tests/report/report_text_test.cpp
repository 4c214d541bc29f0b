// SPDX-License-Identifier: GPL-3.0-or-later
#include "report/report_text.h"

#include <gtest/gtest.h>

namespace veltrin {
namespace {

ListLine lineOf(const std::string& text, std::int16_t picture, ColourCode colour, bool bold) {
  ListLine line;
  line.Text = text;
  line.SmallIcon = picture;
  line.ForeColor = colour;
  line.Bold = bold;
  return line;
}

TEST(ReportText, AHeadingIsOrangeAndBold) {
  EXPECT_EQ(textOf(lineOf("MotherBoard", 20, 0x0040C0, true)), "20 H  MotherBoard");
}

TEST(ReportText, APlainHeadingHasASmallLetter) {
  EXPECT_EQ(textOf(lineOf("Scanner", 30, 0x0040C0, false)), "30 h  Scanner");
}

TEST(ReportText, GreenLinesAreBoldOrPlain) {
  EXPECT_EQ(textOf(lineOf("a", 0, 0x008000, true)), " 0 B  a");
  EXPECT_EQ(textOf(lineOf("a", 0, 0x008000, false)), " 0 P  a");
}

TEST(ReportText, AnyOtherColourIsItsNumber) {
  EXPECT_EQ(textOf(lineOf("a", 0, 255, true)), " 0 255 bold  a");
}

TEST(ReportText, TheEndOfATextIsSeen) {
  EXPECT_EQ(textOf(lineOf("    ", 0, 0x008000, false)), " 0 P      |");
  EXPECT_EQ(textOf(lineOf("a|", 0, 0x008000, false)), " 0 P  a||");
  EXPECT_EQ(textOf(lineOf("", 0, 0x008000, false)), " 0 P  ");
}

TEST(ReportDifferences, AreNoneBetweenEqualTexts) {
  EXPECT_EQ(differences("a\nb\n", "a\nb\n"), "");
}

TEST(ReportDifferences, NameTheLinesOfEitherText) {
  EXPECT_EQ(differences("a\nb\nc\nd\n", "a\nx\nc\nd\ne\n"), "-2: b\n+2: x\n+5: e\n");
}

TEST(ReportDifferences, KeepTheOrderOfLines) {
  EXPECT_EQ(differences("a\nb\n", "b\na\n"), "-1: a\n+2: a\n");
}

TEST(ReportDifferences, AreAllOfATextThatIsAlone) {
  EXPECT_EQ(differences("", "a\nb\n"), "+1: a\n+2: b\n");
  EXPECT_EQ(differences("a\nb\n", ""), "-1: a\n-2: b\n");
}

TEST(ReportDifferences, EndWithTheNumberOfThoseThatAreNotTold) {
  EXPECT_EQ(differences("", "a\nb\nc\n", 2), "+1: a\n+2: b\nand 1 more\n");
}

}  // namespace
}  // namespace veltrin
