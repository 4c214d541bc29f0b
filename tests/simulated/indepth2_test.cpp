// SPDX-License-Identifier: GPL-3.0-or-later
// The InDepth window that follows a Hop Stability Test: where it differs.
#include <algorithm>

#include "simulated/indepth_run.h"

namespace veltrin {
namespace {

const std::string kIntroduction =
    "This provides detailed information on internet latency and loss\r\n"
    "This test can take up to 10 minutes or longer depending on total hops and queries\r\n";

class InDepth2 : public InDepthRun {
 protected:
  // Opens the window modally, as an event among others, while another one stays, and
  // presses its "Close" at a moment of the clock.
  void openModally(std::int64_t closing) {
    keepTheProgramRunning();
    keepBadHops();
    at(0, [this] {
      simulation.program().tools.showModal(WindowName::indepth2);
      returned = simulation.loop.milliseconds();
    });
    at(closing,
       [this] { simulation.desktop.click(simulation.program().show<indepth2>()->Command2); });
    simulation.run(60'000);
  }

  bool isShown() {
    const auto& shown = simulation.desktop.shown;
    return std::any_of(shown.begin(), shown.end(),
                       [](const Form* form) { return form->name() == "indepth2"; });
  }

  std::int64_t returned = -1;  // when the modal window had been closed
};

TEST_F(InDepth2, BearsItsCaptions) {
  const indepth2& opened = openWindow<indepth2>();
  EXPECT_EQ(opened.caption.get(), "InDepth Internet Analysis");
  EXPECT_EQ(opened.Label4.caption.get(), "Low Ping");
  EXPECT_EQ(opened.Label6.caption.get(), "High Ping");
  EXPECT_EQ(opened.PingL.caption.get(), "");
  EXPECT_EQ(opened.PingH.caption.get(), "");
}

TEST_F(InDepth2, TakesTheLastItemOfTheSilentHopsAsItsDestination) {
  badHop = "7";
  EXPECT_EQ(openWindow<indepth2>().Text1.text.get(), "7");
}

TEST_F(InDepth2, AnEmptyListOfSilentHopsGivesAnEmptyDestination) {
  badHop = "";
  EXPECT_EQ(openWindow<indepth2>().Text1.text.get(), "");
}

TEST_F(InDepth2, WithoutAListOfSilentHopsItsDesignStays) {
  badHop.reset();
  EXPECT_EQ(openWindow<indepth2>().Text1.text.get(), "www.wikipedia.org");
}

TEST_F(InDepth2, ReadsNoSettings) {
  Program& program = simulation.program();
  program.writeSetting("InDepth", "Source", "far.example");
  program.writeSetting("InDepth", "Queries", "40");
  program.writeSetting("InDepth", "Period", "300");
  const int reads = simulation.profiles.reads;
  const indepth2& opened = openWindow<indepth2>();
  EXPECT_EQ(simulation.profiles.reads, reads);
  EXPECT_EQ(opened.Text1.text.get(), "3");
  EXPECT_EQ(opened.text3.text.get(), "100");
  EXPECT_EQ(opened.text4.text.get(), "250");
}

TEST_F(InDepth2, OverwritesWhatTheSettingsHeld) {
  Program& program = simulation.program();
  program.writeSetting("InDepth", "Source", "far.example");
  program.writeSetting("InDepth", "Queries", "40");
  program.writeSetting("InDepth", "Period", "300");
  openWindow<indepth2>();
  EXPECT_EQ(simulation.settings(), "[InDepth]\r\nSource=3\r\nQueries=100\r\nPeriod=250\r\n");
}

TEST_F(InDepth2, RunsItsTestInsideItsLoad) {
  const indepth2& opened = openWindow<indepth2>();
  EXPECT_EQ(commands(), (std::vector<std::string>{"ping 3 -n 10", "pathping -q 100 -p 250 3"}));
  EXPECT_EQ(opened.dosbox.text.get(), kIntroduction +
                                          "Test Started at 09:05\r\n"
                                          "<ping 3 -n 10>\r\n"
                                          "<pathping -q 100 -p 250 3>\r\n");
  EXPECT_FALSE(opened.Command5.visible);
}

TEST_F(InDepth2, OnLaterSystemsTwoOptionsAreGone) {
  simulation.program().menu.PostVistaOs = 1;
  const indepth2& opened = openWindow<indepth2>();
  EXPECT_FALSE(opened.Check3.visible);
  EXPECT_FALSE(opened.Check4.visible);
}

TEST_F(InDepth2, TheCaptionOfTheLowestTimeIsNoLink) {
  indepth2& opened = openWindow<indepth2>();
  simulation.desktop.click(opened.Label4);
  EXPECT_TRUE(simulation.shell.executions.empty());
}

TEST_F(InDepth2, ComesIntoViewWhenItsTestIsOver) {
  pathpingPrints({{1'000, "first"}, {10'000, "last"}});
  std::vector<bool> seen;
  for (const std::int64_t moment : {1'000, 11'000}) {
    at(moment, [&] { seen.push_back(isShown()); });
  }
  openModally(12'000);
  EXPECT_EQ(seen, (std::vector<bool>{false, true}));
}

TEST_F(InDepth2, ReturnsToItsOpenerWhenTheUserClosesIt) {
  openModally(5'000);
  EXPECT_EQ(returned, 5'000);
  EXPECT_FALSE(isShown());
}

TEST_F(InDepth2, TakesAnotherTestFromTheUser) {
  indepth2& opened = openWindow<indepth2>();
  simulation.desktop.type(opened.Text1, "near.example");
  simulation.desktop.click(opened.Check1);
  test(opened);
  EXPECT_EQ(commands().back(), "pathping -q 100 -p 250 -n near.example");
}

TEST_F(InDepth2, TheEndOfTheProgramInsideItsLoadUnwindsToTheOpener) {
  pathpingPrints({{10'000, "results"}, {20'000, "more"}});
  at(5'000, [&] { simulation.loop.gate().end(); });
  openModally(30'000);
  EXPECT_EQ(returned, -1);
  EXPECT_FALSE(isShown());
}

}  // namespace
}  // namespace veltrin
