// SPDX-License-Identifier: GPL-3.0-or-later
// Echoes of the program on the lab's paths, by each of their ways.
#include <algorithm>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "lab_program.h"
#include "platform/icmp.h"

namespace veltrin::lab {
namespace {

struct Answer {
  std::uint32_t replies = 99;
  std::uint32_t status = 99;
  std::uint32_t time = 0;
  std::string address;
};

class EchoLab : public LabRunning, public testing::WithParamInterface<const char*> {
 protected:
  // What echoes one after the other bring; `echoes` are addresses and time-outs.
  static std::vector<Answer> send(const std::string& scenario, const std::string& echoes) {
    const Outcome outcome = runLine("\"$LAB\" " + scenario + " '" + ECHO_SENDER + "' '" +
                                    CONSOLE_FOLDER + "' " + GetParam() + " " + echoes);
    EXPECT_EQ(outcome.code, 0) << outcome.text;
    std::istringstream lines(outcome.text);
    std::vector<Answer> answers;
    for (Answer each; lines >> each.replies >> each.status >> each.time >> each.address;) {
      answers.push_back(each);
    }
    EXPECT_TRUE(lines.eof()) << outcome.text;
    return answers;
  }
};

INSTANTIATE_TEST_SUITE_P(Ways, EchoLab, testing::Values("datagram", "raw", "tool"),
                         [](const auto& way) { return std::string(way.param); });

// The shortest of five, as a busy machine makes one late now and then.
TEST_P(EchoLab, EachHostTakesItsTime) {
  constexpr int kEchoes = 5;
  for (const auto& [host, time] : {std::pair{"203.0.113.2", 2U}, {"203.0.113.80", 80U}}) {
    std::string echoes;
    for (int count = 0; count < kEchoes; ++count) echoes.append(host).append(" 1000 ");
    const auto answers = send("ping-test", echoes);
    ASSERT_EQ(answers.size(), kEchoes);
    std::uint32_t shortest = kNoReplyTime;
    for (const Answer& answer : answers) {
      EXPECT_EQ(answer.replies, 1U);
      EXPECT_EQ(answer.status, kIpSuccess);
      EXPECT_EQ(answer.address, host);
      shortest = std::min(shortest, answer.time);
    }
    EXPECT_GE(shortest, time) << host;
    EXPECT_LT(shortest, time + 58) << host;
  }
}

// The late reply to the first comes 50 ms after the second was sent.
TEST_P(EchoLab, AReplyThatComesTooLateIsNotTheNextEchos) {
  const auto answers = send("ping-test", "203.0.113.80 30 203.0.113.80 1000");
  ASSERT_EQ(answers.size(), 2U);
  EXPECT_EQ(answers[0].replies, 0U);
  EXPECT_EQ(answers[0].status, kIpTimedOut);
  EXPECT_EQ(answers[0].time, kNoReplyTime);
  EXPECT_EQ(answers[1].replies, 1U);
  EXPECT_GE(answers[1].time, 80U);
}

TEST_P(EchoLab, ARoutersRefusalIsToldAtOnce) {
  const auto answers = send("unreachable", "203.0.113.80 5000 203.0.113.81 5000");
  ASSERT_EQ(answers.size(), 2U);
  EXPECT_EQ(answers[0].replies, 0U);
  EXPECT_EQ(answers[0].status, kIpHostUnreachable);
  EXPECT_EQ(answers[0].time, kNoReplyTime);
  EXPECT_EQ(answers[0].address, "198.51.100.5");
  EXPECT_EQ(answers[1].replies, 0U);
  EXPECT_EQ(answers[1].status, kIpNetUnreachable);
  EXPECT_EQ(answers[1].address, "198.51.100.6");
}

TEST_P(EchoLab, ALostEchoHasNoReplyAndTheNextHasOne) {
  const std::string echo = "203.0.113.20 1000 ";
  const auto answers = send("ping-test", echo + echo + echo + echo + echo + echo);
  ASSERT_EQ(answers.size(), 6U);
  for (std::size_t at = 0; at < answers.size(); ++at) {
    EXPECT_EQ(answers[at].replies, at == 4 ? 0U : 1U) << at;
  }
  EXPECT_EQ(answers[4].status, kIpTimedOut);
}

}  // namespace
}  // namespace veltrin::lab
