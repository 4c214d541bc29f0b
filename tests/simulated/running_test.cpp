// SPDX-License-Identifier: GPL-3.0-or-later
// The test for a running copy of the program.
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "frame/modIsItRunning.h"
#include "support/simulation.h"

namespace veltrin {
namespace {

// Writes down the titles under which the application goes by.
class RecordingDesktop : public SimulatedDesktop {
 public:
  using SimulatedDesktop::SimulatedDesktop;

  std::vector<std::string> titles;
  std::string titleAtSearch;

  void setApplicationTitle(const std::string& title) override {
    titles.push_back(title);
    SimulatedDesktop::setApplicationTitle(title);
  }
  std::uint32_t findWindow(const std::string& title) override {
    titleAtSearch = applicationTitle();
    return SimulatedDesktop::findWindow(title);
  }
};

class Running : public ::testing::Test {
 protected:
  SimulatedLoop loop;
  RecordingDesktop desktop{loop};
};

TEST_F(Running, DoesNotFindTheProgramsOwnApplicationWindow) {
  ASSERT_NE(desktop.findWindow("Veltrin"), 0U);
  EXPECT_EQ(runningWindow(desktop, "Veltrin"), 0U);
}

TEST_F(Running, FindsTheWindowOfAnotherCopy) {
  desktop.otherWindows = {"Notes", "Veltrin"};
  EXPECT_EQ(runningWindow(desktop, "Veltrin"), desktop.findWindow("Notes") + 1);
}

TEST_F(Running, FindsNothingUnderATitleThatNobodyBears) {
  desktop.otherWindows = {"Notes"};
  EXPECT_EQ(runningWindow(desktop, "Veltrin Help"), 0U);
}

TEST_F(Running, PutsTheTitleAsideForTheSearchAlone) {
  runningWindow(desktop, "Veltrin");
  EXPECT_EQ(desktop.titleAtSearch, "Some Junk Title");
  EXPECT_EQ(desktop.titles, (std::vector<std::string>{"Some Junk Title", "Veltrin"}));
}

TEST_F(Running, RestoresTheTitleThatTheApplicationHadAndNotItsFirstOne) {
  desktop.setApplicationTitle("Veltrin 2");
  runningWindow(desktop, "Veltrin");
  EXPECT_EQ(desktop.applicationTitle(), "Veltrin 2");
}

class OwnWindow : public Form {
 public:
  explicit OwnWindow(Program& program) : Form("OwnWindow", program) { caption = "Veltrin"; }
};

TEST(RunningProgram, FindsAVisibleWindowOfItsOwnUnderThatTitle) {
  Simulation simulation;
  simulation.program().show<OwnWindow>();
  EXPECT_NE(runningWindow(simulation.desktop, "Veltrin"), 0U);
}

}  // namespace
}  // namespace veltrin
