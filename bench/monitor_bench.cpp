// SPDX-License-Identifier: GPL-3.0-or-later
// What the Bandwidth monitor costs: its shown window at its one tick a second, beside `nload`
// and `bmon` at one second each in terminals of 80 by 24 characters, all over the same time
// and the same traffic, whose speed is another in each second.
//
//   lab clean-15 -- monitor_bench [SECONDS | --smoke]
//
// Draws off the screen when no other is chosen. Prints the processor time of all three, 60 s
// by default; ours may be that of the dearer of the two. Then both monitors' shown windows
// tick 3,600 times without a wait, over figures that grow otherwise each time, through the
// reading of the kernel's files: their heap may not grow by more than 64 KB from tick 600 to
// the last. The smoke run is of three seconds and 40 ticks, needs no lab and judges nothing.
// Ends with 77 where it cannot run.
#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <malloc.h>
#include <memory>
#include <net/if.h>
#include <netinet/in.h>
#include <optional>
#include <pty.h>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

#include <QApplication>
#include <QTimer>

#include "frame/setlang.h"
#include "monitor/frmIP.h"
#include "monitor/frmNetwork.h"
#include "own_folder.h"
#include "platform/linux/linux_counters.h"
#include "platform/qt/desktop_system.h"
#include "table.h"
#include "view/appearance.h"
#include "view/window_catalogue.h"

namespace {

using veltrin::CounterService;

constexpr int kUsualSeconds = 60;
constexpr int kSmokeSeconds = 3;
constexpr int kSettling = 2500;  // ms until all have drawn for the first time
constexpr int kTicks = 3600;
constexpr int kSmokeTicks = 40;
constexpr int kWarm = 600;                   // ticks
constexpr std::size_t kMostGrowth = 65'536;  // bytes

double seconds(const timespec& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

// Processor time of a process so far, 0 for one that has ended.
double processorTimeOf(pid_t process) {
  clockid_t clock = 0;
  timespec time{};
  if (clock_getcpuclockid(process, &clock) != 0 || clock_gettime(clock, &time) != 0) return 0;
  return seconds(time);
}

// --- Beside ours ---

// A process that goes with this object.
class Process {
 public:
  explicit Process(pid_t id) : id_(id) {}
  ~Process() {
    if (id_ <= 0) return;
    kill(id_, SIGKILL);
    waitpid(id_, nullptr, 0);
  }
  Process(Process&& other) noexcept : id_(std::exchange(other.id_, 0)) {}

  pid_t id() const { return id_; }
  bool runs() const { return waitpid(id_, nullptr, WNOHANG) == 0; }

 private:
  pid_t id_;
};

// A tool, and who takes what it writes on its terminal: a process of its own, as the time
// for that is nobody's here.
struct ToolOnATerminal {
  std::string name;
  Process tool;
  Process reader;
};

ToolOnATerminal startTool(const std::vector<const char*>& command) {
  winsize size{};
  size.ws_col = 80;
  size.ws_row = 24;
  int terminal = -1;
  const pid_t tool = forkpty(&terminal, nullptr, nullptr, &size);
  if (tool == 0) {
    setenv("TERM", "xterm", 1);
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const char* word : command) arguments.push_back(const_cast<char*>(word));
    arguments.push_back(nullptr);
    execvp(arguments[0], arguments.data());
    _exit(veltrin::kCannotRun);
  }
  const pid_t reader = fork();
  if (reader == 0) {
    std::array<char, 4096> text{};
    while (read(terminal, text.data(), text.size()) > 0) {
    }
    _exit(0);
  }
  close(terminal);
  return {command[0], Process(tool), Process(reader)};
}

// Sends datagrams into the lab, from 100 to 3,000 KB/s, at another speed each second.
[[noreturn]] void sendForEver() {
  constexpr std::array kSpeeds{120, 700, 1500, 300, 2900, 900, 1000, 450, 2000, 150, 2400};
  constexpr int kStep = 5;  // ms
  constexpr std::size_t kBytes = 1200;
  const int any = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  sockaddr_in gateway{};
  gateway.sin_family = AF_INET;
  gateway.sin_port = htons(9);
  gateway.sin_addr.s_addr = htonl(0xC0000201);  // of the lab's machine
  const std::string data(kBytes, 'x');
  double owed = 0;
  for (std::size_t step = 0;; ++step) {
    owed += kSpeeds.at(step * kStep / 1000 % kSpeeds.size()) * kStep;
    while (owed >= kBytes) {
      sendto(any, data.data(), data.size(), 0, reinterpret_cast<const sockaddr*>(&gateway),
             sizeof gateway);
      owed -= kBytes;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(kStep));
  }
}

Process startTraffic() {
  const pid_t sender = fork();
  if (sender == 0) sendForEver();
  return Process(sender);
}

// --- Ours ---

// A program over the desktop, with counters of the benchmark's choice.
class MonitorProgram {
 public:
  explicit MonitorProgram(veltrin::Counters& counters)
      : counted_(over(system_->platform(), counters)) {
    std::array<char, 257> host{};
    gethostname(host.data(), host.size() - 1);
    program.start.HostName = host.data();
    veltrin::Counters::Query query = 0;
    counters.PdhOpenQuery(query);
    program.start.PdhQuery = query;
    keptRunning_ = program.show<veltrin::setlang>();
  }

