// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/update_endpoint/service_manager.h"

#include <cstddef>
#include <gtest/gtest.h>

namespace veltrin::endpoint {
namespace {

constexpr pid_t kSelf = 4711;

// The words with which a count is refused; empty when it is not.
std::string refusalOf(const char* listenPid, const char* listenFds) {
  try {
    countHandedOver(listenPid, listenFds, kSelf);
    return "";
  } catch (const CannotServe& reason) {
    return reason.what();
  }
}

TEST(HandedOver, AreAsManyAsTheManagerSays) {
  EXPECT_EQ(countHandedOver("4711", "2", kSelf), 2);
  EXPECT_EQ(countHandedOver("4711", "64", kSelf), 64);
}

TEST(HandedOver, AreNoneWithoutBothVariables) {
  EXPECT_EQ(countHandedOver(nullptr, nullptr, kSelf), 0);
  EXPECT_EQ(countHandedOver("4711", nullptr, kSelf), 0);
  EXPECT_EQ(countHandedOver(nullptr, "2", kSelf), 0);
}

TEST(HandedOver, AreNoneWhenTheyAreForAnotherProcess) {
  EXPECT_EQ(countHandedOver("4712", "2", kSelf), 0);
}

TEST(HandedOver, AreRefusedWithoutSense) {
  EXPECT_EQ(refusalOf("", "2"), "LISTEN_PID is no number: ");
  EXPECT_EQ(refusalOf("x", "2"), "LISTEN_PID is no number: x");
  EXPECT_EQ(refusalOf("4711", "x"), "LISTEN_FDS is no number from 0 to 64: x");
  EXPECT_EQ(refusalOf("4711", "-1"), "LISTEN_FDS is no number from 0 to 64: -1");
  EXPECT_EQ(refusalOf("4711", "65"), "LISTEN_FDS is no number from 0 to 64: 65");
}

TEST(NotifyAddress, OfAPathIsThePathAndItsZero) {
  const auto address = notifyAddressOf("/run/notify");
  ASSERT_TRUE(address.has_value());
  EXPECT_EQ(address->address.sun_family, AF_UNIX);
  EXPECT_STREQ(address->address.sun_path, "/run/notify");
  EXPECT_EQ(address->length, offsetof(sockaddr_un, sun_path) + 12);
}

TEST(NotifyAddress, OfANameBeginsWithAZeroAndHasNoneBehind) {
  const auto address = notifyAddressOf("@name");
  ASSERT_TRUE(address.has_value());
  EXPECT_EQ(std::string(address->address.sun_path, 5), std::string("\0name", 5));
  EXPECT_EQ(address->length, offsetof(sockaddr_un, sun_path) + 5);
}

TEST(NotifyAddress, TakesThePathAndTheNameThatJustFit) {
  EXPECT_TRUE(notifyAddressOf("/" + std::string(106, 'p')).has_value());
  EXPECT_TRUE(notifyAddressOf("@" + std::string(107, 'n')).has_value());
}

TEST(NotifyAddress, IsNoOtherText) {
  for (const std::string& text :
       {std::string(), std::string("run/notify"), std::string("@"), std::string("vsock:2:1"),
        "/" + std::string(107, 'p'), "@" + std::string(108, 'n')}) {
    EXPECT_FALSE(notifyAddressOf(text).has_value()) << text;
  }
}

}  // namespace
}  // namespace veltrin::endpoint
