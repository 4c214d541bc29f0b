// SPDX-License-Identifier: GPL-3.0-or-later
// What a route tool has sent and what an answer to it means.
//
// The book numbers the echoes, knows which of them are open, matches answers to
// them, and says from the round trips seen how long an answer is worth waiting
// for. The trace and the statistics of a path both write in it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <unordered_map>
#include <vector>

#include "console/network.h"

namespace veltrin {

// A moment that never comes.
inline constexpr Microseconds kNever = std::numeric_limits<Microseconds>::max();

// How long answers are waited for.
struct Patience {
  // The most that a round trip may take; an answer that takes longer is lost.
  Microseconds timeout = 4 * kSecond;
  // Waits for all of the timeout, whatever other round trips tell.
  bool exact = false;
};

// An echo that is to go out: it may pass `hop` - 1 routers.
struct Probe {
  int hop = 0;     // from 1
  int number = 0;  // which of the hop's echoes it is, from 0
  std::uint16_t sequence = 0;
};

enum class Meaning {
  Passing,  // a router at the probe's hop would have passed it on
  Arrival,  // the destination answered
  Refusal,  // a router or the destination takes no such packet
};

// The answer to a probe.
struct ProbeAnswer {
  int hop = 0;
  int number = 0;
  Address from;
  Microseconds trip = 0;
  Meaning meaning = Meaning::Passing;
  IcmpError error = IcmpError::Other;  // of a refusal
};

class ProbeBook {
 public:
  // For hops from 1 to `hops`.
  ProbeBook(int hops, const Patience& patience);

  // Enters a probe that is about to be sent, under a sequence number that no
  // other open one has.
  Probe enter(int hop, int number);

  // The probe has left at this moment.
  void left(const Probe& probe, Microseconds at);

  // Drops a probe that could not be sent.
  void drop(const Probe& probe) { open_.erase(probe.sequence); }

  // The answer that has come in. Nothing for a second one to the same probe, one
  // to no open probe, one that is too late, and a notice that is no answer.
  std::optional<ProbeAnswer> take(const Incoming& incoming);

  // How long an answer of a hop is worth waiting for: the whole timeout when it is
  // exact, and while neither the hop nor a later one has ever answered. Otherwise,
  // and at most the timeout:
  //
  // - for a hop that has answered, kTrips times its longest round trip, and
  //   kLateGrace, as routers put off answering but not passing on;
  // - for one that never has, kSilentTrips times the longest round trip of the
  //   nearest later hop that has, and kSilentLeast at least. How far away it is
  //   shows in that trip, how slow it is to answer does not: to give it up too
  //   early makes a silent hop of a slow one.
  Microseconds patienceFor(int hop) const;
  static constexpr int kTrips = 3;
  static constexpr Microseconds kLateGrace = 400 * kMillisecond;
  static constexpr int kSilentTrips = 10;
  static constexpr Microseconds kSilentLeast = 500 * kMillisecond;

  // Whether an echo to a hop has ever been answered.
  bool hasAnswered(int hop) const { return longest_[static_cast<std::size_t>(hop)] >= 0; }

  // Whether an answer of a hop is worth any wait when all else is done: not of one
  // that has never answered, unless the timeout is exact.
  bool isWorthAWait(int hop) const { return patience_.exact || hasAnswered(hop); }

  // The longest round trip of all; 0 before the first answer.
  Microseconds longestTrip() const { return longestTrip_; }

  // Open probes of a hop that are still worth waiting for.
  int underWay(int hop, Microseconds now) const;

  // The moment from which no open probe of a hop is worth waiting for; 0 when
  // there is none.
  Microseconds settledAt(int hop) const;

  // Drops all open probes, so that late answers to them mean nothing.
  void closeAll() { open_.clear(); }

 private:
  struct Open {
    int hop = 0;
    int number = 0;
    Microseconds sentAt = 0;
  };

  Patience patience_;
  std::unordered_map<std::uint16_t, Open> open_;
  // The longest round trip of each hop, from 1; negative when it has none.
  std::vector<Microseconds> longest_;
  Microseconds longestTrip_ = 0;
  std::uint16_t sequence_ = 0;
};

}  // namespace veltrin
