// SPDX-License-Identifier: GPL-3.0-or-later
// What the report of this machine costs in its shown window, on the real platform: all boxes
// ticked, and those that are ticked when the window opens, in turns with "inxi -Fxxx", which
// tells about as much. And what the report of a recorded machine takes of the memory: of 5,000
// packages, and of as many events as the report prints.
//
//   system_report_bench [RUNS | --smoke]
//
// Draws off the screen when no other is chosen. Times are from the opening of the window to the
// last painting, medians of so many runs (5 by default) behind the first, which alone writes all
// settings and is told beside them. All boxes may take as long as inxi, those
// of the window a third of it; the memory at its peak 40 MB more than the idle window. The smoke
// run is of one small report each, and judges that they are whole alone. Ends with 77 when all is
// well but that there is no inxi.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <QApplication>

#include "figures.h"
#include "machine/linux_machine.h"
#include "own_folder.h"
#include "platform/linux/linux_wmi.h"
#include "real_report.h"
#include "section_times.h"
#include "table.h"
#include "tool_run.h"
#include "view/appearance.h"

namespace {

using veltrin::Cost;
using veltrin::costOf;
using veltrin::median;
using veltrin::RealReport;

constexpr int kUsualRuns = 5;
constexpr double kMostOfAll = 1;
constexpr double kMostOfUsual = 1.0 / 3;
constexpr double kMostMegabytes = 40;
constexpr std::size_t kPrintedEvents = 201;
constexpr const char* kLogs = "win32_ntlogevent";

// Of the recorded machine.
struct Sizes {
  int packages = 5'000;
  int events = 20'000;  // in its journal
};
constexpr Sizes kSmoke{50, 250};

// --- Memory ---

std::string packageName(int number) { return "recorded-package-" + std::to_string(number); }

// The list of a package manager, as long in each of its entries as a real one.
void recordPackages(const std::filesystem::path& root, int count) {
  std::filesystem::create_directories(root / "var/lib/dpkg");
  std::ofstream status(root / "var/lib/dpkg/status");
  for (int number = 0; number < count; ++number) {
    status << "Package: " << packageName(number)
           << "\nStatus: install ok installed\nPriority: optional\nSection: libs\n"
              "Installed-Size: 1234\nMaintainer: Team of the Packages <team@packages.example>\n"
              "Architecture: amd64\nMulti-Arch: same\nVersion: 1:2."
           << number
           << "-3+deb12u1\nDepends: libc6 (>= 2.34), libgcc-s1 (>= 3.4), libstdc++6 (>= 11)\n"
              "Description: package that stands for others\n";
    for (int row = 0; row < 6; ++row) {
      status << " A row of its description, as long as those of other packages are.\n";
    }
    status << "Homepage: https://packages.example/\n\n";
  }
}

// A journal, by the tool that makes one of another machine's; without the tool there is none.
void recordEvents(const std::filesystem::path& root, int count) {
  constexpr const char* kMachine = "00112233445566778899aabbccddeeff";
  const std::filesystem::path folder = root / "var/log/journal" / kMachine;
  std::filesystem::create_directories(folder);
  std::filesystem::create_directories(root / "etc");
  std::ofstream(root / "etc/machine-id") << kMachine << "\n";
  const std::string exported = root / "events.export";
  {
    std::ofstream events(exported);
    for (int number = 0; number < count; ++number) {
      events << "__REALTIME_TIMESTAMP=" << 1'700'000'000'000'000 + number * 1'000'000LL
             << "\n__MONOTONIC_TIMESTAMP=" << 1'000 + number
             << "\n_BOOT_ID=0123456789abcdef0123456789abcdef\n_MACHINE_ID=" << kMachine
             << "\n_HOSTNAME=recorded\nPRIORITY=" << number % 8
             << "\nSYSLOG_IDENTIFIER=recorded\n_PID=" << 100 + number % 900
             << "\nMESSAGE=Something has happened to the device of the number " << number
             << ", and somebody may want to know of it\n\n";
    }
  }
  veltrin::runTool({"/lib/systemd/systemd-journal-remote", "-o",
                    (folder / "system.journal").string(), exported});
}

// Events as a journal would give them, made when they are taken.
class MadeEvents : public veltrin::WmiObjects {
 public:
  std::optional<veltrin::WmiObject> next() override {
    veltrin::WmiObject event;
    event.properties["Category"] = veltrin::WmiValue("0");
    event.properties["EventCode"] = veltrin::WmiValue(std::to_string(++made_));
    event.properties["Message"] =
        veltrin::WmiValue("Something has happened to the device of the number " +
                          std::to_string(made_) + ", and somebody may want to know of it");
    return event;
  }

 private:
  int made_ = 0;
};

// The recorded machine's answers, with made events in place of a journal that is not read.
class RecordedWmi : public veltrin::Wmi {
 public:
  explicit RecordedWmi(veltrin::WmiSources sources) : machine_(std::move(sources)) {
    makesEvents_ = veltrin::walk(machine_, {"Win32_NTLogEvent", 1}) == 0;
  }

  bool makesEvents() const { return makesEvents_; }

  std::unique_ptr<veltrin::WmiService> connect(const std::string& moniker) override {
    auto service = machine_.connect(moniker);
    return makesEvents_ ? std::make_unique<Service>(std::move(service)) : std::move(service);
  }

 private:
  class Service : public veltrin::WmiService {
   public:
    explicit Service(std::unique_ptr<veltrin::WmiService> rest) : rest_(std::move(rest)) {}

    std::unique_ptr<veltrin::WmiObjects> ExecQuery(const std::string& query,
                                                   std::optional<std::int32_t> flags) override {
      const bool isOfLogs = veltrin::LCase(query).ends_with(kLogs);
      return isOfLogs ? std::make_unique<MadeEvents>() : rest_->ExecQuery(query, flags);
    }

