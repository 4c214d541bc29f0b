// SPDX-License-Identifier: GPL-3.0-or-later
// The two readings of the text that `ping` prints.
#include <gtest/gtest.h>
#include <optional>
#include <string>

#include "ping/pingmod.h"

namespace veltrin {
namespace {

constexpr int kSentinel = 99999;  // what a caller stores before a ping

// The last line of a ping as it comes through the pipe.
std::string summary(const std::string& average) {
  return "    Minimum = 1ms, Maximum = 250ms, Average = " + average + "ms \r\n";
}

// --- The chain reading ---

std::string chain(const std::string& chunk) {
  Loose time = kSentinel;
  readAverage(chunk, time);
  return time.text();
}

TEST(ChainReading, TellsWhetherTheTimeIsZero) {
  Loose time;
  EXPECT_TRUE(readAverage(summary("0"), time));
  EXPECT_TRUE(readAverage("Average = 07ms", time));
  EXPECT_FALSE(readAverage(summary("7"), time));
  EXPECT_FALSE(readAverage("", time));
  EXPECT_FALSE(readAverage("Average = ", time));
}

TEST(ChainReading, TakesTheDigitsBetweenTheWordAndTheUnit) {
  EXPECT_EQ(chain(summary("5")), "5");
  EXPECT_EQ(chain(summary("24")), "24");
  EXPECT_EQ(chain(summary("124")), "124");
  EXPECT_EQ(chain(summary("1234567")), "1234567");
}

TEST(ChainReading, ReadsEveryNumberOfOneDigitAsItself) {
  for (const char* digit : {"1", "2", "3", "4", "5", "6", "7", "8", "9"}) {
    EXPECT_EQ(chain(summary(digit)), digit);
  }
}

TEST(ChainReading, AnAverageOfZeroIsZero) { EXPECT_EQ(chain(summary("0")), "0"); }

TEST(ChainReading, AnAverageOfZeroAnywhereWinsOverAnEarlierLine) {
  EXPECT_EQ(chain(summary("24") + summary("0")), "0");
}

TEST(ChainReading, AFirstDigitOfZeroIsZero) { EXPECT_EQ(chain("Average = 012ms"), "0"); }

TEST(ChainReading, TheFirstOfTwoLinesWins) {
  EXPECT_EQ(chain(summary("24") + summary("31")), "24");
}

TEST(ChainReading, IgnoresCase) {
  EXPECT_EQ(chain("AVERAGE = 7MS"), "7");
  EXPECT_EQ(chain("average = 0Ms"), "0");
}

TEST(ChainReading, AChunkWithoutAnAverageChangesNothing) {
  EXPECT_EQ(chain("Request timed out.\r\n"), "99999");
  EXPECT_EQ(chain("Reply from 192.0.2.7: bytes=32 time=24ms TTL=56\r\n"), "99999");
}

TEST(ChainReading, TheEmptyChunkChangesNothing) { EXPECT_EQ(chain(""), "99999"); }

TEST(ChainReading, AnotherLanguageChangesNothing) {
  EXPECT_EQ(chain("Minimum = 24ms, Maximum = 24ms, Mittelwert = 24ms\r\n"), "99999");
}

TEST(ChainReading, AWordSplitOverTwoChunksIsNotSeen) {
  Loose time = kSentinel;
  readAverage("Maximum = 24ms, Aver", time);
  readAverage("age = 24ms\r\n", time);
  EXPECT_EQ(time.text(), "99999");
}

TEST(ChainReading, ALineCutBeforeTheUnitGivesTheDigitsThatAreThere) {
  EXPECT_EQ(chain("Maximum = 24ms, Average = 24"), "24");
  EXPECT_EQ(chain("Maximum = 24ms, Average = 2"), "2");
}

TEST(ChainReading, ALineCutInsideTheUnitKeepsWhatIsThereAndReadsAsTheNumber) {
  Loose time = kSentinel;
  readAverage("Average = 24m", time);
  EXPECT_EQ(time.text(), "24m");
  EXPECT_EQ(Val(time), 24);
}

TEST(ChainReading, ALineCutBehindTheWordGivesTheEmptyTextWhichReadsAsZero) {
  Loose time = kSentinel;
  readAverage("Average = ", time);
  EXPECT_EQ(time.text(), "");
  EXPECT_EQ(Val(time), 0);
}

TEST(ChainReading, TheUnitRightBehindTheWordGivesTheEmptyText) {
  EXPECT_EQ(chain("Average = ms"), "");
}

TEST(ChainReading, ALaterChunkWithoutAnAverageKeepsTheReading) {
  Loose time = kSentinel;
  readAverage(summary("24"), time);
  readAverage("", time);
  EXPECT_EQ(time.text(), "24");
}

TEST(ChainReading, KeepsBytesThatAreNoAscii) {
  EXPECT_EQ(chain("Average = 2\xFF\x80ms"), "2\xFF\x80");
}

// --- The tail reading ---

using Reading = std::optional<std::string>;

Reading tail(const std::string& chunk) {
  Loose time = kSentinel;
  return readTail(chunk, time);
}

TEST(TailReading, TakesTheDigitsAtTheEndOfAChunk) {
  EXPECT_EQ(tail(summary("5")), Reading("5"));
  EXPECT_EQ(tail(summary("24")), Reading("24"));
  EXPECT_EQ(tail(summary("124")), Reading("124"));
}

TEST(TailReading, AnAverageOfZeroIsZero) { EXPECT_EQ(tail(summary("0")), Reading("0")); }

TEST(TailReading, ANumberOfFourDigitsIsRead) { EXPECT_EQ(tail(summary("1234")), Reading("1234")); }

TEST(TailReading, ANumberOfFiveDigitsIsReadAsTheSignStandsAtTheFirstPlace) {
  EXPECT_EQ(tail(summary("12345")), Reading("12345"));
}

TEST(TailReading, ANumberOfSixDigitsLeavesNoSignAndChangesNothing) {
  EXPECT_EQ(tail(summary("123456")), Reading());
}

TEST(TailReading, TheLastOfTwoLinesWins) {
  EXPECT_EQ(tail(summary("24") + summary("31")), Reading("31"));
}

TEST(TailReading, ComparesTheUnitExactly) { EXPECT_EQ(tail("AVERAGE = 7MS \r\n"), Reading()); }

TEST(TailReading, ReadsTheNumberAlsoBehindAnotherWord) {
  EXPECT_EQ(tail("Mittelwert = 24ms \r\n"), Reading("24"));
}

TEST(TailReading, TheUnitWithAnotherNumberOfCharactersBehindItChangesNothing) {
  EXPECT_EQ(tail("Maximum = 24ms, Average = 24ms"), Reading());
  EXPECT_EQ(tail("Maximum = 24ms, Average = 24ms\r\n"), Reading());
  EXPECT_EQ(tail("Maximum = 24ms, Average = 24ms  \r\n"), Reading());
}

TEST(TailReading, AChunkWithoutTheUnitInItsPlaceLeavesTheScratchText) {
  Loose time = kSentinel;
  EXPECT_EQ(readTail("Request timed out.\r\n", time), Reading());
  EXPECT_EQ(time.text(), "99999");
}

TEST(TailReading, LeavesTheNineCharactersItLookedAtInTheScratchText) {
  Loose time = kSentinel;
  readTail(summary("24"), time);
  EXPECT_EQ(time.text(), "ge = 24ms");
  readTail(summary("5"), time);
  EXPECT_EQ(time.text(), "age = 5ms");
  readTail(summary("124"), time);
  EXPECT_EQ(time.text(), "e = 124ms");
}

TEST(TailReading, TheEmptyChunkGivesThePreviousValueAgain) {
  Loose time = kSentinel;
  readTail(summary("24"), time);
  EXPECT_EQ(readTail("", time), Reading("24"));
  EXPECT_EQ(time.text(), "ge = 24ms");
}

TEST(TailReading, TheEmptyChunkGivesNothingWhenNothingWasReadBefore) {
  EXPECT_EQ(tail(""), Reading());
}

TEST(TailReading, AChunkOfFourCharactersGivesThePreviousValueAgain) {
  Loose time = "ge = 24ms";
  EXPECT_EQ(readTail("abcd", time), Reading("24"));
}

TEST(TailReading, AChunkOfFiveCharactersWithoutTheUnitChangesNothing) {
  Loose time = "ge = 24ms";
  EXPECT_EQ(readTail("abcde", time), Reading());
}

TEST(TailReading, AChunkOfElevenCharactersWithTheUnitGivesThePreviousValueAgain) {
  Loose time = "ge = 24ms";
  EXPECT_EQ(readTail("e = 77ms \r\n", time), Reading("24"));
  EXPECT_EQ(time.text(), "ge = 24ms");
}

TEST(TailReading, AChunkOfTwelveCharactersWithTheUnitIsRead) {
  Loose time = "ge = 24ms";
  EXPECT_EQ(readTail("ge = 77ms \r\n", time), Reading("77"));
}

TEST(TailReading, ASignTooFarBehindForANumberGivesNothing) {
  EXPECT_EQ(tail("1234567=ms \r\n"), Reading());
}

TEST(TailReading, ASignRightBeforeTheUnitGivesTheEmptyText) {
  EXPECT_EQ(tail("12345 = ms \r\n"), Reading(""));
}

// --- Letters beyond ASCII: places count characters ---

TEST(ChainReading, PassesOverLettersBeyondAsciiBeforeTheWord) {
  EXPECT_EQ(chain("Paquets envoy\u00E9s \u00BD, Average = 24ms\r\n"), "24");
}

TEST(ChainReading, AFirstCharacterBeyondAsciiIsKeptWhole) {
  EXPECT_EQ(chain("Average = \u00BDms"), "\u00BD");
}

TEST(ChainReading, AChunkThatEndsInsideACharacterKeepsItsBytes) {
  EXPECT_EQ(chain("Average = 24\xC2"), "24\xC2");
  EXPECT_EQ(chain("Average = 24ms\xC2"), "24");
  EXPECT_EQ(chain("Average\xC2"), "99999");
}

TEST(TailReading, TheThreeCharactersBehindTheUnitMayBeOfSeveralBytes) {
  EXPECT_EQ(tail("Average = 24ms\u00A0\r\n"), Reading("24"));
  EXPECT_EQ(tail("Average = 24ms\U0001F600\u20AC\u00BD"), Reading("24"));
}

TEST(TailReading, ThreeBytesOfTwoCharactersBehindTheUnitChangeNothing) {
  EXPECT_EQ(tail("Average = 24ms\u00A0\n"), Reading());
}

TEST(TailReading, LooksAtNineCharactersWhateverTheirBytes) {
  Loose time = kSentinel;
  EXPECT_EQ(readTail("moyenn\u00E9\u20AC= 124ms \r\n", time), Reading("124"));
  EXPECT_EQ(time.text(), "\u00E9\u20AC= 124ms");
}

TEST(TailReading, ElevenCharactersOfMoreBytesAreTooFew) {
  Loose time = "ge = 24ms";
  EXPECT_EQ(readTail("\u00E9 = 77ms \r\n", time), Reading("24"));
  EXPECT_EQ(time.text(), "ge = 24ms");
}

TEST(TailReading, TwelveCharactersAreReadWhateverTheirBytes) {
  Loose time = "ge = 24ms";
  EXPECT_EQ(readTail("n\u00E9 = 77ms \r\n", time), Reading("77"));
  EXPECT_EQ(time.text(), "n\u00E9 = 77ms");
}

TEST(TailReading, AChunkThatBeginsInsideACharacterIsReadLikeAnyOther) {
  EXPECT_EQ(tail("\xA9 Average = 24ms \r\n"), Reading("24"));
}

TEST(TailReading, HalfACharacterAtTheEndIsOneOfTheThree) {
  EXPECT_EQ(tail("Average = 24ms \r\xC3"), Reading("24"));
  EXPECT_EQ(tail("Average = 24ms \r\n\xC3"), Reading());
}

}  // namespace
}  // namespace veltrin
