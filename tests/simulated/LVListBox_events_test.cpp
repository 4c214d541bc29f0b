// SPDX-License-Identifier: GPL-3.0-or-later
// What the list box asks of its screen, and what the user does with it.
#include <gmock/gmock.h>

#include "list_box.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ListBoxEventsTest : public ListBoxTest {
 protected:
  ListBoxEventsTest() {
    list.AfterLabelEdit = [this](bool&, const std::string& text) {
      note("AfterLabelEdit " + text);
    };
    list.ItemClick = [this](std::size_t index) { note("ItemClick " + std::to_string(index)); };
    list.Click = [this] { note("Click"); };
    list.DblClick = [this] { note("DblClick"); };
    list.KeyDown = [this](std::int16_t& key, std::int16_t shift) {
      note("KeyDown " + std::to_string(key) + " " + std::to_string(shift));
    };
    list.KeyPress = [this](std::int16_t& key) { note("KeyPress " + std::to_string(key)); };
    list.KeyUp = [this](std::int16_t& key, std::int16_t shift) {
      note("KeyUp " + std::to_string(key) + " " + std::to_string(shift));
    };
    list.mouseDown = [this](MouseButton) { note("MouseDown"); };
    list.mouseMove = [this](MouseButton) { note("MouseMove"); };
    list.mouseUp = [this](MouseButton) { note("MouseUp"); };
  }

  void note(const std::string& event) { events.push_back(event); }

  // All that a user may do with the first line.
  void doAll() {
    list.endEdit(0, life(), "edited");
    list.clickItem(0, life());
    list.clickList();
    list.doubleClick();
    list.pressKey(65, 1);
    list.typeKey(97);
    list.releaseKey(65, 2);
    list.pressMouse(MouseButton::Left);
    list.moveMouse(MouseButton::None);
    list.releaseMouse(MouseButton::Left);
    list.tick(0, life());
    list.takeSelection({0}, life());
  }

  Texts events;
};

TEST_F(ListBoxEventsTest, EachIsToldWithItsArguments) {
  fill({"a"});
  doAll();
  EXPECT_THAT(events, ElementsAre("AfterLabelEdit edited", "ItemClick 0", "Click", "DblClick",
                                  "KeyDown 65 1", "KeyPress 97", "KeyUp 65 2", "MouseDown",
                                  "MouseMove", "MouseUp"));
}

TEST_F(ListBoxEventsTest, NothingHappensInADisabledList) {
  fill({"a"});
  list.Enabled = false;
  doAll();
  EXPECT_THAT(events, IsEmpty());
  EXPECT_THAT(texts(), ElementsAre("a"));
  EXPECT_THAT(selected(), IsEmpty());
  EXPECT_FALSE(line(0).Checked);
}

TEST_F(ListBoxEventsTest, NothingHappensInAHiddenList) {
  fill({"a"});
  list.visible = false;
  doAll();
  EXPECT_THAT(events, IsEmpty());
  EXPECT_THAT(texts(), ElementsAre("a"));
  EXPECT_THAT(selected(), IsEmpty());
  EXPECT_FALSE(line(0).Checked);
}

TEST(ListBoxWithoutRoutines, TheUserWorksOnTheLinesAllTheSame) {
  Simulation simulation;
  LVListBox list(simulation.platform);
  list.AddItem("a");
  const std::uint64_t life = list.ListView1.life();
  list.clickItem(0, life);
  list.clickList();
  list.doubleClick();
  list.pressKey(65, 0);
  list.typeKey(97);
  list.releaseKey(65, 0);
  list.takeSelection({0}, life);
  list.tick(0, life);
  list.endEdit(0, life, "edited");
  EXPECT_EQ(list.List(0), "edited");
  EXPECT_TRUE(list.Selected(0));
  EXPECT_TRUE(list.ListView1.line(0).Checked);
}

TEST_F(ListBoxEventsTest, TheEditedTextIsTheLinesWhenTheRoutineIsOver) {
  fill({"a", "b"});
  std::string before;
  list.AfterLabelEdit = [&](bool&, const std::string&) { before = list.List(1); };
  list.endEdit(1, life(), "new");
  EXPECT_EQ(before, "b");
  EXPECT_THAT(texts(), ElementsAre("a", "new"));
}

TEST_F(ListBoxEventsTest, ACancelledEditLeavesTheText) {
  fill({"a"});
  list.AfterLabelEdit = [](bool& Cancel, const std::string&) { Cancel = true; };
  list.endEdit(0, life(), "new");
  EXPECT_THAT(texts(), ElementsAre("a"));
}

