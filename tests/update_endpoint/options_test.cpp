// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/update_endpoint/options.h"

#include <gmock/gmock.h>

namespace veltrin::endpoint {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Words = std::vector<std::string>;

std::vector<std::string> textsOf(const std::vector<Address>& addresses) {
  std::vector<std::string> texts;
  texts.reserve(addresses.size());
  for (const Address& address : addresses) texts.push_back(address.text());
  return texts;
}

TEST(Options, WithAVersionOnlyAreTheUsualOnes) {
  const Options options = readOptions({"1.03"});
  EXPECT_EQ(options.mistake, "");
  EXPECT_EQ(options.version, "1.03");
  EXPECT_THAT(options.ports, ElementsAre(31112, 31113));
  EXPECT_THAT(options.addresses, IsEmpty());
  EXPECT_FALSE(options.choosesSockets);
  EXPECT_EQ(options.limits.mostCallers, 10'000U);
  EXPECT_EQ(options.limits.mostPerAddress, 64U);
  EXPECT_EQ(options.limits.timeout, std::chrono::seconds(10));
}

TEST(Options, TakeEveryChoice) {
  const Options options =
      readOptions({"--ports", "1,65535", "--listen", "192.0.2.1,::1", "--most-callers", "5",
                   "--most-per-address", "6", "--timeout", "700", "2.00"});
  EXPECT_EQ(options.mistake, "");
  EXPECT_THAT(options.ports, ElementsAre(1, 65535));
  EXPECT_THAT(textsOf(options.addresses), ElementsAre("192.0.2.1", "::1"));
  EXPECT_EQ(options.limits.mostCallers, 5U);
  EXPECT_EQ(options.limits.mostPerAddress, 6U);
  EXPECT_EQ(options.limits.timeout, std::chrono::milliseconds(700));
  EXPECT_EQ(options.version, "2.00");
}

TEST(Options, MayStandBehindTheVersion) {
  const Options options = readOptions({"1.03", "--timeout", "100"});
  EXPECT_EQ(options.mistake, "");
  EXPECT_EQ(options.limits.timeout, std::chrono::milliseconds(100));
}

TEST(Options, MayHaveTheirValueBehindAnEqualsSign) {
  const Options options = readOptions({"--most-callers=7", "1.03"});
  EXPECT_EQ(options.mistake, "");
  EXPECT_EQ(options.limits.mostCallers, 7U);
}

TEST(Options, LetPort0StandSeveralTimes) {
  const Options options = readOptions({"--ports", "0,0", "1.03"});
  EXPECT_EQ(options.mistake, "");
  EXPECT_THAT(options.ports, ElementsAre(0, 0));
}

TEST(Options, KnowThatSocketsWereChosen) {
  EXPECT_TRUE(readOptions({"--ports", "0", "1.03"}).choosesSockets);
  EXPECT_TRUE(readOptions({"--listen", "::", "1.03"}).choosesSockets);
}

TEST(Options, TakeTheEdgesOfTheirRanges) {
  for (const Words& words :
       {Words{"--most-callers", "1"}, Words{"--most-callers", "1000000"},
        Words{"--most-per-address", "1"}, Words{"--most-per-address", "1000000"},
        Words{"--timeout", "100"}, Words{"--timeout", "600000"}}) {
    EXPECT_EQ(readOptions({words[0], words[1], "1.03"}).mistake, "") << words[0] << words[1];
  }
}

TEST(Options, ShowTheHelpWhateverElseThereIs) {
  for (const Words& words : {Words{"-?"}, Words{"--help"}, Words{"1.03", "-?"}}) {
    const Options options = readOptions(words);
    EXPECT_TRUE(options.help) << words[0];
    EXPECT_EQ(options.mistake, "") << words[0];
  }
}

struct Mistake {
  Words words;
  const char* sentence;
};

class BadOptions : public ::testing::TestWithParam<Mistake> {};

TEST_P(BadOptions, AreToldInASentence) {
  EXPECT_EQ(readOptions(GetParam().words).mistake, GetParam().sentence);
}

std::string listOf(std::size_t count, const std::string& start) {
  std::string list;
  for (std::size_t at = 1; at <= count; ++at) {
    list += (at == 1 ? "" : ",") + start + std::to_string(at);
  }
  return list;
}

INSTANTIATE_TEST_SUITE_P(
    Mistakes, BadOptions,
    ::testing::Values(
        Mistake{{}, "The version that callers are told is missing."},
        Mistake{{"--ports", "0"}, "The version that callers are told is missing."},
        Mistake{{"1.3"}, "\"1.3\" is no version: digit, point, two digits, as in 1.03."},
        Mistake{{""}, "\"\" is no version: digit, point, two digits, as in 1.03."},
        Mistake{{"1.03", "1.04"}, "There is one version too many: 1.04."},
        Mistake{{"--port", "1", "1.03"}, "There is no option --port."},
        Mistake{{"-p", "1.03"}, "There is no option -p."},
        Mistake{{"1.03", "--port=1"}, "There is no option --port."},
        Mistake{{"1.03", "--ports"}, "The value of --ports is missing."},
        Mistake{{"--ports", "", "1.03"}, "\"\" in --ports is no port: a number from 0 to 65535."},
        Mistake{{"--ports=31112,", "1.03"},
                "\"\" in --ports is no port: a number from 0 to 65535."},
        Mistake{{"--ports", "65536", "1.03"},
                "\"65536\" in --ports is no port: a number from 0 to 65535."},
        Mistake{{"--ports", "-1", "1.03"},
                "\"-1\" in --ports is no port: a number from 0 to 65535."},
        Mistake{{"--ports", "80x", "1.03"},
                "\"80x\" in --ports is no port: a number from 0 to 65535."},
        Mistake{{"--ports", "5,6,5", "1.03"}, "The port 5 is named twice."},
        Mistake{{"--ports", listOf(65, ""), "1.03"}, "There are more than 64 ports."},
        Mistake{{"--listen", "localhost", "1.03"}, "\"localhost\" in --listen is no IP address."},
        Mistake{{"--listen", "::1,0:0::1", "1.03"}, "The address 0:0::1 is named twice."},
        Mistake{{"--listen", listOf(65, "192.0.2."), "1.03"}, "There are more than 64 addresses."},
        Mistake{{"--most-callers", "0", "1.03"},
                "The value of --most-callers is to be a number from 1 to 1000000, not \"0\"."},
        Mistake{{"--most-callers", "1000001", "1.03"},
                "The value of --most-callers is to be a number from 1 to 1000000, not "
                "\"1000001\"."},
        Mistake{{"--most-per-address", "many", "1.03"},
                "The value of --most-per-address is to be a number from 1 to 1000000, not "
                "\"many\"."},
        Mistake{{"--timeout", "99", "1.03"},
                "The value of --timeout is to be a number from 100 to 600000, not \"99\"."},
        Mistake{{"--timeout", "600001", "1.03"},
                "The value of --timeout is to be a number from 100 to 600000, not \"600001\"."},
        Mistake{{"--timeout", "1e3", "1.03"},
                "The value of --timeout is to be a number from 100 to 600000, not \"1e3\"."},
        Mistake{{"--timeout", "99999999999999999999999", "1.03"},
                "The value of --timeout is to be a number from 100 to 600000, not "
                "\"99999999999999999999999\"."}));

TEST(BadOptions, TellTheFirstMistakeOnly) {
  EXPECT_EQ(readOptions({"--nonsense", "--timeout", "0"}).mistake,
            "There is no option --nonsense.");
}

}  // namespace
}  // namespace veltrin::endpoint
