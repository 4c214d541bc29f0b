// SPDX-License-Identifier: GPL-3.0-or-later
// What the mouse does over controls, and over the window beside them, reaches the model.
#include "forms/image.h"
#include "view_test.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const char* nameOf(MouseButton button) {
  if (button == MouseButton::None) return "none";
  return button == MouseButton::Left ? "left" : "right";
}

// Some controls of the main menu, with routines that log.
class Watched : public Form {
 public:
  Watched(FormHost& host, std::vector<std::string>& log) : Form("startup", host) {
    own("Image1", Image1);
    own("Label1", Label1);
    own("Label2", Label2);
    own("Command4", Command4);
    const auto logged = [&log](const char* what) {
      return [&log, what](MouseButton button) {
        log.push_back(std::string(what) + " " + nameOf(button));
      };
    };
    Image1.mouseDown = logged("down");
    Image1.mouseMove = logged("move");
    Image1.mouseUp = logged("up");
    Label1.mouseMove = logged("name");
    mouseMove = logged("window");
  }

  Image Image1;
  Label Label1;
  Label Label2;
  CommandButton Command4{"Ping Test"};
};

class MouseTest : public ViewTest {
 protected:
  void SetUp() override {
    ViewTest::SetUp();
    form = std::make_shared<Watched>(program, log);
    form->Label1.caption = "Veltrin";
    form->Label2.caption = "Version 1.03";
    form->load();
    desktop.show(*form);
    window = desktop.windowOf(*form);
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    atRest([] {});
    grip = widget("Image1");
    moveTo(middleOf("Label2"));
    log.clear();
  }

  void TearDown() override {
    if (form->isLoaded()) form->end();
    desktop.remove(*form);
  }

