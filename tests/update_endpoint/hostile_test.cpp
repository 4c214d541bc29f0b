// SPDX-License-Identifier: GPL-3.0-or-later
// Callers who are slow, or mean no good.
#include <fstream>
#include <gtest/gtest.h>
#include <optional>
#include <sstream>

#include "running_endpoint.h"
#include "tools/update_endpoint/limits.h"

namespace veltrin::endpoint {
namespace {

constexpr const char* kAnswer = "1.03127.0.0.1";

// Whether the kernel still knows of a connection, whatever its state, with these ports
// on the server's side and on the other (/proc/net/tcp, whose numbers are in base 16).
bool kernelKnows(std::uint16_t serverPort, std::uint16_t callerPort) {
  std::ifstream file("/proc/net/tcp");
  EXPECT_TRUE(file.is_open());
  std::string line;
  std::getline(file, line);
  while (std::getline(file, line)) {
    std::string number;
    std::string here;
    std::string there;
    std::istringstream(line) >> number >> here >> there;
    const auto portOf = [](const std::string& end) {
      return std::stoul(end.substr(end.find(':') + 1), nullptr, 16);
    };
    if (portOf(here) == serverPort && portOf(there) == callerPort) return true;
  }
  return false;
}

TEST(Silent, CallersDoNotHoldUpOthers) {
  RunningEndpoint endpoint(onLoopback({"--timeout", "600000", "--most-per-address", "600"}));
  const Place place = endpoint.place();
  const std::vector<Caller> silent = callersOf({place}, 500);
  endpoint.waitForCallers(500);
  EXPECT_EQ(Caller(place).listen().text, kAnswer);
}

TEST(Silent, CallersStandUntilTheirTimeIsOver) {
  RunningEndpoint endpoint(onLoopback({"--timeout", "600000"}));
  const std::vector<Caller> silent = callersOf({endpoint.place()}, 3);
  endpoint.waitForCallers(3);
}

TEST(Silent, CallersAreLetGoWhenTheirTimeIsOver) {
  RunningEndpoint endpoint(onLoopback({"--timeout", "100"}));
  std::vector<Caller> silent = callersOf({endpoint.place()}, 30);
  for (Caller& caller : silent) EXPECT_EQ(caller.listen().text, kAnswer);
  endpoint.waitForCallers(0);
}

TEST(Silent, CallersWhoAreLetGoStillHaveTheirAnswer) {
  RunningEndpoint endpoint(onLoopback({"--timeout", "100"}));
  const Place place = endpoint.place();
  Caller silent(place);
  // The next one is answered after the silent one, so waits for both.
  EXPECT_EQ(Caller(place).listen().text, kAnswer);
  endpoint.waitForCallers(0);
  const Heard heard = silent.listen();
  EXPECT_EQ(heard.text, kAnswer);
  EXPECT_EQ(heard.ending, Ending::Closed);
}

// The server thinks of such a caller as connected, but nothing is confirmed any more.
class LostCaller : public ::testing::Test {
 protected:
  void loseACaller(RunningEndpoint& endpoint, const Place& place) {
    endpoint.freeze();
    caller_.emplace(place);
    caller_->goDeaf();
    endpoint.thaw();
  }

