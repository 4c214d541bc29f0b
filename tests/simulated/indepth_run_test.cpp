// SPDX-License-Identifier: GPL-3.0-or-later
// The InDepth windows: their tests.
#include "simulated/indepth_run.h"

namespace veltrin {
namespace {

const std::string kIntroduction =
    "This provides detailed information on internet latency and loss\r\n"
    "This test can take up to 10 minutes or longer depending on total hops and queries\r\n";

constexpr std::int64_t kSecond = 1000;  // ms

using InDepthTest = InDepthRun;

// --- The steps of a test ---

TEST_F(InDepthTest, PrintsItsStartAndBothToolsBelowTheIntroduction) {
  indepth& opened = openFor("near.example");
  test(opened);
  EXPECT_EQ(opened.dosbox.text.get(), kIntroduction +
                                          "Test Started at 09:05\r\n"
                                          "<ping near.example -n 10>\r\n"
                                          "<pathping -q 100 -p 25 near.example>\r\n");
}

TEST_F(InDepthTest, ASecondTestAddsToTheTextOfTheFirst) {
  indepth& opened = openFor("near.example");
  test(opened);
  const std::string first = opened.dosbox.text;
  simulation.run(60 * kSecond);
  test(opened);
  EXPECT_EQ(opened.dosbox.text.get(), first +
                                          "Test Started at 09:06\r\n"
                                          "<ping near.example -n 10>\r\n"
                                          "<pathping -q 100 -p 25 near.example>\r\n");
}

TEST_F(InDepthTest, WaitsTwoMillisecondsBeforeEachTool) {
  test(openFor("near.example"));
  EXPECT_EQ(moments(), (std::vector<std::int64_t>{2, 2 + kToolTime + 2}));
}

TEST_F(InDepthTest, ShowsThatItRuns) {
  indepth& opened = openFor("near.example");
  bool hourglass = false;
  bool playing = false;
  bool infoShown = true;
  bool describes = true;
  int running = 0;
  at(1, [&] {
    hourglass = opened.mousePointer == MousePointer::Hourglass;
    playing = opened.playit.playing;
    infoShown = opened.info.visible;
    describes = opened.Command5.visible;
    running = simulation.program().shared<InDepthValues>().InDepthRunning;
  });
  test(opened);
  EXPECT_TRUE(hourglass);
  EXPECT_TRUE(playing);
  EXPECT_EQ(opened.playit.file.get(), "C:\\Program Files\\Veltrin\\files\\ping.avi");
  EXPECT_FALSE(infoShown);
  EXPECT_FALSE(describes);
  EXPECT_EQ(running, 1);
}

TEST_F(InDepthTest, ShowsThatItHasEnded) {
  indepth& opened = openFor("near.example");
  test(opened);
  EXPECT_EQ(simulation.program().shared<InDepthValues>().InDepthRunning, 0);
  EXPECT_FALSE(opened.playit.playing);
  EXPECT_TRUE(opened.info.visible);
  EXPECT_EQ(opened.mousePointer.get(), MousePointer::Default);
}

TEST_F(InDepthTest, InfoIsGoneBehindATestAndCannotBePressed) {
  indepth& opened = openFor("near.example");
  test(opened);
  const std::string shown = opened.dosbox.text;
  EXPECT_FALSE(opened.Command5.visible);
  simulation.desktop.click(opened.Command5);
  EXPECT_EQ(opened.dosbox.text.get(), shown);
}

TEST_F(InDepthTest, AFreshWindowHasInfoAgain) {
  keepTheProgramRunning();
  indepth& opened = openFor("near.example");
  test(opened);
  simulation.desktop.click(opened.Command2);
  EXPECT_TRUE(open().Command5.visible);
}

TEST_F(InDepthTest, CopyAndSaveAreEnabledBeforeAnyResult) {
  indepth& opened = openFor("near.example");
  std::vector<bool> enabled;
  at(1, [&] { enabled.push_back(opened.Command3.enabled); });
  at(22, [&] {
    enabled.push_back(opened.Command3.enabled);
    enabled.push_back(opened.Command4.enabled);
  });
  test(opened);
  EXPECT_EQ(enabled, (std::vector<bool>{false, true, true}));
}

TEST_F(InDepthTest, RemembersItsValuesWhenItBegins) {
  indepth& opened = openFor("near.example");
  simulation.desktop.type(opened.text3, "30");
  simulation.desktop.type(opened.text4, "150");
  std::string written;
  at(1, [&] { written = simulation.settings(); });
  test(opened);
  EXPECT_EQ(written, "[InDepth]\r\nSource=near.example\r\nQueries=30\r\nPeriod=150\r\n");
}

TEST_F(InDepthTest, ReadsTheDestinationAnewForPathping) {
  indepth& opened = openFor("near.example");
  at(10, [&] { simulation.desktop.type(opened.Text1, "far.example"); });
  test(opened);
  EXPECT_EQ(commands(), (std::vector<std::string>{"ping near.example -n 10",
                                                  "pathping -q 100 -p 25 far.example"}));
}

TEST_F(InDepthTest, RemembersItsValuesBeforeItPrintsItsFirstLine) {
  indepth& opened = openFor("near.example");
  std::string written;
  std::string shown;
  simulation.loop.after(0, [&] {
    written = simulation.settings();
    shown = opened.dosbox.text;
  });
  test(opened);
  EXPECT_EQ(shown, kIntroduction + "Test Started at 09:05\r\n");
  EXPECT_EQ(written, "[InDepth]\r\nSource=near.example\r\nQueries=100\r\nPeriod=25\r\n");
}

TEST_F(InDepthTest, ComposesTheOptionsBehindThePing) {
  indepth& opened = openFor("near.example");
  at(10, [&] {
    simulation.desktop.type(opened.text3, "40");
    simulation.desktop.type(opened.text4, "300");
    simulation.desktop.click(opened.Check5);
  });
  test(opened);
  EXPECT_EQ(commands().back(), "pathping -q 40 -p 300 -4 near.example");
  EXPECT_EQ(simulation.settings(),
            "[InDepth]\r\nSource=near.example\r\nQueries=100\r\nPeriod=25\r\n");
}

TEST_F(InDepthTest, AnEmptyDestinationIsTestedAllTheSame) {
  test(openFor(""));
  EXPECT_EQ(commands(), (std::vector<std::string>{"ping  -n 10", "pathping -q 100 -p 25 "}));
}

// --- Options ---

TEST_F(InDepthTest, AllTickedTheOptionsStandInTheirOrderBeforeTheDestination) {
  indepth& opened = openFor("near.example");
  for (CheckBox* box : {&opened.Check6, &opened.Check5, &opened.Check4, &opened.Check3,
                        &opened.Check2, &opened.Check1}) {
    simulation.desktop.click(*box);
  }
  test(opened);
  EXPECT_EQ(commands().back(), "pathping -q 100 -p 25 -n -P -R -T -4 -6 near.example");
  EXPECT_EQ(simulation.program().shared<InDepthValues>().InDepthOptions,
            "-q 100 -p 25 -n -P -R -T -4 -6");
}

TEST_F(InDepthTest, EachBoxGivesItsOwnOption) {
  indepth& opened = openFor("near.example");
  const std::vector<std::pair<CheckBox*, std::string>> boxes = {
      {&opened.Check1, "-n"}, {&opened.Check2, "-P"}, {&opened.Check3, "-R"},
      {&opened.Check4, "-T"}, {&opened.Check5, "-4"}, {&opened.Check6, "-6"}};
  for (const auto& [box, option] : boxes) {
    simulation.desktop.click(*box);
    test(opened);
    EXPECT_EQ(commands().back(), "pathping -q 100 -p 25 " + option + " near.example");
    simulation.desktop.click(*box);
  }
}

TEST_F(InDepthTest, QueriesAndPauseAreTakenAsTyped) {
  indepth& opened = openFor("near.example");
  simulation.desktop.type(opened.text3, "few");
  simulation.desktop.type(opened.text4, "");
  test(opened);
  EXPECT_EQ(commands().back(), "pathping -q few -p  near.example");
}

TEST_F(InDepthTest, AnEmptyRememberedPauseGivesAPauseOf25InTheCommand) {
  simulation.program().writeSetting("InDepth", "Period", "");
  test(openFor("near.example"));
  EXPECT_EQ(commands().back(), "pathping -q 100 -p 25 near.example");
}

TEST_F(InDepthTest, OnLaterSystemsTwoLettersNeverReachTheCommand) {
  simulation.program().menu.PostVistaOs = 1;
  indepth& opened = openFor("near.example");
  for (CheckBox* box : {&opened.Check1, &opened.Check2, &opened.Check3, &opened.Check4,
                        &opened.Check5, &opened.Check6}) {
    simulation.desktop.click(*box);
  }
  test(opened);
  EXPECT_EQ(commands().back(), "pathping -q 100 -p 25 -n -P -4 -6 near.example");
}

// --- The remark in the place of the bar ---

class Remark : public InDepthRun {
 protected:
  // What the window shows of the texts that pathping prints at those moments of the
  // clock, when the test begins at once.
  std::string shownOf(std::vector<ToolWrite> texts) {
    pathpingPrints(std::move(texts));
    indepth& opened = openFor("near.example");
    const std::string before =
        kIntroduction + "Test Started at " + simulation.platform.clock.shortTime() + "\r\n";
    test(opened);
    EXPECT_EQ(opened.dosbox.text.get().substr(0, before.size()), before);
    return opened.dosbox.text.get().substr(before.size());
  }
};

TEST_F(Remark, StandsInThePlaceOfABarThatArrivesAfter31Seconds) {
  EXPECT_EQ(shownOf({{31 * kSecond, "  0/ 100 =  0%   |\r\n"}}),
            "  0/ 100 =  0%     Overall Loss/Congestion - Possibly Causing Redirect\r\n");
}

TEST_F(Remark, DoesNotReplaceABarThatArrivesAfter29Seconds) {
  EXPECT_EQ(shownOf({{29 * kSecond, "  0/ 100 =  0%   |\r\n"}}), "  0/ 100 =  0%   |\r\n");
}

TEST_F(Remark, DoesNotReplaceABarThatArrivesAfterExactly30Seconds) {
  EXPECT_EQ(shownOf({{30 * kSecond, "  0/ 100 =  0%   |\r\n"}}), "  0/ 100 =  0%   |\r\n");
}

TEST_F(Remark, DoesNotReplaceABarThatArrivesAfterAFractionLessThan30Seconds) {
  EXPECT_EQ(shownOf({{30 * kSecond - 1, "|"}}), "|");
}

TEST_F(Remark, StandsInThePlaceOfABarThatArrivesAFractionBehind30Seconds) {
  EXPECT_EQ(shownOf({{30 * kSecond + 1, "|"}}),
            "  Overall Loss/Congestion - Possibly Causing Redirect");
}

// Times of day with their thousandths are no round numbers of the machine.
TEST_F(Remark, DoesNotStandAfterExactly30SecondsWheneverTheTestBegins) {
  for (const std::int64_t start : {1, 123, 250, 333, 701, 999}) {
    simulation.run(start + 7 * kSecond);
    const std::int64_t now = simulation.loop.milliseconds();
    pathpingPrints({{now + 30 * kSecond, "exactly|"}, {now + 30 * kSecond + 1, "behind|"}});
    indepth& opened = openFor("near.example");
    test(opened);
    EXPECT_NE(opened.dosbox.text.get().find("exactly|"), std::string::npos) << start;
    EXPECT_EQ(opened.dosbox.text.get().find("behind|"), std::string::npos) << start;
    keepTheProgramRunning();
    opened.close();
  }
}

TEST_F(Remark, ReplacesEveryBarOfAChunkWhateverTheFigures) {
  EXPECT_EQ(shownOf({{40 * kSecond, "100% |\r\n|| 0%\r\n"}}),
            "100%   Overall Loss/Congestion - Possibly Causing Redirect\r\n"
            "  Overall Loss/Congestion - Possibly Causing Redirect"
            "  Overall Loss/Congestion - Possibly Causing Redirect 0%\r\n");
}

TEST_F(Remark, LeavesATextWithoutABarAsItIs) {
  EXPECT_EQ(shownOf({{40 * kSecond, "Trace complete. \xC3\xA9\r\n"}}),
            "Trace complete. \xC3\xA9\r\n");
}

TEST_F(Remark, OfOneTestIsInTheLateTextOnly) {
  EXPECT_EQ(shownOf({{10 * kSecond, "a|"}, {30 * kSecond, "b|"}, {31 * kSecond, "c|"}}),
            "a|b|c  Overall Loss/Congestion - Possibly Causing Redirect");
}

TEST_F(Remark, CountsFromTheStartOfTheTestAndNotOfTheTool) {
  script = [](const std::string& command) {
    const bool ping = command.substr(0, 5) == "ping ";
    return std::vector<ToolWrite>{{ping ? 20 * kSecond : 12 * kSecond, "|"}};
  };
  indepth& opened = openFor("near.example");
  test(opened);
  EXPECT_EQ(opened.dosbox.text.get(), kIntroduction +
                                          "Test Started at 09:05\r\n|"
                                          "  Overall Loss/Congestion - Possibly Causing Redirect");
}

TEST_F(Remark, OfASecondTestCountsFromItsOwnStart) {
  indepth& opened = openFor("near.example");
  test(opened);
  simulation.run(60 * kSecond);
  script = [](const std::string&) { return std::vector<ToolWrite>{{kToolTime, "|"}}; };
  test(opened);
  const std::string shown = opened.dosbox.text;
  EXPECT_EQ(shown.substr(shown.size() - 4), "\r\n||");
}

TEST_F(Remark, StandsInATestThatRunsOverAFullHour) {
  constexpr std::int64_t kTenSecondsToTen = (54 * 60 + 50) * kSecond;
  simulation.run(kTenSecondsToTen);
  EXPECT_EQ(
      shownOf({{kTenSecondsToTen + 29 * kSecond, "a|"}, {kTenSecondsToTen + 31 * kSecond, "b|"}}),
      "a|b  Overall Loss/Congestion - Possibly Causing Redirect");
}

TEST_F(Remark, NeverStandsInATestThatRunsOverMidnight) {
  constexpr std::int64_t kTenSecondsToMidnight = (14 * 3600 + 54 * 60 + 50) * kSecond;
  simulation.run(kTenSecondsToMidnight);
  EXPECT_EQ(shownOf({{kTenSecondsToMidnight + 9 * kSecond, "a|"},
                     {kTenSecondsToMidnight + 31 * kSecond, "b|"},
                     {kTenSecondsToMidnight + 600 * kSecond, "c|"}}),
            "a|b|c|");
}

// --- Events during a test ---

TEST_F(InDepthTest, TheHelpOfAControlIsNotShownDuringATest) {
  indepth& opened = openFor("near.example");
  at(10, [&] { simulation.desktop.moveMouse(opened.Check1); });
  test(opened);
  EXPECT_EQ(opened.info.text.get(), "");
}

TEST_F(InDepthTest, AnEventIsDeliveredBetweenTwoChunks) {
  pathpingPrints({{1000, "a"}, {2000, "b"}, {3000, "c"}});
  indepth& opened = openFor("near.example");
  std::int64_t delivered = 0;
  at(1500, [&] { delivered = simulation.loop.milliseconds(); });
  test(opened);
  EXPECT_EQ(delivered, 2000);
}

TEST_F(InDepthTest, ASecondPressDuringATestRunsNestedInTheFirst) {
  indepth& opened = openFor("near.example");
  int runningBehindTheInner = 1;
  at(10, [&] {
    test(opened);
    runningBehindTheInner = simulation.program().shared<InDepthValues>().InDepthRunning;
  });
  test(opened);
  EXPECT_EQ(commands(),
            (std::vector<std::string>{"ping near.example -n 10", "ping near.example -n 10",
                                      "pathping -q 100 -p 25 near.example",
                                      "pathping -q 100 -p 25 near.example"}));
  EXPECT_EQ(runningBehindTheInner, 0);
}

TEST_F(InDepthTest, ClosedDuringATestItReadsTheToolUnderWayAndStartsNoOther) {
  keepTheProgramRunning();
  script = [](const std::string&) {
    return std::vector<ToolWrite>{{100, "first "}, {100, "second "}, {100, "third "}};
  };
  indepth& opened = openFor("near.example");
  at(150, [&] { simulation.desktop.click(opened.Command2); });
  at(0, [&] { test(opened); });
  simulation.run(60 * kSecond);
  EXPECT_FALSE(simulation.program().isLoaded<indepth>());
  EXPECT_EQ(commands(), (std::vector<std::string>{"ping near.example -n 10"}));
  EXPECT_EQ(opened.dosbox.text.get(),
            kIntroduction + "Test Started at 09:05\r\nfirst second third ");
  EXPECT_EQ(simulation.program().shared<InDepthValues>().InDepthRunning, 0);
}

TEST_F(InDepthTest, ClosedDuringATestItStillYieldsBetweenTheChunksOfTheTool) {
  keepTheProgramRunning();
  script = [](const std::string&) {
    return std::vector<ToolWrite>{{100, "first "}, {100, "second "}, {100, "third "}, {9000, "."}};
  };
  indepth& opened = openFor("near.example");
  std::int64_t delivered = 0;
  at(150, [&] { simulation.desktop.closeWindow(opened); });
  at(250, [&] { delivered = simulation.loop.milliseconds(); });
  at(0, [&] { test(opened); });
  simulation.run(60 * kSecond);
  EXPECT_EQ(delivered, 302);
}

TEST_F(InDepthTest, ClosingTheLastWindowDuringATestEndsTheProgram) {
  indepth& opened = openFor("near.example");
  at(10, [&] { simulation.desktop.closeWindow(opened); });
  at(0, [&] { test(opened); });
  simulation.run(60 * kSecond);
  EXPECT_TRUE(simulation.loop.gate().hasEnded());
  EXPECT_EQ(commands(), (std::vector<std::string>{"ping near.example -n 10"}));
}

// --- Failures ---

TEST_F(InDepthTest, AWaitThatFailsIsPassedOver) {
  simulation.loop.failNextTimer = true;
  test(openFor("near.example"));
  EXPECT_EQ(moments(), (std::vector<std::int64_t>{0, kToolTime + 2}));
}

TEST_F(InDepthTest, SettingsThatCannotBeWrittenAreNotReported) {
  simulation.profiles.refuseWriting = true;
  test(openFor("near.example"));
  EXPECT_TRUE(simulation.desktop.messages.empty());
  EXPECT_EQ(commands().size(), 2U);
}

TEST_F(InDepthTest, AToolThatIsMissingIsToldByTheRunnerAndTheTestGoesOn) {
  simulation.processes.tool = [](const std::string&) { return std::nullopt; };
  indepth& opened = openFor("near.example");
  test(opened);
  ASSERT_EQ(simulation.desktop.messages.size(), 2U);
  EXPECT_EQ(simulation.desktop.messages[1].text, "File or command not found");
  EXPECT_EQ(opened.dosbox.text.get(), kIntroduction + "Test Started at 09:05\r\n");
  EXPECT_EQ(simulation.program().shared<InDepthValues>().InDepthRunning, 0);
  for (int handle = 1; handle <= 4; ++handle) simulation.processes.CloseHandle(handle);
}

TEST_F(InDepthTest, TheTextOfAFailedPathpingIsShownAsItIs) {
  pathpingPrints({{500, "Unable to resolve target system name near.example.\r\n"}});
  indepth& opened = openFor("near.example");
  test(opened);
  EXPECT_EQ(opened.dosbox.text.get(),
            kIntroduction +
                "Test Started at 09:05\r\nUnable to resolve target system name near.example.\r\n");
}

}  // namespace
}  // namespace veltrin
