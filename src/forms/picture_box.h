// SPDX-License-Identifier: GPL-3.0-or-later
// A picture that the program draws.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "forms/control.h"

namespace veltrin {

// A place in a picture, in its user scale.
struct PicturePoint {
  double x = 0;
  double y = 0;
  friend bool operator==(const PicturePoint&, const PicturePoint&) = default;
};

// Lines that go on from each other in one colour, as they were drawn; two points at least.
struct Polyline {
  Colour colour;
  std::vector<PicturePoint> points;
  friend bool operator==(const Polyline&, const Polyline&) = default;
};

// Units across and down a picture, counted from its upper left corner. What lies outside
// is cut off.
struct UserScale {
  double width = 1;
  double height = 1;
  friend bool operator==(const UserScale&, const UserScale&) = default;
};

class PictureBox : public Control {
 public:
  Property<UserScale> scale;
  Property<std::optional<Colour>> backColour;  // none: that of the system's menu texts

  // Takes away all that was drawn.
  void Cls() {
    count_ = 0;
    tell();
  }

  // Draws a line from one place to another.
  void Line(PicturePoint from, PicturePoint to, Colour colour) {
    if (!goesOn(from, colour)) begin(from, colour);
    lines_[count_ - 1].points.push_back(to);
    tell();
  }

  // What was drawn since the last Cls, good until the next drawing.
  std::span<const Polyline> lines() const { return {lines_.data(), count_}; }

  // Sets the observer of the drawings; an empty function takes it away.
  void observe(std::function<void()> changed) { changed_ = std::move(changed); }

 private:
  bool goesOn(PicturePoint from, Colour colour) const {
    if (count_ == 0) return false;
    const Polyline& last = lines_[count_ - 1];
    return last.colour == colour && last.points.back() == from;
  }

  // The points' memory is kept over Cls, as the next picture mostly is of the same size.
  void begin(PicturePoint from, Colour colour) {
    if (count_ == lines_.size()) lines_.emplace_back();
    Polyline& line = lines_[count_++];
    line.colour = colour;
    line.points.clear();
    line.points.push_back(from);
  }

  void tell() {
    if (changed_) changed_();
  }

  std::vector<Polyline> lines_;
  std::size_t count_ = 0;  // of those that are drawn; the others are memory
  std::function<void()> changed_;
};

}  // namespace veltrin
