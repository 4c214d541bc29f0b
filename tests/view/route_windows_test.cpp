// SPDX-License-Identifier: GPL-3.0-or-later
// The Trace Route and the InDepth analysis under real input.
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>

#include "route/indepth.h"
#include "route/trace.h"
#include "view_test.h"

namespace veltrin {
namespace {

using testing::SizeIs;

class TraceView : public ViewTest {
 protected:
  void SetUp() override {
    ViewTest::SetUp();
    form = shown<trace>();
    text = widget<QPlainTextEdit>("txtOutputs");
  }

  // Opens the pull-down and presses a key in it.
  void inMenu(const std::vector<Qt::Key>& keys) {
    atRest([&] {
      QTest::keyClick(window->windowHandle(), Qt::Key_D, Qt::AltModifier);
      for (const Qt::Key key : keys) {
        QWidget* menu = QApplication::activePopupWidget();
        ASSERT_NE(menu, nullptr);
        QTest::keyClick(menu->windowHandle(), key);
      }
    });
  }

  // Prints lines as a tool does.
  void print(int first, int last) {
    for (int number = first; number <= last; ++number) {
      form->txtOutputs.text += "line " + std::to_string(number) + "\r\n";
      events.DoEvents();
    }
  }

  bool isEndInView() const {
    const QScrollBar* bar = text->verticalScrollBar();
    return bar->value() == bar->maximum();
  }

  std::shared_ptr<trace> form;
  QPlainTextEdit* text = nullptr;
};

TEST_F(TraceView, TheFirstEntryOfTheMenuEmptiesTheDestinations) {
  inMenu({Qt::Key_Return});

  EXPECT_EQ(form->trace1.text.get(), "");
  EXPECT_EQ(widget<QLineEdit>("trace5")->text(), "");
}

TEST_F(TraceView, TheSecondEntryOfTheMenuBringsTheDefaultsBack) {
  form->trace1.text = "192.0.2.1";

  inMenu({Qt::Key_Down, Qt::Key_Return});

  EXPECT_EQ(form->trace1.text.get(), "www.wikipedia.org");
}

TEST_F(TraceView, AClickChoosesAnEntryOfTheMenu) {
  atRest([&] {
    QTest::keyClick(window->windowHandle(), Qt::Key_D, Qt::AltModifier);
    auto* menu = window->findChild<QMenu*>("decorMenu");
    QTest::mouseClick(menu->windowHandle(), Qt::LeftButton, {},
                      menu->actionGeometry(menu->actions().front()).center());
  });

  EXPECT_EQ(form->trace1.text.get(), "");
}

TEST_F(TraceView, ADisabledEntryOfTheMenuCannotBeChosen) {
  form->menuclear.enabled = false;

  atRest([&] { window->findChild<QAction*>("menuclear")->trigger(); });

  EXPECT_EQ(form->trace1.text.get(), "www.wikipedia.org");
}

TEST_F(TraceView, AnEntryOfTheMenuHasTheCaptionOfItsModel) {
  form->menuclear.caption = "Empty";

  EXPECT_EQ(window->findChild<QAction*>("menuclear")->text(), "Empty");
}

TEST_F(TraceView, AnEntryThatIsNotVisibleIsNotInTheMenu) {
  form->menudef.visible = false;

  EXPECT_FALSE(window->findChild<QAction*>("menudef")->isVisible());
}

TEST_F(TraceView, TheMenuBarAndThePullDownHaveTheColourOfTheButtons) {
  const QColor colour(0xBD, 0xB7, 0x95);

  EXPECT_EQ(window->findChild<QMenuBar*>()->palette().color(QPalette::Window), colour);
  EXPECT_EQ(window->findChild<QMenu*>("decorMenu")->palette().color(QPalette::Window), colour);
}

TEST_F(TraceView, EveryLetterOfTheOutputIsEquallyWide) {
  const QFontMetrics letters(text->font());

  EXPECT_EQ(letters.horizontalAdvance("iiiiiiiiii"), letters.horizontalAdvance("MMMMMMMMMM"));
}

TEST_F(TraceView, TheNewestTextStaysInView) {
  print(1, 200);

  EXPECT_TRUE(isEndInView());
  EXPECT_GT(text->verticalScrollBar()->value(), 0);
}

TEST_F(TraceView, WhoScrollsUpDuringARunIsLeftThere) {
  print(1, 200);
  text->verticalScrollBar()->setValue(20);

  print(201, 300);

  EXPECT_EQ(text->verticalScrollBar()->value(), 20);
}

TEST_F(TraceView, WhoScrollsBackToTheEndSeesTheNewestTextAgain) {
  print(1, 200);
  text->verticalScrollBar()->setValue(20);
  print(201, 210);
  text->verticalScrollBar()->setValue(text->verticalScrollBar()->maximum());

  print(211, 300);

  EXPECT_TRUE(isEndInView());
}

TEST_F(TraceView, ASelectionStaysWhileTheTextGrows) {
  print(1, 200);
  QTextCursor selection(text->document()->findBlockByNumber(150));
  selection.select(QTextCursor::LineUnderCursor);
  text->setTextCursor(selection);

  print(201, 300);

  EXPECT_EQ(text->textCursor().selectedText(), "line 151");
}

TEST_F(TraceView, ASelectionAtTheEndDoesNotGrowWithTheText) {
  print(1, 3);
  text->selectAll();

  print(4, 5);

  EXPECT_EQ(text->textCursor().selectedText(), QString("line 1\u2029line 2\u2029line 3\u2029"));
}

TEST_F(TraceView, ATextThatIsReplacedIsFollowedFromItsStart) {
  print(1, 200);
  text->verticalScrollBar()->setValue(20);

  form->txtOutputs.text = "";
  print(1, 100);

  EXPECT_TRUE(isEndInView());
}

TEST_F(TraceView, TheCaretStandsBehindTheLastLetter) {
  print(1, 3);

  EXPECT_TRUE(text->textCursor().atEnd());
}

class InDepthView : public ViewTest {
 protected:
  void SetUp() override {
    ViewTest::SetUp();
    form = shown<indepth>();
  }

