// SPDX-License-Identifier: GPL-3.0-or-later
// Echoes through the console tool, in whose place a script of the test stands.
#include <arpa/inet.h>
#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>

#include "platform/linux/linux_icmp.h"
#include "tests/platform/children.h"
#include "tests/platform/scratch_folder.h"

namespace veltrin {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

const std::string kData = "PING!PING!PING!PING!PING!PING!";
constexpr std::uint32_t kTimeout = 1000;  // ms, for a machine that does much else

class ToolEchoTest : public testing::Test {
 protected:
  void TearDown() override { EXPECT_TRUE(noChildRemains()); }

  // The tool notes each of its starts with its arguments, and then does what a line of
  // the shell says.
  void toolDoes(const std::string& line) {
    tools_.fill("ping",
                "#!/bin/sh\necho \"$@\" >> '" + tools_.path("starts") + "'\n" + line + "\n");
    fs::permissions(tools_.path("ping"), fs::perms::owner_all);
  }

  // One echo, through a handle of its own, with a tool that does this.
  void echoWith(const std::string& line, std::uint32_t timeout = kTimeout) {
    toolDoes(line);
    echo(timeout);
  }

  void echo(std::uint32_t timeout = kTimeout) {
    const Icmp::Handle handle = icmp_.IcmpCreateFile();
    ASSERT_NE(handle, Icmp::kNoHandle);
    send(handle, timeout);
    EXPECT_TRUE(icmp_.IcmpCloseHandle(handle));
  }

  void send(Icmp::Handle handle, std::uint32_t timeout = kTimeout) {
    const auto before = steady_clock::now();
    replies_ =
        icmp_.IcmpSendEcho(handle, inet_addr("192.0.2.7"), kData, reply_, kEchoReplySize, timeout);
    took_ = std::chrono::floor<milliseconds>(steady_clock::now() - before);
  }

  void expectReply(std::uint32_t milliseconds) const {
    EXPECT_EQ(replies_, 1U);
    EXPECT_EQ(reply_.Status, kIpSuccess);
    EXPECT_EQ(reply_.Address, inet_addr("192.0.2.7"));
    EXPECT_EQ(reply_.RoundTripTime, milliseconds);
    EXPECT_EQ(reply_.DataSize, 30);
    EXPECT_EQ(reply_.Data, kData);
  }

  void expectNoReply(std::uint32_t status) const {
    EXPECT_EQ(replies_, 0U);
    EXPECT_EQ(reply_.RoundTripTime, kNoReplyTime);
    EXPECT_EQ(reply_.Status, status);
    EXPECT_EQ(reply_.Data, "");
  }

  std::string starts() const { return tools_.content("starts"); }

