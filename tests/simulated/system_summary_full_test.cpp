// SPDX-License-Identifier: GPL-3.0-or-later
// The full form of the summary of the machine.
#include "simulated/system_summary_run.h"

namespace veltrin {
namespace {

using testing::Each;
using testing::ElementsAre;

// The keys that every run writes, for a machine of which nothing is known.
const char* const kSettingsOfNothing =
    "[SysInfo]\r\n"
    "Info Check=07 Mar 2026\r\n"
    "Win Version=\r\n"
    "OS Version=\r\n"
    "Total Ram=\r\n"
    "Available Ram=\r\n"
    "CPU Num=\r\n"
    "CPU Cores=\r\n"
    "MB Model=\r\n"
    "MB Man=\r\n"
    "Location=\r\n"
    "Bios=\r\n"
    "Boot=\r\n"
    "Installed=\r\n";

const char* const kSettingsOfTheMachine =
    "[SysInfo]\r\n"
    "Info Check=07 Mar 2026\r\n"
    "Win Version=Example Desktop 7\r\n"
    "OS Version=6.1.7601 Service Pack 1 Build 7601\r\n"
    "Total Ram=3,957\r\n"
    "Available Ram=2,046\r\n"
    "CPU Num=2\r\n"
    "CPU Cores=\r\n"
    "MB Model=Board 7\r\n"
    "MB Man=Example Boards\r\n"
    "Location=Dutch (Netherlands)\r\n"
    "Bios=Example Bios A05, 8/10/2025\r\n"
    "Boot=\\Device\\HarddiskVolume1\r\n"
    "Installed=1/30/2026, 3:22:51 PM\r\n";

const char* const kSettingsOfCardOne =
    "Net Card 1=Card 1\r\n"
    "Net Card 1 DHCP=198.51.100.1\r\n"
    "Net Card 1 IP=192.0.2.1\r\n"
    "Net Card 1 Connect=Connection 1\r\n";

const char* const kSettingsOfCardTwo =
    "Net Card 2=Card 2\r\n"
    "Net Card 2 DHCP=198.51.100.2\r\n"
    "Net Card 2 IP=192.0.2.2\r\n"
    "Net Card 2 Connect=Connection 2\r\n";

class FullSummary : public SystemSummaryRun {
 protected:
  // What the memory service tells of.
  void banksAre(const Lines& capacities) {
    std::vector<WmiObject> banks;
    for (const std::string& capacity : capacities) {
      banks.push_back({{{"DeviceLocator", "A" + std::to_string(banks.size())},
                        {"Capacity", capacity},
                        {"Speed", "1333"},
                        {"BankLabel", "BANK " + std::to_string(banks.size())}}});
    }
    simulation.wmi.answers["Select * from Win32_PhysicalMemory"] = banks;
  }

  std::string settingsAfter(const std::string& text) {
    prints(text);
    form->SysInfo("1");
    return simulation.settings();
  }

