// SPDX-License-Identifier: GPL-3.0-or-later
// The control that reads a URL into a file.
#include "download/dwnLoader.h"
#include "simulated/route_run.h"

namespace veltrin {
namespace {

class LoaderWindow : public Form {
 public:
  explicit LoaderWindow(Program& program) : Form("loader", program), loader(program) {
    own("loader", loader);
  }

  dwnLoader loader;
};

class Loader : public RouteRun {
 protected:
  Loader() {
    keepTheProgramRunning();
    window = simulation.program().keep<LoaderWindow>();
    dwnLoader& loader = window->loader;
    loader.BytesArrived = [this](std::int64_t bytes, const std::string& file) {
      events.push_back("arrived " + std::to_string(bytes) + " of " + file);
    };
    loader.DownloadProgress = [this](std::int32_t bytes, std::int32_t size,
                                     const std::string& file) {
      events.push_back("progress " + std::to_string(bytes) + "/" + std::to_string(size) + " of " +
                       file);
    };
    loader.DownloadError = [this](const std::string& file) { events.push_back("error " + file); };
    loader.DownloadComplete = [this](std::int32_t size, const std::string& file) {
      events.push_back("complete " + std::to_string(size) + " of " + file);
    };
  }

  void begin(const std::string& file = kFile) {
    window->loader.BeginDownload("https://files.example/x", file);
  }

  SimulatedDownloads::Asked& server(std::size_t number = 0) {
    return *simulation.downloads.asked.at(number);
  }

  // What comes in while the program rests.
  void comes(const std::function<void()>& what) {
    const EventGate::Opening resting(simulation.loop.gate());
    what();
  }

  std::string saved(const std::string& file = kFile) { return simulation.files.contents[file]; }
  bool isSaved(const std::string& file = kFile) { return simulation.files.exists(file); }

  DownloadValues& values() { return simulation.program().shared<DownloadValues>(); }