  // Tells a widget that the mouse moved over it.
  static void move(QWidget& over, Qt::MouseButtons held = Qt::NoButton) {
    const QPointF place = over.rect().center();
    QMouseEvent event(QEvent::MouseMove, place, over.mapToGlobal(place), Qt::NoButton, held,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(&over, &event);
  }

  // Moves the mouse over the window, as the window system tells it.
  void moveTo(const QPoint& place) {
    atRest([&] { QTest::mouseMove(window->windowHandle(), place); });
  }

  QPoint middleOf(const char* name) const {
    const QWidget* target = widget(name);
    return target->mapTo(window, target->rect().center());
  }

  std::shared_ptr<Watched> form;
  QWidget* grip = nullptr;
  std::vector<std::string> log;
};

TEST_F(MouseTest, ADragReachesThePictureWithTheButtonThatIsHeld) {
  moveTo(middleOf("Image1"));
  atRest([&] {
    const QPoint there = middleOf("Image1") + QPoint(3, 3);
    QTest::mousePress(window->windowHandle(), Qt::LeftButton, {}, middleOf("Image1"));
    QTest::mouseMove(window->windowHandle(), there);
    QTest::mouseRelease(window->windowHandle(), Qt::LeftButton, {}, there);
  });

  EXPECT_THAT(log, ElementsAre("move none", "down left", "move left", "up left"));
}

TEST_F(MouseTest, ADragOverTheWindowIsThePicturesAlone) {
  moveTo(middleOf("Image1"));
  atRest([&] {
    QTest::mousePress(window->windowHandle(), Qt::LeftButton, {}, middleOf("Image1"));
    QTest::mouseMove(window->windowHandle(), QPoint(3, 3));
    QTest::mouseRelease(window->windowHandle(), Qt::LeftButton, {}, QPoint(3, 3));
  });

  EXPECT_THAT(log, ElementsAre("move none", "down left", "move left", "up left"));
}

TEST_F(MouseTest, ADragGoesOnOutsideTheWindow) {
  moveTo(middleOf("Image1"));
  atRest([&] {
    QTest::mousePress(window->windowHandle(), Qt::LeftButton, {}, middleOf("Image1"));
    QTest::mouseMove(window->windowHandle(), QPoint(-50, -50));
    QTest::mouseRelease(window->windowHandle(), Qt::LeftButton, {}, QPoint(-50, -50));
  });

  EXPECT_THAT(log, ElementsAre("move none", "down left", "move left", "up left"));
}

TEST_F(MouseTest, TheSecondPressOfADoubleClickIsAPress) {
  moveTo(middleOf("Image1"));
  log.clear();

  atRest(
      [&] { QTest::mouseDClick(window->windowHandle(), Qt::LeftButton, {}, middleOf("Image1")); });

  EXPECT_THAT(log, ElementsAre("down left", "up left", "down left", "up left"));
}

TEST_F(MouseTest, TheRightButtonIsToldApart) {
  moveTo(middleOf("Image1"));
  log.clear();

  atRest(
      [&] { QTest::mouseClick(window->windowHandle(), Qt::RightButton, {}, middleOf("Image1")); });

  EXPECT_THAT(log, ElementsAre("down right", "up right"));
}

TEST_F(MouseTest, AButtonThatNoRoutineKnowsIsNone) {
  moveTo(middleOf("Image1"));
  log.clear();

  atRest(
      [&] { QTest::mouseClick(window->windowHandle(), Qt::MiddleButton, {}, middleOf("Image1")); });

  EXPECT_THAT(log, IsEmpty());
}

TEST_F(MouseTest, AMoveWithoutAButtonReachesThePictureAndTheText) {
  moveTo(middleOf("Image1"));
  moveTo(middleOf("Label1"));

  EXPECT_THAT(log, ElementsAre("move none", "name none"));
}

TEST_F(MouseTest, AMoveBesideTheControlsReachesTheWindow) {
  moveTo(QPoint(3, 3));

  EXPECT_THAT(log, ElementsAre("window none"));
}

TEST_F(MouseTest, AMoveOverThePanelOfSomeControlsReachesTheWindow) {
  moveTo(widget("decorSpeed")->mapTo(window, QPoint(3, 3)));

  EXPECT_THAT(log, ElementsAre("window none"));
}

TEST_F(MouseTest, AMoveOverAControlWithoutARoutineReachesNobody) {
  moveTo(middleOf("Command4"));
  moveTo(middleOf("Label2"));

  EXPECT_THAT(log, IsEmpty());
}

TEST_F(MouseTest, OfManyMovesThatWaitAtTheGateTheLastOneIsDelivered) {
  for (int moves = 0; moves < 100; ++moves) move(*grip);
  move(*grip, Qt::LeftButton);

  atRest([] {});

  EXPECT_THAT(log, ElementsAre("move left"));
}

TEST_F(MouseTest, APressThatWaitsKeepsTheMovesBeforeItAndBehindItApart) {
  move(*grip);
  QTest::mousePress(grip, Qt::LeftButton);
  move(*grip, Qt::LeftButton);
  move(*grip, Qt::LeftButton);

  atRest([] {});

  EXPECT_THAT(log, ElementsAre("move none", "down left", "move left"));
  // The window system would remember the button for the test behind this one.
  atRest([&] { QTest::mouseRelease(grip, Qt::LeftButton); });
}

TEST_F(MouseTest, AMoveThatARoutineLetsInIsDeliveredToo) {
  int moves = 0;
  form->Image1.mouseMove = [&](MouseButton) {
    if (++moves > 1) return;
    move(*grip);
    events.DoEvents();
  };

  atRest([&] { move(*grip); });

  EXPECT_EQ(moves, 2);
}

TEST_F(MouseTest, ADisabledPictureDoesNotNoticeTheMouse) {
  form->Image1.enabled = false;

  moveTo(middleOf("Image1"));
  atRest(
      [&] { QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, middleOf("Image1")); });

  EXPECT_THAT(log, IsEmpty());
}

TEST_F(MouseTest, NothingIsDeliveredThatWaitsWhenTheWindowGoes) {
  move(*grip);
  form->end();

  atRest([] {});

  EXPECT_THAT(log, IsEmpty());
}

TEST_F(MouseTest, AWindowThatHasGoneWithItsModelLeavesNoWatcherBehind) {
  QPointer<QWidget> left = grip;
  desktop.remove(*form);

  move(*left);
  atRest([] {});

  EXPECT_THAT(log, IsEmpty());
}

}  // namespace
}  // namespace veltrin
