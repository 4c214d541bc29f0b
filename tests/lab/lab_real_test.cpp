// SPDX-License-Identifier: GPL-3.0-or-later
// The program `lab` itself, with the system's own tools inside. Skipped with the
// lab's reason where it cannot run.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "lab_program.h"

namespace veltrin::lab {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class LabReal : public LabRunning {
 protected:
  // The least round trip in milliseconds that ping's last line tells; -1 when
  // there is none.
  static double leastOf(const std::string& text) {
    static constexpr std::string_view kBefore = "rtt min/avg/max/mdev = ";
    const std::size_t at = text.find(kBefore);
    return at == std::string::npos ? -1 : std::stod(text.substr(at + kBefore.size()));
  }
};

TEST_F(LabReal, EveryEchoToTheNearHostComesBackNoSoonerThanItsDelay) {
  const Outcome outcome = runLine("\"$LAB\" ping-test /usr/bin/ping -4 -c 5 -i 0.3 near.example");
  EXPECT_EQ(outcome.code, 0);
  EXPECT_THAT(outcome.text, HasSubstr("5 packets transmitted, 5 received, 0% packet loss"));
  EXPECT_GE(leastOf(outcome.text), 2.0);
}

TEST_F(LabReal, EveryEchoOverIpv6ComesBack) {
  const Outcome outcome = runLine("\"$LAB\" ping-test /usr/bin/ping -6 -c 5 -i 0.3 far.example");
  EXPECT_THAT(outcome.text, HasSubstr("5 packets transmitted, 5 received, 0% packet loss"));
  EXPECT_GE(leastOf(outcome.text), 80.0);
}

TEST_F(LabReal, LossyHostLosesExactlyOneInFive) {
  const Outcome outcome = runLine("\"$LAB\" ping-test /usr/bin/ping -c 11 -i 0.3 lossy.example");
  EXPECT_THAT(outcome.text, HasSubstr("11 packets transmitted, 9 received"));
  EXPECT_THAT(outcome.text, Not(HasSubstr("icmp_seq=5 ")));
  EXPECT_THAT(outcome.text, Not(HasSubstr("icmp_seq=10 ")));
}

TEST_F(LabReal, EchoLongerThanThePacketSizeComesBack) {
  const Outcome outcome =
      runLine("\"$LAB\" ping-test /usr/bin/ping -4 -c 2 -i 0.3 -s 4096 near.example");
  EXPECT_THAT(outcome.text, HasSubstr("2 packets transmitted, 2 received, 0% packet loss"));
  EXPECT_THAT(outcome.text, HasSubstr("4104 bytes from"));
}

TEST_F(LabReal, PacketThatEndsOnTheWayIsToldByItsRouter) {
  const Outcome outcome = runLine("\"$LAB\" demo /usr/bin/ping -n -4 -c 1 -t 2 far.example");
  EXPECT_THAT(outcome.text, HasSubstr("From 198.51.100.1 icmp_seq=1 Time to live exceeded"));
}

TEST_F(LabReal, NamesAndAddressesResolve) {
  EXPECT_EQ(runLine("\"$LAB\" ping-test getent hosts far.example").text,
            "2001:db8:0:80::1 far.example\n");
  EXPECT_EQ(runLine("\"$LAB\" ping-test getent ahostsv4 far.example | head -n 1").text,
            "203.0.113.80    STREAM far.example\n");
  EXPECT_EQ(runLine("\"$LAB\" ping-test getent hosts 203.0.113.80").text,
            "203.0.113.80    far.example\n");
}

TEST_F(LabReal, UnknownNameFails) {
  const Outcome outcome = runLine("\"$LAB\" ping-test getent hosts nowhere.example");
  EXPECT_EQ(outcome.code, 2);
  EXPECT_EQ(outcome.text, "");
}

TEST_F(LabReal, NamesOfTheInternetOutsideLeadToItsHosts) {
  EXPECT_EQ(runLine("\"$LAB\" clean-15 getent ahostsv4 www.wherever.org | head -n 1").text,
            "203.0.113.80    STREAM www.wherever.org\n");
}

TEST_F(LabReal, EndsWithTheExitCodeOfTheCommand) {
  EXPECT_EQ(runLine("\"$LAB\" ping-test -- sh -c 'exit 42'").code, 42);
}

TEST_F(LabReal, EndsLikeAShellWhenASignalEndedTheCommand) {
  EXPECT_EQ(runLine("\"$LAB\" ping-test sh -c 'kill -TERM $$'").code, 128 + 15);
}

TEST_F(LabReal, SaysWhenTheCommandIsNotThere) {
  const Outcome outcome = runLine("\"$LAB\" ping-test /nowhere/program");
  EXPECT_EQ(outcome.code, 127);
  EXPECT_EQ(outcome.text, "lab: /nowhere/program: No such file or directory\n");
}

TEST_F(LabReal, PassesAnEndingSignalToTheCommand) {
  const Outcome outcome = runLine(
      "TMP=$(mktemp); \"$LAB\" ping-test sh -c 'trap \"echo told; exit 5\" TERM; echo ready; "
      "while :; do sleep 0.01; done' > \"$TMP\" & "
      "until grep -q ready \"$TMP\"; do sleep 0.01; done; kill $!; wait $!; CODE=$?; "
      "cat \"$TMP\"; rm \"$TMP\"; exit $CODE");
  EXPECT_EQ(outcome.code, 5);
  EXPECT_EQ(outcome.text, "ready\ntold\n");
}

// The outputs stay open until the last process that holds them has ended.
TEST_F(LabReal, NothingOutlivesTheCommand) {
  EXPECT_EQ(runLine("\"$LAB\" ping-test sh -c 'setsid sleep 1000 & echo done'").text, "done\n");
}

TEST_F(LabReal, NothingOutlivesAKilledLab) {
  const Outcome outcome = runLine(
      "sh -c 'echo $$; exec \"$LAB\" ping-test sh -c \"setsid sleep 1000 & echo ready; sleep "
      "1000\"' "
      "| { read PID; read WORD; kill -KILL \"$PID\"; cat; echo \"$WORD\"; }");
  EXPECT_THAT(outcome.text, EndsWith("ready\n"));
}

TEST_F(LabReal, SystemOutsideKeepsItsResolverSettings) {
  EXPECT_EQ(runLine("BEFORE=$(cksum < /etc/resolv.conf); "
                    "\"$LAB\" ping-test true; "
                    "[ \"$BEFORE\" = \"$(cksum < /etc/resolv.conf)\" ] && echo same")
                .text,
            "same\n");
}

TEST(LabProgram, ListsItsScenarios) {
  EXPECT_EQ(runLine("\"$LAB\" --list").text,
            "balanced         Two routers each at hops 4 and 5\n"
            "clean-15         Fifteen hops that all answer\n"
            "demo             A small Internet for trying out the whole program\n"
            "dies-and-returns A path that dies at 20 s and returns at 35 s\n"
            "download         A web host with files for the download test\n"
            "ipv6             Fifteen hops over IPv6 alone\n"
            "jittery-hop      A path with one hop that does not keep to its time\n"
            "long-30          Thirty hops, and a host that is too far away\n"
            "lossy-middle     Loss on a link and at a router\n"
            "mtu-1400         Links that pass no more than 1400 bytes\n"
            "odd-replies      Replies that come twice or out of order\n"
            "ping-test        Five destinations at known distances, one of which does not exist\n"
            "rate-limited     Routers that answer only so many times a second\n"
            "silent-15        Fifteen hops, three of them silent\n"
            "slow-router      A quick path with a router that answers late\n"
            "two-outages      A destination that is away from 10 to 14 s and from 24 to 36 s\n"
            "unreachable      Routers that tell of unreachable hosts and networks\n");
}

TEST(LabProgram, ChecksAScenario) {
  const Outcome outcome = runLine("\"$LAB\" --check ping-test");
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.text, "ping-test: sound. Hosts: 4. Routers: 0.\n");
}

