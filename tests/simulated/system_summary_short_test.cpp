// SPDX-License-Identifier: GPL-3.0-or-later
// The short form of the summary of the machine.
#include <random>

#include "frame/starter.h"
#include "simulated/system_summary_run.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const char* const kSettingsOfTheMachine =
    "[SysInfo]\r\n"
    "Info Check=07 Mar 2026\r\n"
    "Win Version=Example Desktop 7\r\n"
    "OS Version=6.1.7601 Service Pack 1 Build 7601\r\n"
    "Total Ram=3,957\r\n"
    "Available Ram=2,046\r\n"
    "CPU Num=2 Processor(s) Installed.\r\n"
    "CPU Cores=\r\n"
    "MB Model=Board 7\r\n"
    "MB Man=Example Boards\r\n"
    "Location=nl;Dutch (Netherlands)\r\n"
    "Bios=Example Bios A05, 8/10/2025\r\n"
    "Boot=\\Device\\HarddiskVolume1\r\n"
    "Installed=1/30/2026, 3:22:51 PM\r\n"
    "[Settings]\r\n"
    "OS=12345-678-9012345-67\r\n";

class ShortSummary : public SystemSummaryRun {
 protected:
  std::shared_ptr<DosFrm> form = program.keep<DosFrm>();
};

// --- The tool ---

TEST_F(ShortSummary, RunsTheToolOfTheSystemFolderWithoutArguments) {
  form->getinfo();
  EXPECT_THAT(commandLines(), ElementsAre("C:\\Windows\\System32\\Systeminfo.exe"));
}

TEST_F(ShortSummary, PrefersTheToolOfTheOtherFolderWhereItIs) {
  simulation.files.others = {"C:\\Windows\\Sys64WOW\\Systeminfo.exe"};
  form->getinfo();
  EXPECT_THAT(commandLines(), ElementsAre("C:\\Windows\\Sys64WOW\\Systeminfo.exe"));
}

TEST_F(ShortSummary, LooksForTheToolItselfAndNotForItsFolder) {
  simulation.files.others = {"C:\\Windows\\Sys64WOW"};
  form->getinfo();
  EXPECT_THAT(commandLines(), ElementsAre("C:\\Windows\\System32\\Systeminfo.exe"));
}

TEST_F(ShortSummary, ReadsTheWindowsFolderAnew) {
  program.start.WinDir = "X:\\Old";
  simulation.environment.variables["windir"] = "D:\\Win";
  form->getinfo();
  EXPECT_EQ(program.start.WinDir, "D:\\Win");
  EXPECT_THAT(commandLines(), ElementsAre("D:\\Win\\System32\\Systeminfo.exe"));
}

TEST_F(ShortSummary, WithoutAWindowsFolderThePathBeginsAtTheRoot) {
  simulation.environment.variables.erase("windir");
  form->getinfo();
  EXPECT_THAT(commandLines(), ElementsAre("\\System32\\Systeminfo.exe"));
}

TEST_F(ShortSummary, CollectsTheWholeTextInItsBox) {
  form->dosbox.text = "old";
  printsInPieces("one\r\ntwo\r\n", 3);
  form->getinfo();
  EXPECT_EQ(form->dosbox.text.get(), "one\r\ntwo\r\n");
}

TEST_F(ShortSummary, KeepsTheLinesWithoutTheirBlanksAndLeavesEmptyOnesOut) {
  prints("\r\n  one \r\n     \r\n\r\ntwo  three\r\n\tfour\t\r\nfive");
  form->getinfo();
  EXPECT_THAT(itemsOf(form->Buffer), ElementsAre("one", "two  three", "\tfour\t", "five"));
}

// --- What it stores ---

TEST_F(ShortSummary, WritesTheKeysInTheirOrder) {
  prints(printed(desktop(12, 2)));
  form->getinfo();
  EXPECT_EQ(simulation.settings(), kSettingsOfTheMachine);
}

TEST_F(ShortSummary, WritesEachKeyOnce) {
  prints(printed(desktop(12, 2)));
  form->getinfo();
  EXPECT_EQ(simulation.profiles.writes, 14);
}

TEST_F(ShortSummary, FillsTheSummaryOfTheProgram) {
  prints(printed(machine()));
  form->getinfo();
  EXPECT_EQ(program.summary.OsName, "12345-678-9012345-67");
  EXPECT_EQ(program.summary.MbModel, "Board 7");
  EXPECT_EQ(summary.TotalRam, "3,957");
}

