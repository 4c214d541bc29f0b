// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portable/profile_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace veltrin {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::IsEmpty;

std::string afterSet(const std::string& text, const std::string& section, const std::string& key,
                     const std::string& value) {
  ProfileText profile(text);
  profile.set(section, key, value);
  return profile.text();
}

std::string afterRemovingKey(const std::string& text, const std::string& section,
                             const std::string& key) {
  ProfileText profile(text);
  profile.removeKey(section, key);
  return profile.text();
}

std::string afterRemovingSection(const std::string& text, const std::string& section) {
  ProfileText profile(text);
  profile.removeSection(section);
  return profile.text();
}

TEST(ProfileTextValue, IsFoundWithoutRegardToCase) {
  EXPECT_EQ(ProfileText("[Rated Speed]\r\nDown=100\r\n").value("rated speed", "DOWN"), "100");
}

TEST(ProfileTextValue, HasNoBlanksAroundIt) {
  EXPECT_EQ(ProfileText("[A]\n k \t= \t1 2\v\f\x1A\n").value("A", "k"), "1 2");
}

TEST(ProfileTextValue, IsFoundWithBlanksAroundTheNames) {
  EXPECT_EQ(ProfileText("  [ A ]\n  k = 1\n").value(" A\t", " k "), "1");
}

TEST(ProfileTextValue, LosesOnePairOfEqualQuotationMarks) {
  EXPECT_EQ(ProfileText("[A]\nk=\" v \"\n").value("A", "k"), " v ");
  EXPECT_EQ(ProfileText("[A]\nk=' v '\n").value("A", "k"), " v ");
  EXPECT_EQ(ProfileText("[A]\nk=\"\"v\"\"\n").value("A", "k"), "\"v\"");
  EXPECT_EQ(ProfileText("[A]\nk=''\n").value("A", "k"), "");
}

TEST(ProfileTextValue, KeepsQuotationMarksThatAreNoPairAroundIt) {
  EXPECT_EQ(ProfileText("[A]\nk=\"v'\n").value("A", "k"), "\"v'");
  EXPECT_EQ(ProfileText("[A]\nk=\"\n").value("A", "k"), "\"");
  EXPECT_EQ(ProfileText("[A]\nk=\"v\" x\n").value("A", "k"), "\"v\" x");
}

TEST(ProfileTextValue, GoesToTheEndOfTheLine) {
  EXPECT_EQ(ProfileText("[A]\nk==1=2 ; no comment\n").value("A", "k"), "=1=2 ; no comment");
}

TEST(ProfileTextValue, EndsAtANul) {
  EXPECT_EQ(ProfileText("[A]\nk=1\0x\nj=2"s).value("A", "k"), "1");
}

TEST(ProfileTextValue, IsEmptyForAKeyWithNothingBehindIt) {
  EXPECT_EQ(ProfileText("[A]\nk=\n").value("A", "k"), "");
}

TEST(ProfileTextValue, IsMissingForALineWithoutAnEqualsSign) {
  EXPECT_EQ(ProfileText("[A]\nk\n").value("A", "k"), std::nullopt);
}

TEST(ProfileTextValue, IsMissingForAComment) {
  EXPECT_EQ(ProfileText("[A]\n ;k=1\n").value("A", ";k"), std::nullopt);
}

TEST(ProfileTextValue, IsMissingInAnotherSection) {
  EXPECT_EQ(ProfileText("[A]\nk=1\n[B]\n").value("B", "k"), std::nullopt);
}

TEST(ProfileTextValue, IsThatOfTheFirstOfSeveralKeys) {
  EXPECT_EQ(ProfileText("[A]\nk=1\nK=2\n").value("A", "k"), "1");
}

TEST(ProfileTextValue, IsNotLookedForInASecondSectionOfTheName) {
  EXPECT_EQ(ProfileText("[A]\nk=1\n[A]\nj=2\n").value("A", "j"), std::nullopt);
}

TEST(ProfileTextValue, IsFoundForAnEmptyKeyName) {
  EXPECT_EQ(ProfileText("[A]\n=5\n").value("A", ""), "5");
}