 private:
  static veltrin::Platform over(veltrin::Platform& all, veltrin::Counters& counters) {
    return {all.events,     all.timers,   all.clock,    all.desktop,     all.files,
            all.processes,  all.profiles, all.registry, all.shell,       all.environment,
            all.sockets,    counters,     all.wmi,      all.icmp,        all.downloads,
            all.interfaces, all.printers, all.drives,   all.processList, all.executableName};
  }

  std::unique_ptr<veltrin::DesktopSystem> system_ =
      veltrin::makeDesktopSystem(VELTRIN_PROGRAM, "Veltrin", veltrin::showInWindow);
  veltrin::Platform counted_;

 public:
  veltrin::Program program{counted_};

 private:
  std::shared_ptr<veltrin::Form> keptRunning_;
};

// Lets the program run for a time in ms, asleep between its events.
void run(veltrin::Program& program, int duration) {
  bool isOver = false;
  QTimer end;
  end.setSingleShot(true);
  end.callOnTimeout([&] { isOver = true; });
  end.start(duration);
  program.platform.events.pumpUntil([&] { return isOver; });
}

bool isLoadedWithTraffic(const veltrin::frmNetwork& window) {
  int sum = 0;
  for (const auto* dial : {&window.NetTotal1, &window.NetTotal2, &window.NetTotal3}) {
    if (dial->front().visible) sum += dial->front().Value;
  }
  return sum > 0;
}

// What the shown window and the tools took of the processor; false when nothing was shown.
bool compare(int duration, const std::vector<ToolOnATerminal>& tools, veltrin::Table& table) {
  veltrin::LinuxCounters counters;
  MonitorProgram monitor(counters);
  const auto window = monitor.program.show<veltrin::frmNetwork>();
  run(monitor.program, kSettling);
  std::vector<double> before;
  before.reserve(tools.size());
  for (const ToolOnATerminal& each : tools) before.push_back(processorTimeOf(each.tool.id()));
  const double ownBefore = processorTimeOf(getpid());
  run(monitor.program, duration * 1000);
  const double own = processorTimeOf(getpid()) - ownBefore;
  const std::string what = "Processor time of the Bandwidth monitor in its shown window, " +
                           std::to_string(duration) + " s of traffic";
  if (tools.empty()) {
    table.add({what, own, "s", "", std::nullopt, std::nullopt});
    return true;
  }
  std::vector<std::optional<double>> spent;
  for (std::size_t i = 0; i < tools.size(); ++i) {
    const double time = processorTimeOf(tools[i].tool.id()) - before[i];
    spent.push_back(tools[i].tool.runs() && time > 0 ? std::optional(time) : std::nullopt);
  }
  if (!isLoadedWithTraffic(*window)) {
    std::printf("no traffic was seen\n");
    return false;
  }
  // Only the dearest of them is held against ours, and nothing when one is not here.
  const bool areAllHere =
      std::all_of(spent.begin(), spent.end(), [](const auto& each) { return each; });
  const auto dearest = std::max_element(spent.begin(), spent.end());
  for (auto each = spent.begin(); each != spent.end(); ++each) {
    const std::string& name = tools[static_cast<std::size_t>(each - spent.begin())].name;
    const bool isHeld = areAllHere ? each == dearest : !*each;
    table.add({what, own, "s", "`" + name + "` at the same time", *each,
               isHeld ? std::optional(veltrin::atMost(1)) : std::nullopt});
  }
  return true;
}

// --- Memory ---

// The kernel's files with figures that grow by other amounts each second.
class GrowingFiles {
 public:
  explicit GrowingFiles(const std::filesystem::path& folder) : folder_(folder) {
    std::filesystem::create_directories(folder / "net");
    grow();
  }

