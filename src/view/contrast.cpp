// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/contrast.h"

#include <algorithm>
#include <cmath>

namespace veltrin {
namespace {

constexpr int kSteps = 255;  // from a colour to black or white: a byte's

// What a part of a colour adds to its light, 0 to 1 (WCAG 2.1, "relative luminance").
double linear(double part) {
  return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour) {
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
         0.0722 * linear(colour.blueF());
}

// The colour so many steps on the way to another one. The hue stays.
QColor onTheWay(const QColor& from, const QColor& to, int step) {
  const auto mix = [step](int one, int other) { return one + (other - one) * step / kSteps; };
  return {mix(from.red(), to.red()), mix(from.green(), to.green()), mix(from.blue(), to.blue())};
}

}  // namespace

double contrast(const QColor& one, const QColor& other) {
  const auto [low, high] = std::minmax({luminance(one), luminance(other)});
  return (high + 0.05) / (low + 0.05);
}

// Of black and white at least one can be read on any ground.
QColor readableOn(const QColor& ground, const QColor& colour) {
  const bool isLight = contrast(ground, Qt::black) >= contrast(ground, Qt::white);
  const QColor end = isLight ? Qt::black : Qt::white;
  for (int step = 0; step < kSteps; ++step) {
    const QColor candidate = onTheWay(colour, end, step);
    if (contrast(ground, candidate) >= kReadableContrast) return candidate;
  }
  return end;
}

}  // namespace veltrin
