// SPDX-License-Identifier: GPL-3.0-or-later
// Which lines the full form of the summary reads, and what comes between them.
#include <random>

#include "simulated/system_summary_run.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SummaryLines : public SystemSummaryRun {
 protected:
  void read(const Lines& lines) {
    prints(printed(lines));
    form->SysInfo("1");
  }

  std::shared_ptr<DosApp> form = program.keep<DosApp>();
};

// --- Short texts ---

TEST_F(SummaryLines, NineAreShortAndNotReadAndTheKeysAreWritten) {
  summary.MbModel = "old";
  prints(linesOfBoard(9));
  form->SysInfo("1");
  EXPECT_EQ(form->ShortText, 1);
  EXPECT_EQ(program.readSetting("SysInfo", "MB Model"), "old");
  EXPECT_EQ(simulation.profiles.writes, 13);
}

TEST_F(SummaryLines, TenAreNeitherShortNorRead) {
  summary.MbModel = "old";
  prints(linesOfBoard(10));
  form->SysInfo("1");
  EXPECT_EQ(form->ShortText, 0);
  EXPECT_EQ(program.readSetting("SysInfo", "MB Model"), "old");
  EXPECT_EQ(simulation.profiles.writes, 13);
}

TEST_F(SummaryLines, ElevenAreRead) {
  prints(linesOfBoard(11));
  form->SysInfo("1");
  EXPECT_EQ(form->ShortText, 0);
  EXPECT_EQ(program.readSetting("SysInfo", "MB Model"), "Board 7");
}

TEST_F(SummaryLines, BlankOnesDoNotCount) {
  prints("\r\n   \r\n" + linesOfBoard(10) + "\r\n");
  form->SysInfo("1");
  EXPECT_EQ(summary.MbModel, "");
}

TEST_F(SummaryLines, AShortTextIsForgottenBehindALongerOne) {
  prints("one");
  form->SysInfo("1");
  prints(linesOfBoard(11));
  form->SysInfo("1");
  EXPECT_EQ(form->ShortText, 0);
}

TEST_F(SummaryLines, AMissingToolIsToldAndTheKeysAreWrittenWithTheOldValues) {
  summary.MbModel = "old";
  summary.Location = "nl;Dutch";
  writes = std::nullopt;
  form->SysInfo("1");
  ASSERT_EQ(simulation.desktop.messages.size(), 1U);
  EXPECT_EQ(simulation.desktop.messages[0].text, "File or command not found");
  EXPECT_EQ(simulation.settings(),
            "[SysInfo]\r\n"
            "Info Check=07 Mar 2026\r\n"
            "Win Version=\r\n"
            "OS Version=\r\n"
            "Total Ram=\r\n"
            "Available Ram=\r\n"
            "CPU Num=\r\n"
            "CPU Cores=\r\n"
            "MB Model=old\r\n"
            "MB Man=\r\n"
            "Location=Dutch\r\n"
            "Bios=\r\n"
            "Boot=\r\n"
            "Installed=\r\n");
}

// --- Labels ---

TEST_F(SummaryLines, ALabelBehindAnIndentIsNotMatched) {
  Lines lines(11, "filled");
  lines[3] = " System Model:              Board 7";
  read(lines);
  EXPECT_EQ(summary.MbModel, "");
}

TEST_F(SummaryLines, AValueKeepsTheBlanksAtItsEnd) {
  Lines lines(11, "filled");
  lines[3] = "System Model:              Board 7   ";
  read(lines);
  EXPECT_EQ(summary.MbModel, "Board 7   ");
}

TEST_F(SummaryLines, ALabelWithoutAValueEmptiesItsField) {
  summary.MbModel = "old";
  Lines lines(11, "filled");
  lines[3] = "System Model:              ";
  read(lines);
  EXPECT_EQ(summary.MbModel, "");
}

