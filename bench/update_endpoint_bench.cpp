// SPDX-License-Identifier: GPL-3.0-or-later
// How many callers the update endpoint answers in a second, beside the barest server
// that could do it: a loop of accept, write and close.
//
//   update_endpoint_bench [ROUNDS | --smoke]
//
// With 1, 100 and 2000 callers at once, both servers take turns in each of ROUNDS
// rounds (7 by default), so that what else the machine does falls on both alike. A
// caller connects, reads to the end and closes; its time runs from the connect to the
// last byte. The ratio is what the endpoint reaches of the bare loop. It does more for
// a caller: it ends its own direction, waits for the caller's end with a time limit, and
// counts who stands.
#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <netinet/in.h>
#include <span>
#include <string>
#include <string_view>
#include <sys/epoll.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "table.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kUsualRounds = 7;
constexpr std::string_view kAnswer = "1.03127.0.0.1";
constexpr rlim_t kOtherDescriptors = 100;

struct Crowd {
  std::size_t atOnce;
  std::size_t callers;  // in a round
};

constexpr std::array<Crowd, 3> kCrowds{{{1, 5'000}, {100, 20'000}, {2'000, 20'000}}};
constexpr std::array<Crowd, 2> kSmokeCrowds{{{1, 20}, {20, 100}}};

[[noreturn]] void giveUp(const char* what) {
  std::fprintf(stderr, "update_endpoint_bench: %s: %s\n", what, std::strerror(errno));
  std::exit(1);
}

