// SPDX-License-Identifier: GPL-3.0-or-later
// The program as a whole: its command line, its words, its ends.
#include <csignal>
#include <gmock/gmock.h>

#include "running_endpoint.h"
#include "tools/update_endpoint/listeners.h"
#include "tools/update_endpoint/options.h"

namespace veltrin::endpoint {
namespace {

using ::testing::MatchesRegex;
using ::testing::StartsWith;

TEST(EndpointProgram, PrintsEveryPlaceOnALineWhenItListens) {
  RunningEndpoint endpoint({"--listen", "127.0.0.1,127.0.0.2", "--ports", "0,0", "1.03"});
  const std::vector<Place> places = endpoint.places(4);
  std::vector<std::string> addresses;
  for (const Place& place : places) {
    addresses.push_back(place.address);
    EXPECT_NE(place.port, 0);
  }
  EXPECT_THAT(addresses,
              ::testing::ElementsAre("127.0.0.1", "127.0.0.1", "127.0.0.2", "127.0.0.2"));
}

TEST(EndpointProgram, PrintsAnAddressAndAPort) {
  RunningEndpoint endpoint(onLoopback());
  EXPECT_THAT(endpoint.line(), MatchesRegex("127\\.0\\.0\\.1:[0-9]+"));
}

TEST(EndpointProgram, EndsBySigterm) {
  RunningEndpoint endpoint(onLoopback());
  endpoint.place();
  endpoint.send(SIGTERM);
  EXPECT_EQ(endpoint.exitCode(), 0);
}

TEST(EndpointProgram, EndsBySigint) {
  RunningEndpoint endpoint(onLoopback());
  endpoint.place();
  endpoint.send(SIGINT);
  EXPECT_EQ(endpoint.exitCode(), 0);
}

TEST(EndpointProgram, EndsWhileCallersStand) {
  RunningEndpoint endpoint(onLoopback({"--timeout", "600000"}));
  Caller caller(endpoint.place());
  endpoint.waitForCallers(1);
  endpoint.send(SIGTERM);
  EXPECT_EQ(endpoint.exitCode(), 0);
  EXPECT_EQ(caller.listen().text, "1.03127.0.0.1");
}

TEST(EndpointProgram, AnswersWhoWaitsBeforeItEnds) {
  RunningEndpoint endpoint({"--listen", "127.0.0.1", "--ports", "0,0", "--timeout", "600000",
                            "--most-per-address", "400", "1.03"});
  const std::vector<Place> places = endpoint.places(2);
  endpoint.freeze();
  std::vector<Caller> callers;
  for (std::size_t at = 0; at < 400; ++at) callers.emplace_back(places[at % 2]);
  endpoint.send(SIGTERM);
  endpoint.thaw();
  for (Caller& caller : callers) EXPECT_EQ(caller.listen().text, "1.03127.0.0.1");
  EXPECT_EQ(endpoint.exitCode(), 0);
}

TEST(EndpointProgram, FreesItsPortsForTheNextAtOnce) {
  std::uint16_t port = 0;
  {
    RunningEndpoint endpoint(onLoopback());
    const Place place = endpoint.place();
    port = place.port;
    Caller(place).listen();
    endpoint.send(SIGTERM);
    EXPECT_EQ(endpoint.exitCode(), 0);
  }
  RunningEndpoint next({"--listen", "127.0.0.1", "--ports", std::to_string(port), "1.04"});
  EXPECT_EQ(Caller(next.place()).listen().text, "1.04127.0.0.1");
}

TEST(EndpointProgram, SaysThatAPortIsTaken) {
  const std::vector<Listener> holder = openListeners({*Address::parse("127.0.0.1")}, {0});
  const std::string name = nameOf(holder[0]);
  const std::string port = name.substr(name.find(':') + 1);
  RunningEndpoint endpoint({"--listen", "127.0.0.1", "--ports", port, "1.03"});
  EXPECT_EQ(endpoint.errors(),
            "update_endpoint: Cannot listen on " + name + ": Address already in use.\n");
  EXPECT_EQ(endpoint.exitCode(), 1);
}

TEST(EndpointProgram, SaysThatAnAddressIsNotItsMachines) {
  RunningEndpoint endpoint({"--listen", "203.0.113.1", "--ports", "0", "1.03"});
  EXPECT_EQ(endpoint.errors(),
            "update_endpoint: Cannot listen on 203.0.113.1:0: Cannot assign requested "
            "address.\n");
  EXPECT_EQ(endpoint.exitCode(), 1);
}

TEST(EndpointProgram, SaysWhatIsWrongWithItsCommandLine) {
  RunningEndpoint endpoint({"1.3"});
  EXPECT_EQ(endpoint.errors(),
            "update_endpoint: \"1.3\" is no version: digit, point, two digits, as in 1.03.\n"
            "\"update_endpoint --help\" tells what it understands.\n");
  EXPECT_EQ(endpoint.restOfOutput(), "");
  EXPECT_EQ(endpoint.exitCode(), 2);
}

TEST(EndpointProgram, ShowsItsHelp) {
  for (const char* word : {"-?", "--help"}) {
    RunningEndpoint endpoint({word});
    EXPECT_EQ(endpoint.restOfOutput(), usage());
    EXPECT_EQ(endpoint.errors(), "");
    EXPECT_EQ(endpoint.exitCode(), 0);
  }
}

TEST(EndpointProgram, TellsAllItsOptionsInItsHelp) {
  for (const char* option : {"--ports", "--listen", "--most-callers", "--most-per-address",
                             "--timeout", "-?", "--help"}) {
    EXPECT_THAT(usage(), ::testing::HasSubstr(option));
  }
  EXPECT_THAT(usage(), StartsWith("Usage: update_endpoint [OPTIONS] VERSION\n"));
}

}  // namespace
}  // namespace veltrin::endpoint
