// SPDX-License-Identifier: GPL-3.0-or-later
// The lines in which the system's own tool tells about the machine.
#include "sysinfo/summary_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/systeminfo_text.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Field = std::string SystemSummary::*;

// --- Pieces ---

TEST(PiecesOfATextOfTheMachine, AreWhatStandsBetweenTheLineBreaks) {
  EXPECT_THAT(piecesOf("one\r\n\r\n  two \r\n"), ElementsAre("one", "", "  two ", ""));
}

TEST(PiecesOfATextOfTheMachine, EndWithAnUnfinishedLine) {
  EXPECT_THAT(piecesOf("one\r\ntwo"), ElementsAre("one", "two"));
}

TEST(PiecesOfATextOfTheMachine, AreNotDividedByHalfALineBreak) {
  EXPECT_THAT(piecesOf("one\ntwo\rthree\n\rfour\r"), ElementsAre("one\ntwo\rthree\n\rfour\r"));
}

TEST(PiecesOfATextOfTheMachine, OfAnEmptyTextAreOneEmptyOne) {
  EXPECT_THAT(piecesOf(""), ElementsAre(""));
}

// --- Labels ---

struct LabelCase {
  const char* name;
  std::string line;
  Field field;
  std::string value;
  bool shortForm;
};

class SummaryLabel : public testing::TestWithParam<LabelCase> {};

// All fields that hold something, without the cards.
Lines filled(const SystemSummary& summary) {
  Lines values;
  for (Field field :
       {&SystemSummary::OsName, &SystemSummary::TotalRam, &SystemSummary::AvailableRam,
        &SystemSummary::WinVersion, &SystemSummary::CpuNum, &SystemSummary::CpuCores,
        &SystemSummary::MbModel, &SystemSummary::BiosVersion, &SystemSummary::Location,
        &SystemSummary::MbMan, &SystemSummary::BootDevice, &SystemSummary::OsVersion,
        &SystemSummary::Installed, &SystemSummary::BootTime, &SystemSummary::UpTime,
        &SystemSummary::PageFile, &SystemSummary::Domain, &SystemSummary::HotfixWidth}) {
    if (!(summary.*field).empty()) values.push_back(summary.*field);
  }
  return values;
}

TEST_P(SummaryLabel, FillsItsFieldAndNoOtherInTheFullForm) {
  SystemSummary summary;
  EXPECT_TRUE(readLabelledLine(SummaryForm::Full, GetParam().line, summary));
  EXPECT_EQ(summary.*(GetParam().field), GetParam().value);
  EXPECT_THAT(filled(summary), ElementsAre(GetParam().value));
}

TEST_P(SummaryLabel, IsReadByTheShortFormOrNotAsTheTableHasIt) {
  SystemSummary summary;
  EXPECT_EQ(readLabelledLine(SummaryForm::Short, GetParam().line, summary), GetParam().shortForm);
  EXPECT_EQ(filled(summary).size(), GetParam().shortForm ? 1U : 0U);
}

TEST_P(SummaryLabel, IsNotReadWithOneBlankLess) {
  SystemSummary summary;
  std::string line = GetParam().line;
  line.erase(26, 1);
  EXPECT_FALSE(readLabelledLine(SummaryForm::Full, line, summary));
  EXPECT_THAT(filled(summary), IsEmpty());
}

TEST_P(SummaryLabel, IsNotReadInAnotherCase) {
  SystemSummary summary;
  std::string line = GetParam().line;
  line[1] = static_cast<char>(line[1] ^ 0x20);
  EXPECT_FALSE(readLabelledLine(SummaryForm::Full, line, summary));
}

TEST_P(SummaryLabel, IsNotReadBehindABlank) {
  SystemSummary summary;
  EXPECT_FALSE(readLabelledLine(SummaryForm::Full, " " + GetParam().line, summary));
}

TEST_P(SummaryLabel, AloneEmptiesItsFieldUnlessItsValueLosesCharacters) {
  SystemSummary summary;
  summary.*(GetParam().field) = "old";
  const bool losesCharacters = GetParam().line.substr(27) != GetParam().value;
  EXPECT_TRUE(readLabelledLine(SummaryForm::Full, GetParam().line.substr(0, 27), summary));
  EXPECT_EQ(summary.*(GetParam().field), losesCharacters ? "old" : "");
}