  // Moves the mouse onto a widget.
  void hover(const QWidget* target) {
    atRest([&] {
      QTest::mouseMove(window->windowHandle(), target->mapTo(window, target->rect().center()));
    });
  }

  QCheckBox* box(const char* name) const { return widget<QCheckBox>(name); }

  std::shared_ptr<indepth> form;
};

TEST_F(InDepthView, AClickTicksABox) {
  atRest([&] { QTest::mouseClick(box("Check1"), Qt::LeftButton, {}, QPoint(8, 14)); });

  EXPECT_EQ(form->Check1.value.get(), kChecked);
  EXPECT_TRUE(box("Check1")->isChecked());
}

TEST_F(InDepthView, ASecondClickTakesTheTickAway) {
  form->Check1.value = kChecked;

  atRest([&] { QTest::mouseClick(box("Check1"), Qt::LeftButton, {}, QPoint(8, 14)); });

  EXPECT_EQ(form->Check1.value.get(), kUnchecked);
  EXPECT_FALSE(box("Check1")->isChecked());
}

TEST_F(InDepthView, TheSpaceBarTicksTheBoxThatHasTheKeyboard) {
  box("Check2")->setFocus();

  atRest([&] { QTest::keyClick(window->windowHandle(), Qt::Key_Space); });

  EXPECT_EQ(form->Check2.value.get(), kChecked);
}

TEST_F(InDepthView, ATickOfTheProgramsIsShownAndIsNoClick) {
  int clicks = 0;
  form->Check3.click = [&] { ++clicks; };

  form->Check3.value = kChecked;
  atRest([] {});

  EXPECT_TRUE(box("Check3")->isChecked());
  EXPECT_EQ(clicks, 0);
}

TEST_F(InDepthView, ATickThatTheProgramTakesBackAtOnceIsNotShown) {
  form->Check4.click = [&] { form->Check4.value = kUnchecked; };

  atRest([&] { QTest::mouseClick(box("Check4"), Qt::LeftButton, {}, QPoint(8, 14)); });

  EXPECT_FALSE(box("Check4")->isChecked());
}

TEST_F(InDepthView, ATickThatTheModelRefusesIsNotShown) {
  form->Check5.enabled = false;
  box("Check5")->setEnabled(true);

  atRest([&] { QTest::mouseClick(box("Check5"), Qt::LeftButton, {}, QPoint(8, 14)); });

  EXPECT_EQ(form->Check5.value.get(), kUnchecked);
  EXPECT_FALSE(box("Check5")->isChecked());
}

TEST_F(InDepthView, TheMouseOverABoxExplainsIt) {
  hover(widget("Check5"));

  EXPECT_EQ(widget<QPlainTextEdit>("info")->toPlainText(),
            "Force the use of Internet Protocol version 4 (IPv4)");
}

TEST_F(InDepthView, TheMouseOverTheTextOfAListExplainsIt) {
  hover(widget<QComboBox>("text3")->lineEdit());

  EXPECT_EQ(form->info.text.get(),
            "Number of Test Performed on each HOP/Router in path, Default is 100");
}

TEST_F(InDepthView, TheMouseOverACaptionExplainsItsList) {
  hover(widget("Label3"));

  EXPECT_EQ(form->info.text.get(),
            "Number of milliseconds to wait between consecutive test, setting lower than 200 can "
            "cause failures but may be needed for certain problems.  Default is 250");
}

TEST_F(InDepthView, TheHelpMayBeTypedIntoAndTheKeyTabLeavesIt) {
  widget("info")->setFocus();

  atRest([&] {
    type("mine");
    QTest::keyClick(window->windowHandle(), Qt::Key_Tab);
  });

  EXPECT_EQ(form->info.text.get(), "mine");
  EXPECT_FALSE(widget("info")->hasFocus());
}

TEST_F(InDepthView, BesideTheControlsTheHelpNamesTheProgram) {
  atRest([&] { QTest::mouseMove(window->windowHandle(), QPoint(4, 4)); });

  EXPECT_EQ(form->info.text.get(), "Veltrin");
}

TEST_F(InDepthView, BetweenTheOptionsOnTheirPanelTheHelpNamesTheProgram) {
  atRest([&] {
    QTest::mouseMove(window->windowHandle(), widget("decorOptions")->mapTo(window, QPoint(4, 4)));
  });

  EXPECT_EQ(form->info.text.get(), "Veltrin");
}

TEST_F(InDepthView, AClickOnTheLinkOpensTheHelp) {
  atRest([&] { clickAt(widget("Label4")); });

  EXPECT_THAT(shell.executions, SizeIs(1));
}

TEST_F(InDepthView, EnterOpensTheHelpFromTheLinkThatHasTheKeyboard) {
  widget("Label4")->setFocus();

  atRest([&] { QTest::keyClick(window->windowHandle(), Qt::Key_Return); });

  EXPECT_THAT(shell.executions, SizeIs(1));
}

TEST_F(InDepthView, TheHelpKeepsItsPlaceWhileTheTestRuns) {
  const QPoint before = widget("dosbox")->pos();

  form->info.visible = false;
  form->Command5.visible = false;
  form->playit.open(program.programFolder + "\\files\\ping.avi");
  atRest([] {});

  EXPECT_EQ(widget("dosbox")->pos(), before);
}

// The clip stands still in the place of the help when a test is over.
TEST_F(InDepthView, TheHelpCoversTheClipThatHasStopped) {
  const auto seen = [&] {
    atRest([] {});
    return widget("decorHelp")->grab().toImage();
  };
  form->info.text = program.texts.TipPriorityTag;
  const QImage before = seen();

  form->playit.open(program.programFolder + "\\files\\ping.avi");
  form->playit.stop();
  EXPECT_EQ(seen(), before);

  form->info.visible = false;
  const QImage clip = seen();
  form->playit.visible = false;
  EXPECT_NE(seen(), clip);
}

}  // namespace
}  // namespace veltrin