  const ScratchFolder tools_;
  LinuxIcmp icmp_{tools_.folder(), {}, {LinuxIcmp::Way::Tool}};
  std::uint32_t replies_ = 99;
  ICMP_ECHO_REPLY reply_;
  milliseconds took_{};
};

TEST_F(ToolEchoTest, TheTimeOfTheToolsReplyIsTheRoundTrip) {
  echoWith(R"(printf '\r\nPinging 192.0.2.7 with 30 bytes of data:\r\n'
              printf 'Reply from 192.0.2.7: bytes=30 time=12ms TTL=56\r\n'
              printf '\r\nPing statistics for 192.0.2.7:\r\n')");
  expectReply(12);
  EXPECT_EQ(reply_.Options.Ttl, 56);
}

TEST_F(ToolEchoTest, TheToolIsStartedOnceWithTheTimeOutAndTheSizeOfTheData) {
  echoWith("exit 1");
  EXPECT_EQ(starts(), "192.0.2.7 -n 1 -w 1000 -l 30\n");
}

TEST_F(ToolEchoTest, ATimeBelowOneMillisecondIsZero) {
  echoWith(R"(printf 'Reply from 192.0.2.7: bytes=30 time<1ms TTL=64\r\n')");
  expectReply(0);
}

TEST_F(ToolEchoTest, AnAnswerInPiecesIsPutTogether) {
  echoWith(R"(printf 'Reply from 192.0.'; sleep 0.02; printf '2.7: bytes=30 time=1'
              sleep 0.02; printf '4'; sleep 0.02; printf 'ms TTL=6'; sleep 0.02; printf '4\r\n')");
  expectReply(14);
  EXPECT_EQ(reply_.Options.Ttl, 64);
}

TEST_F(ToolEchoTest, ATimeOutOfTheToolIsNoReply) {
  echoWith(R"(printf 'Request timed out.\r\n')");
  expectNoReply(kIpTimedOut);
}

TEST_F(ToolEchoTest, ARoutersRefusalIsNoReplyAndToldWithItsAddress) {
  echoWith(R"(printf 'Reply from 192.0.2.1: Destination host unreachable.\r\n')");
  expectNoReply(kIpHostUnreachable);
  EXPECT_EQ(reply_.Address, inet_addr("192.0.2.1"));
}

TEST_F(ToolEchoTest, AToolWithoutTheRightToSendIsNoReply) {
  echoWith(R"(printf 'PING: this system allows no echo to this user.\r\n'; exit 1)");
  expectNoReply(kIpGeneralFailure);
}

TEST_F(ToolEchoTest, AReplyLaterThanTheTimeOutIsNone) {
  echoWith(R"(printf 'Reply from 192.0.2.7: bytes=30 time=1001ms TTL=56\r\n')");
  expectNoReply(kIpTimedOut);
}

TEST_F(ToolEchoTest, OtherTextIsNoReply) {
  echoWith("head -c 5000 /dev/urandom; echo time=5ms");
  expectNoReply(kIpGeneralFailure);
}

TEST_F(ToolEchoTest, AToolThatEndsWithoutAWordIsNoReplyAtOnce) {
  echoWith("exit 0", 5000);
  expectNoReply(kIpGeneralFailure);
  EXPECT_LT(took_, milliseconds(2500));
}

TEST_F(ToolEchoTest, AToolThatNeverEndsIsGivenUpAndEndedHalfASecondBehindTheTimeOut) {
  echoWith("printf 'Reply from 192.0.2.7: bytes=30 time=1'; exec sleep 1000", 50);
  expectNoReply(kIpGeneralFailure);
  EXPECT_GE(took_, milliseconds(550));
  EXPECT_LT(took_, milliseconds(2500));
  EXPECT_TRUE(noChildRemains());
}

TEST_F(ToolEchoTest, AReplyIsTakenBeforeTheToolHasEnded) {
  echoWith(R"(printf 'Reply from 192.0.2.7: bytes=30 time=12ms TTL=56\r\n'; exec sleep 1000)",
           1000);
  expectReply(12);
  EXPECT_LT(took_, milliseconds(1000));
}

TEST_F(ToolEchoTest, AToolThatNeverStopsTalkingIsGivenUp) {
  echoWith("exec yes", 5000);
  expectNoReply(kIpGeneralFailure);
  EXPECT_LT(took_, milliseconds(4000));
}

TEST_F(ToolEchoTest, TheHookIsCalledWhileTheToolIsSilentWithTheTimeThatIsLeft) {
  int calls = 0;
  toolDoes(R"(sleep 0.1; printf 'Reply from 192.0.2.7: bytes=30 time=12ms TTL=56\r\n')");
  icmp_ = LinuxIcmp(tools_.folder(),
                    [&calls](int, int most) {
                      ++calls;
                      EXPECT_LE(most, 1500);
                      EXPECT_GT(most, 0);
                    },
                    {LinuxIcmp::Way::Tool});
  echo();
  expectReply(12);
  EXPECT_GT(calls, 0);
}

TEST_F(ToolEchoTest, WithoutTheToolThereIsNoHandle) {
  EXPECT_EQ(icmp_.IcmpCreateFile(), Icmp::kNoHandle);
}

TEST_F(ToolEchoTest, AToolThatIsGoneMeanwhileIsNoReply) {
  toolDoes("exit 0");
  const Icmp::Handle handle = icmp_.IcmpCreateFile();
  fs::remove(tools_.path("ping"));
  send(handle);
  expectNoReply(kIpGeneralFailure);
}

TEST_F(ToolEchoTest, AddressZeroStartsNoTool) {
  toolDoes("exit 0");
  const Icmp::Handle handle = icmp_.IcmpCreateFile();
  replies_ = icmp_.IcmpSendEcho(handle, 0, kData, reply_, kEchoReplySize, kTimeout);
  expectNoReply(kIpBadDestination);
  EXPECT_FALSE(tools_.has("starts"));
}

TEST_F(ToolEchoTest, TwoInARowAreIndependent) {
  echoWith(R"(printf 'Reply from 192.0.2.7: bytes=30 time=12ms TTL=56\r\n')");
  expectReply(12);
  echoWith(R"(printf 'Request timed out.\r\n')");
  expectNoReply(kIpTimedOut);
  EXPECT_EQ(reply_.Address, 0U);
  EXPECT_EQ(reply_.Options.Ttl, 0);
  EXPECT_EQ(starts(), "192.0.2.7 -n 1 -w 1000 -l 30\n192.0.2.7 -n 1 -w 1000 -l 30\n");
}

TEST_F(ToolEchoTest, FiftyEchoesLeaveNoDescriptorOpen) {
  const auto open = [] {
    return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
  };
  echoWith("exit 0");
  ASSERT_TRUE(noChildRemains());
  const auto before = open();
  for (int i = 0; i < 50; ++i) echo();
  EXPECT_TRUE(noChildRemains());
  EXPECT_EQ(open(), before);
}

}  // namespace
}  // namespace veltrin
