// SPDX-License-Identifier: GPL-3.0-or-later
// The Trace Route: its runs.
#include "route/trace.h"
#include "simulated/route_run.h"

namespace veltrin {
namespace {

constexpr std::int64_t kStep = kToolTime + 500;  // ms from one command to the next

class TraceRun : public RouteRun {
 protected:
  // Opens the window with these destinations; the boxes behind them are empty.
  trace& openWith(const std::vector<std::string>& hosts, const std::string& passes = "1") {
    window = simulation.program().show<trace>();
    simulation.desktop.choose(window->menuclear);
    const std::vector<TextBox*> boxes = {&window->trace1, &window->trace2, &window->trace3,
                                         &window->trace4, &window->trace5};
    for (std::size_t row = 0; row < hosts.size(); ++row) {
      simulation.desktop.type(*boxes[row], hosts[row]);
    }
    simulation.desktop.type(window->Combo1, passes);
    return *window;
  }

  // Clicks Start and lets the run come to its end.
  void start(trace& opened) { simulation.desktop.click(opened.startit); }

  // Clicks Start as an event among others and lets a minute pass.
  void startAmongEvents(trace& opened) {
    at(simulation.loop.milliseconds(), [&] { simulation.desktop.click(opened.startit); });
    simulation.run(60'000);
  }

  std::shared_ptr<trace> window;
};

// --- The steps of Start ---

TEST_F(TraceRun, PrintsTheWholeRun) {
  trace& opened = openWith({"one.example", "two.example"}, "2");
  start(opened);
  EXPECT_EQ(opened.txtOutputs.text.get(),
            "2 passes will be run"
            "<ping one.example>\r\n"
            "Performing Trace Route - Pass 1 to one.example\r\n"
            "<tracert one.example>\r\n"
            "<ping two.example>\r\n"
            "Performing Trace Route - Pass 1 to two.example\r\n"
            "<tracert two.example>\r\n"
            "<ping one.example>\r\n"
            "Performing Trace Route - Pass 2 to one.example\r\n"
            "<tracert one.example>\r\n"
            "<ping two.example>\r\n"
            "Performing Trace Route - Pass 2 to two.example\r\n"
            "<tracert two.example>\r\n"
            "******* Test is Complete ********* ");
}

TEST_F(TraceRun, PrintsItsLinesInDutch) {
  speakDutch();
  trace& opened = openWith({"one.example"});
  start(opened);
  EXPECT_EQ(opened.txtOutputs.text.get(),
            "1 keer worden uitgevoerd"
            "<ping one.example>\r\n"
            "Trace Route wordt uitgevoerd - Eenmaal 1 to one.example\r\n"
            "<tracert one.example>\r\n"
            "******* Test is Klaar ********* ");
}

TEST_F(TraceRun, FiveDestinationsAndTwelvePassesAre120CommandsPassByPass) {
  const std::vector<std::string> hosts = {"a.example", "b.example", "c.example", "d.example",
                                          "e.example"};
  trace& opened = openWith(hosts, "12");
  start(opened);
  std::vector<std::string> expected;
  std::vector<std::int64_t> expectedMoments;
  for (int pass = 1; pass <= 12; ++pass) {
    for (const std::string& host : hosts) {
      expected.push_back("ping " + host);
      expected.push_back("tracert " + host);
    }
  }
  for (std::int64_t command = 0; command < 120; ++command) {
    expectedMoments.push_back(10 + command * kStep);
  }
  EXPECT_EQ(commands(), expected);
  EXPECT_EQ(moments(), expectedMoments);
  EXPECT_EQ(simulation.loop.milliseconds(), 10 + 120 * kStep);
}

TEST_F(TraceRun, DisablesItsFourButtonsAndNothingElseUntilTheEnd) {
  trace& opened = openWith({"one.example"});
  std::vector<bool> during;
  at(300, [&] {
    during = {opened.startit.enabled,  opened.copy1.enabled,  opened.write1.enabled,
              opened.Command1.enabled, opened.Combo1.enabled, opened.trace1.enabled,
              opened.menuclear.enabled};
  });
  start(opened);
  EXPECT_EQ(during, (std::vector<bool>{false, false, false, false, true, true, true}));
  EXPECT_TRUE(opened.startit.enabled);
  EXPECT_TRUE(opened.copy1.enabled);
  EXPECT_TRUE(opened.write1.enabled);
  EXPECT_TRUE(opened.Command1.enabled);
}

TEST_F(TraceRun, ThePointerIsAnHourglassDuringTheRun) {
  trace& opened = openWith({"one.example"});
  MousePointer during = MousePointer::Default;
  at(300, [&] { during = opened.mousePointer; });
  start(opened);
  EXPECT_EQ(during, MousePointer::Hourglass);
  EXPECT_EQ(opened.mousePointer.get(), MousePointer::Default);
}

TEST_F(TraceRun, ShowsTheCommandLineThatIsBeingRun) {
  trace& opened = openWith({"one.example"});
  std::vector<std::string> shown;
  for (const std::int64_t moment : {100, 600}) {
    at(moment, [&] { shown.push_back(opened.Text1.text); });
  }
  start(opened);
  EXPECT_EQ(shown, (std::vector<std::string>{"ping one.example", "tracert one.example"}));
}

TEST_F(TraceRun, SkipsEmptyDestinationsBehindTheFirst) {
  trace& opened = openWith({"one.example", "", "three.example", "", "five.example"});
  start(opened);
  EXPECT_EQ(commands(), (std::vector<std::string>{"ping one.example", "tracert one.example",
                                                  "ping three.example", "tracert three.example",
                                                  "ping five.example", "tracert five.example"}));
}

TEST_F(TraceRun, AnEmptyFirstDestinationIsRunAllTheSame) {
  trace& opened = openWith({""});
  start(opened);
  EXPECT_EQ(commands(), (std::vector<std::string>{"ping ", "tracert "}));
  EXPECT_EQ(opened.txtOutputs.text.get(),
            "1 passes will be run<ping >\r\nPerforming Trace Route - Pass 1 to \r\n<tracert >\r\n"
            "******* Test is Complete ********* ");
}

TEST_F(TraceRun, ShowsEachChunkAsItArrives) {
  script = [](const std::string& command) {
    if (command != "ping one.example") return std::vector<ToolWrite>{};
    return std::vector<ToolWrite>{{100, "first "}, {1000, "second "}};
  };
  trace& opened = openWith({"one.example"});
  std::string between;
  at(500, [&] { between = opened.txtOutputs.text; });
  start(opened);
  EXPECT_EQ(between, "1 passes will be runfirst second ");
}

TEST_F(TraceRun, AnEventIsDeliveredBetweenTwoChunks) {
  script = [](const std::string& command) {
    if (command != "ping one.example") return std::vector<ToolWrite>{};
    return std::vector<ToolWrite>{{100, "first "}, {100, "second "}, {100, "third "}};
  };
  trace& opened = openWith({"one.example"});
  std::int64_t delivered = 0;
  at(150, [&] { delivered = simulation.loop.milliseconds(); });
  start(opened);
  EXPECT_EQ(delivered, 210);
}

TEST_F(TraceRun, TheCaretFollowsEveryPieceOfText) {
  trace& opened = openWith({"one.example"});
  std::vector<std::size_t> lengths;
  opened.txtOutputs.observeCaret([&] { lengths.push_back(opened.txtOutputs.text.get().size()); });
  start(opened);
  ASSERT_EQ(lengths.size(), 5U);
  EXPECT_EQ(lengths.back(), opened.txtOutputs.text.get().size());
}

// --- Old text at Start ---

TEST_F(TraceRun, ATextThatBeginsWithThisIsEmptiedWithoutAQuestion) {
  trace& opened = openWith({"one.example"});
  simulation.desktop.type(opened.txtOutputs, "This is how it works");
  start(opened);
  EXPECT_TRUE(simulation.desktop.messages.empty());
  EXPECT_EQ(opened.txtOutputs.text.get().substr(0, 20), "1 passes will be run");
}

TEST_F(TraceRun, ATextThatBeginsWithThisInAnotherCaseIsAskedAbout) {
  trace& opened = openWith({"near.example"});
  for (const char* text : {"this is a note", "THIS is a note", "Thi"}) {
    simulation.desktop.type(opened.txtOutputs, text);
    simulation.desktop.messages.clear();
    simulation.desktop.click(opened.startit);
    ASSERT_EQ(simulation.desktop.messages.size(), 1U) << text;
    EXPECT_EQ(simulation.desktop.messages[0].text, "Would you like to clear the existing Data?");
  }
}

TEST_F(TraceRun, AskedWhetherToClearTheOldTextTheUserSaysYes) {
  trace& opened = openWith({"one.example"});
  simulation.desktop.type(opened.txtOutputs, "old");
  simulation.desktop.answers = {{kAnswerYes, 0}};
  start(opened);
  expectOneMessage("Trace Routes", 4, "Would you like to clear the existing Data?");
  EXPECT_EQ(opened.txtOutputs.text.get(),
            "1 passes will be run<ping one.example>\r\n"
            "Performing Trace Route - Pass 1 to one.example\r\n<tracert one.example>\r\n"
            "******* Test is Complete ********* ");
}

TEST_F(TraceRun, ASecondStartAnsweredNoKeepsTheOldTextAndGoesOnBelowIt) {
  trace& opened = openWith({"one.example"});
  start(opened);
  const std::string first = opened.txtOutputs.text;
  simulation.desktop.answers = {{kAnswerNo, 0}};
  start(opened);
  EXPECT_EQ(opened.txtOutputs.text.get(),
            first +
                "\r\n1 passes will be run<ping one.example>\r\n"
                "Performing Trace Route - Pass 1 to one.example\r\n<tracert one.example>\r\n"
                "******* Test is Complete ********* ");
}

TEST_F(TraceRun, TheQuestionIsPutInDutch) {
  speakDutch();
  trace& opened = openWith({"one.example"});
  simulation.desktop.type(opened.txtOutputs, "old");
  start(opened);
  expectOneMessage("Trace Routes", 4, "Wilt u de bestaande Gegevens wissen?");
}

TEST_F(TraceRun, NothingIsAskedOverAnEmptyBox) {
  start(openWith({"one.example"}));
  EXPECT_TRUE(simulation.desktop.messages.empty());
}

TEST_F(TraceRun, TheButtonsAreDisabledAndThePointerIsNormalDuringTheQuestion) {
  trace& opened = openWith({"one.example"});
  simulation.desktop.type(opened.txtOutputs, "old");
  simulation.desktop.answers = {{kAnswerYes, 1000}};
  bool startable = true;
  MousePointer pointer = MousePointer::Hourglass;
  at(500, [&] {
    startable = opened.startit.enabled;
    pointer = opened.mousePointer;
  });
  start(opened);
  EXPECT_FALSE(startable);
  EXPECT_EQ(pointer, MousePointer::Default);
}

TEST_F(TraceRun, ThePassesAreTakenBehindTheQuestion) {
  trace& opened = openWith({"one.example"});
  simulation.desktop.type(opened.txtOutputs, "old");
  simulation.desktop.answers = {{kAnswerYes, 1000}};
  at(500, [&] { opened.Combo1.enter("2"); });
  start(opened);
  EXPECT_EQ(simulation.processes.starts.size(), 4U);
}

// --- Edits during a run ---

TEST_F(TraceRun, ADestinationEditedBeforeItsTurnIsRunAsEdited) {
  trace& opened = openWith({"one.example", "two.example"});
  at(100, [&] { simulation.desktop.type(opened.trace2, "other.example"); });
  start(opened);
  EXPECT_EQ(commands(), (std::vector<std::string>{"ping one.example", "tracert one.example",
                                                  "ping other.example", "tracert other.example"}));
}

TEST_F(TraceRun, ADestinationEditedBehindItsPingIsTracedAsEdited) {
  trace& opened = openWith({"one.example"});
  at(100, [&] { simulation.desktop.type(opened.trace1, "other.example"); });
  start(opened);
  EXPECT_EQ(opened.txtOutputs.text.get(),
            "1 passes will be run<ping one.example>\r\n"
            "Performing Trace Route - Pass 1 to other.example\r\n<tracert other.example>\r\n"
            "******* Test is Complete ********* ");
}

TEST_F(TraceRun, ADestinationEmptiedBeforeItsTurnIsSkipped) {
  trace& opened = openWith({"one.example", "two.example"});
  at(100, [&] { simulation.desktop.doubleClick(opened.trace2); });
  start(opened);
  EXPECT_EQ(commands(), (std::vector<std::string>{"ping one.example", "tracert one.example"}));
}

TEST_F(TraceRun, ADestinationFilledDuringTheRunIsRunWhenItsTurnComes) {
  trace& opened = openWith({"one.example"});
  at(100, [&] { simulation.desktop.type(opened.trace5, "five.example"); });
  start(opened);
  EXPECT_EQ(commands(), (std::vector<std::string>{"ping one.example", "tracert one.example",
                                                  "ping five.example", "tracert five.example"}));
}

TEST_F(TraceRun, TheMenuWorksDuringARun) {
  trace& opened = openWith({"one.example", "two.example"}, "2");
  at(100, [&] { simulation.desktop.choose(opened.menuclear); });
  start(opened);
  EXPECT_EQ(commands(),
            (std::vector<std::string>{"ping one.example", "tracert ", "ping ", "tracert "}));
}

TEST_F(TraceRun, ThePassesAreFixedAtStart) {
  trace& opened = openWith({"one.example"}, "2");
  at(100, [&] { simulation.desktop.type(opened.Combo1, "9"); });
  start(opened);
  EXPECT_EQ(simulation.processes.starts.size(), 4U);
}

TEST_F(TraceRun, AClickOnStartDuringARunDoesNothing) {
  trace& opened = openWith({"one.example"});
  at(100, [&] { simulation.desktop.click(opened.startit); });
  start(opened);
  EXPECT_EQ(simulation.processes.starts.size(), 2U);
}

// --- Numbers of passes as a user may type them ---

TEST_F(TraceRun, PassesThatAreNoNumberRunOnceWithTheCounterAsItWas) {
  trace& opened = openWith({"one.example"}, "many");
  start(opened);
  EXPECT_EQ(opened.txtOutputs.text.get(),
            "many passes will be run<ping one.example>\r\n"
            "Performing Trace Route - Pass 0 to one.example\r\n<tracert one.example>\r\n"
            "******* Test is Complete ********* ");
}

TEST_F(TraceRun, PassesThatAreNoNumberBehindARunOfThreeAreCalledTheFourth) {
  trace& opened = openWith({"one.example"}, "3");
  start(opened);
  simulation.desktop.type(opened.Combo1, "3x");
  simulation.desktop.answers = {{kAnswerYes, 0}};
  start(opened);
  EXPECT_EQ(opened.txtOutputs.text.get(),
            "3x passes will be run<ping one.example>\r\n"
            "Performing Trace Route - Pass 4 to one.example\r\n<tracert one.example>\r\n"
            "******* Test is Complete ********* ");
}

TEST_F(TraceRun, EmptyPassesRunOnce) {
  trace& opened = openWith({"one.example"}, "");
  start(opened);
  EXPECT_EQ(commands(), (std::vector<std::string>{"ping one.example", "tracert one.example"}));
}

TEST_F(TraceRun, NoughtAndNegativePassesRunNothing) {
  trace& opened = openWith({"one.example"}, "0");
  start(opened);
  EXPECT_EQ(opened.txtOutputs.text.get(),
            "0 passes will be run******* Test is Complete ********* ");
  simulation.desktop.type(opened.Combo1, "-3");
  start(opened);
  EXPECT_TRUE(commands().empty());
}

TEST_F(TraceRun, AFractionOfAPassIsNotRun) {
  start(openWith({"one.example"}, "2.9"));
  EXPECT_EQ(simulation.processes.starts.size(), 4U);
}

TEST_F(TraceRun, BlanksAroundThePassesDoNotMatter) {
  start(openWith({"one.example"}, " 2 "));
  EXPECT_EQ(simulation.processes.starts.size(), 4U);
}

// --- Failures ---

TEST_F(TraceRun, ADestinationThatDoesNotAnswerLeavesTheTextOfTheTools) {
  script = [](const std::string&) {
    return std::vector<ToolWrite>{{4000, "Request timed out.\r\n"}};
  };
  trace& opened = openWith({"one.example"});
  start(opened);
  EXPECT_EQ(opened.txtOutputs.text.get(),
            "1 passes will be runRequest timed out.\r\n"
            "Performing Trace Route - Pass 1 to one.example\r\nRequest timed out.\r\n"
            "******* Test is Complete ********* ");
}

TEST_F(TraceRun, AToolThatIsMissingIsToldByTheRunnerAndTheRunGoesOn) {
  simulation.processes.tool = [](const std::string&) { return std::nullopt; };
  trace& opened = openWith({"one.example"});
  start(opened);
  ASSERT_EQ(simulation.desktop.messages.size(), 2U);
  EXPECT_EQ(simulation.desktop.messages[0].text, "File or command not found");
  EXPECT_EQ(simulation.desktop.messages[0].style, 16);
  EXPECT_EQ(opened.txtOutputs.text.get(),
            "1 passes will be runPerforming Trace Route - Pass 1 to one.example\r\n"
            "******* Test is Complete ********* ");
  EXPECT_EQ(simulation.processes.openHandles(), 4U);  // both pipes, which the runner leaves open
  for (int handle = 1; handle <= 4; ++handle) simulation.processes.CloseHandle(handle);
}

TEST_F(TraceRun, AWaitThatFailsIsPassedOver) {
  simulation.loop.failNextTimer = true;
  trace& opened = openWith({"one.example"});
  start(opened);
  EXPECT_EQ(moments(), (std::vector<std::int64_t>{0, kStep}));
}

// --- Closing during a run ---

TEST_F(TraceRun, ClosedDuringARunItReadsTheToolUnderWayAndStartsNoOther) {
  keepTheProgramRunning();
  script = [](const std::string&) {
    return std::vector<ToolWrite>{{100, "first "}, {100, "second "}, {100, "third "}};
  };
  trace& opened = openWith({"one.example", "two.example"}, "2");
  at(150, [&] { simulation.desktop.closeWindow(opened); });
  startAmongEvents(opened);
  EXPECT_FALSE(simulation.program().isLoaded<trace>());
  EXPECT_EQ(commands(), (std::vector<std::string>{"ping one.example"}));
  EXPECT_EQ(opened.txtOutputs.text.get().substr(0, 39), "2 passes will be runfirst second third ");
}

TEST_F(TraceRun, ClosedDuringARunItStillYieldsBetweenTheChunksOfTheTool) {
  keepTheProgramRunning();
  script = [](const std::string&) {
    return std::vector<ToolWrite>{{100, "first "}, {100, "second "}, {100, "third "}, {9000, "."}};
  };
  trace& opened = openWith({"one.example"});
  std::int64_t delivered = 0;
  at(150, [&] { simulation.desktop.closeWindow(opened); });
  at(250, [&] { delivered = simulation.loop.milliseconds(); });
  startAmongEvents(opened);
  EXPECT_EQ(delivered, 310);
}

TEST_F(TraceRun, ClosedDuringARunItsRoutineComesToItsEndBehindTheDestination) {
  keepTheProgramRunning();
  trace& opened = openWith({"a.example", "b.example", "c.example"}, "1e300");
  at(100, [&] { simulation.desktop.closeWindow(opened); });
  bool ended = false;
  at(10 + kToolTime + 500 + 500 + 1, [&] { ended = opened.startit.enabled; });
  startAmongEvents(opened);
  EXPECT_TRUE(ended);
  EXPECT_EQ(opened.mousePointer.get(), MousePointer::Default);
}

TEST_F(TraceRun, OpenedAnewDuringTheOldRunItStartsAFreshOne) {
  keepTheProgramRunning();
  trace& opened = openWith({"one.example"}, "5");
  const std::shared_ptr<trace> first = window;
  at(100, [&] { simulation.desktop.closeWindow(opened); });
  at(200, [&] { start(openWith({"new.example"})); });
  startAmongEvents(opened);
  EXPECT_EQ(commands(), (std::vector<std::string>{"ping one.example", "ping new.example",
                                                  "tracert new.example"}));
  EXPECT_EQ(window->txtOutputs.text.get(),
            "1 passes will be run<ping new.example>\r\n"
            "Performing Trace Route - Pass 1 to new.example\r\n<tracert new.example>\r\n"
            "******* Test is Complete ********* ");
}

TEST_F(TraceRun, ClosingTheLastWindowDuringARunEndsTheProgram) {
  trace& opened = openWith({"one.example"}, "12");
  at(100, [&] { simulation.desktop.closeWindow(opened); });
  startAmongEvents(opened);
  EXPECT_TRUE(simulation.loop.gate().hasEnded());
  EXPECT_EQ(commands(), (std::vector<std::string>{"ping one.example"}));
}

}  // namespace
}  // namespace veltrin
