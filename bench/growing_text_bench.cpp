// What it costs to show a text that grows to megabytes: the output of a Trace Route in
// its shown window, in pieces of the size in which the console runner hands them on, with
// all events taken in behind each of them as in a run.
//
//   growing_text_bench [MEGABYTES]
//
// Draws off the screen when no other is chosen. Prints the time of each megabyte (8 by
// default). The last one may take 1.2 times as long as the first.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include <QApplication>

#include "platform/qt/qt_desktop.h"
#include "platform/qt/qt_event_loop.h"
#include "route/trace.h"
#include "support/simulation.h"
#include "view/appearance.h"

namespace {

constexpr int kUsualMegabytes = 8;
constexpr std::size_t kMegabyte = 1'000'000;
constexpr std::size_t kChunk = 256;
constexpr double kMostOfFirst = 1.2;

// A line as tracert prints it; each is told apart from the others by its number.
std::string line(std::size_t number) {
  std::string text(80, '\0');
  const int length =
      std::snprintf(text.data(), text.size(),
                    "%3zu    %2zu ms    %2zu ms    %2zu ms  router-%zu.example "
                    "[198.51.100.%zu] \r\n",
                    number % 30 + 1, number % 60, number % 61, number % 62, number, number % 256);
  text.resize(static_cast<std::size_t>(length));
  return text;
}

// The output of the tools, handed out in pieces.
class Output {
 public:
  std::string next() {
    while (rest_.size() < kChunk) rest_ += line(number_++);
    std::string chunk = rest_.substr(0, kChunk);
    rest_.erase(0, kChunk);
    return chunk;
  }

 private:
  std::string rest_;
  std::size_t number_ = 0;
};

// Milliseconds that the window takes to show another megabyte.
double showMegabyte(veltrin::trace& form, veltrin::EventLoop& events, Output& output) {
  const auto start = std::chrono::steady_clock::now();
  for (std::size_t shown = 0; shown < kMegabyte; shown += kChunk) {
    form.txtOutputs.text += output.next();
    events.DoEvents();
  }
  const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
  return taken.count();
}

}  // namespace

int main(int argc, char** argv) {
  const int megabytes = argc > 1 ? std::max(2, std::atoi(argv[1])) : kUsualMegabytes;
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  const QApplication application(argc, argv);
  veltrin::setAppearance();
  veltrin::QtEventLoop events;
  veltrin::Simulation simulation;
  veltrin::QtDesktop desktop(events, simulation.files, "Veltrin");
  const veltrin::Platform& rest = simulation.platform;
  veltrin::Platform platform{events,     rest.timers,      rest.clock,    desktop,
                             rest.files, rest.processes,   rest.profiles, rest.registry,
                             rest.shell, rest.environment, rest.sockets,  rest.counters,
                             rest.wmi,   "veltrin"};
  veltrin::Program program(platform);
  const auto form = program.show<veltrin::trace>();
  events.DoEvents();
  Output output;
  double first = 0;
  double last = 0;
  for (int number = 1; number <= megabytes; ++number) {
    last = showMegabyte(*form, events, output);
    if (number == 1) first = last;
    std::printf("megabyte %2d: %.0f ms\n", number, last);
  }
  std::printf("last / first: %.2f (target %.1f or less)\n", last / first, kMostOfFirst);
  return last / first <= kMostOfFirst ? EXIT_SUCCESS : EXIT_FAILURE;
}
