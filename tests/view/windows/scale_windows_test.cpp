// SPDX-License-Identifier: GPL-3.0-or-later
// The scale at which these tests measure is that of the system's settings. Environment:
// VELTRIN_WINE_DPI, the dots an inch of the screen that was asked for (96).
#include <QGuiApplication>
#include <QScreen>

#include "gtest/gtest.h"

namespace veltrin {
namespace {

TEST(Scale, IsTheOneThatTheScreenWasSetTo) {
  constexpr double kUsual = 96;  // dots an inch at 100 percent
  bool given = false;
  const int dots = qEnvironmentVariableIntValue("VELTRIN_WINE_DPI", &given);

  EXPECT_EQ(QGuiApplication::primaryScreen()->devicePixelRatio(), given ? dots / kUsual : 1);
}

}  // namespace
}  // namespace veltrin
