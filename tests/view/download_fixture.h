// SPDX-License-Identifier: GPL-3.0-or-later
// Reads of URLs whose server the test plays, for tests of QtDownloads.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <QtTest/QTest>

#include "gtest/gtest.h"
#include "peers.h"
#include "platform/qt/qt_downloads.h"

namespace veltrin {

// The body of a read, in one piece.
inline std::string bodyOf(const AsyncProperty& property) {
  std::string body;
  for (const std::string& piece : property.Value) body += piece;
  return body;
}

// What a read has told.
struct Told {
  std::vector<AsyncProperty> progress;
  std::optional<AsyncProperty> end;
  int ends = 0;
};

class DownloadTest : public testing::Test {
 protected:
  // Starts a read of a URL, which tells `told` what it tells.
  std::unique_ptr<Downloads::Read> read(const std::string& url, Told& told,
                                        const std::string& name = "file") {
    return downloads.AsyncRead(
        url, kAsyncTypeByteArray, name, kAsyncReadForceUpdate,
        {[&told](const AsyncProperty& property) { told.progress.push_back(property); },
         [&told](AsyncProperty property) {
           told.end = std::move(property);
           ++told.ends;
         }});
  }

  // Lets events come until something is true. False when that takes 10 seconds.
  static bool until(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, 10000);
  }

  // Whether a read comes to an end, and to one only, with nothing behind it.
  static bool ends(const Told& told) {
    const bool hasEnded = until([&] { return told.end.has_value(); });
    const std::size_t progress = told.progress.size();
    QTest::qWait(5);
    return hasEnded && told.ends == 1 && told.progress.size() == progress;
  }

  // Whether a read fails, behind so many bytes.
  static bool fails(const Told& told, std::int64_t arrived = 0) {
    return ends(told) && told.end->BytesMax == 0 && told.end->Value.empty() &&
           told.end->arrived == arrived && told.end->BytesRead == arrived;
  }

  QtDownloads downloads;
};

// With a server at `endpoint` to which the test lends its voice.
class ScriptedDownloadTest : public DownloadTest {
 protected:
  std::string url(const std::string& path = "/") const {
    return "http://127.0.0.1:" + std::to_string(endpoint.port()) + path;
  }

  // Starts a read of a path of the endpoint.
  void ask(const std::string& path = "/") { asked = read(url(path), told); }

  // The other side of the next connection, once its request has come.
  Peer nextPeer() const {
    std::optional<Peer> peer;
    const bool hasAsked = until([&] {
      if (!peer) {
        Descriptor socket = endpoint.answer();
        if (socket.isOpen()) peer.emplace(std::move(socket));
      }
      return peer && peer->heard().ends_with("\r\n\r\n");
    });
    EXPECT_TRUE(hasAsked) << "nobody asked";
    return hasAsked ? std::move(*peer) : Peer(Descriptor());
  }

  // Asks, and answers so.
  Peer answered(const std::string& answer) {
    ask();
    Peer peer = nextPeer();
    EXPECT_EQ(peer.say(answer), answer.size());
    return peer;
  }

  // Says something of any length.
  static bool sayAll(const Peer& peer, const std::string& bytes) {
    std::size_t said = 0;
    return until([&] {
      said += peer.say(bytes.substr(said, 1 << 18));
      return said == bytes.size();
    });
  }

  Endpoint endpoint;
  Told told;
  std::unique_ptr<Downloads::Read> asked;
};

}  // namespace veltrin
