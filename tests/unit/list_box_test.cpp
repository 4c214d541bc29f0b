// SPDX-License-Identifier: GPL-3.0-or-later
// Items of a list box that are looked for and taken away.
#include "forms/list_box.h"

#include <gtest/gtest.h>

namespace veltrin {
namespace {

TEST(ListBox, FindsTheFirstItemThatIsAText) {
  ListBox list;
  for (const char* item : {"C1", "D2", "D2"}) list.add(item);
  EXPECT_EQ(list.find("D2"), std::size_t{1});
}

TEST(ListBox, FindsATextInAnotherCase) {
  ListBox list;
  list.add("c");
  EXPECT_EQ(list.find("C"), std::size_t{0});
}

TEST(ListBox, DoesNotFindAPartOfAnItem) {
  ListBox list;
  list.add("C1");
  EXPECT_FALSE(list.find("C"));
  EXPECT_FALSE(list.find(""));
}

TEST(ListBox, TakesAnItemAwayAndTellsItsObserver) {
  ListBox list;
  for (const char* item : {"1", "2", "3"}) list.add(item);
  int changes = 0;
  list.observe([&] { ++changes; });
  list.remove(1);
  EXPECT_EQ(list.count(), 2U);
  EXPECT_EQ(list.item(0), "1");
  EXPECT_EQ(list.item(1), "3");
  EXPECT_EQ(changes, 1);
}

}  // namespace
}  // namespace veltrin
