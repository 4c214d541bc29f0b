// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/update_endpoint/dialogue.h"

#include <gtest/gtest.h>

namespace veltrin::endpoint {
namespace {

TEST(Version, IsDigitPointTwoDigits) {
  for (const char* text : {"1.03", "0.00", "9.99"}) EXPECT_TRUE(isVersion(text)) << text;
}

TEST(Version, IsNothingElse) {
  for (const char* text : {"", "1.0", "1.030", "1,03", "10.3", "a.03", "1.a3", "1.0a", "1.03 ",
                           " 1.03", "v1.03", "/.03", ":.03"}) {
    EXPECT_FALSE(isVersion(text)) << text;
  }
}

TEST(Answer, IsTheVersionAndTheAddressWithNothingBetweenOrBehind) {
  EXPECT_EQ(answerTo(*Address::parse("192.0.2.77"), "1.03"), "1.03192.0.2.77");
  EXPECT_EQ(answerTo(*Address::parse("2001:db8::1"), "2.10"), "2.102001:db8::1");
}

TEST(UsualPorts, AreTheTwoThatTheProgramTries) {
  EXPECT_EQ(kUsualPorts, (std::array<std::uint16_t, 2>{31112, 31113}));
}

}  // namespace
}  // namespace veltrin::endpoint