TEST_F(ListBoxEventsTest, AnEditIsDroppedWhenItsRoutineRemovesTheLine) {
  fill({"a", "b"});
  list.AfterLabelEdit = [this](bool&, const std::string&) { list.RemoveItem(0); };
  list.endEdit(0, life(), "new");
  EXPECT_THAT(texts(), ElementsAre("b"));
}

TEST_F(ListBoxEventsTest, WhatConcernsALineOfAnEarlierLifeDoesNothing) {
  fill({"a", "b"});
  const std::uint64_t earlier = life();
  list.RemoveItem(0);
  list.endEdit(0, earlier, "edited");
  list.clickItem(0, earlier);
  list.tick(0, earlier);
  list.takeSelection({0}, earlier);
  EXPECT_THAT(events, IsEmpty());
  EXPECT_THAT(texts(), ElementsAre("b"));
  EXPECT_THAT(selected(), IsEmpty());
  EXPECT_FALSE(line(0).Checked);
}

TEST_F(ListBoxEventsTest, NothingSelectedInAnEarlierLifeDoesNothing) {
  fill({"a", "b"});
  const std::uint64_t earlier = life();
  list.RemoveItem(0);
  list.setListIndex(0);
  list.takeSelection({}, earlier);
  EXPECT_THAT(selected(), testing::ElementsAre("b"));
}

TEST_F(ListBoxEventsTest, WhatConcernsNoLineDoesNothing) {
  fill({"a"});
  list.endEdit(1, life(), "edited");
  list.clickItem(1, life());
  list.tick(1, life());
  list.takeSelection({1}, life());
  EXPECT_THAT(events, IsEmpty());
  EXPECT_THAT(texts(), ElementsAre("a"));
  EXPECT_EQ(list.ListIndex(), -1);
}

TEST_F(ListBoxEventsTest, ATickTurnsTheCheckBoxOver) {
  fill({"a", "b"});
  list.tick(1, life());
  EXPECT_FALSE(line(0).Checked);
  EXPECT_TRUE(line(1).Checked);
  EXPECT_THAT(screen.told, ElementsAre("changed 1"));
  list.tick(1, life());
  EXPECT_FALSE(line(1).Checked);
}

TEST_F(ListBoxEventsTest, TheUsersSelectionReplacesTheOlderOne) {
  fill({"a", "b"});
  list.takeSelection({0}, life());
  list.takeSelection({1}, life());
  EXPECT_THAT(selected(), ElementsAre("b"));
  list.takeSelection({}, life());
  EXPECT_THAT(selected(), IsEmpty());
}

TEST_F(ListBoxEventsTest, TheUserSelectsOneLineWithoutMultiSelect) {
  fill({"a", "b", "c"});
  list.takeSelection({0, 2}, life());
  EXPECT_THAT(selected(), ElementsAre("c"));
  EXPECT_EQ(list.ListIndex(), 2);
}

TEST_F(ListBoxEventsTest, TheUserSelectsSeveralLinesWithMultiSelect) {
  list.MultiSelect = true;
  fill({"a", "b", "c"});
  list.takeSelection({2, 0}, life());
  EXPECT_THAT(selected(), ElementsAre("a", "c"));
  EXPECT_EQ(list.ListIndex(), 0);
}

TEST_F(ListBoxEventsTest, ASelectionOfWhichOneLineIsGoneDoesNothing) {
  list.MultiSelect = true;
  fill({"a", "b"});
  list.takeSelection({0, 2}, life());
  EXPECT_THAT(selected(), IsEmpty());
}

TEST_F(ListBoxEventsTest, StartEditBeginsTheEditOfTheSelectedLine) {
  fill({"a", "b"});
  list.setListIndex(1);
  screen.told.clear();
  list.StartEdit();
  EXPECT_THAT(screen.told, ElementsAre("edit 1"));
}

TEST_F(ListBoxEventsTest, StartEditDoesNothingWithoutASelectedLine) {
  fill({"a"});
  list.StartEdit();
  EXPECT_THAT(screen.told, IsEmpty());
}

TEST_F(ListBoxEventsTest, RefreshRepaints) {
  list.Refresh();
  EXPECT_THAT(screen.told, ElementsAre("refresh"));
}

TEST_F(ListBoxEventsTest, TheAboutBoxHasItsTitleAndTheNameOfTheControl) {
  list.AboutBox();
  ASSERT_EQ(simulation.desktop.messages.size(), 1U);
  EXPECT_EQ(simulation.desktop.messages[0].text, "LVListBox");
  EXPECT_EQ(simulation.desktop.messages[0].title, "About...");
  EXPECT_EQ(simulation.desktop.messages[0].style, kMessageOk);
}

}  // namespace
}  // namespace veltrin
