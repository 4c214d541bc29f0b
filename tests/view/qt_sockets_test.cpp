// SPDX-License-Identifier: GPL-3.0-or-later
// How sockets connect, on the loopback of this machine.
#include <cstdlib>
#include <future>
#include <mutex>

#include <QElapsedTimer>
#include <QNetworkProxy>
#include <QTcpServer>

#include "socket_fixture.h"

namespace veltrin {
namespace {

using testing::IsEmpty;

using Names = std::vector<std::string>;

// What a resolver that is asked knows. It answers when the test lets it.
class Resolver {
 public:
  explicit Resolver(Names addresses = {}) : addresses_(std::move(addresses)) {
    answered_ = allowed_.get_future().share();
  }
  ~Resolver() { allow(); }
  Resolver(const Resolver&) = delete;
  Resolver& operator=(const Resolver&) = delete;

  void allow() {
    std::call_once(once_, [this] { allowed_.set_value(); });
  }

  // Shares nothing with this object but the future, as it may live longer.
  HostLookup::Resolver function() const {
    return [addresses = addresses_, answered = answered_](const std::string&) {
      answered.wait();
      return addresses;
    };
  }

 private:
  Names addresses_;
  std::once_flag once_;
  std::promise<void> allowed_;
  std::shared_future<void> answered_;
};

TEST_F(QtSocketsTest, IsClosedAtFirst) { EXPECT_EQ(socket->state(), SocketState::Closed); }

TEST_F(QtSocketsTest, ConnectsToAnAddressWithoutALookup) {
  sockets = QtSockets([](const std::string& host) {
    ADD_FAILURE() << "looked up " << host;
    return Names();
  });
  makeSocket();

  socket->connect("127.0.0.1", endpoint.port(), 0);

  EXPECT_EQ(socket->state(), SocketState::Connecting);
  EXPECT_TRUE(becomes(SocketState::Connected));
}

TEST_F(QtSocketsTest, ConnectsToAName) {
  resolveTo({"127.0.0.1"});

  socket->connect("endpoint.example", endpoint.port(), 0);

  EXPECT_EQ(socket->state(), SocketState::ResolvingHost);
  EXPECT_TRUE(becomes(SocketState::Connected));
}

TEST_F(QtSocketsTest, AsksTheSystemForAName) {
  socket->connect("localhost", endpoint.port(), 0);

  EXPECT_TRUE(becomes(SocketState::Connected));
}

TEST_F(QtSocketsTest, IsInErrorAtOnceForAHostWithoutAName) {
  socket->connect("", endpoint.port(), 0);

  EXPECT_EQ(socket->state(), SocketState::Error);
}

TEST_F(QtSocketsTest, IsInErrorAtOnceForANameWithANul) {
  socket->connect(std::string("localhost\0x", 11), endpoint.port(), 0);

  EXPECT_EQ(socket->state(), SocketState::Error);
}

TEST_F(QtSocketsTest, IsInErrorWhenItIsRefused) {
  socket->connect("127.0.0.1", closedPort(), 0);

  EXPECT_TRUE(becomes(SocketState::Error));
  EXPECT_THAT(arrivals, IsEmpty());
}

TEST_F(QtSocketsTest, IsInErrorWhenANameHasNoAddresses) {
  resolveTo({});

  socket->connect("endpoint.example", endpoint.port(), 0);

  EXPECT_TRUE(becomes(SocketState::Error));
}

TEST_F(QtSocketsTest, IsInErrorWhenEveryAddressRefuses) {
  resolveTo({"127.0.0.1", "127.0.0.2", "::1"});

  socket->connect("endpoint.example", closedPort(), 0);

  EXPECT_TRUE(becomes(SocketState::Error));
}

TEST_F(QtSocketsTest, TriesTheNextAddressWhenOneRefuses) {
  resolveTo({"127.0.0.9", "127.0.0.1"});

  socket->connect("endpoint.example", endpoint.port(), 0);

  EXPECT_TRUE(becomes(SocketState::Connected));
}

// The address belongs to nobody (RFC 3849).
TEST_F(QtSocketsTest, ReachesAnIpv4AddressBehindAnIpv6OneThatIsOutOfReach) {
  resolveTo({"2001:db8::1", "127.0.0.1"});

  socket->connect("endpoint.example", endpoint.port(), 0);

  EXPECT_TRUE(becomes(SocketState::Connected));
}

TEST_F(QtSocketsTest, ReachesTheOtherFamilyBehindManySilentAddresses) {
  const QHostAddress any(QHostAddress::LocalHostIPv6);
  QTcpServer server;
  if (!server.listen(any)) GTEST_SKIP() << "this machine has no IPv6";
  const std::uint16_t port = server.serverPort();
  std::vector<std::unique_ptr<SilentEndpoint>> silent;
  Names addresses;
  for (std::uint32_t last = 1; last <= 20; ++last) {
    silent.push_back(std::make_unique<SilentEndpoint>(port, last));
    addresses.push_back("127.0.0." + std::to_string(last));
  }
  addresses.emplace_back("::1");
  resolveTo(addresses);
  QElapsedTimer clock;
  clock.start();

  socket->connect("endpoint.example", port, 0);

  EXPECT_TRUE(becomes(SocketState::Connected));
  EXPECT_LT(clock.elapsed(), 2500) << "the second attempt comes 250 ms behind the first";
}

TEST_F(QtSocketsTest, ComesFromTheLocalPortThatWasAskedFor) {
  const std::uint16_t port = closedPort();

  socket->connect("127.0.0.1", endpoint.port(), port);
  ASSERT_TRUE(becomes(SocketState::Connected));

  EXPECT_EQ(Peer(endpoint.answer()).farPort(), port);
}

TEST_F(QtSocketsTest, IsInErrorWhenTheLocalPortIsTaken) {
  const Endpoint taken;

  socket->connect("127.0.0.1", endpoint.port(), taken.port());

  EXPECT_TRUE(becomes(SocketState::Error));
}

TEST_F(QtSocketsTest, UsesNoProxy) {
  QNetworkProxy::setApplicationProxy({QNetworkProxy::HttpProxy, "127.0.0.1", closedPort()});
  socket->connect("127.0.0.1", endpoint.port(), 0);
  EXPECT_TRUE(becomes(SocketState::Connected));
  QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
}

// --- A resolver that never answers ----------------------------------------
// Any wait for it would hold up these tests for ever.

TEST_F(QtSocketsTest, DoesNotWaitForANameThatIsNeverAnswered) {
  const Resolver silent;
  sockets = QtSockets(silent.function());
  makeSocket();

  socket->connect("silent.example", endpoint.port(), 0);

  EXPECT_EQ(socket->state(), SocketState::ResolvingHost);
}

TEST_F(QtSocketsTest, GivesUpANameThatIsNeverAnswered) {
  const Resolver silent;
  sockets = QtSockets(silent.function());
  makeSocket();
  socket->connect("silent.example", endpoint.port(), 0);

  socket->close();
  EXPECT_EQ(socket->state(), SocketState::Closed);

  socket->connect("127.0.0.1", endpoint.port(), 0);
  EXPECT_TRUE(becomes(SocketState::Connected));
}

TEST_F(QtSocketsTest, DropsTheAnswerToALookupThatWasGivenUp) {
  Resolver late({"127.0.0.1"});
  sockets = QtSockets(late.function());
  makeSocket();
  socket->connect("late.example", endpoint.port(), 0);
  socket->close();
  socket->connect("late.example", endpoint.port(), 0);

  late.allow();

  EXPECT_TRUE(becomes(SocketState::Connected));
  EXPECT_TRUE(endpoint.answer().isOpen());
  EXPECT_FALSE(endpoint.answer().isOpen()) << "two lookups, but one connection";
}

TEST_F(QtSocketsTest, IsDestroyedWhileANameIsLookedUp) {
  Resolver late({"127.0.0.1"});
  sockets = QtSockets(late.function());
  makeSocket();
  socket->connect("late.example", endpoint.port(), 0);

  socket.reset();
  late.allow();
  QTest::qWait(0);

  EXPECT_FALSE(endpoint.answer().isOpen());
}

TEST_F(QtSocketsTest, LetsTheProgramEndWhileANameIsLookedUp) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        const Resolver silent;
        sockets = QtSockets(silent.function());
        makeSocket();
        socket->connect("silent.example", endpoint.port(), 0);
        std::exit(0);
      },
      testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace veltrin
