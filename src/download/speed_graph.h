// SPDX-License-Identifier: GPL-3.0-or-later
// The curves of the download test: six lengths of time, six heights of speed.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "forms/strip_graph.h"
#include "text/loose.h"

namespace veltrin {

// Speeds at the upper edge of a picture, in Kb/s, one for each scale.
inline constexpr std::array<int, 6> kSpeedHeights = {100000, 50000, 30000, 15000, 10000, 5000};

// The last samples in Kb/s, one array for each picture. They outlive the window: a new run
// scrolls the old curve out. A picture's index is any loose value; for one that is not 0 to
// 5, nothing happens.
class SpeedGraph {
 public:
  static constexpr Colour kGreen{0, 255, 0};

  StripGraph<100> UsageA;   // 10 s at ten samples a second
  StripGraph<175> UsageB;   // 17.5 s
  StripGraph<300> UsageC;   // 30 s
  StripGraph<1500> UsageD;  // 2.5 min
  StripGraph<3000> UsageE;  // 5 min
  StripGraph<6000> UsageF;  // 10 min

  // Takes a sample into the array of a picture and draws its curve, for a scale of 0 to 5.
  void DrawUsage(std::size_t scale, std::int32_t value, PictureBox& picture, const Loose& index) {
    const double height = kSpeedHeights.at(scale);
    const auto drawFor = [&](int place, auto& graph) {
      if (index == Loose(place)) graph.DrawUsage(value, picture, height, kGreen);
    };
    drawFor(0, UsageA);
    drawFor(1, UsageB);
    drawFor(2, UsageC);
    drawFor(3, UsageD);
    drawFor(4, UsageE);
    drawFor(5, UsageF);
  }

  // The same under the name of each scale.
  void DrawUsage1A(std::int32_t value, PictureBox& picture, const Loose& index) {
    DrawUsage(0, value, picture, index);
  }
  void DrawUsage1B(std::int32_t value, PictureBox& picture, const Loose& index) {
    DrawUsage(1, value, picture, index);
  }
  void DrawUsage1C(std::int32_t value, PictureBox& picture, const Loose& index) {
    DrawUsage(2, value, picture, index);
  }
  void DrawUsage1D(std::int32_t value, PictureBox& picture, const Loose& index) {
    DrawUsage(3, value, picture, index);
  }
  void DrawUsage1E(std::int32_t value, PictureBox& picture, const Loose& index) {
    DrawUsage(4, value, picture, index);
  }
  void DrawUsage1F(std::int32_t value, PictureBox& picture, const Loose& index) {
    DrawUsage(5, value, picture, index);
  }

  // Moves every sample of an array one place to the left; the last one keeps its value.
  void ShiftPoints1A() { UsageA.ShiftPoints(); }
  void ShiftPoints1B() { UsageB.ShiftPoints(); }
  void ShiftPoints1C() { UsageC.ShiftPoints(); }
  void ShiftPoints1D() { UsageD.ShiftPoints(); }
  void ShiftPoints1E() { UsageE.ShiftPoints(); }
  void ShiftPoints1F() { UsageF.ShiftPoints(); }
};

}  // namespace veltrin
