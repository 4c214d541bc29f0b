// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/icmp.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_network.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(InternetChecksum, IsTheComplementOfTheSumWithItsCarries) {
  const Bytes bytes = {0x00, 0x01, 0xF2, 0x03, 0xF4, 0xF5, 0xF6, 0xF7};
  EXPECT_EQ(internetChecksum(bytes), 0x220D);
}

TEST(InternetChecksum, TakesAnOddLastByteAsAHighOne) {
  EXPECT_EQ(internetChecksum(Bytes{0x12, 0x34, 0x56}), 0x97CB);
}

TEST(InternetChecksum, OfNothingIsAllOnes) { EXPECT_EQ(internetChecksum({}), 0xFFFF); }

TEST(EchoRequest, OfIpv4IsWrittenByteForByte) {
  EXPECT_THAT(buildEchoRequest(Family::IPv4, 0x1234, 0x0102, 3),
              ElementsAre(8, 0, 0x20, 0x67, 0x12, 0x34, 0x01, 0x02, 'a', 'b', 'c'));
}

TEST(EchoRequest, OfIpv6LeavesTheChecksumToTheKernel) {
  EXPECT_THAT(buildEchoRequest(Family::IPv6, 0x1234, 0x0102, 1),
              ElementsAre(128, 0, 0, 0, 0x12, 0x34, 0x01, 0x02, 'a'));
}

TEST(EchoRequest, RepeatsItsLettersAfterTheTwentyThird) {
  const Bytes message = buildEchoRequest(Family::IPv4, 1, 1, 24);
  EXPECT_EQ(message[8 + 22], 'w');
  EXPECT_EQ(message[8 + 23], 'a');
}

TEST(EchoRequest, OfTheLargestSizeHoldsItsRightChecksum) {
  const Bytes message = buildEchoRequest(Family::IPv4, 7, 9, 65500);
  EXPECT_EQ(message.size(), 65508U);
  EXPECT_EQ(internetChecksum(message), 0);
}

TEST(ParseEcho, ReadsAReplyOfEitherFamily) {
  const Bytes four = {0, 0, 0, 0, 0xAB, 0xCD, 0x00, 0x10, 1, 2};
  const Bytes six = {129, 0, 0, 0, 0xAB, 0xCD, 0x00, 0x10, 1, 2};
  const EchoMessage expected{true, 0xABCD, 16, 2};
  EXPECT_EQ(parseEcho(Family::IPv4, four), expected);
  EXPECT_EQ(parseEcho(Family::IPv6, six), expected);
}

TEST(ParseEcho, ReadsTheRequestThatAnErrorQuotes) {
  const Bytes request = buildEchoRequest(Family::IPv4, 77, 5, 0);
  EXPECT_EQ(parseEcho(Family::IPv4, request), (EchoMessage{false, 77, 5, 0}));
}

