// SPDX-License-Identifier: GPL-3.0-or-later
// The Outage monitor: outages, their traces, the log, the graph, and the end of a run.
#include <algorithm>

#include "frame/startup.h"
#include "simulated/outage_run.h"

namespace veltrin {
namespace {

class Outage : public OutageRun {
 protected:
  static std::size_t occurrences(const std::string& text, const std::string& wanted) {
    std::size_t count = 0;
    for (auto at = text.find(wanted); at != std::string::npos; at = text.find(wanted, at + 1)) {
      ++count;
    }
    return count;
  }

  // The values of the graph, the newest last.
  std::vector<double> graph() const {
    const auto lines = window->OGraph.lines();
    std::vector<double> values;
    if (lines.size() != 1) return values;
    for (const PicturePoint& point : lines[0].points) values.push_back(700 - point.y);
    return values;
  }

  std::string lossLine() const {
    const std::string text = log();
    const auto start = text.find("Packets Loss: ");
    return start == std::string::npos ? "" : text.substr(start, text.find('\r', start) - start);
  }

  // What stands in the log of a run of so many probes before its closing report.
  std::string events() const {
    const std::string text = log();
    const auto start = text.find("For IP: ");
    const auto from = text.find("\r\n", start) + 2;
    return text.substr(from, text.find("\r\nTotal Test Time") - from);
  }
};

// --- What an outage is ---

TEST_F(Outage, SingleFailuresBetweenGoodProbesAreNone) {
  failing = {1, 3};
  probe(4);
  EXPECT_EQ(window->Label4.caption.get(), "0");
  EXPECT_EQ(lossLine(), "Packets Loss: 2 of 4");
  EXPECT_EQ(events(), "");
  EXPECT_TRUE(traces().empty());
}

TEST_F(Outage, ThreeFailuresAreOneOutageWithOneTrace) {
  failing = {1, 2, 3};
  probe(4);
  EXPECT_EQ(window->Label4.caption.get(), "1");
  EXPECT_EQ(lossLine(), "Packets Loss: 3 of 4");
  EXPECT_EQ(traces(), std::vector<std::string>{"tracert www.wikipedia.org"});
  EXPECT_EQ(occurrences(log(), "Outage Over at: "), 1U);
}

TEST_F(Outage, AReplyIn697MillisecondsIsGood) {
  times = {{1, 697}, {2, 697}};
  probe(2);
  EXPECT_EQ(window->Label4.caption.get(), "0");
  EXPECT_EQ(lossLine(), "Packets Loss: 0 of 2");
  EXPECT_EQ(window->Label6.caption.get(), "697");
}

TEST_F(Outage, OneIn698MillisecondsIsAFailure) {
  times = {{1, 698}, {2, 698}};
  probe(2);
  EXPECT_EQ(window->Label4.caption.get(), "1");
  EXPECT_EQ(lossLine(), "Packets Loss: 2 of 2");
  EXPECT_EQ(window->Label6.caption.get(), "698");
}

TEST_F(Outage, AReplyInUnderAMillisecondIsGood) {
  times = {{1, 0}, {2, 0}, {3, 0}};
  probe(3);
  EXPECT_EQ(lossLine(), "Packets Loss: 0 of 3");
  EXPECT_EQ(window->Label6.caption.get(), "0");
}

TEST_F(Outage, TheNetworkTakenAwayTwiceIsTwoOutages) {
  failing = {2, 3, 4, 7, 8};
  probe(9);
  EXPECT_EQ(window->Label4.caption.get(), "2");
  EXPECT_EQ(traces().size(), 2U);
  EXPECT_EQ(occurrences(log(), "Outage Detected at: "), 2U);
  EXPECT_EQ(occurrences(log(), "\tOutage Over at: "), 2U);
}

// --- What it writes of an outage ---

TEST_F(Outage, WritesItsBeginningAndItsEndToTheSecond) {
  failing = {3, 4, 5};
  probe(6);
  // Probes at 0.02, 2.018, 4.016, 6.014, behind the trace of a second 8.012, 10.01.
  EXPECT_EQ(events(),
            "Outage Detected at: 09:05:06 on 07 Mar 26\r\n"
            "\tOutage Over at: 09:05:10 on 07 Mar 26\r\n");
}

TEST_F(Outage, ShowsTheTraceBetweenThemAndDoesNotLogIt) {
  failing = {1, 2};
  probe(3);
  const std::string wanted =
      "Outage Detected at: 09:05:02 on 07 Mar 26\r\n"
      "\r\nTracing route to www.wikipedia.org [192.0.2.7]\r\n"
      "  1     *        *        *     Request timed out.\r\n"
      "\tOutage Over at: 09:05:04 on 07 Mar 26\r\n";
  EXPECT_EQ(window->Text1.text.get(), wanted);
  EXPECT_NE(window->dosbox.text.get().find(wanted), std::string::npos);
  EXPECT_EQ(log().find("Tracing"), std::string::npos);
  EXPECT_EQ(window->DosBox2.text.get(), "");
}

TEST_F(Outage, SendsNoProbesWhileItTraces) {
  failing = {1, 2, 3};
  trace = {{5000, "  1  \r\n"}, {5000, "  2  \r\n"}};
  probe(4);
  const auto moments = probeMoments();
  EXPECT_EQ(moments[1], 2018);
  EXPECT_EQ(moments[2], 2018 + 200 + 10000);
}

TEST_F(Outage, MakesRoomForTheTraceInAWindowThatShowsTheGraphAlone) {
  failing = {1, 2};
  probe(3);
  EXPECT_EQ(window->height.get(), 6700);
}

TEST_F(Outage, LeavesAWindowThatShowsMoreAsItIs) {
  failing = {1, 2};
  open();
  simulation.desktop.click(window->Check1);
  stopBehind(3);
  start();
  EXPECT_EQ(window->height.get(), 5410);
}

TEST_F(Outage, ATraceThatIsMissingIsToldAndTheOutageGoesOn) {
  failing = {1, 2, 3};
  failedStarts = 1;
  simulation.processes.tool = [this](const std::string& command) {
    const bool isThere = command.starts_with("ping");
    return isThere ? std::optional(script(command)) : std::nullopt;
  };
  probe(4);
  expectOneMessage("Veltrin", kMessageCritical, "File or command not found");
  EXPECT_EQ(occurrences(log(), "Outage Over at: "), 1U);
}

// --- Loss lines ---

TEST_F(Outage, TheThreeHundredthQuietProbeGivesTheFirstLossLine) {
  failing = {100};
  std::string before;
  open();
  afterProbe = [this, &before](std::size_t number) {
    if (number == 300) before = window->dosbox.text;
    if (number == 300) simulation.loop.after(500, [this] { press(); });
  };
  start();
  EXPECT_EQ(before.find("Packets Loss"), std::string::npos);
  EXPECT_NE(window->dosbox.text.get().find("For IP: \r\nPackets Loss: 1 of 300\r\nTotal Test Time"),
            std::string::npos)
      << window->dosbox.text.get();
}

TEST_F(Outage, LossLinesComeEveryThreeHundredProbesAndAreNotLogged) {
  probe(650);
  EXPECT_EQ(occurrences(window->dosbox.text, "Packets Loss: 0 of 300\r\n"), 1U);
  EXPECT_EQ(occurrences(window->dosbox.text, "Packets Loss: 0 of 600\r\n"), 1U);
  EXPECT_EQ(occurrences(window->dosbox.text, "Packets Loss: "), 3U);  // and one of the report
  EXPECT_EQ(occurrences(log(), "Packets Loss: "), 1U);
}

TEST_F(Outage, AnOutageHaltsTheQuietCountAndDoesNotResetIt) {
  failing = {200, 201, 202, 203, 204};
  probe(305);
  // The probes 201 to 204 lie in the outage; the three hundredth quiet one is the 304th.
  EXPECT_EQ(occurrences(window->dosbox.text, "Packets Loss: 5 of 304\r\n"), 1U);
}

// --- The graph ---

TEST_F(Outage, DrawsEachRoundTripAtTheRightAndShiftsTheOthers) {
  times = {{1, 10}, {2, 250}, {3, 40}};
  probe(3);
  const auto values = graph();
  ASSERT_EQ(values.size(), 1800U);
  EXPECT_EQ(values[1796], 0);
  EXPECT_EQ(values[1797], 10);
  EXPECT_EQ(values[1798], 250);
  EXPECT_EQ(values[1799], 40);
}

TEST_F(Outage, TheGraphIsOneWhiteLineOverTheWholePicture) {
  probe(1);
  const auto lines = window->OGraph.lines();
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_EQ(lines[0].colour, (Colour{255, 255, 255}));
  EXPECT_EQ(lines[0].points.front(), (PicturePoint{0, 700}));
  EXPECT_EQ(lines[0].points.back(), (PicturePoint{1799, 680}));
}

TEST_F(Outage, AFailedProbeStandsAtTheUpperEdge) {
  failing = {1};
  probe(1);
  EXPECT_EQ(window->OGraph.lines()[0].points.back().y, 2);
  EXPECT_EQ(window->Label6.caption.get(), "698");
}

TEST_F(Outage, ASecondWindowGoesOnWithTheOldCurve) {
  keepTheProgramRunning();
  times = {{1, 60}, {2, 70}};
  probe(1);
  window->close();
  probe(2);
  const auto values = graph();
  ASSERT_EQ(values.size(), 1800U);
  EXPECT_EQ(values[1798], 60);
  EXPECT_EQ(values[1799], 70);
}

TEST_F(Outage, YieldsBetweenTheValueAndItsCurve) {
  open();
  std::size_t drawn = 1;
  std::string value;
  at(25, [&] {
    value = window->Label6.caption;
    drawn = window->OGraph.lines().size();
  });
  stopBehind(1);
  start();
  EXPECT_EQ(value, "20");
  EXPECT_EQ(drawn, 0U);
}

// --- Stop ---

TEST_F(Outage, StopWritesTheClosingReport) {
  failing = {2};
  probe(3);
  EXPECT_EQ(log(),
            "Outage Test Started: 07 Mar 26 at 09:05:00\r\n\r\n"
            "For IP: \r\n"
            "\r\n"
            "Total Test Time: 4 sec\r\n"
            "Total Test Completed: 3\r\n"
            "Total Outages: 0\r\n"
            "Packets Loss: 1 of 3\r\n"
            "\r\n\r\n");
  EXPECT_EQ(window->dosbox.text.get(),
            "Outage Test Started: 07 Mar 26 at 09:05:00\r\n"
            "For IP: \r\n"
            "Total Test Time: 4 sec\r\n"
            "Total Test Completed: 3\r\n"
            "Total Outages: 0\r\n"
            "Packets Loss: 1 of 3\r\n");
}

TEST_F(Outage, AStopInAnOutageLeavesItOpen) {
  failing = {1, 2, 3};
  probe(3);
  EXPECT_EQ(events(), "Outage Detected at: 09:05:02 on 07 Mar 26\r\n");
}

TEST_F(Outage, AProbeBehindTheStopIsNotReported) {
  open();
  afterProbe = [this](std::size_t number) {
    if (number == 2)
      simulation.loop.after(10, [this] { press(); });  // while it waits for the reply
  };
  start();
  EXPECT_EQ(probes, 2U);
  EXPECT_NE(log().find("Total Test Completed: 1\r\n"), std::string::npos);
}

TEST_F(Outage, AStopInTheYieldInWhichAnOutageBeginsDoesNotKeepItFromBeginning) {
  failing = {1, 2};
  open();
  afterProbe = [this](std::size_t number) {
    if (number == 2) simulation.loop.after(10, [this] { press(); });
  };
  start();
  const std::string text = log();
  const auto report = text.find("Total Outages: 0\r\n");
  const auto detected = text.find("Outage Detected at: 09:05:02 on 07 Mar 26\r\n");
  ASSERT_NE(report, std::string::npos);
  ASSERT_NE(detected, std::string::npos);
  EXPECT_LT(report, detected);
  EXPECT_EQ(traces().size(), 1U);
  EXPECT_EQ(window->Label4.caption.get(), "1");
  EXPECT_EQ(probes, 2U);
}

TEST_F(Outage, AStopInATraceEndsTheRunBehindIt) {
  failing = {1, 2, 3};
  open();
  at(2300, [this] { press(); });
  start();
  EXPECT_EQ(window->Command3.caption.get(), "Start");
  EXPECT_NE(window->Text1.text.get().find("Request timed out."), std::string::npos);
  EXPECT_EQ(probes, 2U);
}

TEST_F(Outage, AStopWhileTheAddressIsSoughtProbesOnceAndEnds) {
  open();
  std::size_t probed = 1;
  at(10, [&] {
    probed = probes;
    press();
  });
  start();
  EXPECT_EQ(probed, 0U);
  EXPECT_EQ(probes, 1U);
  EXPECT_NE(log().find("Total Test Completed: 0\r\n"), std::string::npos);
}

TEST_F(Outage, TwoRunsOfAWindowShareALog) {
  probe(1);
  simulation.run(120'000);
  stopBehind(2);
  start();
  EXPECT_EQ(occurrences(log(), "Outage Test Started: "), 2U);
  EXPECT_EQ(occurrences(log(), "\r\n\r\n\r\nOutage Test Started: 07 Mar 26 at 09:07:"), 1U);
  EXPECT_EQ(simulation.files.contents.count(kLog), 1U);
  EXPECT_EQ(occurrences(log(), "Packets Loss: 0 of 1\r\n"), 2U);
}

TEST_F(Outage, ASecondRunCountsFromNothing) {
  failing = {1, 2};
  probe(3);
  EXPECT_EQ(window->Label4.caption.get(), "1");
  stopBehind(4);
  start();
  EXPECT_EQ(window->Label4.caption.get(), "0");
  EXPECT_EQ(occurrences(window->dosbox.text, "Packets Loss: 0 of 1\r\n"), 1U);
}

TEST_F(Outage, ASecondRunDoesNotTakeOverAFailedProbe) {
  failing = {2, 3};
  probe(2);
  stopBehind(4);
  start();
  EXPECT_EQ(window->Label4.caption.get(), "0");
}

TEST_F(Outage, ASecondRunDoesNotTakeOverAnOutage) {
  failing = {1, 2};
  probe(2);
  stopBehind(4);
  start();
  EXPECT_EQ(occurrences(log(), "Outage Over at: "), 0U);
  EXPECT_EQ(window->Text1.text.get().find("Outage Over"), std::string::npos);
  EXPECT_EQ(window->Text1.text.get().find("Pinging"), std::string::npos);
  EXPECT_NE(window->Text1.text.get().find("Outage Detected"), std::string::npos);
}

TEST_F(Outage, ASecondRunDoesNotTakeOverQuietProbes) {
  probe(200);
  stopBehind(200 + 299);
  start();
  EXPECT_EQ(occurrences(window->dosbox.text, "Packets Loss: "), 1U);
}

TEST_F(Outage, AReportBeforeTheFirstScanHasEndedTellsTheTimeOfTheRunBefore) {
  probe(3);
  at(simulation.loop.milliseconds() + 10, [this] { press(); });
  start();
  EXPECT_EQ(occurrences(log(), "Total Test Time: 4 sec\r\n"), 2U);
}

// A Start in the last pause of a run begins the next one inside it.
TEST_F(Outage, AStartBeforeTheStoppedRunHasEndedRunsInsideIt) {
  open();
  afterProbe = [this](std::size_t number) {
    if (number == 1) simulation.loop.after(500, [this] { press(); });
    if (number == 1) simulation.loop.after(600, [this] { press(); });
    if (number == 3) simulation.loop.after(500, [this] { press(); });
  };
  start();
  EXPECT_EQ(probes, 3U);
  EXPECT_EQ(occurrences(log(), "Outage Test Started: "), 2U);
  EXPECT_EQ(window->Command3.caption.get(), "Start");
}

// --- The log on a bad day ---

TEST_F(Outage, OpensAndClosesTheLogAroundEachWrite) {
  failing = {2, 3};
  probe(4);
  EXPECT_EQ(simulation.files.closings, 4);
}

TEST_F(Outage, AFolderThatCannotBeWrittenIsSilent) {
  simulation.files.refuseOpening = true;
  failing = {1, 2};
  probe(3);
  EXPECT_EQ(log(), "(no log)");
  EXPECT_TRUE(simulation.desktop.messages.empty());
  EXPECT_NE(window->dosbox.text.get().find("Total Outages: 1"), std::string::npos);
}

TEST_F(Outage, ADiskThatFillsKeepsTheLinesThatStand) {
  failing = {2, 3};
  open();
  afterProbe = [this](std::size_t number) {
    if (number == 2) simulation.files.refuseWriting = true;
    if (number == 4) simulation.files.refuseWriting = false;
    if (number == 4) simulation.loop.after(500, [this] { press(); });
  };
  start();
  EXPECT_EQ(events(), "\tOutage Over at: 09:05:06 on 07 Mar 26\r\n");
  EXPECT_TRUE(log().starts_with("Outage Test Started: 07 Mar 26 at 09:05:00\r\n"));
}

// --- Closing ---

TEST_F(Outage, AClosedWindowGoesOnProbingAndLogging) {
  keepTheProgramRunning();
  failing = {3, 4};
  open();
  at(1000, [this] { window->close(); });
  at(9000, [this] { simulation.program().end(); });
  EXPECT_THROW(start(), ProgramEnded);
  EXPECT_EQ(probes, 5U);
  EXPECT_EQ(events(),
            "Outage Detected at: 09:05:06 on 07 Mar 26\r\n"
            "\tOutage Over at: 09:05:08 on 07 Mar 26\r\n");
}

TEST_F(Outage, AClosedWindowStartsNoTrace) {
  keepTheProgramRunning();
  failing = {3, 4};
  open();
  at(1000, [this] { window->close(); });
  at(9000, [this] { simulation.program().end(); });
  EXPECT_THROW(start(), ProgramEnded);
  EXPECT_TRUE(traces().empty());
}

TEST_F(Outage, AWindowClosedInATraceReadsItToItsEnd) {
  keepTheProgramRunning();
  failing = {1, 2, 3};
  open();
  at(2300, [this] { window->close(); });
  at(9000, [this] { simulation.program().end(); });
  EXPECT_THROW(start(), ProgramEnded);
  EXPECT_NE(window->Text1.text.get().find("Request timed out."), std::string::npos);
  EXPECT_EQ(occurrences(log(), "Outage Over at: "), 1U);
}

TEST_F(Outage, AWindowClosedWhileTheAddressIsSoughtEndsItsRun) {
  keepTheProgramRunning();
  ping = "";
  open();
  at(500, [this] { window->close(); });
  start();
  EXPECT_EQ(commands().size(), 1U);
  EXPECT_TRUE(simulation.desktop.messages.empty());
}

TEST_F(Outage, TheEndOfTheProgramEndsTheRun) {
  open();
  at(5000, [this] { window->close(); });
  EXPECT_THROW(start(), ProgramEnded);
  EXPECT_EQ(probes, 3U);
}

// The menu lies below the routine that runs, and is hidden: without it nobody could end the
// program any more.
TEST_F(Outage, TheMenuComesBackWhenTheWindowIsClosedInMidRun) {
  const auto menu = simulation.program().show<startup>();
  at(100, [&] {
    window = std::static_pointer_cast<MonOut>(simulation.desktop.shown.back()->shared_from_this());
    press();
  });
  at(5000, [this] { window->close(); });
  bool isBack = false;
  at(8000, [&] {
    isBack = simulation.desktop.takesInput(*menu);
    simulation.desktop.click(menu->Command3);
  });
  EXPECT_THROW(simulation.desktop.click(menu->Command8), ProgramEnded);
  EXPECT_TRUE(isBack);
}

}  // namespace
}  // namespace veltrin