TEST(ProfileTextValue, OfLinesInFrontOfAllSectionsBelongsToNone) {
  EXPECT_EQ(ProfileText("k=5\n[A]\n").value("", "k"), std::nullopt);
}

TEST(ProfileTextValue, OfTheEmptySectionStandsUnderEmptyBrackets) {
  EXPECT_EQ(ProfileText("k=5\n[]\nk=6\n").value("", "k"), "6");
}

TEST(ProfileTextValue, IsFoundInLinesOfEveryKindOfBreak) {
  EXPECT_EQ(ProfileText("[A]\r\nk=1\r\nj=2").value("A", "j"), "2");
  EXPECT_EQ(ProfileText("[A]\nk=1\nj=2").value("A", "j"), "2");
  EXPECT_EQ(ProfileText("[A]\rk=1\rj=2").value("A", "j"), "2");
}

TEST(ProfileTextValue, IsFoundBehindAByteOrderMark) {
  EXPECT_EQ(ProfileText("\xEF\xBB\xBF[A]\r\nk=1\r\n").value("A", "k"), "1");
}

TEST(ProfileTextSections, AreListedInOrderWithRepeatsAndWithoutTheEmptyName) {
  EXPECT_THAT(ProfileText("x=1\n[B]\n[ A ] rest\n[]\n[b]\n").sections(),
              ElementsAre("B", "A", "b"));
}

TEST(ProfileTextSections, AreNamedByAllUpToTheLastBracket) {
  EXPECT_THAT(ProfileText("[A] ; ]\n").sections(), ElementsAre("A] ;"));
}

TEST(ProfileTextSections, NeedAClosingBracket) {
  EXPECT_THAT(ProfileText("[A\nk=1\n").sections(), IsEmpty());
}

TEST(ProfileTextSections, InCommentsDoNotCount) {
  EXPECT_THAT(ProfileText(";[A]\n").sections(), IsEmpty());
}

TEST(ProfileTextKeys, AreListedInOrderWithRepeatsAndWithoutCommentsAndOtherLines) {
  EXPECT_THAT(ProfileText("[A]\nb=1\n;c=2\nother\n\na = 3\nB=4\n[C]\nd=5\n").keys("a"),
              ElementsAre("b", "a", "B"));
}

TEST(ProfileTextKeys, AreListedWithoutTheEmptyName) {
  EXPECT_THAT(ProfileText("[A]\nb=1\n=2\nc=3\n").keys("A"), ElementsAre("b", "c"));
}

TEST(ProfileTextKeys, MayStartWithABracketThatIsNotClosed) {
  EXPECT_THAT(ProfileText("[A]\n[x=1\n").keys("A"), ElementsAre("[x"));
}

TEST(ProfileTextSet, ReplacesAValueAndKeepsTheLineUpToIt) {
  EXPECT_EQ(afterSet("[A]\r\n  My Key =1\r\nj=2\r\n", "a", "my key", "new"),
            "[A]\r\n  My Key =new\r\nj=2\r\n");
}

TEST(ProfileTextSet, LeavesAValueThatStandsThereAlready) {
  EXPECT_EQ(afterSet("[A]\nk = 1 \n", "A", "k", "1"), "[A]\nk = 1 \n");
}

TEST(ProfileTextSet, TakesTheFirstOfSeveralKeys) {
  EXPECT_EQ(afterSet("[A]\nk=1\nk=2\n", "A", "k", "3"), "[A]\nk=3\nk=2\n");
}

TEST(ProfileTextSet, KeepsTheKeyOfAnEmptyValue) {
  EXPECT_EQ(afterSet("[A]\nk=1\n", "A", "k", ""), "[A]\nk=\n");
}

TEST(ProfileTextSet, AddsANewKeyBehindTheLastOne) {
  EXPECT_EQ(afterSet("[A]\r\nk=1\r\n\r\n; about B\r\n[B]\r\nj=2\r\n", "A", "n", "new"),
            "[A]\r\nk=1\r\nn=new\r\n\r\n; about B\r\n[B]\r\nj=2\r\n");
}

TEST(ProfileTextSet, AddsTheFirstKeyRightBelowItsSection) {
  EXPECT_EQ(afterSet("[A]\r\n\r\n[B]\r\nj=2\r\n", "A", "n", "new"),
            "[A]\r\nn=new\r\n\r\n[B]\r\nj=2\r\n");
}