TEST_F(SummaryLines, ALabelWithFewerBlanksIsNotMatched) {
  Lines lines(11, "filled");
  lines[3] = "OS Name:                  Example Desktop 7";
  lines[4] = "OS Version: 6.1";
  read(lines);
  EXPECT_EQ(summary.WinVersion, "");
  EXPECT_EQ(summary.OsVersion, "");
}

// --- Hotfixes ---

TEST_F(SummaryLines, TwelveHotfixesAreListed) {
  read(desktop(12, 1));
  EXPECT_THAT(itemsOf(form->List3), ElementsAre("KB1", "KB2", "KB3", "KB4", "KB5", "KB6", "KB7",
                                                "KB8", "KB9", "KB10", "KB11", "KB12"));
  EXPECT_EQ(summary.HotfixWidth, "2");
}

TEST_F(SummaryLines, NineHotfixesAreNotListed) {
  read(desktop(9, 1));
  EXPECT_THAT(itemsOf(form->List3), IsEmpty());
  EXPECT_EQ(summary.HotfixWidth, "9 Hotfix(s) Installed.");
}

TEST_F(SummaryLines, AHundredAndTwentyHotfixesAreNotListed) {
  read(desktop(120, 1));
  EXPECT_THAT(itemsOf(form->List3), IsEmpty());
  EXPECT_EQ(summary.HotfixWidth, "3");
}

TEST_F(SummaryLines, TheCardsBehindUnlistedHotfixesAreRead) {
  read(desktop(120, 1));
  EXPECT_EQ(summary.NetCards[0].Name, "Card 1");
}

TEST_F(SummaryLines, TwoRunsListEachHotfixTwice) {
  Lines lines = joined({machine(), hotfixes(10)});
  read(lines);
  read(lines);
  EXPECT_THAT(itemsOf(form->List3),
              ElementsAre("KB1", "KB2", "KB3", "KB4", "KB5", "KB6", "KB7", "KB8", "KB9", "KB10",
                          "KB1", "KB2", "KB3", "KB4", "KB5", "KB6", "KB7", "KB8", "KB9", "KB10"));
}

TEST_F(SummaryLines, ASecondRunHoldsItsOwnLinesOnly) {
  read(machine());
  read({"one", "two"});
  EXPECT_THAT(itemsOf(form->List1), ElementsAre("one", "two"));
}

// --- Texts in pieces and broken texts ---

TEST_F(SummaryLines, OfLineFeedsAloneAreOneShortLine) {
  prints(printed(desktop(12, 2), "\n"));
  form->SysInfo("1");
  EXPECT_EQ(form->List1.count(), 1U);
  EXPECT_EQ(form->ShortText, 1);
  EXPECT_EQ(summary.MbModel, "");
}

TEST_F(SummaryLines, AreTheSameFromReadsOfOneByteAsFromLargeOnes) {
  read(desktop(12, 3));
  const std::string whole = simulation.settings();
  const Lines lines = itemsOf(form->List1);
  simulation.profiles.contents.clear();
  summary = {};
  printsInPieces(printed(desktop(12, 3)), 1);
  form->SysInfo("1");
  EXPECT_EQ(itemsOf(form->List1), lines);
  EXPECT_EQ(simulation.settings(), whole);
}

TEST_F(SummaryLines, AreWholeWhenALineBreakIsSplitOverTwoReadsOf256Bytes) {
  Lines reads;
  form->DosBox.change = [&] { reads.push_back(form->DosBox.text.get()); };
  prints(std::string(255, 'x') + "\r\n" + linesOfBoard(10));
  form->SysInfo("1");
  ASSERT_EQ(reads.front(), std::string(255, 'x') + "\r");
  EXPECT_EQ(form->List1.item(0), std::string(255, 'x'));
  EXPECT_EQ(summary.MbModel, "Board 7");
}

