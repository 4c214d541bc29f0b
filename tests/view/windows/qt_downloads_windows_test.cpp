// SPDX-License-Identifier: GPL-3.0-or-later
// Reads of URLs as a Windows program, whose sockets end in other ways. All that does not
// depend on the system is tested on Linux.
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include <QSslSocket>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest/QTest>

#include "gtest/gtest.h"
#include "platform/qt/qt_downloads.h"

namespace veltrin {
namespace {

// A server that does the same to everybody who asks.
class Server {
 public:
  using Manner = std::function<void(QTcpSocket& caller)>;

  explicit Server(Manner manner) : manner_(std::move(manner)) {
    EXPECT_TRUE(server_.listen(QHostAddress::LocalHost));
    QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] {
      QTcpSocket* const caller = server_.nextPendingConnection();
      QObject::connect(caller, &QTcpSocket::readyRead, caller, [this, caller] {
        heard += caller->readAll().toStdString();
        if (heard.ends_with("\r\n\r\n")) manner_(*caller);
      });
      QObject::connect(caller, &QTcpSocket::disconnected, caller, [this] { hasEnded = true; });
    });
  }

  std::string url() const {
    return "http://127.0.0.1:" + std::to_string(server_.serverPort()) + "/file";
  }

  std::string heard;
  bool hasEnded = false;

 private:
  Manner manner_;
  QTcpServer server_;
};

Server::Manner saying(const std::string& words, bool isClosing = false) {
  return [words, isClosing](QTcpSocket& caller) {
    caller.write(words.data(), static_cast<qint64>(words.size()));
    if (isClosing) caller.disconnectFromHost();
  };
}

class DownloadWindowsTest : public testing::Test {
 protected:
  void ask(const std::string& url) {
    asked = downloads.AsyncRead(url, kAsyncTypeByteArray, "file", kAsyncReadForceUpdate,
                                {[this](const AsyncProperty& property) { progress = property; },
                                 [this](AsyncProperty property) { end = std::move(property); }});
  }

  // What a read brings; "failed" for one that fails.
  std::string bodyAt(const std::string& url) {
    ask(url);
    EXPECT_TRUE(until([this] { return end.has_value(); }));
    if (!end || end->BytesMax == 0) return "failed";
    std::string body;
    for (const std::string& piece : end->Value) body += piece;
    return body;
  }

  std::string bodyFrom(const Server::Manner& manner) {
    const Server server(manner);
    return bodyAt(server.url());
  }

  // Lets events come until something is true. False when that takes 20 seconds.
  static bool until(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, 20000);
  }

  QtDownloads downloads;
  std::unique_ptr<Downloads::Read> asked;
  std::optional<AsyncProperty> progress;
  std::optional<AsyncProperty> end;
};

TEST_F(DownloadWindowsTest, GivesABodyOfManyPiecesToTheBit) {
  std::string body(5'000'001, '\0');
  for (std::size_t i = 0; i < body.size(); ++i) body[i] = static_cast<char>(i * i / 255);

  EXPECT_TRUE(bodyFrom(saying("HTTP/1.1 200 OK\r\nContent-Length: 5000001\r\n\r\n" + body)) ==
              body);
  EXPECT_EQ(end->BytesMax, 5000001);
  ASSERT_TRUE(progress.has_value());
  EXPECT_EQ(progress->BytesRead, 5000001);
}

TEST_F(DownloadWindowsTest, GivesABodyWithoutALengthAtTheEndOfTheConnection) {
  const std::string body(3'000'000, 'x');
  EXPECT_TRUE(bodyFrom(saying("HTTP/1.1 200 OK\r\n\r\n" + body, true)) == body);
}

TEST_F(DownloadWindowsTest, GivesAChunkedBody) {
  EXPECT_EQ(bodyFrom(saying("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                            "5\r\nhello\r\n0\r\n\r\n")),
            "hello");
}

TEST_F(DownloadWindowsTest, FailsForABodyOfLessThanItsLength) {
  EXPECT_EQ(bodyFrom(saying("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nhello", true)), "failed");
  EXPECT_EQ(end->arrived, 5);
}

TEST_F(DownloadWindowsTest, FailsForAReset) {
  EXPECT_EQ(bodyFrom([](QTcpSocket& caller) { caller.abort(); }), "failed");
}

TEST_F(DownloadWindowsTest, FailsWhereNobodyListens) {
  std::string url;
  {
    const Server server(saying(""));
    url = server.url();
  }
  EXPECT_EQ(bodyAt(url), "failed");
}

TEST_F(DownloadWindowsTest, FailsForAHeadWithoutAnEnd) {
  EXPECT_EQ(bodyFrom(saying("HTTP/1.1 200 OK\r\nX: " + std::string(1'000'000, 'x'))), "failed");
}

TEST_F(DownloadWindowsTest, EndsTheConnectionOfASilentServerWhenItIsGivenUp) {
  Server server(saying(""));
  ask(server.url());
  ASSERT_TRUE(until([&] { return server.heard.ends_with("\r\n\r\n"); }));

  asked.reset();

  EXPECT_TRUE(until([&] { return server.hasEnded; }));
  EXPECT_FALSE(end.has_value());
}

TEST_F(DownloadWindowsTest, CanSecureConnections) { EXPECT_TRUE(QSslSocket::supportsSsl()); }

TEST_F(DownloadWindowsTest, FailsWhenAPlainPortIsAskedForSecurity) {
  QTcpServer plain;
  ASSERT_TRUE(plain.listen(QHostAddress::LocalHost));
  QObject::connect(&plain, &QTcpServer::newConnection, &plain, [&plain] {
    QTcpSocket* const caller = plain.nextPendingConnection();
    QObject::connect(caller, &QTcpSocket::readyRead, caller, [caller] {
      caller->readAll();
      caller->write("HTTP/1.1 400 Bad Request\r\n\r\n");
      caller->disconnectFromHost();
    });
  });
  EXPECT_EQ(bodyAt("https://127.0.0.1:" + std::to_string(plain.serverPort()) + "/file"), "failed");
}

}  // namespace
}  // namespace veltrin
