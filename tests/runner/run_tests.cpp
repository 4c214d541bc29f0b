#include "runner/run_tests.h"

#include <gtest/gtest.h>

namespace veltrin {

int runTests() {
  const int code = RUN_ALL_TESTS();
  const testing::UnitTest& run = *testing::UnitTest::GetInstance();
  const bool skippedAll = run.skipped_test_count() > 0 && run.successful_test_count() == 0;
  return code == 0 && skippedAll ? kNothingCouldBeTested : code;
}

}  // namespace veltrin
