// SPDX-License-Identifier: GPL-3.0-or-later
// A person lets the two long tests run, in the lab: a Hop Stability Test of a path of two
// hops, and the Outage monitor through two outages. They take one minute each.
#include <cmath>
#include <gtest/gtest.h>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "desk/tool_run.h"

namespace veltrin::desk {
namespace {

using Moment = std::filesystem::file_time_type;

std::string withoutReturns(std::string text) {
  std::erase(text, '\r');
  return text;
}

class LongRunOnADesk : public ToolRun {
 protected:
  // Opens a tool above the menu or in its place.
  void openTool(const std::string& button, const std::string& window) {
    window_ = window;
    start();
    ASSERT_NO_FATAL_FAILURE(awaitMenu());
    forgetRuns();  // of the first start
    desk_->click(desk_->button(kMenu, button));
    ASSERT_TRUE(eventually(milliseconds(20000), [&] { return desk_->hasWindow(window); }));
  }

  // How many times a tool was started.
  int runs() const {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(data_)) {
      if (entry.path().extension() == ".command") ++count;
    }
    return count;
  }

  void typeInto(const Element& field, const std::string& text) const {
    desk_->click(field);
    desk_->press("ctrl+a");
    desk_->type(text);
  }

  // The times that the pings from one run on printed, in ms.
  std::vector<int> timesOfPings(int first, int count, const std::string& address) {
    std::vector<int> times;
    const std::regex average("Average = ([0-9]+)ms");
    for (int run = first; run < first + count; ++run) {
      EXPECT_EQ(commandOf(run), "ping " + address + " -n 1");
      const std::string text = textOf(run);
      std::smatch found;
      if (std::regex_search(text, found, average)) times.push_back(std::stoi(found[1]));
    }
    EXPECT_EQ(times.size(), static_cast<std::size_t>(count));
    return times;
  }

  // What a summary says of a hop.
  static std::string scoreOf(const std::string& address, const std::vector<int>& times) {
    int sum = 0;
    for (const int time : times) sum += time;
    const long average = std::lround(sum / 100.0);
    int high = 0;
    int low = 0;
    for (const int time : times) {
      if (time > average + 5) ++high;
      if (time < average - 5) ++low;
    }
    std::ostringstream text;
    text << "Results for IP: " << address << "Average Ping = " << average
         << "   Low Ping = " << *std::min_element(times.begin(), times.end())
         << "  High Ping = " << *std::max_element(times.begin(), times.end())
         << "\n     Percent of Average Replies = " << 100 - low - high
         << "%   Percent of High Returns = " << high << "%   Percent of Low Returns = " << low
         << "%\n";
    if (low + 50 < high) {
      text << "     This hop exibited a wide range of returns and may be causing an issue\n";
    }
    return text.str();
  }

  std::string logText() const {
    for (const auto& entry : std::filesystem::directory_iterator(data_ / "veltrin" / "Files")) {
      if (entry.path().filename().string().rfind("Outage Log ", 0) == 0) {
        return contentOf(entry.path());
      }
    }
    return "";
  }

