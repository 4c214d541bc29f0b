// SPDX-License-Identifier: GPL-3.0-or-later
// The report window: its size, which its user changes, and its keyboard.
#include <QAccessible>
#include <QCheckBox>
#include <QMenuBar>

#include "sysinfo/frmPrint.h"
#include "sysinfo/frmSysInfo.h"
#include "view_test.h"

namespace veltrin {
namespace {

using testing::Each;
using testing::ElementsAre;

class ReportWindow : public ViewTest {
 protected:
  void SetUp() override {
    ViewTest::SetUp();
    form = shown<frmSysInfo>();
  }

  // What the user does with the frame.
  void resizeByUser(int width, int height) {
    atRest([&] { window->resize(width, height); });
  }

  // Counts how often the form is told of another size. `answer` is what it does then.
  void countSizes(const std::function<void()>& answer = {}) {
    form->resize = [this, answer] {
      ++sizes;
      if (answer) answer();
    };
  }

  QSize sizeOfForm() const { return {form->width, form->height}; }

  void press(Qt::Key key) {
    atRest([&] { QTest::keyClick(window->windowHandle(), key); });
  }

  std::vector<int> ticks() const {
    std::vector<int> values;
    for (const CheckBox& box : form->Showme) values.push_back(box.value);
    return values;
  }

  // How far a control ends from the right and the lower edge.
  QSize roomBehind(const char* name) const {
    const QWidget* child = widget(name);
    const QPoint end = child->mapTo(window, QPoint(child->width(), child->height()));
    return {window->width() - end.x(), window->height() - end.y()};
  }

