// SPDX-License-Identifier: GPL-3.0-or-later
// Curves of more points than a screen has columns.
#include "view/dense_curve.h"

#include "gmock/gmock.h"
#include "gtest/gtest.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

QPolygonF thinned(QPolygonF curve, double pixels) {
  thinOut(curve, pixels);
  return curve;
}

TEST(DenseCurve, AColumnOfFourPointsKeepsThem) {
  const QPolygonF curve{{0.0, 5}, {0.2, 9}, {0.4, 1}, {0.6, 4}, {1.0, 7}, {1.2, 2}};

  EXPECT_EQ(thinned(curve, 1), curve);
}

TEST(DenseCurve, OfMoreTheFirstTheLastAndTheExtremesStayInTheirOrder) {
  const QPolygonF curve{{0.0, 5}, {0.1, 6}, {0.2, 9}, {0.3, 4}, {0.4, 1}, {0.5, 2}, {0.6, 3}};

  EXPECT_THAT(thinned(curve, 1),
              ElementsAre(QPointF(0.0, 5), QPointF(0.2, 9), QPointF(0.4, 1), QPointF(0.6, 3)));
}

TEST(DenseCurve, APointThatIsMoreThanOneOfThemStaysOnce) {
  const QPolygonF curve{{0.0, 1}, {0.1, 2}, {0.2, 3}, {0.3, 4}, {0.4, 5}, {0.5, 6}};

  EXPECT_THAT(thinned(curve, 1), ElementsAre(QPointF(0.0, 1), QPointF(0.5, 6)));
}

TEST(DenseCurve, EachColumnIsThinnedForItself) {
  const QPolygonF curve{{0.1, 3}, {0.2, 3}, {0.3, 3}, {0.4, 3}, {0.9, 3},
                        {1.1, 8}, {1.2, 8}, {1.3, 8}, {1.4, 8}, {1.9, 8}};

  EXPECT_THAT(thinned(curve, 1),
              ElementsAre(QPointF(0.1, 3), QPointF(0.9, 3), QPointF(1.1, 8), QPointF(1.9, 8)));
}

TEST(DenseCurve, AScreenOfMorePixelsShowsMore) {
  const QPolygonF curve{{0.1, 3}, {0.2, 4}, {0.4, 3}, {0.6, 4}, {0.7, 3}, {0.9, 4}};

  EXPECT_LT(thinned(curve, 1).size(), curve.size());
  EXPECT_EQ(thinned(curve, 2), curve);
}

TEST(DenseCurve, ACurveMayComeBack) {
  const QPolygonF curve{{0.5, 1}, {1.5, 2}, {0.5, 3}, {1.5, 4}};

  EXPECT_EQ(thinned(curve, 1), curve);
}

TEST(DenseCurve, ACurveWithoutPointsHasNone) { EXPECT_THAT(thinned({}, 1), IsEmpty()); }

}  // namespace
}  // namespace veltrin
