// SPDX-License-Identifier: GPL-3.0-or-later
// The Hop Stability Test: its load, and its start up to the list of hops.
#include "ping/ping_values.h"
#include "route/trace.h"
#include "simulated/stability_run.h"
#include "text/strings.h"

namespace veltrin {
namespace {

class StabilityStart : public StabilityRun {
 protected:
  // Opens the window and presses Test for a destination that answers in these times.
  Stability& testWith(std::vector<std::optional<int>> answers) {
    pathOf(0);
    open();
    timesOf(destination, std::move(answers));
    test();
    return *window;
  }

  void remember(const std::string& use) {
    simulation.profiles.contents[kProgramFolder + "\\Files\\Veltrin.dat"] =
        "[Stability]\r\nUse=" + use + "\r\n";
  }

  const std::string unreachable = "Destination IP is not valid or is unreachable";
  const std::string question =
      "Destination may be unreachable or is invalid. Would you like to test as much of the path as "
      "possible?";
};

// --- Load ---

TEST_F(StabilityStart, ShowsOnlyItsTopStripWhenItOpens) {
  const Stability& opened = open();
  EXPECT_EQ(opened.caption.get(), "Stability Test");
  EXPECT_EQ(opened.height.get(), 2050);
  EXPECT_EQ(opened.Label1.caption.get(), "URL/IP");
  EXPECT_EQ(opened.StartIt.caption.get(), "Test");
  EXPECT_EQ(opened.Command2.caption.get(), "Copy");
  EXPECT_TRUE(opened.Command2.enabled);
  EXPECT_EQ(opened.Command1.caption.get(), "Page 1");
  EXPECT_FALSE(opened.Command1.visible);
  EXPECT_FALSE(opened.Timer1.enabled);
  EXPECT_EQ(opened.txtOutputs.text.get(), "");
  EXPECT_EQ(opened.TestPoint.text.get(), "www.wikipedia.org");
}

TEST_F(StabilityStart, NumbersItsThirtyGraphs) {
  const Stability& opened = open();
  ASSERT_EQ(opened.PGraph.size(), 30U);
  for (std::size_t hop = 0; hop < 30; ++hop) {
    EXPECT_EQ(opened.Label2[hop].caption.get(), std::to_string(hop + 1));
    EXPECT_EQ(opened.PGraph[hop].scale.get(), (UserScale{100, 300}));
    EXPECT_FALSE(opened.PGraph[hop].backColour.get().has_value());
    EXPECT_EQ(opened.PGraph[hop].toolTip.get(), hop == 0 ? "Scale 0 - 50 ms" : "");
  }
}

TEST_F(StabilityStart, IgnoresAUseValueOfFiveCharacters) {
  remember("a.com");
  EXPECT_EQ(open().TestPoint.text.get(), "www.wikipedia.org");
}

TEST_F(StabilityStart, TakesAUseValueOfSixCharacters) {
  remember("ab.com");
  EXPECT_EQ(open().TestPoint.text.get(), "ab.com");
}

TEST_F(StabilityStart, CountsTheCharactersOfAUseValue) {
  remember("\xC3\xA9\xC3\xA9.fr");
  EXPECT_EQ(open().TestPoint.text.get(), "www.wikipedia.org");
}

TEST_F(StabilityStart, SetsItsToolTipsInEnglishOnly) {
  EXPECT_EQ(open().TestPoint.toolTip.get(), "Enter URL/IP Destination to Test");
  EXPECT_EQ(window->Command1.toolTip.get(), "Switch Pages of Data");
  keepTheProgramRunning();
  window->close();
  speakDutch();
  EXPECT_EQ(open().TestPoint.toolTip.get(), "");
  EXPECT_EQ(window->PGraph[0].toolTip.get(), "Scale 0 - 50 ms");
}

// --- Preparing ---

TEST_F(StabilityStart, RemembersTheDestination) {
  open();
  simulation.desktop.type(window->TestPoint, "far.example");
  simulation.desktop.answers = {{kAnswerOk, 0}};
  timesOf("far.example", times({{4, 0}}));
  test();
  EXPECT_EQ(simulation.settings(), "[Stability]\r\nUse=far.example\r\n");
}

TEST_F(StabilityStart, DisablesItsButtonsForTheRun) {
  open();
  pathOf(1);
  bool start = true;
  bool copy = true;
  at(2000, [&] {
    start = window->StartIt.enabled;
    copy = window->Command2.enabled;
  });
  test();
  EXPECT_FALSE(start);
  EXPECT_FALSE(copy);
}

TEST_F(StabilityStart, HidesAllGraphsWhileItTriesTheDestination) {
  open();
  window->height = 7550;
  window->Label4.caption = "Estimated";
  std::vector<std::size_t> visible{1};
  int height = 0;
  std::string remaining = "?";
  at(10, [&] {
    visible = visibleGraphs();
    height = window->height;
    remaining = window->Label4.caption;
  });
  test();
  EXPECT_EQ(visible, range(0, 0));
  EXPECT_EQ(height, 2050);
  EXPECT_EQ(remaining, "");
}

TEST_F(StabilityStart, EmptiesTheListsOfTheRunBefore) {
  path = {bracketed("10.0.0.1"), "*"};
  open();
  test();
  std::size_t times = 1;
  std::size_t silent = 1;
  simulation.loop.after(10, [&] {
    times = window->results.count();
    silent = window->BadHops.count();
  });
  test();
  EXPECT_EQ(times, 0U);
  EXPECT_EQ(silent, 0U);
}

// --- Trials ---

TEST_F(StabilityStart, TriesTheDestinationFourTimesASecondApart) {
  testWith(times({{4, 25}}));
  EXPECT_EQ(pingsTo(destination), (std::vector<std::int64_t>{0, 1020, 2040, 3060}));
}

TEST_F(StabilityStart, ATrialWithoutAReplyCountsAsTheOneBeforeIt) {
  simulation.desktop.answers = {{kAnswerNo, 0}};
  testWith({600, std::nullopt, std::nullopt, 900});
  EXPECT_EQ(values().Total.text(), "675");
}

TEST_F(StabilityStart, ATrialWithoutAReplyTakesTheReadingOfTheToolBefore) {
  simulation.program().shared<PingValues>().PingTime = 99999;
  simulation.desktop.answers = {{kAnswerNo, 0}};
  testWith(std::vector<std::optional<int>>(4));
  expectOneMessage("Stability Test", kMessageYesNo, question);
  EXPECT_EQ(values().Total.text(), "99999");
}

TEST_F(StabilityStart, ReadsTheTimeOfATrialFromOnePieceOfItsText) {
  script = [](const std::string& command) -> std::vector<ToolWrite> {
    if (command.starts_with("tracert")) return {};
    return {{kToolTime, "Aver"}, {kToolTime, "age = 40ms\r\n"}};
  };
  open();
  test();
  expectOneMessage("Stability Test", kMessageOk, unreachable);
}

TEST_F(StabilityStart, TellsThatTheDestinationDoesNotAnswer) {
  testWith(std::vector<std::optional<int>>(4));
  expectOneMessage("Stability Test", kMessageOk, unreachable);
  EXPECT_EQ(simulation.processes.starts.size(), 4U);
  EXPECT_EQ(values().Total.text(), "0");
}

TEST_F(StabilityStart, TakesRepliesInUnderAMillisecondForNone) {
  testWith(times({{4, 0}}));
  expectOneMessage("Stability Test", kMessageOk, unreachable);
}

TEST_F(StabilityStart, LeavesItsButtonsDisabledBehindADestinationWithoutAnswer) {
  testWith(std::vector<std::optional<int>>(4));
  EXPECT_FALSE(window->StartIt.enabled);
  EXPECT_FALSE(window->Command2.enabled);
  keepTheProgramRunning();
  window->close();
  EXPECT_TRUE(open().StartIt.enabled);
  EXPECT_TRUE(window->Command2.enabled);
}

TEST_F(StabilityStart, DoesNotAskAboutAMeanOfExactlyFiveHundred) {
  testWith({500, 500, 500, 501});
  EXPECT_TRUE(simulation.desktop.messages.empty());
}

TEST_F(StabilityStart, AsksAboutAMeanThatRoundsToMore) {
  simulation.desktop.answers = {{kAnswerNo, 0}};
  testWith({500, 500, 501, 501});
  expectOneMessage("Stability Test", kMessageYesNo, question);
}

TEST_F(StabilityStart, ANoEndsTheRunWithItsButtonsDisabled) {
  simulation.desktop.answers = {{kAnswerNo, 0}};
  testWith(times({{4, 800}}));
  EXPECT_EQ(simulation.processes.starts.size(), 4U);
  EXPECT_FALSE(window->StartIt.enabled);
  EXPECT_FALSE(window->Command2.enabled);
  EXPECT_EQ(window->mousePointer.get(), MousePointer::Default);
}

TEST_F(StabilityStart, AYesGoesOnToTheTrace) {
  simulation.desktop.answers = {{kAnswerYes, 0}};
  testWith(times({{4, 800}}));
  EXPECT_EQ(commands().back(), "tracert www.wikipedia.org");
  EXPECT_TRUE(window->StartIt.enabled);
}

TEST_F(StabilityStart, AMeanThatRoundsToNothingGoesOnWithoutAQuestion) {
  testWith({0, 0, 0, 1});
  EXPECT_TRUE(simulation.desktop.messages.empty());
  EXPECT_EQ(commands().back(), "tracert www.wikipedia.org");
}

// The page button of a long run before stays in view and counts what the trials have summed
// up for hops.
TEST_F(StabilityStart, CountsTheTrialsUpFromNothing) {
  testPath(18);
  timesOf(destination, times({{4, 18}, {4, 20}}));
  std::vector<std::string> sums;
  const std::int64_t now = simulation.loop.milliseconds();
  for (const int moment : {10, 1030, 2050, 4070}) {
    at(now + moment, [&] { sums.push_back(values().Total.text()); });
  }
  test();
  EXPECT_EQ(sums, (std::vector<std::string>{"0", "20", "40", "60"}));
}

// --- The trace ---

TEST_F(StabilityStart, TellsOfItsTraceByThePassWhereTheCounterOfAllToolsStands) {
  std::string line;
  open();
  pathOf(0);
  at(4085, [&] { line = window->txtOutputs.text; });  // in the trace
  test();
  EXPECT_NE(line.find("Performing Trace Route - Pass 30 to www.wikipedia.org\r\n"),
            std::string::npos);
}

TEST_F(StabilityStart, TellsOfItsTraceAndOfItsEndInDutch) {
  std::string line;
  open();
  speakDutch();
  at(4085, [&] { line = window->txtOutputs.text; });
  test();
  EXPECT_NE(line.find("Trace Route wordt uitgevoerd - Eenmaal 30 to www.wikipedia.org\r\n"),
            std::string::npos);
  EXPECT_TRUE(window->txtOutputs.text.get().ends_with("******* Test is Klaar ********* "));
}

TEST_F(StabilityStart, ShowsTheHourglassAndTheCommandWhileItTraces) {
  open();
  MousePointer pointer{};
  std::string command;
  at(4085, [&] {
    pointer = window->mousePointer;
    command = window->Text1.text;
  });
  test();
  EXPECT_EQ(pointer, MousePointer::Hourglass);
  EXPECT_EQ(command, "tracert www.wikipedia.org");
}

TEST_F(StabilityStart, PausesBehindTheTrace) {
  pathOf(1);
  open();
  test();
  EXPECT_EQ(moments()[4], kTrials);
  EXPECT_EQ(pingsTo("10.0.0.1").front(), kTrials + kToolTime + 50);
}

TEST_F(StabilityStart, TellsWhatItDoesBehindTheTrace) {
  std::string text;
  open();
  pathOf(2);
  window->txtOutputs.change = [&, follow = window->txtOutputs.change] {
    if (window->txtOutputs.text.get().size() > text.size()) text = window->txtOutputs.text;
    follow();
  };
  test();
  EXPECT_TRUE(
      text.ends_with("Trace complete.\r\n"
                     "Calculating Test Points\r\n"
                     "Preparing to perform Stability Test on each hop\r\n"
                     "\r\nTotal Hops = 2\r\n"))
      << text;
}

TEST_F(StabilityStart, EmptiesATextThatBeginsAsAnIntroduction) {
  open();
  simulation.desktop.type(window->TestPoint, "far.example");
  simulation.desktop.type(window->txtOutputs, "This is an introduction\r\n");
  std::string text;
  at(4085, [&] { text = window->txtOutputs.text; });
  test();
  EXPECT_TRUE(text.starts_with("Performing Trace Route - Pass 30 to far.example\r\n")) << text;
}

TEST_F(StabilityStart, KeepsAnyOtherTextAboveTheTrace) {
  open();
  simulation.desktop.type(window->txtOutputs, "That is my note\r\n");
  std::string text;
  at(4085, [&] { text = window->txtOutputs.text; });
  test();
  EXPECT_TRUE(text.starts_with("That is my note\r\n")) << text;
}

// --- Failing tools and disks ---

TEST_F(StabilityStart, APingThatIsMissingIsADestinationWithoutAnswer) {
  simulation.processes.tool = [](const std::string&) { return std::nullopt; };
  failedStarts = 4;
  open();
  test();
  ASSERT_EQ(simulation.desktop.messages.size(), 5U);
  for (std::size_t at = 0; at < 4; ++at) {
    EXPECT_EQ(simulation.desktop.messages[at].text, "File or command not found");
  }
  EXPECT_EQ(simulation.desktop.messages[4].text, unreachable);
  EXPECT_FALSE(window->StartIt.enabled);
}

TEST_F(StabilityStart, ATraceThatIsMissingGivesNoHops) {
  simulation.processes.tool = [this](const std::string& command) {
    const bool isThere = command.starts_with("ping");
    return isThere ? std::optional(script(command)) : std::nullopt;
  };
  failedStarts = 1;
  open();
  test();
  expectOneMessage("Veltrin", kMessageCritical, "File or command not found");
  EXPECT_EQ(opened, std::vector<std::string>{"StabilitySUM"});
  EXPECT_EQ(summaryText, "");
  EXPECT_TRUE(window->StartIt.enabled);
}

TEST_F(StabilityStart, ADiskThatTakesNoSettingsChangesNothing) {
  simulation.profiles.refuseWriting = true;
  testPath(1);
  EXPECT_EQ(pingsTo("10.0.0.1").size(), 100U);
}

// --- Closing ---

TEST_F(StabilityStart, AWindowClosedAmongItsTrialsSaysNothingAndStartsNothing) {
  keepTheProgramRunning();
  open();
  timesOf(destination, std::vector<std::optional<int>>(4));
  at(1500, [&] { window->close(); });
  test();
  EXPECT_EQ(simulation.processes.starts.size(), 2U);
  EXPECT_TRUE(simulation.desktop.messages.empty());
  EXPECT_TRUE(opened.empty());
}

TEST_F(StabilityStart, AWindowClosedInItsTraceReadsItToItsEndAndStops) {
  keepTheProgramRunning();
  pathOf(2);
  open();
  at(4085, [&] { window->close(); });
  test();
  EXPECT_EQ(commands().back(), "tracert www.wikipedia.org");
  EXPECT_TRUE(opened.empty());
  EXPECT_NE(window->txtOutputs.text.get().find("Trace complete."), std::string::npos);
  EXPECT_EQ(window->TestIPs.count(), 0U);
}

TEST_F(StabilityStart, AnEndOfTheProgramInItsTraceEndsTheRun) {
  pathOf(2);
  open();
  at(4085, [&] { window->close(); });
  EXPECT_THROW(test(), ProgramEnded);
  EXPECT_EQ(commands().back(), "tracert www.wikipedia.org");
}

// What a tool prints behind a closed window is read, and what comes in is delivered
// between its pieces, but not behind one that tells of no time at all.
class BehindAClosedWindow : public StabilityStart {
 protected:
  // The time that is known when something is delivered that came in behind the first piece.
  std::string timeAtDelivery(const std::vector<ToolWrite>& pieces) {
    keepTheProgramRunning();
    open();
    std::string time;
    script = [pieces](const std::string&) { return pieces; };
    at(1, [&] { window->close(); });
    at(20, [&] { time = simulation.program().shared<PingValues>().PingTime.text(); });
    test();
    return time;
  }
};

TEST_F(BehindAClosedWindow, APieceWithATimeYields) {
  EXPECT_EQ(timeAtDelivery(
                {{5, "\r\n"}, {20, "Average = 5ms"}, {20, "Average = 7ms"}, {20, "Average = 9ms"}}),
            "5");
}

TEST_F(BehindAClosedWindow, APieceWithATimeOfZeroDoesNot) {
  EXPECT_EQ(timeAtDelivery(
                {{5, "\r\n"}, {20, "Average = 0ms"}, {20, "Average = 7ms"}, {20, "Average = 9ms"}}),
            "7");
}

}  // namespace
}  // namespace veltrin
