// SPDX-License-Identifier: GPL-3.0-or-later
#include "download/transfer_meter.h"

#include <algorithm>

namespace veltrin {
namespace {

constexpr std::int64_t kLeastSpan = 100;  // ms

// Bytes in a millisecond are KB in a second.
double perMillisecond(std::int64_t bytes, std::int64_t span) {
  return static_cast<double>(bytes) / static_cast<double>(span);
}

}  // namespace

void TransferMeter::start(std::int64_t now) {
  start_ = now;
  total_ = 0;
  marks_.clear();
}

void TransferMeter::count(std::int64_t arrived, std::int64_t now) {
  if (arrived <= total_) return;
  forget(now);
  if (marks_.empty() || marks_.back().moment != now) marks_.push_back({now, total_});
  total_ = arrived;
}

double TransferMeter::speed(std::int64_t now) {
  forget(now);
  if (marks_.empty()) return 0;
  return perMillisecond(total_ - marks_.front().before,
                        std::clamp(now - start_, kLeastSpan, kWindow));
}

void TransferMeter::forget(std::int64_t now) {
  while (!marks_.empty() && marks_.front().moment <= now - kWindow) marks_.pop_front();
}

double TransferMeter::mean(std::int64_t now) const {
  return perMillisecond(total_, std::max<std::int64_t>(now - start_, 1));
}

}  // namespace veltrin
