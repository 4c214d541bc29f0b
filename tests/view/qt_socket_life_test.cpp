// SPDX-License-Identifier: GPL-3.0-or-later
// What sockets that listen do, and how sockets give up and end.
#include <algorithm>

#include "socket_fixture.h"
#include "text/statement.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ListeningTest : public QtSocketsTest {
 protected:
  // A caller of the socket's, and the number of its request.
  Peer caller(std::intptr_t& request) {
    socket->listen(port);
    EXPECT_EQ(socket->state(), SocketState::Listening);
    Peer peer = Peer::calling(port);
    EXPECT_TRUE(until([&] { return !requests.empty(); }));
    request = requests.back();
    return peer;
  }

  const std::uint16_t port = closedPort();
};

TEST_F(ListeningTest, AcceptsACaller) {
  std::intptr_t request = 0;
  Peer peer = caller(request);

  socket->accept(request);
  EXPECT_EQ(socket->state(), SocketState::Connected);

  socket->send("hello");
  peer.say("and you");
  EXPECT_TRUE(until([&] { return arrivedText() == "and you"; }));
  EXPECT_EQ(peer.heard(), "hello");
}

TEST_F(ListeningTest, AcceptsACallerBehindAClosing) {
  std::intptr_t request = 0;
  const Peer peer = caller(request);

  socket->close();
  QTest::qWait(0);
  socket->accept(request);

  EXPECT_EQ(socket->state(), SocketState::Connected);
  peer.say("hello");
  EXPECT_TRUE(until([&] { return arrivedText() == "hello"; }));
}

TEST_F(ListeningTest, TellsOfWhatACallerSaidBeforeItWasAccepted) {
  std::intptr_t request = 0;
  Peer peer = caller(request);
  peer.say("hello");
  peer.close();
  QTest::qWait(20);

  socket->accept(request);
  EXPECT_THAT(arrivals, IsEmpty()) << "nothing is told from within a call";
  ASSERT_TRUE(becomes(SocketState::Closing));
  QTest::qWait(0);

  EXPECT_THAT(arrivals, ElementsAre("hello", "closed"));
}

TEST_F(ListeningTest, NoLongerListensOnceACallerIsAccepted) {
  std::intptr_t request = 0;
  const Peer peer = caller(request);

  socket->accept(request);

  Peer second = Peer::calling(port);
  EXPECT_EQ(second.say("x"), 0U);
}

TEST_F(ListeningTest, AcceptsNobodyTwice) {
  std::intptr_t request = 0;
  const Peer peer = caller(request);
  socket->accept(request);

  EXPECT_THROW(socket->accept(request), StatementFailed);
}

TEST_F(ListeningTest, AcceptsNobodyWhoHasNotCalled) {
  EXPECT_THROW(socket->accept(1), StatementFailed);
}

TEST_F(ListeningTest, TurnsCallersAwayWhenItListensAnew) {
  std::intptr_t request = 0;
  Peer peer = caller(request);

  socket->listen(port);

  EXPECT_THROW(socket->accept(request), StatementFailed);
  EXPECT_TRUE(until([&] { return peer.hasEnded(); }));
}

TEST_F(ListeningTest, KeepsAHandfulOfCallersWaiting) {
  socket->listen(port);
  std::vector<Peer> peers;
  peers.reserve(40);
  for (int i = 0; i < 40; ++i) peers.push_back(Peer::calling(port));

  const auto ended = [&] {
    return std::count_if(peers.begin(), peers.end(), [](Peer& peer) { return peer.hasEnded(); });
  };
  EXPECT_TRUE(until([&] { return ended() == 10; })) << ended();
  EXPECT_EQ(requests.size(), 30U);
}

TEST_F(ListeningTest, IsInErrorWhenThePortIsTaken) {
  socket->listen(endpoint.port());

  EXPECT_EQ(socket->state(), SocketState::Error);
}

TEST_F(ListeningTest, ListensOnAnyFreePort) {
  socket->listen(0);

  EXPECT_EQ(socket->state(), SocketState::Listening);
}

TEST_F(ListeningTest, IsClosedToCallersBehindAClosing) {
  socket->listen(port);
  socket->close();

  EXPECT_EQ(Peer::calling(port).say("x"), 0U);
}

TEST_F(QtSocketsTest, ConnectsAnewWhileItConnects) {
  const SilentEndpoint silent;
  socket->connect("127.0.0.1", silent.port(), 0);

  socket->connect("127.0.0.1", endpoint.port(), 0);

  EXPECT_TRUE(becomes(SocketState::Connected));
}

