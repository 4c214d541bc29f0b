// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>

#include "simulated/start_run.h"
#include "text/strings.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int64_t kToldWaits = 100 + 2500 + 1000;  // ms of a start without an answer
constexpr std::int64_t kVersionWait = 1000;             // ms in which the answer is shown

class Starter : public StartRun {
 protected:
  // The splash while the program starts, looked at so many ms after its start.
  void lookAt(std::int64_t moment, std::function<void(starter&)> look) {
    simulation.loop.at(moment, [this, look = std::move(look)] {
      for (Form* form : simulation.desktop.shown) {
        if (auto* splash = dynamic_cast<starter*>(form)) {
          ++looks;
          look(*splash);
        }
      }
    });
  }

  bool menuIsOpen() { return simulation.program().isLoaded<startup>(); }

  int looks = 0;
};

// --- The steps of the start ---

TEST_F(Starter, ShowsItsLinesAndItsClipBeforeTheFirstWait) {
  std::string title;
  std::string product;
  std::string version;
  std::string clip;
  lookAt(50, [&](starter& splash) {
    title = splash.caption.get();
    product = splash.Label1.caption.get();
    version = splash.Label2.caption.get();
    clip = splash.playit.file.get();
    EXPECT_TRUE(splash.playit.playing);
  });
  start();
  EXPECT_EQ(looks, 1);
  EXPECT_EQ(title, "Veltrin");
  EXPECT_EQ(product, "Veltrin");
  EXPECT_EQ(version, "Your Version 1.03  -  Dated 5 Jan 2012");
  EXPECT_EQ(clip, "C:\\Program Files\\Veltrin\\files\\update.avi");
}

TEST_F(Starter, TakesTheHostNameAndTheLocalAddressFromItsSocket) {
  simulation.sockets.hostName = "KITCHEN";
  simulation.sockets.address = "198.51.100.20";
  start();
  EXPECT_EQ(simulation.program().start.HostName, "KITCHEN");
  EXPECT_EQ(simulation.program().start.LocalIp, "198.51.100.20");
}

TEST_F(Starter, ReadsTheLocalAddressBehindTheLastWait) {
  simulation.loop.at(3000, [this] { simulation.sockets.address = "203.0.113.4"; });
  start();
  EXPECT_EQ(simulation.program().start.LocalIp, "203.0.113.4");
}

TEST_F(Starter, ReadsTheBoardModelOfAnEarlierSummary) {
  settingsAre("[SysInfo]\r\nMB Model=Board 7\r\n");
  start();
  EXPECT_EQ(simulation.program().summary.MbModel, "Board 7");
}

TEST_F(Starter, TakesTheWaitsItTellsWhenNobodyAnswers) {
  start();
  EXPECT_EQ(now(), kToldWaits);
  EXPECT_TRUE(menuIsOpen());
}

TEST_F(Starter, ReadsTheWindowsFolderBehindTheUpdateDialogue) {
  simulation.loop.at(2000, [this] { simulation.environment.variables["windir"] = "D:\\Win"; });
  start();
  EXPECT_EQ(simulation.program().start.WinDir, "D:\\Win");
}

TEST_F(Starter, OpensTheMenuWhichTakesTheSplashAway) {
  start();
  EXPECT_FALSE(simulation.program().isLoaded<starter>());
  ASSERT_EQ(simulation.desktop.shown.size(), 1U);
  EXPECT_EQ(simulation.desktop.shown.front()->name(), "startup");
}

TEST_F(Starter, ClosedByTheUserEndsTheProgram) {
  simulation.loop.at(500, [this] { simulation.desktop.closeWindow(*simulation.desktop.shown[0]); });
  EXPECT_THROW(start(), ProgramEnded);
  EXPECT_FALSE(menuIsOpen());
}

// --- The first run ---

TEST_F(Starter, FirstRunWithoutSettingsAndRegistryWritesEmptyValuesInOrder) {
  simulation.program();
  start();
  EXPECT_EQ(simulation.settings(),
            "[InDepth]\r\n"
            "Source=\r\n"
            "Queries=\r\n"
            "Period=\r\n"
            "[Settings]\r\n"
            "InDepth Queries=\r\n"
            "Path=C:\\Program Files\\Veltrin\r\n"
            "OS=00000-00000-00000-AA\r\n"
            "Version=1.03\r\n"
            "Lang=1\r\n");
}

