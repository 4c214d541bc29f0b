// SPDX-License-Identifier: GPL-3.0-or-later
#include <chrono>
#include <gtest/gtest.h>
#include <string>
#include <winsock2.h>

#include "platform/windows/windows_icmp.h"

namespace veltrin {
namespace {

const std::string kData = "PING!PING!PING!PING!PING!PING!";

// As they lie in memory.
constexpr std::uint32_t kThisMachine = 0x0100007F;  // 127.0.0.1
constexpr std::uint32_t kNobody = 0x016433C6;       // 198.51.100.1, which is nobody's (RFC 5737)

constexpr std::uint32_t kTimeout = 200;  // ms

// Above this an echo counts as unanswered.
constexpr std::uint32_t kLongestTime = 697;

class WindowsIcmpTest : public testing::Test {
 protected:
  void SetUp() override {
    WSADATA layer;
    ASSERT_EQ(plain_.WSAStartup(0x0101, layer), 0);
  }
  void TearDown() override { EXPECT_EQ(plain_.WSACleanup(), 0); }

  // One echo through a handle of its own.
  std::uint32_t echo(WindowsIcmp& icmp, std::uint32_t address) {
    const Icmp::Handle handle = icmp.IcmpCreateFile();
    EXPECT_NE(handle, Icmp::kNoHandle);
    const std::uint32_t replies =
        icmp.IcmpSendEcho(handle, address, kData, reply_, kEchoReplySize, kTimeout);
    EXPECT_TRUE(icmp.IcmpCloseHandle(handle));
    return replies;
  }

  void expectNoReply(std::uint32_t replies) const {
    EXPECT_EQ(replies, 0U);
    EXPECT_EQ(reply_.RoundTripTime, kNoReplyTime);
    EXPECT_GT(reply_.RoundTripTime, kLongestTime);
    EXPECT_NE(reply_.Status, kIpSuccess);
  }

  void expectReply(std::uint32_t replies) const {
    EXPECT_EQ(replies, 1U);
    EXPECT_EQ(reply_.Status, kIpSuccess);
    EXPECT_LE(reply_.RoundTripTime, kTimeout);
    EXPECT_EQ(reply_.Data, kData);
  }

  WindowsIcmp plain_;
  ICMP_ECHO_REPLY reply_;
};

// What needs an answer. Wine sends through a socket of the kernel, and tells of access
// denied where that refuses it.
class WindowsEchoTest : public WindowsIcmpTest {
 protected:
  void SetUp() override {
    WindowsIcmpTest::SetUp();
    if (echo(plain_, kThisMachine) == 0 && reply_.Status == ERROR_ACCESS_DENIED) {
      GTEST_SKIP() << "this user may send no echo: neither net.ipv4.ping_group_range nor the "
                      "capability CAP_NET_RAW permits it";
    }
  }
};

TEST_F(WindowsIcmpTest, TheLayerStartsInTheVersionAskedForAndTellsItsSockets) {
  WSADATA layer;
  EXPECT_EQ(plain_.WSAStartup(0x0101, layer), 0);
  EXPECT_EQ(layer.wVersion, 0x0101);
  EXPECT_GE(layer.iMaxSockets, 1);
  EXPECT_EQ(plain_.WSACleanup(), 0);
}

TEST_F(WindowsIcmpTest, ALayerThatWasNotStartedDoesNotEndWell) {
  ASSERT_EQ(plain_.WSACleanup(), 0);
  EXPECT_EQ(plain_.WSACleanup(), SOCKET_ERROR);
  WSADATA layer;
  ASSERT_EQ(plain_.WSAStartup(0x0101, layer), 0);
}

TEST_F(WindowsEchoTest, ThisMachineSendsBackWhatItWasSent) {
  expectReply(echo(plain_, kThisMachine));
  EXPECT_EQ(reply_.Address, kThisMachine);
  EXPECT_EQ(reply_.DataSize, 30);
  EXPECT_GT(reply_.Options.Ttl, 0);
}

TEST_F(WindowsIcmpTest, AnAddressOfNobodyHasNoReply) { expectNoReply(echo(plain_, kNobody)); }

TEST_F(WindowsIcmpTest, AddressZeroHasNoReply) { expectNoReply(echo(plain_, 0)); }

TEST_F(WindowsEchoTest, AClosedHandleSendsNothing) {
  const Icmp::Handle handle = plain_.IcmpCreateFile();
  ASSERT_TRUE(plain_.IcmpCloseHandle(handle));
  expectNoReply(plain_.IcmpSendEcho(handle, kThisMachine, kData, reply_, kEchoReplySize, kTimeout));
}

TEST_F(WindowsIcmpTest, NoHandleSendsNothingAndCannotBeClosed) {
  expectNoReply(
      plain_.IcmpSendEcho(Icmp::kNoHandle, kThisMachine, kData, reply_, kEchoReplySize, kTimeout));
  EXPECT_FALSE(plain_.IcmpCloseHandle(Icmp::kNoHandle));
}

TEST_F(WindowsEchoTest, TheFailureOfOneEchoIsNothingToTheNext) {
  expectNoReply(echo(plain_, 0));
  expectReply(echo(plain_, kThisMachine));
  expectNoReply(echo(plain_, 0));
  EXPECT_EQ(reply_.Data, "");
  expectReply(echo(plain_, kThisMachine));
}

TEST_F(WindowsEchoTest, TheHookHasAnEventThatTellsOfTheEndOfTheEcho) {
  int calls = 0;
  WindowsIcmp icmp([&calls](void* event) {
    ++calls;
    EXPECT_EQ(WaitForSingleObject(event, 60000), WAIT_OBJECT_0);
  });
  expectReply(echo(icmp, kThisMachine));
  EXPECT_EQ(calls, 1);
}

TEST_F(WindowsEchoTest, WaitsOnWhenTheHookReturnsEarly) {
  WindowsIcmp icmp([](void*) {});
  expectReply(echo(icmp, kThisMachine));
}

TEST_F(WindowsIcmpTest, AReplyThatDoesNotFitIsNone) {
  const Icmp::Handle handle = plain_.IcmpCreateFile();
  expectNoReply(
      plain_.IcmpSendEcho(handle, kThisMachine, kData, reply_, kEchoReplyHead + 29, kTimeout));
  EXPECT_EQ(reply_.Status, kIpBufferTooSmall);
  plain_.IcmpCloseHandle(handle);
}

TEST_F(WindowsEchoTest, TheRecordHoldsNoMoreThanItsDataHasRoomFor) {
  const Icmp::Handle handle = plain_.IcmpCreateFile();
  const std::string data(600, 'x');
  EXPECT_EQ(plain_.IcmpSendEcho(handle, kThisMachine, data, reply_, 1000, kTimeout), 1U);
  EXPECT_EQ(reply_.DataSize, 600);
  EXPECT_EQ(reply_.Data, std::string(250, 'x'));
  plain_.IcmpCloseHandle(handle);
}

}  // namespace
}  // namespace veltrin
