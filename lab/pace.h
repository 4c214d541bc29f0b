// SPDX-License-Identifier: GPL-3.0-or-later
// How fast an answer goes out.
#pragma once

#include <cstdint>

#include "lab/web_site.h"

namespace veltrin::lab {

// Tells how many bytes of one file may go out at a moment, so that it comes at its rate
// and pauses where it is to pause. Knows no clock; moments never run backwards.
class Pace {
 public:
  // From the moment `begin` on.
  Pace(const WebSite& site, Time begin);

  // How many bytes may go out now. A client that does not take them, or a busy machine,
  // loses what it was behind by more than kMostBehind.
  std::uint64_t allowed(Time now);

  // So many went out, no more than were allowed.
  void sent(std::uint64_t bytes, Time now);

  // When it is worth asking again after nothing was allowed.
  Time next(Time now) const;

  static constexpr Time kMostBehind = std::chrono::milliseconds(250);

  // Bytes go out so often.
  static constexpr Time kTick = std::chrono::milliseconds(5);

 private:
  void pauseWhenDue(Time now);

  std::uint64_t rate_;
  std::optional<WebStall> stall_;  // until it has come
  std::uint64_t total_ = 0;
  Time due_;  // when the next byte is due
};

}  // namespace veltrin::lab
