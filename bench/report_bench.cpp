// SPDX-License-Identifier: GPL-3.0-or-later
// What it costs to print a long report: its lines go into the list and the text of the shown
// report window, and all events are taken in behind every tenth of them. Behind every fiftieth the
// time of a frame passes, so that the paintings of the same number of lines are in each figure.
// Beside it, in turns, a bare QPlainTextEdit in a window like that gets the same lines. Then
// what it costs to scroll a list of 100,000 lines and one of 1,000, and to look for a text in
// 100,000 lines beside a bare loop of the same comparisons over the texts. At the end what each
// section of the report costs on this machine, class by class and box by box.
//
//   report_bench [RUNS | --smoke]
//
// Draws off the screen when no other is chosen. Prints the medians of so many runs (5 by
// default). The last thousand of 20,000 lines may take 1.2 times as long as the first, and all
// of them twice as long as the bare text's; the long list 1.2 times as long as the short one,
// and the search twice as long as the loop. The smoke run is small, and only what is shown is
// judged.
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <malloc.h>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

#include <QApplication>
#include <QElapsedTimer>
#include <QListView>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QThread>

#include "figures.h"
#include "platform/qt/qt_desktop.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/qt_waitable_timers.h"
#include "section_times.h"
#include "support/simulation.h"
#include "sysinfo/frmSysInfo.h"
#include "table.h"
#include "text/strings.h"
#include "view/appearance.h"
#include "view/binder.h"
#include "view/line_list.h"
#include "view/window_catalogue.h"

