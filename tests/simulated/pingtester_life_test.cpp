// SPDX-License-Identifier: GPL-3.0-or-later
// The Ping Test whose window is closed in mid-run while another one stays open.
#include "frame/setlang.h"
#include "simulated/pingtester_run.h"

namespace veltrin {
namespace {

class PingTesterLife : public PingTesterRun {
 protected:
  // A run over all five rows beside another window.
  pingtester& startBesideAnotherWindow() {
    other = simulation.program().show<setlang>();
    pingtester& opened = open();
    simulation.desktop.click(opened.Command1);
    return opened;
  }

  std::shared_ptr<setlang> other;
};

TEST_F(PingTesterLife, QuitInThePauseBehindAnEchoPingsNoFurtherRow) {
  pingtester& opened = startBesideAnotherWindow();
  clickAt(1500, opened.Command4);
  simulation.run(20'000);
  EXPECT_EQ(simulation.processes.starts.size(), 1U);
  EXPECT_FALSE(simulation.program().isLoaded<pingtester>());
  EXPECT_FALSE(simulation.loop.gate().hasEnded());
}

TEST_F(PingTesterLife, TheFramesCloseBoxInThePauseBehindAnEchoPingsNoFurtherRow) {
  pingtester& opened = startBesideAnotherWindow();
  simulation.loop.at(2500, [&] { simulation.desktop.closeWindow(opened); });
  simulation.run(20'000);
  EXPECT_EQ(simulation.processes.starts.size(), 2U);
  EXPECT_FALSE(simulation.program().isLoaded<pingtester>());
}

TEST_F(PingTesterLife, AClosedWindowsEchoIsNotCounted) {
  pingtester& opened = startBesideAnotherWindow();
  clickAt(1500, opened.Command4);
  simulation.run(20'000);
  EXPECT_EQ(opened.buff[0].count(), 0U);
  EXPECT_EQ(opened.pingcur[0].caption.get(), "");
}

TEST_F(PingTesterLife, TheOtherWindowIsNotBlockedByTheRowsThatWereToCome) {
  simulation.processes.tool = [](const std::string&) {
    return std::vector<ToolWrite>{{4000, pingTimeout()}};
  };
  pingtester& opened = startBesideAnotherWindow();
  clickAt(5500, opened.Command4);
  std::int64_t clicked = 0;
  simulation.loop.at(6500, [&] { clicked = simulation.loop.milliseconds(); });
  simulation.run(30'000);
  EXPECT_EQ(clicked, 6500);
}

// The flag is the program's: another tool may have raised it.
TEST_F(PingTesterLife, APassThatFindsTheStopFlagRaisedPingsNothingAndLeavesThePointer) {
  pingtester& opened = startBesideAnotherWindow();
  simulation.loop.at(500, [&] { simulation.program().shared<PingValues>().PingStop = 1; });
  simulation.run(1500);
  EXPECT_TRUE(simulation.processes.starts.empty());
  EXPECT_EQ(opened.mousePointer.get(), MousePointer::Hourglass);
}

TEST_F(PingTesterLife, AFlagRaisedInThePauseDropsTheEchoAndLeavesThePointer) {
  pingtester& opened = startBesideAnotherWindow();
  simulation.loop.at(1500, [&] { simulation.program().shared<PingValues>().PingStop = 1; });
  simulation.run(2500);
  EXPECT_EQ(simulation.processes.starts.size(), 1U);
  EXPECT_EQ(opened.buff[0].count(), 0U);
  EXPECT_EQ(opened.mousePointer.get(), MousePointer::Hourglass);
}

TEST_F(PingTesterLife, AStopWhileTheRunnersMessageStandsEndsThePassWithoutAPause) {
  simulation.processes.tool = [](const std::string&) { return std::nullopt; };
  simulation.desktop.habit.delay = 500;
  pingtester& opened = startBesideAnotherWindow();
  simulation.loop.at(1200, [&] { simulation.program().shared<PingValues>().PingStop = 1; });
  simulation.keepJournal();
  simulation.run(1900);
  EXPECT_EQ(simulation.journal, (Journal{"run ping www.wikipedia.org -n 1 -l 32",
                                         "message File or command not found"}));
  EXPECT_EQ(opened.mousePointer.get(), MousePointer::Hourglass);
  for (Processes::Handle handle = 1; handle <= 2; ++handle) {
    simulation.processes.CloseHandle(handle);
  }
}

TEST_F(PingTesterLife, AWindowOpenedAnewInThePauseRunsByItself) {
  pingtester& first = startBesideAnotherWindow();
  clickAt(1500, first.Command4);
  std::shared_ptr<pingtester> second;
  simulation.loop.at(1600, [&] {
    second = simulation.program().show<pingtester>();
    simulation.desktop.type(second->Combo1, "1");
    simulation.desktop.click(second->Command1);
  });
  simulation.run(30'000);
  ASSERT_NE(second, nullptr);
  EXPECT_NE(second.get(), &first);
  EXPECT_EQ(second->Label9.caption.get(), "Complete");
  EXPECT_EQ(simulation.processes.starts.size(), 1 + pingtester::kRows);
}

TEST_F(PingTesterLife, AWindowClosedWhileItsPingIsSilentIsGoneInThePauseBehindIt) {
  simulation.processes.tool = [](const std::string&) {
    return std::vector<ToolWrite>{{3000, pingTimeout()}};
  };
  pingtester& opened = startBesideAnotherWindow();
  simulation.loop.at(2000, [&] { simulation.desktop.closeWindow(opened); });
  simulation.run(4100);
  EXPECT_FALSE(simulation.program().isLoaded<pingtester>());
  simulation.run(20'000);
  EXPECT_EQ(simulation.processes.starts.size(), 1U);
}

}  // namespace
}  // namespace veltrin
