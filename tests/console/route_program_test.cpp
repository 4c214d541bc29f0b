// SPDX-License-Identifier: GPL-3.0-or-later
// Runs the built tracert and pathping on the loopback interface and reads them
// through a pipe.
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

#include "program.h"

namespace veltrin {
namespace {

using ::testing::HasSubstr;
using ::testing::MatchesRegex;

class RouteProgram : public ::testing::Test {
 protected:
  void SetUp() override {
    const std::string reason = obstacle("127.0.0.1");
    if (!reason.empty()) {
      GTEST_SKIP() << reason;
    }
  }
};

class RouteProgram6 : public ::testing::Test {
 protected:
  void SetUp() override {
    const std::string reason = obstacle("::1");
    if (!reason.empty()) {
      GTEST_SKIP() << reason;
    }
  }
};

TEST_F(RouteProgram, TracesTheLoopback) {
  Program tracert(VELTRIN_TRACERT, {"-d", "127.0.0.1"});
  EXPECT_THAT(tracert.readRest(),
              MatchesRegex("\r\n"
                           "Tracing route to 127\\.0\\.0\\.1 over a maximum of 30 hops\r\n"
                           "\r\n"
                           "  1   ( <1|...[0-9]) ms   ( <1|...[0-9]) ms   ( <1|...[0-9]) ms  "
                           "127\\.0\\.0\\.1 \r\n"
                           "\r\n"
                           "Trace complete\\.\r\n"));
  EXPECT_EQ(tracert.exitCode(), 0);
}

TEST_F(RouteProgram6, TracesTheLoopback) {
  Program tracert(VELTRIN_TRACERT, {"-d", "::1"});
  EXPECT_THAT(tracert.readRest(), HasSubstr(" ms  ::1 \r\n"
                                            "\r\n"
                                            "Trace complete.\r\n"));
}

TEST_F(RouteProgram, MeasuresTheLoopback) {
  Program pathping(VELTRIN_PATHPING, {"-n", "-q", "3", "-p", "10", "127.0.0.1"});
  EXPECT_THAT(pathping.readRest(),
              MatchesRegex("\r\n"
                           "Tracing route to 127\\.0\\.0\\.1 over a maximum of 30 hops\r\n"
                           "  0  127\\.0\\.0\\.1 \r\n"
                           "  1  127\\.0\\.0\\.1 \r\n"
                           "\r\n"
                           "Computing statistics for 1 seconds\\.\\.\\.\r\n"
                           "            Source to Here   This Node/Link\r\n"
                           "Hop  RTT    Lost/Sent = Pct  Lost/Sent = Pct  Address\r\n"
                           "  0                                           127\\.0\\.0\\.1 \r\n"
                           "                                0/   3 =  0%   \\|\r\n"
                           "  1[ 0-9]+ms     0/   3 =  0%     0/   3 =  0%  127\\.0\\.0\\.1 \r\n"
                           "\r\n"
                           "Trace complete\\.\r\n"));
  EXPECT_EQ(pathping.exitCode(), 0);
}

TEST_F(RouteProgram, DoesNotTakeAnothersAnswers) {
  Program first(VELTRIN_PATHPING, {"-n", "-q", "20", "-p", "10", "127.0.0.1"});
  Program second(VELTRIN_PATHPING, {"-n", "-q", "20", "-p", "10", "127.0.0.1"});
  EXPECT_THAT(first.readRest(), HasSubstr("0/  20 =  0%     0/  20 =  0%  127.0.0.1 \r\n"));
  EXPECT_THAT(second.readRest(), HasSubstr("0/  20 =  0%     0/  20 =  0%  127.0.0.1 \r\n"));
}

TEST_F(RouteProgram, SaysThatAHostCouldNotBeFound) {
  Program tracert(VELTRIN_TRACERT, {"nosuch.invalid"});
  EXPECT_EQ(tracert.readRest(), "Unable to resolve target system name nosuch.invalid.\r\n");
  EXPECT_EQ(tracert.exitCode(), 1);
}

TEST_F(RouteProgram, StoppedByTheUserPrintsItsFiguresAtOnce) {
  Program pathping(VELTRIN_PATHPING, {"-n", "127.0.0.1"});
  std::string text;
  pathping.readUntil("seconds...", text);
  kill(pathping.process(), SIGINT);
  EXPECT_THAT(pathping.readRest(), HasSubstr("%  127.0.0.1 \r\n"));
  EXPECT_EQ(pathping.exitCode(), 130);
}

TEST_F(RouteProgram, HoldsNoPrivilegeWhileItRuns) {
  Program pathping(VELTRIN_PATHPING, {"-n", "127.0.0.1"});
  std::string text;
  pathping.readUntil("Computing", text);
  std::ifstream status("/proc/" + std::to_string(pathping.process()) + "/status");
  const std::string all((std::istreambuf_iterator<char>(status)), {});
  EXPECT_THAT(all, HasSubstr("CapInh:\t0000000000000000\n"
                             "CapPrm:\t0000000000000000\n"
                             "CapEff:\t0000000000000000\n"));
}

TEST_F(RouteProgram, EndsInSilenceWhenItsReaderGoes) {
  Program pathping(VELTRIN_PATHPING, {"-n", "-q", "2", "-p", "500", "127.0.0.1"});
  pathping.stopReading();
  EXPECT_EQ(pathping.exitCode(), 1);
  EXPECT_EQ(pathping.readErrors(), "");
}

}  // namespace
}  // namespace veltrin
