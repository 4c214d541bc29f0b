// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/route_options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_network.h"

namespace veltrin {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

using Arguments = std::vector<std::string>;

TracertSettings tracert(const Arguments& arguments) {
  const TracertCommand command = readTracertCommand(arguments);
  EXPECT_EQ(command.problem, "");
  EXPECT_FALSE(command.usage);
  return command.settings;
}

PathpingSettings pathping(const Arguments& arguments) {
  const PathpingCommand command = readPathpingCommand(arguments);
  EXPECT_EQ(command.problem, "");
  EXPECT_FALSE(command.usage);
  return command.settings;
}

std::string tracertProblem(const Arguments& arguments) {
  return readTracertCommand(arguments).problem;
}

TEST(TracertCommandLine, OfADestinationAloneHasTheUsualSettings) {
  const TracertSettings settings = tracert({"host"});
  EXPECT_EQ(settings.destination, "host");
  EXPECT_TRUE(settings.resolveNames);
  EXPECT_EQ(settings.hops, 30);
  EXPECT_THAT(settings.through, IsEmpty());
  EXPECT_FALSE(settings.timeout);
  EXPECT_FALSE(settings.source);
  EXPECT_EQ(settings.family, FamilyChoice::Any);
}

TEST(TracertCommandLine, TakesItsOptionsInEitherCase) {
  EXPECT_FALSE(tracert({"-d", "host"}).resolveNames);
  EXPECT_FALSE(tracert({"/D", "host"}).resolveNames);
  EXPECT_EQ(tracert({"-h", "255", "host"}).hops, 255);
  EXPECT_EQ(tracert({"-w", "0", "host"}).timeout, 0U);
  EXPECT_EQ(tracert({"-S", "192.0.2.1", "host"}).source, addressOf("192.0.2.1"));
  EXPECT_EQ(tracert({"-4", "host"}).family, FamilyChoice::IPv4);
  EXPECT_EQ(tracert({"-6", "host"}).family, FamilyChoice::IPv6);
}

TEST(TracertCommandLine, TakesHostsOnTheWayUpToTheDestination) {
  const TracertSettings settings = tracert({"-j", "a", "b", "host"});
  EXPECT_THAT(settings.through, ElementsAre("a", "b"));
  EXPECT_EQ(settings.destination, "host");
  EXPECT_EQ(settings.family, FamilyChoice::IPv4);
}

TEST(TracertCommandLine, TakesHostsOnTheWayUpToTheNextOption) {
  const TracertSettings settings = tracert({"host", "-j", "a", "b", "-d"});
  EXPECT_THAT(settings.through, ElementsAre("a", "b"));
  EXPECT_EQ(settings.destination, "host");
}

TEST(TracertCommandLine, TakesHostsOnTheWayBetweenCommas) {
  EXPECT_THAT(tracert({"-j", "a,b,,c", "host"}).through, ElementsAre("a", "b", "c"));
}

TEST(TracertCommandLine, TellsItsMistakes) {
  EXPECT_EQ(tracertProblem({"-d"}), "A target name or address must be specified.");
  EXPECT_EQ(tracertProblem({"a", "b"}), "Bad parameter b.");
  EXPECT_EQ(tracertProblem({"-z", "a"}), "Bad option -z.");
  EXPECT_EQ(tracertProblem({"-h", "0", "a"}),
            "Bad value for option -h, valid range is from 1 to 255.");
  EXPECT_EQ(tracertProblem({"-w", "x", "a"}),
            "Bad value for option -w, valid range is from 0 to 4294967295.");
  EXPECT_EQ(tracertProblem({"a", "-w"}), "Value must be supplied for option -w.");
  EXPECT_EQ(tracertProblem({"a", "-j"}), "Value must be supplied for option -j.");
  EXPECT_EQ(tracertProblem({"-j", "1,2,3,4,5,6,7,8,9,10", "a"}),
            "A packet has room for 9 hosts on its way.");
  EXPECT_EQ(tracertProblem({"-6", "-j", "a", "b"}), "Option -j is only supported for IPv4.");
  EXPECT_EQ(tracertProblem({"-S", "here", "a"}),
            "Bad value for option -S, here is not an IP address.");
  EXPECT_EQ(tracertProblem({"-4", "-6", "a"}), "Options -4 and -6 exclude each other.");
  EXPECT_EQ(tracertProblem({"-R", "a"}),
            "Option -R is not supported: the routing header that it needs is withdrawn "
            "(RFC 5095).");
}

TEST(TracertCommandLine, OfNothingAsksForTheUsage) {
  const TracertCommand command = readTracertCommand({});
  EXPECT_TRUE(command.usage);
  EXPECT_FALSE(command.help);
}

TEST(TracertCommandLine, MayAskForTheUsageBesideAnythingElse) {
  const TracertCommand command = readTracertCommand({"-h", "5", "-?", "-z"});
  EXPECT_TRUE(command.help);
  EXPECT_EQ(command.problem, "");
}

TEST(PathpingCommandLine, OfADestinationAloneHasTheUsualSettings) {
  const PathpingSettings settings = pathping({"host"});
  EXPECT_EQ(settings.queries, 100U);
  EXPECT_EQ(settings.period, 250U);
  EXPECT_EQ(settings.hops, 30);
  EXPECT_FALSE(settings.timeout);
  EXPECT_FALSE(settings.sideBySide);
  EXPECT_FALSE(settings.reservations);
  EXPECT_FALSE(settings.reservingHops);
  EXPECT_FALSE(settings.priorities);
}

TEST(PathpingCommandLine, TakesItsOptions) {
  EXPECT_THAT(pathping({"-g", "a", "b", "host"}).through, ElementsAre("a", "b"));
  EXPECT_EQ(pathping({"-h", "9", "host"}).hops, 9);
  EXPECT_EQ(pathping({"-i", "192.0.2.1", "host"}).source, addressOf("192.0.2.1"));
  EXPECT_FALSE(pathping({"-n", "host"}).resolveNames);
  EXPECT_EQ(pathping({"-q", "20", "host"}).queries, 20U);
  EXPECT_EQ(pathping({"-w", "500", "host"}).timeout, 500U);
  EXPECT_TRUE(pathping({"-b", "host"}).sideBySide);
  EXPECT_TRUE(pathping({"-R", "host"}).reservingHops);
  EXPECT_TRUE(pathping({"-T", "host"}).priorities);
}

TEST(PathpingCommandLine, TellsItsTwoPsApart) {
  EXPECT_EQ(pathping({"-p", "100", "host"}).period, 100U);
  EXPECT_TRUE(pathping({"-P", "host"}).reservations);
}

TEST(PathpingCommandLine, TellsItsMistakes) {
  EXPECT_EQ(readPathpingCommand({"-q", "0", "a"}).problem,
            "Bad value for option -q, valid range is from 1 to 65535.");
  EXPECT_EQ(readPathpingCommand({"-p", "0", "a"}).problem,
            "Bad value for option -p, valid range is from 1 to 3600000.");
  EXPECT_EQ(readPathpingCommand({"-i", "here", "a"}).problem,
            "Bad value for option -i, here is not an IP address.");
}

TEST(RouteUsage, NamesEveryOption) {
  for (const char* option : {"-d", "-h", "-j", "-w", "-R", "-S", "-4", "-6", "-?"}) {
    EXPECT_THAT(std::string(tracertUsage()), HasSubstr(std::string("    ") + option + " "));
  }
  for (const char* option :
       {"-g", "-h", "-i", "-n", "-p", "-q", "-w", "-P", "-R", "-T", "-4", "-6", "-b", "-?"}) {
    EXPECT_THAT(std::string(pathpingUsage()), HasSubstr(std::string("    ") + option + " "));
  }
}

TEST(RouteUsage, SaysWhatIsNotDone) {
  EXPECT_THAT(std::string(tracertUsage()), HasSubstr("    -R                 Not done here: "));
  EXPECT_THAT(
      std::string(pathpingUsage()),
      AllOf(HasSubstr("    -P                 RSVP PATH connectivity: taken, but not tested"),
            HasSubstr("    -R                 RSVP awareness: taken, but not tested")));
}

TEST(RouteUsage, SaysHowLongAReplyIsWaitedFor) {
  const std::string waits =
      " ms for a hop as long as\r\n"
      "                       neither it nor one behind it has answered. Then it is\r\n"
      "                       three times its longest round trip and 400 ms; for a\r\n"
      "                       hop that never has, ten times that of the nearest\r\n"
      "                       behind it that has, but 500 ms at least.\r\n";
  EXPECT_THAT(std::string(tracertUsage()), HasSubstr("the wait is 4000" + waits));
  EXPECT_THAT(std::string(pathpingUsage()), HasSubstr("the wait is 3000" + waits));
}

}  // namespace
}  // namespace veltrin
