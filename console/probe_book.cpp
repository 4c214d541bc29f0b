// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/probe_book.h"

#include <algorithm>

namespace veltrin {
namespace {

// What an answer means; nothing for a notice, after which the echo travels on.
std::optional<Meaning> meaningOf(const std::optional<IcmpError>& error) {
  if (!error) {
    return Meaning::Arrival;
  }
  switch (*error) {
    case IcmpError::TtlExpired:
      return Meaning::Passing;
    case IcmpError::Other:
      return std::nullopt;
    default:
      return Meaning::Refusal;
  }
}

}  // namespace

ProbeBook::ProbeBook(int hops, const Patience& patience)
    : patience_(patience), longest_(static_cast<std::size_t>(hops) + 1, -1) {}

Probe ProbeBook::enter(int hop, int number) {
  ++sequence_;
  // A number that comes round again belongs to the new probe.
  open_[sequence_] = Open{hop, number, 0};
  return Probe{hop, number, sequence_};
}

void ProbeBook::left(const Probe& probe, Microseconds at) {
  const auto entry = open_.find(probe.sequence);
  if (entry != open_.end()) {
    entry->second.sentAt = at;
  }
}

std::optional<ProbeAnswer> ProbeBook::take(const Incoming& incoming) {
  const auto entry = open_.find(incoming.sequence);
  const std::optional<Meaning> meaning = meaningOf(incoming.error);
  if (entry == open_.end() || !meaning) {
    return std::nullopt;
  }
  const Open& probe = entry->second;
  const Microseconds trip = std::max<Microseconds>(incoming.at - probe.sentAt, 0);
  if (trip > patience_.timeout) {
    return std::nullopt;
  }
  Microseconds& longest = longest_[static_cast<std::size_t>(probe.hop)];
  longest = std::max(longest, trip);
  longestTrip_ = std::max(longestTrip_, trip);
  const ProbeAnswer answer{probe.hop, probe.number, incoming.from,
                           trip,      *meaning,     incoming.error.value_or(IcmpError::Other)};
  open_.erase(entry);
  return answer;
}

Microseconds ProbeBook::patienceFor(int hop) const {
  if (patience_.exact) {
    return patience_.timeout;
  }
  const auto nearest = std::find_if(longest_.begin() + hop, longest_.end(),
                                    [](Microseconds trip) { return trip >= 0; });
  if (nearest == longest_.end()) {
    return patience_.timeout;
  }
  const Microseconds wait = hasAnswered(hop) ? kTrips * *nearest + kLateGrace
                                             : std::max(kSilentTrips * *nearest, kSilentLeast);
  return std::min(patience_.timeout, wait);
}

int ProbeBook::underWay(int hop, Microseconds now) const {
  const Microseconds patience = patienceFor(hop);
  return static_cast<int>(std::count_if(open_.begin(), open_.end(), [&](const auto& entry) {
    return entry.second.hop == hop && entry.second.sentAt + patience > now;
  }));
}

Microseconds ProbeBook::settledAt(int hop) const {
  const Microseconds patience = patienceFor(hop);
  Microseconds settled = 0;
  for (const auto& entry : open_) {
    if (entry.second.hop == hop) {
      settled = std::max(settled, entry.second.sentAt + patience);
    }
  }
  return settled;
}

}  // namespace veltrin
