// SPDX-License-Identifier: GPL-3.0-or-later
// Measures the loss and the round trips of all hops of a known path: decides which
// echo goes out when and what its answer counts for. Knows no socket, no clock and
// no text.
//
// Queries go to the hops in turn, evenly spread over rounds: each hop gets one a
// round, so that the whole takes queries times round.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "console/network.h"
#include "console/probe_book.h"

namespace veltrin {

// Counts of one hop.
struct HopFigures {
  std::uint64_t sent = 0;
  std::uint64_t received = 0;
  Microseconds trips = 0;  // all round trips together

  std::uint64_t lost() const { return sent - received; }

  bool operator==(const HopFigures&) const = default;
};

// Queries that a node lost on its own account, and those that the link before it
// lost.
struct HopLoss {
  std::uint64_t node = 0;
  std::uint64_t link = 0;

  bool operator==(const HopLoss&) const = default;
};

// Tells the losses of links from those of nodes. What a later hop answers has
// passed all links before it, so of a hop's loss the least loss of it and all
// later hops is the links', and the rest its own: it was slow to answer or did
// not care to, yet it passed packets on.
std::vector<HopLoss> lossesOf(const std::vector<HopFigures>& hops);

class RouteStatistics {
 public:
  // Of `hops` hops, 0 to as many as the book is made for; `queries` to each.
  RouteStatistics(ProbeBook& book, int hops, std::uint64_t queries, Microseconds round,
                  Microseconds start);

  // The next query, when one is due.
  std::optional<Probe> next(Microseconds now);

  // When next will have one; kNever when all were given.
  Microseconds nextAt() const;

  void sent(const Probe& probe, const Sending& sending);
  void take(const Incoming& incoming);

  // The moment at which all is over if no answer comes before; kNever while
  // queries are left. Hops that have never answered, not in the book's earlier
  // probes either, are waited for only when the book's timeout is exact.
  Microseconds overAt() const;

  // The hops' counts, nearest first. Queries that may still be answered at `now`
  // are not counted as sent.
  std::vector<HopFigures> figures(Microseconds now) const;

 private:
  ProbeBook& book_;
  std::uint64_t queries_;
  Microseconds round_;
  Microseconds start_;
  std::uint64_t given_ = 0;  // queries given, to all hops together
  std::vector<HopFigures> figures_;
};

}  // namespace veltrin
