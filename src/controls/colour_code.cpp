// SPDX-License-Identifier: GPL-3.0-or-later
#include "controls/colour_code.h"

#include <array>
#include <cmath>

namespace veltrin {
namespace {

constexpr ColourCode kSystemBit = 0x80000000;

constexpr Colour kGround{0xEC, 0xEB, 0xE6};
constexpr Colour kPaper{0xFF, 0xFF, 0xFF};
constexpr Colour kInk{0x23, 0x22, 0x1E};
constexpr Colour kPaleInk{0x62, 0x5F, 0x50};
constexpr Colour kDarkEdge{0x6F, 0x6C, 0x60};
constexpr Colour kControl{0xE2, 0xDF, 0xD0};
constexpr Colour kRule{0xCB, 0xC7, 0xB8};
constexpr Colour kShade{0xA8, 0xA4, 0x8F};
constexpr Colour kAccent{0x2F, 0x5F, 0x7D};
constexpr Colour kTip{0xFF, 0xFD, 0xF2};

// In the order of the system's numbers.
constexpr std::array<Colour, 25> kSystemColours{{
    kControl,   // scroll bar
    kGround,    // desktop
    kAccent,    // caption of the active window
    kRule,      // caption of another window
    kGround,    // menu
    kPaper,     // inside of a window
    kShade,     // frame of a window
    kInk,       // text in menus
    kInk,       // text in windows
    kPaper,     // text in the active caption
    kControl,   // border of the active window
    kControl,   // border of another window
    kShade,     // ground of many windows in one
    kAccent,    // selection
    kPaper,     // selected text
    kGround,    // face of buttons
    kShade,     // shadow of buttons
    kPaleInk,   // disabled text
    kInk,       // text on buttons
    kPaleInk,   // text in another caption
    kPaper,     // light edge of buttons
    kDarkEdge,  // darkest shadow
    kControl,   // light of three-dimensional edges
    kInk,       // text of tips
    kTip,       // ground of tips
}};

std::uint8_t byteOf(ColourCode code, int shift) {
  return static_cast<std::uint8_t>(code >> shift & 0xFFU);
}

std::uint8_t between(float share, std::uint8_t to, std::uint8_t from) {
  return static_cast<std::uint8_t>(std::nearbyint((1.0 - share) * from + double{share} * to));
}

}  // namespace

Colour translated(ColourCode code) {
  if ((code & kSystemBit) == 0) return {byteOf(code, 0), byteOf(code, 8), byteOf(code, 16)};
  const ColourCode number = code & ~kSystemBit;
  return number < kSystemColours.size() ? kSystemColours.at(number) : Colour{};
}

Colour blend(float share, const Colour& to, const Colour& from) {
  if (share >= 1) return to;
  if (!(share > 0)) return from;
  return {between(share, to.red, from.red), between(share, to.green, from.green),
          between(share, to.blue, from.blue)};
}

}  // namespace veltrin
