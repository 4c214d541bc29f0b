// SPDX-License-Identifier: GPL-3.0-or-later
// Runs the built ping on the loopback interface and reads it through a pipe.
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

#include "program.h"

namespace veltrin {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;

class PingProgram : public ::testing::Test {
 protected:
  void SetUp() override {
    const std::string reason = obstacle("127.0.0.1");
    if (!reason.empty()) {
      GTEST_SKIP() << reason;
    }
  }
};

class PingProgram6 : public ::testing::Test {
 protected:
  void SetUp() override {
    const std::string reason = obstacle("::1");
    if (!reason.empty()) {
      GTEST_SKIP() << reason;
    }
  }
};

TEST_F(PingProgram, PrintsOneReplyOfTheLoopback) {
  Program ping(VELTRIN_PING, {"127.0.0.1", "-n", "1", "-i", "64"});
  EXPECT_THAT(ping.readRest(),
              ::testing::MatchesRegex(
                  "\r\n"
                  "Pinging 127\\.0\\.0\\.1 with 32 bytes of data:\r\n"
                  "Reply from 127\\.0\\.0\\.1: bytes=32 time(<1|=[0-9]+)ms TTL=64\r\n"
                  "\r\n"
                  "Ping statistics for 127\\.0\\.0\\.1:\r\n"
                  "    Packets: Sent = 1, Received = 1, Lost = 0 \\(0% loss\\),\r\n"
                  "Approximate round trip times in milli-seconds:\r\n"
                  "    Minimum = [0-9]+ms, Maximum = [0-9]+ms, Average = [0-9]+ms \r\n"));
}

TEST_F(PingProgram6, PrintsOneReplyOfTheLoopback) {
  Program ping(VELTRIN_PING, {"::1", "-n", "1"});
  EXPECT_THAT(ping.readRest(),
              ::testing::MatchesRegex(
                  "\r\n"
                  "Pinging ::1 with 32 bytes of data:\r\n"
                  "Reply from ::1: time(<1|=[0-9]+)ms\r\n"
                  "\r\n"
                  "Ping statistics for ::1:\r\n"
                  "    Packets: Sent = 1, Received = 1, Lost = 0 \\(0% loss\\),\r\n"
                  "Approximate round trip times in milli-seconds:\r\n"
                  "    Minimum = [0-9]+ms, Maximum = [0-9]+ms, Average = [0-9]+ms \r\n"));
}

TEST_F(PingProgram, EndsInExactlyThreeCharactersBehindTheAverage) {
  Program ping(VELTRIN_PING, {"127.0.0.1", "-n", "1"});
  const std::string text = ping.readRest();
  EXPECT_EQ(text.substr(text.rfind("ms")), "ms \r\n");
}

TEST_F(PingProgram, HandsItsReaderTheSummaryLineInAPieceOfItsOwn) {
  Program ping(VELTRIN_PING, {"127.0.0.1", "-n", "1"});
  std::string last;
  ping.readRest(&last);
  EXPECT_THAT(last, ::testing::StartsWith("    Minimum = "));
  EXPECT_THAT(last, EndsWith("ms \r\n"));
}

TEST_F(PingProgram, WithAReplyEndsWell) {
  Program ping(VELTRIN_PING, {"127.0.0.1", "-n", "1"});
  ping.readRest();
  EXPECT_EQ(ping.exitCode(), 0);
}

TEST_F(PingProgram, WritesNothingToTheErrorStream) {
  Program ping(VELTRIN_PING, {"127.0.0.1", "-n", "1"});
  ping.readRest();
  EXPECT_EQ(ping.readErrors(), "");
}

TEST_F(PingProgram, PassesTheLargestPacketUnsplit) {
  Program ping(VELTRIN_PING, {"-f", "-l", "65500", "127.0.0.1", "-n", "1"});
  EXPECT_THAT(ping.readRest(), HasSubstr("Reply from 127.0.0.1: bytes=65500 time"));
}

TEST_F(PingProgram, SaysThatAHostCouldNotBeFound) {
  Program ping(VELTRIN_PING, {"nosuch.invalid"});
  EXPECT_EQ(ping.readRest(),
            "Ping request could not find host nosuch.invalid. Please check the name and try "
            "again.\r\n");
  EXPECT_EQ(ping.exitCode(), 1);
}

TEST_F(PingProgram, RefusesASourceOfAnotherMachine) {
  Program ping(VELTRIN_PING, {"127.0.0.1", "-S", "203.0.113.250"});
  EXPECT_EQ(ping.readRest(),
            "PING: cannot send from 203.0.113.250: it is not an address of this machine.\r\n");
}

TEST_F(PingProgram, SendsFromTheChosenSource) {
  Program ping(VELTRIN_PING, {"127.0.0.1", "-S", "127.0.0.9", "-n", "1"});
  EXPECT_THAT(ping.readRest(), HasSubstr("Packets: Sent = 1, Received = 1, Lost = 0 (0% loss),"));
}

TEST_F(PingProgram, RecordsTheRouteOfTheLoopback) {
  Program ping(VELTRIN_PING, {"127.0.0.1", "-r", "2", "-n", "1"});
  EXPECT_THAT(ping.readRest(), HasSubstr("    Route: 127.0.0.1 ->\r\n"
                                         "           127.0.0.1\r\n"));
}

TEST_F(PingProgram, DoesNotTakeAnotherPingsReplies) {
  Program first(VELTRIN_PING, {"127.0.0.1", "-n", "2"});
  Program second(VELTRIN_PING, {"127.0.0.1", "-n", "2"});
  EXPECT_THAT(first.readRest(), HasSubstr("Sent = 2, Received = 2, Lost = 0 (0% loss),"));
  EXPECT_THAT(second.readRest(), HasSubstr("Sent = 2, Received = 2, Lost = 0 (0% loss),"));
}

TEST_F(PingProgram, StoppedByTheUserPrintsItsFigures) {
  Program ping(VELTRIN_PING, {"-t", "127.0.0.1"});
  std::string text;
  ping.readUntil("TTL=", text);
  kill(ping.process(), SIGINT);
  text += ping.readRest();
  EXPECT_THAT(text, HasSubstr(", Lost = 0 (0% loss),\r\n"));
  EXPECT_THAT(text, EndsWith("ms \r\nControl-C\r\n\r\n"));
  EXPECT_EQ(ping.exitCode(), 0);
}

TEST_F(PingProgram, HoldsNoPrivilegeWhileItRuns) {
  Program ping(VELTRIN_PING, {"-t", "127.0.0.1"});
  std::string text;
  ping.readUntil("Pinging", text);
  std::ifstream status("/proc/" + std::to_string(ping.process()) + "/status");
  const std::string all((std::istreambuf_iterator<char>(status)), {});
  EXPECT_THAT(all, HasSubstr("CapInh:\t0000000000000000\n"
                             "CapPrm:\t0000000000000000\n"
                             "CapEff:\t0000000000000000\n"));
}

TEST_F(PingProgram, EndsInSilenceWhenItsReaderGoes) {
  Program ping(VELTRIN_PING, {"-t", "127.0.0.1"});
  ping.readPiece();
  ping.stopReading();
  EXPECT_EQ(ping.exitCode(), 1);
  EXPECT_EQ(ping.readErrors(), "");
}

}  // namespace
}  // namespace veltrin
