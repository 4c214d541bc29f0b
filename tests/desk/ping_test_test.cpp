// SPDX-License-Identifier: GPL-3.0-or-later
// A person runs the Ping Test in the lab: five hosts, three passes, copy and save.
// Needs the scenario "ping-test" around it.
#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "desk/program_run.h"

namespace veltrin::desk {
namespace {

const std::string kWindow = "Ping Test";
const std::vector<std::string> kHosts = {"near.example", "far.example", "jittery.example",
                                         "lossy.example", "nowhere.example"};

// What the window shows of one destination.
struct Row {
  std::string current;
  std::string low;
  std::string average;
  std::string high;
  std::string loss;
};

class PingTestInTheLab : public ProgramRun {
 protected:
  // A double click empties a destination; the new one is typed into it.
  void fillIn(std::size_t row, const std::string& host) {
    desk_->doubleClick(desk_->named(kWindow, "Destination " + std::to_string(row + 1)));
    desk_->type(host);
    const bool typed = eventually(milliseconds(20000), [&] {
      return desk_->named(kWindow, "Destination " + std::to_string(row + 1)).text == host;
    });
    ASSERT_TRUE(typed) << host;
  }

  void chooseTests(const std::string& number) {
    desk_->click(desk_->find("the number of tests", [](const Element& element) {
      return element.role == "text" && element.text == "25";
    }));
    desk_->press("ctrl+a");
    desk_->type(number);
  }

  bool isComplete() {
    const auto elements = elementsOf("veltrin");
    return std::any_of(elements.begin(), elements.end(), [](const Element& element) {
      return element.showing && element.name == "Complete";
    });
  }

  Row row(std::size_t index) {
    const std::string of = " of destination " + std::to_string(index + 1);
    return {
        desk_->valueOf(kWindow, "Current time" + of), desk_->valueOf(kWindow, "Lowest time" + of),
        desk_->valueOf(kWindow, "Average time" + of), desk_->valueOf(kWindow, "Highest time" + of),
        desk_->valueOf(kWindow, "Lost echoes" + of)};
  }
};

int number(const std::string& text) { return text.empty() ? 0 : std::stoi(text); }

TEST_F(PingTestInTheLab, ThreePassesOverFiveHostsAreShownCopiedAndSavedAlike) {
  // Every fifth echo to the lossy host is lost; with three before the run it is that
  // of the second pass.
  outputOf({VELTRIN_PING, "lossy.example", "-n", "3"});
  ASSERT_NO_FATAL_FAILURE(startWith("Ping Test", kWindow));
  desk_->photograph("lab-idle");
  for (std::size_t index = 0; index < kHosts.size(); ++index) fillIn(index, kHosts[index]);
  chooseTests("3");
  desk_->click(desk_->button(kWindow, "Start"));
  EXPECT_NO_THROW(desk_->button(kWindow, "Stop"));
  desk_->photograph("lab-running");
  ASSERT_TRUE(eventually(milliseconds(90000), [&] { return isComplete(); }));
  desk_->photograph("lab-complete");

  std::vector<Row> rows;
  for (std::size_t index = 0; index < kHosts.size(); ++index) rows.push_back(row(index));

  // The scenario: 2 ms, 80 ms, 10 to 50 ms, one of three lost, no such name.
  EXPECT_GE(number(rows[0].low), 2);
  EXPECT_LE(number(rows[0].low), 4);
  EXPECT_GE(number(rows[1].low), 80);
  EXPECT_LE(number(rows[1].low), 83);
  EXPECT_GE(number(rows[2].low), 10);
  EXPECT_LE(number(rows[2].high), 60);
  EXPECT_EQ(rows[0].loss + rows[1].loss + rows[2].loss, "000");
  EXPECT_EQ(rows[3].loss, "1");
  EXPECT_EQ(rows[3].high, "99999");
  EXPECT_EQ(rows[4].loss, "3");
  EXPECT_EQ(rows[4].low, "99999");

  desk_->click(desk_->button(kWindow, "Copy"));
  EXPECT_EQ(readMessage("Ping Test").substr(0, 31), "Your information is now copied.");
  const std::string copied = desk_->clipboard();
  desk_->click(desk_->button(kWindow, "Save"));
  const std::string told = readMessage("PingTest");
  const std::string lead = "File created: ";
  ASSERT_EQ(told.substr(0, lead.size()), lead);
  const std::string saved = contentOf(told.substr(lead.size()));
  std::string savedForX = saved;
  std::erase(savedForX, '\r');
  std::string copiedForX = copied;
  std::erase(copiedForX, '\r');
  EXPECT_EQ(savedForX, copiedForX);

  EXPECT_EQ(saved.substr(0, 22), "Ping Test   -   Date: ");
  for (std::size_t index = 0; index < kHosts.size(); ++index) {
    const Row& shown = rows[index];
    const std::string line = kHosts[index] + "   " + shown.low + " (Low)     " + shown.average +
                             " (Aver)     " + shown.high + " (High)     " + shown.loss +
                             " (PacketLoss)\r\n";
    EXPECT_NE(saved.find(line), std::string::npos) << line << "is not in\n" << saved;
  }
  EXPECT_NE(saved.find("99999 | 99999 | 99999 | \r\n"), std::string::npos);

  desk_->click(desk_->button(kWindow, "Quit"));
  EXPECT_EQ(program_->waitFor(milliseconds(30000)), 0);
  EXPECT_NE(settings().find("Pingit 4=lossy.example\r\n"), std::string::npos) << settings();
  EXPECT_NE(settings().find("Passes=3\r\n"), std::string::npos) << settings();
}

}  // namespace
}  // namespace veltrin::desk
