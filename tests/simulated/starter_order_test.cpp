// The order of the steps of a start.
#include <algorithm>

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
  answers(kFirstUpdatePort, {{500, "1.04198.51.100.7"}});
  simulation.desktop.habit.button = kAnswerNo;
  simulation.program();
  simulation.keepJournal();
  start();
  const auto from = std::find(simulation.journal.begin(), simulation.journal.end(),
                              "connect update.example 31112");
  const auto to = std::find(from, simulation.journal.end(), "variable windir");
  EXPECT_EQ(Journal(from, to),
            (Journal{"connect update.example 31112", "wait 2500", "wait 1000",
                     "message An update is available for Veltrin.\r\nWould you like to "
                     "Download/Update it now?",
                     "close", "close"}));
}

}  // namespace
}  // namespace veltrin
