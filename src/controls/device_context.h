// SPDX-License-Identifier: GPL-3.0-or-later
// A surface that is drawn on by the operations of a device context and keeps them.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "forms/control.h"

namespace veltrin {

struct DeviceDrawing;

// A picture of a control: one of the installation, by its name, or what was drawn on a
// surface. None when it is neither.
struct DevicePicture {
  std::string name;
  std::shared_ptr<const DeviceDrawing> drawing;
  std::int32_t width = 0;  // pixels
  std::int32_t height = 0;

  bool isSet() const { return !name.empty() || drawing != nullptr; }
  friend bool operator==(const DevicePicture&, const DevicePicture&) = default;
};

// Letters of a control. Without a family they are those of the window around it, as large
// as they are there.
struct DeviceFont {
  std::string family;
  float size = 0;  // points
  bool isBold = false;
  bool isItalic = false;
  friend bool operator==(const DeviceFont&, const DeviceFont&) = default;
};

// The operations. Places and lengths are pixels, counted from the upper left corner of the
// surface; of a box, the right and the lower bound lie one pixel outside.

struct Cls {  // the whole surface
  Colour ground;
  friend bool operator==(const Cls&, const Cls&) = default;
};
struct SelectPen {  // for lines and outlines
  Colour colour;
  std::int32_t width = 1;
  friend bool operator==(const SelectPen&, const SelectPen&) = default;
};
struct SelectBrush {  // for the inside; none leaves it as it is
  std::optional<Colour> colour;
  friend bool operator==(const SelectBrush&, const SelectBrush&) = default;
};
struct SelectFont {
  DeviceFont font;
  friend bool operator==(const SelectFont&, const SelectFont&) = default;
};
struct SetTextColor {
  Colour colour;
  friend bool operator==(const SetTextColor&, const SetTextColor&) = default;
};
struct MoveToEx {  // where the next line begins
  std::int32_t x = 0;
  std::int32_t y = 0;
  friend bool operator==(const MoveToEx&, const MoveToEx&) = default;
};
struct LineTo {  // the next line begins at its end
  std::int32_t x = 0;
  std::int32_t y = 0;
  friend bool operator==(const LineTo&, const LineTo&) = default;
};
struct DeviceBox {
  std::int32_t left = 0;
  std::int32_t top = 0;
  std::int32_t right = 0;
  std::int32_t bottom = 0;
  friend bool operator==(const DeviceBox&, const DeviceBox&) = default;
};
struct Ellipse {
  DeviceBox box;
  friend bool operator==(const Ellipse&, const Ellipse&) = default;
};
struct Rectangle {
  DeviceBox box;
  friend bool operator==(const Rectangle&, const Rectangle&) = default;
};
// Part of the ellipse in a box, against the clock, between the directions in which the two
// places lie from its middle. The whole of it when these are one.
struct Arc {
  DeviceBox box;
  MoveToEx start;
  MoveToEx end;
  friend bool operator==(const Arc&, const Arc&) = default;
};
struct TextOutA {  // with its upper left corner there, and no ground behind it
  std::int32_t x = 0;
  std::int32_t y = 0;
  std::string text;
  friend bool operator==(const TextOutA&, const TextOutA&) = default;
};
struct SetStretchBltMode {
  std::int32_t mode = 0;
  friend bool operator==(const SetStretchBltMode&, const SetStretchBltMode&) = default;
};
struct StretchBlt {  // a whole picture into a box
  DeviceBox box;
  DevicePicture picture;
  std::uint32_t raster = 0;
  friend bool operator==(const StretchBlt&, const StretchBlt&) = default;
};

using DeviceOperation =
    std::variant<Cls, SelectPen, SelectBrush, SelectFont, SetTextColor, MoveToEx, LineTo, Ellipse,
                 Rectangle, Arc, TextOutA, SetStretchBltMode, StretchBlt>;

// All that a surface of that size shows.
struct DeviceDrawing {
  std::int32_t width = 0;
  std::int32_t height = 0;
  std::vector<DeviceOperation> operations;
};

// Ways to stretch a picture, by their numbers in the system.
inline constexpr std::int32_t kStretchAndOverwrite = 1;  // that of a new surface
inline constexpr std::int32_t kStretchHalftone = 4;

// The pixels of the picture take the place of what is there.
inline constexpr std::uint32_t kCopyPixels = 0xCC0020;

class DeviceContext {
 public:
  // Begins a new drawing. The pen, the brush and the letters have to be chosen anew.
  void Cls(const Colour& ground) {
    operations_.clear();
    pen_.reset();
    brush_.reset();
    operations_.emplace_back(veltrin::Cls{ground});
  }

  // What is chosen already is not recorded again.
  void SelectPen(const Colour& colour, std::int32_t width) {
    const veltrin::SelectPen pen{colour, width};
    if (pen_ == pen) return;
    pen_ = pen;
    operations_.emplace_back(pen);
  }
  void SelectBrush(const std::optional<Colour>& colour) {
    const veltrin::SelectBrush brush{colour};
    if (brush_ == brush) return;
    brush_ = brush;
    operations_.emplace_back(brush);
  }

  std::int32_t GetStretchBltMode() const { return stretchMode_; }
  void SetStretchBltMode(std::int32_t mode) {
    stretchMode_ = mode;
    operations_.emplace_back(veltrin::SetStretchBltMode{mode});
  }

  // Any other operation.
  void draw(DeviceOperation operation) { operations_.push_back(std::move(operation)); }

  const std::vector<DeviceOperation>& operations() const { return operations_; }

  // Gives the operations away and takes the memory of old ones.
  void swapOperations(std::vector<DeviceOperation>& others) { operations_.swap(others); }

 private:
  std::vector<DeviceOperation> operations_;
  std::optional<veltrin::SelectPen> pen_;
  std::optional<veltrin::SelectBrush> brush_;
  std::int32_t stretchMode_ = kStretchAndOverwrite;
};

}  // namespace veltrin
