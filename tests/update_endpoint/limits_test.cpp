// SPDX-License-Identifier: GPL-3.0-or-later
// How many may stand from one address, at the real server.
#include <gtest/gtest.h>
#include <optional>

#include "running_endpoint.h"

namespace veltrin::endpoint {
namespace {

constexpr const char* kAnswer = "1.03127.0.0.1";

class MostPerAddress : public ::testing::Test {
 protected:
  // An endpoint at which so many of one address may stand, and so many who stand.
  void fill(std::size_t count) {
    endpoint_.emplace(
        onLoopback({"--timeout", "600000", "--most-per-address", std::to_string(count)}));
    place_ = endpoint_->place();
    for (std::size_t at = 0; at < count; ++at) standing_.emplace_back(place_);
    endpoint_->waitForCallers(count);
  }

  std::optional<RunningEndpoint> endpoint_;
  Place place_;
  std::vector<Caller> standing_;
};

TEST_F(MostPerAddress, AreAllAnswered) {
  fill(2);
  for (Caller& caller : standing_) EXPECT_EQ(caller.listen().text, kAnswer);
}

TEST_F(MostPerAddress, AndOneMoreIsTurnedAwayWithoutAWord) {
  fill(2);
  const Heard heard = Caller(place_).listen();
  EXPECT_EQ(heard.text, "");
  EXPECT_EQ(heard.ending, Ending::Reset);
}

TEST_F(MostPerAddress, AndOneMoreDoesNotStand) {
  fill(2);
  Caller more(place_);
  more.listen();
  endpoint_->waitForCallers(2);
}

TEST_F(MostPerAddress, LeaveAnotherAddressItsAnswer) {
  fill(2);
  EXPECT_EQ(Caller(place_, "127.0.0.2").listen().text, "1.03127.0.0.2");
}

TEST_F(MostPerAddress, MakeRoomWhenOneGoes) {
  fill(2);
  standing_.pop_back();
  endpoint_->waitForCallers(1);
  EXPECT_EQ(Caller(place_).listen().text, kAnswer);
}

TEST_F(MostPerAddress, MakeRoomWhenOneIsCutOff) {
  fill(2);
  standing_.back().slam();
  endpoint_->waitForCallers(1);
  EXPECT_EQ(Caller(place_).listen().text, kAnswer);
}

TEST_F(MostPerAddress, MakeRoomWhenOneGoesWhileTheServerDoesNotLook) {
  fill(2);
  endpoint_->freeze();
  standing_.pop_back();
  Caller more(place_);
  endpoint_->thaw();
  EXPECT_EQ(more.listen().text, kAnswer);
}

// The one who goes is the last of more news than the server takes at a time, and the
// one who comes is the first.
TEST_F(MostPerAddress, MakeRoomForOneWhoCameBeforeAnotherWent) {
  fill(300);
  endpoint_->freeze();
  Caller more(place_);
  for (std::size_t at = 0; at + 1 < standing_.size(); ++at) standing_[at].send(1);
  standing_.pop_back();
  endpoint_->thaw();
  EXPECT_EQ(more.listen().text, kAnswer);
}

TEST(TimeOfCallers, MakesRoomForTheirAddressWhenItIsOver) {
  RunningEndpoint endpoint(onLoopback({"--timeout", "100", "--most-per-address", "1"}));
  const Place place = endpoint.place();
  Caller first(place);
  EXPECT_EQ(first.listen().text, kAnswer);
  endpoint.waitForCallers(0);
  EXPECT_EQ(Caller(place).listen().text, kAnswer);
}

}  // namespace
}  // namespace veltrin::endpoint
