// SPDX-License-Identifier: GPL-3.0-or-later
// Starts the tests of what Qt supplies on Windows, without a window.
#include <QCoreApplication>

#include "gtest/gtest.h"
#include "runner/run_tests.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  const QCoreApplication application(argc, argv);
  return veltrin::runTests();
}
