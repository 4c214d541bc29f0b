// SPDX-License-Identifier: GPL-3.0-or-later
// How the report asks the service, and what it does with answers that fail.
#include "frame/result_file.h"
#include "simulated/catalogue_run.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using Asked = SimulatedWmi::Asked;

const char* const kKitchen = "winmgmts:\\\\KITCHEN\\root\\cimv2";
const char* const kHere = "winmgmts: {impersonationLevel=impersonate}!\\\\.\\root\\cimv2";

// A stream that counts how often it is closed, and may refuse it.
class CountingStream : public TextStream {
 public:
  CountingStream(int& closes, bool refuses) : closes_(closes), refuses_(refuses) {}
  void Write(const std::string& /*text*/) override {}
  void Close() override {
    ++closes_;
    if (refuses_) throw StatementFailed("Not open");
  }

 private:
  int& closes_;
  bool refuses_;
};

class ReportAnswers : public CatalogueRun {
 protected:
  void fail(const std::string& query) { simulation.wmi.answers.erase(query); }

  // So many events.
  void logOf(std::size_t count) {
    answer("Select * from Win32_NTLogEvent",
           std::vector<WmiObject>(count, {{{"Category", 1}, {"EventCode", 2}, {"Message", "m"}}}));
    tick({ReportBox::Errors});
  }
  static ReportText withEvents(std::size_t count) {
    ReportText lines{kGap, headingLine("Windows Errors", 2)};
    for (std::size_t number = 0; number < count; ++number) {
      lines.push_back(boldLine("Category: 1"));
      lines.push_back(plainLine("    EventCode: 2"));
      lines.push_back(plainLine("    Message: m"));
    }
    return behind(lines);
  }
};

// --- Connections ---

TEST_F(ReportAnswers, EachQueryHasAConnectionOfItsOwn) {
  tick({ReportBox::Video, ReportBox::Software, ReportBox::Users});
  press();
  EXPECT_THAT(simulation.wmi.asked,
              ElementsAre(Asked{kKitchen, "Select * from Win32_PhysicalMemory", "48"},
                          Asked{kKitchen, "Select * from Win32_videocontroller", "48"},
                          Asked{kKitchen, "Select * from Win32_DesktopMonitor", "48"},
                          Asked{kHere, "Select * from Win32_Product", "none"},
                          Asked{kKitchen, "Select * from Win32_Account", "48"}));
  EXPECT_EQ(simulation.wmi.connections, 5);
}

TEST_F(ReportAnswers, TheMachineIsTheOneOfTheWindowsOpening) {
  simulation.environment.variables["Computername"] = "OTHER";
  tick({ReportBox::Users});
  press();
  EXPECT_THAT(simulation.wmi.asked,
              ElementsAre(Asked{kKitchen, "Select * from Win32_PhysicalMemory", "48"},
                          Asked{kKitchen, "Select * from Win32_Account", "48"}));
}

TEST_F(ReportAnswers, WithoutAConnectionNothingIsAskedAndHeadingsPrint) {
  simulation.wmi.silent = {kKitchen};
  tick({ReportBox::Video, ReportBox::System});
  EXPECT_EQ(press(), joinedLines({unknownSystem(),
                                  {kGap, headingLine("Video Card", 4), headingLine("Monitor", 23),
                                   kGap, headingLine("System", 35), kGap}}));
  EXPECT_TRUE(simulation.wmi.asked.empty());
}

// The connection that was made last stays when the next one fails.
TEST_F(ReportAnswers, BehindTheSoftwareTheConnectionToThisMachineIsThere) {
  simulation.wmi.silent = {kKitchen};
  answer("Select * from Win32_Account", {{{{"Caption", "owner"}}}});
  tick({ReportBox::Drivers, ReportBox::Software, ReportBox::Users});
  EXPECT_EQ(press(), behind({kGap, headingLine("System Drivers", 36), kGap,
                             headingLine("Installed Software", 36), kGap, headingLine("Users", 2),
                             boldLine("owner")}));
  EXPECT_THAT(simulation.wmi.asked, ElementsAre(Asked{kHere, "Select * from Win32_Product", "none"},
                                                Asked{kHere, "Select * from Win32_Account", "48"}));
}

// --- Answers that fail ---

