// SPDX-License-Identifier: GPL-3.0-or-later
// A FakeNetwork whose answers a test writes down by hop, and a reader of traces.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "fake_network.h"

namespace veltrin {

// An answer and how long it takes.
struct TimedAnswer {
  Microseconds delay = 0;
  Incoming incoming;
};

inline TimedAnswer passing(const std::string& from, Microseconds delay) {
  Incoming incoming;
  incoming.from = addressOf(from);
  incoming.error = IcmpError::TtlExpired;
  return {delay, incoming};
}

inline TimedAnswer arrival(const std::string& from, Microseconds delay) {
  Incoming incoming;
  incoming.from = addressOf(from);
  return {delay, incoming};
}

inline TimedAnswer refusal(const std::string& from, Microseconds delay,
                           IcmpError error = IcmpError::HostUnreachable) {
  TimedAnswer answer = passing(from, delay);
  answer.incoming.error = error;
  return answer;
}

class PathNetwork : public FakeNetwork {
 public:
  using Answers = std::vector<TimedAnswer>;

  // What the echoes of a hop are answered with, whichever one they are.
  std::map<int, Answers> hops;
  // What echo `second` of hop `first` is answered with, counted from 0, in place
  // of the above.
  std::map<std::pair<int, int>, Answers> echoes;
  // Hops behind the last one of `hops` answer as it does.
  bool lastGoesOn = true;
  // The hop from which on sends fail.
  std::optional<int> failsFrom;
  // Decides in place of all the above when set.
  std::function<Answers(int hop, int number)> decide;

  // A path of routers 203.0.113.1, 203.0.113.2 ... that each add a round trip, and
  // the destination 192.0.2.7 as its last hop.
  void makePath(int length, Microseconds trip) {
    for (int hop = 1; hop < length; ++hop) {
      hops[hop] = {passing("203.0.113." + std::to_string(hop), hop * trip)};
    }
    hops[length] = {arrival("192.0.2.7", length * trip)};
  }

  Sending send(const EchoRequest& request) override {
    if (failsFrom && request.ttl >= *failsFrom) {
      return {SendResult::Failed, now()};
    }
    const Sending sending = FakeNetwork::send(request);
    for (TimedAnswer& answer : answersTo(request.ttl, sent_[request.ttl]++)) {
      answer.incoming.sequence = request.sequence;
      deliver(answer.delay, answer.incoming);
    }
    return sending;
  }

  // How many echoes a hop was sent.
  int sentTo(int hop) const {
    const auto found = sent_.find(hop);
    return found == sent_.end() ? 0 : found->second;
  }

 private:
  Answers answersTo(int hop, int number) const {
    if (decide) {
      return decide(hop, number);
    }
    if (const auto echo = echoes.find({hop, number}); echo != echoes.end()) {
      return echo->second;
    }
    if (const auto found = hops.find(hop); found != hops.end()) {
      return found->second;
    }
    const bool behind = !hops.empty() && hop > hops.rbegin()->first;
    return behind && lastGoesOn ? hops.rbegin()->second : Answers{};
  }

  std::map<int, int> sent_;
};

}  // namespace veltrin
