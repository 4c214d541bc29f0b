// SPDX-License-Identifier: GPL-3.0-or-later
// What the Outage monitor costs while it watches: its shown window at one probe in two
// seconds, beside `mtr -i 2` to the same host at the same time.
//
//   lab clean-15 -- outage_bench [SECONDS | --smoke]
//
// Draws off the screen when no other is chosen. Prints the processor time of both, 60 s by
// default, and may take 1.5 times as much as mtr. The smoke run lasts three seconds, needs no
// mtr and judges nothing. Ends with 77 where it cannot run.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <QTimer>

#include "frame/setlang.h"
#include "own_folder.h"
#include "platform/qt/desktop_system.h"
#include "route/MonOut.h"
#include "table.h"
#include "view/appearance.h"
#include "view/window_catalogue.h"

namespace {

constexpr int kUsualSeconds = 60;
constexpr int kSmokeSeconds = 3;
constexpr double kMostOfMtr = 1.5;

double seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

double processorTime(const rusage& usage) {
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double ownProcessorTime() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return processorTime(usage);
}

pid_t startMtr(int probes) {
  const std::string count = std::to_string(probes);
  const pid_t child = fork();
  if (child != 0) return child;
  if (std::freopen("/dev/null", "w", stdout) == nullptr) _exit(veltrin::kCannotRun);
  execlp("mtr", "mtr", "-4", "-n", "-r", "-i", "2", "-c", count.c_str(), "target.example", nullptr);
  _exit(veltrin::kCannotRun);
}

struct Watch {
  double processor = 0;  // s
  int probes = 0;
  std::string report;
};

Watch watch(int duration) {
  const veltrin::OwnFolder folder("outage_bench");
  const auto system = veltrin::makeDesktopSystem(VELTRIN_PROGRAM, "Veltrin", veltrin::showInWindow);
  veltrin::Program program(system->platform());
  const auto other = program.show<veltrin::setlang>();  // keeps the program running
  const auto window = program.show<veltrin::MonOut>();
  program.Wait(500);
  Watch result;
  const double before = ownProcessorTime();
  QTimer::singleShot(duration * 1000, [&] {
    result.processor = ownProcessorTime() - before;
    system->platform().events.gate().post([&] { window->Command3.press(); });
  });
  window->Command3.press();
  result.report = window->dosbox.text;
  return result;
}

}  // namespace

int main(int argc, char** argv) {
  const bool isSmoke = argc > 1 && std::string_view(argv[1]) == "--smoke";
  const int asked = argc > 1 ? std::atoi(argv[1]) : kUsualSeconds;
  const int duration = isSmoke ? kSmokeSeconds : std::max(asked, 2);
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  const QApplication application(argc, argv);
  veltrin::setAppearance();
  const pid_t mtr = isSmoke ? 0 : startMtr(duration / 2);
  const Watch ours = watch(duration);
  std::printf("%s", ours.report.c_str());
  veltrin::Table table(!isSmoke);
  const std::string what =
      "Processor time of the Outage monitor at one probe in 2 s on a good "
      "line, " +
      std::to_string(duration) + " s";
  if (isSmoke) {
    table.add({what, ours.processor, "s", "", std::nullopt, std::nullopt});
    return table.exitCode();
  }
  int status = 0;
  rusage usage{};
  const bool hasRun =
      wait4(mtr, &status, 0, &usage) == mtr && WIFEXITED(status) && WEXITSTATUS(status) == 0;
  table.add({what, ours.processor, "s", "`mtr -i 2` to the same host at the same time",
             hasRun ? std::optional(processorTime(usage)) : std::nullopt,
             veltrin::atMost(kMostOfMtr)});
  return table.exitCode();
}
