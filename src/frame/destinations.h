// SPDX-License-Identifier: GPL-3.0-or-later
// The five destinations of a window, and where it keeps them.
#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "forms/text_box.h"
#include "frame/program.h"

namespace veltrin {

class Destinations {
 public:
  static constexpr std::size_t kCount = 5;
  using Boxes = std::array<TextBox*, kCount>;

  // The settings keep them in `section`, under keys that are `keyStart` and the
  // numbers 1 to 5.
  Destinations(Program& program, std::string section, std::string keyStart, Boxes boxes);

  // Writes the defaults into the boxes: the installation's own host and well-known
  // public ones behind it.
  void setDefaults();

  // Empties the boxes.
  void clear();

  // Replaces the text of each box for which the settings hold one that is not empty.
  void recall();

  // Writes the texts of all boxes to the settings.
  void remember();

 private:
  std::string key(std::size_t index) const { return keyStart_ + std::to_string(index + 1); }

  Program& program_;
  std::string section_;
  std::string keyStart_;
  Boxes boxes_;
};

}  // namespace veltrin