TEST(LabProgram, TellsFileAndLineOfAFault) {
  const Outcome outcome = runLine(
      "DIR=$(mktemp -d); printf '[internet]\\nseed = x\\n' > \"$DIR/bad.ini\"; "
      "\"$LAB\" --check \"$DIR/bad.ini\"; CODE=$?; rm -r \"$DIR\"; exit $CODE");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.text,
            "lab: bad.ini: line 2: expected a whole number from 0 to 18446744073709551615, "
            "found \"x\"\n");
}

TEST(LabProgram, SaysWhenThereIsNoSuchScenario) {
  const Outcome outcome = runLine("\"$LAB\" nowhere true");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.text, "lab: nowhere.ini: cannot be read\n");
}

TEST(LabProgram, ShowsItsUsageForACommandLineItDoesNotUnderstand) {
  for (const char* line : {"\"$LAB\"", "\"$LAB\" ping-test", "\"$LAB\" ping-test --",
                           "\"$LAB\" --lost", "\"$LAB\" --check"}) {
    const Outcome outcome = runLine(line);
    EXPECT_EQ(outcome.code, 2) << line;
    EXPECT_THAT(outcome.text, StartsWith("Usage: lab SCENARIO [--] COMMAND [ARGUMENTS...]\n"));
  }
}

TEST(LabProgram, CallsItselfByTheNameThatItHas) {
  const Outcome outcome = runLine("bash -c 'exec -a /usr/bin/veltrin-lab \"$LAB\" --list nowhere'");
  EXPECT_EQ(outcome.code, 2);
  EXPECT_THAT(outcome.text, StartsWith("Usage: veltrin-lab SCENARIO "));
  EXPECT_THAT(outcome.text, HasSubstr("\n       veltrin-lab --help\n"));
}

TEST(LabProgram, ShowsItsHelp) {
  const Outcome outcome = runLine("\"$LAB\" --help");
  EXPECT_EQ(outcome.code, 0);
  EXPECT_THAT(outcome.text, HasSubstr("77    the lab cannot run on this machine"));
}

}  // namespace
}  // namespace veltrin::lab