TEST(ParseEcho, RefusesEveryOtherMessage) {
  EXPECT_FALSE(parseEcho(Family::IPv4, Bytes{3, 0, 0, 0, 0, 0, 0, 0}));
  EXPECT_FALSE(parseEcho(Family::IPv4, Bytes{129, 0, 0, 0, 0, 0, 0, 0}));
  EXPECT_FALSE(parseEcho(Family::IPv6, Bytes{0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(ParseEcho, RefusesACodeOtherThanZero) {
  EXPECT_FALSE(parseEcho(Family::IPv4, Bytes{0, 1, 0, 0, 0, 0, 0, 0}));
}

TEST(ParseEcho, RefusesAHeaderThatIsCutShort) {
  EXPECT_FALSE(parseEcho(Family::IPv4, Bytes{0, 0, 0, 0, 0, 0, 0}));
  EXPECT_FALSE(parseEcho(Family::IPv4, {}));
}

TEST(Ipv4Payload, StandsBehindTheOptionsToo) {
  Bytes packet(25, 0);
  packet[0] = 0x46;
  packet[24] = 9;
  const auto payload = ipv4Payload(packet);
  ASSERT_TRUE(payload);
  EXPECT_THAT(*payload, ElementsAre(9));
}

TEST(Ipv4Payload, RefusesAnotherVersionAndHeadersThatDoNotFit) {
  Bytes packet(24, 0);
  packet[0] = 0x65;
  EXPECT_FALSE(ipv4Payload(packet));
  packet[0] = 0x44;
  EXPECT_FALSE(ipv4Payload(packet));
  packet[0] = 0x47;
  EXPECT_FALSE(ipv4Payload(packet));
  EXPECT_FALSE(ipv4Payload(Bytes{0x45}));
}

struct ErrorCase {
  Family family;
  std::uint8_t type;
  std::uint8_t code;
  IcmpError error;
};

class ErrorOf : public ::testing::TestWithParam<ErrorCase> {};

TEST_P(ErrorOf, ReportsWhatTheTypeAndCodeMean) {
  EXPECT_EQ(errorOf(GetParam().family, GetParam().type, GetParam().code), GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(
    Ipv4, ErrorOf,
    ::testing::Values(ErrorCase{Family::IPv4, 3, 0, IcmpError::NetUnreachable},
                      ErrorCase{Family::IPv4, 3, 1, IcmpError::HostUnreachable},
                      ErrorCase{Family::IPv4, 3, 2, IcmpError::ProtocolUnreachable},
                      ErrorCase{Family::IPv4, 3, 3, IcmpError::PortUnreachable},
                      ErrorCase{Family::IPv4, 3, 4, IcmpError::TooBig},
                      ErrorCase{Family::IPv4, 3, 13, IcmpError::HostUnreachable},
                      ErrorCase{Family::IPv4, 11, 0, IcmpError::TtlExpired},
                      ErrorCase{Family::IPv4, 11, 1, IcmpError::ReassemblyExpired},
                      ErrorCase{Family::IPv4, 12, 0, IcmpError::BadParameter},
                      ErrorCase{Family::IPv4, 42, 0, IcmpError::Other}));

INSTANTIATE_TEST_SUITE_P(
    Ipv6, ErrorOf,
    ::testing::Values(ErrorCase{Family::IPv6, 1, 0, IcmpError::NetUnreachable},
                      ErrorCase{Family::IPv6, 1, 1, IcmpError::HostUnreachable},
                      ErrorCase{Family::IPv6, 1, 3, IcmpError::HostUnreachable},
                      ErrorCase{Family::IPv6, 1, 4, IcmpError::PortUnreachable},
                      ErrorCase{Family::IPv6, 2, 0, IcmpError::TooBig},
                      ErrorCase{Family::IPv6, 3, 0, IcmpError::TtlExpired},
                      ErrorCase{Family::IPv6, 3, 1, IcmpError::ReassemblyExpired},
                      ErrorCase{Family::IPv6, 4, 0, IcmpError::BadParameter},
                      ErrorCase{Family::IPv6, 42, 0, IcmpError::Other}));

TEST(Options, AskForARoute) {
  EXPECT_THAT(buildOptions(1, 0), ElementsAre(7, 7, 4, 0, 0, 0, 0, 0));
}

TEST(Options, AskForTimesWithTheirAddresses) {
  EXPECT_THAT(buildOptions(0, 1), ElementsAre(68, 12, 5, 1, 0, 0, 0, 0, 0, 0, 0, 0));
}

TEST(Options, AskForBothOneBehindTheOther) {
  EXPECT_THAT(buildOptions(1, 1),
              ElementsAre(7, 7, 4, 0, 0, 0, 0, 68, 12, 5, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0));
}

TEST(Options, OfNineHopsFillTheHeader) {
  EXPECT_EQ(buildOptions(9, 0).size(), kOptionsSpace);
  EXPECT_EQ(optionsSize(9, 0), 39U);
}

TEST(RecordedRoute, ListsTheFilledSlots) {
  const Bytes options = {1, 7, 15, 12, 192, 0, 2, 1, 192, 0, 2, 2, 0, 0, 0, 0, 0};
  EXPECT_THAT(recordedRoute(options), ElementsAre(addressOf("192.0.2.1"), addressOf("192.0.2.2")));
}

TEST(RecordedRoute, IsEmptyWithoutTheOption) {
  EXPECT_THAT(recordedRoute({}), IsEmpty());
  EXPECT_THAT(recordedRoute(Bytes{68, 4, 5, 1}), IsEmpty());
  EXPECT_THAT(recordedRoute(Bytes{0, 7, 7, 8, 192, 0, 2, 1}), IsEmpty());
}

TEST(RecordedRoute, OfABrokenOptionReadsNoByteTooMany) {
  EXPECT_THAT(recordedRoute(Bytes{7}), IsEmpty());
  EXPECT_THAT(recordedRoute(Bytes{7, 2}), IsEmpty());
  EXPECT_THAT(recordedRoute(Bytes{7, 0, 4}), IsEmpty());
  EXPECT_THAT(recordedRoute(Bytes{7, 40, 4, 0}), IsEmpty());
  EXPECT_THAT(recordedRoute(Bytes{7, 7, 0, 192, 0, 2, 1}), IsEmpty());
  EXPECT_THAT(recordedRoute(Bytes{7, 7, 255, 192, 0, 2, 1}), ElementsAre(addressOf("192.0.2.1")));
}

TEST(SourceRoute, ListsTheHostsBehindItsPointer) {
  EXPECT_THAT(buildSourceRoute({addressOf("192.0.2.9"), addressOf("192.0.2.10")}),
              ElementsAre(131, 11, 4, 192, 0, 2, 9, 192, 0, 2, 10, 0));
}

TEST(SourceRoute, WithTheMostHostsFillsTheHeader) {
  const std::vector<Address> through(kThroughMost, addressOf("192.0.2.9"));
  EXPECT_EQ(buildSourceRoute(through).size(), kOptionsSpace);
}

TEST(SourceRoute, OfNoHostsIsEmpty) { EXPECT_THAT(buildSourceRoute({}), IsEmpty()); }

TEST(EvenedOutEcho, HasOneChecksumWhateverItsNumber) {
  Bytes first = buildEchoRequest(Family::IPv4, 7, 1, 64);
  Bytes second = buildEchoRequest(Family::IPv4, 7, 4711, 64);
  evenOut(Family::IPv4, first);
  evenOut(Family::IPv4, second);
  EXPECT_EQ(first[2], second[2]);
  EXPECT_EQ(first[3], second[3]);
}

TEST(EvenedOutEcho, HoldsItsRightChecksum) {
  Bytes message = buildEchoRequest(Family::IPv4, 7, 4711, 64);
  evenOut(Family::IPv4, message);
  EXPECT_EQ(internetChecksum(message), 0);
}

TEST(EvenedOutEcho, WithoutRoomStaysAsItIs) {
  Bytes message = buildEchoRequest(Family::IPv4, 7, 4711, 1);
  const Bytes before = message;
  evenOut(Family::IPv4, message);
  EXPECT_EQ(message, before);
}

TEST(RecordedTimes, ListsHopsWithTheirTimes) {
  const Bytes options = {68, 12, 13, 1, 192, 0, 2, 9, 0x00, 0x01, 0x00, 0x02};
  EXPECT_THAT(recordedTimes(options), ElementsAre(HopTime{addressOf("192.0.2.9"), 65538}));
}

TEST(RecordedTimes, WithoutAddressesAreNotRead) {
  EXPECT_THAT(recordedTimes(Bytes{68, 12, 13, 0, 0, 0, 0, 1, 0, 0, 0, 2}), IsEmpty());
}

TEST(AddressText, ComesBackFromBothFamiliesAndScopes) {
  EXPECT_EQ(addressOf("192.0.2.7").text(), "192.0.2.7");
  EXPECT_EQ(addressOf("2001:DB8:0::7").text(), "2001:db8::7");
  EXPECT_EQ(addressOf("fe80::1%3").text(), "fe80::1%3");
}

TEST(AddressText, OfAnInterfaceNameBecomesItsNumber) {
  EXPECT_EQ(addressOf("fe80::1%lo").text(), "fe80::1%1");
}

TEST(AddressText, IsRefusedWhenItIsNoAddress) {
  for (const char* text : {"", "localhost", "192.0.2", "192.0.2.256", "192.0.2.7%lo", "fe80::1%",
                           "fe80::1%no-such-interface", "fe80::1%0", "1:2", ":::"}) {
    EXPECT_FALSE(Address::parse(text)) << text;
  }
}

}  // namespace
}  // namespace veltrin
