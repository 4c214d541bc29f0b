// SPDX-License-Identifier: GPL-3.0-or-later
// An echo without a console tool: what it asks of the system, and in which order.
#include <cstdint>

#include "ping/ping_values.h"
#include "ping/pingmod.h"
#include "support/simulation.h"

namespace veltrin {
namespace {

using testing::ElementsAre;

class EchoTest : public testing::Test {
 protected:
  // Sends an echo and returns the number that its address became.
  std::int32_t addressOf(const std::string& text) {
    Ping(simulation.program(), text, reply);
    return static_cast<std::int32_t>(simulation.icmp.echoes.back().address);
  }

  void expectMessage(int style, const std::string& text) {
    ASSERT_EQ(simulation.desktop.messages.size(), 1U);
    EXPECT_EQ(simulation.desktop.messages[0].style, style);
    EXPECT_EQ(simulation.desktop.messages[0].text, text);
    EXPECT_EQ(simulation.desktop.messages[0].title, "Veltrin");
  }

  std::int32_t failStatus() { return simulation.program().shared<PingValues>().PingFailStatus; }

  Simulation simulation;
  ICMP_ECHO_REPLY reply;
};

TEST_F(EchoTest, StartsAndEndsTheSocketLayerAroundItself) {
  simulation.program();
  simulation.keepJournal();
  Ping(simulation.program(), "192.0.2.7", reply);
  EXPECT_THAT(simulation.journal, ElementsAre("WSAStartup 257", "IcmpCreateFile", "IcmpSendEcho 1",
                                              "IcmpCloseHandle 1", "WSACleanup"));
}

TEST_F(EchoTest, SendsThirtyCharactersAndWaitsFor200Milliseconds) {
  Ping(simulation.program(), "192.0.2.7", reply);
  const auto& echo = simulation.icmp.echoes.at(0);
  EXPECT_EQ(echo.data, "PING!PING!PING!PING!PING!PING!");
  EXPECT_EQ(echo.replySize, 278U);
  EXPECT_EQ(echo.timeout, 200U);
}

TEST_F(EchoTest, TheFirstNumberOfAnAddressIsItsLowestByte) {
  EXPECT_EQ(addressOf("10.1.2.3"), 0x0302010A);
}

TEST_F(EchoTest, AFourthNumberFrom128UpMakesANegativeNumber) {
  EXPECT_EQ(addressOf("1.2.3.127"), 0x7F030201);
  EXPECT_EQ(addressOf("1.2.3.128"), static_cast<std::int32_t>(0x80030201U));
  EXPECT_LT(addressOf("1.2.3.255"), 0);
}

TEST_F(EchoTest, AHostNameIsTheAddressZero) {
  EXPECT_EQ(addressOf("www.example.org"), 0);
  EXPECT_EQ(addressOf("www.shop.example.org"), 0);
  EXPECT_EQ(addressOf("be.ad.de.ef"), 0);
}

TEST_F(EchoTest, OnlyFourPartsMakeAnAddress) {
  EXPECT_EQ(addressOf(""), 0);
  EXPECT_EQ(addressOf("10"), 0);
  EXPECT_EQ(addressOf("10.1.2"), 0);
  EXPECT_EQ(addressOf("10.1.2.3.4"), 0);
  EXPECT_EQ(addressOf("10.1.2.3."), 0);
  EXPECT_EQ(addressOf("10..2.3"), 0);
}

TEST_F(EchoTest, OnlyTheLowestByteOfANumberCounts) {
  EXPECT_EQ(addressOf("266.1.2.3"), 0x0302010A);
}

TEST_F(EchoTest, LeavesTheReplyInTheCallersRecord) {
  simulation.icmp.reply = [](const auto&) { return 42U; };
  Ping(simulation.program(), "192.0.2.7", reply);
  EXPECT_EQ(reply.RoundTripTime, 42U);
  EXPECT_EQ(reply.Status, 0U);
  EXPECT_EQ(reply.Data, "PING!PING!PING!PING!PING!PING!");
}

TEST_F(EchoTest, RemembersTheStatusOfAFailureBelowZeroOverASuccess) {
  simulation.icmp.reply = [](const auto&) { return std::nullopt; };
  Ping(simulation.program(), "192.0.2.7", reply);
  EXPECT_EQ(failStatus(), -11010);
  EXPECT_GT(reply.RoundTripTime, 697U);
  simulation.icmp.reply = {};
  Ping(simulation.program(), "192.0.2.7", reply);
  EXPECT_EQ(failStatus(), -11010);
}

TEST_F(EchoTest, TwoInARowAreIndependent) {
  simulation.program();
  simulation.keepJournal();
  Ping(simulation.program(), "192.0.2.7", reply);
  Ping(simulation.program(), "192.0.2.8", reply);
  EXPECT_THAT(simulation.journal,
              ElementsAre("WSAStartup 257", "IcmpCreateFile", "IcmpSendEcho 1", "IcmpCloseHandle 1",
                          "WSACleanup", "WSAStartup 257", "IcmpCreateFile", "IcmpSendEcho 2",
                          "IcmpCloseHandle 2", "WSACleanup"));
}

TEST_F(EchoTest, RunsNoRoutineWhileItWaits) {
  simulation.icmp.reply = [](const auto&) { return std::nullopt; };
  simulation.program();
  bool ran = false;
  simulation.loop.at(50, [&] { ran = true; });
  Ping(simulation.program(), "192.0.2.7", reply);
  EXPECT_EQ(simulation.loop.milliseconds(), 200);
  EXPECT_FALSE(ran);
}

// --- A socket layer that does not work ---

TEST_F(EchoTest, TellsOfASocketLayerThatDoesNotStartAndTriesItsEchoAllTheSame) {
  simulation.icmp.startupResult = 10091;
  Ping(simulation.program(), "192.0.2.7", reply);
  expectMessage(kMessageOk,
                "Windows Sockets for 32 bit Windows environments is not successfully responding.");
  EXPECT_EQ(simulation.icmp.echoes.size(), 1U);
}

TEST_F(EchoTest, TellsOfAVersionBelowOne) {
  simulation.icmp.startupData.wVersion = 0x0900;
  Ping(simulation.program(), "192.0.2.7", reply);
  expectMessage(
      kMessageWarning,
      "Windows Sockets Version 0.9 is not supported by Windows Sockets for 32 bit Windows "
      "environments.");
}

TEST_F(EchoTest, TellsOfTheVersionOnePointZero) {
  simulation.icmp.startupData.wVersion = 0x0001;
  Ping(simulation.program(), "192.0.2.7", reply);
  expectMessage(
      kMessageWarning,
      "Windows Sockets Version 1.0 is not supported by Windows Sockets for 32 bit Windows "
      "environments.");
}

TEST_F(EchoTest, TakesAVersionAboveOneWhateverItsSecondNumber) {
  simulation.icmp.startupData.wVersion = 0x0002;
  Ping(simulation.program(), "192.0.2.7", reply);
  EXPECT_TRUE(simulation.desktop.messages.empty());
}

TEST_F(EchoTest, TellsOfASystemWithoutSockets) {
  simulation.icmp.startupData.iMaxSockets = 0;
  Ping(simulation.program(), "192.0.2.7", reply);
  expectMessage(kMessageWarning, "This application requires a minimum of 1 supported sockets.");
}

TEST_F(EchoTest, OneSocketIsEnough) {
  simulation.icmp.startupData.iMaxSockets = 1;
  Ping(simulation.program(), "192.0.2.7", reply);
  EXPECT_TRUE(simulation.desktop.messages.empty());
}

TEST_F(EchoTest, TellsOfASocketLayerThatDoesNotEnd) {
  simulation.icmp.cleanupResult = 10093;
  Ping(simulation.program(), "192.0.2.7", reply);
  expectMessage(kMessageWarning, "Windows Sockets error 10093 occurred in Cleanup.");
}

TEST_F(EchoTest, TellsSoWithEveryEcho) {
  simulation.icmp.startupResult = 10091;
  Ping(simulation.program(), "192.0.2.7", reply);
  Ping(simulation.program(), "192.0.2.7", reply);
  EXPECT_EQ(simulation.desktop.messages.size(), 2U);
}

}  // namespace
}  // namespace veltrin
