// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "lab/packet.h"
#include "lab_packets.h"

namespace veltrin::lab {
namespace {

using testing::ElementsAre;

TEST(LabAddress, ReadsAndWritesBothVersions) {
  EXPECT_EQ(addressOf("203.0.113.7").text(), "203.0.113.7");
  EXPECT_EQ(addressOf("2001:DB8:0:0::1").text(), "2001:db8::1");
}

TEST(LabAddress, RefusesOtherTexts) {
  EXPECT_FALSE(IpAddress::parse("203.0.113"));
  EXPECT_FALSE(IpAddress::parse("203.0.113.256"));
  EXPECT_FALSE(IpAddress::parse("far.example"));
  EXPECT_FALSE(IpAddress::parse(""));
  EXPECT_FALSE(IpAddress::parse(std::string_view("192.0.2.1\0", 10)));
}

TEST(LabAddress, KnowsTheNameUnderWhichTheDnsKeepsItsName) {
  EXPECT_EQ(addressOf("203.0.113.7").reverseName(), "7.113.0.203.in-addr.arpa");
  EXPECT_EQ(addressOf("2001:db8::1f").reverseName(),
            "f.1.0.0.0.0.0.0.0.0.0.0.0.0.0.0.0.0.0.0.0.0.0.0.8.b.d.0.1.0.0.2.ip6.arpa");
}

TEST(LabAddress, RefusesBytesOfAnotherLength) {
  const Packet bytes(5);
  EXPECT_THROW(IpAddress{bytes}, std::invalid_argument);
}

// The example of RFC 1071 section 3.
TEST(LabChecksum, OfTheKnownExample) {
  const Packet bytes{0x00, 0x01, 0xF2, 0x03, 0xF4, 0xF5, 0xF6, 0xF7};
  EXPECT_EQ(internetChecksum(bytes), 0x220D);
}

TEST(LabChecksum, TakesAnOddLastByteAsTheHighOne) {
  EXPECT_EQ(internetChecksum(Packet{0x12, 0x34, 0x56}), 0x97CB);
}

TEST(LabChecksum, OfPartsIsThatOfTheWhole) {
  const Packet whole{1, 2, 3, 4, 5, 6, 7};
  const std::array<Bytes, 2> parts{Bytes(whole).first(4), Bytes(whole).subspan(4)};
  EXPECT_EQ(internetChecksum(parts), internetChecksum(whole));
}

TEST(LabReadIp, TellsWhatAnIpv4HeaderSays) {
  const Packet bytes = makeEcho("203.0.113.2", 9);
  const auto packet = readIp(bytes);
  ASSERT_TRUE(packet);
  EXPECT_EQ(packet->source.text(), "192.0.2.2");
  EXPECT_EQ(packet->destination.text(), "203.0.113.2");
  EXPECT_EQ(packet->hopsLeft, 9);
  EXPECT_EQ(packet->payload().size(), 40U);
  EXPECT_FALSE(packet->fragmented);
}

TEST(LabReadIp, TellsWhatAnIpv6HeaderSays) {
  const Packet bytes = makeEchoV6("2001:db8:0:2::1", 7);
  const auto packet = readIp(bytes);
  ASSERT_TRUE(packet);
  EXPECT_EQ(packet->source.text(), "2001:db8::2");
  EXPECT_EQ(packet->destination.text(), "2001:db8:0:2::1");
  EXPECT_EQ(packet->hopsLeft, 7);
  EXPECT_EQ(packet->payload().size(), 40U);
}

TEST(LabReadIp, PassesOverOptionHeadersOfIpv6) {
  Packet payload{58, 0, 1, 4, 0, 0, 0, 0};
  payload.resize(16);
  const Packet bytes = makeV6(kMachineV6, "2001:db8:0:2::1", 60, payload);
  const auto packet = readIp(bytes);
  ASSERT_TRUE(packet);
  EXPECT_EQ(packet->protocol, 58);
  EXPECT_EQ(packet->payload().size(), 8U);
}

TEST(LabReadIp, LeavesOutBytesBehindThePacket) {
  Packet bytes = makeEcho("203.0.113.2");
  bytes.push_back(0xFF);
  EXPECT_EQ(readIp(bytes)->payload().size(), 40U);
}

TEST(LabReadIp, RefusesEveryShortenedPacket) {
  for (const Packet& whole : {makeEcho("203.0.113.2"), makeEchoV6("2001:db8:0:2::1")}) {
    for (std::size_t length = 0; length < whole.size(); ++length) {
      EXPECT_FALSE(readIp(Bytes(whole).first(length))) << length;
    }
  }
}

TEST(LabReadIp, RefusesAWrongHeaderChecksum) {
  Packet bytes = makeEcho("203.0.113.2");
  bytes[10] ^= 0x01;
  EXPECT_FALSE(readIp(bytes));
}

TEST(LabReadIp, RefusesOptionHeadersThatReachPastTheEnd) {
  const Packet payload{58, 200, 1, 4, 0, 0, 0, 0};
  EXPECT_FALSE(readIp(makeV6(kMachineV6, "2001:db8:0:2::1", 60, payload)));
}

TEST(LabEcho, IsNoneWithAWrongChecksum) {
  Packet v4 = makeEcho("203.0.113.2");
  v4.back() ^= 0x01;
  EXPECT_FALSE(isEchoRequest(*readIp(v4)));
  Packet v6 = makeEchoV6("2001:db8:0:2::1");
  v6.back() ^= 0x01;
  EXPECT_FALSE(isEchoRequest(*readIp(v6)));
}

TEST(LabEcho, ReplyOfIpv4ComesBackWithRightChecksums) {
  const Packet bytes = makeEcho("203.0.113.2", 9);
  const Packet reply = echoReply(*readIp(bytes), 61);
  const auto packet = readIp(reply);
  ASSERT_TRUE(packet);
  EXPECT_EQ(packet->source.text(), "203.0.113.2");
  EXPECT_EQ(packet->destination.text(), "192.0.2.2");
  EXPECT_EQ(packet->hopsLeft, 61);
  EXPECT_EQ(packet->payload()[0], 0);
  EXPECT_EQ(internetChecksum(packet->payload()), 0);
  EXPECT_EQ(tail(reply, 36), tail(bytes, 36));
}

TEST(LabEcho, ReplyOfIpv6ComesBackWithARightChecksum) {
  const Packet bytes = makeEchoV6("2001:db8:0:2::1");
  const Packet reply = echoReply(*readIp(bytes), 61);
  EXPECT_EQ(reply[7], 61);
  EXPECT_EQ(reply[40], 129);
  const Packet body(reply.begin() + 40, reply.end());
  EXPECT_EQ(checksumWithAddresses("2001:db8:0:2::1", kMachineV6, 58, body), 0);
}

// A checksum of 0xFFFF is where adding one carries around.
TEST(LabEcho, ReplyChecksumIsRightForEveryRequestChecksum) {
  for (std::size_t value = 0; value < 0x10000; value += 0xFF) {
    Packet body = makeEchoBody(8, 2);
    putNumber(body, 8, value);
    putNumber(body, 2, internetChecksum(body));
    const Packet bytes = makeV4(kMachine, "203.0.113.2", 1, body);
    const Packet reply = echoReply(*readIp(bytes), 64);
    ASSERT_EQ(internetChecksum(readIp(reply)->payload()), 0) << value;
  }
}

TEST(LabUdp, ReplyComesFromTheAskedPort) {
  const Packet bytes = makeUdp("198.51.100.53", 53, {1, 2, 3});
  const Packet answer{9, 8, 7, 6};
  const Packet reply = udpReply(*readIp(bytes), answer, 64);
  const auto packet = readIp(reply);
  ASSERT_TRUE(packet);
  EXPECT_TRUE(isUdp(*packet));
  EXPECT_EQ(numberAt(packet->payload(), 0), 53U);
  EXPECT_EQ(udpDestinationPort(*packet), 40000);
  EXPECT_THAT(udpData(*packet), ElementsAre(9, 8, 7, 6));
}

TEST(LabUdp, IsNoneWithAWrongChecksum) {
  Packet bytes = makeUdp("198.51.100.53", 53, {1, 2, 3});
  bytes.back() ^= 0x01;
  EXPECT_FALSE(isUdp(*readIp(bytes)));
}

TEST(LabUdp, MayLeaveTheChecksumOutInIpv4) {
  Packet bytes = makeUdp("198.51.100.53", 53, {1, 2, 3});
  putNumber(bytes, 26, 0);
  EXPECT_TRUE(isUdp(*readIp(bytes)));
}

TEST(LabError, QuotesThePacketAsItStoodThere) {
  const Packet bytes = makeEcho("203.0.113.2", 3);
  const Packet error =
      icmpError({IcmpError::TimeExceeded}, *readIp(bytes), addressOf("192.0.2.1"), 1, 62);
  const auto packet = readIp(error);
  ASSERT_TRUE(packet);
  EXPECT_EQ(packet->source.text(), "192.0.2.1");
  EXPECT_EQ(packet->hopsLeft, 62);
  EXPECT_EQ(internetChecksum(packet->payload()), 0);
  EXPECT_THAT(packet->payload().first(2), ElementsAre(11, 0));
  const auto quoted = readIp(packet->payload().subspan(8));
  ASSERT_TRUE(quoted);
  EXPECT_EQ(quoted->hopsLeft, 1);
  EXPECT_EQ(quoted->destination.text(), "203.0.113.2");
}

TEST(LabError, OfIpv6HasARightChecksum) {
  const Packet bytes = makeEchoV6("2001:db8:0:2::1");
  const Packet error =
      icmpError({IcmpError::PortUnreachable}, *readIp(bytes), addressOf("2001:db8:0:2::1"), 60, 64);
  const Packet body(error.begin() + 40, error.end());
  EXPECT_THAT(Bytes(body).first(2), ElementsAre(1, 4));
  EXPECT_EQ(checksumWithAddresses("2001:db8:0:2::1", kMachineV6, 58, body), 0);
}

TEST(LabError, NeverGrowsPastTheSizeThatPassesEverywhere) {
  const Packet bytes = makeEcho("203.0.113.2", 1, 1400);
  const Packet error =
      icmpError({IcmpError::TimeExceeded}, *readIp(bytes), addressOf("192.0.2.1"), 1, 64);
  EXPECT_EQ(error.size(), 576U);
}

}  // namespace
}  // namespace veltrin::lab
