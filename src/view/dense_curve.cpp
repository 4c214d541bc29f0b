// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/dense_curve.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace veltrin {
namespace {

// Points that stay of one column.
constexpr qsizetype kOfColumn = 4;

bool isHigher(const QPointF& one, const QPointF& other) { return one.y() < other.y(); }

}  // namespace

void thinOut(QPolygonF& curve, double pixels) {
  const auto columnOf = [pixels](const QPointF& point) { return std::floor(point.x() * pixels); };
  auto kept = curve.begin();
  for (auto first = curve.begin(); first != curve.end();) {
    const double column = columnOf(*first);
    const auto end = std::find_if(first, curve.end(),
                                  [&](const QPointF& point) { return columnOf(point) != column; });
    if (end - first <= kOfColumn) {
      kept = std::copy(first, end, kept);
    } else {
      const auto [highest, lowest] = std::minmax_element(first, end, isHigher);
      std::array stays = {first, highest, lowest, end - 1};
      std::sort(stays.begin(), stays.end());
      const auto different = std::unique(stays.begin(), stays.end());
      for (auto each = stays.begin(); each != different; ++each) *kept++ = **each;
    }
    first = end;
  }
  curve.erase(kept, curve.end());
}

}  // namespace veltrin
