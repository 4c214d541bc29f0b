// SPDX-License-Identifier: GPL-3.0-or-later
// The ping tool: sends an echo a second and prints the replies and their figures.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "console/network.h"
#include "console/output.h"
#include "console/ping_options.h"

namespace veltrin {

// Exit codes of the tool.
inline constexpr int kPingAnswered = 0;  // at least one echo reply, or the usage was asked for
inline constexpr int kPingFailed = 1;    // no echo reply, or a mistake

// Counts and times of a run. An error that a host reports is an answer too, yet
// it has no time.
class PingFigures {
 public:
  void addSent() { ++sent_; }
  void addError() { ++received_; }
  void addReply(std::uint64_t milliseconds);

  std::uint64_t sent() const { return sent_; }
  std::uint64_t received() const { return received_; }
  std::uint64_t lost() const { return sent_ - received_; }
  // Whole percent, rounded down; 0 when nothing was sent.
  std::uint64_t lossPercent() const;

  // Echo replies, and their times in milliseconds; 0 when there was none.
  std::uint64_t replies() const { return replies_; }
  std::uint64_t minimum() const { return minimum_; }
  std::uint64_t maximum() const { return maximum_; }
  // Rounded down.
  std::uint64_t average() const { return replies_ == 0 ? 0 : total_ / replies_; }

 private:
  std::uint64_t sent_ = 0;
  std::uint64_t received_ = 0;
  std::uint64_t replies_ = 0;
  std::uint64_t minimum_ = 0;
  std::uint64_t maximum_ = 0;
  std::uint64_t total_ = 0;
};

class Ping {
 public:
  Ping(Network& network, Output& output) : network_(network), output_(output) {}

  // Runs the tool with its arguments, without the program's name, to the end.
  // Returns the exit code.
  int run(const std::vector<std::string>& arguments);

 private:
  enum class Step { GoOn, End };

  int start();
  bool findDestination();
  bool openNetwork();
  void announce();
  void exchangeAll();
  Step exchange(std::uint16_t sequence);
  Step awaitAnswer(std::uint16_t sequence, Microseconds sentAt);
  Step rest(Microseconds until);
  void printAnswer(const Incoming& answer, Microseconds sentAt);
  void printReply(const Incoming& reply, Microseconds elapsed);
  void printRoute(const Incoming& reply);
  void printTimes(const Incoming& reply);
  void printStatistics();
  void line(std::string text);

  Network& network_;
  Output& output_;
  PingSettings settings_;
  PingFigures figures_;
  Address destination_;
  std::string name_;  // shown beside the address; empty when there is none
  bool interrupted_ = false;
  bool readerGone_ = false;
};

}  // namespace veltrin
