// SPDX-License-Identifier: GPL-3.0-or-later
// The titles of windows, this program's for others to find and those of others.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace veltrin {

// On Windows the system knows the titles of all windows, and the application title is
// that of a hidden window; on Linux the running copies of the program tell each other.
class TitleBoard {
 public:
  virtual ~TitleBoard() = default;

  virtual void setApplicationTitle(const std::string& title) = 0;

  // The titles of all windows on the screen.
  virtual void setWindowTitles(std::vector<std::string> titles) = 0;

  // A number that stands for a window of exactly that title; 0 when there is none.
  virtual std::uint32_t find(const std::string& title) const = 0;
};

// That of the system the program runs on.
std::unique_ptr<TitleBoard> makeTitleBoard(const std::string& applicationTitle);

}  // namespace veltrin