TEST_F(Starter, FirstRunTakesTheOldRegistryValuesOverWithTheirCrossedPlaces) {
  auto& old = simulation.registry.keys[{kHkeyCurrentUser, "software\\veltrin"}];
  const auto text = [](const std::string& value) {
    return SimulatedRegistry::Value{kRegSz, value + std::string(1, '\0')};
  };
  old["InDepth Source"] = text("near.example");
  old["InDepth Queries"] = text("50");
  old["InDepth Period"] = text("200");
  start();
  EXPECT_EQ(setting("InDepth", "Source"), "near.example");
  EXPECT_EQ(setting("InDepth", "Queries"), "50");
  EXPECT_EQ(setting("InDepth", "Period"), "near.example");
  EXPECT_EQ(setting("Settings", "InDepth Queries"), "200");
  EXPECT_EQ(setting("Settings", "Path"), folder());
}

TEST_F(Starter, TransfersNothingWhenTheRegistryHoldsAPath) {
  auto& old = simulation.registry.keys[{kHkeyCurrentUser, "software\\veltrin"}];
  old["Path"] = {kRegSz, std::string("C:\\Old\0", 7)};
  old["InDepth Source"] = {kRegSz, "near.example"};
  start();
  EXPECT_EQ(simulation.settings().find("[InDepth]"), std::string::npos);
}

TEST_F(Starter, DoesNotReadTheRegistryWhenTheSettingsHoldAPath) {
  settingsAre("[Settings]\r\nPath=C:\\x\r\n");
  simulation.registry.keys[{kHkeyCurrentUser, "software\\veltrin"}];
  start();
  EXPECT_THAT(simulation.registry.accesses, IsEmpty());
}

TEST_F(Starter, TakesAPathOfTwoCharactersForNone) {
  settingsAre("[Settings]\r\nPath=C:\r\n");
  start();
  EXPECT_NE(simulation.settings().find("[InDepth]"), std::string::npos);
}

TEST_F(Starter, TakesAPathOfThreeCharactersForOne) {
  settingsAre("[Settings]\r\nPath=C:\\\r\n");
  start();
  EXPECT_EQ(simulation.settings().find("[InDepth]"), std::string::npos);
}

TEST_F(Starter, WritesTheProgramFolderAtEveryStart) {
  settingsAre("[Settings]\r\nPath=D:\\moved\r\n");
  start();
  EXPECT_EQ(setting("Settings", "Path"), folder());
}

TEST_F(Starter, CollectsTheSummaryOnlyWhenNoSystemNameIsStored) {
  start();
  EXPECT_EQ(collections, 1);
}

TEST_F(Starter, CollectsNoSummaryAtALaterStart) {
  settingsAre("[Settings]\r\nOS=something\r\n");
  start();
  EXPECT_EQ(collections, 0);
  EXPECT_EQ(simulation.program().summary.OsName, "something");
}

TEST_F(Starter, WritesTheVersionWhenItDiffers) {
  settingsAre("[Settings]\r\nVersion=1.02\r\n");
  start();
  EXPECT_EQ(setting("Settings", "Version"), "1.03");
}

TEST_F(Starter, LeavesTheVersionAloneWhenItIsTheSame) {
  settingsAre("[Settings]\r\nPath=C:\\x\r\nOS=a\r\nVersion = 1.03\r\n");
  start();
  EXPECT_NE(simulation.settings().find("Version = 1.03"), std::string::npos);
}

// --- The counters ---

TEST_F(Starter, ProvesTheCounterServiceByTheIdleTimeOfTheFirstProcessor) {
  start();
  EXPECT_THAT(simulation.counters.paths, ElementsAre("\\\\MYPC\\Processor(0)\\% Idle Time"));
  EXPECT_EQ(simulation.program().start.PdhQuery, 1);
  EXPECT_EQ(simulation.program().start.PdhFailed, 0);
  EXPECT_THAT(simulation.desktop.messages, IsEmpty());
}