  static const inline std::string kFile = kProgramFolder + "\\file.bin";
  std::shared_ptr<LoaderWindow> window;
  std::vector<std::string> events;
};

using Events = std::vector<std::string>;

TEST_F(Loader, AsksForBytesUnderTheNameOfTheFileAndForNoOldCopy) {
  begin();
  ASSERT_EQ(simulation.downloads.asked.size(), 1U);
  EXPECT_EQ(server().target, "https://files.example/x");
  EXPECT_EQ(server().asyncType, 2);
  EXPECT_EQ(server().propertyName, kFile);
  EXPECT_EQ(server().options, 16);
  EXPECT_EQ(events, Events{});
}

TEST_F(Loader, TellsProgressWithAKnownSize) {
  begin();
  comes([&] { server().comeProgress(300, 1000); });
  EXPECT_EQ(events, (Events{"arrived 300 of " + kFile, "progress 300/1000 of " + kFile}));
}

TEST_F(Loader, AServerThatSendsNoLengthGivesNoDownloadProgress) {
  begin();
  comes([&] { server().comeProgress(300, 0); });
  EXPECT_EQ(events, (Events{"arrived 300 of " + kFile}));
}

TEST_F(Loader, TellsBytesBeyond32BitsAsTheMostThatFits) {
  begin();
  comes([&] { server().comeProgress(3'000'000'000, 5'000'000'000); });
  EXPECT_EQ(events, (Events{"arrived 3000000000 of " + kFile,
                            "progress 2147483647/2147483647 of " + kFile}));
}

TEST_F(Loader, WritesTheWholeBodyBeforeItTellsTheEnd) {
  begin();
  window->loader.DownloadComplete = [this](std::int32_t size, const std::string& file) {
    events.push_back("complete " + std::to_string(size) + ": " + saved(file));
  };
  comes([&] { server().comeBody({"first ", std::string("sec\0nd", 6), " third"}); });
  EXPECT_EQ(events, (Events{"arrived 18 of " + kFile,
                            "complete 18: " + std::string("first sec\0nd third", 18)}));
  EXPECT_EQ(simulation.files.closings, 1);
}

TEST_F(Loader, ALongerOldFileKeepsItsTail) {
  simulation.files.contents[kFile] = "an older and longer file";
  begin();
  comes([&] { server().comeBody("NEW BODY"); });
  EXPECT_EQ(saved(), "NEW BODY and longer file");
}

TEST_F(Loader, AnEmptyBodyWritesNoFileAndIsAnErrorAndThenComplete) {
  begin();
  comes([&] { server().comeBody(""); });
  EXPECT_EQ(events, (Events{"arrived 0 of " + kFile, "error " + kFile, "complete 0 of " + kFile}));
  EXPECT_FALSE(isSaved());
}

TEST_F(Loader, AFailedReadIsAnErrorAndThenComplete) {
  simulation.files.contents[kFile] = "old";
  begin();
  comes([&] { server().comeFailure(700); });
  EXPECT_EQ(events,
            (Events{"arrived 700 of " + kFile, "error " + kFile, "complete 0 of " + kFile}));
  EXPECT_EQ(saved(), "old");
}

TEST_F(Loader, AFileThatCannotBeOpenedIsCompleteAllTheSame) {
  simulation.files.refuseOpening = true;
  begin();
  comes([&] { server().comeBody("body"); });
  EXPECT_EQ(events, (Events{"arrived 4 of " + kFile, "complete 4 of " + kFile}));
  EXPECT_FALSE(isSaved());
}

TEST_F(Loader, AFullDiskIsCompleteAllTheSame) {
  simulation.files.refuseWriting = true;
  begin();
  comes([&] { server().comeBody("body"); });
  EXPECT_EQ(events, (Events{"arrived 4 of " + kFile, "complete 4 of " + kFile}));
}

TEST_F(Loader, ReadsSeveralAtOnceAndTellsThemApartByTheirFiles) {
  begin("one");
  begin("two");
  comes([&] {
    server(1).comeProgress(5, 10);
    server(0).comeBody("body of one");
    server(1).comeBody("body of two");
  });
  EXPECT_EQ(events, (Events{"arrived 5 of two", "progress 5/10 of two", "arrived 11 of one",
                            "complete 11 of one", "arrived 11 of two", "complete 11 of two"}));
  EXPECT_EQ(saved("one"), "body of one");
  EXPECT_EQ(saved("two"), "body of two");
}

TEST_F(Loader, KeepsNoReadBehindItsEnd) {
  begin();
  bool isOver = false;
  window->loader.DownloadComplete = [&](std::int32_t, const std::string&) {
    isOver = server().givenUp;
  };
  comes([&] { server().comeBody("body"); });
  EXPECT_TRUE(isOver);
}

// --- What waits at the gate ---

TEST_F(Loader, TellsNothingWhileARoutineRuns) {
  begin();
  server().comeProgress(300, 1000);
  EXPECT_EQ(events, Events{});
}

TEST_F(Loader, TellsWhatCameMeanwhileInOneAndTheEndBehindIt) {
  begin();
  server().comeProgress(300, 1000);
  server().comeProgress(600, 1000);
  server().comeProgress(1000, 1000);
  server().comeBody(std::string(1000, 'x'));
  comes([] {});
  EXPECT_EQ(events, (Events{"arrived 1000 of " + kFile, "progress 1000/1000 of " + kFile,
                            "arrived 1000 of " + kFile, "complete 1000 of " + kFile}));
}

TEST_F(Loader, TellsTheEndOnceToAYieldOfItsProgress) {
  begin();
  window->loader.DownloadProgress = [this](std::int32_t, std::int32_t, const std::string&) {
    events.emplace_back("progress");
    simulation.loop.DoEvents();
    events.emplace_back("progress is over");
  };
  server().comeProgress(4, 4);
  server().comeBody("body");
  comes([] {});
  EXPECT_EQ(events, (Events{"arrived 4 of " + kFile, "progress", "progress is over",
                            "arrived 4 of " + kFile, "complete 4 of " + kFile}));
}

TEST_F(Loader, TellsNothingOfAReadThatWasGivenUp) {
  begin();
  server().comeProgress(300, 1000);
  window->loader.giveUp();
  comes([] {});
  EXPECT_TRUE(server().givenUp);
  EXPECT_EQ(events, Events{});
}

TEST_F(Loader, GivesUpTheEndWhenItsProgressDoesSo) {
  begin();
  window->loader.DownloadProgress = [this](std::int32_t, std::int32_t, const std::string&) {
    window->loader.giveUp();
  };
  server().comeProgress(4, 4);
  server().comeBody("body");
  comes([] {});
  EXPECT_EQ(events, (Events{"arrived 4 of " + kFile}));
  EXPECT_FALSE(isSaved());
}

TEST_F(Loader, TellsNothingToAWindowThatIsGone) {
  begin();
  server().comeBody("body");
  simulation.program().unload<LoaderWindow>();
  comes([] {});
  EXPECT_EQ(events, Events{});
  EXPECT_FALSE(isSaved());
}

// --- The lag ---

TEST_F(Loader, MeasuresTheLagOnceWhereItIsAnEmptyText) {
  values().DownloadLag = "";
  values().DownloadStartTime = 9 * 3600 + 5 * 60 - 2;
  begin();
  comes([&] { server().comeProgress(1, 0); });
  EXPECT_EQ(values().DownloadLag.text(), "");
  comes([&] { server().comeProgress(2, 10); });
  EXPECT_EQ(values().DownloadLag.text(), "2");
  values().DownloadStartTime = 0;
  comes([&] { server().comeProgress(3, 10); });
  EXPECT_EQ(values().DownloadLag.text(), "2");
}

TEST_F(Loader, LeavesALagOfTheNumber0) {
  values().DownloadLag = 0;
  begin();
  comes([&] { server().comeProgress(2, 10); });
  EXPECT_EQ(values().DownloadLag.text(), "0");
}

// --- What cannot be done ---

TEST_F(Loader, TellsItsUserOfAUrlThatIsNone) {
  simulation.downloads.refuse = true;
  begin();
  expectOneMessage(
      "Warning", 16,
      "5:Error in call to BeginDownload().\r\n\r\nError Description: Invalid procedure "
      "call or argument");
  EXPECT_EQ(events, Events{});
}

TEST_F(Loader, GoesOnBehindAUrlThatIsNone) {
  simulation.downloads.refuse = true;
  begin();
  simulation.downloads.refuse = false;
  begin();
  comes([&] { server().comeBody("body"); });
  EXPECT_EQ(saved(), "body");
}

// --- Its size ---

TEST_F(Loader, Is32By32PixelsInTwips) {
  EXPECT_EQ(window->loader.width.get(), 480);
  EXPECT_EQ(window->loader.height.get(), 480);
}

TEST_F(Loader, CannotBeMadeAnyOtherSize) {
  window->loader.width = 15;
  EXPECT_EQ(window->loader.width.get(), 480);
  window->loader.height = 3000;
  EXPECT_EQ(window->loader.height.get(), 480);
}

TEST_F(Loader, TellsItsUserOfASizeThatCannotBeSet) {
  window->loader.width.observe({});
  window->loader.width = 15;
  window->loader.width.observe([] { throw StatementFailed("Invalid property value", 380); });
  window->loader.SizeIt();
  expectOneMessage(
      "Warning", 16,
      "380:Error in call to SizeIt().\r\n\r\nError Description: Invalid property value");
}

TEST_F(Loader, IsSeenByNobody) { EXPECT_FALSE(window->loader.visible); }

}  // namespace
}  // namespace veltrin
