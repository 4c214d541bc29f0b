// SPDX-License-Identifier: GPL-3.0-or-later
// A bar that fills as work goes on.
#pragma once

#include <cstdint>

#include "forms/control.h"

namespace veltrin {

// Sets the colour of a bar's filling: its last parameter is the colour (PBM_SETBARCOLOR,
// commctrl.h).
inline constexpr std::uint32_t kSetBarColour = 1033;

class ProgressBar : public Control {
 public:
  static constexpr Colour kUsualColour{0, 0, 128};

  Property<double> minimum{0};
  Property<double> maximum{100};
  Property<double> value{0};  // from minimum to maximum
  Property<Colour> barColour{kUsualColour};

  // Gives the bar a message of the system, as SendMessageA does. A colour is a number of
  // blue, green and red, 8 bits each, red the lowest (COLORREF). Others do nothing.
  void SendMessageA(std::uint32_t message, std::uint32_t /*wParam*/, std::uint32_t lParam) {
    if (message != kSetBarColour) return;
    const auto part = [lParam](unsigned shift) {
      return static_cast<std::uint8_t>((lParam >> shift) & 0xFFU);
    };
    barColour = Colour{part(0), part(8), part(16)};
  }
};

}  // namespace veltrin
