// SPDX-License-Identifier: GPL-3.0-or-later
// How fast bytes come in.
#pragma once

#include <cstdint>
#include <deque>

namespace veltrin {

// Speeds in KB/s, a KB being 1000 bytes, from the count of the bytes that have come and a
// clock in milliseconds that never goes back.
class TransferMeter {
 public:
  static constexpr std::int64_t kWindow = 500;  // ms that the present speed is taken over

  // Begins anew with a read that starts at this moment.
  void start(std::int64_t now);

  // So many bytes of the read have come by now.
  void count(std::int64_t arrived, std::int64_t now);

  std::int64_t total() const { return total_; }

  // Of what came in the last half second, or since the start when that is less. A tenth of
  // a second is the least that is counted with, so that a first burst is no miracle.
  double speed(std::int64_t now);

  // Of the whole read to this moment; one that took no time counts as a millisecond.
  double mean(std::int64_t now) const;

 private:
  // Bytes that had come before a moment.
  struct Mark {
    std::int64_t moment = 0;
    std::int64_t before = 0;
  };

  // Drops what lies before the window.
  void forget(std::int64_t now);

  std::int64_t start_ = 0;
  std::int64_t total_ = 0;
  std::deque<Mark> marks_;  // one for each millisecond of the window in which some came
};

}  // namespace veltrin
