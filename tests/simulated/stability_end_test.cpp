// SPDX-License-Identifier: GPL-3.0-or-later
// The Hop Stability Test: what it makes of the times of a hop, its graphs on their pages,
// and the end of a run.
#include "frame/copy_text.h"
#include "frame/startup.h"
#include "simulated/stability_run.h"

namespace veltrin {
namespace {

class StabilityEnd : public StabilityRun {
 protected:
  // The summary of a path of one hop with these times.
  std::string summaryOf(std::vector<std::optional<int>> replies) {
    pathOf(1);
    open();
    timesOf("10.0.0.1", std::move(replies));
    test();
    return summaryText;
  }

  // The curve of a hop, as it stands in its picture.
  std::vector<double> curve(std::size_t hop) const {
    const auto lines = window->PGraph[hop].lines();
    if (lines.size() != 1) return {};
    std::vector<double> heights;
    for (const PicturePoint& point : lines[0].points) heights.push_back(point.y);
    return heights;
  }

  // What the user sees while the last ping of a hop runs.
  template <class Look>
  void lookInHop(std::size_t number, Look look) {
    script = [texts = script, number, look, asked = 0](const std::string& command) mutable {
      if (command == "ping " + addressOf(number) + " -n 1" && ++asked == 100) look();
      return texts(command);
    };
  }
};

// --- Scores ---

TEST_F(StabilityEnd, AHopThatAlwaysTakesThirtyIsSteady) {
  EXPECT_EQ(
      summaryOf(times({{100, 30}})),
      "Results for IP: 10.0.0.1Average Ping = 30   Low Ping = 30  High Ping = 30\r\n"
      "     Percent of Average Replies = 100%   Percent of High Returns = 0%   Percent of Low "
      "Returns = 0%\r\n");
}

TEST_F(StabilityEnd, SixtySlowAndFortyQuickRepliesAreNoVerdict) {
  EXPECT_EQ(summaryOf(times({{60, 100}, {40, 10}})),
            "Results for IP: 10.0.0.1Average Ping = 64   Low Ping = 10  High Ping = 100\r\n"
            "     Percent of Average Replies = 0%   Percent of High Returns = 60%   Percent of Low "
            "Returns = 40%\r\n");
}

TEST_F(StabilityEnd, ALongTailIsNoVerdict) {
  EXPECT_EQ(summaryOf(times({{90, 1}, {10, 100}})),
            "Results for IP: 10.0.0.1Average Ping = 11   Low Ping = 1  High Ping = 100\r\n"
            "     Percent of Average Replies = 0%   Percent of High Returns = 10%   Percent of Low "
            "Returns = 90%\r\n");
}

TEST_F(StabilityEnd, AnAverageOfSixTenthsRoundsToOne) {
  EXPECT_EQ(
      summaryOf(times({{60, 1}, {40, 0}})),
      "Results for IP: 10.0.0.1Average Ping = 1   Low Ping = 0  High Ping = 1\r\n"
      "     Percent of Average Replies = 100%   Percent of High Returns = 0%   Percent of Low "
      "Returns = 0%\r\n");
}

TEST_F(StabilityEnd, AnAverageOfZeroIsAnEmptyText) {
  EXPECT_EQ(
      summaryOf(times({{100, 0}})),
      "Results for IP: 10.0.0.1Average Ping =    Low Ping = 0  High Ping = 0\r\n"
      "     Percent of Average Replies = 100%   Percent of High Returns = 0%   Percent of Low "
      "Returns = 0%\r\n");
}

TEST_F(StabilityEnd, RepliesExactlyFiveFromTheAverageAreAverageOnes) {
  EXPECT_EQ(
      summaryOf(times({{50, 25}, {50, 35}})),
      "Results for IP: 10.0.0.1Average Ping = 30   Low Ping = 25  High Ping = 35\r\n"
      "     Percent of Average Replies = 100%   Percent of High Returns = 0%   Percent of Low "
      "Returns = 0%\r\n");
}

TEST_F(StabilityEnd, RepliesSixFromTheAverageAreNot) {
  EXPECT_EQ(summaryOf(times({{1, 24}, {98, 30}, {1, 36}})),
            "Results for IP: 10.0.0.1Average Ping = 30   Low Ping = 24  High Ping = 36\r\n"
            "     Percent of Average Replies = 98%   Percent of High Returns = 1%   Percent of Low "
            "Returns = 1%\r\n");
}

TEST_F(StabilityEnd, FindsTheLowestAndTheHighestWhereverTheyStand) {
  const std::string text = summaryOf(times({{1, 50}, {1, 7}, {1, 80}, {97, 50}}));
  EXPECT_NE(text.find("Average Ping = 50   Low Ping = 7  High Ping = 80\r\n"), std::string::npos);
}

TEST_F(StabilityEnd, ASurplusOfFiftyHighRepliesIsNoVerdict) {
  EXPECT_EQ(
      summaryOf(times({{51, 406}, {48, 400}, {1, 94}})),
      "Results for IP: 10.0.0.1Average Ping = 400   Low Ping = 94  High Ping = 406\r\n"
      "     Percent of Average Replies = 48%   Percent of High Returns = 51%   Percent of Low "
      "Returns = 1%\r\n");
}

TEST_F(StabilityEnd, ASurplusOfFiftyOneHighRepliesIsTheVerdict) {
  EXPECT_EQ(
      summaryOf(times({{52, 406}, {47, 400}, {1, 88}})),
      "Results for IP: 10.0.0.1Average Ping = 400   Low Ping = 88  High Ping = 406\r\n"
      "     Percent of Average Replies = 47%   Percent of High Returns = 52%   Percent of Low "
      "Returns = 1%\r\n"
      "     This hop exibited a wide range of returns and may be causing an issue\r\n");
}

TEST_F(StabilityEnd, SixtyHighAndTwentyLowRepliesPass) {
  EXPECT_EQ(
      summaryOf(times({{60, 106}, {20, 82}, {20, 100}})),
      "Results for IP: 10.0.0.1Average Ping = 100   Low Ping = 82  High Ping = 106\r\n"
      "     Percent of Average Replies = 20%   Percent of High Returns = 60%   Percent of Low "
      "Returns = 20%\r\n");
}

TEST_F(StabilityEnd, ABareAddressKeepsItsBlankBeforeTheAverage) {
  path = {bare("198.51.100.129")};
  open();
  test();
  EXPECT_TRUE(summaryText.starts_with("Results for IP: 198.51.100.129 Average Ping = 30"));
}

TEST_F(StabilityEnd, ShowsTheResultsOfAHopInTheBoxOfTheToolsToo) {
  summaryOf(times({{100, 30}}));
  EXPECT_TRUE(window->txtOutputs.text.get().ends_with(
      "Results for IP: 10.0.0.1Average Ping = 30   Low Ping = 30  High Ping = 30\r\n"
      "     Percent of Average Replies = 100%   Percent of High Returns = 0%   Percent of Low "
      "Returns = 0%\r\n"
      "******* Test is Complete ********* "));
}

TEST_F(StabilityEnd, LeavesTheSumOfTheTimesInTheBoxOfTheAddress) {
  summaryOf(times({{90, 1}, {10, 100}}));
  EXPECT_EQ(window->Text1.text.get(), "1090");
}

// --- Curves ---

TEST_F(StabilityEnd, AFreshCurveLiesOnTheLowerEdgeUpToItsValues) {
  pathOf(1);
  open();
  timesOf("10.0.0.1", {20, 40});
  std::vector<double> seen;
  at(kTrials + 70 + 2 * kNearPing + 10, [&] { seen = curve(0); });
  test();
  std::vector<double> wanted(98, 300);
  wanted.insert(wanted.end(), {280, 260});
  EXPECT_EQ(seen, wanted);
}

TEST_F(StabilityEnd, ACurveIsOneGreenLineOverTheWholePicture) {
  testPath(1);
  const auto lines = window->PGraph[0].lines();
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_EQ(lines[0].colour, (Colour{0, 255, 0}));
  ASSERT_EQ(lines[0].points.size(), 100U);
  EXPECT_EQ(lines[0].points.front().x, 0);
  EXPECT_EQ(lines[0].points.back().x, 99);
}

TEST_F(StabilityEnd, RaisesTimesBelowFiveInTheCurveAndNotInTheScore) {
  const std::string text = summaryOf(times({{97, 1}, {1, 4}, {1, 5}, {1, 6}}));
  const auto heights = curve(0);
  ASSERT_EQ(heights.size(), 100U);
  EXPECT_EQ(heights[0], 295);
  EXPECT_EQ(heights[97], 295);
  EXPECT_EQ(heights[98], 295);
  EXPECT_EQ(heights[99], 294);
  EXPECT_NE(text.find("Low Ping = 1  High Ping = 6"), std::string::npos);
}

TEST_F(StabilityEnd, AReplyOf350StandsAboveThePicture) {
  summaryOf(times({{99, 20}, {1, 350}}));
  const auto heights = curve(0);
  ASSERT_EQ(heights.size(), 100U);
  EXPECT_EQ(heights[98], 280);
  EXPECT_EQ(heights[99], -50);
}

TEST_F(StabilityEnd, DrawsEachHopInItsOwnPicture) {
  pathOf(3);
  open();
  for (int hop = 1; hop <= 3; ++hop) {
    timesOf(addressOf(static_cast<std::size_t>(hop)), times({{100, 10 * hop}}));
  }
  test();
  for (int hop = 0; hop < 3; ++hop) {
    const auto heights = curve(static_cast<std::size_t>(hop));
    ASSERT_EQ(heights.size(), 100U) << hop;
    EXPECT_EQ(heights.front(), 290 - 10 * hop);
    EXPECT_EQ(heights.back(), 290 - 10 * hop);
  }
  EXPECT_TRUE(window->PGraph[3].lines().empty());
}

TEST_F(StabilityEnd, ASecondRunInANewWindowScrollsTheOldCurveOut) {
  keepTheProgramRunning();
  summaryOf(times({{100, 60}}));
  window->close();
  open();
  EXPECT_TRUE(window->PGraph[0].lines().empty());
  timesOf("10.0.0.1", times({{200, 90}}));
  std::vector<double> seen;
  const std::int64_t now = simulation.loop.milliseconds();
  at(now + kTrials + 70 + 3 * kNearPing + 10, [&] { seen = curve(0); });
  test();
  std::vector<double> wanted(97, 240);
  wanted.insert(wanted.end(), {210, 210, 210});
  EXPECT_EQ(seen, wanted);
}

TEST_F(StabilityEnd, TheCurvesOfTwoProgramsAreApart) {
  testPath(1);
  Simulation other;
  EXPECT_EQ(other.program().shared<Graphit>().graphs[0].points()[99], 0);
  EXPECT_EQ(simulation.program().shared<Graphit>().graphs[0].points()[99], 30);
}

// --- Pages ---

TEST_F(StabilityEnd, SixteenHopsStayInViewAndNeedNoPages) {
  pathOf(16);
  open();
  std::vector<std::size_t> seen;
  lookInHop(16, [&] { seen = visibleGraphs(); });
  test();
  EXPECT_EQ(seen, range(0, 16));
  EXPECT_EQ(visibleGraphs(), range(0, 16));
  EXPECT_FALSE(window->Command1.visible);
}

TEST_F(StabilityEnd, SeventeenHopsLoseTheirGraphsWithTheLastOne) {
  pathOf(17);
  open();
  std::vector<std::size_t> before;
  std::vector<std::size_t> seen{1};
  bool button = true;
  lookInHop(16, [&] { before = visibleGraphs(); });
  lookInHop(17, [&] {
    seen = visibleGraphs();
    button = window->Command1.visible;
  });
  test();
  EXPECT_EQ(before, range(0, 16));
  EXPECT_EQ(seen, range(0, 0));
  EXPECT_FALSE(button);
  EXPECT_EQ(visibleGraphs(), range(0, 16));
  EXPECT_TRUE(window->Command1.visible);
}

TEST_F(StabilityEnd, ThePageButtonShowsTheHopsBehindTheSixteenth) {
  testPath(18);
  simulation.desktop.click(window->Command1);
  EXPECT_EQ(visibleGraphs(), range(16, 18));
  EXPECT_EQ(window->Command1.caption.get(), "Page 2");
  simulation.desktop.click(window->Command1);
  EXPECT_EQ(visibleGraphs(), range(0, 16));
  EXPECT_EQ(window->Command1.caption.get(), "Page 1");
}

// The button of the run before stays in view, so that a user can turn the page in mid-run.
TEST_F(StabilityEnd, ARunEndsOnItsFirstPageWhateverItsUserTurnedTo) {
  testPath(18);
  lookInHop(18, [&] { simulation.desktop.click(window->Command1); });
  test();
  EXPECT_EQ(window->Command1.caption.get(), "Page 2");
  EXPECT_EQ(visibleGraphs(), range(0, 16));
}

TEST_F(StabilityEnd, ThePageButtonStaysInViewForAShorterSecondRun) {
  testPath(17);
  pathOf(2);
  test();
  EXPECT_TRUE(window->Command1.visible);
  simulation.desktop.click(window->Command1);
  EXPECT_EQ(visibleGraphs(), range(0, 0));
  EXPECT_EQ(window->Command1.caption.get(), "Page 2");
}

// --- The end ---

TEST_F(StabilityEnd, EndsWithItsButtonsEnabledAndItsClockStopped) {
  testPath(2);
  EXPECT_TRUE(window->StartIt.enabled);
  EXPECT_TRUE(window->Command2.enabled);
  EXPECT_FALSE(window->Timer1.isRunning());
  EXPECT_EQ(window->Label4.caption.get(), "");
  EXPECT_EQ(window->mousePointer.get(), MousePointer::Default);
}

TEST_F(StabilityEnd, ShowsItsSummaryAtOnceWhenNoHopWasSilent) {
  testPath(2);
  EXPECT_EQ(opened, std::vector<std::string>{"StabilitySUM"});
  EXPECT_EQ(summaryText, window->Text2.text.get());
  EXPECT_EQ(summaryText.find("Results for IP: 10.0.0.1Average"), 0U);
}

TEST_F(StabilityEnd, AnalysesThePathFirstWhenHopsWereSilent) {
  path = {bracketed("10.0.0.1"), "*", "*"};
  open();
  test();
  EXPECT_EQ(opened, (std::vector<std::string>{"indepth2", "StabilitySUM"}));
  EXPECT_EQ(analysed, "2");
  EXPECT_EQ(commands().back(), "pathping -q 100 -p 250 2");
}

TEST_F(StabilityEnd, ShowsItsSummaryBehindAnAnalysisDuringWhichItsWindowWasClosed) {
  keepTheProgramRunning();
  path = {bracketed("10.0.0.1"), "*"};
  open();
  script = [this, texts = script](const std::string& command) {
    if (command.starts_with("pathping")) window->close();
    return texts(command);
  };
  test();
  EXPECT_EQ(opened, (std::vector<std::string>{"indepth2", "StabilitySUM"}));
  EXPECT_NE(summaryText.find("Results for IP: 10.0.0.1"), std::string::npos);
}

TEST_F(StabilityEnd, TheAnalysisDependsOnTheLatestRunAlone) {
  path = {bracketed("10.0.0.1"), "*"};
  open();
  test();
  opened.clear();
  pathOf(1);
  test();
  EXPECT_EQ(opened, std::vector<std::string>{"StabilitySUM"});
  EXPECT_EQ(window->BadHops.count(), 0U);
}

TEST_F(StabilityEnd, ASecondRunAddsItsLinesToTheSummary) {
  const std::string first = summaryOf(times({{100, 30}}));
  test();
  EXPECT_EQ(summaryText, first + first);
}

TEST_F(StabilityEnd, TheSummaryIsATextUnderItsOwnTitle) {
  const auto summary = simulation.program().show<StabilitySUM>();
  EXPECT_EQ(summary->caption.get(), "Stability Summary");
  EXPECT_EQ(summary->Text1.text.get(), "");
}

TEST_F(StabilityEnd, CopiesTheLastHopAlone) {
  testPath(2);
  simulation.desktop.clipboard = "old";
  simulation.desktop.click(window->Command2);
  EXPECT_EQ(simulation.desktop.clipboard, window->txtOutputs.text.get());
  EXPECT_EQ(simulation.desktop.clipboard.find("10.0.0.1Average"), std::string::npos);
  EXPECT_NE(simulation.desktop.clipboard.find("10.0.0.2Average"), std::string::npos);
  expectOneMessage("Stability Test", kMessageOk,
                   "Your information is now copied. You can either paste it in a document or an "
                   "email.\r\n\r\nOpen the document/email and right click in the text area, then "
                   "select PASTE.\r\n \r\n");
}

TEST_F(StabilityEnd, TheMenuOpensItAboveItself) {
  const auto menu = simulation.program().show<startup>();
  bool above = false;
  simulation.desktop.onModal = [&](Form& form) {
    simulation.loop.after(100, [&] {
      above = form.name() == "Stability" && !simulation.desktop.takesInput(*menu);
      form.close();
    });
  };
  simulation.desktop.click(menu->Command9);
  EXPECT_TRUE(above);
  EXPECT_TRUE(simulation.desktop.takesInput(*menu));
}

TEST_F(StabilityEnd, ShowsTheHourglassWhileTheAnalysisRunsOutOfSight) {
  path = {bracketed("10.0.0.1"), "*"};
  open();
  MousePointer pointer{};
  bool inSight = true;
  script = [&, texts = script](const std::string& command) {
    if (command.starts_with("pathping")) {
      pointer = window->mousePointer;
      inSight = simulation.desktop.shown.size() > 1;
    }
    return texts(command);
  };
  test();
  EXPECT_EQ(pointer, MousePointer::Hourglass);
  EXPECT_FALSE(inSight);
  EXPECT_EQ(window->mousePointer.get(), MousePointer::Default);
}

TEST_F(StabilityEnd, AWindowClosedWithItsLastLineShowsNothingMore) {
  keepTheProgramRunning();
  path = {bracketed("10.0.0.1"), "*"};
  open();
  window->txtOutputs.change = [this, follow = window->txtOutputs.change] {
    if (window->txtOutputs.text.get().ends_with("********* ")) window->close();
    follow();
  };
  test();
  EXPECT_TRUE(opened.empty());
}

TEST_F(StabilityEnd, TheCaptionOfTheSecondPageOutlivesARun) {
  testPath(17);
  simulation.desktop.click(window->Command1);
  test();
  EXPECT_EQ(window->Command1.caption.get(), "Page 2");
  EXPECT_EQ(visibleGraphs(), range(0, 16));
}

}  // namespace
}  // namespace veltrin
