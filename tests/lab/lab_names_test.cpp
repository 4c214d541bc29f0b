// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "lab/names.h"
#include "lab_packets.h"

namespace veltrin::lab {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint8_t kA = 1;
constexpr std::uint8_t kPtr = 12;
constexpr std::uint8_t kMx = 15;
constexpr std::uint8_t kAaaa = 28;
constexpr std::uint8_t kAny = 255;

class LabNames : public testing::Test {
 protected:
  LabNames() {
    const std::vector both{addressOf("203.0.113.80"), addressOf("2001:db8:0:80::1")};
    names_.add("Far.example", both);
  }

  Packet ask(std::string_view name, std::uint8_t type) {
    return names_.answer(makeQuestion(name, type));
  }

  // The outcome code in an answer's header.
  static int outcome(const Packet& answer) { return answer.at(3) & 0x0F; }

  static std::size_t records(const Packet& answer) { return numberAt(answer, 6); }

  Names names_;
};

TEST_F(LabNames, AnswersWithTheIpv4AddressInFull) {
  EXPECT_THAT(ask("far.example", kA),
              ElementsAre(0xAB, 0xCD, 0x85, 0x80, 0, 1, 0, 1, 0, 0, 0, 0,           // header
                          3, 'f', 'a', 'r', 7, 'e', 'x', 'a', 'm', 'p', 'l', 'e',   // question
                          0, 0, 1, 0, 1,                                            //
                          0xC0, 12, 0, 1, 0, 1, 0, 0, 0, 60, 0, 4, 203, 0, 113, 80  // record
                          ));
}

TEST_F(LabNames, AnswersWithTheIpv6Address) {
  const Packet answer = ask("far.example", kAaaa);
  EXPECT_EQ(records(answer), 1U);
  EXPECT_THAT(tail(answer, 18),
              ElementsAre(0, 16, 0x20, 0x01, 0x0D, 0xB8, 0, 0, 0, 0x80, 0, 0, 0, 0, 0, 0, 0, 1));
}

TEST_F(LabNames, AnswersWithEverythingWhenAskedForAny) {
  EXPECT_EQ(records(ask("far.example", kAny)), 2U);
}

TEST_F(LabNames, DoesNotMindTheCaseOfLetters) { EXPECT_EQ(records(ask("fAR.EXample", kA)), 1U); }

TEST_F(LabNames, AnswersWithTheNameOfAnAddressAsItWasWritten) {
  const Packet answer = ask("80.113.0.203.in-addr.arpa", kPtr);
  EXPECT_EQ(records(answer), 1U);
  EXPECT_THAT(tail(answer, 15),
              ElementsAre(0, 13, 3, 'F', 'a', 'r', 7, 'e', 'x', 'a', 'm', 'p', 'l', 'e', 0));
}

TEST_F(LabNames, SaysThatAnUnknownNameDoesNotExist) {
  const Packet answer = ask("nowhere.example", kA);
  EXPECT_EQ(outcome(answer), 3);
  EXPECT_EQ(records(answer), 0U);
}

TEST_F(LabNames, SaysThatAnUnknownAddressHasNoName) {
  EXPECT_EQ(outcome(ask("81.113.0.203.in-addr.arpa", kPtr)), 3);
}

TEST_F(LabNames, AnswersEmptyWhenAKnownNameHasNoSuchRecord) {
  const Packet answer = ask("far.example", kMx);
  EXPECT_EQ(outcome(answer), 0);
  EXPECT_EQ(records(answer), 0U);
}

TEST_F(LabNames, LeavesOutTheAdditionalRecordsOfAQuestion) {
  Packet query = makeQuestion("far.example", kA);
  query[11] = 1;
  query.insert(query.end(), {0, 0, 41, 0x10, 0, 0, 0, 0, 0, 0, 0});
  EXPECT_EQ(numberAt(names_.answer(query), 10), 0U);
}

TEST_F(LabNames, SaysNothingToABrokenHeaderOrAnAnswer) {
  EXPECT_THAT(names_.answer(Packet(11)), IsEmpty());
  Packet answer = makeQuestion("far.example", kA);
  answer[2] |= 0x80;
  EXPECT_THAT(names_.answer(answer), IsEmpty());
}

TEST_F(LabNames, RefusesEveryQuestionThatIsCutShort) {
  const Packet query = makeQuestion("far.example", kA);
  for (std::size_t length = 12; length < query.size(); ++length) {
    EXPECT_EQ(outcome(names_.answer(Bytes(query).first(length))), 1) << length;
  }
}

TEST_F(LabNames, RefusesPointersInTheQuestion) {
  Packet query = makeQuestion("", kA);
  query.insert(query.begin() + 12, {0xC0, 12});
  EXPECT_EQ(outcome(names_.answer(query)), 1);
}

TEST_F(LabNames, RefusesNamesThatAreTooLong) {
  std::string name = "a";
  while (name.size() < 260) name += ".a";
  EXPECT_EQ(outcome(ask(name, kA)), 1);
}

TEST_F(LabNames, RefusesMoreThanOneQuestion) {
  Packet query = makeQuestion("far.example", kA);
  query[5] = 2;
  EXPECT_EQ(outcome(names_.answer(query)), 1);
}

TEST_F(LabNames, DoesNotDoUpdates) {
  Packet query = makeQuestion("far.example", kA);
  query[2] = 0x28;
  EXPECT_EQ(outcome(names_.answer(query)), 4);
}

TEST_F(LabNames, RefusesOtherClassesThanTheInternet) {
  Packet query = makeQuestion("far.example", kA);
  query.back() = 3;
  EXPECT_EQ(outcome(names_.answer(query)), 5);
}

// Names of the Internet outside lead to the hosts that were added for it.
class LabPublicNames : public LabNames {
 protected:
  LabPublicNames() {
    for (const char* host : {"203.0.113.1", "203.0.113.2", "203.0.113.3"}) {
      names_.addPublicHost(std::vector{addressOf(host)});
    }
  }