INSTANTIATE_TEST_SUITE_P(
    OfTheTable, SummaryLabel,
    testing::Values(
        LabelCase{"ProductId", "Product ID:                12345-678-9012345-67890",
                  &SystemSummary::OsName, "12345-678-9012345-67", true},
        LabelCase{"TotalMemory", "Total Physical Memory:     3,957 MB", &SystemSummary::TotalRam,
                  "3,957", true},
        LabelCase{"AvailableMemory", "Available Physical Memory: 2,046 MB",
                  &SystemSummary::AvailableRam, "2,046", true},
        LabelCase{"OsName", "OS Name:                   Example Desktop 7",
                  &SystemSummary::WinVersion, "Example Desktop 7", true},
        LabelCase{"Processors", "Processor(s):              2 Processor(s) Installed.",
                  &SystemSummary::CpuNum, "2 Processor(s) Installed.", true},
        LabelCase{"SystemModel", "System Model:              Board 7", &SystemSummary::MbModel,
                  "Board 7", true},
        LabelCase{"BiosVersion", "BIOS Version:              Example Bios A05, 8/10/2025",
                  &SystemSummary::BiosVersion, "Example Bios A05, 8/10/2025", true},
        LabelCase{"InputLocale", "Input Locale:              nl;Dutch (Netherlands)",
                  &SystemSummary::Location, "nl;Dutch (Netherlands)", true},
        LabelCase{"SystemManufacturer", "System Manufacturer:       Example Boards",
                  &SystemSummary::MbMan, "Example Boards", true},
        LabelCase{"BootDevice", "Boot Device:               \\Device\\HarddiskVolume1",
                  &SystemSummary::BootDevice, "\\Device\\HarddiskVolume1", true},
        LabelCase{"OsVersion", "OS Version:                6.1.7601 Build 7601",
                  &SystemSummary::OsVersion, "6.1.7601 Build 7601", true},
        LabelCase{"InstallDate", "Original Install Date:     1/30/2026, 3:22:51 PM",
                  &SystemSummary::Installed, "1/30/2026, 3:22:51 PM", true},
        LabelCase{"BootTime", "System Boot Time:          3/7/2026, 8:01:12 AM",
                  &SystemSummary::BootTime, "3/7/2026, 8:01:12 AM", false},
        LabelCase{"UpTime", "System Up Time:            3 Days, 4 Hours, 5 Minutes, 6 Seconds",
                  &SystemSummary::UpTime, "3 Days, 4 Hours, 5 Minutes, 6 Seconds", false},
        LabelCase{"PageFile", "Page File Location(s):     C:\\pagefile.sys",
                  &SystemSummary::PageFile, "C:\\pagefile.sys", false},
        LabelCase{"Domain", "Domain:                    WORKGROUP", &SystemSummary::Domain,
                  "WORKGROUP", false},
        LabelCase{"Hotfixes", "Hotfix(s):                 9 Hotfix(s) Installed.",
                  &SystemSummary::HotfixWidth, "9 Hotfix(s) Installed.", false}),
    [](const testing::TestParamInfo<LabelCase>& info) { return std::string(info.param.name); });

TEST(SummaryLabels, AValueOfLessThanThreeCharactersLeavesTheSizesAlone) {
  SystemSummary summary;
  summary.OsName = summary.TotalRam = summary.AvailableRam = "old";
  EXPECT_TRUE(readLabelledLine(SummaryForm::Full, "Product ID:                67", summary));
  EXPECT_TRUE(readLabelledLine(SummaryForm::Full, "Total Physical Memory:     MB", summary));
  EXPECT_TRUE(readLabelledLine(SummaryForm::Full, "Available Physical Memory: MB", summary));
  EXPECT_THAT(filled(summary), ElementsAre("old", "old", "old"));
}

TEST(SummaryLabels, AValueOfThreeCharactersEmptiesTheSizes) {
  SystemSummary summary;
  summary.OsName = summary.TotalRam = summary.AvailableRam = "old";
  EXPECT_TRUE(readLabelledLine(SummaryForm::Full, "Product ID:                678", summary));
  EXPECT_TRUE(readLabelledLine(SummaryForm::Full, "Total Physical Memory:      MB", summary));
  EXPECT_TRUE(readLabelledLine(SummaryForm::Full, "Available Physical Memory:  MB", summary));
  EXPECT_THAT(filled(summary), IsEmpty());
}

