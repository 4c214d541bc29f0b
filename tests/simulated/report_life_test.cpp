// SPDX-License-Identifier: GPL-3.0-or-later
// Reports one behind the other, one within another, and windows that are closed meanwhile.
#include "simulated/catalogue_run.h"

namespace veltrin {
namespace {

using testing::Contains;
using testing::IsEmpty;
using testing::Not;

class ReportLife : public CatalogueRun {
 protected:
  ReportLife() { prints("one\r\ntwo\r\nthree\r\n"); }

  // What happens while the tool of the run runs, one thing behind the other; it waits for the
  // yields.
  void inTheYields(const std::vector<std::function<void()>>& actions) {
    simulation.loop.after(kToolTime / 2, [this, actions] {
      for (const auto& action : actions) simulation.loop.gate().post(action);
    });
  }
  void closeInTheRun() {
    simulation.loop.after(kToolTime / 2, [this] { simulation.desktop.closeWindow(*window); });
  }

  ReportText withHotfixes(const ReportText& hotfixes) const {
    return joinedLines({known(), {kGap, kGap}, {kGap, headingLine("HOT Fixes", 0)}, hotfixes});
  }

  // What is known of the system behind the text of one line.
  static ReportText known() {
    return {headingLine("Operating System", 26),
            boldLine("OS: Example Desktop 7   6.1.7601 Service Pack 1 Build 7601"),
            plainLine("   Installed: 1/30/2026, 3:22:51 PM   BootTime: 3/7/2026, 8:01:12 AM"),
            plainLine("   Product ID: 12345-678-9012345-67")};
  }

  // Hotfixes from the first of the list on.
  static ReportText numbered(const std::vector<std::string>& names) {
    ReportText lines;
    for (const std::string& name : names) {
      lines.push_back(plainLine("HotFix" + std::to_string(lines.size() + 1) + ": " + name));
    }
    return lines;
  }
};

const std::vector<std::string> kTenNames{"KB1", "KB2", "KB3", "KB4", "KB5",
                                         "KB6", "KB7", "KB8", "KB9", "KB10"};
const std::vector<std::string> kTwentyNames{"KB1", "KB2", "KB3",  "KB4", "KB5", "KB6", "KB7",
                                            "KB8", "KB9", "KB10", "KB1", "KB2", "KB3", "KB4",
                                            "KB5", "KB6", "KB7",  "KB8", "KB9", "KB10"};

TEST_F(ReportLife, ASecondRunListsEachHotfixTwice) {
  prints(printed(desktop(10, 0)));
  tick({ReportBox::Hotfixes});
  EXPECT_EQ(press(), withHotfixes(numbered(kTenNames)));
  EXPECT_EQ(press(), withHotfixes(numbered(kTwentyNames)));
}

TEST_F(ReportLife, ASecondRunTakesThePlaceOfTheFirstInTheListAndFollowsItInTheText) {
  press();
  EXPECT_EQ(press(), joinedLines({unknownSystem(), {kGap, kGap}}));
  EXPECT_EQ(window->Text1.text.get(),
            "\r\nSystem Information KITCHEN\r\n"
            "Operating System\r\n"
            "OS:    \r\n"
            "   Installed:    BootTime: \r\n"
            "   Product ID: \r\n"
            "    \r\n"
            "    \r\n"
            "Operating System\r\n"
            "OS:    \r\n"
            "   Installed:    BootTime: \r\n"
            "   Product ID: \r\n"
            "    \r\n"
            "    \r\n");
}

TEST_F(ReportLife, AWindowThatIsClosedInTheRunGetsItsReportAndIsNotShown) {
  tick({ReportBox::Users});
  answer("Select * from Win32_Account", {{{{"Caption", "owner"}}}});
  closeInTheRun();
  EXPECT_EQ(press(), behind({kGap, headingLine("Users", 2), boldLine("owner")}));
  EXPECT_FALSE(window->isLoaded());
  EXPECT_THAT(simulation.desktop.shown, Not(Contains(window.get())));
}

TEST_F(ReportLife, AWindowThatIsClosedInTheRunGetsItsDrivesToo) {
  tick({ReportBox::HardDrives});
  answer("Select * from Win32_LogicalDisk", {});
  answer("Select * from Win32_DiskDrive", {});
  closeInTheRun();
  EXPECT_EQ(press(),
            before({headingLine("     ", 0), headingLine("Physical Hard Drive Information", 0),
                    kGap, headingLine("                  Logical Drive Information", 0),
                    headingLine(" ", 0), headingLine(" ", 0),
                    headingLine("                  Detailed Physical Drive Information", 0)}));
}

TEST_F(ReportLife, AWindowThatIsOpenedInTheRunOfAnotherGetsNothing) {
  std::shared_ptr<frmSysInfo> second;
  closeInTheRun();
  inTheYields({[&] { second = open(); }});
  EXPECT_EQ(press(), joinedLines({unknownSystem(), {kGap, kGap}}));
  ASSERT_NE(second, nullptr);
  EXPECT_NE(second, window);
  EXPECT_THAT(lines(*second), IsEmpty());
}

TEST_F(ReportLife, AReportThatIsBegunInTheRunOfAClosedWindowGoesToItsOwn) {
  std::shared_ptr<frmSysInfo> second;
  closeInTheRun();
  inTheYields({[&] {
    second = open();
    second->Showme[static_cast<std::size_t>(ReportBox::Users)].value = kChecked;
    simulation.desktop.click(second->Command1);
  }});
  EXPECT_EQ(press(), joinedLines({unknownSystem(), {kGap, kGap}}));
  ASSERT_NE(second, nullptr);
  EXPECT_EQ(lines(*second), behind({kGap, headingLine("Users", 2)}));
  EXPECT_EQ(simulation.processes.starts.size(), 2U);
}

// The nested run empties the list, prints its report, and the first one prints behind it.
TEST_F(ReportLife, ASecondPressInTheRunPrintsItsReportFirst) {
  prints(printed(desktop(10, 0)));
  tick({ReportBox::Hotfixes});
  simulation.loop.after(kToolTime / 2, [this] { simulation.desktop.click(window->Command1); });
  EXPECT_EQ(press(),
            joinedLines({withHotfixes(numbered(kTenNames)), withHotfixes(numbered(kTwentyNames))}));
}

TEST_F(ReportLife, TheProgramCanEndInTheRun) {
  closeInTheRun();
  inTheYields({[this] { program.end(); }});
  EXPECT_THROW(press(), ProgramEnded);
  EXPECT_THAT(lines(*window), IsEmpty());
}

}  // namespace
}  // namespace veltrin
