// SPDX-License-Identifier: GPL-3.0-or-later
#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>

#include "platform/linux/ping_text.h"

namespace veltrin {
namespace {

PingOutcome replyFrom(const char* address, std::uint32_t milliseconds, std::uint8_t ttl) {
  return {kIpSuccess, inet_addr(address), milliseconds, ttl};
}

TEST(PingTextTest, AReplyTellsItsAddressItsTimeAndItsHops) {
  EXPECT_EQ(readPingOutcome("Reply from 192.0.2.7: bytes=30 time=24ms TTL=56\r\n"),
            replyFrom("192.0.2.7", 24, 56));
}

TEST(PingTextTest, ATimeBelowOneMillisecondIsZero) {
  EXPECT_EQ(readPingOutcome("Reply from 192.0.2.7: bytes=30 time<1ms TTL=64\r\n"),
            replyFrom("192.0.2.7", 0, 64));
}

TEST(PingTextTest, AReplyOfAnotherSizeIsOne) {
  EXPECT_EQ(readPingOutcome("Reply from 192.0.2.7: bytes=30 (sent 56) time=3ms TTL=64\r\n"),
            replyFrom("192.0.2.7", 3, 64));
}

TEST(PingTextTest, TheOutcomeIsFoundBehindOtherLines) {
  EXPECT_EQ(readPingOutcome("\r\nPinging 192.0.2.7 with 30 bytes of data:\r\n"
                            "Reply from 192.0.2.7: bytes=30 time=24ms TTL=56\r\n"
                            "Request timed out.\r\n"),
            replyFrom("192.0.2.7", 24, 56));
}

TEST(PingTextTest, ALineThatHasNotEndedTellsNothing) {
  EXPECT_EQ(readPingOutcome("Reply from 192.0.2.7: bytes=30 time=24ms TTL=5"), std::nullopt);
  EXPECT_EQ(readPingOutcome("Request timed out."), std::nullopt);
  EXPECT_EQ(readPingOutcome(""), std::nullopt);
}

TEST(PingTextTest, AReplyWithoutATimeThatCanBeReadIsAFailure) {
  for (const std::string figures :
       {"time=ms", "time=24", "time=24 ms", "time=-1ms", "time=99999999999ms", "time<2ms", ""}) {
    const auto outcome = readPingOutcome("Reply from 192.0.2.7: bytes=30 " + figures + "\r\n");
    ASSERT_TRUE(outcome) << figures;
    EXPECT_EQ(outcome->status, kIpGeneralFailure) << figures;
  }
}

TEST(PingTextTest, AHopCountThatCannotBeReadIsNotTold) {
  EXPECT_EQ(readPingOutcome("Reply from 192.0.2.7: bytes=30 time=24ms\r\n"),
            replyFrom("192.0.2.7", 24, 0));
  EXPECT_EQ(readPingOutcome("Reply from 192.0.2.7: bytes=30 time=24ms TTL=256\r\n"),
            replyFrom("192.0.2.7", 24, 0));
}

TEST(PingTextTest, AReplyOfNoAddressTellsNothing) {
  EXPECT_EQ(readPingOutcome("Reply from nobody: bytes=30 time=24ms TTL=56\r\n"), std::nullopt);
  EXPECT_EQ(readPingOutcome("Reply from 2001:db8::7: time=24ms\r\n"), std::nullopt);
  EXPECT_EQ(readPingOutcome("Reply from 192.0.2.7\r\n"), std::nullopt);
}

struct Refusal {
  const char* sentence;
  std::uint32_t status;
};

TEST(PingTextTest, EverySentenceOfARefusalIsTold) {
  for (const Refusal& refusal :
       {Refusal{"Destination net unreachable.", kIpNetUnreachable},
        Refusal{"Destination host unreachable.", kIpHostUnreachable},
        Refusal{"Destination protocol unreachable.", kIpProtocolUnreachable},
        Refusal{"Destination port unreachable.", kIpPortUnreachable},
        Refusal{"Packet too big.", kIpPacketTooBig},
        Refusal{"TTL expired in transit.", kIpHopsExceeded},
        Refusal{"TTL expired during reassembly.", kIpReassemblyExceeded},
        Refusal{"The packet's header was refused.", kIpBadParameter},
        Refusal{"General failure.", kIpGeneralFailure}}) {
    const PingOutcome expected{refusal.status, inet_addr("192.0.2.1"), 0, 0};
    EXPECT_EQ(readPingOutcome(std::string("Reply from 192.0.2.1: ") + refusal.sentence + "\r\n"),
              expected);
  }
}

TEST(PingTextTest, EverySentenceWithoutAnAnswerIsTold) {
  for (const Refusal& refusal :
       {Refusal{"Request timed out.", kIpTimedOut},
        Refusal{"Packet needs to be fragmented but DF set.", kIpPacketTooBig},
        Refusal{"PING: transmit failed. General failure.", kIpGeneralFailure}}) {
    const PingOutcome expected{refusal.status, 0, 0, 0};
    EXPECT_EQ(readPingOutcome(std::string(refusal.sentence) + "\r\n"), expected);
  }
}

}  // namespace
}  // namespace veltrin
