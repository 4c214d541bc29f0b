// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame/winsock.h"

#include <gmock/gmock.h>
#include <memory>

#include "support/simulation.h"
#include "text/statement.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Caller : public Form {
 public:
  explicit Caller(Program& program) : Form("caller", program), socket(program.platform) {
    own("socket", socket);
  }

  Winsock socket;
};

class WinsockControl : public ::testing::Test {
 protected:
  WinsockControl() {
    window = simulation.program().show<Caller>();
    socket().RemoteHost = "host.example";
    socket().RemotePort = 80;
    socket().DataArrival = [this] { told.push_back(socket().GetData()); };
  }

  Winsock& socket() { return window->socket; }
  SimulatedTcpSocket& wire() { return *simulation.sockets.sockets.at(0); }

  void connect() {
    socket().Connect();
    wire().comeConnected();
  }

  Simulation simulation;
  std::shared_ptr<Caller> window;
  std::vector<std::string> told;
};

TEST_F(WinsockControl, ConnectsToItsRemoteHostAndPort) {
  socket().Connect();
  EXPECT_THAT(simulation.sockets.calls, ElementsAre("connect host.example 80"));
  EXPECT_EQ(socket().State(), SocketState::Connecting);
}

TEST_F(WinsockControl, ListensOnItsLocalPort) {
  socket().LocalPort = 4000;
  socket().Listen();
  EXPECT_THAT(simulation.sockets.calls, ElementsAre("listen 4000"));
}

TEST_F(WinsockControl, TellsAnArrivalWhenTheGateOpensAndNotBefore) {
  connect();
  wire().comeData("early");
  EXPECT_THAT(told, IsEmpty());
  simulation.loop.DoEvents();
  EXPECT_THAT(told, ElementsAre("early"));
}

TEST_F(WinsockControl, TellsArrivalsThatWaitedTogetherOnce) {
  connect();
  wire().comeData("one ");
  wire().comeData("two");
  simulation.loop.DoEvents();
  EXPECT_THAT(told, ElementsAre("one two"));
}

TEST_F(WinsockControl, TellsOfWhatArrivesDuringItsRoutineBehindIt) {
  std::vector<std::string> order;
  socket().DataArrival = [&] {
    order.push_back("begin " + socket().GetData());
    if (order.size() == 1) wire().comeData("second");
    simulation.loop.DoEvents();
    order.emplace_back("end");
  };
  connect();
  wire().comeData("first");
  simulation.loop.DoEvents();
  EXPECT_THAT(order, ElementsAre("begin first", "end", "begin second", "end"));
}

TEST_F(WinsockControl, TellsOfLaterArrivalsBehindARoutineThatFailed) {
  socket().DataArrival = [&] {
    told.push_back(socket().GetData());
    if (told.size() == 1) throw StatementFailed("The first one fails");
  };
  connect();
  wire().comeData("first");
  simulation.loop.DoEvents();
  wire().comeData("second");
  simulation.loop.DoEvents();
  EXPECT_THAT(told, ElementsAre("first", "second"));
  EXPECT_EQ(simulation.loop.gate().escapedFailures(), 1);
}

TEST_F(WinsockControl, TellsOfWhatArrivedDuringARoutineThatFailedBehindIt) {
  socket().DataArrival = [&] {
    told.push_back(socket().GetData());
    if (told.size() > 1) return;
    wire().comeData("second");
    throw StatementFailed("The first one fails");
  };
  connect();
  wire().comeData("first");
  simulation.loop.DoEvents();
  EXPECT_THAT(told, ElementsAre("first", "second"));
}

TEST_F(WinsockControl, ForgetsWhatArrivedBeforeItWasClosed) {
  connect();
  wire().comeData("late");
  socket().Close();
  simulation.loop.DoEvents();
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(WinsockControl, ForgetsAClosingOfAnEarlierConnection) {
  int closings = 0;
  socket().Closed = [&] { ++closings; };
  connect();
  wire().comeClosed();
  connect();
  simulation.loop.DoEvents();
  EXPECT_EQ(closings, 0);
}

TEST_F(WinsockControl, ForgetsWhatArrivedBeforeItListens) {
  connect();
  wire().comeData("late");
  socket().Listen();
  simulation.loop.DoEvents();
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(WinsockControl, ConnectsFromItsLocalPort) {
  socket().LocalPort = 4000;
  socket().Connect();
  EXPECT_THAT(simulation.sockets.calls, ElementsAre("connect host.example 80 from 4000"));
}

TEST_F(WinsockControl, ForgetsACallerOfAnEarlierUse) {
  int requests = 0;
  socket().ConnectionRequest = [&](std::intptr_t) { ++requests; };
  socket().Listen();
  wire().comeRequest(5);
  socket().Close();
  simulation.loop.DoEvents();
  EXPECT_EQ(requests, 0);
}

TEST_F(WinsockControl, TellsOfACaller) {
  std::intptr_t caller = 0;
  socket().ConnectionRequest = [&](std::intptr_t request) { caller = request; };
  socket().Listen();
  wire().comeRequest(5);
  simulation.loop.DoEvents();
  EXPECT_EQ(caller, 5);
}

TEST_F(WinsockControl, TellsThatTheOtherSideHasClosed) {
  int closings = 0;
  socket().Closed = [&] { ++closings; };
  connect();
  wire().comeClosed();
  simulation.loop.DoEvents();
  EXPECT_EQ(closings, 1);
}

TEST_F(WinsockControl, TakesArrivalsOfALaterConnection) {
  connect();
  wire().comeData("lost");
  connect();
  wire().comeData("kept");
  simulation.loop.DoEvents();
  EXPECT_THAT(told, ElementsAre("kept"));
}

TEST_F(WinsockControl, SendsNothingForAnEmptyText) {
  socket().SendData("");
  EXPECT_EQ(wire().sent, "");
}

TEST_F(WinsockControl, SendsATextOverItsConnection) {
  connect();
  socket().SendData("hello");
  EXPECT_EQ(wire().sent, "hello");
}

TEST_F(WinsockControl, FailsToSendWithoutAConnection) {
  EXPECT_THROW(socket().SendData("hello"), StatementFailed);
}

TEST_F(WinsockControl, TellsNothingOnceItsWindowIsUnloaded) {
  connect();
  wire().comeData("late");
  const auto alive = window;
  window->unload();
  EXPECT_THROW(simulation.loop.DoEvents(), ProgramEnded);
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(WinsockControl, IsTakenAwayWithItsWindow) {
  connect();
  window->unload();
  window.reset();
  EXPECT_THAT(simulation.sockets.sockets, IsEmpty());
}

}  // namespace
}  // namespace veltrin
