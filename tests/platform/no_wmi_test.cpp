#include "platform/portable/no_wmi.h"

#include <gtest/gtest.h>

namespace veltrin {
namespace {

TEST(NoWmiTest, AnswersNoQuery) {
  EXPECT_THROW(NoWmi().ExecQuery("Select * from Win32_PhysicalMemory"), StatementFailed);
}

}  // namespace
}  // namespace veltrin
