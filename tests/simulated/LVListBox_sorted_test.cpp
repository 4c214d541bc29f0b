// SPDX-License-Identifier: GPL-3.0-or-later
// The list box in the order of its texts.
#include <gmock/gmock.h>

#include "list_box.h"

namespace veltrin {
namespace {

using testing::ElementsAre;

class ListBoxSortedTest : public ListBoxTest {
 protected:
  // The tags of all lines, to tell lines of equal texts apart.
  Texts tags() const {
    Texts all;
    for (std::size_t index = 0; index < list.ListView1.count(); ++index) {
      all.push_back(line(index).Tag);
    }
    return all;
  }

  void addTagged(const std::string& text, const std::string& tag) {
    list.AddItem(text, 0, -1, false, false, false, false, tag);
  }
};

TEST_F(ListBoxSortedTest, AddsEachLineWhereItsTextBelongs) {
  list.Sorted = true;
  fill({"b", "C", "a", "B2", ""});
  EXPECT_THAT(texts(), ElementsAre("", "a", "b", "B2", "C"));
}

TEST_F(ListBoxSortedTest, TellsTheScreenWhereALineWasPut) {
  list.Sorted = true;
  fill({"b"});
  list.AddItem("a");
  list.AddItem("c");
  EXPECT_THAT(screen.told, ElementsAre("inserted 0", "inserted 2"));
}

TEST_F(ListBoxSortedTest, ComesOfAnUnsortedOne) {
  fill({"b", "C", "a"});
  list.Sorted = true;
  EXPECT_THAT(texts(), ElementsAre("a", "b", "C"));
  EXPECT_THAT(screen.told, ElementsAre("reset"));
}

TEST_F(ListBoxSortedTest, StaysInItsOrderWhenItIsSortedNoMore) {
  fill({"b", "a"});
  list.Sorted = true;
  list.Sorted = false;
  list.AddItem("0");
  EXPECT_THAT(texts(), ElementsAre("a", "b", "0"));
}

TEST_F(ListBoxSortedTest, DescendsInTheOtherOrder) {
  list.Sorted = true;
  fill({"b", "c", "a"});
  list.SortOrder = kDescending;
  EXPECT_THAT(texts(), ElementsAre("c", "b", "a"));
  list.AddItem("B5");
  EXPECT_THAT(texts(), ElementsAre("c", "B5", "b", "a"));
}

TEST_F(ListBoxSortedTest, TheOrderOfAnUnsortedListWaitsUntilItIsSorted) {
  fill({"a", "b"});
  list.SortOrder = kDescending;
  EXPECT_THAT(texts(), ElementsAre("a", "b"));
  list.Sorted = true;
  EXPECT_THAT(texts(), ElementsAre("b", "a"));
}

TEST_F(ListBoxSortedTest, LinesOfEqualTextsStayAsTheyStood) {
  addTagged("b", "1");
  addTagged("A", "2");
  addTagged("B", "3");
  addTagged("a", "4");
  list.Sorted = true;
  EXPECT_THAT(tags(), ElementsAre("2", "4", "1", "3"));
  list.SortOrder = kDescending;
  EXPECT_THAT(tags(), ElementsAre("1", "3", "2", "4"));
}

TEST_F(ListBoxSortedTest, ANewLineComesBehindTheOlderOnesOfItsText) {
  list.Sorted = true;
  for (const char* tag : {"1", "2", "3"}) addTagged("a", tag);
  EXPECT_THAT(tags(), ElementsAre("1", "2", "3"));
  list.SortOrder = kDescending;
  addTagged("A", "4");
  EXPECT_THAT(tags(), ElementsAre("1", "2", "3", "4"));
}

TEST_F(ListBoxSortedTest, TheSelectionStaysOnItsLineWhenTheListIsSorted) {
  addTagged("b", "1");
  addTagged("a", "2");
  addTagged("b", "3");
  list.setListIndex(0);
  list.Sorted = true;
  EXPECT_EQ(list.ListIndex(), 1);
  EXPECT_EQ(line(1).Tag, "1");
  EXPECT_TRUE(list.Selected(1));
  EXPECT_THAT(selected(), ElementsAre("b"));
}

TEST_F(ListBoxSortedTest, TheSelectionStaysOnItsLineWhenOneComesBeforeIt) {
  list.Sorted = true;
  fill({"b"});
  list.setListIndex(0);
  list.AddItem("a");
  EXPECT_EQ(list.ListIndex(), 1);
  EXPECT_EQ(list.Text(), "b");
}

TEST_F(ListBoxSortedTest, TheSelectionStaysOnItsLineWhenOneComesBehindIt) {
  list.Sorted = true;
  fill({"a"});
  list.setListIndex(0);
  list.AddItem("b");
  EXPECT_EQ(list.ListIndex(), 0);
}

TEST_F(ListBoxSortedTest, ALineThatIsAddedSelectedIsSelectedInItsPlace) {
  list.Sorted = true;
  fill({"a", "c"});
  list.setListIndex(1);
  list.AddItem("b", 0, -1, false, false, false, true);
  EXPECT_EQ(list.ListIndex(), 1);
  EXPECT_THAT(selected(), ElementsAre("b"));
}

TEST_F(ListBoxSortedTest, ALineWhoseTextChangesStaysUntilTheListIsSortedAnew) {
  list.Sorted = true;
  fill({"a", "b"});
  list.setList(0, "c");
  EXPECT_THAT(texts(), ElementsAre("c", "b"));
  list.Sorted = true;
  EXPECT_THAT(texts(), ElementsAre("b", "c"));
}

TEST_F(ListBoxSortedTest, ALineMovesWithAllThatItHas) {
  list.AddItem("b", 3, 0x1234, true, true, true, true, "tag", "key");
  list.AddItem("a");
  list.Sorted = true;
  EXPECT_EQ(line(1).SmallIcon, 3);
  EXPECT_EQ(line(1).ForeColor, 0x1234);
  EXPECT_TRUE(line(1).Bold && line(1).Checked && line(1).Ghosted && line(1).Selected);
  EXPECT_EQ(line(1).Tag, "tag");
  EXPECT_EQ(line(1).Key, "key");
  EXPECT_FALSE(line(0).Bold || line(0).Checked || line(0).Ghosted || line(0).Selected);
}

}  // namespace
}  // namespace veltrin
