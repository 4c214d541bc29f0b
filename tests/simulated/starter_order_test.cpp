// SPDX-License-Identifier: GPL-3.0-or-later
// The order of the steps of a start.
#include <algorithm>
#include <utility>

#include "simulated/start_run.h"

namespace veltrin {
namespace {

using StarterOrder = StartRun;

TEST_F(StarterOrder, GoesThroughTheStepsOfAFirstStartInOrder) {
  Program& program = simulation.program();
  simulation.keepJournal();
  start();
  EXPECT_EQ(program.start.WinDir, "C:\\Windows");
  EXPECT_EQ(simulation.journal, (Journal{
                                    "local host name",
                                    "read SysInfo/MB Model",
                                    "show starter",
                                    "wait 100",
                                    "read Settings/Path",
                                    "write InDepth/Source=",
                                    "write InDepth/Queries=",
                                    "write InDepth/Period=",
                                    "write Settings/InDepth Queries=",
                                    "write Settings/Path=C:\\Program Files\\Veltrin",
                                    "read Settings/OS",
                                    "write Settings/OS=00000-00000-00000-AA",
                                    "open counters",
                                    "add \\\\MYPC\\Processor(0)\\% Idle Time",
                                    "write Settings/Path=C:\\Program Files\\Veltrin",
                                    "connect update.example 31112",
                                    "wait 2500",
                                    "connect update.example 31113",
                                    "variable windir",
                                    "wait 1000",
                                    "local address",
                                    "read Settings/Version",
                                    "write Settings/Version=1.03",
                                    "remove starter",
                                    "application title Some Junk Title",
                                    "application title Veltrin",
                                    "read Settings/Rated Speed",
                                    "read Settings/OS",
                                    "write Settings/Lang=1",
                                    "application title Veltrin",
                                    "show startup",
                                }));
}

TEST_F(StarterOrder, ActsOnAnAnswerInOrder) {
  const std::string question =
      "An update is available for Veltrin.\r\nWould you like to Download/Update it now?";
  answers(kFirstUpdatePort, {{500, "1.04198.51.100.7"}});
  simulation.desktop.habit.button = kAnswerNo;
  simulation.program();
  simulation.keepJournal();
  start();
  const auto from = std::find(simulation.journal.begin(), simulation.journal.end(),
                              "connect update.example 31112");
  const auto to = std::find(from, simulation.journal.end(), "variable windir");
  EXPECT_EQ(Journal(from, to), (Journal{"connect update.example 31112", "wait 2500", "wait 1000",
                                        "message " + question, "close", "close"}));
}

class StarterSocket : public StartRun {
 protected:
  // Does something to the socket of the splash at a moment of the clock.
  void at(std::int64_t moment, std::function<void(Winsock&)> action) {
    simulation.loop.at(moment, [this, action = std::move(action)] {
      auto* splash = dynamic_cast<starter*>(simulation.desktop.shown.front());
      ASSERT_NE(splash, nullptr);
      action(splash->Winsock1);
    });
  }
};

TEST_F(StarterSocket, SetsItsPortsAndItsHostBeforeEachConnecting) {
  at(50, [](Winsock& socket) { socket.LocalPort = 4000; });
  at(1000, [](Winsock& socket) {
    socket.LocalPort = 4001;
    socket.RemoteHost = "elsewhere.example";
  });
  start();
  EXPECT_EQ(connections(), (std::vector<std::string>{"connect update.example 31112",
                                                     "connect update.example 31113"}));
}

TEST_F(StarterSocket, LetsEventsInBetweenClosingAndAcceptingACaller) {
  std::string lastCall;
  simulation.loop.at(1000, [this] { simulation.sockets.sockets.at(0)->comeRequest(5); });
  simulation.loop.at(1000, [&] { lastCall = simulation.sockets.calls.back(); });
  start();
  const auto& calls = simulation.sockets.calls;
  EXPECT_EQ(std::count(calls.begin(), calls.end(), "accept 5"), 1);
  EXPECT_EQ(lastCall, "close");
}

TEST_F(StarterSocket, ForgetsThatTheCountersFailedBefore) {
  simulation.program().start.PdhFailed = 1;
  start();
  EXPECT_EQ(simulation.program().start.PdhFailed, 0);
}

}  // namespace
}  // namespace veltrin
