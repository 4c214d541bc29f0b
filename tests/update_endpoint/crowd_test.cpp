// SPDX-License-Identifier: GPL-3.0-or-later
// Many callers at once, more than may stand, and more than the system has room for.
#include <csignal>
#include <gtest/gtest.h>
#include <map>
#include <sys/resource.h>

#include "running_endpoint.h"

namespace veltrin::endpoint {
namespace {

constexpr std::size_t kCrowd = 2000;

// Descriptors of this process besides the callers'.
constexpr std::size_t kOthers = 100;

// How often each text was heard by callers whose connection ended in order.
std::map<std::string, std::size_t> heardBy(std::vector<Caller>& callers) {
  std::map<std::string, std::size_t> heard;
  for (Caller& caller : callers) {
    const Heard one = caller.listen();
    ++heard[one.ending == Ending::Closed ? one.text : one.text + " without an end"];
  }
  return heard;
}

using Counts = std::map<std::string, std::size_t>;

TEST(Crowd, OfTwoThousandAtOnceIsAnsweredToTheLast) {
  if (!raiseDescriptorLimit(kCrowd + kOthers)) {
    GTEST_SKIP() << "this machine lets a process have too few descriptors";
  }
  RunningEndpoint endpoint({"--listen", "127.0.0.1", "--ports", "0,0", "--timeout", "600000",
                            "--most-per-address", "2000", "1.03"});
  std::vector<Caller> callers = callersOf(endpoint.places(2), kCrowd);
  endpoint.waitForCallers(kCrowd);
  EXPECT_EQ(heardBy(callers), (Counts{{"1.03127.0.0.1", kCrowd}}));
}

TEST(Crowd, ThatWaitsAtAServerThatCouldNotLookIsAnsweredToTheLast) {
  RunningEndpoint endpoint({"--listen", "127.0.0.1", "--ports", "0,0", "--timeout", "600000",
                            "--most-per-address", "200", "1.03"});
  const std::vector<Place> places = endpoint.places(2);
  endpoint.freeze();
  std::vector<Caller> callers = callersOf(places, 200);
  endpoint.thaw();
  EXPECT_EQ(heardBy(callers), (Counts{{"1.03127.0.0.1", 200}}));
}

TEST(Crowd, GoesAndLeavesNothingOpen) {
  RunningEndpoint endpoint(onLoopback({"--timeout", "600000", "--most-per-address", "600"}));
  {
    std::vector<Caller> callers = callersOf({endpoint.place()}, 600);
    endpoint.waitForCallers(600);
  }
  endpoint.waitForCallers(0);
}

TEST(Crowd, LargerThanMayStandIsAnsweredToTheLast) {
  RunningEndpoint endpoint(
      onLoopback({"--timeout", "600000", "--most-callers", "20", "--most-per-address", "300"}));
  std::vector<Caller> callers = callersOf({endpoint.place()}, 300);
  EXPECT_EQ(heardBy(callers), (Counts{{"1.03127.0.0.1", 300}}));
}

TEST(Crowd, NeverStandsLargerThanItMay) {
  RunningEndpoint endpoint(
      onLoopback({"--timeout", "600000", "--most-callers", "20", "--most-per-address", "300"}));
  std::vector<Caller> callers = callersOf({endpoint.place()}, 300);
  heardBy(callers);
  endpoint.waitForCallers(20);
}

TEST(Crowd, LargerThanThereAreDescriptorsIsAnsweredToTheLast) {
  Surroundings surroundings;
  surroundings.descriptors = 24;
  RunningEndpoint endpoint(
      onLoopback({"--timeout", "600000", "--most-callers", "1000", "--most-per-address", "300"}),
      surroundings);
  std::vector<Caller> callers = callersOf({endpoint.place()}, 300);
  EXPECT_EQ(heardBy(callers), (Counts{{"1.03127.0.0.1", 300}}));
}

TEST(Crowd, ThatMayBeLargerThanThereAreDescriptorsIsToldAtTheStart) {
  Surroundings surroundings;
  surroundings.descriptors = 24;
  RunningEndpoint endpoint(onLoopback({"--most-callers", "1000"}), surroundings);
  endpoint.place();
  endpoint.send(SIGTERM);
  EXPECT_EQ(endpoint.errors(),
            "update_endpoint: Only 24 descriptors may be open, so fewer than 1000 callers can "
            "stand at once.\n");
}

TEST(Crowd, MayBeAsLargeAsTheSystemAllowsAndNotOnlyAsTheServerWasStartedWith) {
  Surroundings surroundings;
  surroundings.descriptors = 300;
  surroundings.descriptorsAtFirst = 24;
  RunningEndpoint endpoint(onLoopback({"--timeout", "600000", "--most-per-address", "200"}),
                           surroundings);
  const std::vector<Caller> callers = callersOf({endpoint.place()}, 200);
  endpoint.waitForCallers(200);
}

// A server without a single descriptor for callers. Only its soft limit is put down, so
// that it can be lifted again.
class WithoutDescriptors : public ::testing::Test {
 protected:
  void SetUp() override {
    place_ = endpoint_.place();
    ASSERT_EQ(prlimit(endpoint_.process(), RLIMIT_NOFILE, nullptr, &usual_), 0);
    rlimit none = usual_;
    none.rlim_cur = endpoint_.lowestFreeDescriptor();
    ASSERT_EQ(prlimit(endpoint_.process(), RLIMIT_NOFILE, &none, nullptr), 0);
  }

  RunningEndpoint endpoint_{onLoopback()};
  Place place_;
  rlimit usual_{};
};

TEST_F(WithoutDescriptors, RestsInsteadOfTurningRound) {
  Caller caller(place_);
  EXPECT_LT(endpoint_.processorTimeOver(std::chrono::milliseconds(500)),
            std::chrono::milliseconds(100));
  EXPECT_EQ(caller.listenFor(1).ending, Ending::Silence);
}

TEST_F(WithoutDescriptors, AnswersWhoWaitedAsSoonAsThereAreSome) {
  Caller caller(place_);
  ASSERT_EQ(caller.listenFor(250).ending, Ending::Silence);
  ASSERT_EQ(prlimit(endpoint_.process(), RLIMIT_NOFILE, &usual_, nullptr), 0);
  EXPECT_EQ(caller.listen().text, "1.03127.0.0.1");
}

TEST_F(WithoutDescriptors, EndsWhenItIsTold) {
  Caller caller(place_);
  ASSERT_EQ(caller.listenFor(250).ending, Ending::Silence);
  ASSERT_EQ(prlimit(endpoint_.process(), RLIMIT_NOFILE, &usual_, nullptr), 0);
  endpoint_.send(SIGTERM);
  EXPECT_EQ(endpoint_.exitCode(), 0);
}

}  // namespace
}  // namespace veltrin::endpoint
