// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/route_trace.h"

#include <algorithm>

namespace veltrin {

RouteTrace::RouteTrace(ProbeBook& book, int hops, Microseconds start)
    : book_(book),
      hops_(hops),
      end_(hops),
      window_(std::min(kAhead, hops)),
      paceAt_(start),
      newsAt_(start),
      columns_(static_cast<std::size_t>(hops)) {}

RouteTrace::Column& RouteTrace::column(int hop, int number) {
  return columns_[static_cast<std::size_t>(hop - 1)][static_cast<std::size_t>(number)];
}

const RouteTrace::Column& RouteTrace::column(int hop, int number) const {
  return columns_[static_cast<std::size_t>(hop - 1)][static_cast<std::size_t>(number)];
}

// The probe that is first in turn among those that may go; without a sequence.
std::optional<Probe> RouteTrace::waiting() const {
  const int last = std::min(window_, end_);
  for (int number = 0; number < kProbesOfHop; ++number) {
    for (int hop = 1; hop <= last; ++hop) {
      if (!column(hop, number).taken) {
        return Probe{hop, number, 0};
      }
    }
  }
  return std::nullopt;
}

// When the trace looks further although nothing has come from there.
Microseconds RouteTrace::widenAt() const {
  const Microseconds quiet = kQuietTrips * book_.longestTrip() + kQuietGrace;
  return newsAt_ + std::min(quiet, kLongestQuiet);
}

std::optional<Probe> RouteTrace::next(Microseconds now) {
  if (now < nextAt()) {
    return std::nullopt;
  }
  std::optional<Probe> probe = waiting();
  if (!probe) {
    window_ = std::min(window_ + kAhead, hops_);
    probe = waiting();
  }
  column(probe->hop, probe->number).taken = true;
  paceAt_ = now + kPace;
  newsAt_ = now;
  return book_.enter(probe->hop, probe->number);
}

Microseconds RouteTrace::nextAt() const {
  if (waiting()) {
    return paceAt_;
  }
  return window_ < end_ ? widenAt() : kNever;
}

void RouteTrace::sent(const Probe& probe, const Sending& sending) {
  Column& sentColumn = column(probe.hop, probe.number);
  sentColumn.sentAt = sending.at;
  if (sending.result == SendResult::Sent) {
    book_.left(probe, sending.at);
    return;
  }
  book_.drop(probe);
  sentColumn.failed = true;
  endAt(probe.hop);
}

bool RouteTrace::take(const Incoming& incoming) {
  const std::optional<ProbeAnswer> answer = book_.take(incoming);
  if (!answer) {
    return false;
  }
  column(answer->hop, answer->number).answer = answer;
  if (answer->meaning != Meaning::Passing) {
    endAt(answer->hop);
  }
  furthest_ = std::max(furthest_, answer->hop);
  if (window_ < answer->hop + kAhead) {
    window_ = std::min(answer->hop + kAhead, hops_);
    newsAt_ = std::max(newsAt_, incoming.at);
  }
  return true;
}

void RouteTrace::endAt(int hop) { end_ = std::min(end_, std::max(hop, told_)); }

RouteTrace::Fate RouteTrace::fate(int hop, int number, Microseconds now) const {
  const Column& probe = column(hop, number);
  if (probe.answer) {
    return Fate::Answered;
  }
  if (probe.failed) {
    return Fate::Failed;
  }
  return now < lostAt(hop, number) ? Fate::Open : Fate::Lost;
}

Microseconds RouteTrace::lostAt(int hop, int number) const {
  const Microseconds sentAt = column(hop, number).sentAt;
  return sentAt == kNever ? kNever : sentAt + book_.patienceFor(hop);
}

}  // namespace veltrin
