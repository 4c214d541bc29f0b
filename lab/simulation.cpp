#include "lab/simulation.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <ctime>
#include <map>
#include <optional>
#include <poll.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace veltrin::lab {
namespace {

constexpr std::size_t kLongestPacket = 65536;
constexpr int kPacketsAtATime = 64;

Time now() {
  timespec moment{};
  clock_gettime(CLOCK_MONOTONIC, &moment);
  return std::chrono::seconds(moment.tv_sec) + std::chrono::nanoseconds(moment.tv_nsec);
}

timespec timespecOf(Time duration) {
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(duration);
  timespec result{};
  result.tv_sec = static_cast<time_t>(seconds.count());
  result.tv_nsec = static_cast<long>((duration - seconds).count());
  return result;
}

// A millisecond is to be a millisecond on a busy machine too. What the system
// does not grant is done without.
void askForPunctuality() {
  prctl(PR_SET_TIMERSLACK, 1UL);
  sched_param priority{};
  priority.sched_priority = sched_get_priority_min(SCHED_RR);
  sched_setscheduler(0, SCHED_RR | SCHED_RESET_ON_FORK, &priority);
}

class Simulation {
 public:
  Simulation(Internet& internet, int interface, int signals, pid_t child)
      : internet_(internet),
        interface_(interface),
        signals_(signals),
        child_(child),
        buffer_(kLongestPacket) {}

  int run() {
    while (!exitCode_) {
      deliverDue();
      waitForWork();
      takePackets();
      takeSignals();
    }
    return *exitCode_;
  }

 private:
  // Until a packet or a signal comes or the next answer is due.
  void waitForWork() {
    std::array<pollfd, 2> sources{{{interface_, POLLIN, 0}, {signals_, POLLIN, 0}}};
    timespec limit{};
    if (!waiting_.empty()) {
      limit = timespecOf(std::max(waiting_.begin()->first - now(), Time::zero()));
    }
    ppoll(sources.data(), sources.size(), waiting_.empty() ? nullptr : &limit, nullptr);
  }

  // A bounded number at a time, so that a flood does not keep signals waiting.
  void takePackets() {
    for (int taken = 0; taken < kPacketsAtATime; ++taken) {
      const ssize_t length = read(interface_, buffer_.data(), buffer_.size());
      if (length <= 0) return;
      const Bytes bytes = Bytes(buffer_).first(static_cast<std::size_t>(length));
      for (TimedPacket& answer : internet_.receive(now(), bytes)) {
        waiting_.emplace(answer.due, std::move(answer.bytes));
      }
      deliverDue();
    }
  }

  // Answers of the same moment go in the order in which they were made.
  void deliverDue() {
    while (!waiting_.empty() && waiting_.begin()->first <= now()) {
      const Packet& packet = waiting_.begin()->second;
      // A packet that the interface refuses is lost, as on any wire.
      [[maybe_unused]] const ssize_t written = write(interface_, packet.data(), packet.size());
      waiting_.erase(waiting_.begin());
    }
  }

  void takeSignals() {
    signalfd_siginfo signal{};
    while (read(signals_, &signal, sizeof(signal)) == sizeof(signal)) {
      if (signal.ssi_signo == SIGCHLD) {
        int status = 0;
        if (waitpid(child_, &status, WNOHANG) == child_) exitCode_ = exitCodeOf(status);
      } else if (cameFromProcess(signal.ssi_code)) {
        kill(child_, static_cast<int>(signal.ssi_signo));
      }
    }
  }

  Internet& internet_;
  int interface_;
  int signals_;
  pid_t child_;
  Packet buffer_;
  std::multimap<Time, Packet> waiting_;  // answers by the moment they are due
  std::optional<int> exitCode_;
};

}  // namespace

int simulate(Internet& internet, int interface, const WaitedSignals& signals, pid_t child) {
  askForPunctuality();
  return Simulation(internet, interface, signals.descriptor(), child).run();
}

}  // namespace veltrin::lab