TEST_F(QtSocketsTest, ConnectsAnewWhileItListens) {
  socket->listen(0);

  socket->connect("127.0.0.1", endpoint.port(), 0);

  EXPECT_TRUE(becomes(SocketState::Connected));
}

TEST_F(QtSocketsTest, ConnectsAnewWhileItIsConnected) {
  Peer first = connectedPeer();
  const Peer second = connectedPeer();

  second.say("second");
  EXPECT_TRUE(until([&] { return arrivedText() == "second"; }));
  EXPECT_TRUE(until([&] { return first.hasEnded(); }));
}

TEST_F(QtSocketsTest, ConnectsAnewBehindAnError) {
  socket->connect("", endpoint.port(), 0);

  socket->connect("127.0.0.1", endpoint.port(), 0);

  EXPECT_TRUE(becomes(SocketState::Connected));
}

TEST_F(QtSocketsTest, ListensWhileItConnects) {
  const SilentEndpoint silent;
  socket->connect("127.0.0.1", silent.port(), 0);

  socket->listen(0);

  EXPECT_EQ(socket->state(), SocketState::Listening);
}

TEST_F(QtSocketsTest, TellsNothingOfAnOlderConnection) {
  const Peer peer = connectedPeer();
  peer.say("old");
  // The bytes are in, and what they bring is queued.
  ASSERT_TRUE(until([&] { return !arrivals.empty(); }));
  arrivals.clear();
  peer.say("older than the closing");

  socket->close();
  QTest::qWait(20);

  EXPECT_THAT(arrivals, IsEmpty());
  EXPECT_EQ(socket->receive(), "");
}

TEST_F(QtSocketsTest, EndsTheConnectionWhenItIsClosed) {
  Peer peer = connectedPeer();

  socket->close();

  EXPECT_EQ(socket->state(), SocketState::Closed);
  EXPECT_TRUE(until([&] { return peer.hasEnded(); }));
}

TEST_F(QtSocketsTest, IsClosedTwice) {
  const Peer peer = connectedPeer();

  socket->close();
  socket->close();

  EXPECT_EQ(socket->state(), SocketState::Closed);
}

TEST_F(QtSocketsTest, MayBeDestroyedByItsOwnArrival) {
  const Peer peer = connectedPeer();
  dataArrival = [&] { socket.reset(); };

  peer.say("x");

  EXPECT_TRUE(until([&] { return socket == nullptr; }));
}

TEST_F(QtSocketsTest, MayBeDestroyedByItsOwnClosing) {
  Peer peer = connectedPeer();
  closed = [&] { socket.reset(); };

  peer.close();

  EXPECT_TRUE(until([&] { return socket == nullptr; }));
}

TEST_F(ListeningTest, MayBeDestroyedByItsOwnCaller) {
  connectionRequest = [&](std::intptr_t) { socket.reset(); };
  socket->listen(port);

  const Peer first = Peer::calling(port);
  const Peer second = Peer::calling(port);

  EXPECT_TRUE(until([&] { return socket == nullptr; }));
}

TEST_F(QtSocketsTest, MayConnectAnewFromItsOwnRoutine) {
  Peer peer = connectedPeer();
  closed = [&] { socket->connect("127.0.0.1", endpoint.port(), 0); };

  peer.close();

  EXPECT_TRUE(becomes(SocketState::Connecting));
  EXPECT_TRUE(becomes(SocketState::Connected));
}

TEST_F(QtSocketsTest, IsDestroyedWhileItConnects) {
  const SilentEndpoint silent;
  socket->connect("127.0.0.1", silent.port(), 0);
  QTest::qWait(0);
  ASSERT_EQ(socket->state(), SocketState::Connecting);

  socket.reset();
  QTest::qWait(0);
}

TEST_F(ListeningTest, IsDestroyedWithCallersWaiting) {
  std::intptr_t request = 0;
  Peer peer = caller(request);

  socket.reset();

  EXPECT_TRUE(until([&] { return peer.hasEnded(); }));
}

TEST_F(QtSocketsTest, IsDestroyedWhileItIsConnected) {
  Peer peer = connectedPeer();

  socket.reset();

  EXPECT_TRUE(until([&] { return peer.hasEnded(); }));
}

TEST_F(QtSocketsTest, IsDestroyedInError) {
  socket->connect("127.0.0.1", closedPort(), 0);
  ASSERT_TRUE(becomes(SocketState::Error));

  socket.reset();
  QTest::qWait(0);
}

TEST_F(QtSocketsTest, IsDestroyedWhileItIsClosing) {
  Peer peer = connectedPeer();
  peer.close();
  ASSERT_TRUE(becomes(SocketState::Closing));

  socket.reset();
  QTest::qWait(0);
}

}  // namespace
}  // namespace veltrin
