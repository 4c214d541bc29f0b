// SPDX-License-Identifier: GPL-3.0-or-later
// The real server, and callers who do what they should.
#include <csignal>
#include <gtest/gtest.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>

#include "running_endpoint.h"
#include "tools/update_endpoint/listeners.h"

namespace veltrin::endpoint {
namespace {

// Whether this machine has the IPv6 loopback address.
bool hasLoopback6() {
  try {
    openListeners({*Address::parse("::1")}, {0});
    return true;
  } catch (const CannotServe&) {
    return false;
  }
}

struct LinkAddress {
  std::string text;
  unsigned int interface = 0;
};

// An address of this machine that holds on one link only; an empty text for none.
LinkAddress linkAddress() {
  LinkAddress found;
  ifaddrs* all = nullptr;
  if (getifaddrs(&all) != 0) return found;
  for (const ifaddrs* one = all; one != nullptr; one = one->ifa_next) {
    if (one->ifa_addr == nullptr || one->ifa_addr->sa_family != AF_INET6) continue;
    const auto* const address = reinterpret_cast<const sockaddr_in6*>(one->ifa_addr);
    if (!IN6_IS_ADDR_LINKLOCAL(&address->sin6_addr)) continue;
    const std::span bytes(address->sin6_addr.s6_addr);
    found = {Address(bytes).text(), if_nametoindex(one->ifa_name)};
  }
  freeifaddrs(all);
  return found;
}

TEST(EndpointAnswer, OnTheFirstPortIsTheVersionAndTheAddress) {
  RunningEndpoint endpoint({"--listen", "127.0.0.1", "--ports", "0,0", "1.03"});
  EXPECT_EQ(Caller(endpoint.places(2)[0]).listen().text, "1.03127.0.0.1");
}

TEST(EndpointAnswer, OnTheSecondPortIsTheSame) {
  RunningEndpoint endpoint({"--listen", "127.0.0.1", "--ports", "0,0", "1.03"});
  EXPECT_EQ(Caller(endpoint.places(2)[1]).listen().text, "1.03127.0.0.1");
}

TEST(EndpointAnswer, OverIpv6OnTheFirstPortIsTheVersionAndTheAddress) {
  if (!hasLoopback6()) GTEST_SKIP() << "this machine has no ::1";
  RunningEndpoint endpoint({"--listen", "::1", "--ports", "0,0", "1.03"});
  EXPECT_EQ(Caller(endpoint.places(2)[0]).listen().text, "1.03::1");
}

TEST(EndpointAnswer, OverIpv6OnTheSecondPortIsTheSame) {
  if (!hasLoopback6()) GTEST_SKIP() << "this machine has no ::1";
  RunningEndpoint endpoint({"--listen", "::1", "--ports", "0,0", "1.03"});
  EXPECT_EQ(Caller(endpoint.places(2)[1]).listen().text, "1.03::1");
}

TEST(EndpointAnswer, ToIpv4ThroughASocketForBothVersionsIsDotted) {
  if (!hasLoopback6()) GTEST_SKIP() << "this machine has no ::1";
  RunningEndpoint endpoint({"--listen", "::", "--ports", "0", "1.03"});
  EXPECT_EQ(Caller({"127.0.0.1", endpoint.place().port}).listen().text, "1.03127.0.0.1");
}

TEST(EndpointAnswer, ToIpv6ThroughASocketForBothVersionsIsIpv6) {
  if (!hasLoopback6()) GTEST_SKIP() << "this machine has no ::1";
  RunningEndpoint endpoint({"--listen", "::", "--ports", "0", "1.03"});
  EXPECT_EQ(Caller({"::1", endpoint.place().port}).listen().text, "1.03::1");
}

TEST(EndpointAnswer, ComesOnAllAddressesWhenNoneIsNamed) {
  RunningEndpoint endpoint({"--ports", "0", "1.03"});
  EXPECT_EQ(Caller({"127.0.0.9", endpoint.place().port}, "127.0.0.8").listen().text,
            "1.03127.0.0.8");
}

TEST(EndpointAnswer, ComesOnEveryAddressThatIsNamed) {
  RunningEndpoint endpoint({"--listen", "127.0.0.1,127.0.0.2", "--ports", "0", "1.03"});
  const std::vector<Place> places = endpoint.places(2);
  EXPECT_EQ(Caller(places[0]).listen().text, "1.03127.0.0.1");
  EXPECT_EQ(Caller(places[1], "127.0.0.1").listen().text, "1.03127.0.0.1");
}

TEST(EndpointAnswer, TakesEachVersionOnItsOwnSocketWhenBothAreNamed) {
  if (!hasLoopback6()) GTEST_SKIP() << "this machine has no ::1";
  const std::uint16_t port = [] {
    RunningEndpoint lender({"--listen", "::", "--ports", "0", "1.03"});
    return lender.place().port;
  }();
  RunningEndpoint endpoint({"--listen", "0.0.0.0,::", "--ports", std::to_string(port), "1.03"});
  endpoint.places(2);
  EXPECT_EQ(Caller({"127.0.0.1", port}).listen().text, "1.03127.0.0.1");
  EXPECT_EQ(Caller({"::1", port}).listen().text, "1.03::1");
}

TEST(EndpointAnswer, TellsTheCallersOwnAddress) {
  RunningEndpoint endpoint(onLoopback());
  EXPECT_EQ(Caller(endpoint.place(), "127.34.56.78").listen().text, "1.03127.34.56.78");
}

TEST(EndpointAnswer, TellsNoScope) {
  const LinkAddress link = linkAddress();
  if (link.text.empty()) GTEST_SKIP() << "this machine has no address of a link";
  RunningEndpoint endpoint({"--listen", "::", "--ports", "0", "1.03"});
  Caller caller({link.text, endpoint.place().port}, link.interface);
  EXPECT_EQ(caller.listen().text, "1.03" + link.text);
}

TEST(EndpointAnswer, TellsTheVersionOfTheCommandLine) {
  RunningEndpoint endpoint({"--listen", "127.0.0.1", "--ports", "0", "2.10"});
  EXPECT_EQ(Caller(endpoint.place()).listen().text, "2.10127.0.0.1");
}

TEST(EndpointAnswer, ComesInOneArrival) {
  RunningEndpoint endpoint(onLoopback());
  EXPECT_EQ(Caller(endpoint.place()).listen().first, "1.03127.0.0.1");
}

TEST(EndpointAnswer, ComesInOnePacket) {
  RunningEndpoint endpoint(onLoopback());
  Caller caller(endpoint.place());
  EXPECT_EQ(caller.listen().text, "1.03127.0.0.1");
  EXPECT_EQ(caller.packetsHeard(), 1U);
}

TEST(EndpointAnswer, ComesToACallerWhoSaysNothing) {
  RunningEndpoint endpoint(onLoopback({"--timeout", "600000"}));
  Caller caller(endpoint.place());
  EXPECT_EQ(caller.listen().ending, Ending::Closed);
}

TEST(EndpointAnswer, IsNotLostByACallerWhoSpoke) {
  RunningEndpoint endpoint(onLoopback({"--timeout", "600000"}));
  Caller caller(endpoint.place());
  caller.send(1000);
  caller.finish();
  endpoint.waitForCallers(0);
  const Heard heard = caller.listen();
  EXPECT_EQ(heard.text, "1.03127.0.0.1");
  EXPECT_EQ(heard.ending, Ending::Closed);
}

TEST(EndpointAnswer, IsNotLostByACallerWhoSpokeBeforeTheServerLooked) {
  RunningEndpoint endpoint(onLoopback({"--timeout", "600000"}));
  const Place place = endpoint.place();
  endpoint.freeze();
  Caller caller(place);
  caller.send(3000);
  caller.finish();
  endpoint.thaw();
  const Heard heard = caller.listen();
  EXPECT_EQ(heard.text, "1.03127.0.0.1");
  EXPECT_EQ(heard.ending, Ending::Closed);
}

TEST(EndpointAnswer, LeavesNothingOpenWhenTheCallerCloses) {
  RunningEndpoint endpoint(onLoopback({"--timeout", "600000"}));
  Caller caller(endpoint.place());
  caller.listen();
  endpoint.waitForCallers(1);
  caller.hangUp();
  endpoint.waitForCallers(0);
}

TEST(EndpointAnswer, ComesAgainToACallerWhoComesAgain) {
  RunningEndpoint endpoint(onLoopback({"--timeout", "600000"}));
  const Place place = endpoint.place();
  for (int turn = 0; turn < 200; ++turn) {
    ASSERT_EQ(Caller(place).listen().text, "1.03127.0.0.1") << turn;
  }
}

TEST(EndpointAnswer, IsNotedDownNowhere) {
  RunningEndpoint endpoint(onLoopback());
  const Place place = endpoint.place();
  Caller(place, "127.0.0.77").listen();
  endpoint.send(SIGTERM);
  EXPECT_EQ(endpoint.restOfOutput(), "");
  EXPECT_EQ(endpoint.errors(), "");
}

}  // namespace
}  // namespace veltrin::endpoint
