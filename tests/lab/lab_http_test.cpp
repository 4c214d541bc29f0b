// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "lab/http.h"

namespace veltrin::lab {
namespace {

using testing::StartsWith;

constexpr std::time_t kMoment = 784111777;  // the example of RFC 9110 section 5.6.7

class LabHttp : public testing::Test {
 protected:
  LabHttp() { site_.files = {{"/one.bin", 1000}, {"/empty", 0}}; }

  WebAnswer ask(const std::string& line) const {
    return answerTo(line + "\r\nHost: far.example", site_, kMoment);
  }

  WebSite site_;
};

constexpr const char* kFile =
    "HTTP/1.1 200 OK\r\n"
    "Date: Sun, 06 Nov 1994 08:49:37 GMT\r\n"
    "Content-Length: 1000\r\n"
    "Content-Type: application/octet-stream\r\n"
    "Accept-Ranges: none\r\n"
    "Connection: close\r\n"
    "\r\n";

TEST_F(LabHttp, AnswersGetWithHeadAndBody) {
  const WebAnswer answer = ask("GET /one.bin HTTP/1.1");
  EXPECT_EQ(answer.head, kFile);
  EXPECT_EQ(answer.body, 1000U);
}

TEST_F(LabHttp, AnswersHeadWithTheSameHeadAndNoBody) {
  const WebAnswer answer = ask("HEAD /one.bin HTTP/1.1");
  EXPECT_EQ(answer.head, kFile);
  EXPECT_EQ(answer.body, 0U);
}

TEST_F(LabHttp, AnswersWhenTheRequestIsOneLine) {
  EXPECT_EQ(answerTo("GET /one.bin HTTP/1.0", site_, kMoment).head, kFile);
}

TEST_F(LabHttp, TakesAWholeAddressAndAQuery) {
  EXPECT_EQ(ask("GET http://far.example/one.bin HTTP/1.1").body, 1000U);
  EXPECT_EQ(ask("GET /one.bin?again=1 HTTP/1.1").body, 1000U);
}

TEST_F(LabHttp, SaysThatAnUnknownPathIsNotFound) {
  for (const char* target : {"/", "/one", "/one.bin/", "/ONE.BIN", "http://far.example", "*"}) {
    const WebAnswer answer = ask("GET " + std::string(target) + " HTTP/1.1");
    EXPECT_EQ(answer.head,
              "HTTP/1.1 404 Not Found\r\n"
              "Date: Sun, 06 Nov 1994 08:49:37 GMT\r\n"
              "Content-Length: 0\r\n"
              "Connection: close\r\n"
              "\r\n")
        << target;
    EXPECT_EQ(answer.body, 0U);
  }
}

TEST_F(LabHttp, TellsTheMethodsThereAre) {
  const WebAnswer answer = ask("POST /one.bin HTTP/1.1");
  EXPECT_EQ(answer.head,
            "HTTP/1.1 405 Method Not Allowed\r\n"
            "Date: Sun, 06 Nov 1994 08:49:37 GMT\r\n"
            "Content-Length: 0\r\n"
            "Allow: GET, HEAD\r\n"
            "Connection: close\r\n"
            "\r\n");
  EXPECT_EQ(answer.body, 0U);
}

TEST_F(LabHttp, RefusesWhatIsNoRequest) {
  for (const char* line : {"", "GET", "GET /one.bin", " /one.bin HTTP/1.1", "GET HTTP/1.1",
                           "GET /one.bin SMTP/1.1", "GET /one.bin HTTP/2"}) {
    EXPECT_THAT(ask(line).head, StartsWith("HTTP/1.1 400 Bad Request\r\n")) << line;
  }
}

TEST_F(LabHttp, RefusesAHeadThatIsTooLong) {
  EXPECT_THAT(answerToLongHead(kMoment).head,
              StartsWith("HTTP/1.1 431 Request Header Fields Too Large\r\n"));
}

}  // namespace
}  // namespace veltrin::lab