TEST(ProfileTextSet, AddsAKeyToTheFirstOfSeveralSections) {
  EXPECT_EQ(afterSet("[A]\nk=1\n[A]\nj=2\n", "A", "j", "3"), "[A]\nk=1\nj=3\n[A]\nj=2\n");
}

TEST(ProfileTextSet, AddsANewSectionAtTheEnd) {
  EXPECT_EQ(afterSet("[A]\nk=1\n\n", "B", "n", "new"), "[A]\nk=1\n\n[B]\nn=new\n");
}

TEST(ProfileTextSet, StartsAnEmptyFileWithTheLineBreaksOfWindows) {
  EXPECT_EQ(afterSet("", "A", "k", "1"), "[A]\r\nk=1\r\n");
}

TEST(ProfileTextSet, EndsALastLineThatHasNoBreakBeforeItAddsOne) {
  EXPECT_EQ(afterSet("[A]\nk=1", "A", "n", "2"), "[A]\nk=1\nn=2\n");
  EXPECT_EQ(afterSet("[A]\nk=1", "B", "n", "2"), "[A]\nk=1\n[B]\nn=2\n");
}

TEST(ProfileTextSet, WritesNamesWithoutBlanksAndTheValueAsItIs) {
  EXPECT_EQ(afterSet("", " B ", " n ", " \"v\" "), "[B]\r\nn= \"v\" \r\n");
}

TEST(ProfileTextSet, LeavesOtherLinesOfTheSameWordsAlone) {
  EXPECT_EQ(afterSet("[A]\nk\n;k=1\n", "A", "k", "2"), "[A]\nk=2\nk\n;k=1\n");
}

TEST(ProfileTextSet, KeepsAByteOrderMarkInFront) {
  EXPECT_EQ(afterSet("\xEF\xBB\xBF", "A", "k", "1"), "\xEF\xBB\xBF[A]\r\nk=1\r\n");
}

TEST(ProfileTextRemoveKey, TakesTheLineOut) {
  EXPECT_EQ(afterRemovingKey("[A]\r\nk=1\r\n;c\r\nj=2\r\n", "a", "K"), "[A]\r\n;c\r\nj=2\r\n");
}

TEST(ProfileTextRemoveKey, TakesOnlyTheFirstOfSeveral) {
  EXPECT_EQ(afterRemovingKey("[A]\nk=1\nk=2\n", "A", "k"), "[A]\nk=2\n");
}

TEST(ProfileTextRemoveKey, LooksIntoTheFirstSectionOfTheNameOnly) {
  EXPECT_EQ(afterRemovingKey("[A]\nk=1\n[A]\nj=2\n", "A", "j"), "[A]\nk=1\n[A]\nj=2\n");
}

TEST(ProfileTextRemoveKey, LeavesALineWithoutAValueAlone) {
  EXPECT_EQ(afterRemovingKey("[A]\nk\n", "A", "k"), "[A]\nk\n");
}

TEST(ProfileTextRemoveSection, TakesOutEverythingUpToTheNextSection) {
  EXPECT_EQ(afterRemovingSection(";top\n[A]\nk=1\n;c\n\n[B]\nj=2\n", "a"), ";top\n[B]\nj=2\n");
}

TEST(ProfileTextRemoveSection, TakesOnlyTheFirstOfSeveral) {
  EXPECT_EQ(afterRemovingSection("[A]\nk=1\n[B]\n[A]\nj=2\n", "A"), "[B]\n[A]\nj=2\n");
}

TEST(ProfileTextRemoveSection, ChangesNothingForAMissingOne) {
  EXPECT_EQ(afterRemovingSection("[A]\nk=1\n", "B"), "[A]\nk=1\n");
}

TEST(ProfileTextAddSection, AddsAnEmptySectionOnce) {
  ProfileText profile("[A]\nk=1\n");
  profile.addSection("B");
  profile.addSection("b");
  EXPECT_EQ(profile.text(), "[A]\nk=1\n[B]\n");
}

}  // namespace
}  // namespace veltrin