  std::optional<Caller> caller_;
};

TEST_F(LostCaller, StandsLikeAnyOther) {
  RunningEndpoint endpoint(onLoopback({"--timeout", "600000"}));
  loseACaller(endpoint, endpoint.place());
  endpoint.waitForCallers(1);
}

TEST_F(LostCaller, IsForgottenByTheKernelTooWhenTheTimeIsOver) {
  RunningEndpoint endpoint(onLoopback({"--timeout", "100"}));
  const Place place = endpoint.place();
  loseACaller(endpoint, place);
  // Answered after the lost one.
  EXPECT_EQ(Caller(place).listen().text, kAnswer);
  endpoint.waitForCallers(0);
  EXPECT_FALSE(kernelKnows(place.port, caller_->port()));
}

TEST(Garbage, OfAFewBytesDoesNotKeepTheAnswerBack) {
  RunningEndpoint endpoint(onLoopback({"--timeout", "600000"}));
  Caller caller(endpoint.place());
  EXPECT_EQ(caller.send(100), 100U);
  EXPECT_EQ(caller.listen().text, kAnswer);
}

TEST(Garbage, IsReadAwayToACertainMeasure) {
  RunningEndpoint endpoint(onLoopback({"--timeout", "600000"}));
  Caller caller(endpoint.place());
  EXPECT_EQ(caller.send(kMostDrained), kMostDrained);
  caller.finish();
  endpoint.waitForCallers(0);
  const Heard heard = caller.listen();
  EXPECT_EQ(heard.text, kAnswer);
  EXPECT_EQ(heard.ending, Ending::Closed);
}

// What of eight megabytes goes out before the server gives the caller up.
TEST(Garbage, OfMegabytesIsNotReadAway) {
  RunningEndpoint endpoint(onLoopback({"--timeout", "1000"}));
  Caller caller(endpoint.place());
  EXPECT_LT(caller.send(8'000'000), 1'000'000U);
}

TEST(Garbage, OfMegabytesEndsWithTheTimeOfItsSender) {
  RunningEndpoint endpoint(onLoopback({"--timeout", "200"}));
  Caller caller(endpoint.place());
  caller.send(8'000'000);
  endpoint.waitForCallers(0);
}

TEST(Garbage, OfMegabytesLeavesItsSenderTheAnswer) {
  RunningEndpoint endpoint(onLoopback({"--timeout", "200"}));
  Caller caller(endpoint.place());
  caller.send(8'000'000);
  EXPECT_EQ(caller.listen().text, kAnswer);
}

TEST(Garbage, ThatIsNoLongerReadDoesNotKeepTheServerBusy) {
  RunningEndpoint endpoint(onLoopback({"--timeout", "600000"}));
  Caller caller(endpoint.place());
  EXPECT_EQ(caller.send(kMostDrained + 8000), kMostDrained + 8000);
  EXPECT_EQ(caller.listen().text, kAnswer);
  EXPECT_LT(endpoint.processorTimeOver(std::chrono::milliseconds(500)),
            std::chrono::milliseconds(100));
}

TEST(Garbage, TakesLittleMemoryOfTheKernelWhileItIsUnread) {
  RunningEndpoint endpoint(onLoopback({"--timeout", "600000"}));
  Caller caller(endpoint.place());
  EXPECT_EQ(caller.listen().text, kAnswer);
  endpoint.freeze();
  const std::size_t sent = caller.sendFor(8'000'000, 500);
  EXPECT_LE(sent - caller.unconfirmed(), 16U * 1024);
}

TEST(Garbage, BeyondTheMeasureStillEndsInOrderWithItsSender) {
  RunningEndpoint endpoint(onLoopback({"--timeout", "600000"}));
  Caller caller(endpoint.place());
  EXPECT_EQ(caller.send(kMostDrained + 1000), kMostDrained + 1000);
  caller.finish();
  endpoint.waitForCallers(0);
  const Heard heard = caller.listen();
  EXPECT_EQ(heard.text, kAnswer);
  EXPECT_EQ(heard.ending, Ending::Closed);
}

TEST(Garbage, OfManyAtOnceDoesNotHoldUpOthers) {
  RunningEndpoint endpoint(onLoopback({"--timeout", "600000", "--most-per-address", "200"}));
  const Place place = endpoint.place();
  std::vector<Caller> senders = callersOf({place}, 100);
  for (Caller& sender : senders) EXPECT_EQ(sender.send(60'000), 60'000U);
  EXPECT_EQ(Caller(place).listen().text, kAnswer);
}

TEST(Resets, AtOnceLeaveNothingOpen) {
  RunningEndpoint endpoint(onLoopback({"--timeout", "600000", "--most-per-address", "600"}));
  const Place place = endpoint.place();
  for (int turn = 0; turn < 500; ++turn) Caller(place).slam();
  EXPECT_EQ(Caller(place).listen().text, kAnswer);
  endpoint.waitForCallers(0);
}

TEST(Resets, OfCallersWhoWaitToBeAcceptedAreNoHarm) {
  RunningEndpoint endpoint(onLoopback({"--timeout", "600000"}));
  const Place place = endpoint.place();
  endpoint.freeze();
  for (int turn = 0; turn < 50; ++turn) Caller(place).slam();
  endpoint.thaw();
  EXPECT_EQ(Caller(place).listen().text, kAnswer);
  endpoint.waitForCallers(0);
}

TEST(Resets, InTheMiddleOfGarbageLeaveNothingOpen) {
  RunningEndpoint endpoint(onLoopback({"--timeout", "600000"}));
  Caller caller(endpoint.place());
  EXPECT_EQ(caller.send(kMostDrained + 1000), kMostDrained + 1000);
  caller.slam();
  endpoint.waitForCallers(0);
}

TEST(Closes, AtOnceLeaveNothingOpen) {
  RunningEndpoint endpoint(onLoopback({"--timeout", "600000", "--most-per-address", "600"}));
  const Place place = endpoint.place();
  for (int turn = 0; turn < 500; ++turn) Caller(place).hangUp();
  EXPECT_EQ(Caller(place).listen().text, kAnswer);
  endpoint.waitForCallers(0);
}

}  // namespace
}  // namespace veltrin::endpoint
