// SPDX-License-Identifier: GPL-3.0-or-later
// A curve of the last values, which goes to the left by one place with each new value.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "forms/picture_box.h"

namespace veltrin {

// The values, the newest last; all 0 at first.
template <std::size_t Count>
class StripGraph {
 public:
  // Moves every value one place to the left. The last one keeps its value.
  void ShiftPoints() {
    for (std::size_t at = 0; at + 1 < Count; ++at) points_[at] = points_[at + 1];
  }

  // Takes a new value in and draws the whole curve anew: value 0 stands `height` units
  // below the picture's upper edge.
  void DrawUsage(std::int32_t value, PictureBox& picture, double height, Colour colour) {
    ShiftPoints();
    points_[Count - 1] = value;
    picture.Cls();
    for (std::size_t at = 0; at + 1 < Count; ++at) {
      picture.Line(placeOf(at, height), placeOf(at + 1, height), colour);
    }
  }

  const std::array<std::int32_t, Count>& points() const { return points_; }

 private:
  PicturePoint placeOf(std::size_t at, double height) const {
    return {static_cast<double>(at), height - points_[at]};
  }

  std::array<std::int32_t, Count> points_{};
};

}  // namespace veltrin
