// SPDX-License-Identifier: GPL-3.0-or-later
// How long the program takes to start when the update endpoint behaves well, badly, or
// is not there, beside its bare waits. Needs the ports 31112 and 31113 of this machine,
// which the lab gives: lab clean-15 -- start_bench
//
//   start_bench [--smoke | BEGINNING...]
//
// Words behind the program's name choose cases by their beginning; a whole run takes
// about two minutes and names each case as it begins. The smoke run is of one case that
// needs no ports.
//
// "over" is the start less the waits that it tells, which are those of the splash and,
// where an answer is shown, that of the answer. It may be 300 ms in each case.
#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <netinet/in.h>
#include <optional>
#include <poll.h>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include <QApplication>

#include "frame/starter.h"
#include "own_folder.h"
#include "platform/qt/desktop_system.h"
#include "platform/qt/qt_text.h"
#include "table.h"
#include "toolbox/toolbox.h"
#include "view/window_catalogue.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::array<std::uint16_t, 2> kPorts = {31112, 31113};
constexpr int kWaits = 100 + 2500 + 1000;  // ms of a start without an answer
constexpr const char* kSmokeCase = "no endpoint is named";
constexpr double kMostOver = 300;  // ms
constexpr int kAnswerWait = 1000;  // ms in which an answer is shown

double millisecondsSince(Clock::time_point start) {
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

void sleepFor(int milliSeconds) {
  std::this_thread::sleep_for(std::chrono::milliseconds(milliSeconds));
}

void say(int caller, const std::string& text) {
  [[maybe_unused]] const auto sent = send(caller, text.data(), text.size(), MSG_NOSIGNAL);
}

// Both ports of an endpoint that does the same to every caller.
class Endpoint {
 public:
  using Manner = std::function<void(int caller, const std::atomic<bool>& ending)>;

  explicit Endpoint(Manner manner) : manner_(std::move(manner)) {
    for (const std::uint16_t port : kPorts) open(port);
  }
  ~Endpoint() {
    ending_ = true;
    for (std::thread& thread : threads_) thread.join();
  }
  Endpoint(const Endpoint&) = delete;
  Endpoint& operator=(const Endpoint&) = delete;

 private:
  void open(std::uint16_t port) {
    const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int one = 1;
    setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &one, sizeof one);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    if (bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
        listen(listener, SOMAXCONN) != 0) {
      std::perror("a port of the endpoint");
      std::exit(1);
    }
    threads_.emplace_back([this, listener] { serve(listener); });
  }

  void serve(int listener) {
    while (!ending_) {
      pollfd source{listener, POLLIN, 0};
      if (poll(&source, 1, 20) <= 0) continue;
      const int caller = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
      if (caller < 0) continue;
      manner_(caller, ending_);
      close(caller);
    }
    close(listener);
  }

  Manner manner_;
  std::atomic<bool> ending_ = false;
  std::vector<std::thread> threads_;
};

struct Case {
  const char* name;
  const char* server;
  int told;  // ms
  Endpoint::Manner manner;
};

void hold(const std::atomic<bool>& ending) {
  while (!ending) sleepFor(10);
}

std::vector<Case> cases() {
  const auto answering = [](const std::string& text) {
    return [text](int caller, const std::atomic<bool>&) {
      sleepFor(1100);  // behind the second of the wait, with which it would share a timer
      say(caller, text);
      sleepFor(100);
    };
  };
  return {
      {kSmokeCase, "", kWaits, {}},
      {"refused", "127.0.0.1", kWaits, {}},
      {"the host is silent", "198.51.100.77", kWaits, {}},
      {"the name does not resolve", "nowhere.example", kWaits, {}},
      {"accepted, then silent", "127.0.0.1", kWaits,
       [](int, const std::atomic<bool>& ending) { hold(ending); }},
      {"reset", "127.0.0.1", kWaits,
       [](int caller, const std::atomic<bool>&) {
         const linger hard{1, 0};
         setsockopt(caller, SOL_SOCKET, SO_LINGER, &hard, sizeof hard);
       }},
      {"an answer", "127.0.0.1", kWaits, answering("1.03198.51.100.7")},
      {"an answer of 3 characters", "127.0.0.1", kWaits, answering("1.0")},
      {"an answer of 4 characters", "127.0.0.1", kWaits, answering("1.03")},
      {"an answer of 20 characters", "127.0.0.1", kWaits, answering("1.032001:db8::1:22:3")},
      {"1 MB", "127.0.0.1", kWaits, answering(std::string(1 << 20, 'x'))},
      {"two pieces", "127.0.0.1", kWaits,
       [](int caller, const std::atomic<bool>&) {
         sleepFor(1100);
         say(caller, "1.0");
         sleepFor(30);
         say(caller, "3198.51.100.7");
       }},
      {"XXX, then an answer", "127.0.0.1", kWaits,
       [](int caller, const std::atomic<bool>&) {
         say(caller, "XXX");
         sleepFor(1100);
         say(caller, "1.03198.51.100.7");
         sleepFor(100);
       }},
      {"XXX and nothing", "127.0.0.1", kWaits,
       [](int caller, const std::atomic<bool>& ending) {
         say(caller, "XXX");
         hold(ending);
       }},
      {"talking without end", "127.0.0.1", kWaits,
       [](int caller, const std::atomic<bool>& ending) {
         sleepFor(1100);
         for (int round = 0; round < 500 && !ending; ++round) {
           say(caller, "1.03a");
           sleepFor(10);
         }
       }},
      {"an answer at the last moment", "127.0.0.1", 100 + 2450 + kAnswerWait + 1000,
       [](int caller, const std::atomic<bool>&) {
         sleepFor(2450);
         say(caller, "1.03");
         sleepFor(100);
       }},
  };
}

