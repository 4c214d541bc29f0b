// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/ping_options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_network.h"

namespace veltrin {
namespace {

using ::testing::HasSubstr;

using Arguments = std::vector<std::string>;

PingSettings settingsOf(const Arguments& arguments) {
  const PingCommand command = readPingCommand(arguments);
  EXPECT_EQ(command.problem, "");
  EXPECT_FALSE(command.usage);
  return command.settings;
}

std::string problemOf(const Arguments& arguments) { return readPingCommand(arguments).problem; }

TEST(PingCommand, OfADestinationAloneHasTheUsualSettings) {
  const PingSettings settings = settingsOf({"host"});
  EXPECT_EQ(settings.destination, "host");
  EXPECT_FALSE(settings.untilStopped);
  EXPECT_FALSE(settings.resolveNames);
  EXPECT_EQ(settings.count, 4U);
  EXPECT_EQ(settings.size, 32U);
  EXPECT_FALSE(settings.dontFragment);
  EXPECT_EQ(settings.ttl, 0);
  EXPECT_EQ(settings.tos, 0);
  EXPECT_EQ(settings.routeSlots, 0);
  EXPECT_EQ(settings.stampSlots, 0);
  EXPECT_EQ(settings.timeout, 4000U);
  EXPECT_FALSE(settings.source);
  EXPECT_EQ(settings.family, FamilyChoice::Any);
}

TEST(PingCommand, TakesTheSwitches) {
  EXPECT_TRUE(settingsOf({"-t", "host"}).untilStopped);
  EXPECT_TRUE(settingsOf({"-a", "host"}).resolveNames);
  EXPECT_TRUE(settingsOf({"-f", "host"}).dontFragment);
}

TEST(PingCommand, TakesTheValuesOfItsOptions) {
  EXPECT_EQ(settingsOf({"-n", "10", "host"}).count, 10U);
  EXPECT_EQ(settingsOf({"-l", "1472", "host"}).size, 1472U);
  EXPECT_EQ(settingsOf({"-i", "64", "host"}).ttl, 64);
  EXPECT_EQ(settingsOf({"-v", "16", "host"}).tos, 16);
  EXPECT_EQ(settingsOf({"-r", "9", "host"}).routeSlots, 9);
  EXPECT_EQ(settingsOf({"-s", "4", "host"}).stampSlots, 4);
  EXPECT_EQ(settingsOf({"-w", "250", "host"}).timeout, 250U);
}

TEST(PingCommand, TakesOptionsBehindTheDestination) {
  const PingSettings settings = settingsOf({"host", "-n", "1", "-l", "64"});
  EXPECT_EQ(settings.destination, "host");
  EXPECT_EQ(settings.count, 1U);
  EXPECT_EQ(settings.size, 64U);
}

TEST(PingCommand, TakesASlashForAHyphen) { EXPECT_EQ(settingsOf({"/n", "2", "host"}).count, 2U); }

TEST(PingCommand, TakesLettersOfEitherCase) {
  const PingSettings settings =
      settingsOf({"-T", "-A", "-N", "3", "-L", "5", "-F", "-I", "7", "-V", "8", "-W", "9", "host"});
  EXPECT_TRUE(settings.untilStopped);
  EXPECT_TRUE(settings.resolveNames);
  EXPECT_TRUE(settings.dontFragment);
  EXPECT_EQ(settings.count, 3U);
  EXPECT_EQ(settings.size, 5U);
  EXPECT_EQ(settings.ttl, 7);
  EXPECT_EQ(settings.tos, 8);
  EXPECT_EQ(settings.timeout, 9U);
}

TEST(PingCommand, TellsTheSourceAddressFromTheTimes) {
  const PingSettings settings = settingsOf({"-S", "192.0.2.20", "-s", "1", "host"});
  EXPECT_EQ(settings.source, addressOf("192.0.2.20"));
  EXPECT_EQ(settings.stampSlots, 1);
}

TEST(PingCommand, ChoosesAFamily) {
  EXPECT_EQ(settingsOf({"-4", "host"}).family, FamilyChoice::IPv4);
  EXPECT_EQ(settingsOf({"-6", "host"}).family, FamilyChoice::IPv6);
}

TEST(PingCommand, ChoosesTheFamilyOfTheSource) {
  EXPECT_EQ(settingsOf({"-S", "2001:db8::2", "host"}).family, FamilyChoice::IPv6);
}

TEST(PingCommand, ChoosesIpv4ForAnOptionThatOnlyIpv4Has) {
  EXPECT_EQ(settingsOf({"-f", "host"}).family, FamilyChoice::IPv4);
}

TEST(PingCommand, TakesTheEndsOfEachRange) {
  EXPECT_EQ(settingsOf({"-n", "1", "host"}).count, 1U);
  EXPECT_EQ(settingsOf({"-n", "4294967295", "host"}).count, 4294967295U);
  EXPECT_EQ(settingsOf({"-l", "0", "host"}).size, 0U);
  EXPECT_EQ(settingsOf({"-l", "65500", "host"}).size, 65500U);
  EXPECT_EQ(settingsOf({"-w", "0", "host"}).timeout, 0U);
  EXPECT_EQ(settingsOf({"-i", "255", "host"}).ttl, 255);
}

struct BadValue {
  const char* option;
  const char* value;
  const char* sentence;
};

class PingBadValue : public ::testing::TestWithParam<BadValue> {};

TEST_P(PingBadValue, NamesTheOptionAndItsRange) {
  EXPECT_EQ(problemOf({GetParam().option, GetParam().value, "host"}), GetParam().sentence);
}

INSTANTIATE_TEST_SUITE_P(
    Options, PingBadValue,
    ::testing::Values(
        BadValue{"-n", "0", "Bad value for option -n, valid range is from 1 to 4294967295."},
        BadValue{"-n", "4294967296",
                 "Bad value for option -n, valid range is from 1 to 4294967295."},
        BadValue{"-n", "-1", "Bad value for option -n, valid range is from 1 to 4294967295."},
        BadValue{"-n", "", "Bad value for option -n, valid range is from 1 to 4294967295."},
        BadValue{"-n", "3x", "Bad value for option -n, valid range is from 1 to 4294967295."},
        BadValue{"-n", "99999999999999999999",
                 "Bad value for option -n, valid range is from 1 to 4294967295."},
        BadValue{"-l", "65501", "Bad value for option -l, valid range is from 0 to 65500."},
        BadValue{"-i", "0", "Bad value for option -i, valid range is from 1 to 255."},
        BadValue{"-i", "256", "Bad value for option -i, valid range is from 1 to 255."},
        BadValue{"-v", "256", "Bad value for option -v, valid range is from 0 to 255."},
        BadValue{"-r", "0", "Bad value for option -r, valid range is from 1 to 9."},
        BadValue{"-r", "10", "Bad value for option -r, valid range is from 1 to 9."},
        BadValue{"-s", "0", "Bad value for option -s, valid range is from 1 to 4."},
        BadValue{"-s", "5", "Bad value for option -s, valid range is from 1 to 4."},
        BadValue{"-w", "4294967296",
                 "Bad value for option -w, valid range is from 0 to 4294967295."},
        BadValue{"-S", "host", "Bad value for option -S, host is not an IP address."}));

TEST(PingCommand, MissesAValueBehindTheLastOption) {
  EXPECT_EQ(problemOf({"host", "-n"}), "Value must be supplied for option -n.");
}

TEST(PingCommand, PrintsTheUsageBehindAnUnknownOption) {
  const PingCommand command = readPingCommand({"-z", "host"});
  EXPECT_EQ(command.problem, "Bad option -z.");
  EXPECT_TRUE(command.usage);
}

TEST(PingCommand, KnowsNoOptionOfTwoLettersOrNone) {
  EXPECT_EQ(problemOf({"-n1", "host"}), "Bad option -n1.");
  EXPECT_EQ(problemOf({"-", "host"}), "Bad option -.");
  EXPECT_EQ(problemOf({"/count", "host"}), "Bad option /count.");
}

TEST(PingCommand, TellsTheFirstMistakeOnly) {
  EXPECT_EQ(problemOf({"-z", "-n", "0", "host"}), "Bad option -z.");
}

TEST(PingCommand, NeedsADestination) {
  const PingCommand command = readPingCommand({"-f", "-n", "2", "-l", "1472"});
  EXPECT_EQ(command.problem, "IP address must be specified.");
  EXPECT_FALSE(command.usage);
}

TEST(PingCommand, TakesAnEmptyArgumentForNoDestination) {
  EXPECT_EQ(problemOf({"-n", "2", ""}), "IP address must be specified.");
}

TEST(PingCommand, WithoutAnyArgumentAddsTheUsage) {
  const PingCommand command = readPingCommand({});
  EXPECT_EQ(command.problem, "IP address must be specified.");
  EXPECT_TRUE(command.usage);
}

TEST(PingCommand, TakesOneDestinationOnly) {
  EXPECT_EQ(problemOf({"host", "other"}), "Bad parameter other.");
}

TEST(PingCommand, AskedForHelpGivesTheUsageAlone) {
  for (const char* help : {"-?", "/?"}) {
    const PingCommand command = readPingCommand({"host", help, "-z"});
    EXPECT_EQ(command.problem, "");
    EXPECT_TRUE(command.usage);
  }
}

TEST(PingCommand, SaysThatTheReverseRouteIsNotSupported) {
  EXPECT_EQ(problemOf({"-R", "2001:db8::7"}),
            "Option -R is not supported: the routing header that it needs is withdrawn (RFC "
            "5095).");
}

TEST(PingCommand, RefusesBothFamiliesAtOnce) {
  EXPECT_EQ(problemOf({"-4", "-6", "host"}), "Options -4 and -6 exclude each other.");
}

TEST(PingCommand, RefusesAnIpv4OptionForIpv6) {
  EXPECT_EQ(problemOf({"-6", "-f", "host"}), "Option -f is only supported for IPv4.");
  EXPECT_EQ(problemOf({"-v", "1", "::1"}), "Option -v is only supported for IPv4.");
  EXPECT_EQ(problemOf({"/r", "1", "::1"}), "Option /r is only supported for IPv4.");
  EXPECT_EQ(problemOf({"-s", "1", "-S", "::1", "host"}), "Option -s is only supported for IPv4.");
}

TEST(PingCommand, RefusesASourceOfTheOtherFamily) {
  EXPECT_EQ(problemOf({"-6", "-S", "192.0.2.20", "host"}),
            "The source address is not of the chosen IP version.");
}

TEST(PingCommand, RefusesMoreHopsThanAPacketHolds) {
  EXPECT_EQ(problemOf({"-r", "9", "-s", "1", "host"}),
            "Options -r and -s together ask for more hops than a packet has room for.");
  EXPECT_EQ(problemOf({"-r", "1", "-s", "3", "host"}), "");
}

TEST(PingUsage, NamesEveryOption) {
  for (const char* option :
       {"-t", "-a", "-n count", "-l size", "-f", "-i TTL", "-v TOS", "-r count", "-s count",
        "-w timeout", "-R", "-S srcaddr", "-4", "-6"}) {
    EXPECT_THAT(std::string(pingUsage()), HasSubstr("[" + std::string(option) + "]"));
    EXPECT_THAT(std::string(pingUsage()), HasSubstr("\r\n    " + std::string(option) + " "));
  }
}

}  // namespace
}  // namespace veltrin
