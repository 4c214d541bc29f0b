// SPDX-License-Identifier: GPL-3.0-or-later
#include "lab/simulation.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <map>
#include <optional>
#include <poll.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

#include "lab/clock.h"

namespace veltrin::lab {
namespace {

constexpr std::size_t kLongestPacket = 65536;
constexpr int kPacketsAtATime = 64;

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
  Simulation(Internet& internet, const Interfaces& interfaces, int signals, pid_t child)
      : internet_(internet),
        interfaces_(interfaces),
        signals_(signals),
        child_(child),
        buffer_(kLongestPacket) {}

  int run() {
    while (!exitCode_) {
      deliverDue();
      waitForWork();
      takePackets(Side::Machine);
      takePackets(Side::Servers);
      takeSignals();
    }
    return *exitCode_;
  }

 private:
  int interfaceOf(Side side) const {
    return side == Side::Machine ? interfaces_.machine : interfaces_.servers;
  }

  // Until a packet or a signal comes or the next answer is due.
  void waitForWork() {
    std::array<pollfd, 3> sources{{{interfaces_.machine, POLLIN, 0},
                                   {interfaces_.servers, POLLIN, 0},
                                   {signals_, POLLIN, 0}}};
    timespec limit{};
    if (!waiting_.empty()) {
      limit = timespecOf(std::max(waiting_.begin()->first - now(), Time::zero()));
    }
    ppoll(sources.data(), sources.size(), waiting_.empty() ? nullptr : &limit, nullptr);
  }

  // A bounded number at a time, so that a flood does not keep signals waiting.
  void takePackets(Side from) {
    const int interface = interfaceOf(from);
    if (interface < 0) return;
    for (int taken = 0; taken < kPacketsAtATime; ++taken) {
      const ssize_t length = read(interface, buffer_.data(), buffer_.size());
      if (length <= 0) return;
      const Bytes bytes = Bytes(buffer_).first(static_cast<std::size_t>(length));
      for (TimedPacket& packet : from == Side::Machine
                                     ? internet_.receive(now(), bytes)
                                     : internet_.receiveFromServers(now(), bytes)) {
        waiting_.emplace(packet.due, std::move(packet));
      }
      deliverDue();
    }
  }

  // Answers of the same moment go in the order in which they were made.
  void deliverDue() {
    while (!waiting_.empty() && waiting_.begin()->first <= now()) {
      const auto& [due, packet, to] = waiting_.begin()->second;
      // A packet that the interface refuses is lost, as on any wire.
      [[maybe_unused]] const ssize_t written = write(interfaceOf(to), packet.data(), packet.size());
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
  Interfaces interfaces_;
  int signals_;
  pid_t child_;
  Packet buffer_;
  std::multimap<Time, TimedPacket> waiting_;  // by the moment they are due
  std::optional<int> exitCode_;
};

}  // namespace

int simulate(Internet& internet, const Interfaces& interfaces, const WaitedSignals& signals,
             pid_t child) {
  askForPunctuality();
  return Simulation(internet, interfaces, signals.descriptor(), child).run();
}

}  // namespace veltrin::lab
