// SPDX-License-Identifier: GPL-3.0-or-later
// The calendar of the simulated platform.
#include <gtest/gtest.h>

#include "support/simulation.h"

namespace veltrin {
namespace {

TEST(SimulatedClock, GoesWithTheVirtualClockByTheMillisecond) {
  Simulation simulation;
  EXPECT_EQ(secondsSinceMidnight(simulation.clock.now()), 32700);
  simulation.loop.run(61'234);
  const DateTime moment = simulation.clock.now();
  EXPECT_EQ(Format(moment, "hh:nn:ss"), "09:06:01");
  EXPECT_EQ(moment.millisecond, 234);
  EXPECT_EQ(secondsSinceMidnight(moment), 32761.234);
}

}  // namespace
}  // namespace veltrin