sockaddr_in loopback(in_port_t port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = port;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

// A server that runs in a process of its own until this object goes.
class Server {
 public:
  Server(pid_t process, in_port_t port) : process_(process), port_(port) {}
  ~Server() {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  in_port_t port() const { return port_; }  // in network order

 private:
  pid_t process_;
  in_port_t port_;
};

[[noreturn]] void serveBare(int listener) {
  for (;;) {
    const int socket = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
    if (socket < 0) continue;
    [[maybe_unused]] const ssize_t written = write(socket, kAnswer.data(), kAnswer.size());
    close(socket);
  }
}

Server startBare() {
  const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in name = loopback(0);
  socklen_t length = sizeof(name);
  if (bind(listener, reinterpret_cast<const sockaddr*>(&name), length) != 0 ||
      listen(listener, 4096) != 0 ||
      getsockname(listener, reinterpret_cast<sockaddr*>(&name), &length) != 0) {
    giveUp("no listener");
  }
  const pid_t process = fork();
  if (process == 0) serveBare(listener);
  close(listener);
  return {process, name.sin_port};
}

Server startEndpoint() {
  std::array<int, 2> output{};
  if (pipe(output.data()) != 0) giveUp("no pipe");
  const pid_t process = fork();
  if (process == 0) {
    dup2(output[1], STDOUT_FILENO);
    close(output[0]);
    close(output[1]);
    execl(UPDATE_ENDPOINT, UPDATE_ENDPOINT, "--listen", "127.0.0.1", "--ports", "0",
          "--most-per-address", "1000000", "1.03", nullptr);
    _exit(126);
  }
  close(output[1]);
  FILE* const words = fdopen(output[0], "r");
  int port = 0;
  if (words == nullptr || std::fscanf(words, "127.0.0.1:%d", &port) != 1) giveUp(UPDATE_ENDPOINT);
  std::fclose(words);
  return {process, htons(static_cast<in_port_t>(port))};
}

struct Caller {
  int socket = -1;
  Clock::time_point start;
  std::size_t heard = 0;
};

// Keeps so many callers calling until all of the round's have been answered.
class Round {
 public:
  Round(const Server& server, const Crowd& crowd)
      : address_(loopback(server.port())), crowd_(crowd), callers_(crowd.atOnce) {}

  // The time of the whole; each caller's is added to `times`, in microseconds.
  double run(std::vector<double>& times) {
    epoll_ = epoll_create1(EPOLL_CLOEXEC);
    if (epoll_ < 0) giveUp("no epoll");
    const Clock::time_point start = Clock::now();
    for (std::size_t at = 0; at < callers_.size(); ++at) call(at);
    std::array<epoll_event, 256> events;
    while (answered_ < crowd_.callers) {
      const int count = epoll_wait(epoll_, events.data(), static_cast<int>(events.size()), -1);
      for (int at = 0; at < count; ++at) hear(events[static_cast<std::size_t>(at)].data.u64, times);
    }
    const std::chrono::duration<double> taken = Clock::now() - start;
    close(epoll_);
    return taken.count();
  }

 private:
  void call(std::size_t at) {
    if (called_ == crowd_.callers) return;
    ++called_;
    Caller& caller = callers_[at];
    caller.heard = 0;
    caller.start = Clock::now();
    caller.socket = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (caller.socket < 0) giveUp("no socket");
    const auto* const pointer = reinterpret_cast<const sockaddr*>(&address_);
    if (connect(caller.socket, pointer, sizeof(address_)) != 0 && errno != EINPROGRESS) {
      giveUp("no connection");
    }
    epoll_event event{};
    event.events = EPOLLIN;
    event.data.u64 = at;
    if (epoll_ctl(epoll_, EPOLL_CTL_ADD, caller.socket, &event) != 0) giveUp("no events");
  }

  void hear(std::size_t at, std::vector<double>& times) {
    Caller& caller = callers_[at];
    std::array<char, 64> piece;
    for (;;) {
      const ssize_t length = recv(caller.socket, piece.data(), piece.size(), 0);
      if (length < 0 && errno == EAGAIN) return;
      if (length < 0) giveUp("no answer");
      if (length == 0) break;
      caller.heard += static_cast<std::size_t>(length);
    }
    if (caller.heard != kAnswer.size()) {
      errno = EPROTO;
      giveUp("no whole answer");
    }
    times.push_back(std::chrono::duration<double, std::micro>(Clock::now() - caller.start).count());
    close(caller.socket);
    ++answered_;
    call(at);
  }

  sockaddr_in address_;
  Crowd crowd_;
  std::vector<Caller> callers_;
  int epoll_ = -1;
  std::size_t called_ = 0;
  std::size_t answered_ = 0;
};

double partOf(std::vector<double>& values, double part) {
  std::sort(values.begin(), values.end());
  return values[static_cast<std::size_t>(part * static_cast<double>(values.size() - 1))];
}

// What was seen of one server with one crowd.
struct Seen {
  std::vector<double> rates;  // callers in a second, for each round
  std::vector<double> times;  // microseconds, for each caller

  void add(const Server& server, const Crowd& crowd) {
    const double taken = Round(server, crowd).run(times);
    rates.push_back(static_cast<double>(crowd.callers) / taken);
  }

  void print(const char* name) {
    std::printf("  %-9s %9.0f callers/s   us: median %7.0f  90%% %7.0f  99%% %7.0f  most %7.0f\n",
                name, partOf(rates, 0.5), partOf(times, 0.5), partOf(times, 0.9),
                partOf(times, 0.99), partOf(times, 1));
  }
};

void measure(const Crowd& crowd, int rounds, veltrin::Table& table) {
  const Server endpoint = startEndpoint();
  const Server bare = startBare();
  Seen ours;
  Seen others;
  for (int round = 0; round < rounds; ++round) {
    others.add(bare, crowd);
    ours.add(endpoint, crowd);
  }
  std::printf("%zu at once\n", crowd.atOnce);
  others.print("bare loop");
  ours.print("endpoint");
  table.add(
      {"Callers that the update endpoint answers, " + std::to_string(crowd.atOnce) + " at once",
       partOf(ours.rates, 0.5), "a second", "a bare loop of accept, write and close",
       partOf(others.rates, 0.5), std::nullopt});
}

}  // namespace

int main(int argc, char** argv) {
  const std::string word = argc > 1 ? argv[1] : std::to_string(kUsualRounds);
  const bool smoke = word == "--smoke";
  const int rounds = std::max(1, std::atoi(word.c_str()));
  const std::span<const Crowd> crowds =
      smoke ? std::span<const Crowd>(kSmokeCrowds) : std::span<const Crowd>(kCrowds);
  veltrin::Table table(!smoke);
  rlimit limit{};
  getrlimit(RLIMIT_NOFILE, &limit);
  limit.rlim_cur = limit.rlim_max;
  setrlimit(RLIMIT_NOFILE, &limit);
  for (const Crowd& crowd : crowds) {
    if (limit.rlim_cur < crowd.atOnce + kOtherDescriptors) {
      table.cannot(
          "Callers that the update endpoint answers, " + std::to_string(crowd.atOnce) + " at once",
          "this machine lets a process have too few descriptors");
      continue;
    }
    measure(crowd, rounds, table);
  }
  return table.exitCode();
}