   private:
    std::unique_ptr<veltrin::WmiService> rest_;
  };

  veltrin::LinuxWmi machine_;
  bool makesEvents_ = false;
};

// A line of what the kernel tells of this process, such as "VmRSS:", in megabytes.
double megabytesOf(const std::string& wanted) {
  std::ifstream status("/proc/self/status");
  double kilobytes = 0;
  for (std::string name; status >> name && kilobytes == 0;) {
    if (name == wanted) status >> kilobytes;
  }
  return kilobytes / 1024;
}

// How many lines of the report begin with a text.
std::size_t linesWith(const RealReport& report, const std::string& start) {
  std::size_t count = 0;
  for (std::size_t at = 0; at < report.lines(); ++at) {
    if (report.line(at).starts_with(start)) ++count;
  }
  return count;
}

// Whether the report was whole.
bool measureMemory(const Sizes& sizes, veltrin::Table& table) {
  const veltrin::BenchFolder folder("recorded_machine");
  const veltrin::BenchFolder files("recorded_report");
  recordPackages(folder.path(), sizes.packages);
  recordEvents(folder.path(), sizes.events);
  veltrin::WmiSources sources;
  sources.files = veltrin::FileTree(folder.path());
  sources.machine = std::make_shared<veltrin::LinuxMachine>();
  RecordedWmi wmi(std::move(sources));
  RealReport report(files, VELTRIN_SYSTEMINFO, &wmi);
  report.open();
  const double idle = megabytesOf("VmRSS:");
  std::ofstream("/proc/self/clear_refs") << "5\n";  // the peak begins anew (proc(5))
  RealReport::Boxes boxes{};
  for (std::size_t at = 0; at < boxes.size(); ++at) {
    const std::string caption = report.captionOf(at);
    boxes[at] = caption == "Install Software" || caption == "Errors";
  }
  report.run(boxes);
  const double more = megabytesOf("VmHWM:") - idle;
  const std::size_t packages = linesWith(report, packageName(0).substr(0, 17));
  const std::size_t events = linesWith(report, "Category: ");
  std::printf("a report of %zu lines, %zu packages and %zu events%s: idle window %.1f MB\n",
              report.lines(), packages, events, wmi.makesEvents() ? " (made, not read)" : "", idle);
  table.add({"Memory at the peak of a report with " + std::to_string(packages) + " packages and " +
                 std::to_string(events) + " events, above the idle window",
             more, "MB", "", std::nullopt, veltrin::atMost(kMostMegabytes)});
  const bool isWhole =
      events == kPrintedEvents && packages == static_cast<std::size_t>(sizes.packages);
  if (!isWhole) std::printf("the report is not whole\n");
  return isWhole;
}

// --- Times ---

// Reports of one kind, all but the first of them with the settings as the one before left them.
class Reports {
 public:
  explicit Reports(bool withAll) : withAll_(withAll) {}

  // One more, in a program of its own. False when it is empty.
  bool run() {
    RealReport report(folder_, VELTRIN_SYSTEMINFO);
    costs_.push_back(costOf([&] {
      report.open();
      report.run(withAll_ ? RealReport::allBoxes() : report.boxes());
    }));
    lines_ = report.lines();
    return lines_ > 0;
  }

  // Of the later ones where there are any.
  Cost cost() const {
    return costs_.size() == 1 ? costs_[0] : median(std::vector(costs_.begin() + 1, costs_.end()));
  }

  std::size_t lines() const { return lines_; }

  void print(const char* what) const {
    std::printf("%-28s %8.1f ms, processor %7.1f ms, %zu lines; with new settings %.1f ms\n", what,
                cost().wall, cost().processor, lines_, costs_[0].wall);
  }

 private:
  bool withAll_;
  veltrin::BenchFolder folder_{withAll_ ? "all_boxes" : "usual_boxes"};
  std::vector<Cost> costs_;
  std::size_t lines_ = 0;
};

// Whether the reports were made.
bool compareTimes(int runs, veltrin::Table& table) {
  std::vector<Cost> inxi;
  Reports all(true);
  Reports usual(false);
  for (int run = 0; run < runs; ++run) {
    const auto beside = veltrin::runTool({"inxi", "-Fxxx"});
    if (beside && beside->bytes > 0) inxi.push_back(beside->cost);
    if (!all.run() || !usual.run()) {
      std::printf("a report is empty\n");
      return false;
    }
  }
  all.print("all boxes");
  usual.print("those of the opened window");
  const Cost beside = median(inxi);
  const auto theirs = inxi.empty() ? std::nullopt : std::optional(beside.wall);
  const auto add = [&](const char* what, const Reports& reports, double most) {
    table.add({std::string(what) + ", " + std::to_string(reports.lines()) + " lines",
               reports.cost().wall, "ms", "`inxi -Fxxx`", theirs, veltrin::atMost(most)});
  };
  add("The report of this machine in its shown window, all boxes", all, kMostOfAll);
  add("The boxes of the opened window", usual, kMostOfUsual);
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  const bool isSmoke = argc > 1 && std::string_view(argv[1]) == "--smoke";
  const int asked = argc > 1 ? std::max(1, std::atoi(argv[1])) : kUsualRuns;
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  const QApplication application(argc, argv);
  veltrin::setAppearance();
  veltrin::Table table(!isSmoke);
  // The memory first, while nothing has been left over from other reports.
  const bool isWhole = measureMemory(isSmoke ? kSmoke : Sizes(), table);
  const bool areMade = compareTimes(isSmoke ? 1 : asked + 1, table);
  return isWhole && areMade ? table.exitCode() : EXIT_FAILURE;
}
