// SPDX-License-Identifier: GPL-3.0-or-later
// The Outage monitor: its load, its start, the address that it probes, its pace.
#include "simulated/outage_run.h"

namespace veltrin {
namespace {

class OutageStart : public OutageRun {
 protected:
  void remember(const std::string& section, const std::string& entry) {
    simulation.profiles.contents[kProgramFolder + "\\Files\\Veltrin.dat"] +=
        "[" + section + "]\r\n" + entry + "\r\n";
  }

  // What the user reads of the address.
  std::string shownAddress() const { return window->Label8.caption; }

  // Distances of the first probes, in ms.
  std::vector<std::int64_t> periods() const {
    const auto moments = probeMoments();
    std::vector<std::int64_t> distances;
    for (std::size_t at = 1; at < moments.size(); ++at) {
      distances.push_back(moments[at] - moments[at - 1]);
    }
    return distances;
  }

  void scanEvery(const std::string& text) {
    open();
    simulation.desktop.type(window->Combo1, text);
  }
};

// --- Load ---

TEST_F(OutageStart, ShowsItsGraphAndLabelsWhenItOpens) {
  const MonOut& opened = open();
  EXPECT_EQ(opened.caption.get(), "Monitor for Outage");
  EXPECT_EQ(opened.height.get(), 3775);
  EXPECT_EQ(opened.Command3.caption.get(), "Start");
  EXPECT_EQ(opened.Command2.caption.get(), "Full Report");
  EXPECT_EQ(opened.Command1.caption.get(), "Quit");
  EXPECT_EQ(opened.Check1.caption.get(), "Show Logged Data");
  EXPECT_EQ(opened.Check1.value.get(), kUnchecked);
  EXPECT_EQ(opened.Label2.caption.get(), "Started");
  EXPECT_EQ(opened.Label3.caption.get(), "Outages Detected");
  EXPECT_EQ(opened.Label4.caption.get(), "0");
  EXPECT_EQ(opened.Label5.caption.get(), "Last 60 Minutes");
  EXPECT_EQ(opened.Label9.caption.get(), "Scan Time");
  EXPECT_EQ(opened.Label10.caption.get(), "Sec");
}

TEST_F(OutageStart, HasAGraphOf1800By700OnABrownGround) {
  const MonOut& opened = open();
  EXPECT_EQ(opened.OGraph.scale.get(), (UserScale{1800, 700}));
  EXPECT_EQ(opened.OGraph.backColour.get(), (Colour{0x53, 0x39, 0x04}));
}

TEST_F(OutageStart, ScansEveryTwoSecondsWhenNothingIsRemembered) {
  const MonOut& opened = open();
  EXPECT_EQ(opened.Combo1.text.get(), "2");
  EXPECT_EQ(opened.Combo1.items.get(), (std::vector<std::string>{"1", "2", "5", "10"}));
}

TEST_F(OutageStart, TakesTheRememberedScanTime) {
  remember("Settings", "Out Scan Time=5");
  EXPECT_EQ(open().Combo1.text.get(), "5");
}

TEST_F(OutageStart, SetsItsToolTipsInEnglishOnly) {
  EXPECT_EQ(open().Label4.toolTip.get(), "This Shows any Outages Detected");
  keepTheProgramRunning();
  window->close();
  speakDutch();
  EXPECT_EQ(open().Label4.toolTip.get(), "");
}

// --- The lower part of the window ---

TEST_F(OutageStart, ShowsItsLoggedDataWhileTheBoxIsTicked) {
  open();
  simulation.desktop.click(window->Check1);
  EXPECT_EQ(window->height.get(), 5410);
  simulation.desktop.click(window->Check1);
  EXPECT_EQ(window->height.get(), 3775);
}

TEST_F(OutageStart, AReleaseOfTheMouseSetsTheHeightByTheTick) {
  open();
  window->height = 6700;
  simulation.desktop.releaseMouse(window->Check1, MouseButton::Left);
  EXPECT_EQ(window->height.get(), 3775);
  window->Check1.value = kChecked;
  simulation.desktop.releaseMouse(window->Check1, MouseButton::Left);
  EXPECT_EQ(window->height.get(), 5410);
}

// --- Leaving ---

TEST_F(OutageStart, QuitRemembersTheScanTime) {
  scanEvery("10");
  keepTheProgramRunning();
  simulation.program().show<MonOut>();
  simulation.desktop.click(window->Command1);
  EXPECT_EQ(simulation.settings(), "[Settings]\r\nOut Scan Time=10\r\n");
  EXPECT_FALSE(window->isLoaded());
}

TEST_F(OutageStart, TheCloseBoxRemembersItToo) {
  keepTheProgramRunning();
  scanEvery("7");
  window->close();
  EXPECT_EQ(simulation.settings(), "[Settings]\r\nOut Scan Time=7\r\n");
}

// --- The full report ---

TEST_F(OutageStart, OpensItsLogInNotepad) {
  probe(1);
  simulation.desktop.click(window->Command2);
  EXPECT_EQ(simulation.shell.runs,
            (std::vector<SimulatedShell::Run>{
                {"C:\\Windows\\notepad.exe C:\\Program Files\\Veltrin\\Files\\Outage Log 07 Mar 26 "
                 "0905.txt",
                 1}}));
}

TEST_F(OutageStart, OpensNothingBeforeThereIsALog) {
  open();
  simulation.desktop.click(window->Command2);
  EXPECT_TRUE(simulation.shell.runs.empty());
}

TEST_F(OutageStart, ASystemWithoutNotepadShowsNothing) {
  probe(1);
  simulation.shell.refuse = true;
  simulation.desktop.click(window->Command2);
  EXPECT_TRUE(simulation.desktop.messages.empty());
}

// --- Start ---

TEST_F(OutageStart, StartTurnsIntoStopAndHoldsTheOtherButtonsBack) {
  open();
  window->dosbox.text = "old";
  std::string caption;
  bool quit = true;
  bool report = true;
  bool old = true;
  behind(1, [&] {
    caption = window->Command3.caption;
    quit = window->Command1.enabled;
    report = window->Command2.enabled;
    old = window->dosbox.text.get().starts_with("old");
    press();
  });
  start();
  EXPECT_EQ(caption, "Stop");
  EXPECT_FALSE(quit);
  EXPECT_FALSE(report);
  EXPECT_FALSE(old);
  EXPECT_EQ(window->Command3.caption.get(), "Start");
  EXPECT_TRUE(window->Command1.enabled);
  EXPECT_TRUE(window->Command2.enabled);
}

TEST_F(OutageStart, ShowsWhenItStartedAndWhatItProbes) {
  probe(1);
  EXPECT_EQ(window->Label1.caption.get(), "07 Mar 26 at 09:05:00");
  EXPECT_EQ(window->Label8.caption.get(), "Testing to IP: 192.0.2.7");
  EXPECT_EQ(window->Label4.caption.get(), "0");
}

TEST_F(OutageStart, NamesItsLogByTheMomentOfItsLoad) {
  open();
  simulation.run(61'000);
  stopBehind(1);
  start();
  EXPECT_TRUE(log().starts_with("Outage Test Started: 07 Mar 26 at 09:06:01\r\n")) << log();
}

TEST_F(OutageStart, WritesTheAddressThatTheWorldSees) {
  simulation.program().start.LocalIp = "192.168.1.5";
  simulation.program().start.PublicIp = "203.0.113.9";
  probe(1);
  EXPECT_TRUE(
      log().starts_with("Outage Test Started: 07 Mar 26 at 09:05:00\r\n\r\n"
                        "For IP: 203.0.113.9\r\n"))
      << log();
}

TEST_F(OutageStart, WritesTheLocalAddressWhenTheWorldsIsNotKnown) {
  simulation.program().start.LocalIp = "192.168.1.5";
  probe(1);
  EXPECT_NE(log().find("For IP: 192.168.1.5\r\n"), std::string::npos);
}

TEST_F(OutageStart, TellsItsBeginningInTheBoxOfEventsToo) {
  simulation.program().start.LocalIp = "192.168.1.5";
  probe(1);
  EXPECT_TRUE(window->dosbox.text.get().starts_with(
      "Outage Test Started: 07 Mar 26 at 09:05:00\r\nFor IP: 192.168.1.5\r\n"))
      << window->dosbox.text.get();
}

// --- The address ---

TEST_F(OutageStart, FindsTheAddressBetweenTheBracketsOfAPing) {
  probe(1);
  EXPECT_EQ(commands(), std::vector<std::string>{"ping www.wikipedia.org"});
  EXPECT_EQ(simulation.icmp.echoes.at(0).address, 0x070200C0U);
  EXPECT_NE(simulation.settings().find("[Monitor]\r\nUseP=192.0.2.7\r\n"), std::string::npos);
}

struct AddressCase {
  const char* name;
  const char* ping;     // what the tool prints
  const char* address;  // that is probed
};

class OutageAddress : public OutageStart, public testing::WithParamInterface<AddressCase> {};

TEST_P(OutageAddress, IsReadByTheBrackets) {
  ping = GetParam().ping;
  probe(1);
  EXPECT_EQ(shownAddress(), std::string("Testing to IP: ") + GetParam().address);
}

INSTANTIATE_TEST_SUITE_P(
    All, OutageAddress,
    testing::Values(AddressCase{"TwentyCharactersWithoutAClosingOne",
                                "Pinging [123456789012345678901234567890", "12345678901234567890"},
                    AddressCase{"NoneThatClosesFarther",
                                "Pinging [2001:db8:85a3:8d3:1319:8a2e:370:7348] with",
                                "2001:db8:85a3:8d3:13"},
                    AddressCase{"AClosingOneAlone", "10.0.0.1] with", "10.0.0.1"},
                    AddressCase{"AtTheBeginning", "[10.0.0.1] with", "10.0.0.1"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(OutageStart, ATextThatBeginsWithAClosingBracketHasNoAddress) {
  remember("Monitor", "UseP=192.0.2.9");
  ping = "] with";
  probe(1);
  EXPECT_EQ(shownAddress(), "Testing to IP: 192.0.2.9");
}

TEST_F(OutageStart, TakesTheWholeTextOfADestinationThatDoesNotExist) {
  ping = "Ping request could not find host www.wikipedia.org. Please check the name and try again.";
  probe(2);
  EXPECT_EQ(shownAddress(),
            "Testing to IP: Ping request could not find host www.wikipedia.org. Please check the "
            "name and try again.");
  EXPECT_EQ(simulation.icmp.echoes.at(1).address, 0U);
}

TEST_F(OutageStart, KeepsTheNewestTextOfItsBoxesInView) {
  open();
  int followed = 0;
  for (TextBox* box : {&window->DosBox2, &window->Text1, &window->dosbox}) {
    box->observeCaret([&followed] { ++followed; });
    box->text += "new";
  }
  EXPECT_EQ(followed, 3);
}

TEST_F(OutageStart, EmptiesTheBoxOfThePing) {
  open();
  std::string during;
  at(21, [&] { during = window->DosBox2.text; });
  script = [](const std::string&) -> std::vector<ToolWrite> {
    return {{20, "Pinging [192.0.2.7]"}, {20, "\r\n"}};
  };
  stopBehind(1);
  window->DosBox2.text = "old";
  start();
  EXPECT_EQ(during, "Pinging [192.0.2.7]\r\n");
  EXPECT_EQ(window->DosBox2.text.get(), "");
}

TEST_F(OutageStart, TakesTheRememberedAddressWhenPingPrintsNothing) {
  remember("Monitor", "UseP=1.2.3.");
  ping = "";
  probe(1);
  EXPECT_EQ(shownAddress(), "Testing to IP: 1.2.3.");
  EXPECT_EQ(commands().size(), 1U);
}

TEST_F(OutageStart, ARememberedAddressOfFiveCharactersIsNone) {
  remember("Monitor", "UseP=1.2.3");
  ping = "";
  open();
  start();
  EXPECT_EQ(commands().size(), 5U);
}

TEST_F(OutageStart, GivesUpBehindFivePingsASecondApart) {
  ping = "";
  open();
  start();
  EXPECT_EQ(moments(), (std::vector<std::int64_t>{0, 1020, 2040, 3060, 4080}));
  expectOneMessage("Veltrin", kMessageOk,
                   "Unable to Ping www.wikipedia.org, check your internet connection");
  EXPECT_TRUE(simulation.icmp.echoes.empty());
  EXPECT_EQ(window->Command3.caption.get(), "Stop");
  EXPECT_FALSE(window->Command1.enabled);
  press();
  EXPECT_EQ(window->Command3.caption.get(), "Start");
  EXPECT_TRUE(window->Command1.enabled);
  EXPECT_TRUE(
      log().ends_with("\r\nTotal Test Time: \r\nTotal Test Completed: 0\r\n"
                      "Total Outages: 0\r\nPackets Loss: 0 of 0\r\n\r\n\r\n"))
      << log();
}

TEST_F(OutageStart, APingThatIsMissingIsToldAndTheRememberedAddressStandsIn) {
  remember("Monitor", "UseP=192.0.2.9");
  simulation.processes.tool = [](const std::string&) { return std::nullopt; };
  failedStarts = 1;
  probe(1);
  expectOneMessage("Veltrin", kMessageCritical, "File or command not found");
  EXPECT_EQ(shownAddress(), "Testing to IP: 192.0.2.9");
}

// --- The pace ---

TEST_F(OutageStart, ProbesAtItsScanTimeWhateverTheProbesTake) {
  times = {{1, 150}, {2, 3}, {3, 90}};
  probe(5);
  EXPECT_EQ(periods(), (std::vector<std::int64_t>{1998, 1998, 1998, 1998}));
}

TEST_F(OutageStart, TakesANewScanTimeWithTheNextProbe) {
  open();
  afterProbe = [this](std::size_t number) {
    if (number == 2) simulation.loop.after(500, [this] { window->Combo1.enter("1"); });
    if (number == 5) simulation.loop.after(500, [this] { press(); });
  };
  start();
  EXPECT_EQ(periods(), (std::vector<std::int64_t>{1998, 1998, 998, 998}));
}

TEST_F(OutageStart, AProbeLongerThanTheScanTimeStartsTheNextAtOnce) {
  failing = {1, 2, 3};
  trace.clear();
  scanEvery("0.2");
  afterProbe = [this](std::size_t number) {
    if (number == 3) simulation.loop.after(10, [this] { press(); });
  };
  start();
  EXPECT_EQ(periods(), (std::vector<std::int64_t>{200, 200}));
}

TEST_F(OutageStart, APauseOfFiftyMillisecondsIsNone) {
  times = {{1, 48}, {2, 47}};
  scanEvery("0.1");
  afterProbe = [this](std::size_t number) {
    if (number == 3) simulation.loop.after(10, [this] { press(); });
  };
  start();
  EXPECT_EQ(periods(), (std::vector<std::int64_t>{48, 98}));
}

TEST_F(OutageStart, KeepsItsPaceWhileTheScanTimeIsNoNumber) {
  open();
  afterProbe = [this](std::size_t number) {
    if (number == 2) simulation.loop.after(500, [this] { window->Combo1.enter(""); });
    if (number == 3) simulation.loop.after(500, [this] { window->Combo1.enter("soon"); });
    if (number == 5) simulation.loop.after(500, [this] { press(); });
  };
  start();
  EXPECT_EQ(periods(), (std::vector<std::int64_t>{1998, 1998, 1998, 1998}));
}

TEST_F(OutageStart, WaitsTwoSecondsWhenTheScanTimeNeverWasANumber) {
  scanEvery("soon");
  stopBehind(3);
  start();
  EXPECT_EQ(periods(), (std::vector<std::int64_t>{2020, 2020}));
}

TEST_F(OutageStart, WaitsForAScanTimeOfMonths) {
  scanEvery("99999999");
  stopBehind(1);
  start();
  EXPECT_EQ(simulation.icmp.echoes.size(), 1U);
  EXPECT_GT(simulation.loop.milliseconds(), 2'000'000'000);
}

TEST_F(OutageStart, KeepsItsPaceOverMidnightAndWhenTheClockIsSetBack) {
  open();
  simulation.clock.setForward = 53'697'000;  // to 23:59:57
  behind(4, [this] { press(); });
  at(3000, [this] { simulation.clock.setForward -= 3'600'000; });
  start();
  EXPECT_EQ(periods(), (std::vector<std::int64_t>{1998, 1998, 1998}));
}

// --- The span of the graph ---

TEST_F(OutageStart, NamesTheSpanOfItsGraphByTheScanTime) {
  const std::vector<std::pair<std::string, std::string>> spans = {{"2", "Last 2 Hours"},
                                                                  {"5", "Last 5 Hours"},
                                                                  {"10", "Last 10 Hours"},
                                                                  {"3", "Last 10 Hours"},
                                                                  {"1", "Last 60 Minutes"}};
  open();
  for (const auto& [scanTime, name] : spans) {
    simulation.desktop.type(window->Combo1, scanTime);
    stopBehind(probes + 1);
    start();
    EXPECT_EQ(window->Label5.caption.get(), name) << scanTime;
  }
}

// --- The running time ---

TEST_F(OutageStart, TellsHowLongItRuns) {
  probe(3);
  EXPECT_EQ(window->Label7.caption.get(), "Run Time: 4 sec");
}

TEST_F(OutageStart, TellsNegativeTimesWhenTheClockWasSetBack) {
  open();
  behind(2, [this] { press(); });
  at(1000, [this] { simulation.clock.setForward = -3'600'000; });
  start();
  EXPECT_EQ(window->Label7.caption.get(), "Run Time: -59 mins -58 sec");
}

TEST(DateDiff, TellsALengthByItsPieces) {
  const DateTime start{2026, 3, 7, 9, 5, 0, 0};
  const auto until = [&](DateTime end) { return DateDiffEx(start, end); };
  EXPECT_EQ(until({2026, 3, 7, 9, 5, 0, 0}), "");
  EXPECT_EQ(until({2026, 3, 7, 9, 5, 1, 0}), "1 se");
  EXPECT_EQ(until({2026, 3, 7, 9, 5, 3, 0}), "3 sec");
  EXPECT_EQ(until({2026, 3, 7, 9, 6, 0, 0}), "1 mi");
  EXPECT_EQ(until({2026, 3, 7, 9, 7, 2, 0}), "2 mins 2 sec");
  EXPECT_EQ(until({2026, 3, 7, 10, 5, 0, 0}), "1 h");
  EXPECT_EQ(until({2026, 3, 7, 11, 6, 1, 0}), "2 hrs 1 min 1 se");
  EXPECT_EQ(until({2026, 3, 8, 9, 5, 0, 0}), "1 da");
  EXPECT_EQ(until({2026, 3, 10, 9, 4, 59, 0}), "2 days 23 hrs 59 mins 59 sec");
  EXPECT_EQ(until({2027, 3, 6, 9, 5, 0, 0}), "364 day");
  EXPECT_EQ(until({2027, 3, 7, 9, 5, 0, 0}), "1 yea");
  EXPECT_EQ(until({2028, 3, 8, 9, 5, 5, 0}), "2 years 2 days 5 sec");
}

TEST(DateDiff, LooksAtWholeSeconds) {
  EXPECT_EQ(DateDiffEx({2026, 3, 7, 9, 5, 0, 900}, {2026, 3, 7, 9, 5, 2, 100}), "2 sec");
}

TEST(DateDiff, IsNegativeWhenTheEndLiesBeforeTheStart) {
  EXPECT_EQ(DateDiffEx({2026, 3, 7, 9, 5, 0, 0}, {2026, 3, 7, 9, 4, 59, 0}), "-1 sec");
}

}  // namespace
}  // namespace veltrin
