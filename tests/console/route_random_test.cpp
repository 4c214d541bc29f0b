// SPDX-License-Identifier: GPL-3.0-or-later
// A thousand networks that lose, delay, double and misdirect answers by chance: the
// text of a trace stays whole on all of them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

#include "console/pathping.h"
#include "console/tracert.h"
#include "path_network.h"
#include "route_reading.h"

namespace veltrin {
namespace {

constexpr int kNetworks = 1000;

// A network that all is drawn for from one seed.
class RandomNetwork : public PathNetwork {
 public:
  explicit RandomNetwork(unsigned seed) : random_(seed) {
    length_ = draw(1, 34);
    lossPercent_ = draw(0, 2) * draw(0, 40);
    doublePercent_ = draw(0, 40);
    spread_ = draw(1, 2000) * kMillisecond / draw(1, 50);
    for (int hop = 1; hop <= length_; ++hop) {
      silent_.push_back(draw(0, 5) == 0);
    }
    refusesFrom_ = draw(0, 9) == 0 ? draw(1, 30) : 99;
    decide = [this](int hop, int /*number*/) { return answersTo(hop); };
  }

  // Whether any router or the destination may answer echoes of a hop.
  bool speaks(int hop) const {
    return !silent_[static_cast<std::size_t>(std::min(hop, length_)) - 1];
  }

 private:
  int draw(int least, int most) { return std::uniform_int_distribution(least, most)(random_); }

  Answers answersTo(int hop) {
    if (!speaks(hop) || draw(1, 100) <= lossPercent_) {
      return {};
    }
    Answers answers{answerOf(hop)};
    if (draw(1, 100) <= doublePercent_) {
      answers.push_back(answerOf(draw(1, 30)));
    }
    return answers;
  }

  TimedAnswer answerOf(int hop) {
    const Microseconds delay = hop * kMillisecond + draw(0, static_cast<int>(spread_));
    if (hop >= refusesFrom_) {
      return refusal("203.0.113.250", delay, static_cast<IcmpError>(draw(0, 8)));
    }
    return hop >= length_ ? arrival("192.0.2.7", delay)
                          : passing("203.0.113." + std::to_string(hop), delay);
  }

  std::mt19937 random_;
  int length_ = 0;
  int lossPercent_ = 0;
  int doublePercent_ = 0;
  Microseconds spread_ = 0;
  std::vector<bool> silent_;
  int refusesFrom_ = 0;
};

TEST(RandomNetworks, LeaveTheTextOfATraceWhole) {
  for (unsigned seed = 0; seed < kNetworks; ++seed) {
    RandomNetwork network(seed);
    KeptOutput output;
    ASSERT_EQ(Tracert(network, output).run({"-d", "192.0.2.7"}), 0) << "seed " << seed;
    ASSERT_EQ(faultOfTrace(output.text()), "") << "seed " << seed;
  }
}

TEST(RandomNetworks, AreReadAsTheHopsThatAnswered) {
  for (unsigned seed = 0; seed < kNetworks; ++seed) {
    RandomNetwork network(seed);
    KeptOutput output;
    Tracert(network, output).run({"-d", "192.0.2.7"});
    const std::string text = output.text();
    int hop = 0;
    for (const std::string& address : hopsOfTrace(text)) {
      ++hop;
      if (text.find("reports:") != std::string::npos) {
        break;
      }
      ASSERT_TRUE(address == "*" || Address::parse(address)) << "seed " << seed << ": " << text;
      ASSERT_TRUE(address == "*" || network.speaks(hop)) << "seed " << seed << ": " << text;
    }
  }
}

TEST(RandomNetworks, NeverTakeMuchLongerThanOneTimeout) {
  for (unsigned seed = 0; seed < kNetworks; ++seed) {
    RandomNetwork network(seed);
    KeptOutput output;
    const Microseconds before = network.now();
    Tracert(network, output).run({"-d", "192.0.2.7"});
    ASSERT_LT(network.now() - before, 6 * kSecond) << "seed " << seed;
  }
}

TEST(RandomNetworks, GiveEachHopNoMoreThanThreeProbes) {
  for (unsigned seed = 0; seed < kNetworks; ++seed) {
    RandomNetwork network(seed);
    KeptOutput output;
    Tracert(network, output).run({"-d", "192.0.2.7"});
    for (int hop = 1; hop <= 30; ++hop) {
      ASSERT_LE(network.sentTo(hop), 3) << "seed " << seed;
    }
  }
}

TEST(RandomNetworks, LoseNoMoreThanWasSent) {
  for (unsigned seed = 0; seed < kNetworks / 4; ++seed) {
    RandomNetwork network(seed);
    KeptOutput output;
    Pathping(network, output).run({"-n", "-q", "5", "-p", "20", "192.0.2.7"});
    const std::string text = output.text();
    ASSERT_THAT(text, ::testing::EndsWith("\r\nTrace complete.\r\n")) << "seed " << seed;
    ASSERT_THAT(text, ::testing::Not(::testing::HasSubstr("-1"))) << "seed " << seed;
    for (std::size_t at = text.find("/   5 ="); at != std::string::npos;
         at = text.find("/   5 =", at + 1)) {
      ASSERT_LE(std::stoi(text.substr(at - 6, 6)), 5) << "seed " << seed << ": " << text;
    }
  }
}

}  // namespace
}  // namespace veltrin
