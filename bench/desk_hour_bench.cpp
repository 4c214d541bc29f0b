// SPDX-License-Identifier: GPL-3.0-or-later
// What the program holds while it works for an hour of real time with three tools open: the
// Bandwidth monitor, the Protocol monitor and the Outage monitor, on a screen of its own, in
// the lab.
//
//   lab bench/desk_hour.ini -- desk_hour_bench [SECONDS | --smoke] [PROGRAM]
//
// A line each minute tells the memory, open files, threads and children of the program, the
// windows on its screen, and the packets that left the machine. A tenth of the time is for
// warming up. Then the middle values of the first and of the last quarter are compared: files,
// threads, children and windows may not have become more, and memory not more than 1 MB, of
// which the log on the screen is a part. Packets must have gone out before every line, and all
// three tools must be at work at the end. The smoke run of 20 s judges no growth. Ends with 77
// where it cannot run.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <net/if.h>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <unistd.h>
#include <vector>

#include "desk/desk.h"
#include "figures.h"
#include "own_folder.h"
#include "process_figures.h"

namespace {

using std::chrono::milliseconds;
using veltrin::desk::Child;
using veltrin::desk::Desk;
using veltrin::desk::Element;

constexpr int kUsualSeconds = 3600;
constexpr int kSmokeSeconds = 20;
constexpr int kUsualLines = 60;
constexpr int kSmokeLines = 4;
constexpr double kWarm = 0.1;         // of the time
constexpr double kMostGrowth = 1024;  // KiB
constexpr int kCannotRun = 77;
constexpr milliseconds kPatience{30000};

const char* const kMenu = "Veltrin";
const char* const kProtocols = "Indepth Internet Monitor";
const char* const kBandwidth = "NETWORK BANDWIDTH";
const char* const kOutage = "Monitor for Outage";

struct Line {
  double second = 0;  // since the tools began
  veltrin::Holding holding;
  long windows = 0;  // on the screen, those within others too
  long packets = 0;  // that left the machine so far
};

// The Outage monitor sends an echo each second.
void writeSettings(const std::filesystem::path& data) {
  const std::filesystem::path files = data / "veltrin" / "Files";
  std::filesystem::create_directories(files);
  std::ofstream(files / "Veltrin.dat", std::ios::binary) << "[Settings]\r\nOut Scan Time=1\r\n";
}

void awaitWindow(const Desk& desk, const std::string& title) {
  if (!veltrin::desk::eventually(kPatience, [&] { return desk.hasWindow(title); })) {
    desk.photograph("desk-hour-missing");
    throw std::runtime_error("the window " + title + " does not come up");
  }
}

void openTool(const Desk& desk, const std::string& button, const std::string& title) {
  desk.bringToFront(kMenu);
  desk.click(desk.button(kMenu, button));
  awaitWindow(desk, title);
}

// The menu is reached by mouse as long as no tool covers it. The Outage monitor comes last,
// as it takes the menu's place.
void startTools(const Desk& desk) {
  openTool(desk, "InDepth Net Monitor", kProtocols);
  openTool(desk, "Monitor Bandwidth", kBandwidth);
  openTool(desk, "Monitor Outage", kOutage);
  desk.click(desk.button(kOutage, "Start"));
  desk.button(kOutage, "Stop");
}

// What has left the machine by the lab's device (proc(5), net/dev: ten columns behind its name,
// the last of which is that of the packets sent).
long packetsSent() {
  constexpr int kColumn = 10;
  const std::string all = veltrin::textOf("/proc/net/dev");
  const std::size_t at = all.find("lab0:");
  if (at == std::string::npos) return 0;
  std::istringstream columns(all.substr(at + std::string_view("lab0:").size()));
  long packets = 0;
  for (int column = 0; column < kColumn; ++column) columns >> packets;
  return packets;
}

long windowsOnScreen() {
  const std::string tree = veltrin::desk::outputOf({"xwininfo", "-root", "-tree"});
  return std::count(tree.begin(), tree.end(), '\n');
}

void print(const Line& line) {
  std::printf("%8.0f %10ld %10ld %10ld %7ld %8ld %9ld %8ld %8ld %10.2f\n", line.second,
              line.holding.resident, line.holding.share, line.holding.own, line.holding.handles,
              line.holding.threads, line.holding.children, line.windows, line.packets,
              line.holding.processor);
  std::fflush(stdout);
}

std::vector<Line> watch(pid_t pid, int duration, int count) {
  std::printf(
      "  second    RSS KiB    PSS KiB    own KiB handles  threads  children  windows"
      "  packets  CPU time s\n");
  const auto start = std::chrono::steady_clock::now();
  std::vector<Line> lines;
  for (int number = 0; number <= count; ++number) {
    std::this_thread::sleep_until(start + milliseconds(1000LL * duration * number / count));
    Line line;
    line.second = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    line.holding = veltrin::holdingOf(pid);
    line.windows = windowsOnScreen();
    line.packets = packetsSent();
    print(line);
    lines.push_back(line);
  }
  return lines;
}

template <class Figure>
double middle(const std::vector<Line>& lines, std::size_t first, std::size_t count, Figure figure) {
  std::vector<double> values;
  for (std::size_t at = first; at < first + count; ++at) {
    values.push_back(static_cast<double>(figure(lines[at])));
  }
  return veltrin::median(values);
}

// Prints one figure of both quarters; whether it grew by no more than it may.
template <class Figure>
bool isFlat(const std::vector<Line>& lines, const char* name, double mostGrowth, Figure figure) {
  const auto warm = static_cast<std::size_t>(kWarm * static_cast<double>(lines.size()));
  const std::size_t quarter = std::max<std::size_t>((lines.size() - warm) / 4, 1);
  const double first = middle(lines, warm, quarter, figure);
  const double last = middle(lines, lines.size() - quarter, quarter, figure);
  const bool flat = last - first <= mostGrowth;
  std::printf(
      "%-9s first quarter %9.0f, last quarter %9.0f, difference %+7.0f (may be %+.0f): %s\n", name,
      first, last, last - first, mostGrowth, flat ? "flat" : "NOT FLAT");
  return flat;
}

bool isAllFlat(const std::vector<Line>& lines) {
  bool flat = isFlat(lines, "RSS", kMostGrowth, [](const Line& l) { return l.holding.resident; });
  flat &= isFlat(lines, "PSS", kMostGrowth, [](const Line& l) { return l.holding.share; });
  flat &= isFlat(lines, "own", kMostGrowth, [](const Line& l) { return l.holding.own; });
  flat &= isFlat(lines, "handles", 0, [](const Line& l) { return l.holding.handles; });
  flat &= isFlat(lines, "threads", 0, [](const Line& l) { return l.holding.threads; });
  flat &= isFlat(lines, "children", 0, [](const Line& l) { return l.holding.children; });
  flat &= isFlat(lines, "windows", 0, [](const Line& l) { return l.windows; });
  return flat;
}

// Whether packets left the machine between each line and the one before.
bool isAtWork(const std::vector<Line>& lines) {
  for (std::size_t at = 1; at < lines.size(); ++at) {
    if (lines[at].packets <= lines[at - 1].packets) return false;
  }
  return true;
}

// Prints what the tools' own windows say at the end. Whether each of them is there and works:
// the rows of the Protocol monitor tell echoes that are sent meanwhile, and the dials their bytes.
// The one echo a second of the Outage monitor would be rounded to none on a busy machine.
bool isEachAtWork(const Desk& desk) {
  const Child echoes({"ping", "-4", "-q", "-n", "-i", "0.05", "-s", "1400", "target.example"});
  const auto tells = [](const char* window, const char* pattern) {
    const std::regex expected(pattern);
    const bool told = veltrin::desk::eventually(kPatience, [&] {
      for (const Element& element : veltrin::desk::elementsOf("veltrin")) {
        if (!element.showing || element.window != window) continue;
        if (!std::regex_match(element.name, expected)) continue;
        std::printf("%s: %s\n", window, element.name.c_str());
        return true;
      }
      return false;
    });
    if (!told) std::printf("%s does not work\n", window);
    return told;
  };
  const bool outage = tells(kOutage, "Run Time: [1-9].*");
  const bool protocols = tells(kProtocols, "Version 4, datagrams sent [1-9][0-9]* sec.*");
  return tells(kBandwidth, "Scale to 1,000 KB per second, total [1-9][0-9]*") && outage &&
         protocols && desk.hasWindow(kOutage);
}

int run(int duration, bool isSmoke, const std::string& program) {
  const veltrin::OwnFolder folder("desk_hour_bench");
  writeSettings(folder.path());
  const Desk desk;
  Child child({program});
  awaitWindow(desk, kMenu);
  startTools(desk);
  const std::vector<Line> lines =
      watch(child.pid(), duration, isSmoke ? kSmokeLines : std::min(duration / 10, kUsualLines));
  const bool each = isEachAtWork(desk);
  const bool atWork = isAtWork(lines) && each;
  std::printf("packets: %ld in %d s%s\n", lines.back().packets - lines.front().packets, duration,
              atWork ? "" : ", BUT NOT ALL THE TIME");
  const bool flat = isAllFlat(lines);
  return atWork && (flat || isSmoke) ? EXIT_SUCCESS : EXIT_FAILURE;
}

bool isInLab() { return if_nametoindex("lab0") != 0; }

}  // namespace

int main(int argc, char** argv) {
  const bool isSmoke = argc > 1 && std::string_view(argv[1]) == "--smoke";
  const int asked = argc > 1 ? std::atoi(argv[1]) : kUsualSeconds;
  const int duration = isSmoke ? kSmokeSeconds : std::max(asked, 60);
  if (!isInLab()) {
    std::printf("this is for the lab: lab bench/desk_hour.ini -- desk_hour_bench\n");
    return kCannotRun;
  }
  try {
    return run(duration, isSmoke, argc > 2 ? argv[2] : VELTRIN_PROGRAM);
  } catch (const std::exception& failure) {
    std::printf("%s\n", failure.what());
    return EXIT_FAILURE;
  }
}
