// SPDX-License-Identifier: GPL-3.0-or-later
// The lines of a list box: what the user does to them reaches the program.
#include "line_list_fixture.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Notes the list's events.
class LineListInputTest : public LineListTest {
 protected:
  void SetUp() override {
    LineListTest::SetUp();
    list().ItemClick = [this](std::size_t index) {
      log.push_back("line " + std::to_string(index));
    };
    list().Click = [this] { log.emplace_back("click"); };
    list().DblClick = [this] { log.emplace_back("double click"); };
  }

  void noteKeys() {
    list().KeyDown = [this](std::int16_t& code, std::int16_t shift) {
      log.push_back("down " + std::to_string(code) + " " + std::to_string(shift));
    };
    list().KeyPress = [this](std::int16_t& character) {
      log.push_back("press " + std::to_string(character));
    };
    list().KeyUp = [this](std::int16_t& code, std::int16_t shift) {
      log.push_back("up " + std::to_string(code) + " " + std::to_string(shift));
    };
  }

  void moveTo(const QPoint& place) {
    atRest([&] { QTest::mouseMove(window->windowHandle(), inWindow(place)); });
  }

  std::vector<int> selected() const {
    std::vector<int> lines;
    for (int line = 0; line < list().ListCount(); ++line) {
      if (list().Selected(line)) lines.push_back(line);
    }
    return lines;
  }

  std::vector<std::string> log;
};

TEST_F(LineListInputTest, AClickSelectsItsLine) {
  fill(5);

  click(textOf(3));

  EXPECT_EQ(list().ListIndex(), 3);
  EXPECT_THAT(log, ElementsAre("line 3", "click"));
}

TEST_F(LineListInputTest, AClickBelowTheLinesIsAClickOnNoLine) {
  fill(2);

  click({20, 150});

  EXPECT_EQ(list().ListIndex(), -1);
  EXPECT_THAT(log, ElementsAre("click"));
}

TEST_F(LineListInputTest, ADoubleClickIsOneClickAndOneDoubleClick) {
  fill(2);

  click(textOf(1));
  atRest(
      [&] { QTest::mouseDClick(window->windowHandle(), Qt::LeftButton, {}, inWindow(textOf(1))); });

  EXPECT_EQ(std::count(log.begin(), log.end(), "double click"), 1);
  EXPECT_EQ(log.front(), "line 1");
}

TEST_F(LineListInputTest, AButtonThatComesUpOnAnotherLineIsNoClick) {
  fill(5);

  atRest([&] {
    QTest::mousePress(window->windowHandle(), Qt::LeftButton, {}, inWindow(textOf(1)));
    QTest::mouseRelease(window->windowHandle(), Qt::LeftButton, {}, inWindow(textOf(3)));
  });

  EXPECT_THAT(log, IsEmpty());
}

TEST_F(LineListInputTest, AClickMeansTheLineThatIsThereThen) {
  fill(3);
  list().RemoveItem(0);

  click(textOf(0));

  EXPECT_EQ(list().Text(), "Line 1");
}

TEST_F(LineListInputTest, TheArrowKeysGoFromLineToLine) {
  fill(5);
  list().setListIndex(1);
  settle();

  press(Qt::Key_Down);
  press(Qt::Key_Down);
  press(Qt::Key_Up);

  EXPECT_EQ(list().ListIndex(), 2);
}

TEST_F(LineListInputTest, HomeAndEndGoToTheFirstAndTheLastLine) {
  fill(500);

  press(Qt::Key_End);
  EXPECT_EQ(list().ListIndex(), 499);
  EXPECT_EQ(view->verticalScrollBar()->value(), view->verticalScrollBar()->maximum());

  press(Qt::Key_Home);
  EXPECT_EQ(list().ListIndex(), 0);
  EXPECT_EQ(view->verticalScrollBar()->value(), 0);
}

TEST_F(LineListInputTest, PageKeysGoByAsManyLinesAsAreSeen) {
  fill(500);
  list().setListIndex(0);
  settle();
  const int page = view->viewport()->height() / view->look()->height() - 1;

  press(Qt::Key_PageDown);
  EXPECT_EQ(list().ListIndex(), page);
  press(Qt::Key_PageDown);
  EXPECT_EQ(list().ListIndex(), 2 * page);
  press(Qt::Key_PageUp);
  EXPECT_EQ(list().ListIndex(), page);
}

TEST_F(LineListInputTest, TypedLettersFindTheLineThatBeginsWithThem) {
  for (const char* text : {"Processor", "Memory", "Monitor"}) list().AddItem(text);
  settle();

  atRest([&] { type("mon"); });

  EXPECT_EQ(list().Text(), "Monitor");
}

TEST_F(LineListInputTest, CopyingTakesTheTextsOfTheSelectedLinesInTheirOrder) {
  list().MultiSelect = true;
  fill(4);

  click(textOf(2));
  click(textOf(0), Qt::ControlModifier);
  press(Qt::Key_C, Qt::ControlModifier);

  EXPECT_EQ(fromQt(QApplication::clipboard()->text()), "Line 0\nLine 2");
}

TEST_F(LineListInputTest, CopyingWithoutASelectionLeavesTheClipboard) {
  QApplication::clipboard()->setText("kept");
  fill(2);

  press(Qt::Key_C, Qt::ControlModifier);

  EXPECT_EQ(fromQt(QApplication::clipboard()->text()), "kept");
}

