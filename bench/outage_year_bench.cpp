// SPDX-License-Identifier: GPL-3.0-or-later
// The Outage monitor for a year with an outage a day, on the simulated platform, where waiting
// takes no time: from 1 June 2027 on, so that the leap day lies in it, at the usual scan time.
//
//   outage_year_bench [--smoke]
//
// The log has to hold each outage with its times to the second, nothing else, and the closing
// report. Every second outage goes on past midnight, those at the ends of February and December
// among them. What the window and its log keep of a year's events grows with them; beside that,
// memory may not grow by more than 64 KB from the end of the first month to that of the twelfth.
// The smoke run is of four days around the leap day with few probes, and judges the log alone.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <malloc.h>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "route/MonOut.h"
#include "support/simulation.h"
#include "table.h"

namespace {

using WallClock = std::chrono::steady_clock;

constexpr std::int64_t kSecond = 1000;  // ms
constexpr std::int64_t kMinute = 60 * kSecond;
constexpr std::int64_t kHour = 60 * kMinute;
constexpr std::int64_t kDay = 24 * kHour;
constexpr std::int64_t kOutage = 2 * kMinute;       // what each outage lasts
constexpr std::int64_t kAfterLast = 150 * kSecond;  // to Stop: the last outage is over
constexpr int kMonths = 12;
constexpr std::size_t kMostGrowth = 65'536;  // bytes

struct Plan {
  std::chrono::sys_days firstDay;
  int days;
  const char* scanTime;  // s
  const char* runTime;   // of the days, in the closing report
};

using std::chrono::February;
using std::chrono::June;
using std::chrono::year;

constexpr Plan kYear{year{2027} / June / 1, 365, "2", "1 year"};
constexpr Plan kLeapDays{year{2028} / February / 26, 4, "10", "4 days"};

// The days that a clock tells, by a calendar of its own.
std::string stamp(const Plan& plan, std::int64_t moment, const char* format) {
  const auto start = std::chrono::system_clock::time_point(plan.firstDay);
  const std::time_t time = std::chrono::system_clock::to_time_t(start) + moment / kSecond;
  std::tm parts{};
  gmtime_r(&time, &parts);
  char text[64];
  const std::size_t length = std::strftime(text, sizeof text, format, &parts);
  return {text, length};
}

// On an odd day (the first is 0) a minute before midnight, else at another time each day.
std::int64_t beginOf(int day) {
  constexpr std::int64_t kStep = 37 * kMinute + 11 * kSecond;
  return day * kDay + (day % 2 == 1 ? kDay - kMinute : kMinute + day * kStep % (23 * kHour));
}

class Year {
 public:
  explicit Year(const Plan& plan) : plan_(plan) {}

  void run() {
    prepare();
    const auto start = WallClock::now();
    window_->Command3.press();
    seconds_ = std::chrono::duration<double>(WallClock::now() - start).count();
  }

  void print(veltrin::Table& table) const;
  bool logIsRight() const;

 private:
  struct Sample {
    std::size_t heap = 0;  // bytes in use
    std::size_t kept = 0;  // of these, the texts of the window and the log
  };

  void prepare();
  std::optional<std::uint32_t> answer(const veltrin::SimulatedIcmp::Echo& echo);
  bool isOut(std::int64_t moment) const;
  Sample sample() const;
  std::string log() const;
  std::size_t growthBeside() const;

  Plan plan_;
  veltrin::Simulation simulation_;
  std::shared_ptr<veltrin::MonOut> window_;
  std::string expected_;  // outages, as the probes met them
  int failed_ = 0;        // in a row
  std::size_t probes_ = 0;
  std::size_t lost_ = 0;
  std::int64_t lastProbe_ = 0;  // ms, its end

