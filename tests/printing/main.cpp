// SPDX-License-Identifier: GPL-3.0-or-later
// Starts the tests of printing with an application that draws off the screen.
#include <cstdlib>

#include <QApplication>

#include "gtest/gtest.h"
#include "runner/run_tests.h"

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  testing::InitGoogleTest(&argc, argv);
  const QApplication application(argc, argv);
  return veltrin::runTests();
}