  std::shared_ptr<frmSysInfo> form;
  int sizes = 0;
};

TEST_F(ReportWindow, OpensInItsLeastSize) {
  EXPECT_EQ(window->size(), QSize(762, 448));
  EXPECT_EQ(sizeOfForm(), QSize(10890, 7330));
}

TEST_F(ReportWindow, CannotBeMadeSmaller) {
  resizeByUser(900, 600);

  resizeByUser(1, 1);

  EXPECT_EQ(window->size(), QSize(762, 448));
  EXPECT_EQ(sizeOfForm(), QSize(10890, 7330));
}

TEST_F(ReportWindow, ASizeThatTheUserGivesItReachesTheForm) {
  resizeByUser(1000, 600);

  EXPECT_EQ(sizeOfForm(), QSize(14460, 9610));
  EXPECT_EQ(window->size(), QSize(1000, 600));
}

TEST_F(ReportWindow, ItsListGrowsWithItAndItsColumnStaysAtTheEdge) {
  resizeByUser(1000, 600);

  EXPECT_EQ(widget("SYSView")->geometry(), QRect(12, 8, 815, 556));
  EXPECT_EQ(widget("Showme_13")->geometry(), QRect(838, 4, 150, 24));
  EXPECT_EQ(widget("Showme_0")->geometry(), QRect(838, 329, 150, 24));
  EXPECT_EQ(widget("Label1")->pos(), QPoint(838, 507));
  EXPECT_EQ(widget("Label2")->pos(), QPoint(886, 507));
  EXPECT_EQ(widget("Command1")->geometry(), QRect(838, 531, 150, 33));
}

TEST_F(ReportWindow, ItsMarginsAreEvenAtEachSize) {
  for (const QSize& size : {QSize(762, 448), QSize(803, 451), QSize(1400, 900)}) {
    resizeByUser(size.width(), size.height());

    EXPECT_EQ(roomBehind("Command1"), QSize(12, 12)) << size.width();
    EXPECT_EQ(roomBehind("SYSView").height(), 12) << size.width();
    EXPECT_EQ(widget("Command1")->x() - widget("SYSView")->geometry().right() - 1, 11);
  }
}

TEST_F(ReportWindow, OfTheSizesThatWaitForTheGateTheFormIsToldTheLastOne) {
  countSizes();
  for (const int width : {800, 850, 900}) window->resize(width, 500);
  EXPECT_EQ(sizeOfForm(), QSize(10890, 7330));

  atRest([] {});

  EXPECT_EQ(sizeOfForm(), QSize(12960, 8110));
  EXPECT_EQ(sizes, 1);
}

TEST_F(ReportWindow, ASizeThatTheProgramGivesItIsShownAndNotToldBack) {
  countSizes();

  form->width = 14460;
  form->height = 9610;
  atRest([] {});

  EXPECT_EQ(window->size(), QSize(1000, 600));
  EXPECT_EQ(sizes, 0);
}

TEST_F(ReportWindow, WhatTheFormMakesOfASizeIsShownAndNotToldBack) {
  countSizes([this] { form->width = 14460; });

  resizeByUser(900, 500);
  atRest([] {});

  EXPECT_EQ(window->size(), QSize(1000, 500));
  EXPECT_EQ(sizeOfForm(), QSize(14460, 8110));
  EXPECT_EQ(sizes, 1);
}

// As a window manager does that gives each window a place of its own.
TEST_F(ReportWindow, ASystemThatInsistsOnASizeIsNotAskedForEver) {
  countSizes([this] { form->width = 14460; });
  window->setMaximumSize(900, 500);

  for (int time = 0; time < 5; ++time) {
    resizeByUser(900, 500);
    QResizeEvent again(window->size(), window->size());
    atRest([&] { QCoreApplication::sendEvent(window, &again); });
  }

  EXPECT_EQ(window->size(), QSize(900, 500));
  EXPECT_EQ(sizes, 1);
}

// Its least size goes beyond a screen that is smaller.
TEST_F(ReportWindow, FillsTheScreenAndComesBack) {
  atRest([&] { window->showMaximized(); });
  const QSize screen = window->size();
  ASSERT_NE(screen, QSize(762, 448));
  const QSize page = screen.expandedTo({762, 448});
  EXPECT_EQ(sizeOfForm(), QSize(page.width() * 15 - 540, page.height() * 15 + 610));
  EXPECT_EQ(roomBehind("Command1"), QSize(12, 12) + screen - page);

  atRest([&] { window->showNormal(); });

  EXPECT_EQ(sizeOfForm(), QSize(10890, 7330));
}

TEST_F(ReportWindow, AFormThatChangesItsSizeLeavesAWindowThatFillsTheScreen) {
  atRest([&] { window->showMaximized(); });
  const QSize screen = window->size();

  form->width = 12960;

  EXPECT_TRUE(window->isMaximized());
  EXPECT_EQ(window->size(), screen);
}

TEST_F(ReportWindow, ASizeThatComesBehindItsEndTellsNobody) {
  countSizes();
  window->resize(900, 500);
  program.unload(*form);

  atRest([] {});

  EXPECT_EQ(sizes, 0);
}

TEST_F(ReportWindow, TheKeyTabGoesFromTheListDownTheColumn) {
  std::vector<std::string> stops;
  widget("SYSView")->setFocus();
  atRest([&] {
    do {
      stops.push_back(fromQt(QApplication::focusWidget()->objectName()));
      QTest::keyClick(window->windowHandle(), Qt::Key_Tab);
    } while (!widget("SYSView")->hasFocus() && stops.size() < 30);
  });

  EXPECT_THAT(stops,
              ElementsAre("SYSView", "Showme_13", "Showme_12", "Showme_11", "Showme_10", "Showme_9",
                          "Showme_8", "Showme_7", "Showme_6", "Showme_5", "Showme_4", "Showme_3",
                          "Showme_2", "Showme_1", "Showme_0", "Label1", "Label2", "Command1"));
}

TEST_F(ReportWindow, TheBoxesStandInTheOrderOfTheKeyboard) {
  for (int index = 13; index > 0; --index) {
    const QWidget* upper = widget(("Showme_" + std::to_string(index)).c_str());
    const QWidget* lower = widget(("Showme_" + std::to_string(index - 1)).c_str());
    EXPECT_EQ(lower->y() - upper->y(), 25) << index;
  }
}

TEST_F(ReportWindow, AllAndNoneAreReachedAndPressedByTheKeyboard) {
  widget("Showme_0")->setFocus();
  press(Qt::Key_Tab);
  press(Qt::Key_Space);
  EXPECT_THAT(ticks(), Each(kChecked));
  EXPECT_TRUE(widget<QCheckBox>("Showme_13")->isChecked());

  press(Qt::Key_Tab);
  press(Qt::Key_Space);
  EXPECT_THAT(ticks(), Each(kUnchecked));
  EXPECT_FALSE(widget<QCheckBox>("Showme_13")->isChecked());
}

TEST_F(ReportWindow, TheKeyEnterInABoxGetsTheReport) {
  int runs = 0;
  form->Command1.click = [&] { ++runs; };
  widget("Showme_7")->setFocus();

  press(Qt::Key_Return);

  EXPECT_EQ(runs, 1);
}

TEST_F(ReportWindow, APointerInTheShapeOfAnHourglassStandsOverAllOfIt) {
  form->mousePointer = MousePointer::Hourglass;
  EXPECT_EQ(window->cursor().shape(), Qt::WaitCursor);
  EXPECT_EQ(widget("Label1")->cursor().shape(), Qt::WaitCursor);

  form->mousePointer = MousePointer::Default;
  EXPECT_EQ(widget("Label1")->cursor().shape(), Qt::PointingHandCursor);
}

TEST_F(ReportWindow, ItsMenuBearsTheTextsOfTheForm) {
  std::vector<std::string> texts;
  const auto* bar = widget<QMenuBar>("decorMenuBar");
  ASSERT_EQ(bar->actions().size(), 1);
  const QAction* options = bar->actions().front();
  texts.push_back(fromQt(options->text()));
  for (const QAction* entry : options->menu()->actions()) texts.push_back(fromQt(entry->text()));

  EXPECT_THAT(texts, ElementsAre("Options", "Save to Files", "Print", "Exit"));
}

TEST_F(ReportWindow, TheKeyboardOpensTheMenuAndChooses) {
  press(Qt::Key_Alt);
  press(Qt::Key_Down);
  auto* menu = QApplication::activePopupWidget();
  ASSERT_NE(menu, nullptr);
  QPointer<QWidget> shownWindow = window;

  atRest([&] {
    QTest::keyClick(menu, Qt::Key_Up);
    QTest::keyClick(menu, Qt::Key_Return);
  });

  EXPECT_FALSE(form->isLoaded());
}

TEST_F(ReportWindow, AScreenReaderHearsWhatTheListIs) {
  QAccessibleInterface* list = QAccessible::queryAccessibleInterface(widget("SYSView"));

  EXPECT_EQ(list->text(QAccessible::Name), "System report");
}

TEST_F(ReportWindow, ItsPlainTextIsKeptOutOfSight) { EXPECT_FALSE(widget("Text1")->isVisible()); }

}  // namespace
}  // namespace veltrin