TEST_F(ShortSummary, WritesTheNumberOfCoresThatOthersFoundOut) {
  summary.CpuCores = "4";
  prints(printed(machine()));
  form->getinfo();
  EXPECT_EQ(program.readSetting("SysInfo", "CPU Cores"), "4");
}

TEST_F(ShortSummary, DatesTheCheckWithTheDayOfItsEnd) {
  constexpr std::int64_t kDay = 24LL * 3600 * 1000;
  writes = std::vector<ToolWrite>{{3 * kDay, printed(machine())}};
  form->getinfo();
  EXPECT_EQ(program.readSetting("SysInfo", "Info Check"), "10 Mar 2026");
}

TEST_F(ShortSummary, KeepsTheWholeTextOfTheProcessors) {
  prints(printed(machine()));
  form->getinfo();
  EXPECT_EQ(summary.CpuNum, "2 Processor(s) Installed.");
}

TEST_F(ShortSummary, KeepsTheWholeLocationWithItsSemicolon) {
  prints(printed(machine()));
  form->getinfo();
  EXPECT_EQ(summary.Location, "nl;Dutch (Netherlands)");
}

TEST_F(ShortSummary, LeavesTheLabelsOfTheFullFormAlone) {
  prints(printed(desktop(12, 2)));
  form->getinfo();
  EXPECT_EQ(summary.BootTime + summary.UpTime + summary.PageFile + summary.Domain +
                summary.HotfixWidth + summary.NetCards[0].Name,
            "");
}

TEST_F(ShortSummary, KeepsFieldsOfWhichTheTextDoesNotTell) {
  summary.MbMan = "Old Boards";
  prints(linesOfBoard(11));
  form->getinfo();
  EXPECT_EQ(program.readSetting("SysInfo", "MB Man"), "Old Boards");
}

TEST_F(ShortSummary, ASizeWithoutItsUnitKeepsTheOldOne) {
  summary.TotalRam = "old";
  Lines lines(11, "filled");
  lines[5] = "Total Physical Memory:     12";
  prints(printed(lines));
  form->getinfo();
  EXPECT_EQ(program.readSetting("SysInfo", "Total Ram"), "old");
}

// --- Which lines it reads ---

TEST_F(ShortSummary, TenLinesChangeAndWriteNothing) {
  summary.MbModel = "old";
  prints(linesOfBoard(10));
  form->getinfo();
  EXPECT_EQ(summary.MbModel, "old");
  EXPECT_EQ(simulation.profiles.writes, 0);
}

TEST_F(ShortSummary, NineLinesChangeAndWriteNothing) {
  prints(linesOfBoard(9));
  form->getinfo();
  EXPECT_EQ(summary.MbModel, "");
  EXPECT_EQ(simulation.profiles.writes, 0);
}

TEST_F(ShortSummary, ElevenLinesAreRead) {
  prints(linesOfBoard(11));
  form->getinfo();
  EXPECT_EQ(summary.MbModel, "Board 7");
  EXPECT_EQ(simulation.profiles.writes, 14);
}

TEST_F(ShortSummary, BlankLinesDoNotCount) {
  prints("\r\n   \r\n" + linesOfBoard(10) + "\r\n");
  form->getinfo();
  EXPECT_EQ(simulation.profiles.writes, 0);
}

TEST_F(ShortSummary, ReadsALabelBehindAnyIndent) {
  Lines lines(11, "filled");
  lines[3] = "      System Model:              Board 7";
  prints(printed(lines));
  form->getinfo();
  EXPECT_EQ(summary.MbModel, "Board 7");
}

TEST_F(ShortSummary, LosesTheBlanksAtTheEndOfAValue) {
  Lines lines(11, "filled");
  lines[3] = "System Model:              Board 7   ";
  prints(printed(lines));
  form->getinfo();
  EXPECT_EQ(summary.MbModel, "Board 7");
}

TEST_F(ShortSummary, ALabelWithoutAValueKeepsTheOldOne) {
  summary.MbModel = "old";
  Lines lines(11, "filled");
  lines[3] = "System Model:              ";
  prints(printed(lines));
  form->getinfo();
  EXPECT_EQ(summary.MbModel, "old");
}