// The platform with a data folder of its own, in which no first-run step is due.
class Start {
 public:
  explicit Start(const std::string& server) {
    const std::filesystem::path program = folder_.path() / "veltrin";
    std::filesystem::create_directories(program / "Files");
    std::ofstream(program / "installation.ini")
        << "[Installation]\r\nUpdateServer=" << server << "\r\n";
    std::ofstream(program / "Files" / "Veltrin.dat") << "[Settings]\r\nPath=known\r\nOS=known\r\n";
    system_ = veltrin::makeDesktopSystem(veltrin::fromQt(QCoreApplication::applicationFilePath()),
                                         "Veltrin", veltrin::showInWindow);
    program_ = std::make_unique<veltrin::Program>(system_->platform());
    veltrin::provideTools(*program_);
  }
  ~Start() {
    program_.reset();
    system_.reset();
  }
  Start(const Start&) = delete;
  Start& operator=(const Start&) = delete;

  // ms from the first line of the start to the menu.
  double toMenu() {
    const auto begin = Clock::now();
    program_->show<veltrin::starter>();
    return millisecondsSince(begin);
  }

  // ms of the start's waits alone.
  double waits() {
    const auto begin = Clock::now();
    for (const int wait : {100, 2500, 1000}) program_->Wait(wait);
    return millisecondsSince(begin);
  }

 private:
  veltrin::OwnFolder folder_{"start_bench"};
  std::unique_ptr<veltrin::DesktopSystem> system_;
  std::unique_ptr<veltrin::Program> program_;
};

// Returns the start less the waits that it tells, in ms. The end of a start is told, too:
// nobody may wait for a lookup then.
double measure(const Case& now) {
  std::printf("%-30s ", now.name);
  std::fflush(stdout);
  const auto begin = Clock::now();
  double taken = 0;
  {
    std::unique_ptr<Endpoint> endpoint;
    if (now.manner) endpoint = std::make_unique<Endpoint>(now.manner);
    Start start(now.server);
    taken = start.toMenu();
  }
  const double rest = millisecondsSince(begin) - taken;
  std::printf("%6.0f ms, over %4.0f ms, around it %4.0f ms\n", taken, taken - now.told, rest);
  std::fflush(stdout);
  return taken - now.told;
}

bool isWanted(const Case& each, const std::vector<std::string>& words) {
  if (words.empty()) return true;
  return std::any_of(words.begin(), words.end(), [&each](const std::string& word) {
    return std::string_view(each.name).starts_with(word);
  });
}

}  // namespace

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  QApplication application(argc, argv);
  std::vector<std::string> words(argv + 1, argv + argc);
  const bool isSmoke = words == std::vector<std::string>{"--smoke"};
  if (isSmoke) words = {kSmokeCase};
  if (!isSmoke) {
    std::printf("%-30s ", "the bare waits");
    std::fflush(stdout);
    std::printf("%6.0f ms\n", Start("").waits());
  }
  std::vector<double> overs;
  for (const Case& now : cases()) {
    if (isWanted(now, words)) overs.push_back(measure(now));
  }
  if (overs.empty()) {
    std::fprintf(stderr, "start_bench: there is no such case\n");
    return EXIT_FAILURE;
  }
  veltrin::Table table(!isSmoke);
  table.add({"Start to the menu over the waits that it tells, the longest of " +
                 std::to_string(overs.size()) + " cases of a good, bad or absent update endpoint",
             *std::max_element(overs.begin(), overs.end()), "ms", "", std::nullopt,
             veltrin::atMost(kMostOver)});
  return table.exitCode();
}
