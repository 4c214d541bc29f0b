// SPDX-License-Identifier: GPL-3.0-or-later
// What the system report prints of the processes of a recorded Linux machine.
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "platform/linux/linux_process_list.h"
#include "support/simulation.h"
#include "sysinfo/frmSysInfo.h"
#include "sysinfo/modTasks.h"
#include "tests/machine/temporary_tree.h"

namespace veltrin {
namespace {

using testing::ElementsAre;

using Texts = std::vector<std::string>;

class RecordedProcessListing : public testing::Test {
 protected:
  // A process of this user, whose maps name its program and a library.
  void addOwn(int id, const std::string& program) const {
    const std::string folder = "/proc/" + std::to_string(id);
    machine.put(folder + "/comm", "word\n");
    machine.link(folder + "/exe", program);
    machine.put(folder + "/maps", "0-1 r-xp 0 0:0 1 " + program +
                                      "\n1-2 r--p 0 0:0 2 /usr/lib/data\n"
                                      "2-3 r-xp 0 0:0 3 /usr/lib/libz.so.1\n");
  }

  // A process of somebody else, of which the system tells the word alone.
  void addForeign(int id, const std::string& word) const {
    machine.put("/proc/" + std::to_string(id) + "/comm", word + "\n");
  }

  // The texts of all lines, those in bold behind a star.
  Texts printed() {
    modTasks(program, window.get());
    Texts texts;
    const ListView& list = window->SYSView.ListView1;
    for (std::size_t index = 0; index < list.count(); ++index) {
      texts.push_back((list.line(index).Bold ? "*" : "") + list.line(index).Text);
    }
    return texts;
  }

  TemporaryTree machine;
  LinuxProcessList list{machine.files()};
  Simulation simulation;
  const Platform& rest = simulation.platform;
  Platform platform{rest.events,     rest.timers,   rest.clock,    rest.desktop, rest.files,
                    rest.processes,  rest.profiles, rest.registry, rest.shell,   rest.environment,
                    rest.sockets,    rest.counters, rest.wmi,      rest.icmp,    rest.downloads,
                    rest.interfaces, rest.printers, rest.drives,   list,         "veltrin"};
  Program program{platform};
  std::shared_ptr<frmSysInfo> window = program.show<frmSysInfo>();
};

TEST_F(RecordedProcessListing, HasOwnProcessesInBothListsAndThoseOfOthersInTheFirst) {
  addForeign(1, "Init");
  addOwn(30, "/opt/wine/Editor.EXE");
  addOwn(4, "/usr/bin/bash");
  EXPECT_THAT(printed(),
              ElementsAre("    ",                          //
                          "*Running Processes",            //
                          "*init",                         //
                          "*bash",                         //
                          "*editor.exe",                   //
                          "    ",                          //
                          "    ",                          //
                          "*User Processes anf Threads",   //
                          "/usr/bin/bash          ",       //
                          "/usr/lib/libz.so.1          ",  //
                          "*/opt/wine/Editor.EXE",         //
                          "/usr/lib/libz.so.1          "));
}

TEST_F(RecordedProcessListing, PrintsPathsThatAreNoUtf8WithQuestionMarks) {
  addOwn(4, "/opt/caf\xE9.exe");
  EXPECT_THAT(printed(), testing::Contains("*/opt/caf?.exe"));
}

// The first list counts on; the second looks into as many as its table holds.
TEST_F(RecordedProcessListing, OfThreeThousandLooksIntoThe1024LowestNumbers) {
  machine.put("/foreign/comm", "same\n");
  for (int id = 1; id <= 3000; ++id) {
    if (id != 1024 && id != 1025) {
      machine.link("/proc/" + std::to_string(id), machine.real("/foreign"));
    }
  }
  addOwn(1024, "/usr/bin/inside");
  addOwn(1025, "/usr/bin/outside");
  const Texts lines = printed();
  EXPECT_EQ(program.shared<TaskValues>().ProcessCount, 3000);
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "*outside"), 1);
  EXPECT_THAT(Texts(lines.begin() + 3002, lines.end()),
              ElementsAre("    ", "    ", "*User Processes anf Threads",
                          "/usr/bin/inside          ", "/usr/lib/libz.so.1          "));
}

}  // namespace
}  // namespace veltrin