TEST_F(ShortSummary, ALabelWithFewerBlanksIsNotMatched) {
  Lines lines(11, "filled");
  lines[3] = "OS Name:                  Example Desktop 7";
  lines[4] = "OS Version: 6.1";
  prints(printed(lines));
  form->getinfo();
  EXPECT_EQ(summary.WinVersion, "");
  EXPECT_EQ(summary.OsVersion, "");
}

TEST_F(ShortSummary, OfTwoLinesWithOneLabelTheLastCounts) {
  Lines lines(11, "filled");
  lines[3] = "System Model:              Board 7";
  lines[7] = "System Model:              Board 8";
  prints(printed(lines));
  form->getinfo();
  EXPECT_EQ(summary.MbModel, "Board 8");
}

TEST_F(ShortSummary, ATextWithLineFeedsAloneIsOneLine) {
  prints(printed(desktop(12, 2), "\n"));
  form->getinfo();
  EXPECT_EQ(form->Buffer.count(), 1U);
  EXPECT_EQ(simulation.profiles.writes, 0);
}

TEST_F(ShortSummary, ReadsTheSameFromReadsOfOneByte) {
  printsInPieces(printed(desktop(12, 2)), 1);
  form->getinfo();
  EXPECT_EQ(simulation.settings(), kSettingsOfTheMachine);
}

TEST_F(ShortSummary, ReadsTheSameWhenALineBreakIsSplitOverTwoReadsOf256Bytes) {
  const std::string text = "\r\n" + std::string(251, 'x') + "\r\n\r\n";
  ASSERT_EQ(text.substr(253, 4), "\r\n\r\n");
  const std::string whole = text + printed(desktop(12, 2));
  Lines reads;
  form->dosbox.change = [&] { reads.push_back(form->dosbox.text.get()); };
  prints(whole);
  form->getinfo();
  ASSERT_EQ(reads.front().substr(253), "\r\n\r");
  EXPECT_EQ(form->Buffer.item(0), std::string(251, 'x'));
  EXPECT_EQ(simulation.settings(), kSettingsOfTheMachine);
}

TEST_F(ShortSummary, GarbageIsNotRead) {
  std::mt19937 random(7);
  std::string garbage(5000, '\0');
  for (char& byte : garbage) byte = static_cast<char>(random() % 256);
  prints(garbage);
  form->getinfo();
  EXPECT_EQ(form->dosbox.text.get(), garbage);
  EXPECT_EQ(simulation.profiles.writes, 0);
}

TEST_F(ShortSummary, GarbageBetweenTheLinesIsPassedOver) {
  Lines lines = desktop(12, 2);
  lines.insert(lines.begin() + 5, std::string("\0\xFF\x80\x01 \t[", 7));
  lines.insert(lines.begin(), std::string(300, '\xC3'));
  prints(printed(lines));
  form->getinfo();
  EXPECT_EQ(simulation.settings(), kSettingsOfTheMachine);
}

// --- Missing tool ---

TEST_F(ShortSummary, AMissingToolIsToldAndChangesNothing) {
  summary.OsName = "old";
  writes = std::nullopt;
  form->getinfo();
  ASSERT_EQ(simulation.desktop.messages.size(), 1U);
  EXPECT_EQ(simulation.desktop.messages[0].text, "File or command not found");
  EXPECT_EQ(summary.OsName, "old");
  EXPECT_EQ(simulation.profiles.writes, 0);
  EXPECT_TRUE(form->mousePointer == MousePointer::Default);
}

TEST_F(ShortSummary, ARunBehindTheMessageOfAMissingToolDoesNotDisturbTheOther) {
  simulation.desktop.answers = {{kAnswerOk, 500}, {kAnswerOk, 100}};
  writes = std::nullopt;
  simulation.loop.after(100, [this] { form->getinfo(); });
  form->getinfo();
  EXPECT_EQ(simulation.processes.starts.size(), 2U);
  EXPECT_EQ(simulation.profiles.writes, 0);
}

// --- The window and its yields ---

TEST_F(ShortSummary, TellsThatItLoads) { EXPECT_EQ(form->Label1.caption.get(), "Loading Data"); }

TEST_F(ShortSummary, IsNeverShown) {
  prints(printed(machine()));
  form->getinfo();
  EXPECT_THAT(simulation.desktop.shown, ElementsAre(bystander.get()));
}