  // The viewer of texts of this desktop tells what it was to show.
  void putViewer() {
    const std::filesystem::path bin = data_ / "bin";
    std::filesystem::create_directories(bin);
    std::ofstream(bin / "xdg-open")
        << "#!/bin/sh\necho \"$1\" >" << (data_ / "viewed").string() << "\n";
    std::filesystem::permissions(bin / "xdg-open", std::filesystem::perms::owner_all);
    setenv("PATH", (bin.string() + ":" + std::getenv("PATH")).c_str(), 1);
  }
};

// Seconds since midnight of a moment, and of a text such as "14:02:11".
double secondOfDay(Moment moment) {
  const auto wall = std::chrono::file_clock::to_sys(moment);
  const std::time_t seconds =
      std::chrono::system_clock::to_time_t(std::chrono::time_point_cast<std::chrono::seconds>(
          std::chrono::floor<std::chrono::seconds>(wall)));
  std::tm local{};
  localtime_r(&seconds, &local);
  const std::chrono::duration<double> part = wall - std::chrono::floor<std::chrono::seconds>(wall);
  return (local.tm_hour * 60 + local.tm_min) * 60 + local.tm_sec + part.count();
}

double secondOfDay(const std::string& text) {
  return (std::stoi(text.substr(0, 2)) * 60 + std::stoi(text.substr(3, 2))) * 60 +
         std::stoi(text.substr(6, 2));
}

// A moment of the log is a whole second: the one in which something happened that had to
// happen between two moments.
void expectWithin(const std::string& logged, double earliest, double latest) {
  constexpr double kDay = 86400;
  double second = secondOfDay(logged);
  if (second < earliest - kDay / 2) second += kDay;
  EXPECT_GE(second, std::floor(earliest)) << logged;
  EXPECT_LE(second, std::floor(latest)) << logged;
}

TEST_F(LongRunOnADesk, AStabilityTestScoresWhatItsToolsPrinted) {
  constexpr int kFirstPing = 5;  // behind four trials and the trace
  ASSERT_NO_FATAL_FAILURE(openTool("Hop Stability Test", "Stability Test"));
  desk_->photograph("stability-idle");
  typeInto(desk_->named(window_, "Destination"), "near.example");
  click("Test");
  ASSERT_TRUE(eventually(kLongRun, [&] { return runs() >= kFirstPing + 130; }));
  desk_->photograph("stability-running");
  ASSERT_TRUE(eventually(kLongRun, [&] { return desk_->hasWindow("Stability Summary"); }));
  desk_->photograph("stability-summary");

  const auto first = timesOfPings(kFirstPing, 100, "192.0.2.1");
  const auto second = timesOfPings(kFirstPing + 100, 100, "203.0.113.20");
  const Element summary = desk_->find("the summary", [](const Element& element) {
    return element.window == "Stability Summary" && element.role == "text";
  });
  EXPECT_EQ(withoutReturns(summary.text),
            scoreOf("192.0.2.1", first) + scoreOf("203.0.113.20", second));
  EXPECT_EQ(runs(), kFirstPing + 200);

  desk_->bringToFront("Stability Summary");
  desk_->press("alt+F4");
  ASSERT_TRUE(eventually(kLongRun, [&] { return !desk_->hasWindow("Stability Summary"); }));
  ASSERT_NO_FATAL_FAILURE(awaitEnabled("Test"));
  desk_->photograph("stability-complete");
  desk_->bringToFront(window_);
  desk_->press("alt+F4");
  ASSERT_TRUE(eventually(kLongRun, [&] { return !desk_->hasWindow(window_); }));
  desk_->click(desk_->button(kMenu, "Exit"));
  EXPECT_EQ(program_->waitFor(milliseconds(30000)), 0);
  EXPECT_NE(settings().find("[Stability]\r\nUse=near.example\r\n"), std::string::npos);
}

// The scenario's time begins with the first echo of the ping that finds the address.
TEST_F(LongRunOnADesk, TheMonitorLogsBothOutagesToTheSecond) {
  constexpr double kPeriod = 0.998;  // s
  constexpr double kSlack = 0.5;     // s that a busy machine takes
  constexpr double kTimeOut = 0.2;
  putViewer();
  ASSERT_NO_FATAL_FAILURE(openTool("Monitor Outage", "Monitor for Outage"));
  desk_->photograph("outage-idle");
  EXPECT_TRUE(eventually(milliseconds(20000), [&] { return !isShown(kMenu, "Ping Test"); }));
  typeInto(desk_->find("the scan time",
                       [&](const Element& element) {
                         return element.window == window_ && element.role == "text" &&
                                element.text == "2";
                       }),
           "1");
  click("Start");
  const std::regex over("\tOutage Over at: ");
  const auto outagesOver = [&] {
    const std::string text = logText();
    return std::distance(std::sregex_iterator(text.begin(), text.end(), over), {});
  };
  ASSERT_TRUE(eventually(kLongRun, [&] { return runs() == 2; }));
  desk_->photograph("outage-running");
  ASSERT_TRUE(eventually(kLongRun, [&] { return outagesOver() == 2; }));
  const Element events = desk_->named(window_, "Outages and their traces");
  click("Stop");
  ASSERT_NO_FATAL_FAILURE(awaitEnabled("Quit"));
  desk_->photograph("outage-stopped");

  const std::string text = logText();
  const std::string day = "[0-9]{2} [A-Z][a-z]{2} [0-9]{2}";
  const std::string time = "([0-9]{2}:[0-9]{2}:[0-9]{2})";
  const std::string outage = "Outage Detected at: " + time + " on " + day +
                             "\r\n\tOutage Over at: " + time + " on " + day + "\r\n";
  std::smatch log;
  ASSERT_TRUE(std::regex_match(
      text, log,
      std::regex("Outage Test Started: " + day + " at " + time +
                 "\r\n\r\nFor IP: 192\\.0\\.2\\.2\r\n" + outage + outage +
                 "\r\nTotal Test Time: (?:(?:[12] mins? )?[0-9]+ sec?|1 mi|2 min)\r\n"
                 "Total Test Completed: ([0-9]+)\r\n"
                 "Total Outages: 2\r\nPackets Loss: ([0-9]+) of ([0-9]+)\r\n\r\n\r\n")))
      << text;
  EXPECT_EQ(log[6], log[8]);

  const double begin = secondOfDay(std::filesystem::last_write_time(data_ / "run.0.command"));
  const auto endOfTrace = [&](int run) {
    return secondOfDay(
        std::filesystem::last_write_time(data_ / ("run." + std::to_string(2 * run))));
  };
  expectWithin(log[2], begin + 10 + kPeriod, begin + 10 + 2 * kPeriod + kTimeOut + kSlack);
  expectWithin(log[3], endOfTrace(1), endOfTrace(1) + kSlack);
  expectWithin(log[4], begin + 24 + kPeriod, begin + 24 + 2 * kPeriod + kTimeOut + kSlack);
  expectWithin(log[5], begin + 36, begin + 36 + kPeriod + kTimeOut + kSlack);
  EXPECT_GT(endOfTrace(1), begin + 14);
  EXPECT_LT(endOfTrace(2), begin + 36);

  EXPECT_EQ(runs(), 3);
  EXPECT_EQ(commandOf(0), "ping ipv4.google.com");
  EXPECT_EQ(commandOf(1), "tracert ipv4.google.com");
  EXPECT_EQ(commandOf(2), "tracert ipv4.google.com");
  const auto line = [&](const char* what, int at, std::size_t from) {
    const auto start = text.find(what, from);
    EXPECT_NE(text.find(log[static_cast<std::size_t>(at)].str(), start), std::string::npos);
    return text.substr(start, text.find("\r\n", start) + 2 - start);
  };
  const auto second = static_cast<std::size_t>(log.position(4));
  EXPECT_EQ(withoutReturns(events.text),
            withoutReturns(line("Outage Detected", 2, 0) + textOf(1) + line("\tOutage Over", 3, 0) +
                           line("Outage Detected", 4, second - 30) + textOf(2) +
                           line("\tOutage Over", 5, second)));

  click("Full Report");
  ASSERT_TRUE(
      eventually(milliseconds(20000), [&] { return !contentOf(data_ / "viewed").empty(); }));
  const std::string viewed = contentOf(data_ / "viewed");
  EXPECT_EQ(contentOf(viewed.substr(0, viewed.find('\n'))), text);
  click("Quit");
  ASSERT_NO_FATAL_FAILURE(awaitMenu());
  desk_->click(desk_->button(kMenu, "Exit"));
  EXPECT_EQ(program_->waitFor(milliseconds(30000)), 0);
  EXPECT_NE(settings().find("Out Scan Time=1\r\n"), std::string::npos);
  EXPECT_NE(settings().find("[Monitor]\r\nUseP=203.0.113.80\r\n"), std::string::npos);
}

}  // namespace
}  // namespace veltrin::desk
