// SPDX-License-Identifier: GPL-3.0-or-later
// Bars that fill as work goes on.
#include "forms/progress_bar.h"

#include <gtest/gtest.h>

namespace veltrin {
namespace {

TEST(ProgressBar, IsEmptyAtFirstAndGoesFrom0To100) {
  const ProgressBar bar;
  EXPECT_EQ(bar.minimum.get(), 0);
  EXPECT_EQ(bar.maximum.get(), 100);
  EXPECT_EQ(bar.value.get(), 0);
}

TEST(ProgressBar, TakesItsColourAsBlueGreenRed) {
  ProgressBar bar;
  bar.SendMessageA(1033, 0, 0x123456);
  EXPECT_EQ(bar.barColour.get(), (Colour{0x56, 0x34, 0x12}));
}

TEST(ProgressBar, AnotherMessageDoesNothing) {
  ProgressBar bar;
  bar.SendMessageA(1034, 0, 0x123456);
  EXPECT_EQ(bar.barColour.get(), (Colour{0, 0, 128}));
}

}  // namespace
}  // namespace veltrin
