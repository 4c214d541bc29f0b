// SPDX-License-Identifier: GPL-3.0-or-later
// Small pictures that other controls show by their numbers.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "forms/control.h"

namespace veltrin {

class ImageList : public Control {
 public:
  struct Picture {
    std::string name;     // of the installation's picture
    std::string meaning;  // what it stands for, for who cannot see it
  };

  // Number 1 is the first.
  std::vector<Picture> pictures;

  // The picture of a number; null when there is none.
  const Picture* find(int number) const {
    const auto index = static_cast<std::size_t>(number) - 1;
    return number > 0 && index < pictures.size() ? &pictures[index] : nullptr;
  }
};

}  // namespace veltrin
