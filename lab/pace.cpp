// SPDX-License-Identifier: GPL-3.0-or-later
#include "lab/pace.h"

#include <algorithm>

namespace veltrin::lab {
namespace {

constexpr auto kSecond = static_cast<std::uint64_t>(Time(std::chrono::seconds(1)).count());

}  // namespace

Pace::Pace(const WebSite& site, Time begin) : rate_(site.rate), stall_(site.stall), due_(begin) {
  pauseWhenDue(begin);
}

std::uint64_t Pace::allowed(Time now) {
  if (now < due_) return 0;
  due_ = std::max(due_, now - kMostBehind);
  const auto waited = static_cast<std::uint64_t>((now - due_).count());
  const std::uint64_t bytes = waited * rate_ / kSecond;
  return stall_ ? std::min(bytes, stall_->after - total_) : bytes;
}

void Pace::sent(std::uint64_t bytes, Time now) {
  total_ += bytes;
  due_ += Time(static_cast<Time::rep>(bytes * kSecond / rate_));
  pauseWhenDue(now);
}

Time Pace::next(Time now) const { return std::max(due_, now + kTick); }

// The pause begins when the byte before it has gone.
void Pace::pauseWhenDue(Time now) {
  if (!stall_ || total_ < stall_->after) return;
  due_ = now + stall_->length;
  stall_.reset();
}

}  // namespace veltrin::lab
