// SPDX-License-Identifier: GPL-3.0-or-later
// The reading of the text that `tracert` prints.
#include "route/tracert_reader.h"

#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <vector>

namespace veltrin {

std::ostream& operator<<(std::ostream& out, const TracertEvent& event) {
  return out << static_cast<int>(event.line) << " \"" << event.address << "\"";
}

namespace {

const TracertEvent kHeader{TracertLine::Header, ""};
const TracertEvent kComplete{TracertLine::Complete, ""};
const TracertEvent kSilent{TracertLine::SilentHop, ""};
const TracertEvent kIgnored{TracertLine::Ignored, ""};

TracertEvent hop(const std::string& address) { return {TracertLine::Hop, address}; }

// Reads one line of a trace whose list of hops has begun.
TracertEvent read(const std::string& line) {
  TracertReader reader;
  reader.read("over a maximum of 30 hops:");
  return reader.read(line);
}

// What counts of a whole text: everything but the lines that are ignored.
std::vector<TracertEvent> readAll(const std::string& text) {
  std::vector<TracertEvent> events;
  for (const TracertEvent& event : readTracert(text)) {
    if (!(event == kIgnored)) events.push_back(event);
  }
  return events;
}

using Events = std::vector<TracertEvent>;

// --- Where the list of hops begins and ends ---

TEST(TracertReader, TheListBeginsBehindTheHeader) {
  TracertReader reader;
  EXPECT_FALSE(reader.isReading());
  EXPECT_EQ(reader.read("over a maximum of 30 hops:"), kHeader);
  EXPECT_TRUE(reader.isReading());
}

TEST(TracertReader, TheListEndsWithTheCompleteTrace) {
  TracertReader reader;
  reader.read("over a maximum of 30 hops:");
  EXPECT_EQ(reader.read("Trace complete."), kComplete);
  EXPECT_FALSE(reader.isReading());
}

TEST(TracertReader, TheMarksAreFoundInAnyCaseOfLetters) {
  TracertReader reader;
  EXPECT_EQ(reader.read("OVER A MAXIMUM OF 30 HOPS:"), kHeader);
  EXPECT_EQ(reader.read("TRACE COMPLETE."), kComplete);
}

TEST(TracertReader, LinesBeforeTheHeaderAreIgnored) {
  TracertReader reader;
  EXPECT_EQ(reader.read("Tracing route to target.example [203.0.113.80]"), kIgnored);
  EXPECT_EQ(reader.read("  1     1 ms     1 ms     1 ms  192.0.2.1 "), kIgnored);
  EXPECT_EQ(reader.read("  2     *        *        *     Request timed out."), kIgnored);
}

TEST(TracertReader, LinesBehindTheEndAreIgnored) {
  TracertReader reader;
  reader.read("over a maximum of 30 hops:");
  reader.read("Trace complete.");
  EXPECT_EQ(reader.read("Calculating Test Points of [192.0.2.1]"), kIgnored);
  EXPECT_EQ(reader.read("  2     *        *        *     Request timed out."), kIgnored);
}

TEST(TracertReader, AnEndBeforeAnyHeaderIsAnEndAllTheSame) {
  TracertReader reader;
  EXPECT_EQ(reader.read("Trace complete."), kComplete);
  EXPECT_FALSE(reader.isReading());
}

TEST(TracertReader, ASecondHeaderInsideTheListIsAHeaderAndNoHop) {
  EXPECT_EQ(read("over a maximum of 30 hops: [192.0.2.1]"), kHeader);
}

TEST(TracertReader, AHeaderWinsOverTheEndInOneLine) {
  EXPECT_EQ(read("Trace complete: 30 hops"), kHeader);
}

TEST(TracertReader, TheEndWinsOverAHopInOneLine) {
  EXPECT_EQ(read("Trace complete. [192.0.2.1]"), kComplete);
}

TEST(TracertReader, EmptyAndBlankLinesAreIgnoredInsideTheList) {
  EXPECT_EQ(read(""), kIgnored);
  EXPECT_EQ(read("                    "), kIgnored);
}

// --- Silent hops ---

TEST(TracertReader, ThreeStarsWithTheRemarkOfTheToolAreASilentHop) {
  EXPECT_EQ(read("  3     *        *        *     Request timed out."), kSilent);
}

TEST(TracertReader, ThreeStarsWithARemarkInAnotherLanguageAreASilentHop) {
  EXPECT_EQ(read("  3     *        *        *     Tiempo de espera agotado."), kSilent);
}

TEST(TracertReader, ThreeStarsWinOverAnAddressInBrackets) {
  EXPECT_EQ(read("  3     *        *        *     hop.example [192.0.2.1]"), kSilent);
}

TEST(TracertReader, ThreeStarsAtOtherDistancesAreNoSilentHop) {
  EXPECT_EQ(read("  3     *       *       *     198.51.100.3 "), hop("198.51.100.3 "));
}

// --- Hops with a name ---

TEST(TracertReader, ANamedHopGivesTheAddressInItsBracketsWithoutBlanks) {
  EXPECT_EQ(read("  1     1 ms     1 ms     1 ms  gateway.example [192.0.2.1] "), hop("192.0.2.1"));
}

TEST(TracertReader, ANamedHopOverIpv6GivesTheWholeAddress) {
  EXPECT_EQ(read(" 14    31 ms    30 ms    31 ms  hop-14.example [2001:db8:0:e:1:2:3:4] "),
            hop("2001:db8:0:e:1:2:3:4"));
}

TEST(TracertReader, OfTwoPairsOfBracketsTheFirstCounts) {
  EXPECT_EQ(read("  1     1 ms     1 ms     1 ms  a [192.0.2.1] b [192.0.2.9] "), hop("192.0.2.1"));
}

TEST(TracertReader, ABracketThatIsNotClosedGivesTheRestOfTheLine) {
  EXPECT_EQ(read("  1     1 ms     1 ms     1 ms  gateway.example [192.0.2.1"), hop("192.0.2.1"));
}

TEST(TracertReader, ABracketClosedBeforeItIsOpenedGivesTheRestOfTheLine) {
  EXPECT_EQ(read("  1     1 ms     1 ms  odd] name [192.0.2.1] "), hop("192.0.2.1] "));
}

TEST(TracertReader, ABracketThatClosesAtTheLinesStartCountsLikeAnyOther) {
  EXPECT_EQ(read("] odd name [192.0.2.1]"), hop("192.0.2.1]"));
}

TEST(TracertReader, ABracketMayOpenAtTheLinesStart) {
  EXPECT_EQ(read("[192.0.2.1]  reports: Destination net unreachable."), hop("192.0.2.1"));
}

TEST(TracertReader, EmptyBracketsGiveAnEmptyAddress) {
  EXPECT_EQ(read("  1     1 ms     1 ms     1 ms  gateway.example [] "), hop(""));
}

// --- Bare addresses, by the search from the end of the line ---

TEST(TracertReader, ABareAddressKeepsTheBlankThatEndsItsLine) {
  EXPECT_EQ(read("  5    12 ms    11 ms    12 ms  198.51.100.5 "), hop("198.51.100.5 "));
}

TEST(TracertReader, TheLongestAddressIsTakenWhole) {
  EXPECT_EQ(read("  5    12 ms    11 ms    12 ms  198.151.100.125 "), hop("198.151.100.125 "));
}

TEST(TracertReader, AnAddressOfEightCharactersKeepsNoBlankBeforeIt) {
  EXPECT_EQ(read("  2     1 ms     1 ms     1 ms  10.0.0.1 "), hop("10.0.0.1 "));
}

TEST(TracertReader, AnAddressOfSevenCharactersKeepsABlankBeforeIt) {
  EXPECT_EQ(read("  2     1 ms     1 ms     1 ms  1.2.3.4 "), hop(" 1.2.3.4 "));
}

TEST(TracertReader, AnAddressWithoutABlankBehindItIsTakenAsItStands) {
  EXPECT_EQ(read("  5    12 ms    11 ms    12 ms  198.51.100.5"), hop("198.51.100.5"));
}

TEST(TracertReader, NineTenAndThirtyHopsAreReadAlike) {
  EXPECT_EQ(read("  9    12 ms    11 ms    12 ms  198.51.100.9 "), hop("198.51.100.9 "));
  EXPECT_EQ(read(" 10    12 ms    11 ms    12 ms  198.51.100.10 "), hop("198.51.100.10 "));
  EXPECT_EQ(read(" 30    12 ms    11 ms    12 ms  198.51.100.30 "), hop("198.51.100.30 "));
}

TEST(TracertReader, OneStarAmongTimesIsAHopWithItsAddressAndBlank) {
  EXPECT_EQ(read("  4    12 ms     *       11 ms  198.51.100.4 "), hop("198.51.100.4 "));
}

TEST(TracertReader, TwoStarsAndOneTimeAreAHopWithItsAddressAndBlank) {
  EXPECT_EQ(read("  4     *        *       11 ms  198.51.100.4 "), hop("198.51.100.4 "));
  EXPECT_EQ(read("  4    11 ms     *        *     198.51.100.4 "), hop("198.51.100.4 "));
}

TEST(TracertReader, AnIpv6AddressOfUpToFifteenCharactersIsTakenWhole) {
  EXPECT_EQ(read("  2     1 ms     1 ms     1 ms  2001:db8:0:2::1 "), hop("2001:db8:0:2::1 "));
}

TEST(TracertReader, OfALongerIpv6AddressTheLastSixteenCharactersAreTaken) {
  EXPECT_EQ(read("  2     1 ms     1 ms     1 ms  2001:db8:0:2:a:b:c:d "), hop("db8:0:2:a:b:c:d "));
}

TEST(TracertReader, AReportOfARouterGivesItsLastWord) {
  EXPECT_EQ(read("  6  198.51.100.5  reports: Destination host unreachable."), hop("unreachable."));
}

TEST(TracertReader, AReportOfANamedRouterGivesTheRouter) {
  EXPECT_EQ(read("  6  hop-05.example [198.51.100.5]  reports: Destination net unreachable."),
            hop("198.51.100.5"));
}

TEST(TracertReader, ALineOfNineCharactersIsTakenWhole) {
  EXPECT_EQ(read("abcdefghi"), hop("abcdefghi"));
}

TEST(TracertReader, AShortLineWithoutABlankIsTakenWhole) {
  EXPECT_EQ(read("abcdefghijklmn"), hop("abcdefghijklmn"));
}

TEST(TracertReader, ALineOfFewerThanNineCharactersHoldsNoAddress) {
  EXPECT_EQ(read("10.0.0.1"), kIgnored);
}

// --- Letters beyond ASCII: places count characters ---

TEST(TracertReader, AnAddressIsFoundBehindAnyCharacters) {
  EXPECT_EQ(read("  1     1 ms  m\u00FCnchen\u20AC.example [192.0.2.1] "), hop("192.0.2.1"));
  EXPECT_EQ(read("  1     1 ms  m\u00FCnchen\u20AC.example [192.0.2.1 "), hop("192.0.2.1 "));
}

TEST(TracertReader, TheSearchFromTheEndGoesByCharacters) {
  EXPECT_EQ(read("  6  192.0.2.1  h\u00F4te inacc\u00E9ssibl\u00E9s"),
            hop("inacc\u00E9ssibl\u00E9s"));
  EXPECT_EQ(read("  6  192.0.2.1  reports: \u00E9\u00E9\u00E9\u00E9 \u00E9\u00E9\u00E9\u00E9"),
            hop("\u00E9\u00E9\u00E9\u00E9 \u00E9\u00E9\u00E9\u00E9"));
}

TEST(TracertReader, WithoutABlankTheLastSixteenCharactersAreTakenWhole) {
  std::string address;
  for (int count = 0; count < 16; ++count) address += "\u20AC";
  EXPECT_EQ(read("\u20AC\u20AC" + address), hop(address));
}

TEST(TracertReader, ALineOfEightCharactersOfMoreBytesHoldsNoAddress) {
  EXPECT_EQ(read("\u00E9\u00E9\u00E9\u00E9\u00E9\u00E9\u00E9\u00E9"), kIgnored);
}

TEST(TracertReader, ALineOfNineCharactersOfMoreBytesIsTakenWhole) {
  EXPECT_EQ(read("\u00E9\u00E9\u00E9\u00E9\u00E9\u00E9\u00E9\u00E9i"),
            hop("\u00E9\u00E9\u00E9\u00E9\u00E9\u00E9\u00E9\u00E9i"));
}

TEST(TracertReader, BytesThatAreNoCharacterCountAsOneEach) {
  EXPECT_EQ(read("  6  x \xE2\x82 198.51.100.5"), hop("198.51.100.5"));
  EXPECT_EQ(read("\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"),
            hop("\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"));
}

// --- Whole texts ---

TEST(TracertReader, ReadsAWholeTraceWithNames) {
  EXPECT_EQ(readAll("\r\n"
                    "Tracing route to target.example [203.0.113.80]\r\n"
                    "over a maximum of 30 hops:\r\n"
                    "\r\n"
                    "  1    <1 ms    <1 ms    <1 ms  gateway.example [192.0.2.1] \r\n"
                    "  2     *        *        *     Request timed out.\r\n"
                    "  3     4 ms     *        4 ms  198.51.100.3 \r\n"
                    "  4    20 ms    21 ms    20 ms  target.example [203.0.113.80] \r\n"
                    "\r\n"
                    "Trace complete.\r\n"),
            (Events{kHeader, hop("192.0.2.1"), kSilent, hop("198.51.100.3 "), hop("203.0.113.80"),
                    kComplete}));
}

TEST(TracertReader, ReadsTwoTracesBehindEachOther) {
  const std::string trace =
      "over a maximum of 30 hops:\r\n  1    <1 ms    <1 ms    <1 ms  192.0.2.1 \r\n"
      "Trace complete.\r\nbetween [the traces]\r\n";
  EXPECT_EQ(readAll(trace + trace),
            (Events{kHeader, hop("192.0.2.1 "), kComplete, kHeader, hop("192.0.2.1 "), kComplete}));
}

TEST(TracertReader, ATraceThatBreaksOffHasItsHopsAndNoEnd) {
  EXPECT_EQ(readAll("over a maximum of 30 hops:\r\n\r\n"
                    "  1    <1 ms    <1 ms    <1 ms  192.0.2.1 \r\n"
                    "  2     4 ms     4 ms     4 ms  198.51.100.3 "),
            (Events{kHeader, hop("192.0.2.1 "), hop("198.51.100.3 ")}));
}

TEST(TracertReader, ATraceWithAnotherLimitHasNoHops) {
  EXPECT_EQ(readAll("over a maximum of 15 hops:\r\n\r\n"
                    "  1    <1 ms    <1 ms    <1 ms  192.0.2.1 \r\n"
                    "  2     *        *        *     Request timed out.\r\n"),
            Events{});
}

TEST(TracertReader, ATraceInAnotherLanguageHasNoHops) {
  EXPECT_EQ(readAll("Traza a target.example [203.0.113.80]\r\n"
                    "sobre un m\xC3\xA1ximo de 30 saltos:\r\n\r\n"
                    "  1    <1 ms    <1 ms    <1 ms  192.0.2.1 \r\n"
                    "  2     *        *        *     Tiempo de espera agotado.\r\n\r\n"
                    "Traza completa.\r\n"),
            Events{});
}

TEST(TracertReader, ALineFeedAloneEndsNoLine) {
  EXPECT_EQ(readAll("over a maximum of 30 hops:\n  1    <1 ms  [192.0.2.1]\r\nTrace complete."),
            (Events{kHeader, kComplete}));
}

TEST(TracertReader, AnEmptyTextIsOneIgnoredLine) { EXPECT_EQ(readTracert(""), Events{kIgnored}); }

TEST(TracertReader, EachLineOfATextIsOneEvent) {
  EXPECT_EQ(readTracert("\r\nover a maximum of 30 hops:\r\n"),
            (Events{kIgnored, kHeader, kIgnored}));
}

}  // namespace
}  // namespace veltrin
