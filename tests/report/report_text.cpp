// SPDX-License-Identifier: GPL-3.0-or-later
#include "report/report_text.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>

#include "machine/fact_text.h"

namespace veltrin {
namespace {

constexpr ColourCode kOrange = 0x0040C0;
constexpr ColourCode kGreen = 0x008000;

std::string lookOf(const ListLine& line) {
  if (line.ForeColor == kOrange) return line.Bold ? "H" : "h";
  if (line.ForeColor == kGreen) return line.Bold ? "B" : "P";
  return std::to_string(line.ForeColor) + (line.Bold ? " bold" : "");
}

using Lines = std::vector<std::string_view>;

Lines linesOf(std::string_view text) {
  Lines lines;
  LineReader reader(text);
  for (std::string_view line; reader.next(line);) lines.push_back(line);
  return lines;
}

// For each place in both texts, how many lines the rests from there have in common, in their
// order.
class CommonLines {
 public:
  CommonLines(const Lines& left, const Lines& right)
      : width_(right.size() + 1), lengths_((left.size() + 1) * width_) {
    for (std::size_t i = left.size(); i-- > 0;) {
      for (std::size_t j = right.size(); j-- > 0;) {
        lengths_[i * width_ + j] =
            left[i] == right[j] ? at(i + 1, j + 1) + 1 : std::max(at(i + 1, j), at(i, j + 1));
      }
    }
  }

  std::uint32_t at(std::size_t i, std::size_t j) const { return lengths_[i * width_ + j]; }

 private:
  std::size_t width_;
  std::vector<std::uint32_t> lengths_;
};

}  // namespace

std::string textOf(const ListLine& line) {
  const std::string number = std::to_string(line.SmallIcon);
  const bool isOpen = line.Text.ends_with(' ') || line.Text.ends_with('|');
  return (number.size() < 2 ? " " : "") + number + " " + lookOf(line) + "  " + line.Text +
         (isOpen ? "|" : "");
}

std::string differences(std::string_view expected, std::string_view found, std::size_t most) {
  const Lines left = linesOf(expected);
  const Lines right = linesOf(found);
  const CommonLines common(left, right);
  std::string text;
  std::size_t told = 0;
  const auto tell = [&](char sign, std::size_t place, std::string_view line) {
    if (told++ < most) {
      text += sign + std::to_string(place + 1) + ": " + std::string(line) + "\n";
    }
  };
  for (std::size_t i = 0, j = 0; i < left.size() || j < right.size();) {
    if (i < left.size() && j < right.size() && left[i] == right[j]) {
      ++i;
      ++j;
    } else if (j == right.size() ||
               (i < left.size() && common.at(i + 1, j) >= common.at(i, j + 1))) {
      tell('-', i, left[i]);
      ++i;
    } else {
      tell('+', j, right[j]);
      ++j;
    }
  }
  if (told > most) text += "and " + std::to_string(told - most) + " more\n";
  return text;
}

}  // namespace veltrin
