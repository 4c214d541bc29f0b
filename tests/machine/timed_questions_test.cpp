// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/timed_questions.h"

#include <atomic>
#include <gtest/gtest.h>

#include "silent_server.h"

namespace veltrin {
namespace {

class TimedQuestionsTest : public testing::Test {
 protected:
  // A question about a matter that is answered only when the server comes back.
  bool askInVain(const std::string& matter) {
    return questions_.ask(matter, [server = server_] { server->wait(); });
  }

  // The questions are on threads of their own, which may outlast the test.
  std::shared_ptr<SilentServer> server_ = std::make_shared<SilentServer>();
  TimedQuestions questions_{TimedQuestions::Patience(50)};
};

TEST_F(TimedQuestionsTest, AreAskedToTheirEnd) {
  const auto answer = std::make_shared<int>(0);
  ASSERT_TRUE(TimedQuestions().ask("a", [answer] { *answer = 7; }));
  EXPECT_EQ(*answer, 7);
}

TEST_F(TimedQuestionsTest, AreAskedAboutTheSameMatterAsOftenAsItAnswers) {
  const TimedQuestions questions;
  EXPECT_TRUE(questions.ask("a", [] {}));
  EXPECT_TRUE(questions.ask("a", [] {}));
}

TEST_F(TimedQuestionsTest, AreNotAskedWhileAnAnswerAboutTheMatterIsOut) {
  EXPECT_FALSE(askInVain("a"));
  const auto asked = std::make_shared<std::atomic<bool>>(false);
  const TimedQuestions copy = questions_;
  EXPECT_FALSE(copy.ask("a", [asked] { *asked = true; }));
  EXPECT_EQ(server_->comeBack(), 1);
  EXPECT_FALSE(*asked);
}

TEST_F(TimedQuestionsTest, AreAskedAboutAnotherMatterMeanwhile) {
  EXPECT_FALSE(askInVain("a"));
  bool isAnswered = false;
  for (int attempt = 0; attempt < 100 && !isAnswered; ++attempt) {
    isAnswered = questions_.ask("b", [] {});
  }
  EXPECT_TRUE(isAnswered);
  server_->comeBack();
}

TEST_F(TimedQuestionsTest, AreAskedAgainWhenTheAnswerHasCome) {
  EXPECT_FALSE(askInVain("a"));
  server_->comeBack();
  while (!questions_.ask("a", [] {})) {  // until the thread has ended
  }
}

}  // namespace
}  // namespace veltrin