TEST_F(ShortSummary, ShowsTheHourglassWhileTheToolRuns) {
  bool seen = false;
  onStart = [&] { seen = form->mousePointer == MousePointer::Hourglass; };
  form->getinfo();
  EXPECT_TRUE(seen);
}

TEST_F(ShortSummary, ShowsTheHourglassUntilAllLinesAreRead) {
  std::vector<MousePointer> seen;
  atEachYield([&] { seen.push_back(form->mousePointer); });
  prints("one\r\ntwo");
  form->getinfo();
  EXPECT_THAT(seen, ElementsAre(MousePointer::Hourglass, MousePointer::Hourglass));
}

TEST_F(ShortSummary, EndsTheHourglassBehindAWholeText) {
  prints(printed(machine()));
  form->getinfo();
  EXPECT_TRUE(form->mousePointer == MousePointer::Default);
}

TEST_F(ShortSummary, EndsTheHourglassBehindAShortText) {
  prints("one");
  form->getinfo();
  EXPECT_TRUE(form->mousePointer == MousePointer::Default);
}

TEST_F(ShortSummary, YieldsBehindEachPieceAlsoAnEmptyOne) {
  std::vector<std::size_t> lines;
  atEachYield([&] { lines.push_back(form->Buffer.count()); });
  prints("\r\none\r\n   \r\ntwo\r\n");
  form->getinfo();
  EXPECT_THAT(lines, ElementsAre(0, 1, 1, 2, 2));
}

TEST_F(ShortSummary, AClickDuringTheToolIsDeliveredBehindTheFirstLine) {
  std::vector<std::size_t> lines;
  clickDuringTheTool([&] { lines.push_back(form->Buffer.count()); });
  prints("one\r\ntwo\r\nthree");
  form->getinfo();
  EXPECT_THAT(lines, ElementsAre(1));
}

TEST_F(ShortSummary, AClickBetweenTwoLinesIsDeliveredBetweenThem) {
  std::vector<std::size_t> lines;
  bystander->Command1.click = [&] { lines.push_back(form->Buffer.count()); };
  form->Buffer.observe(
      [&] { simulation.loop.after(0, [this] { simulation.desktop.click(bystander->Command1); }); });
  prints("one\r\ntwo\r\nthree");
  form->getinfo();
  EXPECT_THAT(lines, ElementsAre(1, 2, 3));
}

TEST_F(ShortSummary, TheEndOfTheProgramBetweenTwoLinesEndsTheReading) {
  clickDuringTheTool([&] { bystander->unload(); });
  prints(printed(machine()));
  EXPECT_THROW(form->getinfo(), ProgramEnded);
  EXPECT_EQ(simulation.profiles.writes, 0);
}

// --- Two runs ---

TEST_F(ShortSummary, ASecondRunStartsWithAnEmptyBoxAndKeepsTheLinesOfTheFirst) {
  prints("one\r\n");
  form->getinfo();
  prints("two\r\n");
  form->getinfo();
  EXPECT_EQ(form->dosbox.text.get(), "two\r\n");
  EXPECT_THAT(itemsOf(form->Buffer), ElementsAre("one", "two"));
}

TEST_F(ShortSummary, LinesOfTwoShortRunsCountTogether) {
  prints(linesOfBoard(10));
  form->getinfo();
  prints("one\r\n");
  form->getinfo();
  EXPECT_EQ(program.readSetting("SysInfo", "MB Model"), "Board 7");
}

// --- At the start of the program ---

TEST_F(ShortSummary, TheProgramCollectsItInTheDefaultWindow) {
  prints(printed(desktop(12, 2)));
  program.getinfo();
  EXPECT_EQ(form->Buffer.item(0), "Host Name:                 KITCHEN");
  EXPECT_EQ(simulation.settings(), kSettingsOfTheMachine);
}

TEST_F(ShortSummary, TheFirstStartCollectsIt) {
  prints(printed(desktop(12, 2)));
  program.show<starter>();
  EXPECT_EQ(program.readSetting("Settings", "OS"), "12345-678-9012345-67");
}

TEST_F(ShortSummary, AStartThatFindsTheIdentifierDoesNotCollectIt) {
  program.writeSetting("Settings", "OS", "known");
  prints(printed(desktop(12, 2)));
  program.show<starter>();
  EXPECT_THAT(commandLines(), IsEmpty());
}

}  // namespace
}  // namespace veltrin
