// SPDX-License-Identifier: GPL-3.0-or-later
// A socket under test, with a port of the test's that it may connect to.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <QtTest/QTest>

#include "gmock/gmock.h"
#include "gtest/gtest.h"
#include "peers.h"
#include "platform/qt/qt_sockets.h"

namespace veltrin {

class QtSocketsTest : public testing::Test {
 protected:
  void makeSocket() {
    socket = sockets.makeTcpSocket({[this] { dataArrival(); }, [this] { closed(); },
                                    [this](std::intptr_t request) { connectionRequest(request); }});
  }

  void SetUp() override {
    makeSocket();
    dataArrival = [this] { arrivals.push_back(socket->receive()); };
    closed = [this] { arrivals.emplace_back("closed"); };
    connectionRequest = [this](std::intptr_t request) { requests.push_back(request); };
  }

  // Lets events come until something is true. False when that takes 10 seconds.
  static bool until(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, 10000);
  }

  bool becomes(SocketState state) {
    return until([&] { return socket->state() == state; });
  }

  // Connects the socket to a peer.
  Peer connectedPeer() {
    socket->connect("127.0.0.1", endpoint.port(), 0);
    EXPECT_TRUE(becomes(SocketState::Connected));
    return Peer(endpoint.answer());
  }

  // A resolver that answers at once, in place of the system's.
  void resolveTo(std::vector<std::string> addresses) {
    sockets =
        QtSockets([addresses = std::move(addresses)](const std::string&) { return addresses; });
    makeSocket();
  }

  std::string arrivedText() const {
    std::string text;
    for (const std::string& piece : arrivals) text += piece;
    return text;
  }

  Endpoint endpoint;
  QtSockets sockets;
  std::unique_ptr<TcpSocket> socket;
  std::function<void()> dataArrival;
  std::function<void()> closed;
  std::function<void(std::intptr_t)> connectionRequest;
  std::vector<std::string> arrivals;
  std::vector<std::intptr_t> requests;
};

}  // namespace veltrin
