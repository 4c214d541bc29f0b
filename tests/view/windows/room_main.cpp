// SPDX-License-Identifier: GPL-3.0-or-later
// Starts the tests of the windows on Windows, with an application that draws on the screen.
#include <QApplication>

#include "gtest/gtest.h"
#include "runner/run_tests.h"
#include "view/appearance.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  const QApplication application(argc, argv);
  veltrin::setAppearance();
  return veltrin::runTests();
}
