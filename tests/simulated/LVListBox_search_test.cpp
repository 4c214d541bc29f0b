// SPDX-License-Identifier: GPL-3.0-or-later
// Finding lines of the list box by their texts.
#include <gmock/gmock.h>

#include "list_box.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr bool kMatchCase = true;
constexpr bool kAnyCase = false;
constexpr bool kExact = true;
constexpr bool kContained = false;

using ListBoxSearchTest = ListBoxTest;

TEST_F(ListBoxSearchTest, FindsALowerCaseTextInsideAnUpperCaseOne) {
  fill({"other", "SOUND CARD"});
  EXPECT_EQ(list.FindItem("card", 0, kAnyCase, kContained), 1);
}

TEST_F(ListBoxSearchTest, ByDefaultFindsAPartInAnyCaseFromTheFirstLineOn) {
  fill({"SOUND CARD", "card"});
  EXPECT_EQ(list.FindItem("Card"), 0);
  EXPECT_THAT(selected(), IsEmpty());
}

TEST_F(ListBoxSearchTest, WithMatchedCasePassesOverOtherCases) {
  fill({"Card", "a card"});
  EXPECT_EQ(list.FindItem("card", 0, kMatchCase, kContained), 1);
  EXPECT_EQ(list.FindItem("CARD", 0, kMatchCase, kContained), -1);
}

TEST_F(ListBoxSearchTest, ExactPassesOverTextsThatHoldMore) {
  fill({"a card", "card 2", "CARD"});
  EXPECT_EQ(list.FindItem("card", 0, kAnyCase, kExact), 2);
}

TEST_F(ListBoxSearchTest, ExactWithMatchedCaseTakesTheVeryText) {
  fill({"CARD", "card ", "card"});
  EXPECT_EQ(list.FindItem("card", 0, kMatchCase, kExact), 2);
}

TEST_F(ListBoxSearchTest, ExactFindsAnEmptyLine) {
  fill({"a", ""});
  EXPECT_EQ(list.FindItem("", 0, kAnyCase, kExact), 1);
}

TEST_F(ListBoxSearchTest, GivesMinusOneWhenNoLineMatches) {
  fill({"a", "b"});
  EXPECT_EQ(list.FindItem("c"), -1);
  EXPECT_EQ(list.FindItem("ab"), -1);
}

TEST_F(ListBoxSearchTest, GivesMinusOneInAnEmptyList) { EXPECT_EQ(list.FindItem(""), -1); }

TEST_F(ListBoxSearchTest, BeginsWithTheLineOfItsStart) {
  fill({"a", "a", "a"});
  EXPECT_EQ(list.FindItem("a", 0), 0);
  EXPECT_EQ(list.FindItem("a", 1), 1);
  EXPECT_EQ(list.FindItem("a", 2), 2);
}

TEST_F(ListBoxSearchTest, DoesNotGoBackToLinesBeforeItsStart) {
  fill({"a", "b", "b"});
  EXPECT_EQ(list.FindItem("a", 1), -1);
}

TEST_F(ListBoxSearchTest, AStartThatIsNoLineIsTheFirst) {
  fill({"a", "a"});
  for (const std::int32_t start : {-1, -32768, 2, 65534, 65535, 65536, 2147483647}) {
    EXPECT_EQ(list.FindItem("a", start), 0) << start;
  }
}

TEST_F(ListBoxSearchTest, AStartAboveSixteenBitsIsTheFirstAlsoOfALongList) {
  for (int count = 0; count < 65540; ++count) list.AddItem("a");
  EXPECT_EQ(list.FindItem("a", 65534), 65534);
  EXPECT_EQ(list.FindItem("a", 65535), 0);
  EXPECT_EQ(list.FindItem("a", 65536), 0);
  EXPECT_EQ(list.FindItem("a"), 0);
}

TEST_F(ListBoxSearchTest, SelectsTheLineThatWasFound) {
  fill({"a", "b"});
  list.setListIndex(0);
  screen.told.clear();
  EXPECT_EQ(list.FindItem("b", 0, kAnyCase, kContained, true), 1);
  EXPECT_EQ(list.ListIndex(), 1);
  EXPECT_THAT(selected(), ElementsAre("b"));
  EXPECT_THAT(screen.told, ElementsAre("selection"));
}

TEST_F(ListBoxSearchTest, LeavesTheSelectionWhenItFindsNothing) {
  fill({"a", "b"});
  list.setListIndex(0);
  EXPECT_EQ(list.FindItem("c", 0, kAnyCase, kContained, true), -1);
  EXPECT_EQ(list.ListIndex(), 0);
}

TEST_F(ListBoxSearchTest, LeavesTheSelectionWhenItIsNotToSelect) {
  fill({"a", "b"});
  list.setListIndex(0);
  EXPECT_EQ(list.FindItem("b"), 1);
  EXPECT_EQ(list.ListIndex(), 0);
}

TEST_F(ListBoxSearchTest, FoldsAsciiLettersAlone) {
  fill({"\xC3\x84RGER", "\xC3\xA4rger"});  // a capital and a small a with dots
  EXPECT_EQ(list.FindItem("\xC3\xA4RGER", 0, kAnyCase, kExact), 1);
}

TEST_F(ListBoxSearchTest, FindsNoPartOfACharacter) {
  fill({"\xC3\x84", "\x84"});
  EXPECT_EQ(list.FindItem("\x84", 0, kMatchCase, kContained), 1);
}

}  // namespace
}  // namespace veltrin