TEST_F(SummaryLines, OfGarbageAreNotRead) {
  std::mt19937 random(11);
  Lines lines(40, std::string(60, '\0'));
  for (std::string& line : lines) {
    for (char& byte : line) byte = static_cast<char>(random() % 256);
  }
  read(lines);
  EXPECT_EQ(form->ShortText, 0);
  EXPECT_EQ(summary.MbModel + summary.HotfixWidth + summary.NetCards[0].Name, "");
  EXPECT_THAT(itemsOf(form->List3), IsEmpty());
}

TEST_F(SummaryLines, AmongGarbageAreRead) {
  Lines lines = desktop(12, 1);
  lines.insert(lines.begin() + 5, std::string("\0\xFF\x80\x01 \t[", 7));
  lines.insert(lines.end() - 4, std::string(300, '\xC3'));
  read(lines);
  EXPECT_EQ(summary.MbModel, "Board 7");
  EXPECT_EQ(form->List3.count(), 12U);
  EXPECT_EQ(summary.NetCards[0].Ip, "192.0.2.1");
}

TEST_F(SummaryLines, AValueWithANulIsStoredWithoutIt) {
  Lines lines(11, "filled");
  lines[3] = "System Model:              Bo" + std::string(1, '\0') + "ard 7";
  read(lines);
  EXPECT_EQ(program.readSetting("SysInfo", "MB Model"), "Board 7");
}

// --- What comes between the lines ---

TEST_F(SummaryLines, EachPieceIsFollowedByAYieldAlsoAnEmptyOne) {
  std::vector<std::size_t> lines;
  atEachYield([&] { lines.push_back(form->List1.count()); });
  prints("\r\none\r\n   \r\ntwo\r\n");
  form->SysInfo("1");
  EXPECT_THAT(lines, ElementsAre(0, 1, 1, 2, 2));
}

TEST_F(SummaryLines, AClickDuringTheToolIsDeliveredBehindTheFirst) {
  std::vector<std::size_t> lines;
  clickDuringTheTool([&] { lines.push_back(form->List1.count()); });
  prints("one\r\ntwo\r\nthree");
  form->SysInfo("1");
  EXPECT_THAT(lines, ElementsAre(1));
}

TEST_F(SummaryLines, AClickBetweenTwoIsDeliveredBetweenThem) {
  std::vector<std::size_t> lines;
  bystander->Command1.click = [&] { lines.push_back(form->List1.count()); };
  prints("one\r\ntwo\r\nthree");
  form->List1.observe([&] {
    if (form->List1.count() == 0) return;
    simulation.loop.after(0, [this] { simulation.desktop.click(bystander->Command1); });
  });
  form->SysInfo("1");
  EXPECT_THAT(lines, ElementsAre(1, 2, 3));
}

TEST_F(SummaryLines, ARunThatStartsBetweenTwoSharesTheList) {
  clickDuringTheTool([&] {
    prints("inner one\r\ninner two");
    form->SysInfo("1");
  });
  prints("outer one\r\nouter two\r\nouter three");
  form->SysInfo("1");
  EXPECT_THAT(itemsOf(form->List1),
              ElementsAre("inner one", "inner two", "outer two", "outer three"));
}

TEST_F(SummaryLines, ARunThatStartsBetweenTwoListsItsHotfixesForBoth) {
  const Lines lines = joined({{"first"}, machine(), hotfixes(10)});
  clickDuringTheTool([&] { read(lines); });
  read(lines);
  // The outer run reads the inner one's lines once more, and then its own, whose numbers
  // start anew while it goes on counting.
  EXPECT_EQ(form->List3.count(), 20U);
}

TEST_F(SummaryLines, TheEndOfTheProgramBetweenTwoEndsTheReading) {
  clickDuringTheTool([&] { bystander->unload(); });
  prints(printed(machine()));
  EXPECT_THROW(form->SysInfo("1"), ProgramEnded);
  EXPECT_EQ(simulation.profiles.writes, 0);
}

}  // namespace
}  // namespace veltrin
