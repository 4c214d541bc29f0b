// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portable/http_answer.h"

#include <gtest/gtest.h>
#include <string>

namespace veltrin {
namespace {

// An answer that keeps its body.
struct Answered {
  explicit Answered(const std::string& text) { answer.take(text); }

  std::string body;
  HttpAnswer answer{[this](std::string_view bytes) { body += bytes; }};
};

// All that an answer tells, when its text comes in one piece and when it comes byte by byte.
std::string toldOf(const std::string& text, bool isClosed, std::size_t piece) {
  std::string body;
  HttpAnswer answer([&body](std::string_view bytes) { body += bytes; });
  for (std::size_t i = 0; i < text.size(); i += piece) answer.take(text.substr(i, piece));
  if (isClosed) answer.close();
  if (answer.hasFailed()) return "failed";
  std::string told = answer.isWhole() ? "whole" : "open";
  if (answer.hasHead()) {
    told += " " + std::to_string(answer.status()) + " " + std::to_string(answer.length());
  }
  if (!answer.location().empty()) told += " at " + answer.location();
  return told + " [" + body + "]";
}

// The same, which must not depend on how the text comes.
std::string told(const std::string& text, bool isClosed = false) {
  std::string whole = toldOf(text, isClosed, text.size() + 1);
  EXPECT_EQ(toldOf(text, isClosed, 1), whole);
  EXPECT_EQ(toldOf(text, isClosed, 3), whole);
  return whole;
}

std::string toldBehindTheEnd(const std::string& text) { return told(text, true); }

TEST(HttpAnswerTest, IsWholeWithItsLength) {
  EXPECT_EQ(told("HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nhello"), "whole 200 5 [hello]");
}

TEST(HttpAnswerTest, IsOpenUntilItsLengthHasCome) {
  EXPECT_EQ(told("HTTP/1.1 200 OK\r\nContent-Length: 6\r\n\r\nhello"), "open 200 6 [hello]");
}

TEST(HttpAnswerTest, PassesOverWhatStandsBehindItsLength) {
  EXPECT_EQ(told("HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nhello world"), "whole 200 5 [hello]");
}

TEST(HttpAnswerTest, IsWholeWithoutABody) {
  EXPECT_EQ(told("HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n"), "whole 200 0 []");
  EXPECT_EQ(told("HTTP/1.1 204 No Content\r\n\r\n"), "whole 204 -1 []");
  EXPECT_EQ(told("HTTP/1.1 304 Not Modified\r\nContent-Length: 5\r\n\r\n"), "whole 304 5 []");
}

TEST(HttpAnswerTest, EndsWithTheConnectionWhenItHasNoLength) {
  EXPECT_EQ(told("HTTP/1.1 200 OK\r\n\r\nhello"), "open 200 -1 [hello]");
  EXPECT_EQ(toldBehindTheEnd("HTTP/1.1 200 OK\r\n\r\nhello"), "whole 200 -1 [hello]");
  EXPECT_EQ(toldBehindTheEnd("HTTP/1.0 200 OK\r\n\r\n"), "whole 200 -1 []");
}

TEST(HttpAnswerTest, FailsWhenItBreaksOff) {
  const std::string head = "HTTP/1.1 200 OK\r\n";
  for (const std::string& text :
       {std::string(), std::string("HTT"), std::string("HTTP/1.1 200 OK"), head, head + "Content-L",
        head + "Content-Length: 6\r\n\r\nhello", head + "Transfer-Encoding: chunked\r\n\r\n",
        head + "Transfer-Encoding: chunked\r\n\r\n5\r\nhello\r\n",
        head + "Transfer-Encoding: chunked\r\n\r\n5\r\nhello\r\n0\r\n"}) {
    EXPECT_EQ(toldBehindTheEnd(text), "failed") << text;
  }
}

TEST(HttpAnswerTest, ReadsLinesThatEndWithoutCr) {
  EXPECT_EQ(told("HTTP/1.1 200 OK\nContent-Length: 5\n\nhello"), "whole 200 5 [hello]");
}

TEST(HttpAnswerTest, ReadsAStatusWithoutWords) {
  EXPECT_EQ(told("HTTP/1.1 200\r\nContent-Length: 5\r\n\r\nhello"), "whole 200 5 [hello]");
  EXPECT_EQ(told("HTTP/1.1 200 \r\nContent-Length: 5\r\n\r\nhello"), "whole 200 5 [hello]");
}

TEST(HttpAnswerTest, FailsForALineThatIsNoStatus) {
  for (const char* line : {"HTTP/1.1 20", "HTTP/1.1 2000", "HTTP/1.1 020 OK", "HTTP/1.1 abc OK",
                           "HTTP/1.x 200 OK", "HTTP/1.1200 OK", ""}) {
    EXPECT_EQ(told(std::string(line) + "\r\n"), "failed") << line;
  }
}

TEST(HttpAnswerTest, FailsForAnotherLanguageBeforeItsLineEnds) {
  EXPECT_EQ(told("S"), "failed");
  EXPECT_EQ(told("HTTP/2"), "failed");
}

TEST(HttpAnswerTest, ReadsNamesInAnyCaseAndValuesWithoutBlanks) {
  EXPECT_EQ(told("HTTP/1.1 200 OK\r\ncontent-LENGTH:\t 5 \t\r\n\r\nhello"), "whole 200 5 [hello]");
}

TEST(HttpAnswerTest, ReadsAFieldThatGoesOnInTheNextLine) {
  EXPECT_EQ(
      told("HTTP/1.1 302 Found\r\nLocation:\r\n http://example/\r\nContent-Length: 0\r\n\r\n"),
      "whole 302 0 at http://example/ []");
}

TEST(HttpAnswerTest, PassesOverLinesThatAreNoFields) {
  EXPECT_EQ(told("HTTP/1.1 200 OK\r\nnonsense\r\n: x\r\nContent-Length: 0\r\n\r\n"),
            "whole 200 0 []");
}

TEST(HttpAnswerTest, TellsAnotherPlace) {
  EXPECT_EQ(told("HTTP/1.1 301 Moved\r\nLocation: /there?x=1\r\nContent-Length: 0\r\n\r\n"),
            "whole 301 0 at /there?x=1 []");
}

TEST(HttpAnswerTest, FailsForALengthThatIsNone) {
  for (const char* length : {"", "x", "-1", "+5", "5 6", "5x", "99999999999999999999"}) {
    EXPECT_EQ(told("HTTP/1.1 200 OK\r\nContent-Length: " + std::string(length) + "\r\n\r\n"),
              "failed")
        << length;
  }
}

TEST(HttpAnswerTest, ReadsALengthOfMoreThan32Bits) {
  EXPECT_EQ(told("HTTP/1.1 200 OK\r\nContent-Length: 5000000000\r\n\r\n"),
            "open 200 5000000000 []");
}

TEST(HttpAnswerTest, FailsForTwoLengths) {
  EXPECT_EQ(told("HTTP/1.1 200 OK\r\nContent-Length: 5\r\nContent-Length: 6\r\n\r\n"), "failed");
}

TEST(HttpAnswerTest, ReadsTheSameLengthTwice) {
  EXPECT_EQ(told("HTTP/1.1 200 OK\r\nContent-Length: 5\r\nContent-Length: 5\r\n\r\nhello"),
            "whole 200 5 [hello]");
}

TEST(HttpAnswerTest, PassesOverInterimAnswers) {
  EXPECT_EQ(told("HTTP/1.1 103 Early Hints\r\nContent-Length: 9\r\nLocation: /x\r\n\r\n"
                 "HTTP/1.1 100 Continue\r\n\r\n"
                 "HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nhello"),
            "whole 200 5 [hello]");
}

TEST(HttpAnswerTest, FailsWhenItGoesOverToAnotherLanguage) {
  EXPECT_EQ(told("HTTP/1.1 101 Switching Protocols\r\nUpgrade: x\r\n\r\n"), "failed");
}

std::string chunked(const std::string& body) {
  return "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n" + body;
}

TEST(HttpAnswerTest, PutsChunksTogether) {
  EXPECT_EQ(told(chunked("5\r\nhello\r\n00B\r\n wide world\r\n0\r\n\r\n")),
            "whole 200 -1 [hello wide world]");
  EXPECT_EQ(told(chunked("A\nhelloworld\n0\n\n")), "whole 200 -1 [helloworld]");
}

TEST(HttpAnswerTest, PassesOverWhatIsToldBesideChunks) {
  EXPECT_EQ(told(chunked("5;name=\"x\"\r\nhello\r\n0 ; x\r\nDigest: x\r\nMore: y\r\n\r\n")),
            "whole 200 -1 [hello]");
}

TEST(HttpAnswerTest, FailsForChunksThatAreNone) {
  for (const char* body : {"\r\n", "x\r\n", "-5\r\n", "0x5\r\n", "5 5\r\nhello", "5\r\nhello!\r\n",
                           "5\r\nhello5\r\n", "8000000000000000\r\n"}) {
    EXPECT_EQ(told(chunked(body)), "failed") << body;
  }
}

TEST(HttpAnswerTest, TakesChunksForWhatTellsTheEndBeforeALength) {
  EXPECT_EQ(told("HTTP/1.1 200 OK\r\nContent-Length: 3\r\nTransfer-Encoding: gzip, Chunked\r\n\r\n"
                 "5\r\nhello\r\n0\r\n\r\n"),
            "whole 200 -1 [hello]");
}

TEST(HttpAnswerTest, EndsWithTheConnectionWhenItIsCodedWithoutChunks) {
  EXPECT_EQ(toldBehindTheEnd("HTTP/1.1 200 OK\r\nContent-Length: 3\r\n"
                             "Transfer-Encoding: chunked, gzip\r\n\r\nhello"),
            "whole 200 -1 [hello]");
}

// The bytes that an answer takes of a text that repeats for ever; 1 MB when there is no end.
std::size_t takenOf(const std::string& beginning, const std::string& repeated) {
  const std::size_t enough = 1'000'000;
  Answered answered(beginning);
  std::size_t taken = beginning.size();
  while (!answered.answer.hasFailed() && taken < enough) {
    answered.answer.take(repeated);
    taken += repeated.size();
  }
  return taken;
}

TEST(HttpAnswerTest, FailsBehindSoManyBytesOfAHead) {
  const std::size_t most = HttpAnswer::kMostHeadBytes;
  for (const char* repeated : {"X: y\r\n", "x", " x\r\n", "\r"}) {
    const std::size_t taken = takenOf("HTTP/1.1 200 OK\r\nX: ", repeated);
    EXPECT_GT(taken, most) << repeated;
    EXPECT_LT(taken, most + 10) << repeated;
  }
}

TEST(HttpAnswerTest, FailsBehindSoManyBytesOfInterimAnswers) {
  EXPECT_LT(takenOf("", "HTTP/1.1 100 Continue\r\n\r\n"), HttpAnswer::kMostHeadBytes + 30);
}

TEST(HttpAnswerTest, FailsBehindSoManyBytesBesideChunks) {
  EXPECT_LT(takenOf(chunked("5;"), "x"), HttpAnswer::kMostHeadBytes + 100);
  EXPECT_LT(takenOf(chunked("5\r\nhello\r\n0\r\n"), "X: y\r\n"), HttpAnswer::kMostHeadBytes + 100);
}

TEST(HttpAnswerTest, TakesAnyNumberOfChunks) {
  EXPECT_GE(takenOf(chunked(""), "1\r\nx\r\n"), 1'000'000U);
}

}  // namespace
}  // namespace veltrin
