// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/update_endpoint/caller_book.h"

namespace veltrin::endpoint {
namespace {

constexpr std::uint32_t kGenerationMask = 0x7FFF'FFFF;

}  // namespace

CallerId CallerId::unpacked(std::uint64_t number) {
  return {static_cast<std::uint32_t>(number), static_cast<std::uint32_t>(number >> 32)};
}

bool CallerBook::hasRoomFor(const Address& address) const {
  const auto found = standing_.find(address.household());
  return found == standing_.end() || found->second < limits_.mostPerAddress;
}

std::uint32_t CallerBook::freeSlot() {
  if (firstFree_ == kNone) {
    entries_.emplace_back();
    return static_cast<std::uint32_t>(entries_.size() - 1);
  }
  const std::uint32_t slot = firstFree_;
  firstFree_ = entries_[slot].behind;
  return slot;
}

CallerId CallerBook::add(const Address& address, Moment now) {
  const std::uint32_t slot = freeSlot();
  Entry& entry = entries_[slot];
  entry.household = address.household();
  entry.due = now + limits_.timeout;
  entry.drained = 0;
  entry.before = newest_;
  entry.behind = kNone;
  entry.taken = true;
  (newest_ == kNone ? oldest_ : entries_[newest_].behind) = slot;
  newest_ = slot;
  ++standing_[entry.household];
  ++size_;
  return {slot, entry.generation};
}

bool CallerBook::holds(CallerId id) const {
  return id.slot < entries_.size() && entries_[id.slot].taken &&
         entries_[id.slot].generation == id.generation;
}

void CallerBook::remove(CallerId id) {
  Entry& entry = entries_.at(id.slot);
  const auto household = standing_.find(entry.household);
  if (--household->second == 0) standing_.erase(household);
  (entry.before == kNone ? oldest_ : entries_[entry.before].behind) = entry.behind;
  (entry.behind == kNone ? newest_ : entries_[entry.behind].before) = entry.before;
  entry.generation = (entry.generation + 1) & kGenerationMask;
  entry.taken = false;
  entry.behind = firstFree_;
  firstFree_ = id.slot;
  --size_;
}

bool CallerBook::drained(CallerId id, std::size_t bytes) {
  Entry& entry = entries_.at(id.slot);
  const bool before = entry.drained >= kMostDrained;
  entry.drained += bytes;
  return !before && entry.drained >= kMostDrained;
}

std::optional<CallerId> CallerBook::oldest() const {
  if (oldest_ == kNone) return std::nullopt;
  return CallerId{oldest_, entries_[oldest_].generation};
}

std::optional<CallerId> CallerBook::overdue(Moment now) const {
  const auto due = nextDue();
  return due && *due <= now ? oldest() : std::nullopt;
}

std::optional<Moment> CallerBook::nextDue() const {
  if (oldest_ == kNone) return std::nullopt;
  return entries_[oldest_].due;
}

}  // namespace veltrin::endpoint