TEST_F(Starter, TellsThatTheCounterServiceIsBrokenAndGoesOn) {
  simulation.counters.openStatus = 1;
  start();
  ASSERT_EQ(simulation.desktop.messages.size(), 1U);
  EXPECT_EQ(simulation.desktop.messages[0].text, "Windows performance service disabled or broken!");
  EXPECT_EQ(simulation.desktop.messages[0].style, 65552);
  EXPECT_EQ(simulation.program().start.PdhFailed, 1);
  EXPECT_TRUE(menuIsOpen());
}

TEST_F(Starter, SaysFailWhenTheCounterCannotBeAddedAndGoesOn) {
  simulation.counters.addStatus = 1;
  start();
  ASSERT_EQ(simulation.desktop.messages.size(), 1U);
  EXPECT_EQ(simulation.desktop.messages[0].text, "Fail");
  EXPECT_EQ(simulation.desktop.messages[0].style, kMessageOk);
  EXPECT_TRUE(menuIsOpen());
}

// --- The update dialogue ---

TEST_F(Starter, AsksTheFirstPortAndBehindItsSilenceTheSecond) {
  start();
  EXPECT_THAT(simulation.sockets.calls,
              ElementsAre("connect update.example 31112", "connect update.example 31113"));
  EXPECT_EQ(simulation.sockets.moments[0], 100);
  EXPECT_EQ(simulation.sockets.moments[1], 2600);
  EXPECT_EQ(simulation.program().start.PublicIp, "");
  EXPECT_EQ(simulation.program().start.UpdateWaiting, 1);
}

TEST_F(Starter, ListensOnceBeforeTheSecondPortWhenTheFirstRefused) {
  simulation.sockets.onConnect = [this](SimulatedTcpSocket& socket, std::uint16_t) {
    simulation.sockets.later(5, socket, [](SimulatedTcpSocket& refused) { refused.comeError(); });
  };
  start();
  EXPECT_THAT(simulation.sockets.calls, ElementsAre("connect update.example 31112", "close",
                                                    "listen 0", "connect update.example 31113"));
  EXPECT_EQ(now(), kToldWaits);
}

TEST_F(Starter, TakesTheAddressBehindTheVersion) {
  answers(kFirstUpdatePort, {{1200, "1.03198.51.100.7"}});
  start();
  EXPECT_EQ(simulation.program().start.PublicIp, "198.51.100.7");
  EXPECT_EQ(simulation.program().start.UpdateWaiting, 0);
  EXPECT_THAT(connections(), ElementsAre("connect update.example 31112"));
  EXPECT_THAT(simulation.desktop.messages, IsEmpty());
  EXPECT_EQ(now(), kToldWaits);
}

TEST_F(Starter, AnAnswerOfJustItsOwnVersionAsksNothingAndLeavesTheAddressEmpty) {
  answers(kFirstUpdatePort, {{50, "1.03"}});
  start();
  EXPECT_EQ(simulation.program().start.PublicIp, "");
  EXPECT_EQ(simulation.program().start.UpdateWaiting, 0);
  EXPECT_THAT(simulation.desktop.messages, IsEmpty());
}

TEST_F(Starter, ShowsTheCurrentVersion) {
  answers(kFirstUpdatePort, {{50, "1.02198.51.100.7"}});
  lookAt(200,
         [](starter& splash) { EXPECT_EQ(splash.Label1.caption.get(), "Current Version: 1.02"); });
  start();
  EXPECT_EQ(looks, 1);
}

TEST_F(Starter, HoldsTheStartWhileTheCurrentVersionIsShown) {
  answers(kFirstUpdatePort, {{2400, "1.03"}});
  start();
  EXPECT_EQ(now(), 100 + 2400 + kVersionWait + 1000);
}

// The wait of the answer then shares its timer with the one of the dialogue, as any two
// waits of one second do.
TEST_F(Starter, AnAnswerInTheSecondOfTheConnectingShortensTheWaitForIt) {
  answers(kFirstUpdatePort, {{50, "1.03198.51.100.7"}});
  start();
  EXPECT_EQ(now(), 100 + 50 + kVersionWait + 1000);
}

TEST_F(Starter, TakesAnAnswerOfTheSecondPortInTheLastWait) {
  answers(kSecondUpdatePort, {{100, "1.03198.51.100.7"}});
  start();
  EXPECT_EQ(simulation.program().start.PublicIp, "198.51.100.7");
  EXPECT_EQ(now(), 2600 + 100 + kVersionWait);
}

