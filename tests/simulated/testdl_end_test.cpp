// SPDX-License-Identifier: GPL-3.0-or-later
// The end of the download test: its order, its summary, its faults, its closing.
#include <algorithm>

#include "simulated/download_run.h"

namespace veltrin {
namespace {

using Strings = std::vector<std::string>;

class DownloadEnd : public DownloadRun {};

TEST_F(DownloadEnd, SummarisesWhatCame) {
  open();
  after(400, [this] { server().comeProgress(40'000, 100'000); });
  after(800, [this] { server().comeBody(std::string(100'000, 'x')); });
  simulation.run(10'000);
  EXPECT_EQ(summary(), (Strings{"Advance Settings Summary", "Total Bytes Received = 100000",
                                "Download Time = ", "Speed: 125.00 KB/s   /  1000.00 Kb/s", "",
                                "Total Packets Send = 0", "Total Packets Received = 0",
                                "Total Lost/Dropped Packets = 0", "Latency Lag = 0 sec", "",
                                "Data Saved in", kReportFile}));
  EXPECT_EQ(window->DownloadTotal, 100'000);
}

TEST_F(DownloadEnd, SavesTheSummaryWithoutItsLastRows) {
  simulation.files.contents[kReportFile] = "the report of an older run, which was longer than this";
  open();
  finishWith(std::string(3000, 'x'));
  const std::string report =
      "Advance Settings Summary\r\nTotal Bytes Received = 3000\r\nDownload Time = \r\n"
      "Speed: 3000.00 KB/s   /  24000.00 Kb/s\r\n\r\nTotal Packets Send = 0\r\n"
      "Total Packets Received = 0\r\nTotal Lost/Dropped Packets = 0\r\nLatency Lag = 0 sec\r\n";
  EXPECT_EQ(savedReport(), report);
  EXPECT_EQ(window->text3.text.get(), report);
}

TEST_F(DownloadEnd, KeepsTheFile) {
  simulation.files.contents[kTestFile] = "longer than the new one";
  open();
  finishWith("NEW");
  simulation.program().unload<testdl>();
  EXPECT_EQ(simulation.files.contents[kTestFile], "NEWger than the new one");
}

TEST_F(DownloadEnd, EnablesItsButtonTwoSecondsBehindTheSummary) {
  open();
  after(0, [this] { server().comeBody("x"); });
  bool isEarly = true;
  bool isLate = true;
  after(1999, [&] {
    EXPECT_EQ(window->Command1.caption.get(), "Done");
    EXPECT_EQ(window->summ.count(), 12U);
    isEarly = window->Command1.enabled;
  });
  after(2001, [&] { isLate = !window->Command1.enabled; });
  simulation.run(2002);
  EXPECT_FALSE(isEarly);
  EXPECT_FALSE(isLate);
  EXPECT_TRUE(window->Command1.enabled);
  simulation.desktop.click(window->Command1);
  EXPECT_FALSE(window->isLoaded());
}

TEST_F(DownloadEnd, AnEmptyListGivesTheFirstPictureAndNoDrawing) {
  open();
  finishWith("x");
  EXPECT_EQ(visiblePictures(), std::vector<int>{0});
  EXPECT_TRUE(window->picGraph[0].lines().empty());
  EXPECT_EQ(summary()[7], "Total Lost/Dropped Packets = 0");
}

TEST_F(DownloadEnd, TheDrawingSkipsTheFirstSample) {
  open();
  finishWithSamples({"5000", "10", "20"});
  ASSERT_EQ(curve(0).size(), 100U);
  EXPECT_EQ(curve(0)[97], (PicturePoint{97, 10000}));
  EXPECT_EQ(curve(0)[98], (PicturePoint{98, 9990}));
  EXPECT_EQ(curve(0)[99], (PicturePoint{99, 9980}));
}

TEST_F(DownloadEnd, TheMaximumSkipsTheFirstSample) {
  open();
  finishWithSamples({"5000", "300", "10", "20"});
  EXPECT_EQ(window->SampleMax.text(), "300");
}

TEST_F(DownloadEnd, TheMaximumOfNoSamplesIs0) {
  open();
  finishWithSamples({"5000"});
  EXPECT_EQ(window->SampleMax.text(), "0");
}

TEST_F(DownloadEnd, TheMaximumIsByNumberAndNotByText) {
  open();
  finishWithSamples({"1", "9", "10.5", "10"});
  EXPECT_EQ(window->SampleMax.text(), "10.5");
}

TEST_F(DownloadEnd, TheZeroSamplesSkipTheFirstOne) {
  open();
  finishWithSamples({"0", "10", "0", "0.4", "20"});
  EXPECT_EQ(summary()[7], "Total Lost/Dropped Packets = 2");
}

TEST_F(DownloadEnd, TotalPacketsReceivedIsNegativeWithZeroSamples) {
  open();
  finishWithSamples({"10", "0", "0", "0"});
  EXPECT_EQ(summary()[5], "Total Packets Send = 0");
  EXPECT_EQ(summary()[6], "Total Packets Received = -3");
  EXPECT_EQ(summary()[7], "Total Lost/Dropped Packets = 3");
}

TEST_F(DownloadEnd, TheRowsOfTheFirstListStandForWhatWasSent) {
  open();
  window->List1.add("packet");
  window->List1.add("packet");
  finishWithSamples({"10", "0"});
  EXPECT_EQ(summary()[5], "Total Packets Send = 2");
  EXPECT_EQ(summary()[6], "Total Packets Received = 1");
}

TEST_F(DownloadEnd, ASampleIsDrawnAsAWholeNumber) {
  open();
  finishWithSamples({"1", "2.5", "3.5"});
  EXPECT_EQ(curve(0)[98], (PicturePoint{98, 9998}));
  EXPECT_EQ(curve(0)[99], (PicturePoint{99, 9996}));
}

TEST_F(DownloadEnd, ASampleThatIsNoWholeNumberOf32BitsKeepsTheOneBefore) {
  open();
  finishWithSamples({"1", "7", "3000000000"});
  EXPECT_EQ(curve(0)[99], (PicturePoint{99, 9993}));
}

TEST_F(DownloadEnd, ANewRunGoesOnFromTheCurveOfTheLast) {
  open();
  finishWithSamples({"1", "7"});
  simulation.program().unload<testdl>();
  window = simulation.program().show<testdl>();
  window->List2.add("1");
  window->List2.add("9");
  after(0, [this] { simulation.downloads.asked.at(1)->comeBody("x"); });
  simulation.run(60'000);
  EXPECT_EQ(curve(0)[98], (PicturePoint{98, 9993}));
  EXPECT_EQ(curve(0)[99], (PicturePoint{99, 9991}));
}

TEST_F(DownloadEnd, DrawsOneSampleEachMillisecondAndYieldsForEach) {
  open();
  for (int sample = 0; sample < 51; ++sample) window->List2.add("7");
  const auto drawn = [this] {
    const auto& points = simulation.program().shared<DownloadValues>().graph.UsageA.points();
    return std::count(points.begin(), points.end(), 7);
  };
  std::ptrdiff_t drawnIn20 = 0;
  std::size_t rowsIn49 = 1;
  std::size_t rowsIn50 = 0;
  after(0, [this] { server().comeBody("x"); });
  after(20, [&] { drawnIn20 = drawn(); });
  after(49, [&] { rowsIn49 = window->summ.count(); });
  after(51, [&] { rowsIn50 = window->summ.count(); });
  simulation.run(60);
  EXPECT_EQ(drawnIn20, 20);
  EXPECT_EQ(rowsIn49, 0U);
  EXPECT_EQ(rowsIn50, 12U);
}

TEST_F(DownloadEnd, YieldsBeforeThePictureComesUpAndBeforeItIsDrawn) {
  open();
  window->List2.add("1");
  window->List2.add("7");
  Strings seen;
  const auto look = [&](const char* moment) {
    simulation.loop.gate().post([&, moment] {
      seen.push_back(moment + std::to_string(visiblePictures().size()) + " shown, " +
                     std::to_string(window->picGraph[0].lines().size()) + " drawn");
    });
  };
  window->Label4.caption.observe([&] { look("scale: "); });
  window->picGraph[0].visible.observe([&] {
    if (window->picGraph[0].visible) look("picture: ");
  });
  finishWith("x");
  EXPECT_EQ(seen, (Strings{"scale: 0 shown, 0 drawn", "picture: 1 shown, 0 drawn"}));
}

TEST_F(DownloadEnd, TheSamplerGoesOnWithTheMeanUntilTheWindowCloses) {
  open();
  after(1000, [this] { server().comeBody(std::string(50'000, 'x')); });
  simulation.run(1000);
  const std::size_t before = window->List2.count();
  simulation.run(1000);
  EXPECT_EQ(window->List2.count(), before + 10);
  EXPECT_EQ(window->List2.item(before), "400");
  EXPECT_EQ(window->DownloadSpeed, 50);
}

TEST_F(DownloadEnd, SamplesThatComeWhileTheCurveIsDrawnAreNotDrawn) {
  open();
  finishWithSamples(Strings(300, "7"));
  const auto& points = simulation.program().shared<DownloadValues>().graph.UsageC.points();
  EXPECT_EQ(points[0], 0);
  EXPECT_EQ(points[1], 7);
  EXPECT_EQ(points[299], 7);
  EXPECT_GT(window->List2.count(), 302U);
}

TEST_F(DownloadEnd, LeavesTheHighestSampleUnsaid) {
  open();
  finishWithSamples({"9", "10"});
  EXPECT_EQ(window->SampleMax.text(), "10");
  EXPECT_EQ(window->Label3.caption.get(), "High");
  EXPECT_EQ(window->Label5.caption.get(), "");
  EXPECT_EQ(window->lb1.caption.get(), "Testing Internet Connection");
}

// --- A read that fails ---

TEST_F(DownloadEnd, AFailedReadEndsSilentlyInASummaryOfZeroBytes) {
  open();
  after(500, [this] { server().comeFailure(20'000); });
  simulation.run(10'000);
  EXPECT_TRUE(simulation.desktop.messages.empty());
  EXPECT_EQ(summary()[1], "Total Bytes Received = 0");
  EXPECT_EQ(summary()[3], "Speed: 40.00 KB/s   /  320.00 Kb/s");
  EXPECT_EQ(window->DownloadTotal, 20'000);
  EXPECT_NE(savedReport(), "");
  EXPECT_FALSE(simulation.files.exists(kTestFile));
  EXPECT_TRUE(window->Command1.enabled);
}

TEST_F(DownloadEnd, AReadOfNothingHasASpeedOfNothing) {
  open();
  after(500, [this] { server().comeFailure(); });
  simulation.run(10'000);
  EXPECT_EQ(summary()[3], "Speed: .00 KB/s   /  .00 Kb/s");
  EXPECT_EQ(window->List2.count(), 0U);
}

TEST_F(DownloadEnd, AServerThatStallsForEverLeavesTheButtonDisabled) {
  open();
  after(100, [this] { server().comeProgress(1000, 100'000); });
  simulation.run(24LL * 3600 * 1000);
  EXPECT_FALSE(window->Command1.enabled);
  EXPECT_EQ(window->Command1.caption.get(), "Cancel");
  EXPECT_FALSE(server().givenUp);
}

TEST_F(DownloadEnd, AFullDiskLosesTheFilesAndNothingElse) {
  simulation.files.refuseWriting = true;
  open();
  finishWith("x");
  EXPECT_EQ(summary()[1], "Total Bytes Received = 1");
  EXPECT_TRUE(window->Command1.enabled);
  EXPECT_TRUE(simulation.desktop.messages.empty());
}

TEST_F(DownloadEnd, AFolderThatMayNotBeWrittenLosesTheFilesAndNothingElse) {
  simulation.files.refuseOpening = true;
  open();
  finishWith("x");
  EXPECT_EQ(summary()[1], "Total Bytes Received = 1");
  EXPECT_FALSE(simulation.files.exists(kReportFile));
  EXPECT_TRUE(window->Command1.enabled);
}

// --- The window is closed ---

TEST_F(DownloadEnd, ClosingGivesUpTheReadAtOnce) {
  open();
  after(100, [this] { server().comeProgress(1000, 100'000); });
  simulation.run(200);
  simulation.desktop.closeWindow(*window);
  EXPECT_TRUE(server().givenUp);
  EXPECT_FALSE(window->isLoaded());
  EXPECT_FALSE(simulation.files.exists(kReportFile));
}

TEST_F(DownloadEnd, ClosingDeletesTheFileOfTheOtherName) {
  simulation.files.contents[kProgramFolder + "\\Stability.tst"] = "old";
  simulation.files.contents[kTestFile] = "kept";
  open();
  simulation.desktop.closeWindow(*window);
  EXPECT_FALSE(simulation.files.exists(kProgramFolder + "\\Stability.tst"));
  EXPECT_TRUE(simulation.files.exists(kTestFile));
}

TEST_F(DownloadEnd, ClosingAsSoonAsItIsShownReadsNothing) {
  menu = simulation.program().show<startup>();
  simulation.desktop.onModal = [this](Form& form) {
    after(0, [this, &form] { simulation.desktop.closeWindow(form); });
  };
  window = simulation.program().show<testdl>();
  EXPECT_FALSE(window->isLoaded());
  EXPECT_TRUE(simulation.downloads.asked.empty());
}

TEST_F(DownloadEnd, ClosingWhileTheCurveIsDrawnSavesTheReportAllTheSame) {
  open();
  for (int sample = 0; sample < 3000; ++sample) window->List2.add("7");
  after(0, [this] { server().comeBody("whole body"); });
  after(50, [this] { simulation.desktop.closeWindow(*window); });
  simulation.run(60);
  EXPECT_FALSE(window->isLoaded());
  EXPECT_NE(savedReport().find("Total Bytes Received = 10\r\n"), std::string::npos);
  EXPECT_EQ(simulation.files.contents[kTestFile], "whole body");
}

TEST_F(DownloadEnd, ClosingBehindTheSummaryEndsTheRun) {
  open();
  after(0, [this] { server().comeBody("x"); });
  after(1000, [this] { simulation.desktop.closeWindow(*window); });
  simulation.run(5000);
  EXPECT_FALSE(window->isLoaded());
  EXPECT_NE(savedReport(), "");
}

TEST_F(DownloadEnd, ClosingTheMenuWhileTheCurveIsDrawnEndsTheProgram) {
  open();
  for (int sample = 0; sample < 3000; ++sample) window->List2.add("7");
  after(0, [this] { server().comeBody("x"); });
  after(50, [this] { simulation.program().unload<startup>(); });
  after(51, [this] { simulation.program().unload<testdl>(); });
  simulation.run(60);
  EXPECT_TRUE(simulation.loop.gate().hasEnded());
}

// --- Behind the name that is looked for ---

class DownloadOfTheName : public DownloadRun {
 protected:
  void openWithTheName() {
    open();
    window->TestFileName = "TestDL.tst";
  }
};

TEST_F(DownloadOfTheName, StopsTheSamplerAndTurnsTheBarGreen) {
  openWithTheName();
  after(500, [this] { server().comeBody(std::string(10'000, 'x')); });
  simulation.run(10'000);
  EXPECT_FALSE(window->Timer1.enabled);
  EXPECT_EQ(window->prgBAR[0].barColour.get(), (Colour{0, 255, 0}));
}

TEST_F(DownloadOfTheName, TellsTheTimeOfTheRead) {
  openWithTheName();
  after(75'250, [this] { server().comeBody(std::string(1'234'567, 'x')); });
  simulation.run(100'000);
  EXPECT_EQ(window->Label5.caption.get(), "Downloaded 1,235Kb in 1:75.25");
  EXPECT_EQ(summary()[2], "Download Time = 75.25");
}

TEST_F(DownloadOfTheName, TellsTheMinutesBesideAllTheSeconds) {
  openWithTheName();
  after(60'500, [this] { server().comeBody(std::string(10'000, 'x')); });
  simulation.run(100'000);
  EXPECT_EQ(window->Label5.caption.get(), "Downloaded 10Kb in 1:60.5");
}

TEST_F(DownloadOfTheName, AReadThatTookNoTimeKeepsAnEmptyResultLine) {
  openWithTheName();
  after(0, [this] { server().comeBody(std::string(10'000, 'x')); });
  simulation.run(10'000);
  EXPECT_EQ(window->Label5.caption.get(), "");
  EXPECT_EQ(summary()[2], "Download Time = .");
}

TEST_F(DownloadOfTheName, HasFailedBelow10000Bytes) {
  openWithTheName();
  after(500, [this] { server().comeBody(std::string(9'999, 'x')); });
  simulation.run(10'000);
  expectOneMessage("Veltrin", 0, "Download Test Failed, try again later");
  EXPECT_FALSE(window->isLoaded());
  EXPECT_FALSE(simulation.files.exists(kReportFile));
}

TEST_F(DownloadOfTheName, HasNotFailedAt10000Bytes) {
  openWithTheName();
  after(500, [this] { server().comeBody(std::string(10'000, 'x')); });
  simulation.run(10'000);
  EXPECT_TRUE(simulation.desktop.messages.empty());
  EXPECT_NE(savedReport(), "");
}

// --- The suggested speed ---

class DownloadButton : public DownloadRun {
 protected:
  void pressWith(const std::string& suggested) {
    finishWith("x");
    simulation.program().shared<DownloadValues>().SuggestedSpeed = suggested;
    simulation.desktop.click(window->Command1);
    EXPECT_FALSE(window->isLoaded());
  }
};

TEST_F(DownloadButton, GivesTheMenuASuggestedSpeed) {
  open("5,000");
  pressWith("7,500");
  EXPECT_EQ(menu->Combo1.text.get(), "7,500");
  EXPECT_EQ(simulation.program().menu.RatedSpeed, "7,500");
}

TEST_F(DownloadButton, LeavesTheMenuWithoutASuggestedSpeed) {
  open("5,000");
  const std::string rated = simulation.program().menu.RatedSpeed;
  pressWith("");
  EXPECT_EQ(menu->Combo1.text.get(), "5,000");
  EXPECT_EQ(simulation.program().menu.RatedSpeed, rated);
}

TEST_F(DownloadButton, LeavesTheMenuWithTheSpeedThatItHas) {
  open("5,000");
  simulation.program().menu.RatedSpeed = "7,500";
  pressWith("7,500");
  EXPECT_EQ(menu->Combo1.text.get(), "5,000");
}

TEST_F(DownloadButton, ACancelLeavesTheMenuAndGivesUpTheRead) {
  open("5,000");
  window->Command1.enabled = true;
  simulation.program().shared<DownloadValues>().SuggestedSpeed = "7,500";
  simulation.desktop.click(window->Command1);
  EXPECT_FALSE(window->isLoaded());
  EXPECT_TRUE(server().givenUp);
  EXPECT_EQ(menu->Combo1.text.get(), "5,000");
}

}  // namespace
}  // namespace veltrin
