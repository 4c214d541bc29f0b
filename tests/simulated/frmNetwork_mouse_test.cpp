// SPDX-License-Identifier: GPL-3.0-or-later
// The Bandwidth monitor under the mouse: dragging it, its menu, its two little labels.
#include <gmock/gmock.h>

#include "monitor/CounterNetwork.h"
#include "simulated/network_run.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class BandwidthMouse : public NetworkRun {
 protected:
  BandwidthMouse() {
    keepTheProgramRunning();
    open();
    place() = {100, 200, 300, 320};
    simulation.desktop.cursor = {110, 220};
  }

  ScreenRectangle& place() { return simulation.desktop.places[window.get()]; }

  // Moves the mouse on the screen, over the window, with a button held.
  void moveTo(ScreenPoint cursor, MouseButton button = MouseButton::Left, int x = 150) {
    simulation.desktop.cursor = cursor;
    simulation.desktop.moveMouse(*window, button, x);
  }
  void press(MouseButton button, int x = 150) { simulation.desktop.pressMouse(*window, button, x); }
  void release(MouseButton button) { simulation.desktop.releaseMouse(*window, button, 150); }

  const SimulatedDesktop::Popup kMenu{{"Exit"}, "Exit"};
};

// --- Dragging ---

TEST_F(BandwidthMouse, DraggingMovesTheWindowWithTheMouseAndKeepsItsSize) {
  press(MouseButton::Left);
  moveTo({115, 223});
  EXPECT_EQ(place(), (ScreenRectangle{105, 203, 305, 323}));
  moveTo({60, 20});
  EXPECT_EQ(place(), (ScreenRectangle{50, 0, 250, 120}));
}

TEST_F(BandwidthMouse, ReleasedItMovesNoMore) {
  press(MouseButton::Left);
  moveTo({115, 223});
  release(MouseButton::Left);
  moveTo({400, 400});
  EXPECT_EQ(place(), (ScreenRectangle{105, 203, 305, 323}));
}

TEST_F(BandwidthMouse, AMoveWithoutAButtonMovesNothing) {
  press(MouseButton::Left);
  moveTo({400, 400}, MouseButton::None);
  EXPECT_EQ(place(), (ScreenRectangle{100, 200, 300, 320}));
}

TEST_F(BandwidthMouse, TheRightButtonReleasedInADragDoesNotEndIt) {
  press(MouseButton::Left);
  release(MouseButton::Right);
  moveTo({115, 223});
  EXPECT_EQ(place(), (ScreenRectangle{105, 203, 305, 323}));
}

TEST_F(BandwidthMouse, ASecondPressInADragDoesNotMeasureAnew) {
  press(MouseButton::Left);
  simulation.desktop.cursor = {500, 500};
  press(MouseButton::Left);
  moveTo({111, 221});
  EXPECT_EQ(place(), (ScreenRectangle{101, 201, 301, 321}));
}

TEST_F(BandwidthMouse, TheLogoDragsTheWindowAsItselfDoes) {
  simulation.desktop.pressMouse(window->Logo, MouseButton::Left, 30);
  simulation.desktop.cursor = {115, 223};
  simulation.desktop.moveMouse(window->Logo, MouseButton::Left, 30);
  EXPECT_EQ(place(), (ScreenRectangle{105, 203, 305, 323}));
  simulation.desktop.releaseMouse(window->Logo, MouseButton::Left, 30);
  simulation.desktop.cursor = {0, 0};
  simulation.desktop.moveMouse(window->Logo, MouseButton::Left, 30);
  EXPECT_EQ(place(), (ScreenRectangle{105, 203, 305, 323}));
}

TEST_F(BandwidthMouse, WhereTheSystemMovesWindowsItTakesTheDragOver) {
  simulation.desktop.movesBySystem = true;
  press(MouseButton::Left);
  moveTo({400, 400});
  EXPECT_EQ(place(), (ScreenRectangle{100, 200, 300, 320}));
}

TEST_F(BandwidthMouse, TicksComeInDuringADrag) {
  simulation.counters.instances = {kCard};
  EnumNetworkInterfaces(program());
  AddNetworkCounters(program());
  const int before = simulation.counters.collections;
  press(MouseButton::Left);
  simulation.loop.at(1000, [this] { moveTo({115, 223}); });
  simulation.run(1000);
  EXPECT_EQ(simulation.counters.collections, before + 1);
  EXPECT_EQ(place(), (ScreenRectangle{105, 203, 305, 323}));
}

// --- The menu ---

