// SPDX-License-Identifier: GPL-3.0-or-later
// Lines of the list box: adding, reading, changing and removing them.
#include <gmock/gmock.h>

#include "list_box.h"
#include "text/statement.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using ListBoxLinesTest = ListBoxTest;

TEST_F(ListBoxLinesTest, ANewListHasNone) { EXPECT_EQ(list.ListCount(), 0); }

TEST_F(ListBoxLinesTest, EachIsAddedAtTheEnd) {
  list.AddItem("b");
  list.AddItem("a");
  EXPECT_EQ(list.ListCount(), 2);
  EXPECT_THAT(texts(), ElementsAre("b", "a"));
  EXPECT_THAT(screen.told, ElementsAre("inserted 0", "inserted 1"));
}

TEST_F(ListBoxLinesTest, ATextAloneHasTheDefaultsElsewhere) {
  list.AddItem("text");
  EXPECT_EQ(line(0).SmallIcon, 0);
  EXPECT_EQ(line(0).ForeColor, 0x80000008);
  EXPECT_FALSE(line(0).Bold);
  EXPECT_FALSE(line(0).Checked);
  EXPECT_FALSE(line(0).Ghosted);
  EXPECT_FALSE(line(0).Selected);
  EXPECT_EQ(line(0).Tag, "");
  EXPECT_EQ(line(0).Key, "");
}

TEST_F(ListBoxLinesTest, EachArgumentHasItsPlace) {
  list.AddItem("text", 7, 0x123456, true, false, false, false, "tag", "key");
  EXPECT_EQ(line(0).Text, "text");
  EXPECT_EQ(line(0).SmallIcon, 7);
  EXPECT_EQ(line(0).ForeColor, 0x123456);
  EXPECT_EQ(line(0).Tag, "tag");
  EXPECT_EQ(line(0).Key, "key");
}

TEST_F(ListBoxLinesTest, EachFlagIsItsOwn) {
  list.AddItem("bold", 0, -1, true, false, false, false);
  list.AddItem("checked", 0, -1, false, true, false, false);
  list.AddItem("ghosted", 0, -1, false, false, true, false);
  list.AddItem("selected", 0, -1, false, false, false, true);
  const auto flagsOf = [this](std::size_t index) {
    const ListLine& one = line(index);
    return std::vector<bool>{one.Bold, one.Checked, one.Ghosted, one.Selected};
  };
  EXPECT_THAT(flagsOf(0), ElementsAre(true, false, false, false));
  EXPECT_THAT(flagsOf(1), ElementsAre(false, true, false, false));
  EXPECT_THAT(flagsOf(2), ElementsAre(false, false, true, false));
  EXPECT_THAT(flagsOf(3), ElementsAre(false, false, false, true));
}

TEST_F(ListBoxLinesTest, APictureIsOneAboveZero) {
  for (const std::int16_t icon : {-32768, -1, 0, 1, 32767}) list.AddItem("", icon);
  EXPECT_EQ(line(0).SmallIcon, 0);
  EXPECT_EQ(line(1).SmallIcon, 0);
  EXPECT_EQ(line(2).SmallIcon, 0);
  EXPECT_EQ(line(3).SmallIcon, 1);
  EXPECT_EQ(line(4).SmallIcon, 32767);
}

TEST_F(ListBoxLinesTest, AColourIsOneAboveMinusOne) {
  for (const std::int32_t colour : {-2147483647, -1, 0, 0xFFFFFF}) list.AddItem("", 0, colour);
  EXPECT_EQ(line(0).ForeColor, kWindowText);
  EXPECT_EQ(line(1).ForeColor, kWindowText);
  EXPECT_EQ(line(2).ForeColor, 0U);
  EXPECT_EQ(line(3).ForeColor, 0xFFFFFFU);
}

TEST_F(ListBoxLinesTest, ListReadsTheTextOfALine) {
  fill({"a", "b"});
  EXPECT_EQ(list.List(0), "a");
  EXPECT_EQ(list.List(1), "b");
}

TEST_F(ListBoxLinesTest, ListFailsForALineThatIsNotThere) {
  fill({"a"});
  EXPECT_THROW(list.List(-1), StatementFailed);
  EXPECT_THROW(list.List(1), StatementFailed);
}

TEST_F(ListBoxLinesTest, ListSetsTheTextOfALine) {
  fill({"a", "b"});
  list.setList(1, "new");
  EXPECT_THAT(texts(), ElementsAre("a", "new"));
  EXPECT_THAT(screen.told, ElementsAre("changed 1"));
}

