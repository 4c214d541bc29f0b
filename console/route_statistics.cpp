// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/route_statistics.h"

#include <algorithm>

namespace veltrin {

std::vector<HopLoss> lossesOf(const std::vector<HopFigures>& hops) {
  std::vector<HopLoss> losses(hops.size());
  // Losses of all links up to each hop.
  std::vector<std::uint64_t> upTo(hops.size() + 1, 0);
  for (std::size_t at = hops.size(); at > 0; --at) {
    const std::uint64_t lost = hops[at - 1].lost();
    upTo[at] = at == hops.size() ? lost : std::min(lost, upTo[at + 1]);
  }
  for (std::size_t at = 0; at < hops.size(); ++at) {
    losses[at].link = upTo[at + 1] - upTo[at];
    losses[at].node = hops[at].lost() - upTo[at + 1];
  }
  return losses;
}

RouteStatistics::RouteStatistics(ProbeBook& book, int hops, std::uint64_t queries,
                                 Microseconds round, Microseconds start)
    : book_(book),
      queries_(queries),
      round_(round),
      start_(start),
      figures_(static_cast<std::size_t>(hops)) {
  book_.closeAll();
}

Microseconds RouteStatistics::nextAt() const {
  const std::uint64_t hops = figures_.size();
  if (given_ >= queries_ * hops) {
    return kNever;
  }
  const auto rounds = static_cast<Microseconds>(given_ / hops);
  const auto turn = static_cast<Microseconds>(given_ % hops);
  return start_ + rounds * round_ + turn * round_ / static_cast<Microseconds>(hops);
}

std::optional<Probe> RouteStatistics::next(Microseconds now) {
  if (now < nextAt()) {
    return std::nullopt;
  }
  const std::uint64_t hops = figures_.size();
  const int hop = static_cast<int>(given_ % hops) + 1;
  const int number = static_cast<int>(given_ / hops);
  ++given_;
  return book_.enter(hop, number);
}

void RouteStatistics::sent(const Probe& probe, const Sending& sending) {
  ++figures_[static_cast<std::size_t>(probe.hop - 1)].sent;
  if (sending.result == SendResult::Sent) {
    book_.left(probe, sending.at);
  } else {
    book_.drop(probe);
  }
}

// A refusal counts where the path ends. Before that it comes from elsewhere.
void RouteStatistics::take(const Incoming& incoming) {
  const std::optional<ProbeAnswer> answer = book_.take(incoming);
  if (!answer) {
    return;
  }
  const auto hop = static_cast<std::size_t>(answer->hop);
  if (answer->meaning == Meaning::Refusal && hop != figures_.size()) {
    return;
  }
  HopFigures& counts = figures_[hop - 1];
  ++counts.received;
  counts.trips += answer->trip;
}

Microseconds RouteStatistics::overAt() const {
  if (nextAt() != kNever) {
    return kNever;
  }
  Microseconds over = 0;
  for (int hop = 1; hop <= static_cast<int>(figures_.size()); ++hop) {
    if (book_.isWorthAWait(hop)) {
      over = std::max(over, book_.settledAt(hop));
    }
  }
  return over;
}

std::vector<HopFigures> RouteStatistics::figures(Microseconds now) const {
  std::vector<HopFigures> counts = figures_;
  for (std::size_t at = 0; at < counts.size(); ++at) {
    counts[at].sent -= static_cast<std::uint64_t>(book_.underWay(static_cast<int>(at) + 1, now));
  }
  return counts;
}

}  // namespace veltrin