TEST_F(BandwidthMouse, TheRightButtonOpensTheMenuWithItsOneEntryAsTheDefault) {
  press(MouseButton::Right);
  EXPECT_THAT(simulation.desktop.popups, ElementsAre(kMenu));
  EXPECT_TRUE(window->isLoaded());
}

TEST_F(BandwidthMouse, TheRightButtonOnTheLogoOpensTheSameMenu) {
  simulation.desktop.pressMouse(window->Logo, MouseButton::Right, 30);
  EXPECT_THAT(simulation.desktop.popups, ElementsAre(kMenu));
}

TEST_F(BandwidthMouse, TheLeftButtonOpensNoMenu) {
  press(MouseButton::Left);
  release(MouseButton::Left);
  EXPECT_THAT(simulation.desktop.popups, IsEmpty());
}

TEST_F(BandwidthMouse, ExitClosesTheWindow) {
  simulation.desktop.choice = [this] { return &window->mnucloseme; };
  press(MouseButton::Right);
  EXPECT_FALSE(window->isLoaded());
  EXPECT_EQ(window->mnucloseme.Tag, "");
}

// --- The two places with a meaning of their own ---

TEST_F(BandwidthMouse, AMoveAtExactly515ClosesTheWindowAndMarksItsEntry) {
  moveTo({110, 220}, MouseButton::None, 515);
  EXPECT_EQ(window->mnucloseme.Tag, "-1");
  EXPECT_FALSE(window->isLoaded());
}

TEST_F(BandwidthMouse, AMoveAtExactly517OpensTheMenu) {
  moveTo({110, 220}, MouseButton::None, 517);
  EXPECT_THAT(simulation.desktop.popups, ElementsAre(kMenu));
  EXPECT_TRUE(window->isLoaded());
}

TEST_F(BandwidthMouse, AMoveAnywhereElseDoesNothing) {
  for (const int x : {0, 514, 516, 518, 1030}) moveTo({110, 220}, MouseButton::None, x);
  EXPECT_THAT(simulation.desktop.popups, IsEmpty());
  EXPECT_TRUE(window->isLoaded());
}

TEST_F(BandwidthMouse, TheLogoForwardsItsPlacesUnchanged) {
  simulation.desktop.moveMouse(window->Logo, MouseButton::None, 517);
  EXPECT_THAT(simulation.desktop.popups, SizeIs(1));
  simulation.desktop.moveMouse(window->Logo, MouseButton::None, 515);
  EXPECT_FALSE(window->isLoaded());
}

TEST_F(BandwidthMouse, AMoveInADragDoesNotLookAtThem) {
  press(MouseButton::Left);
  moveTo({115, 223}, MouseButton::Left, 515);
  moveTo({115, 223}, MouseButton::Left, 517);
  EXPECT_TRUE(window->isLoaded());
  EXPECT_THAT(simulation.desktop.popups, IsEmpty());
}

TEST_F(BandwidthMouse, APressAtExactly515BeginsNoDrag) {
  press(MouseButton::Left, 515);
  moveTo({400, 400});
  EXPECT_EQ(place(), (ScreenRectangle{100, 200, 300, 320}));
}

TEST_F(BandwidthMouse, APressAtExactly517BeginsADrag) {
  press(MouseButton::Left, 517);
  moveTo({115, 223});
  EXPECT_EQ(place(), (ScreenRectangle{105, 203, 305, 323}));
}

TEST_F(BandwidthMouse, TheMenuDoesNotOpenInsideItselfByAMove) {
  simulation.desktop.choice = [this]() -> MenuEntry* {
    if (simulation.desktop.popups.size() < 5) moveTo({110, 220}, MouseButton::None, 517);
    return nullptr;
  };
  moveTo({110, 220}, MouseButton::None, 517);
  EXPECT_THAT(simulation.desktop.popups, SizeIs(1));
  simulation.desktop.choice = nullptr;
  moveTo({110, 220}, MouseButton::None, 517);
  EXPECT_THAT(simulation.desktop.popups, SizeIs(2));
}

// --- Above all others ---

TEST_F(BandwidthMouse, TheWindowIsAboveAllOthersFromItsLoadOn) { EXPECT_TRUE(isOnTop()); }

TEST_F(BandwidthMouse, TheTwoLabelsEndAndBringThatBack) {
  simulation.desktop.click(window->NotOnTOP);
  EXPECT_FALSE(isOnTop());
  simulation.desktop.click(window->OnTopALL);
  EXPECT_TRUE(isOnTop());
}

}  // namespace
}  // namespace veltrin
