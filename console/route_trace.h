// SPDX-License-Identifier: GPL-3.0-or-later
// Finds out a path: decides which echo goes out next and when, and what each of
// the hops has answered. Knows no socket, no clock and no text.
//
// Probes of many hops are under way at once. They go out kPace apart, first ones
// of all hops before second ones, up to kAhead hops behind the furthest that has
// answered, so that a destination near by is not flooded by probes of hops that
// it does not have. When nothing comes from there for a while, the trace looks
// kAhead hops further: after kQuietTrips times the longest round trip so far, and
// kQuietGrace, but kLongestQuiet at most. No hop is given up by that.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "console/network.h"
#include "console/probe_book.h"

namespace veltrin {

// Probes for each hop.
inline constexpr int kProbesOfHop = 3;

class RouteTrace {
 public:
  static constexpr Microseconds kPace = 500;
  static constexpr int kAhead = 8;
  static constexpr int kQuietTrips = 3;
  static constexpr Microseconds kQuietGrace = 100 * kMillisecond;
  static constexpr Microseconds kLongestQuiet = 500 * kMillisecond;

  // Of at most `hops` hops, 1 to 255. The book is made for as many.
  RouteTrace(ProbeBook& book, int hops, Microseconds start);

  // The next probe, when one is due.
  std::optional<Probe> next(Microseconds now);

  // When next will have one if no answer comes before; kNever when none is left.
  Microseconds nextAt() const;

  // How the sending of a probe went.
  void sent(const Probe& probe, const Sending& sending);

  // False for an answer that means nothing here, such as a second one.
  bool take(const Incoming& incoming);

  enum class Fate {
    Open,      // not sent yet, or an answer may still come
    Answered,  // answer() has it
    Lost,      // no answer in time; one that comes yet is taken all the same
    Failed,    // this machine could not send it
  };
  Fate fate(int hop, int number, Microseconds now) const;

  // When an open fate becomes a lost one if no answer comes before; kNever while
  // the probe has not been sent.
  Microseconds lostAt(int hop, int number) const;

  // The answer to a probe whose fate is Answered.
  const ProbeAnswer& answer(int hop, int number) const { return *column(hop, number).answer; }

  // The hop at which the path ends as far as is known: the first that the
  // destination answered at, that was refused, or that could not be sent to. The
  // last hop before there is one.
  int end() const { return end_; }

  // The furthest hop that has answered, at most end(); 0 for none.
  int furthest() const { return furthest_ < end_ ? furthest_ : end_; }

  // Says that a hop is being told of: the path does not end before it any more.
  void tell(int hop) { told_ = hop; }

 private:
  struct Column {
    bool taken = false;
    bool failed = false;
    Microseconds sentAt = kNever;
    std::optional<ProbeAnswer> answer;
  };

  Column& column(int hop, int number);
  const Column& column(int hop, int number) const;
  std::optional<Probe> waiting() const;
  Microseconds widenAt() const;
  void endAt(int hop);

  ProbeBook& book_;
  int hops_;
  int end_;
  int window_;  // the last hop that may be probed now
  int furthest_ = 0;
  int told_ = 0;
  Microseconds paceAt_;                                    // the earliest moment of the next probe
  Microseconds newsAt_;                                    // of the last probe or widening
  std::vector<std::array<Column, kProbesOfHop>> columns_;  // hop 1 first
};

}  // namespace veltrin
