// SPDX-License-Identifier: GPL-3.0-or-later
// The selected lines of the list box.
#include <gmock/gmock.h>

#include "list_box.h"
#include "text/statement.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using ListBoxSelectionTest = ListBoxTest;

TEST_F(ListBoxSelectionTest, TheIndexOfAnEmptyListIsMinusOne) { EXPECT_EQ(list.ListIndex(), -1); }

TEST_F(ListBoxSelectionTest, TheIndexIsMinusOneWhenNoLineIsSelected) {
  fill({"a", "b"});
  EXPECT_EQ(list.ListIndex(), -1);
}

TEST_F(ListBoxSelectionTest, SettingTheIndexSelectsTheLineAndBringsItIntoView) {
  fill({"a", "b", "c"});
  list.setListIndex(1);
  EXPECT_EQ(list.ListIndex(), 1);
  EXPECT_THAT(selected(), ElementsAre("b"));
  EXPECT_THAT(screen.told, ElementsAre("selection", "visible 1"));
}

TEST_F(ListBoxSelectionTest, SettingTheIndexTakesTheSelectionFromOthers) {
  fill({"a", "b"});
  list.setListIndex(0);
  list.setListIndex(1);
  EXPECT_THAT(selected(), ElementsAre("b"));
}

TEST_F(ListBoxSelectionTest, AnIndexBehindTheEndIsTheLastLine) {
  fill({"a", "b"});
  list.setListIndex(2);
  EXPECT_EQ(list.ListIndex(), 1);
  list.setListIndex(0);
  list.setListIndex(2147483647);
  EXPECT_EQ(list.ListIndex(), 1);
  EXPECT_EQ(screen.told.back(), "visible 1");
}

TEST_F(ListBoxSelectionTest, AnIndexBelowZeroSelectsNone) {
  fill({"a", "b"});
  list.setListIndex(1);
  screen.told.clear();
  list.setListIndex(-1);
  EXPECT_EQ(list.ListIndex(), -1);
  EXPECT_THAT(selected(), IsEmpty());
  EXPECT_THAT(screen.told, ElementsAre("selection"));
}

TEST_F(ListBoxSelectionTest, AnIndexOfAnEmptyListSelectsNone) {
  list.setListIndex(0);
  EXPECT_EQ(list.ListIndex(), -1);
}

TEST_F(ListBoxSelectionTest, SelectedTellsOfOneLine) {
  fill({"a", "b"});
  list.setListIndex(1);
  EXPECT_FALSE(list.Selected(0));
  EXPECT_TRUE(list.Selected(1));
}

TEST_F(ListBoxSelectionTest, SelectedSelectsALineWithoutBringingItIntoView) {
  fill({"a", "b"});
  list.setSelected(1, true);
  EXPECT_EQ(list.ListIndex(), 1);
  EXPECT_THAT(screen.told, ElementsAre("selection"));
}

TEST_F(ListBoxSelectionTest, SelectedDeselectsALine) {
  fill({"a"});
  list.setListIndex(0);
  list.setSelected(0, false);
  EXPECT_EQ(list.ListIndex(), -1);
  EXPECT_THAT(selected(), IsEmpty());
}

TEST_F(ListBoxSelectionTest, DeselectingAnotherLineLeavesTheSelection) {
  fill({"a", "b"});
  list.setListIndex(0);
  list.setSelected(1, false);
  EXPECT_THAT(selected(), ElementsAre("a"));
  EXPECT_EQ(list.ListIndex(), 0);
}

TEST_F(ListBoxSelectionTest, SelectedFailsForALineThatIsNotThere) {
  fill({"a"});
  list.setListIndex(0);
  EXPECT_THROW(list.Selected(-1), StatementFailed);
  EXPECT_THROW(list.Selected(1), StatementFailed);
  EXPECT_THROW(list.setSelected(-1, true), StatementFailed);
  EXPECT_THROW(list.setSelected(1, true), StatementFailed);
  EXPECT_THAT(selected(), ElementsAre("a"));
}

TEST_F(ListBoxSelectionTest, ALineMayBeAddedSelected) {
  fill({"a"});
  list.setListIndex(0);
  list.AddItem("b", 0, -1, false, false, false, true);
  EXPECT_EQ(list.ListIndex(), 1);
  EXPECT_THAT(selected(), ElementsAre("b"));
}

