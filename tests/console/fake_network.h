// SPDX-License-Identifier: GPL-3.0-or-later
// A Network with a virtual clock whose answers a test writes down beforehand, and
// an Output that keeps what is written.
#pragma once

#include <algorithm>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "console/network.h"
#include "console/output.h"

namespace veltrin {

inline Address addressOf(const std::string& text) {
  const std::optional<Address> address = Address::parse(text);
  if (!address) {
    throw std::invalid_argument(text);
  }
  return *address;
}

class FakeNetwork : public Network {
 public:
  // The answer to every name and address.
  std::map<std::string, std::string> names;         // name to address
  std::map<std::string, std::string> reverseNames;  // address to name
  std::map<std::string, Microseconds> nameDelays;   // of lookups beside the echoes; 0
  OpenResult openResult = OpenResult::Opened;

  // How an echo is sent; Sent when nothing is said.
  std::map<std::uint16_t, SendResult> sendResults;
  // The moment of the user's Ctrl-C.
  std::optional<Microseconds> interruptAt;

  // Whether a wait hands an answer over even when it came behind the deadline, as
  // it may when the machine is busy.
  bool handsOverLate = false;

  // This machine.
  std::optional<Address> machine = addressOf("198.51.100.20");

  // What was asked of it.
  std::vector<std::string> lookups;
  std::vector<EchoRequest> requests;
  std::vector<Microseconds> sendTimes;
  std::optional<Address> source;
  std::optional<Family> openedFamily;
  FamilyChoice askedFamily = FamilyChoice::Any;

  // Answers echo `sequence` so many microseconds after it was sent.
  void answer(std::uint16_t sequence, Microseconds delay, Incoming incoming) {
    incoming.sequence = sequence;
    script_.emplace(sequence, std::pair(delay, incoming));
  }

  void reply(std::uint16_t sequence, Microseconds delay, const std::string& from = "192.0.2.7",
             std::size_t size = 32, int ttl = 56) {
    Incoming incoming;
    incoming.from = addressOf(from);
    incoming.size = size;
    incoming.ttl = ttl;
    answer(sequence, delay, incoming);
  }

  void error(std::uint16_t sequence, Microseconds delay, IcmpError error,
             const std::string& from = "192.0.2.1") {
    Incoming incoming;
    incoming.from = addressOf(from);
    incoming.error = error;
    answer(sequence, delay, incoming);
  }

  std::optional<Destination> resolve(const std::string& name, FamilyChoice choice) override {
    askedFamily = choice;
    if (const auto address = Address::parse(name)) {
      return Destination{*address, true};
    }
    const auto found = names.find(name);
    if (found == names.end()) {
      return std::nullopt;
    }
    return Destination{addressOf(found->second), false};
  }

  std::optional<std::string> nameOf(const Address& address) override {
    const auto found = reverseNames.find(address.text());
    return found == reverseNames.end() ? std::nullopt : std::optional(found->second);
  }

  void beginNameOf(const Address& address) override {
    lookups.push_back(address.text());
    const auto delay = nameDelays.find(address.text());
    const Microseconds due = now_ + (delay == nameDelays.end() ? 0 : delay->second);
    namesUnderWay_.emplace(due, NameAnswer{address, nameOf(address)});
  }

  std::optional<NameAnswer> takeName() override {
    if (namesUnderWay_.empty() || namesUnderWay_.begin()->first > now_) {
      return std::nullopt;
    }
    NameAnswer answer = namesUnderWay_.begin()->second;
    namesUnderWay_.erase(namesUnderWay_.begin());
    return answer;
  }

  std::optional<Address> sourceFor(const Address& /*destination*/) override { return machine; }

  std::string hostName() override { return "mypc"; }

  OpenResult open(Family family, const std::optional<Address>& from) override {
    openedFamily = family;
    source = from;
    return openResult;
  }

  Sending send(const EchoRequest& request) override {
    requests.push_back(request);
    sendTimes.push_back(now_);
    const auto result = sendResults.find(request.sequence);
    if (result != sendResults.end()) {
      return {result->second, now_};
    }
    const auto [first, last] = script_.equal_range(request.sequence);
    for (auto entry = first; entry != last; ++entry) {
      deliver(entry->second.first, entry->second.second);
    }
    return {SendResult::Sent, now_};
  }

  WaitEnd wait(Microseconds deadline, Incoming& incoming) override {
    const bool arrives =
        !underWay_.empty() && (handsOverLate || underWay_.begin()->first <= deadline);
    Microseconds next = arrives ? underWay_.begin()->first : deadline;
    const bool named = !namesUnderWay_.empty() && namesUnderWay_.begin()->first <= next;
    next = named ? namesUnderWay_.begin()->first : next;
    if (interruptAt && *interruptAt <= next) {
      now_ = std::max(now_, *interruptAt);
      return WaitEnd::Interrupted;
    }
    now_ = std::max(now_, next);
    if (named) {
      return WaitEnd::NameCame;
    }
    if (!arrives) {
      return WaitEnd::TimedOut;
    }
    incoming = underWay_.begin()->second;
    underWay_.erase(underWay_.begin());
    return WaitEnd::Arrived;
  }

  void rest(Microseconds until) override {
    now_ = std::max(now_, interruptAt ? std::min(until, *interruptAt) : until);
  }

  Microseconds now() override { return now_; }

 protected:
  // An answer that comes so long from now.
  void deliver(Microseconds delay, Incoming incoming) {
    incoming.at = now_ + delay;
    underWay_.emplace(incoming.at, incoming);
  }

 private:
  std::multimap<std::uint16_t, std::pair<Microseconds, Incoming>> script_;
  std::multimap<Microseconds, Incoming> underWay_;
  std::multimap<Microseconds, NameAnswer> namesUnderWay_;
  Microseconds now_ = 1'000'000;
};

// Keeps each written piece; fails from the piece with this number on.
class KeptOutput : public Output {
 public:
  std::vector<std::string> pieces;
  std::size_t failFrom = static_cast<std::size_t>(-1);
  std::size_t attempts = 0;
  // How many pieces were written when the reader was given a moment.
  std::optional<std::size_t> caughtUpAfter;

  bool write(std::string_view text) override {
    ++attempts;
    if (pieces.size() >= failFrom) {
      return false;
    }
    pieces.emplace_back(text);
    return true;
  }

  void letReaderCatchUp() override { caughtUpAfter = pieces.size(); }

  std::string text() const {
    std::string all;
    for (const std::string& piece : pieces) {
      all += piece;
    }
    return all;
  }
};

}  // namespace veltrin
