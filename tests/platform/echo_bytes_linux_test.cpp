// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <string>

#include "platform/icmp.h"
#include "platform/linux/echo_bytes.h"

namespace veltrin {
namespace {

using namespace std::string_literals;

const std::string kRequest = "\x08\x00\x26\x36\x12\x34\x00\x05PING!"s;
const std::string kReply = "\x00\x00\x2E\x36\x12\x34\x00\x05PING!"s;

TEST(EchoBytesTest, ARequestHasItsHeadItsDataAndItsChecksum) {
  EXPECT_EQ(echoRequest(0x1234, 5, "PING!"), kRequest);
}

TEST(EchoBytesTest, AReplyHasTheIdentifierTheSequenceAndTheData) {
  EXPECT_TRUE(answersEcho(kReply, kRequest, EchoIdentity::Own));
  EXPECT_TRUE(answersEcho(kReply, kRequest, EchoIdentity::Kernels));
}

TEST(EchoBytesTest, ARequestIsNoReply) {
  EXPECT_FALSE(answersEcho(kRequest, kRequest, EchoIdentity::Own));
}

TEST(EchoBytesTest, AnyOtherByteMakesItAnotherEchosReply) {
  for (const std::size_t at : {0U, 1U, 4U, 5U, 6U, 7U, 8U, 12U}) {
    std::string other = kReply;
    other[at] = static_cast<char>(other[at] + 1);
    EXPECT_FALSE(answersEcho(other, kRequest, EchoIdentity::Own)) << at;
    const bool identifier = at == 4 || at == 5;
    EXPECT_EQ(answersEcho(other, kRequest, EchoIdentity::Kernels), identifier) << at;
  }
}

TEST(EchoBytesTest, AReplyIsAsLongAsItsRequest) {
  for (std::size_t size = 0; size < kReply.size(); ++size) {
    EXPECT_FALSE(answersEcho(kReply.substr(0, size), kRequest, EchoIdentity::Own)) << size;
  }
  EXPECT_FALSE(answersEcho(kReply + '\0', kRequest, EchoIdentity::Own));
}

TEST(EchoBytesTest, EightBytesOfARequestQuoteIt) {
  EXPECT_TRUE(quotesEcho(kRequest.substr(0, 8), kRequest, EchoIdentity::Own));
  EXPECT_TRUE(quotesEcho(kRequest, kRequest, EchoIdentity::Own));
  EXPECT_FALSE(quotesEcho(kRequest.substr(0, 7), kRequest, EchoIdentity::Own));
  EXPECT_FALSE(quotesEcho(kReply, kRequest, EchoIdentity::Own));
}

TEST(EchoBytesTest, AnotherIdentifierOrSequenceQuotesAnotherRequest) {
  for (const std::size_t at : {4U, 5U, 6U, 7U}) {
    std::string other = kRequest;
    other[at] = static_cast<char>(other[at] + 1);
    EXPECT_FALSE(quotesEcho(other, kRequest, EchoIdentity::Own)) << at;
    EXPECT_EQ(quotesEcho(other, kRequest, EchoIdentity::Kernels), at < 6) << at;
  }
}

TEST(EchoBytesTest, WhatStandsBehindAnIpHeaderIsFoundByItsLength) {
  EXPECT_EQ(behindIpHeader("\x45"s + std::string(19, 'h') + "data"), "data");
  EXPECT_EQ(behindIpHeader("\x46"s + std::string(23, 'h') + "data"), "data");
  EXPECT_EQ(behindIpHeader("\x45"s + std::string(19, 'h')), "");
}

TEST(EchoBytesTest, WhatIsNoIpPacketHasNothingBehindItsHeader) {
  EXPECT_EQ(behindIpHeader(""), "");
  EXPECT_EQ(behindIpHeader("\x65"s + std::string(40, 'h')), "");  // version 6
  EXPECT_EQ(behindIpHeader("\x44"s + std::string(40, 'h')), "");  // too short a header
  EXPECT_EQ(behindIpHeader("\x4F"s + std::string(58, 'h')), "");  // longer than the packet
}

TEST(EchoBytesTest, EveryErrorHasItsStatus) {
  EXPECT_EQ(statusOfIcmpError(3, 0), kIpNetUnreachable);
  EXPECT_EQ(statusOfIcmpError(3, 1), kIpHostUnreachable);
  EXPECT_EQ(statusOfIcmpError(3, 2), kIpProtocolUnreachable);
  EXPECT_EQ(statusOfIcmpError(3, 3), kIpPortUnreachable);
  EXPECT_EQ(statusOfIcmpError(3, 4), kIpPacketTooBig);
  EXPECT_EQ(statusOfIcmpError(3, 5), kIpHostUnreachable);
  EXPECT_EQ(statusOfIcmpError(3, 6), kIpNetUnreachable);
  EXPECT_EQ(statusOfIcmpError(3, 9), kIpNetUnreachable);
  EXPECT_EQ(statusOfIcmpError(3, 10), kIpHostUnreachable);
  EXPECT_EQ(statusOfIcmpError(3, 11), kIpNetUnreachable);
  EXPECT_EQ(statusOfIcmpError(11, 0), kIpHopsExceeded);
  EXPECT_EQ(statusOfIcmpError(11, 1), kIpReassemblyExceeded);
  EXPECT_EQ(statusOfIcmpError(12, 0), kIpBadParameter);
  EXPECT_EQ(statusOfIcmpError(5, 0), kIpGeneralFailure);
}

}  // namespace
}  // namespace veltrin