TEST_F(ListBoxSelectionTest, TheTextIsThatOfTheSelectedLine) {
  fill({"a", "b"});
  list.setListIndex(1);
  EXPECT_EQ(list.Text(), "b");
}

TEST_F(ListBoxSelectionTest, TheTextIsEmptyWithoutASelectedLine) {
  fill({"a"});
  EXPECT_EQ(list.Text(), "");
}

TEST_F(ListBoxSelectionTest, SettingTheTextChangesTheSelectedLine) {
  fill({"a", "b"});
  list.setListIndex(1);
  list.setText("new");
  EXPECT_THAT(texts(), ElementsAre("a", "new"));
  EXPECT_EQ(list.Text(), "new");
}

TEST_F(ListBoxSelectionTest, SettingTheTextWithoutASelectedLineDoesNothing) {
  fill({"a"});
  list.setText("new");
  EXPECT_THAT(texts(), ElementsAre("a"));
}

TEST_F(ListBoxSelectionTest, GoesWithTheLineThatIsRemoved) {
  fill({"a", "b"});
  list.setListIndex(1);
  list.RemoveItem(1);
  EXPECT_EQ(list.ListIndex(), -1);
}

TEST_F(ListBoxSelectionTest, StaysOnItsLineWhenOneBeforeItIsRemoved) {
  fill({"a", "b", "c"});
  list.setListIndex(1);
  list.RemoveItem(2);
  EXPECT_EQ(list.ListIndex(), 1);
  list.RemoveItem(0);
  EXPECT_EQ(list.ListIndex(), 0);
  EXPECT_THAT(selected(), ElementsAre("b"));
}

TEST_F(ListBoxSelectionTest, GoesWithAClearedList) {
  fill({"a"});
  list.setListIndex(0);
  list.Clear();
  EXPECT_EQ(list.ListIndex(), -1);
  EXPECT_EQ(list.Text(), "");
}

class ListBoxMultiSelectTest : public ListBoxTest {
 protected:
  ListBoxMultiSelectTest() { list.MultiSelect = true; }
};

TEST_F(ListBoxMultiSelectTest, SeveralLinesMayBeSelected) {
  fill({"a", "b", "c"});
  list.setSelected(0, true);
  list.setSelected(2, true);
  EXPECT_THAT(selected(), ElementsAre("a", "c"));
}

TEST_F(ListBoxMultiSelectTest, TheIndexIsThatOfTheLineThatWasSelectedLast) {
  fill({"a", "b", "c"});
  list.setSelected(2, true);
  list.setSelected(0, true);
  EXPECT_EQ(list.ListIndex(), 0);
  EXPECT_EQ(list.Text(), "a");
}

TEST_F(ListBoxMultiSelectTest, TheIndexGoesToTheFirstSelectedLineWhenTheLastOneIsDeselected) {
  fill({"a", "b", "c", "d"});
  for (const std::int32_t index : {2, 1, 3}) list.setSelected(index, true);
  list.setSelected(3, false);
  EXPECT_EQ(list.ListIndex(), 1);
  EXPECT_EQ(list.Text(), "b");
}

TEST_F(ListBoxMultiSelectTest, TheIndexGoesToTheFirstSelectedLineWhenTheLastOneIsRemoved) {
  fill({"a", "b", "c"});
  list.setSelected(2, true);
  list.setSelected(0, true);
  list.RemoveItem(0);
  EXPECT_EQ(list.ListIndex(), 1);
  EXPECT_EQ(list.Text(), "c");
}

TEST_F(ListBoxMultiSelectTest, TheIndexIsMinusOneWhenAllAreDeselected) {
  fill({"a", "b"});
  list.setSelected(0, true);
  list.setSelected(1, true);
  list.setSelected(0, false);
  list.setSelected(1, false);
  EXPECT_EQ(list.ListIndex(), -1);
}

TEST_F(ListBoxMultiSelectTest, SettingTheIndexSelectsThatLineAlone) {
  fill({"a", "b", "c"});
  list.setSelected(0, true);
  list.setSelected(1, true);
  list.setListIndex(2);
  EXPECT_THAT(selected(), ElementsAre("c"));
}

TEST_F(ListBoxMultiSelectTest, WithoutItTheNextSelectionIsTheOnlyOne) {
  fill({"a", "b", "c"});
  list.setSelected(0, true);
  list.setSelected(1, true);
  list.MultiSelect = false;
  list.setSelected(2, true);
  EXPECT_THAT(selected(), ElementsAre("c"));
}

}  // namespace
}  // namespace veltrin