  std::shared_ptr<DosApp> form = program.keep<DosApp>();
};

// --- The tool ---

TEST_F(FullSummary, RunsTheToolOfTheSystemFolderWithoutArguments) {
  form->SysInfo("1");
  EXPECT_THAT(commandLines(), ElementsAre("C:\\Windows\\System32\\Systeminfo.exe"));
}

TEST_F(FullSummary, DoesNotLookIntoTheOtherFolder) {
  simulation.files.others = {"C:\\Windows\\Sys64WOW\\Systeminfo.exe"};
  form->SysInfo("1");
  EXPECT_THAT(commandLines(), ElementsAre("C:\\Windows\\System32\\Systeminfo.exe"));
}

TEST_F(FullSummary, ReadsTheWindowsFolderAnew) {
  program.start.WinDir = "X:\\Old";
  simulation.environment.variables = {{"WinDir", "D:\\Win"}};
  form->SysInfo("1");
  EXPECT_EQ(program.start.WinDir, "D:\\Win");
  EXPECT_THAT(commandLines(), ElementsAre("D:\\Win\\System32\\Systeminfo.exe"));
}

TEST_F(FullSummary, CollectsTheWholeTextInItsBox) {
  form->DosBox.text = "old";
  printsInPieces("one\r\ntwo\r\n", 3);
  form->SysInfo("1");
  EXPECT_EQ(form->DosBox.text.get(), "one\r\ntwo\r\n");
}

TEST_F(FullSummary, KeepsTheLinesWithTheirBlanksAndLeavesEmptyOnesOut) {
  form->List1.add("old");
  prints("\r\n  one \r\n     \r\n\r\ntwo  three\r\n\tfour\t\r\nfive");
  form->SysInfo("1");
  EXPECT_THAT(itemsOf(form->List1), ElementsAre("  one ", "two  three", "\tfour\t", "five"));
}

TEST_F(FullSummary, IsNeverShownAndLeavesItsPointerAlone) {
  std::vector<MousePointer> seen;
  atEachYield([&] { seen.push_back(form->mousePointer); });
  prints(printed(machine()));
  form->SysInfo("1");
  EXPECT_THAT(simulation.desktop.shown, ElementsAre(bystander.get()));
  EXPECT_THAT(seen, Each(MousePointer::Default));
}

// --- The keys ---

TEST_F(FullSummary, WritesTheKeysInTheirOrder) {
  banksAre({"1073741824", "2147483648", "4294967296", "0"});
  EXPECT_EQ(settingsAfter(printed(desktop(12, 3))),
            std::string(kSettingsOfTheMachine) + kSettingsOfCardOne + kSettingsOfCardTwo +
                "Net Card 3=Card 3\r\n"
                "Net Card 3 DHCP=198.51.100.3\r\n"
                "Net Card 3 IP=192.0.2.3\r\n"
                "Net Card 3 Connect=Connection 3\r\n"
                "Mem Slot 1=Slot 1:   1 GB  Speed: 1333 Mhz   (BANK 0)\r\n"
                "Mem Slot 2=Slot 2:   2 GB  Speed: 1333 Mhz   (BANK 1)\r\n"
                "Mem Slot 3=Slot 3:   4 GB  Speed: 1333 Mhz   (BANK 2)\r\n"
                "Mem Slot 4=Slot 4:   Empty     (BANK 3)\r\n");
}

TEST_F(FullSummary, WritesEachKeyOnce) {
  banksAre({"1073741824"});
  prints(printed(desktop(12, 2)));
  form->SysInfo("1");
  EXPECT_EQ(simulation.profiles.writes, 13 + 8 + 1);
}

TEST_F(FullSummary, NeverWritesTheIdentifier) {
  program.writeSetting("Settings", "OS", "known");
  EXPECT_EQ(settingsAfter(printed(desktop(12, 0))),
            "[Settings]\r\nOS=known\r\n" + std::string(kSettingsOfTheMachine));
  EXPECT_EQ(program.summary.OsName, "12345-678-9012345-67");
}

TEST_F(FullSummary, WithoutCardsWritesNoneOfTheirKeys) {
  EXPECT_EQ(settingsAfter(printed(desktop(12, 0))), kSettingsOfTheMachine);
}

TEST_F(FullSummary, WithOneCardWritesItsKeys) {
  EXPECT_EQ(settingsAfter(printed(desktop(12, 1))),
            std::string(kSettingsOfTheMachine) + kSettingsOfCardOne);
}

TEST_F(FullSummary, WithTwoCardsWritesTheKeysOfBoth) {
  EXPECT_EQ(settingsAfter(printed(desktop(12, 2))),
            std::string(kSettingsOfTheMachine) + kSettingsOfCardOne + kSettingsOfCardTwo);
}

TEST_F(FullSummary, WithFiveCardsWritesTheKeysOfThree) {
  EXPECT_EQ(settingsAfter(printed(desktop(12, 5))), std::string(kSettingsOfTheMachine) +
                                                        kSettingsOfCardOne + kSettingsOfCardTwo +
                                                        "Net Card 3=Card 3\r\n"
                                                        "Net Card 3 DHCP=198.51.100.5\r\n"
                                                        "Net Card 3 IP=192.0.2.5\r\n"
                                                        "Net Card 3 Connect=Connection 5\r\n");
}

TEST_F(FullSummary, TwelveCardsReadAsOne) {
  EXPECT_EQ(settingsAfter(printed(desktop(12, 12))), std::string(kSettingsOfTheMachine) +
                                                         "Net Card 1=Card 1\r\n"
                                                         "Net Card 1 DHCP=198.51.100.12\r\n"
                                                         "Net Card 1 IP=192.0.2.12\r\n"
                                                         "Net Card 1 Connect=Connection 12\r\n");
}

TEST_F(FullSummary, ADisconnectedCardTakesTheDetailsOfTheNextAndTheNextIsWrittenEmpty) {
  const Lines lines =
      joined({machine(), networkCards({{"Wired", "Local Area", "", {}}, usualCard(2)})});
  EXPECT_EQ(settingsAfter(printed(lines)), std::string(kSettingsOfTheMachine) +
                                               "Net Card 1=Wired\r\n"
                                               "Net Card 1 DHCP=198.51.100.2\r\n"
                                               "Net Card 1 IP=192.0.2.2\r\n"
                                               "Net Card 1 Connect=Connection 2\r\n"
                                               "Net Card 2=\r\n"
                                               "Net Card 2 DHCP=\r\n"
                                               "Net Card 2 IP=\r\n"
                                               "Net Card 2 Connect=\r\n");
}

TEST_F(FullSummary, ACountOfCardsThatIsNoNumberWritesNoneOfTheirKeys) {
  const Lines lines =
      joined({machine(), {"Network Card(s):           N/A", "                           [01]: x"}});
  EXPECT_EQ(settingsAfter(printed(lines)), kSettingsOfTheMachine);
  EXPECT_EQ(summary.NetCards[0].Name, "x");
}

TEST_F(FullSummary, AReadingWithoutCardsKeepsThoseOfTheOneBefore) {
  settingsAfter(printed(desktop(12, 1)));
  simulation.profiles.contents.clear();
  EXPECT_EQ(settingsAfter(printed(desktop(12, 0))), kSettingsOfTheMachine);
  EXPECT_EQ(summary.NetCards[0].Name, "Card 1");
}

TEST_F(FullSummary, DatesTheCheckWithTheDayOfItsEnd) {
  constexpr std::int64_t kDay = 24LL * 3600 * 1000;
  writes = std::vector<ToolWrite>{{25 * kDay, printed(machine())}};
  form->SysInfo("1");
  EXPECT_EQ(program.readSetting("SysInfo", "Info Check"), "01 Apr 2026");
}

TEST_F(FullSummary, CollectsTheSameForEveryMode) {
  for (const Loose& mode :
       {Loose("0"), Loose("1"), Loose("3"), Loose("other"), Loose(1), Loose()}) {
    simulation.profiles.contents.clear();
    prints(printed(desktop(12, 1)));
    form->SysInfo(mode);
    EXPECT_EQ(simulation.settings(), std::string(kSettingsOfTheMachine) + kSettingsOfCardOne)
        << mode.text();
  }
}

// --- Memory ---

TEST_F(FullSummary, AsksForTheMemoryBanksOnce) {
  banksAre({"1073741824"});
  form->SysInfo("1");
  EXPECT_THAT(simulation.wmi.queries, ElementsAre("Select * from Win32_PhysicalMemory"));
}

TEST_F(FullSummary, AServiceThatDoesNotAnswerLeavesTheSlotsAlone) {
  summary.MemSlot[1] = "old";
  EXPECT_EQ(settingsAfter(""), std::string(kSettingsOfNothing) + "Mem Slot 2=old\r\n");
}

TEST_F(FullSummary, SlotsAreFilledOnceInTheLifeOfTheProgram) {
  banksAre({"1073741824"});
  form->getmem();
  banksAre({"2147483648"});
  form->getmem();
  EXPECT_THAT(summary.MemSlot, ElementsAre("Slot 1:   1 GB  Speed: 1333 Mhz   (BANK 0)",
                                           "Slot 2:   2 GB  Speed: 1333 Mhz   (BANK 0)", "", ""));
}

TEST_F(FullSummary, FullSlotsStayAsTheyAre) {
  banksAre({"1073741824", "1073741824", "1073741824", "1073741824"});
  form->getmem();
  const auto first = summary.MemSlot;
  banksAre({"2147483648"});
  form->getmem();
  EXPECT_EQ(summary.MemSlot, first);
}

// --- Fields that it adjusts ---

TEST_F(FullSummary, CutsTheProcessorsToTheirFirstCharacter) {
  Lines lines(11, "filled");
  lines[2] = "Processor(s):              12 Processor(s) Installed.";
  prints(printed(lines));
  form->SysInfo("1");
  EXPECT_EQ(summary.CpuNum, "1");
}

TEST_F(FullSummary, CutsTheProcessorsOfAnEarlierReadingToo) {
  summary.CpuNum = "4 Processor(s) Installed.";
  form->SysInfo("1");
  EXPECT_EQ(program.readSetting("SysInfo", "CPU Num"), "4");
}

TEST_F(FullSummary, TakesTheLocationBehindTheFirstSemicolon) {
  Lines lines(11, "filled");
  lines[2] = "Input Locale:              nl;Dutch; a second";
  prints(printed(lines));
  form->SysInfo("1");
  EXPECT_EQ(summary.Location, "Dutch; a second");
}

TEST_F(FullSummary, TakesALocationWithoutASemicolonWhole) {
  Lines lines(11, "filled");
  lines[2] = "Input Locale:              Dutch (Netherlands)";
  prints(printed(lines));
  form->SysInfo("1");
  EXPECT_EQ(summary.Location, "Dutch (Netherlands)");
}

TEST_F(FullSummary, ASemicolonInFrontIsTakenOff) {
  summary.Location = ";Dutch";
  form->SysInfo("1");
  EXPECT_EQ(summary.Location, "Dutch");
}

TEST_F(FullSummary, ASemicolonAtTheEndLeavesNoLocation) {
  Lines lines(11, "filled");
  lines[2] = "Input Locale:              nl;";
  prints(printed(lines));
  form->SysInfo("1");
  EXPECT_EQ(summary.Location, "");
}

TEST_F(FullSummary, ReadsTheLabelsThatTheShortFormLeavesAlone) {
  prints(printed(
      joined({machine(), {"System Up Time:            3 Days, 4 Hours, 5 Minutes, 6 Seconds"}})));
  form->SysInfo("1");
  EXPECT_EQ(summary.BootTime, "3/7/2026, 8:01:12 AM");
  EXPECT_EQ(summary.UpTime, "3 Days, 4 Hours, 5 Minutes, 6 Seconds");
  EXPECT_EQ(summary.PageFile, "C:\\pagefile.sys");
  EXPECT_EQ(summary.Domain, "WORKGROUP");
}

}  // namespace
}  // namespace veltrin
