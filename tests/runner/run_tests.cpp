// SPDX-License-Identifier: GPL-3.0-or-later
#include "runner/run_tests.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace veltrin {
namespace {

bool isOver = false;  // the run of the cases

// Whatever ends the program before that has left cases behind, and is no success. What a
// case starts to see it die is another program.
void failUnlessOver() {
#if GTEST_HAS_DEATH_TEST
  if (testing::internal::InDeathTestChild()) return;
#endif
  if (!isOver) std::_Exit(EXIT_FAILURE);
}

}  // namespace

int runTests() {
  std::atexit(failUnlessOver);
  const int code = RUN_ALL_TESTS();
  isOver = true;
  const testing::UnitTest& run = *testing::UnitTest::GetInstance();
  if (run.test_to_run_count() == 0 && !GTEST_FLAG_GET(list_tests)) return EXIT_FAILURE;
  const bool skippedAll = run.skipped_test_count() > 0 && run.successful_test_count() == 0;
  return code == 0 && skippedAll ? kNothingCouldBeTested : code;
}

}  // namespace veltrin
