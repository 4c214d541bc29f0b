// SPDX-License-Identifier: GPL-3.0-or-later
// Curves of more points than a screen has columns.
#pragma once

#include <QPolygonF>

namespace veltrin {

// Takes out of a curve what cannot be seen: of points in a row that lie in one column of
// pixels, the first, the highest, the lowest and the last stay, in their order. `pixels`
// are those in a unit of the curve.
void thinOut(QPolygonF& curve, double pixels);

}  // namespace veltrin
