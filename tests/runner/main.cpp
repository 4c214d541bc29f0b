// SPDX-License-Identifier: GPL-3.0-or-later
// The start of the test programs that need nothing else around their cases.
#include <gmock/gmock.h>

#include "runner/run_tests.h"

int main(int argc, char** argv) {
  testing::InitGoogleMock(&argc, argv);
  return veltrin::runTests();
}
