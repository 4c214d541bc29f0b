// SPDX-License-Identifier: GPL-3.0-or-later
// The curves of the Hop Stability Test, one for each hop.
#pragma once

#include <array>
#include <cstddef>

#include "forms/strip_graph.h"

namespace veltrin {

// The last reply times of each hop, in ms. They outlive the window: a new run scrolls the
// old curves out.
struct Graphit {
  static constexpr std::size_t kHops = 30;
  static constexpr std::size_t kTimes = 100;  // across a picture
  static constexpr double kHighest = 300;     // ms, at a picture's upper edge
  static constexpr Colour kGreen{0, 255, 0};

  // Takes a hop's time in and draws its curve. `hop` is 0 to 29; throws std::out_of_range
  // for others.
  void DrawUsage(std::size_t hop, std::int32_t time, PictureBox& picture) {
    graphs.at(hop).DrawUsage(time, picture, kHighest, kGreen);
  }

  std::array<StripGraph<kTimes>, kHops> graphs;
};

}  // namespace veltrin
