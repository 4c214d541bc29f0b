#include "platform/portable/no_wmi.h"

#include <gtest/gtest.h>

namespace veltrin {
namespace {

TEST(NoWmiTest, ConnectsToNoMachine) {
  EXPECT_THROW(NoWmi().connect("winmgmts:\\\\KITCHEN\\root\\cimv2"), StatementFailed);
}

}  // namespace
}  // namespace veltrin
