// SPDX-License-Identifier: GPL-3.0-or-later
// Who stands at the server, and who has to go. Knows no socket and no clock.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "tools/update_endpoint/address.h"
#include "tools/update_endpoint/limits.h"

namespace veltrin::endpoint {

using Moment = std::chrono::steady_clock::time_point;

// Names one caller. Slots are used again, generations are not, so that the name of
// one who has gone is never another's.
struct CallerId {
  std::uint32_t slot = 0;
  std::uint32_t generation = 0;  // 31 bits

  bool operator==(const CallerId&) const = default;

  // The name as one number below 2^63, and back.
  std::uint64_t packed() const { return std::uint64_t{generation} << 32 | slot; }
  static CallerId unpacked(std::uint64_t number);
};

// A list of the callers in the order in which they came. As all may stand equally
// long, that is also the order in which their times run out. Every step takes the
// same time however many stand, but for the count of a household: a tree, as its
// keys are chosen by strangers, who could aim at the weak spots of a hash. Memory
// grows to the most that ever stood at once, and no further.
class CallerBook {
 public:
  explicit CallerBook(const Limits& limits) : limits_(limits) {}

  std::size_t size() const { return size_; }

  // Whether as many stand as may.
  bool isFull() const { return size_ >= limits_.mostCallers; }

  // Whether one more from this address may stand.
  bool hasRoomFor(const Address& address) const;

  // Enters a caller who came now. The limits are the server's to ask about before.
  CallerId add(const Address& address, Moment now);

  // Whether this caller still stands.
  bool holds(CallerId id) const;

  // Strikes a caller who stands.
  void remove(CallerId id);

  // Tells that so many bytes of a caller who stands were read. Whether this is the
  // moment at which to stop reading it; true at most once for each caller.
  bool drained(CallerId id, std::size_t bytes);

  // The one who stands longest; nothing when nobody stands.
  std::optional<CallerId> oldest() const;

  // The one who stands longest when its time is over.
  std::optional<CallerId> overdue(Moment now) const;

  // When the next caller's time is over; nothing when nobody stands.
  std::optional<Moment> nextDue() const;

 private:
  static constexpr std::uint32_t kNone = UINT32_MAX;

  struct Entry {
    Address household;
    Moment due;
    std::size_t drained = 0;       // bytes
    std::uint32_t before = kNone;  // the slot of the one who came before
    std::uint32_t behind = kNone;  // who came next; of a free slot: the next free one
    std::uint32_t generation = 0;  // grows with each caller who leaves
    bool taken = false;
  };

  std::uint32_t freeSlot();

  Limits limits_;
  std::vector<Entry> entries_;
  std::map<Address, std::size_t> standing_;  // callers by household
  std::size_t size_ = 0;
  std::uint32_t oldest_ = kNone;
  std::uint32_t newest_ = kNone;
  std::uint32_t firstFree_ = kNone;
};

}  // namespace veltrin::endpoint
