// SPDX-License-Identifier: GPL-3.0-or-later
// What it costs to show a text that grows to megabytes: the output of a Trace Route in
// its shown window, in pieces of the size in which the console runner hands them on, with
// all events taken in behind each of them as in a run. Beside it, in turns, a bare
// QPlainTextEdit of the same size gets the same pieces at its end, scrolls there and is
// painted. At the end, letters are typed in the middle of the text.
//
//   growing_text_bench [MEGABYTES | --smoke]
//
// Draws off the screen when no other is chosen. Prints the times of each megabyte (8 by
// default). The last one may take 1.1 times as long as the first, and all of them twice
// as long as the bare text's. The smoke run is of two small pieces, and only what is
// shown is judged.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>

#include <QApplication>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextCursor>

#include "platform/qt/qt_desktop.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_text.h"
#include "route/trace.h"
#include "support/simulation.h"
#include "table.h"
#include "view/appearance.h"
#include "view/text_place.h"
#include "view/window_catalogue.h"

namespace {

constexpr int kUsualMegabytes = 8;
constexpr std::size_t kMegabyte = 1'000'000;
constexpr std::size_t kSmoke = 25'000;  // bytes of a step of the smoke run
constexpr std::size_t kChunk = 256;
constexpr double kMostOfFirst = 1.1;
constexpr double kMostOfBare = 2.0;

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

// A text as the toolkit gives it, in a window of its own.
class BareText {
 public:
  explicit BareText(const QPlainTextEdit& example) {
    view_.setUndoRedoEnabled(false);
    view_.setFont(example.font());
    view_.resize(example.size());
    view_.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    view_.show();
  }

  void add(std::string chunk) {
    std::erase(chunk, '\r');
    QTextCursor end(view_.document());
    end.movePosition(QTextCursor::End);
    end.insertText(veltrin::toQt(chunk));
    view_.verticalScrollBar()->setValue(view_.verticalScrollBar()->maximum());
    QCoreApplication::processEvents();
  }

 private:
  QPlainTextEdit view_;
};

// Milliseconds of the processor, whatever else it does, that it takes to add so many bytes of an
// output piece by piece.
template <class Add>
double timeOf(std::size_t bytes, Output& output, Add add) {
  const std::clock_t start = std::clock();
  for (std::size_t shown = 0; shown < bytes; shown += kChunk) add(output.next());
  return 1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

struct Times {
  double first = 0;
  double last = 0;
  double all = 0;

  void note(double taken) {
    if (all == 0) first = taken;
    last = taken;
    all += taken;
  }
};

// Milliseconds of the processor for a letter that is typed in the middle of a text, until
// the program has it.
double timeOfLetter(const QPlainTextEdit& page, veltrin::EventLoop& events) {
  constexpr int kLetters = 20;
  QTextCursor caret(page.document());
  caret.setPosition(page.document()->characterCount() / 2);
  const std::clock_t start = std::clock();
  for (int letter = 0; letter < kLetters; ++letter) {
    caret.insertText(QStringLiteral("x"));
    events.DoEvents();
  }
  return 1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC / kLetters;
}

}  // namespace

int main(int argc, char** argv) {
  const bool isSmoke = argc > 1 && std::string_view(argv[1]) == "--smoke";
  const int asked = argc > 1 ? std::atoi(argv[1]) : kUsualMegabytes;
  const int steps = std::max(2, asked);
  const std::size_t bytes = isSmoke ? kSmoke : kMegabyte;
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  const QApplication application(argc, argv);
  veltrin::setAppearance();
  veltrin::QtEventLoop events;
  veltrin::Simulation simulation;
  veltrin::QtDesktop desktop(events, simulation.files, "Veltrin", veltrin::showInWindow);
  const veltrin::Platform& rest = simulation.platform;
  veltrin::Platform platform{events,        rest.timers,      rest.clock,       desktop,
                             rest.files,    rest.processes,   rest.profiles,    rest.registry,
                             rest.shell,    rest.environment, rest.sockets,     rest.counters,
                             rest.wmi,      rest.icmp,        rest.downloads,   rest.interfaces,
                             rest.printers, rest.drives,      rest.processList, "veltrin"};
  veltrin::Program program(platform);
  const auto form = program.show<veltrin::trace>();
  const auto* page = desktop.windowOf(*form)->findChild<QPlainTextEdit*>("txtOutputs");
  BareText bare(*page);
  events.DoEvents();
  Output ours;
  Output theirs;
  Times shown;
  Times beside;
  for (int step = 1; step <= steps; ++step) {
    shown.note(timeOf(bytes, ours, [&](const std::string& chunk) {
      form->txtOutputs.text += chunk;
      events.DoEvents();
    }));
    beside.note(timeOf(bytes, theirs, [&](const std::string& chunk) { bare.add(chunk); }));
    std::printf("step %2d of %zu bytes: %.0f ms, bare %.0f ms\n", step, bytes, shown.last,
                beside.last);
    std::fflush(stdout);
  }
  const double letter = timeOfLetter(*page, events);
  const std::string& printed = form->txtOutputs.text;
  if (page->toPlainText() != veltrin::onScreen(printed.substr(0, veltrin::wholePart(printed)))) {
    std::printf("the window does not show what was printed\n");
    return EXIT_FAILURE;
  }
  veltrin::Table table(!isSmoke);
  table.add({"Text of a tool in its shown window, the last of " + std::to_string(steps) +
                 " pieces of " + std::to_string(bytes) + " bytes",
             shown.last, "ms", "the first of them", shown.first, veltrin::atMost(kMostOfFirst)});
  table.add({"The same, all of them", shown.all, "ms",
             "a bare `QPlainTextEdit` with a repaint for each chunk", beside.all,
             veltrin::atMost(kMostOfBare)});
  table.add(
      {"A letter typed in the middle of that text", letter, "ms", "", std::nullopt, std::nullopt});
  return table.exitCode();
}
