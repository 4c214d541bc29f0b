// SPDX-License-Identifier: GPL-3.0-or-later
// What goes through sockets, and what this computer is called.
#include <climits>
#include <sched.h>
#include <sys/wait.h>

#include <QTcpServer>

#include "socket_fixture.h"
#include "text/statement.h"

namespace veltrin {
namespace {

using testing::ElementsAre;

TEST_F(QtSocketsTest, ReceivesAnAnswerInTwoPieces) {
  const Peer peer = connectedPeer();

  peer.say("1.03");
  ASSERT_TRUE(until([&] { return arrivals.size() == 1; }));
  peer.say("192.0.2.1");
  ASSERT_TRUE(until([&] { return arrivals.size() == 2; }));

  EXPECT_THAT(arrivals, ElementsAre("1.03", "192.0.2.1"));
}

TEST_F(QtSocketsTest, ReceivesTwoPiecesThatNobodyTookAsOne) {
  int told = 0;
  dataArrival = [&] { ++told; };
  const Peer peer = connectedPeer();

  peer.say("1.03");
  ASSERT_TRUE(until([&] { return told == 1; }));
  peer.say("192.0.2.1");
  ASSERT_TRUE(until([&] { return told == 2; }));

  EXPECT_EQ(socket->receive(), "1.03192.0.2.1");
  EXPECT_EQ(socket->receive(), "");
}

TEST_F(QtSocketsTest, SendsAtOnce) {
  Peer peer = connectedPeer();

  socket->send("hello");
  socket->close();

  EXPECT_EQ(peer.heard(), "hello");
}

TEST_F(QtSocketsTest, SendsAMegabyte) {
  std::string bytes;
  for (int i = 0; bytes.size() < (1U << 20U); ++i) bytes += std::to_string(i) + '\0';
  Peer peer = connectedPeer();

  socket->send(bytes);

  EXPECT_TRUE(until([&] { return peer.heard().size() >= bytes.size(); }));
  EXPECT_TRUE(peer.heard() == bytes);
}

TEST_F(QtSocketsTest, ReceivesAMegabyte) {
  std::string bytes;
  for (int i = 0; bytes.size() < (1U << 20U); ++i) bytes += std::to_string(i) + '\0';
  const Peer peer = connectedPeer();

  std::size_t said = 0;
  EXPECT_TRUE(until([&] {
    said += peer.say(bytes.substr(said));
    return arrivedText().size() == bytes.size();
  }));

  EXPECT_TRUE(arrivedText() == bytes);
}

TEST_F(QtSocketsTest, TakesInAMegabyteAheadAndLeavesTheRestToTheSender) {
  constexpr std::size_t kFlood = 256U << 20U;
  dataArrival = [] {};
  const Peer peer = connectedPeer();
  const std::string block(1U << 20U, 'x');

  // The system keeps some megabytes of its own between the two.
  std::size_t said = 0;
  for (int idle = 0; idle < 50 && said < kFlood;) {
    const std::size_t taken = peer.say(block);
    said += taken;
    idle = taken == 0 ? idle + 1 : 0;
    QTest::qWait(1);
  }
  EXPECT_LT(said, kFlood / 4);

  const std::size_t first = socket->receive().size();
  EXPECT_EQ(first, 1U << 20U);
  std::size_t received = first;
  dataArrival = [&] { received += socket->receive().size(); };
  EXPECT_TRUE(until([&] { return received == said; })) << received << " of " << said;
}

TEST_F(QtSocketsTest, ReceivesAllThatWasSentBeforeTheOtherSideClosed) {
  dataArrival = [] {};
  Peer peer = connectedPeer();
  const std::string block(3U << 20U, 'x');
  std::size_t said = 0;
  ASSERT_TRUE(until([&] {
    said += peer.say(block.substr(said));
    return said == block.size();
  })) << "the system keeps less than this test needs";

  peer.close();
  std::size_t received = 0;
  ASSERT_TRUE(until([&] {
    received += socket->receive().size();
    return socket->state() == SocketState::Closing;
  }));
  received += socket->receive().size();

  EXPECT_EQ(received, block.size());
  EXPECT_THAT(arrivals, ElementsAre("closed"));
}

TEST_F(QtSocketsTest, TellsOfTheLastBytesBeforeTheEnd) {
  Peer peer = connectedPeer();

  peer.say("1.03");
  peer.close();
  ASSERT_TRUE(becomes(SocketState::Closing));
  QTest::qWait(0);

  EXPECT_THAT(arrivals, ElementsAre("1.03", "closed"));
}

TEST_F(QtSocketsTest, IsClosingWhenTheOtherSideResetsTheConnection) {
  Peer peer = connectedPeer();

  peer.reset();
  ASSERT_TRUE(becomes(SocketState::Closing));
  QTest::qWait(0);

  EXPECT_THAT(arrivals, ElementsAre("closed"));
}

TEST_F(QtSocketsTest, FailsToSendWithoutAConnection) {
  EXPECT_THROW(socket->send("x"), StatementFailed);
  socket->connect("127.0.0.1", endpoint.port(), 0);
  EXPECT_THROW(socket->send("x"), StatementFailed);
}

TEST_F(QtSocketsTest, FailsToSendOnceTheOtherSideHasClosed) {
  Peer peer = connectedPeer();
  peer.close();
  ASSERT_TRUE(becomes(SocketState::Closing));

  EXPECT_THROW(socket->send("x"), StatementFailed);
}

TEST_F(QtSocketsTest, HasNothingToReceiveWithoutAConnection) { EXPECT_EQ(socket->receive(), ""); }

TEST(LocalAddressTest, IsTheNameThatTheSystemHas) {
  std::array<char, HOST_NAME_MAX + 1> name{};
  ASSERT_EQ(gethostname(name.data(), name.size()), 0);
  EXPECT_EQ(QtSockets().localHostName(), name.data());
}

TEST(LocalAddressTest, IsAnAddressOfThisMachine) {
  const std::string text = QtSockets().localAddress();
  QTcpServer server;
  EXPECT_TRUE(server.listen(QHostAddress(QString::fromStdString(text)))) << text;
}

// What a copy of this program finds in a network namespace without a network.
TEST(LocalAddressTest, IsTheLoopbackWithoutANetwork) {
  const pid_t child = fork();
  if (child == 0) {
    if (unshare(CLONE_NEWUSER | CLONE_NEWNET) != 0) _exit(77);
    _exit(QtSockets().localAddress() == "127.0.0.1" ? 0 : 1);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFEXITED(status));
  if (WEXITSTATUS(status) == 77) GTEST_SKIP() << "this machine gives users no namespaces";
  EXPECT_EQ(WEXITSTATUS(status), 0);
}

}  // namespace
}  // namespace veltrin