TEST_F(ListBoxLinesTest, ListSetsNothingOfALineThatIsNotThere) {
  fill({"a"});
  list.setList(-1, "new");
  list.setList(1, "new");
  EXPECT_THAT(texts(), ElementsAre("a"));
  EXPECT_THAT(screen.told, IsEmpty());
}

TEST_F(ListBoxLinesTest, ALineIsRemovedByItsIndex) {
  fill({"a", "b", "c"});
  list.RemoveItem(1);
  EXPECT_THAT(texts(), ElementsAre("a", "c"));
  EXPECT_THAT(screen.told, ElementsAre("removed 1"));
}

TEST_F(ListBoxLinesTest, RemovingOneThatIsNotThereFails) {
  fill({"a"});
  EXPECT_THROW(list.RemoveItem(-1), StatementFailed);
  EXPECT_THROW(list.RemoveItem(1), StatementFailed);
  EXPECT_THAT(texts(), ElementsAre("a"));
  EXPECT_THAT(screen.told, IsEmpty());
}

TEST_F(ListBoxLinesTest, ClearLocksTheDrawingWhileItEmptiesTheList) {
  fill({"a", "b"});
  list.Clear();
  EXPECT_EQ(list.ListCount(), 0);
  EXPECT_THAT(screen.told, ElementsAre("locked", "reset", "unlocked"));
}

TEST_F(ListBoxLinesTest, ClearOfAnEmptyListChangesNothingToBeSeen) {
  list.Clear();
  EXPECT_EQ(list.ListCount(), 0);
  EXPECT_EQ(list.ListIndex(), -1);
  EXPECT_THAT(screen.told, ElementsAre("locked", "reset", "unlocked"));
}

TEST_F(ListBoxLinesTest, AClearedListTakesNewLines) {
  fill({"a"});
  list.setListIndex(0);
  list.Clear();
  list.AddItem("b");
  EXPECT_THAT(texts(), ElementsAre("b"));
  EXPECT_THAT(selected(), IsEmpty());
}

TEST_F(ListBoxLinesTest, LinesCanBeChangedWhileNobodyShowsThem) {
  list.ListView1.setScreen(nullptr);
  fill({"a", "b"});
  list.setListIndex(1);
  list.setList(0, "new");
  list.StartEdit();
  list.Refresh();
  list.RemoveItem(1);
  EXPECT_THAT(texts(), ElementsAre("new"));
  list.Clear();
  EXPECT_EQ(list.ListCount(), 0);
}

// An index that was found before a line came, went or moved may be another line's.
using ListBoxLifeTest = ListBoxTest;

TEST_F(ListBoxLifeTest, GoesOnWhenALineIsAddedAtTheEnd) {
  fill({"a"});
  const std::uint64_t before = life();
  list.AddItem("b");
  EXPECT_EQ(life(), before);
}

TEST_F(ListBoxLifeTest, GoesOnWhenALineOrTheSelectionChanges) {
  fill({"a", "b"});
  const std::uint64_t before = life();
  list.setList(0, "new");
  list.setListIndex(1);
  list.tick(0, before);
  EXPECT_EQ(life(), before);
}

TEST_F(ListBoxLifeTest, EndsWhenALineIsRemoved) {
  fill({"a", "b"});
  const std::uint64_t before = life();
  list.RemoveItem(1);
  EXPECT_NE(life(), before);
}

TEST_F(ListBoxLifeTest, EndsWhenTheListIsCleared) {
  fill({"a"});
  const std::uint64_t before = life();
  list.Clear();
  EXPECT_NE(life(), before);
}

TEST_F(ListBoxLifeTest, EndsWhenTheListIsSorted) {
  fill({"b", "a"});
  const std::uint64_t before = life();
  list.Sorted = true;
  EXPECT_NE(life(), before);
}

TEST_F(ListBoxLifeTest, EndsWhenALineComesBeforeOthers) {
  list.Sorted = true;
  fill({"b"});
  const std::uint64_t before = life();
  list.AddItem("a");
  EXPECT_NE(life(), before);
}

TEST_F(ListBoxLifeTest, GoesOnWhenALineOfASortedListComesLast) {
  list.Sorted = true;
  fill({"a"});
  const std::uint64_t before = life();
  list.AddItem("b");
  EXPECT_EQ(life(), before);
}

}  // namespace
}  // namespace veltrin