TEST(SummaryLabels, TheProductIdAndTheSizesLoseCharactersAndNoHalvesOfThem) {
  SystemSummary summary;
  readLabelledLine(SummaryForm::Full, "Product ID:                12345-\u00C4\u20AC\U0001F600",
                   summary);
  readLabelledLine(SummaryForm::Full, "Total Physical Memory:     3\u00A0957 M\u00F6", summary);
  EXPECT_THAT(filled(summary), ElementsAre("12345-", "3\u00A0957"));
}

TEST(SummaryLabels, AValueOfTwoCharactersOfMoreBytesLeavesTheProductIdAlone) {
  SystemSummary summary;
  summary.OsName = "old";
  EXPECT_TRUE(
      readLabelledLine(SummaryForm::Full, "Product ID:                \u00BD\u00BD", summary));
  EXPECT_EQ(summary.OsName, "old");
}

TEST(SummaryLabels, AValueKeepsLettersBeyondAsciiAndBytesThatAreNone) {
  SystemSummary summary;
  readLabelledLine(SummaryForm::Full, "System Model:              Br\u00FCck \xE2\x82", summary);
  EXPECT_EQ(summary.MbModel, "Br\u00FCck \xE2\x82");
}

TEST(SummaryLabels, AValueKeepsTheBlanksAroundIt) {
  SystemSummary summary;
  readLabelledLine(SummaryForm::Full, "System Model:                Board 7  ", summary);
  EXPECT_EQ(summary.MbModel, "  Board 7  ");
}

TEST(SummaryLabels, OtherLinesAreNotRead) {
  SystemSummary summary;
  for (const char* line :
       {"", "Product ID:", "Host Name:                 KITCHEN",
        "System Locale:             en-us;English (United States)",
        "OS Manufacturer:           Example Systems", "Virtual Memory: Max Size:  7,912 MB",
        "Network Card(s):           1 NIC(s) Installed."}) {
    EXPECT_FALSE(readLabelledLine(SummaryForm::Full, line, summary)) << line;
  }
  EXPECT_THAT(filled(summary), IsEmpty());
}

// --- Hotfixes ---

// The names that lines of a text tell.
Lines hotfixesIn(const Lines& lines) {
  SystemSummary summary;
  SummaryReader reader(summary);
  for (const std::string& line : lines) reader.readLine(line);
  return reader.hotfixes();
}

std::string widthOf(const std::string& value) {
  SystemSummary summary;
  SummaryReader(summary).readLine("Hotfix(s):                 " + value);
  return summary.HotfixWidth;
}

TEST(SummaryHotfixes, TheWidthIsTheTextForOneDigit) {
  EXPECT_EQ(widthOf("9 Hotfix(s) Installed."), "9 Hotfix(s) Installed.");
}

TEST(SummaryHotfixes, TheWidthIsTwoForTwoDigits) {
  EXPECT_EQ(widthOf("12 Hotfix(s) Installed."), "2");
}

TEST(SummaryHotfixes, TheWidthIsThreeForThreeDigits) {
  EXPECT_EQ(widthOf("120 Hotfix(s) Installed."), "3");
}

TEST(SummaryHotfixes, TheWidthIsTheTextForFourDigitsAndForNone) {
  EXPECT_EQ(widthOf("1200 Hotfix(s) Installed."), "1200 Hotfix(s) Installed.");
  EXPECT_EQ(widthOf("N/A"), "N/A");
  EXPECT_EQ(widthOf("12 hotfix(s) installed."), "12 hotfix(s) installed.");
}

TEST(SummaryHotfixes, TheWidthGoesByCharacters) {
  EXPECT_EQ(widthOf("\u00BD\u00BD Hotfix(s)"), "2");
  EXPECT_EQ(widthOf("\u00BD\u00BD\u20AC Hotfix(s)"), "3");
  EXPECT_EQ(widthOf("\u00BD Hotfix(s)"), "\u00BD Hotfix(s)");
}

TEST(SummaryHotfixes, ANameKeepsItsLettersBeyondAscii) {
  EXPECT_THAT(hotfixesIn({"Hotfix(s):                 12 Hotfix(s) Installed.",
                          "                           [01]: \u00C4\u20AC1"}),
              ElementsAre("\u00C4\u20AC1"));
}

TEST(SummaryHotfixes, TwelveAreListedByName) {
  EXPECT_THAT(hotfixesIn(hotfixes(12)), ElementsAre("KB1", "KB2", "KB3", "KB4", "KB5", "KB6", "KB7",
                                                    "KB8", "KB9", "KB10", "KB11", "KB12"));
}