TEST_F(Starter, ClosesTheSocketTwiceBehindAnAnswer) {
  answers(kFirstUpdatePort, {{50, "1.03"}});
  start();
  EXPECT_THAT(simulation.sockets.calls,
              ElementsAre("connect update.example 31112", "close", "close"));
}

TEST_F(Starter, AnAnswerOfDigitPointDigitNeverAsks) {
  answers(kFirstUpdatePort, {{50, "9.9"}});
  start();
  EXPECT_THAT(simulation.desktop.messages, IsEmpty());
  EXPECT_EQ(simulation.program().start.PublicIp, "");
  EXPECT_EQ(simulation.program().start.UpdateWaiting, 0);
}

TEST_F(Starter, AnAnswerShorterThanFourCharactersKeepsTheAddressItHad) {
  simulation.program().start.PublicIp = "192.0.2.77";
  answers(kFirstUpdatePort, {{50, "1.0"}});
  start();
  EXPECT_EQ(simulation.program().start.PublicIp, "192.0.2.77");
}

TEST_F(Starter, TriesTheSecondPortBehindXxxAndSilence) {
  answers(kFirstUpdatePort, {{50, "XXX"}});
  start();
  EXPECT_EQ(simulation.program().start.UpdateWaiting, 1);
  EXPECT_THAT(connections(),
              ElementsAre("connect update.example 31112", "connect update.example 31113"));
}

TEST_F(Starter, TakesAnAnswerBehindXxx) {
  answers(kFirstUpdatePort, {{50, "XXX"}, {400, "1.03198.51.100.7"}});
  start();
  EXPECT_EQ(simulation.program().start.PublicIp, "198.51.100.7");
  EXPECT_THAT(connections(), ElementsAre("connect update.example 31112"));
}

TEST_F(Starter, TakesXxxInSmallLettersForAnAnswer) {
  answers(kFirstUpdatePort, {{50, "xxx"}});
  start();
  EXPECT_EQ(simulation.program().start.UpdateWaiting, 0);
}

TEST_F(Starter, GoesByTheFirstOfTwoPieces) {
  answers(kFirstUpdatePort, {{1200, "1.0"}, {1210, "3198.51.100.7"}});
  start();
  EXPECT_EQ(simulation.program().start.PublicIp, "");
  EXPECT_THAT(simulation.desktop.messages, IsEmpty());
  EXPECT_EQ(now(), kToldWaits);
}

