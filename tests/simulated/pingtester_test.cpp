// SPDX-License-Identifier: GPL-3.0-or-later
// The Ping Test: its load, its passes and its figures.
#include "simulated/pingtester_run.h"

namespace veltrin {
namespace {

using PingTester = PingTesterRun;

// --- Load ---

TEST_F(PingTester, ShowsItsDefaultsWhenNothingIsRemembered) {
  pingtester& opened = open();
  EXPECT_EQ(opened.caption.get(), "Ping Test");
  EXPECT_EQ(opened.Command1.caption.get(), "Start");
  EXPECT_EQ(opened.Command2.caption.get(), "Copy");
  EXPECT_EQ(opened.Command3.caption.get(), "Save");
  EXPECT_EQ(opened.Command4.caption.get(), "Quit");
  EXPECT_EQ(opened.Combo1.text.get(), "25");
  EXPECT_EQ(opened.Combo2.text.get(), "32");
  EXPECT_EQ(opened.Label10.caption.get(), "Size");
  EXPECT_EQ(opened.url[0].text.get(), "www.wikipedia.org");
  for (const TextBox& url : opened.url) EXPECT_FALSE(url.text.get().empty());
  EXPECT_FALSE(opened.Command2.enabled);
  EXPECT_FALSE(opened.Command3.enabled);
  EXPECT_FALSE(opened.PingChart.visible);
  EXPECT_FALSE(opened.playit.visible);
  EXPECT_FALSE(opened.data1.visible);
  for (const ListBox& samples : opened.buff) EXPECT_FALSE(samples.visible);
  EXPECT_TRUE(opened.Text1.visible);
  EXPECT_TRUE(opened.Text2.visible);
  EXPECT_EQ(opened.Timer1.interval.get(), 0);
}

TEST_F(PingTester, OffersItsPassesAndSizes) {
  pingtester& opened = open();
  EXPECT_EQ(opened.Combo1.items.get(),
            (std::vector<std::string>{"1", "5", "10", "15", "20", "25", "50", "75", "100"}));
  EXPECT_EQ(opened.Combo2.items.get(), (std::vector<std::string>{"16", "32", "64", "128", "256",
                                                                 "512", "1024", "2048", "4096"}));
}

TEST_F(PingTester, TakesWhatTheSettingsRemember) {
  Program& program = simulation.program();
  program.writeSetting("Ping", "Passes", "50");
  program.writeSetting("Ping", "Packet", "1024");
  program.writeSetting("Ping", "Pingit 1", "one.example");
  program.writeSetting("Ping", "Pingit 5", "five.example");
  pingtester& opened = open();
  EXPECT_EQ(opened.Combo1.text.get(), "50");
  EXPECT_EQ(opened.Combo2.text.get(), "1024");
  EXPECT_EQ(opened.url[0].text.get(), "one.example");
  EXPECT_EQ(opened.url[1].text.get(), "www.debian.org");
  EXPECT_EQ(opened.url[4].text.get(), "five.example");
}

TEST_F(PingTester, ReadsZeroPassesAndZeroBytesAsTheDefaults) {
  simulation.program().writeSetting("Ping", "Passes", "0");
  simulation.program().writeSetting("Ping", "Packet", "0");
  pingtester& opened = open();
  EXPECT_EQ(opened.Combo1.text.get(), "25");
  EXPECT_EQ(opened.Combo2.text.get(), "32");
}

TEST_F(PingTester, CaptionsAreEnglishWithEnglishTips) {
  pingtester& opened = open();
  EXPECT_EQ(opened.Label1.caption.get(),
            "Test with the listed URL Addresses or enter ones of your own.");
  EXPECT_EQ(opened.Label2.caption.get(), "Tests");
  EXPECT_EQ(opened.Label3.caption.get(), "URL/IP");
  EXPECT_EQ(opened.Label4.caption.get(), "Current");
  EXPECT_EQ(opened.Label5.caption.get(), "Low");
  EXPECT_EQ(opened.Label6.caption.get(), "Average");
  EXPECT_EQ(opened.Label7.caption.get(), "High");
  EXPECT_EQ(opened.Label8.caption.get(), "Loss");
  EXPECT_EQ(opened.url[0].toolTip.get(), "");
  EXPECT_EQ(opened.url[1].toolTip.get(), "Db lClick to Clear");
  EXPECT_EQ(opened.pingcur[0].toolTip.get(), "Select Frequently Visited Sites or IPs if you Game");
  EXPECT_EQ(opened.pingcur[1].toolTip.get(), "");
  EXPECT_EQ(opened.Command3.toolTip.get(), "Save Results to File");
}

TEST_F(PingTester, CaptionsAreDutchWithTheTipsOfTheDesign) {
  Program& program = simulation.program();
  program.LanguageId = kDutch;
  chooseLanguage(program.LanguageId, program.texts);
  pingtester& opened = open();
  EXPECT_EQ(opened.Label1.caption.get(), "Test met de getoonde URL Adressen of vul uw eigen in.");
  EXPECT_EQ(opened.Label2.caption.get(), "Testen");
  EXPECT_EQ(opened.Label3.caption.get(), "URL/IP");
  EXPECT_EQ(opened.Label4.caption.get(), "Huidig");
  EXPECT_EQ(opened.Label5.caption.get(), "Laag");
  EXPECT_EQ(opened.Label6.caption.get(), "Gemiddeld");
  EXPECT_EQ(opened.Label7.caption.get(), "Hoog");
  EXPECT_EQ(opened.Label8.caption.get(), "Verlies");
  EXPECT_EQ(opened.url[0].toolTip.get(), "Db lClick to Clear");
  EXPECT_EQ(opened.pingcur[0].toolTip.get(), "");
  EXPECT_EQ(opened.Command3.toolTip.get(), "");
}

TEST_F(PingTester, ButtonsBearTheColourOfAllButtons) {
  pingtester& opened = open();
  const Colour expected{0xBD, 0xB7, 0x95};
  for (const CommandButton* button :
       {&opened.Command1, &opened.Command2, &opened.Command3, &opened.Command4}) {
    EXPECT_EQ(button->backColour.get(), expected);
  }
}

TEST_F(PingTester, DoubleClickEmptiesADestination) {
  pingtester& opened = open();
  simulation.desktop.doubleClick(opened.url[3]);
  EXPECT_EQ(opened.url[3].text.get(), "");
  EXPECT_FALSE(opened.url[2].text.get().empty());
}

// --- Start and the passes ---

TEST_F(PingTester, StartSetsTheRunUpAndPlaysTheClip) {
  pingtester& opened = openWith(1, "2");
  simulation.desktop.click(opened.Command1);
  EXPECT_EQ(opened.Command1.caption.get(), "Stop");
  EXPECT_EQ(opened.playit.file.get(), "C:\\Program Files\\Veltrin\\files\\ping.avi");
  EXPECT_TRUE(opened.playit.visible);
  EXPECT_TRUE(opened.playit.playing);
  EXPECT_EQ(opened.packetloss[0].caption.get(), "0");
  EXPECT_EQ(opened.packetloss[4].caption.get(), "0");
  EXPECT_EQ(opened.Timer1.interval.get(), 1000);
  EXPECT_TRUE(opened.Timer1.enabled);
  EXPECT_EQ(simulation.program().shared<PingValues>().PingStop, 0);
}

TEST_F(PingTester, TheFirstPassStartsOneSecondAfterTheClick) {
  pingtester& opened = openWith(1, "1");
  simulation.run(300);
  simulation.desktop.click(opened.Command1);
  simulation.run(5000);
  ASSERT_FALSE(simulation.processes.starts.empty());
  EXPECT_EQ(simulation.processes.starts[0].moment, 1300);
}

TEST_F(PingTester, PingsEachDestinationOnceAPassInOrder) {
  pingtester& opened = open();
  for (std::size_t row = 0; row < pingtester::kRows; ++row) {
    simulation.desktop.type(opened.url[row], "host" + std::to_string(row) + ".example");
  }
  simulation.desktop.type(opened.Combo1, "1");
  simulation.desktop.type(opened.Combo2, "64");
  runToEnd(opened);
  std::vector<std::string> commands;
  std::vector<std::int64_t> moments;
  for (const auto& start : simulation.processes.starts) {
    commands.push_back(start.commandLine);
    moments.push_back(start.moment);
  }
  EXPECT_EQ(commands, (std::vector<std::string>{
                          "ping host0.example -n 1 -l 64", "ping host1.example -n 1 -l 64",
                          "ping host2.example -n 1 -l 64", "ping host3.example -n 1 -l 64",
                          "ping host4.example -n 1 -l 64"}));
  EXPECT_EQ(moments, (std::vector<std::int64_t>{1000, 2020, 3040, 4060, 5080}));
}

TEST_F(PingTester, SkipsEmptyDestinations) {
  pingtester& opened = open();
  for (TextBox& url : opened.url) simulation.desktop.type(url, "");
  simulation.desktop.type(opened.url[2], "only.example");
  simulation.desktop.type(opened.Combo1, "2");
  runToEnd(opened);
  ASSERT_EQ(simulation.processes.starts.size(), 2U);
  EXPECT_EQ(opened.pingcur[2].caption.get(), "20");
  EXPECT_EQ(opened.pingcur[0].caption.get(), "");
}

TEST_F(PingTester, ReadsThePacketSizeAnewAtEachEcho) {
  pingtester& opened = openWith(2, "1");
  simulation.loop.at(1500, [&] { simulation.desktop.type(opened.Combo2, "4096"); });
  const std::string first = opened.url[0].text.get();
  const std::string second = opened.url[1].text.get();
  runToEnd(opened);
  ASSERT_EQ(simulation.processes.starts.size(), 2U);
  EXPECT_EQ(simulation.processes.starts[0].commandLine, "ping " + first + " -n 1 -l 32");
  EXPECT_EQ(simulation.processes.starts[1].commandLine, "ping " + second + " -n 1 -l 4096");
}

TEST_F(PingTester, FixesThePassesAtStart) {
  pingtester& opened = openWith(1, "2");
  simulation.loop.at(1500, [&] { simulation.desktop.type(opened.Combo1, "9"); });
  runToEnd(opened);
  EXPECT_EQ(simulation.processes.starts.size(), 2U);
}

TEST_F(PingTester, ThreePassesCountDownAndTheFourthTickCompletes) {
  pingtester& opened = openWith(1, "3");
  std::vector<std::string> shown;
  for (const std::int64_t moment : {1500, 3500, 5500}) {
    simulation.loop.at(moment, [&] { shown.push_back(opened.Label9.caption); });
  }
  simulation.desktop.click(opened.Command1);
  simulation.run(6900);
  EXPECT_EQ(shown, (std::vector<std::string>{"Test Remaining = 3", "Test Remaining = 2",
                                             "Test Remaining = 1"}));
  EXPECT_EQ(opened.Label9.caption.get(), "Test Remaining = 1");
  simulation.run(200);
  EXPECT_EQ(opened.Label9.caption.get(), "Complete");
}

TEST_F(PingTester, TicksThatFallDueDuringAPassAreDropped) {
  pingtester& opened = openWith(1, "3");
  runToEnd(opened);
  std::vector<std::int64_t> moments;
  for (const auto& start : simulation.processes.starts) moments.push_back(start.moment);
  EXPECT_EQ(moments, (std::vector<std::int64_t>{1000, 3000, 5000}));
}

TEST_F(PingTester, CompleteEnablesCopyAndSaveAndStopsTheClip) {
  pingtester& opened = openWith(1, "1");
  runToEnd(opened);
  EXPECT_TRUE(opened.Command2.enabled);
  EXPECT_TRUE(opened.Command3.enabled);
  EXPECT_EQ(opened.Command1.caption.get(), "Start");
  EXPECT_FALSE(opened.Timer1.enabled);
  EXPECT_FALSE(opened.playit.visible);
  EXPECT_FALSE(opened.playit.playing);
  EXPECT_EQ(opened.mousePointer.get(), MousePointer::Default);
}

TEST_F(PingTester, ThePointerIsAnHourglassDuringAPassAndNormalBetweenPasses) {
  pingtester& opened = openWith(1, "2");
  std::vector<MousePointer> pointers;
  for (const std::int64_t moment : {500, 1500, 2500, 3500}) {
    simulation.loop.at(moment, [&] { pointers.push_back(opened.mousePointer); });
  }
  runToEnd(opened);
  EXPECT_EQ(pointers, (std::vector<MousePointer>{MousePointer::Default, MousePointer::Hourglass,
                                                 MousePointer::Default, MousePointer::Hourglass}));
}

TEST_F(PingTester, NoEventRoutineRunsWhileThePingIsSilent) {
  simulation.processes.tool = [](const std::string&) {
    return std::vector<ToolWrite>{{4000, pingTimeout()}};
  };
  pingtester& opened = openWith(1, "1");
  std::int64_t delivered = 0;
  simulation.loop.at(2000, [&] { delivered = simulation.loop.milliseconds(); });
  simulation.desktop.click(opened.Command1);
  simulation.run(10000);
  EXPECT_EQ(delivered, 5000);
}

// --- Edge cases of the passes ---

TEST_F(PingTester, AllDestinationsEmptyCountPassesSendNothingAndReportFiveEmptyRows) {
  pingtester& opened = openWith(0, "2");
  runToEnd(opened);
  EXPECT_TRUE(simulation.processes.starts.empty());
  EXPECT_EQ(simulation.loop.milliseconds(), 3000);
  simulation.desktop.click(opened.Command2);
  const std::string row = "    (Low)      (Aver)      (High)     0 (PacketLoss)\r\n\r\n";
  EXPECT_EQ(opened.data1.text.get(),
            "Ping Test   -   Date: 07 Mar 2026  at  09:05\r\n\r\n" + row + row + row + row + row);
}

TEST_F(PingTester, AnEmptyNumberOfPassesCompletesAtTheFirstTick) {
  pingtester& opened = openWith(1, "");
  simulation.desktop.click(opened.Command1);
  simulation.run(1000);
  EXPECT_EQ(opened.Label9.caption.get(), "Complete");
  EXPECT_TRUE(simulation.processes.starts.empty());
}

TEST_F(PingTester, ANumberOfPassesThatIsNoNumberCompletesAtTheFirstTick) {
  pingtester& opened = openWith(1, "many");
  simulation.desktop.click(opened.Command1);
  simulation.run(1000);
  EXPECT_EQ(opened.Label9.caption.get(), "Complete");
  EXPECT_TRUE(simulation.processes.starts.empty());
}

TEST_F(PingTester, PassesWithLettersBehindThemRunButCannotBeCountedDown) {
  pingtester& opened = openWith(1, "2x");
  simulation.desktop.click(opened.Command1);
  simulation.run(1500);
  EXPECT_EQ(opened.Label9.caption.get(), "");
  simulation.run(10000);
  EXPECT_EQ(simulation.processes.starts.size(), 2U);
}

TEST_F(PingTester, AnEchoOfZeroOnAFirstPassShowsZeroInAllThreeLabels) {
  replies = [](const std::string&, int) { return pingReply(0); };
  pingtester& opened = openWith(1, "1");
  runToEnd(opened);
  EXPECT_EQ(opened.pinglow[0].caption.get(), "0");
  EXPECT_EQ(opened.pingav[0].caption.get(), "0");
  EXPECT_EQ(opened.pinghi[0].caption.get(), "0");
  EXPECT_EQ(opened.pingcur[0].caption.get(), "0");
}

TEST_F(PingTester, AnAverageOfOnlyZerosShowsEmpty) {
  replies = [](const std::string&, int) { return pingReply(0); };
  pingtester& opened = openWith(1, "5");
  runToEnd(opened);
  EXPECT_EQ(opened.pingav[0].caption.get(), "");
  EXPECT_EQ(opened.pinglow[0].caption.get(), "0");
}

TEST_F(PingTester, OneLostEchoAmongTenOfTwentyGivesAnAverageOf10018) {
  replies = [](const std::string&, int count) {
    return count == 4 ? pingTimeout() : pingReply(20);
  };
  pingtester& opened = openWith(1, "10");
  runToEnd(opened);
  EXPECT_EQ(opened.pingav[0].caption.get(), "10018");
  EXPECT_EQ(opened.pinghi[0].caption.get(), "99999");
  EXPECT_EQ(opened.pinglow[0].caption.get(), "20");
  EXPECT_EQ(opened.pingcur[0].caption.get(), "20");
  EXPECT_EQ(opened.packetloss[0].caption.get(), "1");
}

TEST_F(PingTester, ALostEchoOnTheFirstPassStandsInAllFigures) {
  replies = [](const std::string&, int) { return pingTimeout(); };
  pingtester& opened = openWith(1, "1");
  runToEnd(opened);
  EXPECT_EQ(opened.pinglow[0].caption.get(), "99999");
  EXPECT_EQ(opened.pingav[0].caption.get(), "99999");
  EXPECT_EQ(opened.pinghi[0].caption.get(), "99999");
  EXPECT_EQ(opened.packetloss[0].caption.get(), "1");
}

TEST_F(PingTester, LowAndHighFollowTheReadings) {
  replies = [](const std::string&, int count) {
    return pingReply(std::vector<int>{30, 124, 7, 45}[static_cast<std::size_t>(count - 1)]);
  };
  pingtester& opened = openWith(1, "4");
  runToEnd(opened);
  EXPECT_EQ(opened.pingcur[0].caption.get(), "45");
  EXPECT_EQ(opened.pinglow[0].caption.get(), "7");
  EXPECT_EQ(opened.pinghi[0].caption.get(), "124");
  EXPECT_EQ(opened.pingav[0].caption.get(), "52");  // 206 by 4 is 51.5
  EXPECT_EQ(opened.buff[0].count(), 4U);
  EXPECT_EQ(opened.buff[0].item(1), "124");
}

// A summary that is cut before its last letter leaves one behind the number.
TEST_F(PingTester, AReadingThatIsEqualReplacesNeitherLowNorHigh) {
  simulation.processes.tool = [this](const std::string&) {
    const bool first = simulation.processes.starts.size() == 1;
    return std::vector<ToolWrite>{{kEcho, first ? "Average = 24ms \r\n" : "Average = 24m"},
                                  {1, first ? "" : "s \r\n"}};
  };
  pingtester& opened = openWith(1, "2");
  runToEnd(opened);
  EXPECT_EQ(opened.pingcur[0].caption.get(), "24m");
  EXPECT_EQ(opened.pinglow[0].caption.get(), "24");
  EXPECT_EQ(opened.pinghi[0].caption.get(), "24");
}

TEST_F(PingTester, AReadingOfExactlyTenThousandIsNotLost) {
  replies = [](const std::string&, int count) { return pingReply(count == 1 ? 10000 : 10001); };
  pingtester& opened = openWith(1, "2");
  runToEnd(opened);
  EXPECT_EQ(opened.packetloss[0].caption.get(), "1");
}

}  // namespace
}  // namespace veltrin