  std::vector<Sample> months_;
  double seconds_ = 0;
};

void Year::prepare() {
  const auto usualStart =
      std::chrono::sys_days(year{2026} / 3 / 7) + std::chrono::hours(9) + std::chrono::minutes(5);
  simulation_.clock.setForward =
      std::chrono::duration_cast<std::chrono::milliseconds>(plan_.firstDay - usualStart).count();
  simulation_.processes.tool = [this](const std::string&) {
    simulation_.processes.starts.clear();
    simulation_.processes.closed.clear();
    return std::vector<veltrin::ToolWrite>{{20, "Pinging x [192.0.2.7] with 32 bytes\r\n"}};
  };
  simulation_.icmp.keepsEchoes = false;
  simulation_.icmp.reply = [this](const auto& echo) { return answer(echo); };
  window_ = simulation_.program().show<veltrin::MonOut>();
  window_->Combo1.enter(plan_.scanTime);
  months_.reserve(kMonths);
  for (int month = 1; month <= kMonths; ++month) {
    simulation_.loop.at(plan_.days * kDay / kMonths * month,
                        [this] { months_.push_back(sample()); });
  }
  simulation_.loop.at(plan_.days * kDay + kAfterLast, [this] { window_->Command3.press(); });
}

bool Year::isOut(std::int64_t moment) const {
  const int day = static_cast<int>(moment / kDay);
  for (const int begun : {day - 1, day}) {
    if (begun < 0 || begun >= plan_.days) continue;
    if (moment >= beginOf(begun) && moment < beginOf(begun) + kOutage) return true;
  }
  return false;
}

// Of a probe without a reply the end is known, and so what the log has to tell of the second
// in a row; of one with a reply, that an outage is over.
std::optional<std::uint32_t> Year::answer(const veltrin::SimulatedIcmp::Echo& echo) {
  constexpr std::uint32_t kReply = 20;  // ms
  constexpr const char* kStamp = "%H:%M:%S on %d %b %y";
  ++probes_;
  if (isOut(echo.moment)) {
    ++lost_;
    if (++failed_ == 2) {
      expected_ +=
          "Outage Detected at: " + stamp(plan_, echo.moment + echo.timeout, kStamp) + "\r\n";
    }
    return std::nullopt;
  }
  if (failed_ >= 2) {
    expected_ += "\tOutage Over at: " + stamp(plan_, echo.moment + kReply, kStamp) + "\r\n";
  }
  failed_ = 0;
  lastProbe_ = echo.moment + kReply;
  return kReply;
}

Year::Sample Year::sample() const {
  std::size_t kept = window_->dosbox.text.get().capacity() + window_->Text1.text.get().capacity();
  for (const auto& [path, text] : simulation_.files.contents) kept += text.capacity();
  return {mallinfo2().uordblks, kept};
}

std::string Year::log() const {
  for (const auto& [path, text] : simulation_.files.contents) {
    if (path.find("Outage Log") != std::string::npos) return text;
  }
  return {};
}

// The whole text, and as many outages as there were days.
bool Year::logIsRight() const {
  const std::string wanted = "Outage Test Started: " + stamp(plan_, 0, "%d %b %y at %H:%M:%S") +
                             "\r\n\r\nFor IP: \r\n" + expected_ +
                             "\r\nTotal Test Time: " + plan_.runTime + " 2 mins " +
                             std::to_string(lastProbe_ / kSecond % 60) + " sec" +
                             "\r\nTotal Test Completed: " + std::to_string(probes_) +
                             "\r\nTotal Outages: " + std::to_string(plan_.days) +
                             "\r\nPackets Loss: " + std::to_string(lost_) + " of " +
                             std::to_string(probes_) + "\r\n\r\n\r\n";
  const std::string found = log();
  if (found == wanted) return true;
  std::size_t at = 0;
  while (at < found.size() && at < wanted.size() && found[at] == wanted[at]) ++at;
  const std::size_t from = at < 100 ? 0 : at - 100;
  std::printf("the log differs at %zu:\n%s\nand not\n%s\n", at, found.substr(from, 200).c_str(),
              wanted.substr(from, 200).c_str());
  return false;
}

std::size_t Year::growthBeside() const {
  const std::size_t first = months_.front().heap - months_.front().kept;
  const std::size_t last = months_.back().heap - months_.back().kept;
  return last > first ? last - first : 0;
}

void Year::print(veltrin::Table& table) const {
  std::printf("Outage monitor, %d days, %zu probes, %zu of them lost: %.1f s\n", plan_.days,
              probes_, lost_, seconds_);
  for (std::size_t month = 0; month < months_.size(); ++month) {
    std::printf("  heap behind month %2zu: %zu bytes, of which %zu are texts of its events\n",
                month + 1, months_[month].heap, months_[month].kept);
  }
  std::printf("list of events %zu bytes, outages and traces %zu, log %zu\n",
              window_->dosbox.text.get().size(), window_->Text1.text.get().size(), log().size());
  std::printf("growth beside the texts from the first month to the twelfth: %zu bytes\n",
              growthBeside());
  const std::string what = "The Outage monitor for " + std::to_string(plan_.days) +
                           " days with an outage each, " + std::to_string(probes_) + " probes";
  table.add({what + ", but its waits", seconds_, "s", "", {}, {}});
  table.add({"Its heap beside the texts of its events, more in the last month than in the first",
             static_cast<double>(growthBeside()),
             "bytes",
             "",
             {},
             veltrin::atMost(static_cast<double>(kMostGrowth))});
}

}  // namespace

int main(int argc, char** argv) {
  const bool isSmoke = argc > 1 && std::string_view(argv[1]) == "--smoke";
  Year run(isSmoke ? kLeapDays : kYear);
  run.run();
  veltrin::Table table(!isSmoke);
  run.print(table);
  return run.logIsRight() ? table.exitCode() : EXIT_FAILURE;
}