TEST_F(Starter, AnEndpointThatNeverStopsTalkingCostsNoMoreThanAnAnswer) {
  std::vector<ToolWrite> flood;
  for (std::int64_t moment = 1200; moment < 10'000; moment += 10)
    flood.push_back({moment, "1.03a"});
  answers(kFirstUpdatePort, flood);
  start();
  EXPECT_EQ(now(), kToldWaits);
  EXPECT_TRUE(menuIsOpen());
}

TEST_F(Starter, AMegabyteOfBytesIsNoUpdate) {
  answers(kFirstUpdatePort, {{1200, std::string(1'000'000, '\xF0')}});
  start();
  EXPECT_EQ(simulation.program().start.PublicIp.size(), 1'000'000U - 4);
  EXPECT_THAT(simulation.desktop.messages, IsEmpty());
  EXPECT_EQ(now(), kToldWaits);
}

TEST_F(Starter, AnEndpointThatClosesWithoutAWordIsAskedOnTheSecondPort) {
  simulation.sockets.onConnect = [this](SimulatedTcpSocket& socket, std::uint16_t) {
    simulation.sockets.later(20, socket, [](SimulatedTcpSocket& connected) {
      connected.comeConnected();
      connected.comeClosed();
    });
  };
  start();
  EXPECT_THAT(simulation.sockets.calls,
              ElementsAre("connect update.example 31112", "close", "listen 0",
                          "connect update.example 31113", "close", "listen 0"));
}

TEST_F(Starter, TakesACallerOverWhileItListens) {
  simulation.sockets.onConnect = [this](SimulatedTcpSocket& socket, std::uint16_t port) {
    if (port != kFirstUpdatePort) return;
    simulation.sockets.later(20, socket, [](SimulatedTcpSocket& closed) { closed.comeClosed(); });
  };
  simulation.loop.at(500, [this] { simulation.sockets.sockets[0]->comeRequest(7); });
  start();
  EXPECT_THAT(simulation.sockets.calls,
              ElementsAre("connect update.example 31112", "close", "listen 0", "close", "accept 7",
                          "connect update.example 31113"));
}

// --- The update question ---

TEST_F(Starter, OffersANewerVersion) {
  answers(kFirstUpdatePort, {{50, "1.04198.51.100.7"}});
  simulation.desktop.answers = {{kAnswerNo, 0}};
  start();
  ASSERT_EQ(simulation.desktop.messages.size(), 1U);
  EXPECT_EQ(simulation.desktop.messages[0].title, "Update");
  EXPECT_EQ(simulation.desktop.messages[0].text,
            "An update is available for Veltrin.\r\nWould you like to Download/Update it now?");
  EXPECT_EQ(simulation.desktop.messages[0].style, kMessageYesNo);
  EXPECT_EQ(simulation.desktop.messages[0].moment, 100 + 50 + kVersionWait);
}

TEST_F(Starter, NoToTheUpdateGoesOnToTheMenu) {
  answers(kFirstUpdatePort, {{50, "1.04"}});
  simulation.desktop.answers = {{kAnswerNo, 0}};
  start();
  EXPECT_TRUE(menuIsOpen());
  EXPECT_THAT(simulation.shell.executions, IsEmpty());
}

TEST_F(Starter, YesToTheUpdateStartsTheDownloaderAndEndsAtOnce) {
  answers(kFirstUpdatePort, {{50, "2.00"}});
  simulation.desktop.answers = {{kAnswerYes, 200}};
  EXPECT_THROW(start(), ProgramEnded);
  EXPECT_EQ(now(), 100 + 50 + kVersionWait + 200);
  EXPECT_THAT(simulation.shell.executions, ElementsAre(SimulatedShell::Execution{
                                               "open", "C:\\Program Files\\Veltrin\\Downloader.exe",
                                               "-Veltrin", "C:\\Program Files\\Veltrin", 1}));
  EXPECT_FALSE(menuIsOpen());
}

TEST_F(Starter, YesWithoutADownloaderEndsAllTheSame) {
  answers(kFirstUpdatePort, {{50, "2.00"}});
  simulation.shell.refuse = true;
  simulation.desktop.answers = {{kAnswerYes, 0}};
  EXPECT_THROW(start(), ProgramEnded);
}

TEST_F(Starter, StandsStillUntilTheUpdateQuestionIsAnswered) {
  answers(kFirstUpdatePort, {{50, "1.10"}});
  simulation.desktop.answers = {{kAnswerNo, 60'000}};
  start();
  EXPECT_EQ(now(), 100 + 50 + kVersionWait + 60'000 + 1000);
}

TEST_F(Starter, AnAnswerDuringTheQuestionAsksNoSecondTime) {
  answers(kFirstUpdatePort, {{50, "1.10"}, {2000, "1.20"}});
  simulation.desktop.answers = {{kAnswerNo, 5000}};
  start();
  EXPECT_EQ(simulation.desktop.messages.size(), 1U);
}

TEST_F(Starter, ComparesVersionsAsNumbersWithoutTheirPoint) {
  answers(kFirstUpdatePort, {{50, "1.05"}});
  simulation.desktop.answers = {{kAnswerNo, 0}};
  start();
  EXPECT_EQ(simulation.desktop.messages.size(), 1U);
}

TEST_F(Starter, AnOlderVersionIsNoUpdate) {
  answers(kFirstUpdatePort, {{50, "0.99"}});
  start();
  EXPECT_THAT(simulation.desktop.messages, IsEmpty());
}

TEST_F(Starter, NoArrivalReachesAProgramWhoseSplashHasGone) {
  answers(kSecondUpdatePort, {{5000, "2.00"}});
  start();
  simulation.run(10'000);
  EXPECT_THAT(simulation.desktop.messages, IsEmpty());
  EXPECT_THAT(simulation.sockets.sockets, IsEmpty());
}

}  // namespace
}  // namespace veltrin
