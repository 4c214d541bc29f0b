// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/update_endpoint/caller_book.h"

#include <algorithm>
#include <deque>
#include <gtest/gtest.h>
#include <random>

namespace veltrin::endpoint {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kTimeout{1000};

Limits limitsOf(std::size_t mostCallers, std::size_t mostPerAddress) {
  return {mostCallers, mostPerAddress, kTimeout};
}

Moment at(int milliseconds) { return Moment(std::chrono::milliseconds(milliseconds)); }

Address address(const std::string& text) { return *Address::parse(text); }

TEST(CallerBook, OfNobodyIsEmpty) {
  const CallerBook book(limitsOf(1, 1));
  EXPECT_EQ(book.size(), 0U);
  EXPECT_FALSE(book.isFull());
  EXPECT_EQ(book.oldest(), std::nullopt);
  EXPECT_EQ(book.nextDue(), std::nullopt);
  EXPECT_EQ(book.overdue(at(1'000'000)), std::nullopt);
}

TEST(CallerBook, IsFullWithAsManyAsMayStand) {
  CallerBook book(limitsOf(2, 9));
  book.add(address("192.0.2.1"), at(0));
  EXPECT_FALSE(book.isFull());
  book.add(address("192.0.2.2"), at(0));
  EXPECT_TRUE(book.isFull());
}

TEST(CallerBook, HasRoomAgainWhenOneHasGone) {
  CallerBook book(limitsOf(1, 9));
  book.remove(book.add(address("192.0.2.1"), at(0)));
  EXPECT_FALSE(book.isFull());
}

TEST(CallerBook, HasRoomForSoManyOfOneAddress) {
  CallerBook book(limitsOf(9, 2));
  book.add(address("192.0.2.1"), at(0));
  EXPECT_TRUE(book.hasRoomFor(address("192.0.2.1")));
  book.add(address("192.0.2.1"), at(0));
  EXPECT_FALSE(book.hasRoomFor(address("192.0.2.1")));
}

TEST(CallerBook, CountsEveryAddressByItself) {
  CallerBook book(limitsOf(9, 1));
  book.add(address("192.0.2.1"), at(0));
  EXPECT_TRUE(book.hasRoomFor(address("192.0.2.2")));
}

TEST(CallerBook, CountsANetworkOfVersion6AsOneAddress) {
  CallerBook book(limitsOf(9, 1));
  book.add(address("2001:db8::1"), at(0));
  EXPECT_FALSE(book.hasRoomFor(address("2001:db8::2")));
  EXPECT_TRUE(book.hasRoomFor(address("2001:db8:0:1::1")));
}

TEST(CallerBook, ForgetsAnAddressWithItsLastCaller) {
  CallerBook book(limitsOf(9, 1));
  book.remove(book.add(address("192.0.2.1"), at(0)));
  EXPECT_TRUE(book.hasRoomFor(address("192.0.2.1")));
}

TEST(CallerBook, CallsNobodyOverdueBeforeTheTimeIsOver) {
  CallerBook book(limitsOf(9, 9));
  book.add(address("192.0.2.1"), at(5));
  EXPECT_EQ(book.overdue(at(1004)), std::nullopt);
}

TEST(CallerBook, CallsACallerOverdueWhenTheTimeIsOver) {
  CallerBook book(limitsOf(9, 9));
  const CallerId caller = book.add(address("192.0.2.1"), at(5));
  EXPECT_EQ(book.overdue(at(1005)), caller);
}

TEST(CallerBook, TellsWhenTheNextTimeIsOver) {
  CallerBook book(limitsOf(9, 9));
  const CallerId first = book.add(address("192.0.2.1"), at(5));
  book.add(address("192.0.2.1"), at(7));
  EXPECT_EQ(book.nextDue(), at(1005));
  book.remove(first);
  EXPECT_EQ(book.nextDue(), at(1007));
}

TEST(CallerBook, KeepsTheOrderWhenOneInTheMiddleGoes) {
  CallerBook book(limitsOf(9, 9));
  const CallerId first = book.add(address("192.0.2.1"), at(1));
  const CallerId second = book.add(address("192.0.2.1"), at(2));
  const CallerId third = book.add(address("192.0.2.1"), at(3));
  book.remove(second);
  EXPECT_EQ(book.oldest(), first);
  book.remove(first);
  EXPECT_EQ(book.oldest(), third);
}

TEST(CallerBook, PutsTheNextBehindTheOthersWhenTheLastHasGone) {
  CallerBook book(limitsOf(9, 9));
  const CallerId first = book.add(address("192.0.2.1"), at(1));
  book.remove(book.add(address("192.0.2.1"), at(2)));
  const CallerId third = book.add(address("192.0.2.1"), at(3));
  book.remove(first);
  EXPECT_EQ(book.oldest(), third);
}

TEST(CallerBook, NeverTakesANewCallerForOneWhoHasGone) {
  CallerBook book(limitsOf(1, 1));
  const CallerId gone = book.add(address("192.0.2.1"), at(0));
  book.remove(gone);
  const CallerId present = book.add(address("192.0.2.1"), at(0));
  EXPECT_EQ(present.slot, gone.slot);
  EXPECT_FALSE(book.holds(gone));
  EXPECT_TRUE(book.holds(present));
}

TEST(CallerBook, HoldsNobodyItNeverSaw) {
  const CallerBook book(limitsOf(1, 1));
  EXPECT_FALSE(book.holds({0, 0}));
}

TEST(CallerBook, UsesTheSlotsOfThoseWhoHaveGone) {
  CallerBook book(limitsOf(3, 9));
  for (int turn = 0; turn < 1000; ++turn) {
    const CallerId caller = book.add(address("192.0.2.1"), at(turn));
    ASSERT_EQ(caller.slot, 0U) << turn;
    book.remove(caller);
  }
}

TEST(CallerBook, StopsReadingACallerAtTheMostOnce) {
  CallerBook book(limitsOf(1, 1));
  const CallerId caller = book.add(address("192.0.2.1"), at(0));
  EXPECT_FALSE(book.drained(caller, 65535));
  EXPECT_TRUE(book.drained(caller, 1));
  EXPECT_FALSE(book.drained(caller, 1));
}

TEST(CallerBook, CountsTheBytesOfEveryCallerAnew) {
  CallerBook book(limitsOf(1, 1));
  const CallerId first = book.add(address("192.0.2.1"), at(0));
  EXPECT_FALSE(book.drained(first, 65535));
  book.remove(first);
  const CallerId second = book.add(address("192.0.2.1"), at(0));
  EXPECT_FALSE(book.drained(second, 65535));
}

TEST(CallerId, ComesBackFromItsNumber) {
  const CallerId id{0xFFFF'FFFE, 0x7FFF'FFFF};
  EXPECT_EQ(CallerId::unpacked(id.packed()), id);
}

TEST(CallerId, HasANumberWhoseHighestBitIsFree) {
  const CallerId id{0xFFFF'FFFF, 0x7FFF'FFFF};
  EXPECT_EQ(id.packed() >> 63, 0U);
}

// A book so simple that it cannot be wrong, beside the real one.
struct PlainCaller {
  CallerId id;
  Address address;
  Moment due;
};

TEST(CallerBook, AgreesWithAPlainListOverManyMixedSteps) {
  std::mt19937 random(1);
  const Limits limits = limitsOf(40, 7);
  CallerBook book(limits);
  std::deque<PlainCaller> plain;
  int clock = 0;
  for (int step = 0; step < 50'000; ++step) {
    clock += static_cast<int>(random() % 30);
    const Address caller = address("192.0.2." + std::to_string(random() % 9));
    const auto ofAddress = std::count_if(
        plain.begin(), plain.end(), [&](const PlainCaller& one) { return one.address == caller; });
    ASSERT_EQ(book.hasRoomFor(caller), ofAddress < 7);
    if (random() % 2 == 0 && !book.isFull() && book.hasRoomFor(caller)) {
      plain.push_back({book.add(caller, at(clock)), caller, at(clock) + kTimeout});
    } else if (random() % 2 == 0 && !plain.empty()) {
      const auto leaver = plain.begin() + static_cast<std::ptrdiff_t>(random() % plain.size());
      book.remove(leaver->id);
      ASSERT_FALSE(book.holds(leaver->id));
      plain.erase(leaver);
    }
    while (const auto overdue = book.overdue(at(clock))) {
      ASSERT_EQ(*overdue, plain.front().id);
      ASSERT_LE(plain.front().due, at(clock));
      book.remove(*overdue);
      plain.pop_front();
    }
    ASSERT_EQ(book.size(), plain.size());
    ASSERT_EQ(book.isFull(), plain.size() == 40);
    ASSERT_EQ(book.nextDue(), plain.empty() ? std::nullopt : std::optional(plain.front().due));
    for (const PlainCaller& one : plain) ASSERT_TRUE(book.holds(one.id));
  }
}

}  // namespace
}  // namespace veltrin::endpoint
