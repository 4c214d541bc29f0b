// SPDX-License-Identifier: GPL-3.0-or-later
// What a gauge has drawn, as texts that a test can write out.
#pragma once

#include <array>
#include <cstdio>
#include <string>
#include <variant>
#include <vector>

#include "controls/bkCProg.h"

namespace veltrin {

using Operations = std::vector<std::string>;

inline std::string toText(const Colour& colour) {
  std::array<char, 8> text{};
  std::snprintf(text.data(), text.size(), "#%02x%02x%02x", unsigned{colour.red},
                unsigned{colour.green}, unsigned{colour.blue});
  return text.data();
}
inline std::string toText(std::int32_t x, std::int32_t y) {
  return std::to_string(x) + " " + std::to_string(y);
}
inline std::string toText(const DeviceBox& box) {
  return toText(box.left, box.top) + " " + toText(box.right, box.bottom);
}

// Each operation by its name and what it takes.
struct OperationText {
  std::string operator()(const Cls& cls) const { return "Cls " + toText(cls.ground); }
  std::string operator()(const SelectPen& pen) const {
    return "SelectPen " + toText(pen.colour) + " " + std::to_string(pen.width);
  }
  std::string operator()(const SelectBrush& brush) const {
    return "SelectBrush " + (brush.colour ? toText(*brush.colour) : "none");
  }
  std::string operator()(const SelectFont& select) const {
    const DeviceFont& font = select.font;
    if (font == DeviceFont{}) return "SelectFont ambient";
    return "SelectFont " + font.family + " " + std::to_string(static_cast<int>(font.size)) +
           (font.isBold ? " bold" : "") + (font.isItalic ? " italic" : "");
  }
  std::string operator()(const SetTextColor& text) const {
    return "SetTextColor " + toText(text.colour);
  }
  std::string operator()(const MoveToEx& move) const {
    return "MoveToEx " + toText(move.x, move.y);
  }
  std::string operator()(const LineTo& line) const { return "LineTo " + toText(line.x, line.y); }
  std::string operator()(const Ellipse& ellipse) const { return "Ellipse " + toText(ellipse.box); }
  std::string operator()(const Rectangle& box) const { return "Rectangle " + toText(box.box); }
  std::string operator()(const Arc& arc) const {
    return "Arc " + toText(arc.box) + " from " + toText(arc.start.x, arc.start.y) + " to " +
           toText(arc.end.x, arc.end.y);
  }
  std::string operator()(const TextOutA& text) const {
    return "TextOutA " + toText(text.x, text.y) + " \"" + text.text + "\"";
  }
  std::string operator()(const SetStretchBltMode& stretch) const {
    return "SetStretchBltMode " + std::to_string(stretch.mode);
  }
  std::string operator()(const StretchBlt& blit) const {
    std::array<char, 12> raster{};
    std::snprintf(raster.data(), raster.size(), "%#X", blit.raster);
    return "StretchBlt " + toText(blit.box) + " " + blit.picture.name + " " +
           toText(blit.picture.width, blit.picture.height) + " " + raster.data();
  }
};

inline Operations drawn(const bkCProg& gauge) {
  Operations texts;
  for (const DeviceOperation& each : gauge.operations()) {
    texts.push_back(std::visit(OperationText(), each));
  }
  return texts;
}

}  // namespace veltrin