TEST(SummaryHotfixes, NinetyNineAreListed) { EXPECT_EQ(hotfixesIn(hotfixes(99)).size(), 99U); }

TEST(SummaryHotfixes, NineAreNotListed) { EXPECT_THAT(hotfixesIn(hotfixes(9)), IsEmpty()); }

TEST(SummaryHotfixes, AHundredAndTwentyAreNotListed) {
  EXPECT_THAT(hotfixesIn(hotfixes(120)), IsEmpty());
}

TEST(SummaryHotfixes, ThreeDigitsAreNotListedBehindOneBlankMoreEither) {
  EXPECT_THAT(hotfixesIn({"Hotfix(s):                 120 Hotfix(s) Installed.",
                          "                            [001]: KB1"}),
              IsEmpty());
}

TEST(SummaryHotfixes, TheHundredthOfACountOfTwoDigitsIsNotListed) {
  Lines lines = hotfixes(100);
  lines[0] = "Hotfix(s):                 99 Hotfix(s) Installed.";
  EXPECT_EQ(hotfixesIn(lines).size(), 99U);
}

TEST(SummaryHotfixes, AValueOfNothingButTwoCountsAsTwoDigits) {
  EXPECT_THAT(hotfixesIn({"Hotfix(s):                 2", "                           [01]: KB1"}),
              ElementsAre("KB1"));
}

TEST(SummaryHotfixes, EveryLineThatBearsNoLabelIsCounted) {
  EXPECT_THAT(
      hotfixesIn({"Hotfix(s):                 12 Hotfix(s) Installed.",
                  "                           [01]: KB1", "stray",
                  "                           [02]: KB2", "                           [04]: KB4"}),
      ElementsAre("KB1", "KB4"));
}

TEST(SummaryHotfixes, ALabelledLineAmongThemIsNotCounted) {
  EXPECT_THAT(
      hotfixesIn({"Hotfix(s):                 12 Hotfix(s) Installed.",
                  "                           [01]: KB1", "Domain:                    WORKGROUP",
                  "                           [02]: KB2"}),
      ElementsAre("KB1", "KB2"));
}

TEST(SummaryHotfixes, AnotherIndentIsNotListed) {
  EXPECT_THAT(hotfixesIn({"Hotfix(s):                 12 Hotfix(s) Installed.",
                          "                          [01]: KB1",
                          "                            [02]: KB2", "[03]: KB3"}),
              IsEmpty());
}

TEST(SummaryHotfixes, ANameMayBeEmpty) {
  EXPECT_THAT(hotfixesIn({"Hotfix(s):                 12 Hotfix(s) Installed.",
                          "                           [01]: "}),
              ElementsAre(""));
}

TEST(SummaryHotfixes, NoneIsListedBeforeTheirLabel) {
  EXPECT_THAT(hotfixesIn({"                           [01]: KB1"}), IsEmpty());
}

TEST(SummaryHotfixes, TheCardsEndTheList) {
  EXPECT_THAT(hotfixesIn({"Hotfix(s):                 12 Hotfix(s) Installed.",
                          "                           [01]: KB1",
                          "Network Card(s):           0 NIC(s) Installed.",
                          "                           [03]: KB3"}),
              ElementsAre("KB1"));
}

TEST(SummaryHotfixes, ASecondListGoesOnCountingAndEndsNothing) {
  EXPECT_THAT(
      hotfixesIn({"Hotfix(s):                 12 Hotfix(s) Installed.",
                  "                           [01]: KB1",
                  "Hotfix(s):                 12 Hotfix(s) Installed.",
                  "                           [01]: KB1", "                           [03]: KB3"}),
      ElementsAre("KB1", "KB3"));
}

TEST(SummaryHotfixes, AListThatIsNotReadIsCountedToo) {
  EXPECT_THAT(hotfixesIn({"Hotfix(s):                 1 Hotfix(s) Installed.",
                          "                           [01]: KB1",
                          "Hotfix(s):                 12 Hotfix(s) Installed.",
                          "                           [02]: KB2"}),
              ElementsAre("KB2"));
}

// --- Cards ---

TEST(SummaryCardCount, IsAWholeCharacter) {
  SystemSummary summary;
  SummaryReader reader(summary);
  reader.readLine("Network Card(s):           \u20AC2 NIC(s) Installed.");
  EXPECT_EQ(reader.cardCount(), "\u20AC");
}

}  // namespace
}  // namespace veltrin
