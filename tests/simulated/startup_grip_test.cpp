// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>

#include "simulated/menu_run.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Grip : public MenuRun {
 protected:
  Grip() {
    open();
    simulation.desktop.places[menu.get()] = {100, 200, 500, 600};
    simulation.desktop.cursor = {110, 220};
  }

  void dragTo(ScreenPoint cursor) {
    simulation.desktop.cursor = cursor;
    simulation.desktop.moveMouse(menu->Image1, MouseButton::Left);
  }
};

TEST_F(Grip, PressingItDrawsABandOfFourPixelsInsideTheWindowsBorder) {
  simulation.desktop.pressMouse(menu->Image1, MouseButton::Left);
  EXPECT_THAT(
      simulation.desktop.focusRectangles,
      ElementsAre(ScreenRectangle{100, 200, 500, 600}, ScreenRectangle{101, 201, 499, 599},
                  ScreenRectangle{102, 202, 498, 598}, ScreenRectangle{103, 203, 497, 597}));
}

TEST_F(Grip, DraggingItMovesTheBandAndNotTheWindow) {
  simulation.desktop.pressMouse(menu->Image1, MouseButton::Left);
  dragTo({40, 300});
  EXPECT_THAT(simulation.desktop.visibleBorders,
              ElementsAre(ScreenRectangle{30, 280, 430, 680}, ScreenRectangle{31, 281, 429, 679},
                          ScreenRectangle{32, 282, 428, 678}, ScreenRectangle{33, 283, 427, 677}));
  EXPECT_EQ(simulation.desktop.places[menu.get()], (ScreenRectangle{100, 200, 500, 600}));
}

TEST_F(Grip, DraggingErasesTheOldBandBeforeItDrawsTheNewOne) {
  simulation.desktop.pressMouse(menu->Image1, MouseButton::Left);
  simulation.desktop.focusRectangles.clear();
  dragTo({111, 221});
  ASSERT_EQ(simulation.desktop.focusRectangles.size(), 8U);
  EXPECT_EQ(simulation.desktop.focusRectangles[0], (ScreenRectangle{100, 200, 500, 600}));
  EXPECT_EQ(simulation.desktop.focusRectangles[4], (ScreenRectangle{101, 201, 501, 601}));
}

TEST_F(Grip, ReleasingItMovesTheWindowAndTakesTheBandAway) {
  simulation.desktop.pressMouse(menu->Image1, MouseButton::Left);
  dragTo({300, 300});
  dragTo({-50, 10});
  simulation.desktop.releaseMouse(menu->Image1, MouseButton::Left);
  EXPECT_EQ(simulation.desktop.places[menu.get()], (ScreenRectangle{-60, -10, 340, 390}));
  EXPECT_THAT(simulation.desktop.visibleBorders, IsEmpty());
}

TEST_F(Grip, ReleasedItDragsNothing) {
  simulation.desktop.pressMouse(menu->Image1, MouseButton::Left);
  dragTo({300, 300});
  simulation.desktop.releaseMouse(menu->Image1, MouseButton::Left);
  dragTo({10, 10});
  EXPECT_THAT(simulation.desktop.visibleBorders, IsEmpty());
  simulation.desktop.releaseMouse(menu->Image1, MouseButton::Left);
  EXPECT_EQ(simulation.desktop.places[menu.get()], (ScreenRectangle{290, 280, 690, 680}));
}

TEST_F(Grip, AClickLeavesTheWindowWhereItIs) {
  simulation.desktop.pressMouse(menu->Image1, MouseButton::Left);
  simulation.desktop.releaseMouse(menu->Image1, MouseButton::Left);
  EXPECT_EQ(simulation.desktop.places[menu.get()], (ScreenRectangle{100, 200, 500, 600}));
}

TEST_F(Grip, ASecondPressInMidDragTakesTheOldBandAwayAndDrawsOneAroundTheWindow) {
  simulation.desktop.pressMouse(menu->Image1, MouseButton::Left);
  dragTo({300, 300});
  simulation.desktop.pressMouse(menu->Image1, MouseButton::Left);
  EXPECT_THAT(
      simulation.desktop.visibleBorders,
      ElementsAre(ScreenRectangle{100, 200, 500, 600}, ScreenRectangle{101, 201, 499, 599},
                  ScreenRectangle{102, 202, 498, 598}, ScreenRectangle{103, 203, 497, 597}));
}

TEST_F(Grip, ASecondPressInMidDragMeasuresFromWhereTheMouseIsThen) {
  simulation.desktop.pressMouse(menu->Image1, MouseButton::Left);
  dragTo({300, 300});
  simulation.desktop.pressMouse(menu->Image1, MouseButton::Left);
  dragTo({305, 307});
  simulation.desktop.releaseMouse(menu->Image1, MouseButton::Left);
  EXPECT_EQ(simulation.desktop.places[menu.get()], (ScreenRectangle{105, 207, 505, 607}));
  EXPECT_THAT(simulation.desktop.visibleBorders, IsEmpty());
}

TEST_F(Grip, ASecondPressThatTheSystemTakesOverLeavesNoBand) {
  simulation.desktop.pressMouse(menu->Image1, MouseButton::Left);
  simulation.desktop.movesBySystem = true;
  simulation.desktop.pressMouse(menu->Image1, MouseButton::Left);
  EXPECT_THAT(simulation.desktop.visibleBorders, IsEmpty());
}

TEST_F(Grip, APressOfTheRightButtonInMidDragChangesNothing) {
  simulation.desktop.pressMouse(menu->Image1, MouseButton::Left);
  dragTo({300, 300});
  simulation.desktop.pressMouse(menu->Image1, MouseButton::Right);
  dragTo({120, 230});
  simulation.desktop.releaseMouse(menu->Image1, MouseButton::Left);
  EXPECT_EQ(simulation.desktop.places[menu.get()], (ScreenRectangle{110, 210, 510, 610}));
}

TEST_F(Grip, TheRightButtonDrawsNothing) {
  simulation.desktop.pressMouse(menu->Image1, MouseButton::Right);
  simulation.desktop.moveMouse(menu->Image1, MouseButton::Right);
  simulation.desktop.releaseMouse(menu->Image1, MouseButton::Right);
  EXPECT_THAT(simulation.desktop.focusRectangles, IsEmpty());
}

TEST_F(Grip, WhereTheSystemMovesWindowsNoBandIsDrawn) {
  simulation.desktop.movesBySystem = true;
  simulation.desktop.pressMouse(menu->Image1, MouseButton::Left);
  dragTo({300, 300});
  simulation.desktop.releaseMouse(menu->Image1, MouseButton::Left);
  EXPECT_THAT(simulation.desktop.focusRectangles, IsEmpty());
  EXPECT_EQ(simulation.desktop.places[menu.get()], (ScreenRectangle{100, 200, 500, 600}));
}

TEST_F(Grip, ClosingTheWindowInMidDragLeavesNoBand) {
  simulation.desktop.pressMouse(menu->Image1, MouseButton::Left);
  dragTo({300, 300});
  simulation.desktop.closeWindow(*menu);
  EXPECT_THAT(simulation.desktop.visibleBorders, IsEmpty());
}

}  // namespace
}  // namespace veltrin