TEST_F(LineListInputTest, AllLinesAreSelectedWhereMoreThanOneMayBe) {
  fill(4);
  press(Qt::Key_A, Qt::ControlModifier);
  EXPECT_THAT(selected(), testing::SizeIs(testing::Le(1)));

  list().MultiSelect = true;
  press(Qt::Key_A, Qt::ControlModifier);

  EXPECT_THAT(selected(), ElementsAre(0, 1, 2, 3));
}

TEST_F(LineListInputTest, TheLineThatWasClickedLastIsTheOneThatCounts) {
  list().MultiSelect = true;
  fill(4);

  click(textOf(3));
  click(textOf(1), Qt::ControlModifier);

  EXPECT_THAT(selected(), ElementsAre(1, 3));
  EXPECT_EQ(list().ListIndex(), 1);
}

TEST_F(LineListInputTest, TheSelectionIsExtendedFromLineToLine) {
  list().MultiSelect = true;
  fill(9);

  click(textOf(2));
  click(textOf(5), Qt::ShiftModifier);

  EXPECT_THAT(selected(), ElementsAre(2, 3, 4, 5));
}

TEST_F(LineListInputTest, LinesThatTheProgramSelectsAreAllSeenAsThat) {
  list().MultiSelect = true;
  fill(5);

  list().setSelected(1, true);
  list().setSelected(2, true);
  list().setSelected(4, true);
  settle();

  EXPECT_EQ(view->selectionModel()->selectedIndexes().size(), 3);
  EXPECT_TRUE(view->selectionModel()->isSelected(view->model()->index(4, 0)));
  EXPECT_THAT(selected(), ElementsAre(1, 2, 4));
}

TEST_F(LineListInputTest, AClickOnACheckBoxTicksItsLineAndSelectsNone) {
  list().CheckBoxes = true;
  fill(3);

  click(view->partsOf(1).check.center());

  EXPECT_TRUE(list().ListView1.line(1).Checked);
  EXPECT_EQ(list().ListIndex(), -1);

  click(view->partsOf(1).check.center());
  EXPECT_FALSE(list().ListView1.line(1).Checked);
}

TEST_F(LineListInputTest, TheSpaceBarTicksTheLineWithTheKeyboard) {
  list().CheckBoxes = true;
  fill(3);
  list().setListIndex(2);
  settle();

  press(Qt::Key_Space);

  EXPECT_TRUE(list().ListView1.line(2).Checked);
}

TEST_F(LineListInputTest, ARoutineOfAClickMayTakeTheWindowAway) {
  list().ItemClick = [this](std::size_t) { binder.reset(); };
  fill(3);
  const QPoint place = inWindow(textOf(1));

  QPointer<QWindow> handle = window->windowHandle();
  {
    const EventGate::Opening opening(events.gate());
    QTest::mouseClick(handle, Qt::LeftButton, {}, place);
  }

  EXPECT_EQ(list().ListView1.screen(), nullptr);
}

TEST_F(LineListInputTest, KeysReachTheRoutinesByTheirNumbers) {
  noteKeys();
  fill(1);

  press(Qt::Key_F5, Qt::ShiftModifier);
  EXPECT_THAT(log, ElementsAre("down 16 1", "down 116 1", "up 116 1", "up 16 0"));

  log.clear();
  atRest([&] { type("a"); });
  EXPECT_THAT(log, ElementsAre("down 65 0", "press 97", "up 65 0"));

  log.clear();
  press(Qt::Key_Delete, Qt::ControlModifier);
  EXPECT_THAT(log, testing::Contains("down 46 2"));
}

TEST_F(LineListInputTest, AKeyThatARoutineTakesMovesNothing) {
  fill(3);
  list().setListIndex(0);
  settle();
  list().KeyDown = [](std::int16_t& code, std::int16_t) { code = 0; };

  press(Qt::Key_Down);

  EXPECT_EQ(list().ListIndex(), 0);
}

TEST_F(LineListInputTest, ATypedLetterThatARoutineTakesFindsNothing) {
  fill(3);
  list().setListIndex(2);
  settle();
  list().KeyPress = [](std::int16_t& character) { character = 0; };

  atRest([&] { type("L"); });

  EXPECT_EQ(list().ListIndex(), 2);
}

TEST_F(LineListInputTest, ADisabledListTakesNothing) {
  fill(3);
  list().enabled = false;

  click(textOf(1));

  EXPECT_EQ(list().ListIndex(), -1);
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(LineListInputTest, TheMouseMarksALineWhereThatIsAskedFor) {
  list().HotTracking = true;
  fill(3);

  moveTo({20, 180});
  moveTo(textOf(1));
  settle();

  EXPECT_NE(pixels().pixelColor(1, view->visualRect(view->model()->index(1, 0)).top() + 2),
            view->palette().color(QPalette::Base));
  EXPECT_EQ(list().ListIndex(), -1);
}

TEST_F(LineListInputTest, TheMouseSelectsALineWhereThatIsAskedFor) {
  list().HoverSelection = true;
  fill(3);

  moveTo({20, 180});
  moveTo(textOf(2));

  EXPECT_EQ(list().ListIndex(), 2);
}

TEST_F(LineListInputTest, WhatTheUserDoesWaitsForTheGate) {
  fill(3);

  QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, inWindow(textOf(1)));
  EXPECT_EQ(list().ListIndex(), -1);

  atRest([] {});
  EXPECT_EQ(list().ListIndex(), 1);
}

}  // namespace
}  // namespace veltrin
