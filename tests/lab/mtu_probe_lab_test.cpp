// SPDX-License-Identifier: GPL-3.0-or-later
// What the MTU search reads in the text of ping on a path that passes 1400 bytes. Skipped
// with the lab's reason where it cannot run.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "lab_program.h"
#include "mtu/setmtu.h"

namespace veltrin::lab {
namespace {

using testing::HasSubstr;
using testing::Not;

const char* const kTooBig = "Packet needs to be fragmented but DF set.\r\n";

class MtuProbeLab : public LabRunning {
 protected:
  // What a ping that must not be cut prints. It has a namespace of its own, whose kernel has
  // not learned anything of the path.
  static std::string textOf(const std::string& arguments) {
    return runLine(std::string("export PING='") + MTU_PING + "'; \"$LAB\" mtu-1400 -- \"$PING\" " +
                   arguments)
        .text;
  }

  // How the search judges a text.
  static bool isBad(const std::string& text) { return fragPosition(text) > 0; }
};

// 1372 bytes, and 28 of headers.
TEST_F(MtuProbeLab, ASizeThatPassesTellsOfNoFragments) {
  const std::string text = textOf("-f -n 1 -l 1372 target.example");

  EXPECT_THAT(text, HasSubstr("Reply from 203.0.113.80: bytes=1372 time="));
  EXPECT_FALSE(isBad(text)) << text;
}

TEST_F(MtuProbeLab, TheNextByteIsToldByTheRouterThatDoesNotPassIt) {
  const std::string text = textOf("-f -n 1 -l 1373 target.example");

  EXPECT_THAT(text, HasSubstr(kTooBig));
  EXPECT_TRUE(isBad(text)) << text;
}

TEST_F(MtuProbeLab, ACoarseSizeAboveTheBottleneckIsToldByTheRouter) {
  const std::string text = textOf("-f -n 1 -l 1400 target.example");

  EXPECT_THAT(text, HasSubstr(kTooBig));
  EXPECT_TRUE(isBad(text)) << text;
}

// The kernel knows the path from the first one's answer.
TEST_F(MtuProbeLab, TheSecondOfTwoProbesIsToldAlike) {
  const std::string text = textOf("-f -n 2 -l 1400 target.example");

  EXPECT_THAT(text, HasSubstr(std::string(kTooBig) + kTooBig));
  EXPECT_THAT(text, HasSubstr("Sent = 2, Received = 0, Lost = 2 (100% loss)"));
}

TEST_F(MtuProbeLab, ASizeAboveTheInterfacesOwnIsRefusedOnTheSpot) {
  const std::string text = textOf("-f -n 1 -l 1473 192.0.2.1");

  EXPECT_THAT(text, HasSubstr(kTooBig));
  EXPECT_TRUE(isBad(text)) << text;
}

TEST_F(MtuProbeLab, TheLargestOfTheInterfaceReachesItsOtherEnd) {
  const std::string text = textOf("-f -n 1 -l 1472 192.0.2.1");

  EXPECT_THAT(text, HasSubstr("Reply from 192.0.2.1: bytes=1472 time"));
  EXPECT_FALSE(isBad(text)) << text;
}

TEST_F(MtuProbeLab, WithoutTheOrderNotToCutALargeEchoPasses) {
  const std::string text = textOf("-4 -n 1 -l 1473 target.example");

  EXPECT_THAT(text, HasSubstr("Reply from 203.0.113.80: bytes=1473 time="));
  EXPECT_FALSE(isBad(text)) << text;
}

// A router that says nothing looks like a size that passes.
TEST_F(MtuProbeLab, ABottleneckThatSaysNothingTellsOfNoFragments) {
  const std::string text = textOf("-f -n 1 -w 500 -l 1300 hole.example");

  EXPECT_THAT(text, HasSubstr("Request timed out."));
  EXPECT_FALSE(isBad(text)) << text;
}

// The search itself names no destination.
TEST_F(MtuProbeLab, AProbeWithoutADestinationTellsOfNoFragments) {
  const std::string text = textOf("-f -n 2 -l 1500");

  EXPECT_THAT(text, HasSubstr("IP address must be specified."));
  EXPECT_THAT(text, Not(HasSubstr("Reply")));
  EXPECT_FALSE(isBad(text)) << text;
}

}  // namespace
}  // namespace veltrin::lab
