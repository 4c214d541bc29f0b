// SPDX-License-Identifier: GPL-3.0-or-later
// The Ping Test: failures, Stop and Start, the report, and Quit.
#include <algorithm>
#include <sstream>

#include "simulated/pingtester_run.h"

namespace veltrin {
namespace {

using PingTesterReport = PingTesterRun;

// --- Failures ---

TEST_F(PingTesterReport, ADestinationThatDoesNotResolveGivesLostSamples) {
  replies = [](const std::string&, int) {
    return std::string(
        "Ping request could not find host nowhere.example. "
        "Please check the name and try again.\r\n");
  };
  pingtester& opened = openWith(1, "2");
  runToEnd(opened);
  EXPECT_EQ(opened.packetloss[0].caption.get(), "2");
  EXPECT_EQ(opened.pingcur[0].caption.get(), "99999");
}

TEST_F(PingTesterReport, AMissingPingShowsTheRunnersMessageOnEachEcho) {
  simulation.processes.tool = [](const std::string&) { return std::nullopt; };
  pingtester& opened = openWith(2, "1");
  runToEnd(opened);
  ASSERT_EQ(simulation.desktop.messages.size(), 2U);
  EXPECT_EQ(simulation.desktop.messages[0].text, "File or command not found");
  EXPECT_EQ(simulation.desktop.messages[0].style, 16);
  EXPECT_EQ(simulation.desktop.messages[0].title, "Veltrin");
  EXPECT_EQ(opened.packetloss[1].caption.get(), "1");
  EXPECT_EQ(simulation.processes.openHandles(), 4U);
  simulation.processes.closed.clear();
  for (Processes::Handle handle = 1; handle <= 4; ++handle) {
    simulation.processes.CloseHandle(handle);
  }
}

TEST_F(PingTesterReport, AFailingSaveTellsOfTheFileAllTheSame) {
  pingtester& opened = openWith(1, "1");
  runToEnd(opened);
  simulation.files.refuseOpening = true;
  simulation.desktop.click(opened.Command3);
  ASSERT_EQ(simulation.desktop.messages.size(), 1U);
  EXPECT_EQ(simulation.desktop.messages[0].text,
            "File created: C:\\Program Files\\Veltrin\\PingTest_07Mar2026_0905.txt");
  EXPECT_TRUE(simulation.files.contents.empty());
}

TEST_F(PingTesterReport, AFullDiskTellsOfTheFileAllTheSame) {
  pingtester& opened = openWith(1, "1");
  runToEnd(opened);
  simulation.files.refuseWriting = true;
  simulation.desktop.click(opened.Command3);
  ASSERT_EQ(simulation.desktop.messages.size(), 1U);
}

// --- Stop and Start ---

TEST_F(PingTesterReport, StopDropsTheEchoJustMade) {
  pingtester& opened = openWith(2, "5");
  simulation.desktop.click(opened.Command1);
  clickAt(1500, opened.Command1);
  simulation.run(10000);
  EXPECT_EQ(simulation.processes.starts.size(), 1U);
  EXPECT_EQ(opened.pingcur[0].caption.get(), "");
  EXPECT_EQ(opened.buff[0].count(), 0U);
}

TEST_F(PingTesterReport, StopSetsTheWindowBackAndEnablesNothing) {
  pingtester& opened = openWith(1, "5");
  simulation.desktop.click(opened.Command1);
  clickAt(1500, opened.Command1);
  simulation.run(1700);
  EXPECT_EQ(opened.Command1.caption.get(), "Start");
  EXPECT_FALSE(opened.Timer1.enabled);
  EXPECT_EQ(simulation.program().shared<PingValues>().PingStop, 1);
  EXPECT_EQ(opened.mousePointer.get(), MousePointer::Default);
  EXPECT_FALSE(opened.playit.visible);
  EXPECT_FALSE(opened.playit.playing);
  EXPECT_FALSE(opened.Command2.enabled);
  EXPECT_FALSE(opened.Command3.enabled);
}

TEST_F(PingTesterReport, AStopWhileThePingIsSilentTakesEffectInThePauseBehindIt) {
  simulation.processes.tool = [](const std::string&) {
    return std::vector<ToolWrite>{{3000, pingTimeout()}};
  };
  pingtester& opened = openWith(2, "5");
  simulation.desktop.click(opened.Command1);
  std::int64_t stopped = 0;
  opened.Command1.caption.observe([&] { stopped = simulation.loop.milliseconds(); });
  clickAt(1200, opened.Command1);
  simulation.run(10000);
  EXPECT_EQ(stopped, 4000);
  EXPECT_EQ(opened.Command1.caption.get(), "Start");
  EXPECT_EQ(simulation.processes.starts.size(), 1U);
}

TEST_F(PingTesterReport, CopyAndSaveStayEnabledAfterANewStart) {
  pingtester& opened = openWith(1, "1");
  runToEnd(opened);
  simulation.desktop.click(opened.Command1);
  EXPECT_TRUE(opened.Command2.enabled);
  EXPECT_TRUE(opened.Command3.enabled);
}

TEST_F(PingTesterReport, AStartDuringTheLastWaitOfAStoppedPassLetsTheOldPassGoOn) {
  pingtester& opened = openWith(2, "5");
  const std::string second = opened.url[1].text.get();
  simulation.desktop.click(opened.Command1);
  clickAt(1200, opened.Command1);
  clickAt(1400, opened.Command1);
  simulation.run(2300);
  ASSERT_GE(simulation.processes.starts.size(), 2U);
  EXPECT_EQ(simulation.processes.starts[1].commandLine, "ping " + second + " -n 1 -l 32");
  EXPECT_EQ(simulation.processes.starts[1].moment, 2020);
  EXPECT_EQ(opened.buff[0].count(), 1U);
  EXPECT_EQ(opened.pinglow[0].caption.get(), "");  // the pass counter of the new run is 0
  EXPECT_EQ(opened.pingav[0].caption.get(), "20");
}

TEST_F(PingTesterReport, StartClearsTheFiguresOfTheRunBefore) {
  replies = [](const std::string&, int) { return pingTimeout(); };
  pingtester& opened = openWith(1, "1");
  runToEnd(opened);
  simulation.desktop.click(opened.Command2);
  simulation.desktop.click(opened.Command1);
  EXPECT_EQ(opened.pingcur[0].caption.get(), "");
  EXPECT_EQ(opened.pinglow[0].caption.get(), "");
  EXPECT_EQ(opened.pingav[0].caption.get(), "");
  EXPECT_EQ(opened.pinghi[0].caption.get(), "");
  EXPECT_EQ(opened.packetloss[0].caption.get(), "0");
  EXPECT_EQ(opened.buff[0].count(), 0U);
  EXPECT_EQ(opened.data1.text.get(), "");
}

// --- Copy, Save, Quit ---

TEST_F(PingTesterReport, CopyPutsTheReportOnTheClipboardAndSaysSo) {
  simulation.desktop.clipboard = "older";
  pingtester& opened = openWith(1, "1");
  simulation.desktop.type(opened.url[0], "near.example");
  runToEnd(opened);
  simulation.desktop.click(opened.Command2);
  const std::string empty = "    (Low)      (Aver)      (High)     0 (PacketLoss)\r\n\r\n";
  EXPECT_EQ(simulation.desktop.clipboard,
            "Ping Test   -   Date: 07 Mar 2026  at  09:05\r\n\r\n"
            "near.example   20 (Low)     20 (Aver)     20 (High)     0 (PacketLoss)\r\n"
            "20 | \r\n\r\n" +
                empty + empty + empty + empty);
  ASSERT_EQ(simulation.desktop.messages.size(), 1U);
  EXPECT_EQ(simulation.desktop.messages[0].title, "Ping Test");
  EXPECT_EQ(simulation.desktop.messages[0].style, 0);
  EXPECT_EQ(simulation.desktop.messages[0].text,
            "Your information is now copied. You can either paste it in a document or an email."
            "\r\n\r\nOpen the document/email and right click in the text area, then select PASTE."
            "\r\n \r\n");
}

// The samples of the first row in the report, line by line, when their numbers are 1 to
// `count`.
std::vector<std::string> sampleLines(pingtester& opened, int count) {
  opened.buff[0].clear();
  for (int sample = 1; sample <= count; ++sample) opened.buff[0].add(std::to_string(sample));
  opened.gather();
  std::vector<std::string> lines;
  std::istringstream report(opened.data1.text.get());
  for (std::string line; std::getline(report, line);) lines.push_back(line);
  constexpr std::size_t kHead = 3;  // the title, an empty line, the first row's figures
  const auto end = std::find(lines.begin() + kHead, lines.end(), "\r");
  return {lines.begin() + kHead, end};
}

std::string samples(int first, int last) {
  std::string line;
  for (int sample = first; sample <= last; ++sample) line += std::to_string(sample) + " | ";
  return line + "\r";
}

TEST_F(PingTesterReport, TwentySamplesStandOnOneLine) {
  pingtester& opened = open();
  EXPECT_EQ(sampleLines(opened, 1), (std::vector<std::string>{samples(1, 1)}));
  EXPECT_EQ(sampleLines(opened, 19), (std::vector<std::string>{samples(1, 19)}));
  EXPECT_EQ(sampleLines(opened, 20), (std::vector<std::string>{samples(1, 20)}));
}

TEST_F(PingTesterReport, TheTwentyFirstSampleBeginsASecondLine) {
  EXPECT_EQ(sampleLines(open(), 21), (std::vector<std::string>{samples(1, 20), samples(21, 21)}));
}

TEST_F(PingTesterReport, AHundredSamplesAreFiveLines) {
  EXPECT_EQ(sampleLines(open(), 100),
            (std::vector<std::string>{samples(1, 20), samples(21, 40), samples(41, 60),
                                      samples(61, 80), samples(81, 100)}));
}

TEST_F(PingTesterReport, SamplesBeyondAHundredStandOnTheFifthLine) {
  EXPECT_EQ(sampleLines(open(), 130),
            (std::vector<std::string>{samples(1, 20), samples(21, 40), samples(41, 60),
                                      samples(61, 80), samples(81, 130)}));
}

TEST_F(PingTesterReport, CopyThenSaveHoldTheSameText) {
  pingtester& opened = openWith(1, "1");
  runToEnd(opened);
  simulation.desktop.click(opened.Command2);
  simulation.desktop.click(opened.Command3);
  EXPECT_EQ(simulation.files.contents.at("C:\\Program Files\\Veltrin\\PingTest_07Mar2026_0905.txt"),
            simulation.desktop.clipboard);
  ASSERT_EQ(simulation.desktop.messages.size(), 2U);
  EXPECT_EQ(simulation.desktop.messages[1].title, "PingTest");
}

TEST_F(PingTesterReport, SaveAfterANewRunWithoutCopyWritesAnEmptyFile) {
  pingtester& opened = openWith(1, "1");
  runToEnd(opened);
  simulation.desktop.click(opened.Command2);
  runToEnd(opened);
  simulation.desktop.click(opened.Command3);
  EXPECT_EQ(simulation.files.contents.at("C:\\Program Files\\Veltrin\\PingTest_07Mar2026_0905.txt"),
            "");
}

TEST_F(PingTesterReport, QuitWritesTheSettingsAndUnloads) {
  pingtester& opened = open();
  simulation.desktop.type(opened.url[1], "two.example");
  simulation.desktop.type(opened.url[4], "");
  simulation.desktop.type(opened.Combo1, "7");
  simulation.desktop.type(opened.Combo2, "48");
  simulation.desktop.click(opened.Command4);
  EXPECT_FALSE(simulation.program().isLoaded<pingtester>());
  EXPECT_EQ(simulation.settings(),
            "[Ping]\r\nPingit 1=www.wikipedia.org\r\nPingit 2=two.example\r\n"
            "Pingit 3=www.kernel.org\r\nPingit 4=www.python.org\r\nPingit 5=\r\n"
            "Packet=48\r\nPasses=7\r\n");
}

TEST_F(PingTesterReport, QuitInMidPassLeavesTheStopFlagAloneAndEndsTheProgramWithTheLastWindow) {
  pingtester& opened = openWith(2, "5");
  simulation.desktop.click(opened.Command1);
  clickAt(1500, opened.Command4);
  simulation.run(10000);
  EXPECT_EQ(simulation.program().shared<PingValues>().PingStop, 0);
  EXPECT_FALSE(opened.Timer1.enabled);
  EXPECT_TRUE(simulation.loop.gate().hasEnded());
  EXPECT_EQ(simulation.processes.starts.size(), 1U);
}

TEST_F(PingTesterReport, ClosingTheFrameWritesNoSettings) {
  pingtester& opened = open();
  simulation.desktop.closeWindow(opened);
  EXPECT_FALSE(simulation.program().isLoaded<pingtester>());
  EXPECT_EQ(simulation.settings(), "");
}

}  // namespace
}  // namespace veltrin