TEST_F(ReportAnswers, AFailedQueryWalksTheAnswerBeforeOnceMoreInEverySection) {
  simulation.wmi.answers.clear();
  const WmiObject cpu{{{"Name", "N"}, {"Caption", "C"}, {"Description", "D"}, {"Status", "S"}}};
  answer("Select * from Win32_Processor", {cpu, {{{"Name", "N2"}}}});
  for (CheckBox& box : window->Showme) box.value = kChecked;
  window->Showme[static_cast<std::size_t>(ReportBox::HardDrives)].value = kUnchecked;
  window->Showme[static_cast<std::size_t>(ReportBox::Startup)].value = kUnchecked;
  EXPECT_EQ(press(),
            joinedLines(
                {unknownSystem(),
                 {kGap, headingLine("Processors", 1), boldLine("Number of CPUs:      Cores: 4"),
                  boldLine("Name: N"), plainLine("    Description: D"), boldLine("Name: N2"),
                  headingLine("Cache", 9), plainLine("    Status: S")},
                 {kGap, headingLine("Physical Memory", 20), boldLine("Total Memory: MB  Free: MB")},
                 {kGap, headingLine("MotherBoard", 20), plainLine(" "), plainLine("    "),
                  boldLine("   Bios Version: "), boldLine("   Slots:"), boldLine("HD Controller:"),
                  plainLine("    C"), plainLine("       Name: N"), plainLine("       Status: S"),
                  plainLine("       Name: N2"), boldLine("Floppy Controller:"), boldLine("   C")},
                 {kGap, headingLine("Video Card", 4), boldLine("C "), headingLine("Monitor", 23),
                  boldLine("D"), plainLine("    C")},
                 {kGap, headingLine("Sound", 33), plainLine("C"), plainLine("    N"),
                  plainLine("    N2"), headingLine("Keyboard", 19), boldLine("N"), boldLine("N2"),
                  headingLine("Mouse - Pointer", 24), boldLine("D"), headingLine("Printer", 29),
                  boldLine("D"), plainLine("    Name: N"), plainLine("    Name: N2"),
                  headingLine("Net Card", 6), headingLine("USB", 34), boldLine("D"),
                  headingLine("PnP Signed", 0), headingLine("D", 0)},
                 {kGap, headingLine("System", 35), kGap},
                 {kGap, headingLine("DeskTOP", 10), plainLine("D"), plainLine("Name: N "),
                  plainLine("Name: N2 ")},
                 {kGap, headingLine("System Drivers", 36), plainLine("N"), plainLine("    Name: C"),
                  plainLine("N2")},
                 {kGap, headingLine("Installed Software", 36), boldLine("N"), boldLine("N2")},
                 {kGap, headingLine("Users", 2), boldLine("C"), plainLine("    Description: D"),
                  plainLine("    Name: N"), plainLine("    Name: N2")},
                 {kGap, headingLine("HOT Fixes", 0)},
                 {kGap, headingLine("Windows Errors", 2)}}));
  EXPECT_EQ(simulation.wmi.taken["Select * from Win32_Processor"], 2U);
}

TEST_F(ReportAnswers, AFailedQueryOfTheStartupWalksTheAnswerBeforeOnceMore) {
  fail("Select * from Win32_StartupCommand");
  answer("Select * from Win32_Desktop", {{{{"Caption", "C"}}}});
  tick({ReportBox::Desktop, ReportBox::Startup});
  EXPECT_EQ(press(), behind({kGap, headingLine("DeskTOP", 10), kGap, headingLine("Start UP", 36),
                             plainLine("Name: C"), plainLine("    Caption: C"), kGap,
                             headingLine("Running Processes", 13), kGap, kGap,
                             headingLine("User Processes anf Threads", 13)}));
}

TEST_F(ReportAnswers, TheBoardsAnswerIsTheOneBeforeTheSlots) {
  fail("Select * from Win32_SystemSlot");
  answer("Select * from Win32_BaseBoard", {{{{"SlotDesignation", "board"}}}});
  tick({ReportBox::Board});
  EXPECT_EQ(press(),
            before({kGap, headingLine("MotherBoard", 20), plainLine(" "), plainLine("    "),
                    boldLine("   Bios Version: "), boldLine("   Slots:"), plainLine("    board"),
                    boldLine("HD Controller:"), boldLine("Floppy Controller:")}));
}

TEST_F(ReportAnswers, AnEmptyAnswerIsTheOneBeforeAsWell) {
  answer("Select * from Win32_videocontroller", {{{{"Caption", "C"}}}});
  answer("Select * from Win32_DesktopMonitor", {});
  fail("Select * from Win32_SoundDevice");
  tick({ReportBox::Video, ReportBox::Peripherals});
  EXPECT_EQ(press(), before({kGap, headingLine("Video Card", 4), boldLine("C "),
                             headingLine("Monitor", 23), kGap, headingLine("Sound", 33),
                             headingLine("Keyboard", 19), headingLine("Mouse - Pointer", 24),
                             headingLine("Printer", 29), headingLine("Net Card", 6),
                             headingLine("USB", 34), headingLine("PnP Signed", 0)}));
}

