// SPDX-License-Identifier: GPL-3.0-or-later
// The lines of a list box: their texts edited in place.
#include "line_list_fixture.h"

namespace veltrin {
namespace {

using testing::ElementsAre;

class LineListEditTest : public LineListTest {
 protected:
  // Edits the selected line, as F2 begins it, into another text.
  void editInto(const char* text) {
    press(Qt::Key_F2);
    atRest([&] { type(text); });
  }

  std::vector<std::string> log;
};

TEST_F(LineListEditTest, F2EditsTheLineInItsPlaceAndEnterEndsThat) {
  fill(2);
  list().setListIndex(1);
  settle();

  editInto("Another");
  EXPECT_EQ(list().List(1), "Line 1");
  press(Qt::Key_Return);

  EXPECT_EQ(list().List(1), "Another");
}

TEST_F(LineListEditTest, EscapeCancelsTheEdit) {
  fill(1);
  list().setListIndex(0);
  settle();

  editInto("Another");
  press(Qt::Key_Escape);
  settle();

  EXPECT_EQ(list().List(0), "Line 0");
  EXPECT_EQ(editor(), nullptr);
}

TEST_F(LineListEditTest, ARoutineMayCancelTheEdit) {
  list().AfterLabelEdit = [this](bool& cancel, const std::string& text) {
    log.push_back(text);
    cancel = true;
  };
  fill(1);
  list().setListIndex(0);
  settle();

  editInto("Another");
  press(Qt::Key_Return);
  settle();

  EXPECT_THAT(log, ElementsAre("Another"));
  EXPECT_EQ(list().List(0), "Line 0");
  EXPECT_EQ(rowText(0), "Line 0");
}

TEST_F(LineListEditTest, AClickOnTheSelectedLineBeginsTheEdit) {
  fill(2);
  click(textOf(1));
  EXPECT_EQ(editor(), nullptr);
  QTest::qWait(QApplication::doubleClickInterval() + 50);

  click(textOf(1));

  EXPECT_TRUE(QTest::qWaitFor([&] { return editor() != nullptr; }));
}

TEST_F(LineListEditTest, OnlyACallEditsALineWhereClicksAreNotMeantTo) {
  list().LabelEdit = kEditByCallOnly;
  fill(1);
  list().setListIndex(0);
  settle();

  press(Qt::Key_F2);
  EXPECT_EQ(editor(), nullptr);

  atRest([&] { list().StartEdit(); });
  EXPECT_NE(editor(), nullptr);
}

TEST_F(LineListEditTest, TheEditStandsWhereTheTextOfTheLineIs) {
  list().setImageList(&form->ImageList1);
  fill(3);
  list().setListIndex(1);
  settle();

  press(Qt::Key_F2);

  ASSERT_NE(editor(), nullptr);
  EXPECT_TRUE(editor()->geometry().contains(view->partsOf(1).text));
  EXPECT_FALSE(editor()->geometry().intersects(view->partsOf(1).picture));
}

TEST_F(LineListEditTest, LinesThatComeMeanwhileLeaveTheEditAlone) {
  fill(1);
  list().setListIndex(0);
  settle();

  editInto("Another");
  list().AddItem("Late");
  list().setList(1, "Later");
  settle();
  press(Qt::Key_Return);

  EXPECT_EQ(list().List(0), "Another");
  EXPECT_EQ(list().List(1), "Later");
}

TEST_F(LineListEditTest, AnEditOfALineThatHasGoneIsVoid) {
  fill(2);
  list().setListIndex(0);
  settle();

  editInto("Another");
  list().Clear();
  list().AddItem("New");
  settle();

  EXPECT_EQ(editor(), nullptr);
  EXPECT_EQ(list().List(0), "New");
}

TEST_F(LineListEditTest, AnEditOfALineThatIsRemovedDoesNotGoToTheNextOne) {
  fill(3);
  list().setListIndex(0);
  settle();
  const std::string next = list().List(1);

  editInto("Another");
  list().RemoveItem(0);
  settle();

  EXPECT_EQ(list().List(0), next);
}

TEST_F(LineListEditTest, AnEditDuringWhichTheLinesAreSortedIsVoid) {
  list().AddItem("b");
  list().AddItem("a");
  list().setListIndex(0);
  settle();

  editInto("Another");
  list().Sorted = true;
  QTest::keyClick(editor(), Qt::Key_Return);
  settle();

  EXPECT_EQ(list().List(0), "a");
  EXPECT_EQ(list().List(1), "b");
}

TEST_F(LineListEditTest, TabEndsAnEditAndBeginsNoOther) {
  fill(3);
  list().setListIndex(0);
  settle();

  editInto("Another");
  QTest::keyClick(editor(), Qt::Key_Tab);
  settle();

  EXPECT_EQ(editor(), nullptr);
  EXPECT_EQ(list().List(0), "Another");
  EXPECT_EQ(list().ListIndex(), 0);
}

TEST_F(LineListEditTest, ARoutineOfAnEditMayEmptyTheList) {
  list().AfterLabelEdit = [this](bool&, const std::string&) { list().Clear(); };
  fill(3);
  list().setListIndex(0);
  settle();

  editInto("Another");
  press(Qt::Key_Return);
  settle();

  EXPECT_EQ(rows(), 0);
}

}  // namespace
}  // namespace veltrin