  // The last byte of the address of a name.
  int hostOf(std::string_view name) { return ask(name, kA).back(); }
};

TEST_F(LabPublicNames, LeadToTheHostsInTurn) {
  std::vector<int> hosts;
  for (const char* name : {"www.one.com", "two.org", "www.three.net", "four.de"}) {
    hosts.push_back(hostOf(name));
  }
  EXPECT_THAT(hosts, ElementsAre(1, 2, 3, 1));
}

TEST_F(LabPublicNames, KeepTheirHost) {
  EXPECT_EQ(hostOf("www.one.com"), 1);
  EXPECT_EQ(hostOf("two.org"), 2);
  EXPECT_EQ(hostOf("WWW.ONE.com"), 1);
}

TEST_F(LabPublicNames, LeadNowhereWithoutAHostForThem) {
  Names none;
  EXPECT_EQ(outcome(none.answer(makeQuestion("www.one.com", kA))), 3);
}

TEST_F(LabPublicNames, HaveAnEmptyAnswerForAnAddressThatTheirHostHasNot) {
  const Packet answer = ask("www.one.com", kAaaa);
  EXPECT_EQ(outcome(answer), 0);
  EXPECT_EQ(records(answer), 0U);
}

TEST_F(LabPublicNames, ThatBeginWithIpv4HaveNoOtherAddressOfTheirHost) {
  Names names;
  names.addPublicHost(std::vector{addressOf("203.0.113.1"), addressOf("2001:db8::1")});
  const auto recordsOf = [&](std::string_view name, std::uint16_t type) {
    return records(names.answer(makeQuestion(name, type)));
  };
  EXPECT_EQ(recordsOf("ipv4.one.com", kA), 1U);
  EXPECT_EQ(recordsOf("ipv4.one.com", kAaaa), 0U);
  EXPECT_EQ(recordsOf("ipv4only.one.com", kAaaa), 1U);
  EXPECT_EQ(recordsOf("www.ipv4.com", kAaaa), 1U);
}

TEST_F(LabPublicNames, ThatBeginWithIpv4KeepTheAddressOfAHostThatHasNoOther) {
  Names names;
  names.addPublicHost(std::vector{addressOf("2001:db8::1")});
  EXPECT_EQ(records(names.answer(makeQuestion("ipv4.one.com", kAaaa))), 1U);
}

TEST_F(LabPublicNames, DoNotTakeTheNameOfAnAddress) {
  names_.add("first.example", std::vector{addressOf("203.0.113.1")});
  hostOf("www.one.com");
  EXPECT_THAT(tail(ask("1.113.0.203.in-addr.arpa", kPtr), 15),
              ElementsAre(5, 'f', 'i', 'r', 's', 't', 7, 'e', 'x', 'a', 'm', 'p', 'l', 'e', 0));
}

TEST_F(LabPublicNames, AreNoneThatAreSetAsideOrHaveNoDot) {
  for (const char* name : {"nowhere.example", "a.b.test", "nosuch.invalid", "printer.local",
                           "www.localhost", "9.113.0.203.in-addr.arpa", "com", "router", ""}) {
    EXPECT_EQ(outcome(ask(name, kA)), 3) << name;
  }
}

TEST_F(LabPublicNames, AreLimitedInTheirNumber) {
  for (std::size_t number = 0; number < Names::kMostPublicNames; ++number) {
    ask(std::to_string(number) + ".com", kA);
  }
  EXPECT_EQ(outcome(ask("0.com", kA)), 0);
  EXPECT_EQ(outcome(ask("one-more.com", kA)), 3);
}

}  // namespace
}  // namespace veltrin::lab