TEST_F(ReportAnswers, OfAnAnswerThatBrokeOffItsFirstObjectsAreWalkedOnceMore) {
  answer("Select * from Win32_videocontroller", {{{{"Caption", "C1"}}}, {{{"Caption", "C2"}}}});
  simulation.wmi.breaks["Select * from Win32_videocontroller"] = 1;
  fail("Select * from Win32_DesktopMonitor");
  tick({ReportBox::Video});
  EXPECT_EQ(press(), before({kGap, headingLine("Video Card", 4), boldLine("C1 "),
                             headingLine("Monitor", 23), plainLine("    C1")}));
}

TEST_F(ReportAnswers, TheComputersRoutineHasAnAnswerOfItsOwn) {
  answer("Select * from Win32_PnPSignedDriver", {{{{"Caption", "driver"}}}});
  answer("Select * from Win32_ComputerSystem", {{{{"Name", "computer"}}}});
  fail("Select * from Win32_Desktop");
  tick({ReportBox::Peripherals, ReportBox::System, ReportBox::Desktop});
  const ReportText report = press();
  const ReportText end(report.end() - 6, report.end());
  EXPECT_EQ(end,
            (ReportText{headingLine("System", 35), plainLine("    AdminPassword: "),
                        plainLine("    Name: computer"), kGap, kGap, headingLine("DeskTOP", 10)}));
}

TEST_F(ReportAnswers, TheMemoryBanksAreNoAnswerOfTheReport) {
  answer("Select * from Win32_PhysicalMemory", {{{{"Caption", "bank"}}}});
  fail("Select * from Win32_Account");
  tick({ReportBox::Users});
  EXPECT_EQ(press(), behind({kGap, headingLine("Users", 2)}));
}

TEST_F(ReportAnswers, AReportBeginsWithoutTheAnswersOfTheOneBefore) {
  answer("Select * from Win32_Account", {{{{"Caption", "owner"}}}});
  tick({ReportBox::Users});
  press();
  fail("Select * from Win32_Account");
  EXPECT_EQ(press(), behind({kGap, headingLine("Users", 2)}));
}

TEST_F(ReportAnswers, TheComputersRoutineBeginsWithoutTheAnswerOfTheReportBefore) {
  answer("Select * from Win32_ComputerSystem", {{{{"Name", "computer"}}}});
  tick({ReportBox::System});
  press();
  fail("Select * from Win32_ComputerSystem");
  EXPECT_EQ(press(), between({headingLine("System", 35)}));
}

TEST_F(ReportAnswers, MemoryBanksBeforeTheBreakFillTheirSlots) {
  const WmiObject bank{
      {{"DeviceLocator", "A"}, {"Capacity", "1073741824"}, {"Speed", 1}, {"BankLabel", "b"}}};
  answer("Select * from Win32_PhysicalMemory", {bank, bank, bank});
  simulation.wmi.breaks["Select * from Win32_PhysicalMemory"] = 2;
  press();
  EXPECT_THAT(summary.MemSlot, ElementsAre("Slot 1:   1 GB  Speed: 1 Mhz   (b)",
                                           "Slot 2:   1 GB  Speed: 1 Mhz   (b)", "", ""));
}

// --- Events ---

TEST_F(ReportAnswers, AnEventLogOf500EventsPrints201AndTakesNoMore) {
  logOf(500);
  EXPECT_EQ(press(), withEvents(201));
  EXPECT_EQ(simulation.wmi.taken["Select * from Win32_NTLogEvent"], 201U);
}

TEST_F(ReportAnswers, AnEventLogOf200EventsPrintsThemAll) {
  logOf(200);
  EXPECT_EQ(press(), withEvents(200));
}

TEST_F(ReportAnswers, EventsThatTellNothingCountAllTheSame) {
  logOf(0);
  std::vector<WmiObject> events(201);
  events.push_back({{{"Message", "too late"}}});
  answer("Select * from Win32_NTLogEvent", events);
  EXPECT_EQ(press(), withEvents(0));
}

TEST_F(ReportAnswers, BehindTheEventsTheResultThatIsOpenIsClosed) {
  int closes = 0;
  program.shared<ResultValues>().ResultStream = std::make_unique<CountingStream>(closes, false);
  logOf(1);
  EXPECT_EQ(press(), withEvents(1));
  EXPECT_EQ(closes, 1);
}

TEST_F(ReportAnswers, AResultThatCannotBeClosedDoesNotMatter) {
  int closes = 0;
  program.shared<ResultValues>().ResultStream = std::make_unique<CountingStream>(closes, true);
  logOf(1);
  EXPECT_EQ(press(), withEvents(1));
  EXPECT_EQ(closes, 1);
}

TEST_F(ReportAnswers, WithoutTheEventsNoResultIsClosed) {
  int closes = 0;
  program.shared<ResultValues>().ResultStream = std::make_unique<CountingStream>(closes, false);
  tick({ReportBox::Hotfixes, ReportBox::Users});
  press();
  EXPECT_EQ(closes, 0);
  program.shared<ResultValues>().ResultStream.reset();
}

}  // namespace
}  // namespace veltrin