  std::string folder() const { return folder_.string(); }

  void grow() {
    ++second_;
    bytes_ += 40'000 + second_ % 7 * 3'000'000 + second_ % 11 * 90'000;
    datagrams_ += 30 + second_ % 13;
    std::ofstream device(folder_ / "net" / "dev");
    for (const char* name : {"eth0", "eth1", "wlan0"}) {
      device << name << ": " << bytes_ << " 1 0 0 0 0 0 0 " << bytes_ / 3 << " 1 0 0 0 0 0 0\n";
    }
    std::ofstream four(folder_ / "net" / "snmp");
    four << "Ip: InReceives InHdrErrors InDelivers OutRequests FragCreates\nIp: " << datagrams_
         << ' ' << datagrams_ / 2 << ' ' << datagrams_ / 3 << ' ' << datagrams_ / 4 << " 5\n";
    std::ofstream six(folder_ / "net" / "snmp6");
    six << "Ip6InReceives " << datagrams_ / 5 << "\nIp6InDelivers " << datagrams_ / 6 << '\n';
  }

 private:
  std::filesystem::path folder_;
  std::uint64_t second_ = 0;
  std::uint64_t bytes_ = 0;
  std::uint64_t datagrams_ = 0;
};

long residentKilobytes() {
  std::ifstream file("/proc/self/statm");
  long size = 0;
  long resident = 0;
  file >> size >> resident;
  return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

// What the heap grows by while both windows tick.
void measureTicks(const std::filesystem::path& folder, int ticks, veltrin::Table& table) {
  GrowingFiles files(folder);
  CounterService::Moment now;
  veltrin::LinuxCounters counters(files.folder(), std::make_shared<veltrin::AdapterNames>(),
                                  [&now] { return now; });
  MonitorProgram monitor(counters);
  const auto bandwidth = monitor.program.show<veltrin::frmNetwork>();
  const auto protocols = monitor.program.show<veltrin::frmIP>();
  bandwidth->Timer1.enabled = false;  // ticks come by hand
  protocols->Timer1.enabled = false;
  const int warm = std::min(kWarm, ticks / 2);
  std::size_t heap = 0;
  long resident = 0;
  const double start = processorTimeOf(getpid());
  for (int tick = 1; tick <= ticks; ++tick) {
    now += std::chrono::seconds(1);
    files.grow();
    bandwidth->Timer1.tick();
    protocols->Timer1.tick();
    monitor.program.platform.events.DoEvents();
    if (tick == warm) {
      heap = mallinfo2().uordblks;
      resident = residentKilobytes();
    }
  }
  const std::size_t end = mallinfo2().uordblks;
  const std::size_t growth = end > heap ? end - heap : 0;
  table.add({"A tick of both monitors' windows, with its paintings",
             (processorTimeOf(getpid()) - start) * 1000 / ticks, "ms", "", std::nullopt,
             std::nullopt});
  table.add({"Growth of their heap from tick " + std::to_string(warm) + " to tick " +
                 std::to_string(ticks),
             static_cast<double>(growth), "bytes", "", std::nullopt, veltrin::atMost(kMostGrowth)});
  std::printf("resident memory: %ld KB, %ld KB more than behind tick %d\n", residentKilobytes(),
              residentKilobytes() - resident, warm);
}

}  // namespace

int main(int argc, char** argv) {
  const bool isSmoke = argc > 1 && std::string_view(argv[1]) == "--smoke";
  const int asked = argc > 1 ? std::atoi(argv[1]) : kUsualSeconds;
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  veltrin::Table table(!isSmoke);
  if (!isSmoke && if_nametoindex("lab0") == 0) {
    table.cannot("The Bandwidth monitor", "this is for the lab: `lab clean-15 -- monitor_bench`");
    return table.exitCode();
  }
  std::vector<ToolOnATerminal> tools;
  std::vector<Process> traffic;
  if (!isSmoke) {
    traffic.push_back(startTraffic());
    tools.push_back(startTool({"nload", "-t", "1000"}));
    tools.push_back(startTool({"bmon", "-r", "1", "-R", "1"}));
  }
  const veltrin::OwnFolder folder("monitor_bench");
  const QApplication application(argc, argv);
  veltrin::setAppearance();
  const bool isSeen = compare(isSmoke ? kSmokeSeconds : std::max(asked, 2), tools, table);
  traffic.clear();
  measureTicks(folder.path() / "proc", isSmoke ? kSmokeTicks : kTicks, table);
  return isSeen ? table.exitCode() : EXIT_FAILURE;
}
