// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>
#include <gtest/gtest.h>
#include <string>

#include "text/date_time.h"
#include "text/loose.h"
#include "text/numbers.h"
#include "text/statement.h"
#include "text/strings.h"

namespace veltrin {
namespace {

TEST(Val, StopsAtTheFirstCharacterThatCannotBelongToANumber) {
  EXPECT_EQ(Val("30,000"), 30);
  EXPECT_EQ(Val("24ms"), 24);
  EXPECT_EQ(Val("1.5.2"), 1.5);
}

TEST(Val, GivesZeroForATextWithoutANumber) {
  EXPECT_EQ(Val(""), 0);
  EXPECT_EQ(Val("ms"), 0);
  EXPECT_EQ(Val("-"), 0);
  EXPECT_EQ(Val("."), 0);
}

TEST(Val, PassesOverBlanksTabsAndLineFeeds) { EXPECT_EQ(Val(" 1\t6\n15 198th street"), 1615198); }

TEST(Val, KnowsSignsExponentsAndPrefixes) {
  EXPECT_EQ(Val("-7"), -7);
  EXPECT_EQ(Val("+.5"), 0.5);
  EXPECT_EQ(Val("2e3x"), 2000);
  EXPECT_EQ(Val("2d-1"), 0.2);
  EXPECT_EQ(Val("2e"), 2);
  EXPECT_EQ(Val("&HFF"), 255);
  EXPECT_EQ(Val("&o17"), 15);
  EXPECT_EQ(Val("&"), 0);
  EXPECT_EQ(Val("&H"), 0);
  EXPECT_EQ(Val("&Hg1"), 0);
  EXPECT_EQ(Val("&Z12"), 0);
  EXPECT_EQ(Val("5x3"), 5);
}

TEST(ToNumber, TakesAWholeNumberWithBlanksAndSeparators) {
  EXPECT_EQ(toNumber(" 1,500 "), 1500);
  EXPECT_EQ(toNumber("-2.5"), -2.5);
}

TEST(Val, GivesZeroForANumberTooSmallAndInfinityForOneTooLarge) {
  EXPECT_EQ(Val("1e-999"), 0);
  EXPECT_EQ(Val("-1e-999"), 0);
  EXPECT_EQ(Val("1e999"), HUGE_VAL);
  EXPECT_EQ(Val("-1e999"), -HUGE_VAL);
  EXPECT_EQ(Val(std::string(400, '9') + "e-"), HUGE_VAL);
}

TEST(ToNumber, FailsForASignAPointAndAnExponentWithoutDigits) {
  for (const char* text : {"-", "+", ".", "2e", "2e+", "e5", "-.e1"}) {
    EXPECT_THROW(toNumber(text), StatementFailed) << text;
  }
}

// What a statement fails with.
std::string failureOf(const char* text) {
  try {
    toNumber(text);
  } catch (const StatementFailed& failure) {
    return std::to_string(failure.number()) + " " + failure.what();
  }
  return "none";
}

TEST(ToNumber, TellsATextThatIsNoNumberFromANumberTooLarge) {
  EXPECT_EQ(failureOf("24ms"), "13 The text is no number");
  EXPECT_EQ(failureOf("1e999"), "6 The number is too large");
}

TEST(ToNumber, FailsForAnEmptyTextAndForAnythingElse) {
  EXPECT_THROW(toNumber(""), StatementFailed);
  EXPECT_THROW(toNumber("24ms"), StatementFailed);
  EXPECT_THROW(toNumber("1e999"), StatementFailed);
}

TEST(Long, RoundsHalvesToTheEvenNumber) {
  EXPECT_EQ(toLong(2.4), 2);
  EXPECT_EQ(toLong(2.5), 2);
  EXPECT_EQ(toLong(3.5), 4);
  EXPECT_EQ(toLong(-2.5), -2);
  EXPECT_EQ(toLong(0), 0);
}

TEST(Long, HoldsThirtyTwoBits) {
  EXPECT_EQ(toLong(2147483647.4), 2147483647);
  EXPECT_EQ(toLong(-2147483648.4), -2147483648);
  EXPECT_THROW(toLong(2147483648.0), StatementFailed);
  EXPECT_THROW(toLong(-2147483649.0), StatementFailed);
  EXPECT_THROW(toLong(std::nan("")), StatementFailed);
}

TEST(ToText, WritesWholeNumbersAsDigitsAndOthersShort) {
  EXPECT_EQ(toText(99999), "99999");
  EXPECT_EQ(toText(-0.0), "0");
  EXPECT_EQ(toText(0.25), "0.25");
}

TEST(FormatNumber, RoundsHalfAwayFromZeroAndLeavesZeroEmpty) {
  EXPECT_EQ(Format(10017.9, "###"), "10018");
  EXPECT_EQ(Format(2.5, "#"), "3");
  EXPECT_EQ(Format(-2.5, "#"), "-3");
  EXPECT_EQ(Format(0.4, "###"), "");
  EXPECT_EQ(Format(0, "#"), "");
  EXPECT_EQ(Format(0, "0"), "0");
}

TEST(FormatNumber, SeparatesThousandsWhereThePatternAsksForIt) {
  EXPECT_EQ(Format(1500, "#,###"), "1,500");
  EXPECT_EQ(Format(999, "#,###"), "999");
  EXPECT_EQ(Format(-1234567, "#,###"), "-1,234,567");
}

TEST(FormatNumber, PrintsAnyPartOfANumberUpToThePlacesOfThePattern) {
  EXPECT_EQ(Format(12.3456, "##.###"), "12.346");
  EXPECT_EQ(Format(12.5, "##.###"), "12.5");
  EXPECT_EQ(Format(1234.5, "#.###"), "1234.5");
  EXPECT_EQ(Format(0.25, "##.###"), ".25");
}

TEST(FormatNumber, APartThatIsNotThereLeavesThePointAlone) {
  EXPECT_EQ(Format(12, "##.###"), "12.");
  EXPECT_EQ(Format(0.0004, "##.###"), ".");
  EXPECT_EQ(Format(0, "##.###"), ".");
}

TEST(FormatNumber, AZeroInThePatternIsADigitInAnyCase) {
  EXPECT_EQ(Format(12, "##.#0#"), "12.00");
  EXPECT_EQ(Format(12.3, "##.#0#"), "12.30");
  EXPECT_EQ(Format(12.345, "##.#0#"), "12.345");
  EXPECT_EQ(Format(0, "##.#0#"), ".00");
  EXPECT_EQ(Format(0, "#0"), "0");
  EXPECT_EQ(Format(17, "#0"), "17");
  EXPECT_EQ(Format(0.5, "0.0"), "0.5");
}

TEST(FormatNumber, RoundsPartsAwayFromZeroAsTheyAreWritten) {
  EXPECT_EQ(Format(2.0005, "#.###"), "2.001");
  EXPECT_EQ(Format(2.675, "#.##"), "2.68");
  EXPECT_EQ(Format(-2.675, "#.##"), "-2.68");
  EXPECT_EQ(Format(-0.0004, "#.###"), ".");
  EXPECT_EQ(Format(999.9996, "#.###"), "1000.");
}

TEST(FormatNumber, AsAWholeNumberSeparatesThousandsAndShows0) {
  EXPECT_EQ(FormatNumber(0), "0");
  EXPECT_EQ(FormatNumber(0.49), "0");
  EXPECT_EQ(FormatNumber(-0.4), "0");
  EXPECT_EQ(FormatNumber(0.5), "1");
  EXPECT_EQ(FormatNumber(999.4), "999");
  EXPECT_EQ(FormatNumber(999.5), "1,000");
  EXPECT_EQ(FormatNumber(1234567.5), "1,234,568");
  EXPECT_EQ(FormatNumber(-2500), "-2,500");
}

TEST(FormatDate, PrintsThePatternsOfTheProgram) {
  const DateTime moment{2026, 3, 7, 9, 5, 2};
  EXPECT_EQ(Format(moment, "dd mmm yyyy"), "07 Mar 2026");
  EXPECT_EQ(Format(moment, "dd mmm yy"), "07 Mar 26");
  EXPECT_EQ(Format(moment, "ddmmmyyyy"), "07Mar2026");
  EXPECT_EQ(Format(moment, "hhmm"), "0905");
  EXPECT_EQ(Format(moment, "NNSS"), "0502");
  EXPECT_EQ(Format(moment, "hh:mm dd.mm."), "09:05 07.03.");
}

TEST(FormatDate, KnowsTheTwelveMonthsAndNoOther) {
  std::string names;
  for (int month = 0; month <= 13; ++month) {
    names += Format(DateTime{2026, month, 7}, "<mmm>");
  }
  EXPECT_EQ(names, "<><Jan><Feb><Mar><Apr><May><Jun><Jul><Aug><Sep><Oct><Nov><Dec><>");
}

TEST(FormatDate, TakesTheMonthForAPatternThatBeginsWithIt) {
  EXPECT_EQ(Format(DateTime{2026, 3, 7, 9, 5, 2}, "mm/dd"), "03/07");
}

TEST(FormatDate, CountsTheDaysOfTheYear) {
  EXPECT_EQ(Format(DateTime{2026, 11, 22}, "ddmmmyyy"), "22Nov26326");
  EXPECT_EQ(Format(DateTime{2026, 1, 1}, "ddmmmyyy"), "01Jan261");
  EXPECT_EQ(Format(DateTime{2026, 12, 31}, "y"), "365");
  EXPECT_EQ(Format(DateTime{2026, 2, 28}, "Y"), "59");
  EXPECT_EQ(Format(DateTime{2026, 3, 1, 23, 59, 59}, "y"), "60");
}

TEST(FormatDate, CountsALeapDayAmongThem) {
  EXPECT_EQ(Format(DateTime{2024, 2, 29}, "y"), "60");
  EXPECT_EQ(Format(DateTime{2024, 3, 1}, "y"), "61");
  EXPECT_EQ(Format(DateTime{2024, 12, 31}, "ddmmmyyy"), "31Dec24366");
  EXPECT_EQ(Format(DateTime{2000, 12, 31}, "y"), "366");
  EXPECT_EQ(Format(DateTime{2100, 12, 31}, "y"), "365");
}

TEST(FormatDate, TakesTheLongestPatternOfAYear) {
  const DateTime moment{2026, 2, 1};
  EXPECT_EQ(Format(moment, "yyyy"), "2026");
  EXPECT_EQ(Format(moment, "yyy"), "2632");
  EXPECT_EQ(Format(moment, "yy"), "26");
  EXPECT_EQ(Format(moment, "y"), "32");
  EXPECT_EQ(Format(moment, "yyyyy"), "202632");
}

TEST(FormatDate, LeavesPartsOfASecondOut) {
  EXPECT_EQ(Format(DateTime{2026, 3, 7, 9, 5, 2, 345}, "hh:nn:ss"), "09:05:02");
}

TEST(SecondsSinceMidnight, CountWithTheirParts) {
  EXPECT_EQ(secondsSinceMidnight(DateTime{2026, 3, 7, 0, 0, 0, 0}), 0);
  EXPECT_EQ(secondsSinceMidnight(DateTime{2026, 3, 7, 0, 0, 0, 1}), 0.001);
  EXPECT_EQ(secondsSinceMidnight(DateTime{2026, 3, 7, 9, 5, 2, 345}), 32702.345);
  EXPECT_EQ(secondsSinceMidnight(DateTime{2026, 3, 7, 23, 59, 59, 999}), 86399.999);
}

TEST(WholeSeconds, LieBetweenTwoMoments) {
  const DateTime start{2026, 3, 7, 9, 5, 30, 0};
  EXPECT_EQ(wholeSeconds(start, start), 0);
  EXPECT_EQ(wholeSeconds(start, {2026, 3, 7, 10, 6, 31, 0}), 3661);
  EXPECT_EQ(wholeSeconds(start, {2026, 3, 8, 9, 5, 30, 0}), 86400);
  EXPECT_EQ(wholeSeconds(start, {2027, 3, 7, 9, 5, 30, 0}), 365 * 86400);
  EXPECT_EQ(wholeSeconds(start, {2026, 3, 7, 9, 5, 29, 0}), -1);
}

TEST(WholeSeconds, LeavePartsOfASecondOut) {
  EXPECT_EQ(wholeSeconds({2026, 3, 7, 9, 5, 30, 999}, {2026, 3, 7, 9, 5, 31, 0}), 1);
  EXPECT_EQ(wholeSeconds({2026, 3, 7, 9, 5, 30, 0}, {2026, 3, 7, 9, 5, 30, 999}), 0);
}

TEST(SecondsSinceMidnight, AreWholeForAMomentWithoutParts) {
  EXPECT_EQ(secondsSinceMidnight(DateTime{2026, 3, 7, 0, 1, 5}), 65);
}

TEST(Mid, CutsWhatThereIs) {
  EXPECT_EQ(Mid("abcdef", 3, 2), "cd");
  EXPECT_EQ(Mid("abcdef", 5, 9), "ef");
  EXPECT_EQ(Mid("abcdef", 7, 1), "");
  EXPECT_EQ(Mid("abcdef", 4), "def");
}

TEST(Mid, FailsForAStartBelowOneAndANegativeLength) {
  EXPECT_THROW(Mid("abc", 0, 1), StatementFailed);
  EXPECT_THROW(Mid("abc", 1, -1), StatementFailed);
}

TEST(LeftAndRight, CutAtTheEndsAndFailForNegativeLengths) {
  EXPECT_EQ(Left("abc", 2), "ab");
  EXPECT_EQ(Left("abc", 9), "abc");
  EXPECT_EQ(Right("abc", 2), "bc");
  EXPECT_EQ(Right("abc", 9), "abc");
  EXPECT_THROW(Left("abc", -1), StatementFailed);
  EXPECT_THROW(Right("abc", -1), StatementFailed);
}

TEST(InStr, FindsFromAPositionOn) {
  EXPECT_EQ(InStr(1, "Average = 5", "= "), 9);
  EXPECT_EQ(InStr(2, "aba", "a"), 3);
  EXPECT_EQ(InStr(1, "abc", "x"), 0);
  EXPECT_EQ(InStr(2, "abc", ""), 2);
  EXPECT_EQ(InStr(1, "", ""), 0);
  EXPECT_EQ(InStr(9, "abc", "a"), 0);
  EXPECT_THROW(InStr(0, "abc", "a"), StatementFailed);
}

TEST(InStr, FoldsCaseOnlyWhenAsked) {
  EXPECT_EQ(InStr(1, "AVERAGE", "average"), 0);
  EXPECT_EQ(InStr(1, "AVERAGE", "rage", Compare::IgnoreCase), 4);
}

TEST(Loose, HoldsNothingANumberOrAText) {
  EXPECT_TRUE(Loose().isEmpty());
  EXPECT_EQ(Loose().text(), "");
  EXPECT_EQ(Loose().number(), 0);
  EXPECT_EQ(Loose(99999).text(), "99999");
  EXPECT_EQ(Loose("24").number(), 24);
  EXPECT_THROW(Loose("24ms").number(), StatementFailed);
  EXPECT_EQ(Val(Loose("24ms")), 24);
  EXPECT_TRUE(Loose(1) == Loose("1"));
}

TEST(Skip, GoesOnBehindAFailingStatement) {
  EXPECT_FALSE(skip([] { Mid("a", 0); }));
  EXPECT_TRUE(skip([] { Mid("a", 1); }));
}

TEST(Holds, IsTrueWhenTheConditionItselfFails) {
  EXPECT_TRUE(holds([] { return Mid("a", 0, 1) == "x"; }));
  EXPECT_FALSE(holds([] { return Mid("a", 1, 1) == "x"; }));
}

}  // namespace
}  // namespace veltrin