namespace {

using veltrin::median;
using veltrin::microseconds;

constexpr int kUsualRuns = 5;
constexpr int kSettling = 60;   // ms
constexpr int kTurn = 10;       // lines between two turns of the event loop
constexpr int kFrame = 50;      // lines in a frame of the screen
constexpr int kFrameTime = 18;  // ms
constexpr double kMostOfFirst = 1.2;
constexpr double kMostOfBare = 2;
constexpr double kMostOfShort = 1.2;
constexpr double kMostOfLoop = 2;

// How much of it is done.
struct Sizes {
  int lines = 20'000;  // of a report
  int part = 1'000;    // of these, timed together
  int longList = 100'000;
  int shortList = 1'000;
  int scrolls = 301;
};
constexpr Sizes kSmoke{200, 50, 2'000, 200, 3};

// A line of a report; each is told apart from the others by its number.
std::string lineOf(int number) {
  if (number % 12 == 0) return "Device number " + std::to_string(number);
  return "     Property " + std::to_string(number) + " of it has the value " +
         std::to_string(number * 31 % 9973);
}

// The time of the processor, whatever else it does, in milliseconds.
double processorTime() { return 1000.0 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

// Bytes of this process.
struct Memory {
  double heap = static_cast<double>(mallinfo2().uordblks);
  double resident = residentBytes();

  static double residentBytes() {
    std::ifstream file("/proc/self/statm");
    double whole = 0;
    double pages = 0;
    file >> whole >> pages;
    return pages * static_cast<double>(sysconf(_SC_PAGESIZE));
  }
};

// The times of a report, and what it takes of the memory.
struct Report {
  double first = 0;
  double last = 0;
  double all = 0;
  double heap = 0;  // a line
  double resident = 0;
};

// Prints a report line by line; `print` does one, `turn` takes events in.
template <class Print, class Turn>
Report printReport(const Sizes& sizes, Print print, Turn turn) {
  Report report;
  const Memory before;
  const double start = processorTime();
  for (int line = 0; line < sizes.lines;) {
    const double begun = processorTime();
    for (const int end = line + sizes.part; line < end; ++line) {
      print(line);
      if (line % kFrame == kFrame - 1) QThread::msleep(kFrameTime);
      if (line % kTurn == kTurn - 1) turn();
    }
    report.last = processorTime() - begun;
    if (line == sizes.part) report.first = report.last;
  }
  report.all = processorTime() - start;
  const Memory after;
  report.heap = (after.heap - before.heap) / sizes.lines;
  report.resident = (after.resident - before.resident) / sizes.lines;
  return report;
}

class Bench {
 public:
  Bench() = default;

  // A report in the shown window, which is empty then; whether all of it is shown.
  bool printOurs(const Sizes& sizes, Report& report) {
    const auto form = program_.show<veltrin::frmSysInfo>();
    QWidget* window = desktop_.windowOf(*form);
    if (window == nullptr) return false;
    settle();
    report = printReport(
        sizes,
        [&](int line) { form->LogEvents(lineOf(line), line % 12 == 0 ? 1 : 0, 1, line % 12 == 0); },
        [&] { events_.DoEvents(); });
    const auto* list = window->findChild<QListView*>("SYSView");
    settle();
    const bool isShown = list != nullptr && list->model()->rowCount() == sizes.lines &&
                         list->currentIndex().row() == sizes.lines - 1;
    size_ = list == nullptr ? QSize() : list->size();
    form->SYSView.Clear();
    form->Text1.text = "";
    settle();
    return isShown;
  }

  Report printBare(const Sizes& sizes) {
    QPlainTextEdit text;
    text.setUndoRedoEnabled(false);
    text.resize(size_);
    text.show();
    events_.DoEvents();
    return printReport(
        sizes, [&](int line) { text.appendPlainText(veltrin::toQt(lineOf(line))); },
        [&] { events_.DoEvents(); });
  }

  // Takes events in until nothing is left to be painted.
  void settle() {
    QElapsedTimer time;
    for (time.start(); time.elapsed() < kSettling;) {
      events_.DoEvents();
      QThread::msleep(1);
    }
  }

  veltrin::QtEventLoop& events() { return events_; }
  veltrin::Platform& platform() { return platform_; }
  const veltrin::Files& files() const { return simulation_.files; }

 private:
  veltrin::QtEventLoop events_;
  veltrin::QtWaitableTimers timers_{events_};
  veltrin::Simulation simulation_;
  veltrin::QtDesktop desktop_{events_, simulation_.files, "Veltrin", veltrin::showInWindow};
  const veltrin::Platform& rest_ = simulation_.platform;
  veltrin::Platform platform_{
      events_,          timers_,        rest_.clock,    desktop_,          rest_.files,
      rest_.processes,  rest_.profiles, rest_.registry, rest_.shell,       rest_.environment,
      rest_.sockets,    rest_.counters, rest_.wmi,      rest_.icmp,        rest_.downloads,
      rest_.interfaces, rest_.printers, rest_.drives,   rest_.processList, "veltrin"};
  veltrin::Program program_{platform_};
  QSize size_;
};

bool compareReports(Bench& bench, const Sizes& sizes, int runs, veltrin::Table& table) {
  std::array<std::vector<double>, 4> figures;
  std::vector<double> heap;
  std::vector<double> resident;
  double bareHeap = 0;
  for (int run = 0; run < runs; ++run) {
    Report ours;
    if (!bench.printOurs(sizes, ours)) {
      std::printf("the window does not show what was printed\n");
      return false;
    }
    const Report bare = bench.printBare(sizes);
    if (run == 0) bareHeap = bare.heap;
    figures[0].push_back(ours.first);
    figures[1].push_back(ours.last);
    figures[2].push_back(ours.all);
    figures[3].push_back(bare.all);
    heap.push_back(ours.heap);
    resident.push_back(ours.resident);
  }
  const double first = median(figures[0]);
  const double last = median(figures[1]);
  const double all = median(figures[2]);
  const double beside = median(figures[3]);
  table.add({"A report of " + std::to_string(sizes.lines) + " lines in its shown window", all, "ms",
             "a bare `QPlainTextEdit` with the same lines", beside, veltrin::atMost(kMostOfBare)});
  const std::string part = std::to_string(sizes.part) + " lines";
  table.add(
      {"Its last " + part, last, "ms", "its first " + part, first, veltrin::atMost(kMostOfFirst)});
  std::printf("a line takes %.0f bytes of the heap, %.0f of resident memory; bare text %.0f\n",
              heap.front(), resident.front(), bareHeap);
  table.add({"Resident memory of a line of it", resident.front(), "bytes", "", std::nullopt,
             std::nullopt});
  return true;
}

// A list in a window of its own.
class ListWindow : public veltrin::FormHost {
 public:
  ListWindow(Bench& bench, int lines) : form_(std::make_shared<ListForm>(*this, bench.platform())) {
    auto window = std::make_unique<veltrin::FormWindow>();
    window->resize(580, 420);
    view_ = new veltrin::LineList(window.get());
    view_->setObjectName("List1");
    view_->resize(580, 420);
    form_->load();
    binder_ = std::make_unique<veltrin::Binder>(*form_, std::move(window), bench.events().gate(),
                                                bench.files());
    for (int line = 0; line < lines; ++line) {
      list().AddItem(lineOf(line), 0, 0x008000, line % 12 == 0);
    }
    binder_->window().show();
    bench.settle();
  }

  void unload(veltrin::Form& form) override { form.end(); }

  // Microseconds of a painting behind a jump to another place.
  double scroll(int step, int steps) {
    QScrollBar* bar = view_->verticalScrollBar();
    bar->setValue(static_cast<int>(static_cast<double>(bar->maximum()) * step / steps));
    return microseconds([&] { view_->viewport()->repaint(); });
  }

  int rows() const { return view_->model()->rowCount(); }
  veltrin::LVListBox& list() { return form_->List1; }

 private:
  struct ListForm : veltrin::Form {
    ListForm(veltrin::FormHost& host, veltrin::Platform& platform)
        : Form("ListForm", host), List1(platform) {
      own("List1", List1);
    }
    veltrin::LVListBox List1;
  };

  std::shared_ptr<ListForm> form_;
  std::unique_ptr<veltrin::Binder> binder_;
  veltrin::LineList* view_ = nullptr;
};

void compareScrolling(ListWindow& longList, ListWindow& shortList, int scrolls,
                      veltrin::Table& table) {
  std::vector<double> longTimes;
  std::vector<double> shortTimes;
  for (int step = 0; step < scrolls; ++step) {
    longTimes.push_back(longList.scroll(step, scrolls));
    shortTimes.push_back(shortList.scroll(step, scrolls));
  }
  const double ours = median(longTimes);
  const double beside = median(shortTimes);
  table.add({"A painting at some place of a list of " + std::to_string(longList.rows()) + " lines",
             ours, "us", "of " + std::to_string(shortList.rows()) + " lines", beside,
             veltrin::atMost(kMostOfShort)});
}

// Each way of a search that finds nothing.
bool compareSearch(ListWindow& window, int runs, veltrin::Table& table) {
  const std::string wanted = "No such text";
  std::vector<std::string> texts;
  texts.reserve(static_cast<std::size_t>(window.rows()));
  for (int line = 0; line < window.rows(); ++line) texts.push_back(lineOf(line));
  std::vector<double> ours;
  std::vector<double> loops;
  for (int run = 0; run < runs; ++run) {
    for (const bool matchCase : {false, true}) {
      const auto compare = matchCase ? veltrin::Compare::Exact : veltrin::Compare::IgnoreCase;
      std::int64_t found = -1;
      ours.push_back(microseconds([&] { found = window.list().FindItem(wanted, 0, matchCase); }));
      const auto isFound = [&](const std::string& text) {
        return veltrin::InStr(1, text, wanted, compare) > 0;
      };
      loops.push_back(microseconds([&] {
        if (std::any_of(texts.begin(), texts.end(), isFound)) found = 0;
      }));
      if (found != -1) return false;
    }
  }
  const auto sum = [](const std::vector<double>& times, std::size_t from) {
    std::vector<double> each;
    for (std::size_t at = from; at < times.size(); at += 2) each.push_back(times[at]);
    return median(each);
  };
  for (const std::size_t way : {0U, 1U}) {
    table.add({"A search in " + std::to_string(window.rows()) + " lines, " +
                   (way == 0 ? "any case" : "that case alone"),
               sum(ours, way), "us", "a bare loop of the comparisons", sum(loops, way),
               veltrin::atMost(kMostOfLoop)});
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  const bool isSmoke = argc > 1 && std::string_view(argv[1]) == "--smoke";
  const int asked = argc > 1 ? std::max(1, std::atoi(argv[1])) : kUsualRuns;
  const int runs = isSmoke ? 1 : asked;
  const Sizes sizes = isSmoke ? kSmoke : Sizes();
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  const QApplication application(argc, argv);
  veltrin::setAppearance();
  Bench bench;
  veltrin::Table table(!isSmoke);
  const bool isShown = compareReports(bench, sizes, runs, table);
  ListWindow longList(bench, sizes.longList);
  ListWindow shortList(bench, sizes.shortList);
  compareScrolling(longList, shortList, sizes.scrolls, table);
  const bool isSearched = compareSearch(longList, runs * 3, table);
  const bool isWhole = veltrin::printSectionTimes(VELTRIN_SYSTEMINFO, runs, table);
  if (!isWhole) std::printf("a report of this machine is not made\n");
  return isWhole && isShown && isSearched ? table.exitCode() : EXIT_FAILURE;
}
