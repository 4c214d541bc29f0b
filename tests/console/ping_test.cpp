// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/ping.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_network.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

class PingRun : public ::testing::Test {
 protected:
  int run(const std::vector<std::string>& arguments) {
    return Ping(network_, output_).run(arguments);
  }

  std::string textOf(const std::vector<std::string>& arguments) {
    run(arguments);
    return output_.text();
  }

  FakeNetwork network_;
  KeptOutput output_;
};

TEST_F(PingRun, PrintsFourRepliesAndTheirFigures) {
  network_.names["www.example.net"] = "192.0.2.7";
  network_.reply(1, 23'999);
  network_.reply(2, 24'000);
  network_.reply(3, 25'500);
  network_.reply(4, 24'100);

  EXPECT_EQ(run({"www.example.net"}), 0);
  EXPECT_EQ(output_.text(),
            "\r\n"
            "Pinging www.example.net [192.0.2.7] with 32 bytes of data:\r\n"
            "Reply from 192.0.2.7: bytes=32 time=23ms TTL=56\r\n"
            "Reply from 192.0.2.7: bytes=32 time=24ms TTL=56\r\n"
            "Reply from 192.0.2.7: bytes=32 time=25ms TTL=56\r\n"
            "Reply from 192.0.2.7: bytes=32 time=24ms TTL=56\r\n"
            "\r\n"
            "Ping statistics for 192.0.2.7:\r\n"
            "    Packets: Sent = 4, Received = 4, Lost = 0 (0% loss),\r\n"
            "Approximate round trip times in milli-seconds:\r\n"
            "    Minimum = 23ms, Maximum = 25ms, Average = 24ms \r\n");
}

TEST_F(PingRun, WritesEachLineAsOnePiece) {
  network_.reply(1, 1'000);
  run({"192.0.2.7", "-n", "1"});
  EXPECT_THAT(output_.pieces,
              ElementsAre("\r\n", "Pinging 192.0.2.7 with 32 bytes of data:\r\n",
                          "Reply from 192.0.2.7: bytes=32 time=1ms TTL=56\r\n", "\r\n",
                          "Ping statistics for 192.0.2.7:\r\n",
                          "    Packets: Sent = 1, Received = 1, Lost = 0 (0% loss),\r\n",
                          "Approximate round trip times in milli-seconds:\r\n",
                          "    Minimum = 1ms, Maximum = 1ms, Average = 1ms \r\n"));
}

TEST_F(PingRun, LetsTheReaderCatchUpBeforeTheLastPiece) {
  network_.reply(1, 1'000);
  run({"192.0.2.7", "-n", "1"});
  EXPECT_EQ(output_.caughtUpAfter, output_.pieces.size() - 1);
}

TEST_F(PingRun, SaysLessThanOneMillisecondAndCountsZero) {
  network_.reply(1, 999);
  const std::string text = textOf({"192.0.2.7", "-n", "1"});
  EXPECT_THAT(text, HasSubstr("Reply from 192.0.2.7: bytes=32 time<1ms TTL=56\r\n"));
  EXPECT_THAT(text, EndsWith("    Minimum = 0ms, Maximum = 0ms, Average = 0ms \r\n"));
}

TEST_F(PingRun, RoundsTheAverageDown) {
  network_.reply(1, 1'000);
  network_.reply(2, 2'000);
  EXPECT_THAT(textOf({"192.0.2.7", "-n", "2"}),
              EndsWith("    Minimum = 1ms, Maximum = 2ms, Average = 1ms \r\n"));
}

TEST_F(PingRun, SendsOneEchoASecond) {
  network_.reply(1, 10'000);
  network_.reply(2, 900'000);
  network_.reply(3, 10'000);
  run({"192.0.2.7", "-n", "3"});
  EXPECT_THAT(network_.sendTimes, ElementsAre(1'000'000, 2'000'000, 3'000'000));
}

TEST_F(PingRun, EndsAtOnceBehindTheLastEcho) {
  network_.reply(1, 10'000);
  run({"192.0.2.7", "-n", "1"});
  EXPECT_EQ(network_.now(), 1'010'000);
}

TEST_F(PingRun, SendsTheNextEchoRightBehindATimeoutOfOverASecond) {
  run({"192.0.2.7", "-n", "2"});
  EXPECT_THAT(network_.sendTimes, ElementsAre(1'000'000, 5'000'000));
}

TEST_F(PingRun, KeepsToTheSecondBehindAShortTimeout) {
  run({"192.0.2.7", "-n", "2", "-w", "200"});
  EXPECT_THAT(network_.sendTimes, ElementsAre(1'000'000, 2'000'000));
}

TEST_F(PingRun, WithEveryEchoLostPrintsNoTimes) {
  EXPECT_EQ(run({"192.0.2.7", "-n", "2"}), 1);
  EXPECT_EQ(output_.text(),
            "\r\n"
            "Pinging 192.0.2.7 with 32 bytes of data:\r\n"
            "Request timed out.\r\n"
            "Request timed out.\r\n"
            "\r\n"
            "Ping statistics for 192.0.2.7:\r\n"
            "    Packets: Sent = 2, Received = 0, Lost = 2 (100% loss),\r\n");
}

TEST_F(PingRun, RoundsTheLossDown) {
  network_.reply(1, 1'000);
  EXPECT_THAT(textOf({"192.0.2.7", "-n", "3"}),
              HasSubstr("Packets: Sent = 3, Received = 1, Lost = 2 (66% loss),"));
}

TEST_F(PingRun, WithOneReplyOfManyEndsWell) {
  network_.reply(2, 1'000);
  EXPECT_EQ(run({"192.0.2.7"}), 0);
}

TEST_F(PingRun, CountsAReplyBehindItsTimeoutAsLost) {
  network_.reply(1, 4'500'000);
  network_.reply(2, 600'000);
  const std::string text = textOf({"192.0.2.7", "-n", "2"});
  EXPECT_THAT(text, HasSubstr("Request timed out.\r\n"
                              "Reply from 192.0.2.7: bytes=32 time=600ms TTL=56\r\n"));
  EXPECT_THAT(text, HasSubstr("Packets: Sent = 2, Received = 1, Lost = 1 (50% loss),"));
}

TEST_F(PingRun, TakesAReplyAtTheVeryTimeout) {
  network_.reply(1, 250'000);
  EXPECT_EQ(run({"192.0.2.7", "-n", "1", "-w", "250"}), 0);
}

TEST_F(PingRun, DoesNotTakeALateReplyOfTheSecondBetweenTwoEchoes) {
  network_.reply(1, 300'000);
  EXPECT_THAT(textOf({"192.0.2.7", "-n", "1", "-w", "200"}), HasSubstr("Lost = 1 (100% loss)"));
}

TEST_F(PingRun, DoesNotTakeALateReplyThatABusyMachineHandsOver) {
  network_.handsOverLate = true;
  network_.reply(1, 200'001);
  EXPECT_THAT(textOf({"192.0.2.7", "-n", "1", "-w", "200"}),
              HasSubstr("of data:\r\nRequest timed out.\r\n"));
}

TEST_F(PingRun, CountsADuplicateOnce) {
  network_.reply(1, 1'000);
  network_.reply(1, 2'000);
  network_.reply(2, 1'000);
  network_.reply(1, 1'000'500);
  EXPECT_THAT(textOf({"192.0.2.7", "-n", "2"}),
              HasSubstr("Packets: Sent = 2, Received = 2, Lost = 0 (0% loss),"));
}

struct ErrorText {
  IcmpError error;
  const char* line;
};

class PingErrorText : public PingRun, public ::testing::WithParamInterface<ErrorText> {};

TEST_P(PingErrorText, NamesWhoReportedIt) {
  network_.error(1, 5'000, GetParam().error);
  EXPECT_THAT(textOf({"192.0.2.7", "-n", "1"}),
              HasSubstr("of data:\r\n" + std::string(GetParam().line) + "\r\n\r\n"));
}

INSTANTIATE_TEST_SUITE_P(
    Errors, PingErrorText,
    ::testing::Values(
        ErrorText{IcmpError::NetUnreachable, "Reply from 192.0.2.1: Destination net unreachable."},
        ErrorText{IcmpError::HostUnreachable,
                  "Reply from 192.0.2.1: Destination host unreachable."},
        ErrorText{IcmpError::ProtocolUnreachable,
                  "Reply from 192.0.2.1: Destination protocol unreachable."},
        ErrorText{IcmpError::PortUnreachable,
                  "Reply from 192.0.2.1: Destination port unreachable."},
        ErrorText{IcmpError::TtlExpired, "Reply from 192.0.2.1: TTL expired in transit."},
        ErrorText{IcmpError::ReassemblyExpired,
                  "Reply from 192.0.2.1: TTL expired during reassembly."},
        ErrorText{IcmpError::BadParameter,
                  "Reply from 192.0.2.1: The packet's header was refused."},
        ErrorText{IcmpError::Other, "Reply from 192.0.2.1: General failure."},
        ErrorText{IcmpError::TooBig, "Packet needs to be fragmented but DF set."}));

TEST_F(PingRun, CountsAnErrorAsReceivedYetWithoutATime) {
  network_.error(1, 5'000, IcmpError::HostUnreachable);
  EXPECT_EQ(run({"192.0.2.7", "-n", "1"}), 1);
  EXPECT_THAT(output_.text(),
              EndsWith("    Packets: Sent = 1, Received = 1, Lost = 0 (0% loss),\r\n"));
}

TEST_F(PingRun, CountsAPacketThatARouterCannotPassAsLost) {
  network_.error(1, 5'000, IcmpError::TooBig);
  EXPECT_THAT(textOf({"192.0.2.7", "-n", "1", "-f"}),
              EndsWith("    Packets: Sent = 1, Received = 0, Lost = 1 (100% loss),\r\n"));
}

TEST_F(PingRun, CountsAPacketTooBigForTheInterfaceAsLost) {
  network_.sendResults[1] = SendResult::TooBig;
  EXPECT_EQ(run({"192.0.2.7", "-n", "1", "-f", "-l", "1473"}), 1);
  EXPECT_EQ(output_.text(),
            "\r\n"
            "Pinging 192.0.2.7 with 1473 bytes of data:\r\n"
            "Packet needs to be fragmented but DF set.\r\n"
            "\r\n"
            "Ping statistics for 192.0.2.7:\r\n"
            "    Packets: Sent = 1, Received = 0, Lost = 1 (100% loss),\r\n");
}

TEST_F(PingRun, SaysThatASendFailedAndGoesOn) {
  network_.sendResults[1] = SendResult::Failed;
  network_.reply(2, 1'000);
  EXPECT_THAT(textOf({"192.0.2.7", "-n", "2"}),
              HasSubstr("PING: transmit failed. General failure.\r\n"
                        "Reply from 192.0.2.7: bytes=32 time=1ms TTL=56\r\n"));
  EXPECT_THAT(network_.sendTimes, ElementsAre(1'000'000, 2'000'000));
}

TEST_F(PingRun, ShowsTheSizeOfAReplyThatCameShortened) {
  network_.reply(1, 1'000, "192.0.2.7", 64);
  EXPECT_THAT(textOf({"192.0.2.7", "-n", "1", "-l", "1000"}),
              HasSubstr("Reply from 192.0.2.7: bytes=64 (sent 1000) time=1ms TTL=56\r\n"));
}

TEST_F(PingRun, ShowsWhoAnsweredForTheDestination) {
  network_.reply(1, 1'000, "192.0.2.8");
  EXPECT_THAT(textOf({"192.0.2.255", "-n", "1"}),
              HasSubstr("Reply from 192.0.2.8: bytes=32 time=1ms TTL=56\r\n"));
}

TEST_F(PingRun, PrintsIpv6RepliesWithoutBytesAndHops) {
  network_.names["www.example.net"] = "2001:db8::7";
  network_.reply(1, 24'000, "2001:db8::7");
  network_.reply(2, 100, "2001:db8::7");
  EXPECT_EQ(textOf({"-6", "www.example.net", "-n", "2"}),
            "\r\n"
            "Pinging www.example.net [2001:db8::7] with 32 bytes of data:\r\n"
            "Reply from 2001:db8::7: time=24ms\r\n"
            "Reply from 2001:db8::7: time<1ms\r\n"
            "\r\n"
            "Ping statistics for 2001:db8::7:\r\n"
            "    Packets: Sent = 2, Received = 2, Lost = 0 (0% loss),\r\n"
            "Approximate round trip times in milli-seconds:\r\n"
            "    Minimum = 0ms, Maximum = 24ms, Average = 12ms \r\n");
}

TEST_F(PingRun, PrintsTheScopeOfALinkLocalAddress) {
  network_.reply(1, 100, "fe80::1%2");
  const std::string text = textOf({"fe80::1%2", "-n", "1"});
  EXPECT_THAT(text, HasSubstr("Pinging fe80::1%2 with 32 bytes of data:\r\n"));
  EXPECT_THAT(text, HasSubstr("Reply from fe80::1%2: time<1ms\r\n"));
}

TEST_F(PingRun, SaysThatAnIpv6PacketIsTooBig) {
  network_.error(1, 100, IcmpError::TooBig, "2001:db8::1");
  EXPECT_THAT(textOf({"2001:db8::7", "-n", "1"}),
              HasSubstr("Reply from 2001:db8::1: Packet too big.\r\n"));
}

TEST_F(PingRun, ShowsTheNameOfAnAddressWhenAsked) {
  network_.reverseNames["192.0.2.7"] = "www.example.net";
  EXPECT_THAT(textOf({"-a", "192.0.2.7", "-n", "1"}),
              StartsWith("\r\nPinging www.example.net [192.0.2.7] with 32 bytes of data:\r\n"));
}

TEST_F(PingRun, ShowsAnAddressWithoutANameAsItIs) {
  EXPECT_THAT(textOf({"-a", "192.0.2.7", "-n", "1"}),
              StartsWith("\r\nPinging 192.0.2.7 with 32 bytes of data:\r\n"));
}

TEST_F(PingRun, LooksUpNoNameUnasked) {
  network_.reverseNames["192.0.2.7"] = "www.example.net";
  EXPECT_THAT(textOf({"192.0.2.7", "-n", "1"}), Not(HasSubstr("www.example.net")));
}

TEST_F(PingRun, ShowsTheSourceThatWasChosen) {
  EXPECT_THAT(textOf({"-S", "192.0.2.20", "192.0.2.7", "-n", "1"}),
              StartsWith("\r\nPinging 192.0.2.7 from 192.0.2.20 with 32 bytes of data:\r\n"));
  EXPECT_EQ(network_.source, addressOf("192.0.2.20"));
}

TEST_F(PingRun, RefusesASourceOfAnotherMachine) {
  network_.openResult = OpenResult::BadSource;
  EXPECT_EQ(run({"-S", "192.0.2.20", "192.0.2.7"}), 1);
  EXPECT_EQ(output_.text(),
            "PING: cannot send from 192.0.2.20: it is not an address of this machine.\r\n");
}

TEST_F(PingRun, SaysWhatItLacksWhenNoSocketIsAllowed) {
  network_.openResult = OpenResult::NotAllowed;
  EXPECT_EQ(run({"192.0.2.7"}), 1);
  EXPECT_EQ(output_.text(),
            "PING: this system allows no echo to this user: neither net.ipv4.ping_group_range nor "
            "the capability CAP_NET_RAW permits it.\r\n");
}

TEST_F(PingRun, SaysThatAHostCouldNotBeFound) {
  EXPECT_EQ(run({"nosuch.invalid"}), 1);
  EXPECT_EQ(output_.text(),
            "Ping request could not find host nosuch.invalid. Please check the name and try "
            "again.\r\n");
}

TEST_F(PingRun, AsksForTheChosenFamily) {
  run({"-6", "www.example.net"});
  EXPECT_EQ(network_.askedFamily, FamilyChoice::IPv6);
}

TEST_F(PingRun, OpensTheFamilyOfTheAddress) {
  run({"2001:db8::7", "-n", "1"});
  EXPECT_EQ(network_.openedFamily, Family::IPv6);
}

TEST_F(PingRun, SendsWhatTheOptionsAskFor) {
  run({"-l", "100", "-i", "9", "-v", "16", "-f", "-r", "2", "-s", "1", "192.0.2.7", "-n", "1"});
  ASSERT_EQ(network_.requests.size(), 1U);
  const EchoRequest& request = network_.requests[0];
  EXPECT_EQ(request.destination, addressOf("192.0.2.7"));
  EXPECT_EQ(request.sequence, 1);
  EXPECT_EQ(request.size, 100U);
  EXPECT_EQ(request.ttl, 9);
  EXPECT_EQ(request.tos, 16);
  EXPECT_TRUE(request.dontFragment);
  EXPECT_EQ(request.routeSlots, 2);
  EXPECT_EQ(request.stampSlots, 1);
}

TEST_F(PingRun, PrintsARecordedRoute) {
  Incoming reply;
  reply.from = addressOf("192.0.2.7");
  reply.size = 32;
  reply.ttl = 56;
  reply.route = {addressOf("192.0.2.1"), addressOf("192.0.2.7"), addressOf("192.0.2.2")};
  network_.answer(1, 100, reply);
  EXPECT_THAT(textOf({"-r", "3", "192.0.2.7", "-n", "1"}),
              HasSubstr("Reply from 192.0.2.7: bytes=32 time<1ms TTL=56\r\n"
                        "    Route: 192.0.2.1 ->\r\n"
                        "           192.0.2.7 ->\r\n"
                        "           192.0.2.2\r\n"
                        "\r\n"));
}

TEST_F(PingRun, PrintsRecordedTimes) {
  Incoming reply;
  reply.from = addressOf("192.0.2.7");
  reply.size = 32;
  reply.ttl = 56;
  reply.stamps = {{addressOf("192.0.2.1"), 1234}, {addressOf("192.0.2.7"), 1250}};
  network_.answer(1, 100, reply);
  EXPECT_THAT(textOf({"-s", "2", "192.0.2.7", "-n", "1"}),
              HasSubstr("    Timestamp: 192.0.2.1 : 1234 ->\r\n"
                        "               192.0.2.7 : 1250\r\n"
                        "\r\n"));
}

TEST_F(PingRun, GoesOnUntilTheUserStopsIt) {
  for (std::uint16_t i = 1; i <= 20; ++i) {
    network_.reply(i, 2'000);
  }
  network_.interruptAt = 11'500'000;
  EXPECT_EQ(run({"-t", "192.0.2.7"}), 0);
  EXPECT_THAT(output_.text(),
              EndsWith("\r\n"
                       "Ping statistics for 192.0.2.7:\r\n"
                       "    Packets: Sent = 11, Received = 11, Lost = 0 (0% loss),\r\n"
                       "Approximate round trip times in milli-seconds:\r\n"
                       "    Minimum = 2ms, Maximum = 2ms, Average = 2ms \r\n"
                       "Control-C\r\n"
                       "\r\n"));
}

TEST_F(PingRun, StoppedBeforeAnyReplyPrintsWhatItHas) {
  network_.interruptAt = 1'000'500;
  EXPECT_EQ(run({"192.0.2.7"}), 1);
  EXPECT_THAT(output_.text(),
              EndsWith("    Packets: Sent = 1, Received = 0, Lost = 1 (100% loss),\r\n"
                       "Control-C\r\n"
                       "\r\n"));
}

TEST_F(PingRun, NumbersEchoesBeyondSixteenBits) {
  network_.interruptAt = 65'537 * kSecond + 500'000;
  run({"-t", "-w", "1", "192.0.2.7"});
  ASSERT_EQ(network_.requests.size(), 65'537U);
  EXPECT_EQ(network_.requests[65'535].sequence, 0);
  EXPECT_EQ(network_.requests[65'536].sequence, 1);
}

class PingReaderGone : public PingRun, public ::testing::WithParamInterface<std::size_t> {};

TEST_P(PingReaderGone, EndsWithoutAnotherWrite) {
  network_.reply(1, 1'000);
  network_.reply(2, 1'000);
  output_.failFrom = GetParam();
  EXPECT_EQ(run({"192.0.2.7", "-n", "2"}), 1);
  EXPECT_EQ(output_.attempts, GetParam() + 1);
}

INSTANTIATE_TEST_SUITE_P(AtEveryPiece, PingReaderGone, ::testing::Range<std::size_t>(0, 9));

TEST_F(PingRun, WithoutAReaderSendsNoMore) {
  output_.failFrom = 2;
  network_.reply(1, 1'000);
  run({"-t", "192.0.2.7"});
  EXPECT_EQ(network_.requests.size(), 1U);
}

TEST_F(PingRun, PrintsTheUsageWhenAsked) {
  EXPECT_EQ(run({"-?"}), 0);
  EXPECT_THAT(output_.pieces, ElementsAre(std::string(pingUsage())));
}

TEST_F(PingRun, PrintsTheUsageBehindABadOption) {
  EXPECT_EQ(run({"-z", "192.0.2.7"}), 1);
  EXPECT_THAT(output_.pieces, ElementsAre("Bad option -z.\r\n", std::string(pingUsage())));
}

TEST_F(PingRun, PrintsABadValueAlone) {
  EXPECT_EQ(run({"-n", "0", "192.0.2.7"}), 1);
  EXPECT_THAT(output_.pieces,
              ElementsAre("Bad value for option -n, valid range is from 1 to 4294967295.\r\n"));
}

TEST_F(PingRun, SendsNothingForAMistake) {
  run({"-n", "0", "192.0.2.7"});
  EXPECT_FALSE(network_.openedFamily);
}

}  // namespace
}  // namespace veltrin
