// SPDX-License-Identifier: GPL-3.0-or-later
// What the user does to each kind of control reaches the model, and what the program
// does to the model is shown and never comes back.
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>

#include "view/animation_view.h"
#include "view_test.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ControlsTest : public ViewTest {
 protected:
  void SetUp() override {
    ViewTest::SetUp();
    form = shown<pingtester>();
  }

  std::shared_ptr<pingtester> form;
  std::vector<std::string> log;
};

TEST_F(ControlsTest, TypedTextReachesTheTextBox) {
  form->url[1].text = "";

  atRest([&] {
    clickAt(widget("url_1"));
    type("192.0.2.7");
  });

  EXPECT_EQ(form->url[1].text.get(), "192.0.2.7");
}

TEST_F(ControlsTest, EveryTypedLetterIsOneChange) {
  form->url[1].text = "";
  form->url[1].change = [&] { log.push_back(form->url[1].text); };

  atRest([&] {
    clickAt(widget("url_1"));
    type("abc");
  });

  EXPECT_THAT(log, ElementsAre("a", "ab", "abc"));
}

TEST_F(ControlsTest, ATextSetByTheProgramIsShownAndIsNoTyping) {
  form->url[0].change = [&] { log.push_back(form->url[0].text); };

  form->url[0].text = "192.0.2.9";
  atRest([] {});

  EXPECT_EQ(widget<QLineEdit>("url_0")->text(), "192.0.2.9");
  EXPECT_THAT(log, ElementsAre("192.0.2.9"));
}

TEST_F(ControlsTest, ADoubleClickEmptiesADestination) {
  QLineEdit* line = widget<QLineEdit>("url_3");

  atRest([&] {
    QTest::mouseDClick(window->windowHandle(), Qt::LeftButton, {},
                       line->mapTo(window, line->rect().center()));
  });

  EXPECT_EQ(form->url[3].text.get(), "");
  EXPECT_EQ(line->text(), "");
}

TEST_F(ControlsTest, AClickReachesTheButton) {
  form->Command1.click = [&] { log.emplace_back("click"); };

  atRest([&] { clickAt(widget("Command1")); });

  EXPECT_THAT(log, ElementsAre("click"));
}

TEST_F(ControlsTest, TheSpaceBarPressesTheButtonThatHasTheKeyboard) {
  form->Command4.click = [&] { log.emplace_back("quit"); };
  widget("Command4")->setFocus();

  atRest([&] { QTest::keyClick(window->windowHandle(), Qt::Key_Space); });

  EXPECT_THAT(log, ElementsAre("quit"));
}

TEST_F(ControlsTest, EnterPressesTheButtonThatHasTheKeyboard) {
  form->Command1.click = [&] { log.emplace_back("start"); };
  form->Command4.click = [&] { log.emplace_back("quit"); };
  widget("Command4")->setFocus();

  atRest([&] { QTest::keyClick(window->windowHandle(), Qt::Key_Return); });

  EXPECT_THAT(log, ElementsAre("quit"));
}

TEST_F(ControlsTest, EnterInADestinationPressesTheDefaultButton) {
  form->Command1.click = [&] { log.emplace_back("start"); };
  widget("url_0")->setFocus();

  atRest([&] { QTest::keyClick(window->windowHandle(), Qt::Key_Return); });

  EXPECT_THAT(log, ElementsAre("start"));
}

TEST_F(ControlsTest, EscapeDoesNothing) {
  atRest([&] { QTest::keyClick(window->windowHandle(), Qt::Key_Escape); });

  EXPECT_TRUE(window->isVisible());
  EXPECT_TRUE(form->isLoaded());
}

TEST_F(ControlsTest, AButtonThatTheProgramDisablesCannotBeClicked) {
  form->Command1.click = [&] { log.emplace_back("click"); };
  form->Command1.enabled = false;

  atRest([&] { clickAt(widget("Command1")); });

  EXPECT_THAT(log, IsEmpty());
}

TEST_F(ControlsTest, AButtonHasTheColourThatTheModelGivesIt) {
  form->Command1.backColour = Colour{1, 2, 3};

  EXPECT_EQ(widget("Command1")->palette().color(QPalette::Button), QColor(1, 2, 3));
}

TEST_F(ControlsTest, ANumberOfTestsMayBeTypedThatTheListDoesNotHave) {
  auto* box = widget<QComboBox>("Combo1");
  box->lineEdit()->selectAll();
  box->setFocus();

  atRest([&] { type("7"); });

  EXPECT_EQ(form->Combo1.text.get(), "7");
  EXPECT_EQ(box->currentText(), "7");
  EXPECT_EQ(box->count(), 9);
}

TEST_F(ControlsTest, WhatIsTypedIntoAComboBoxIsNeverCompletedFromItsList) {
  auto* box = widget<QComboBox>("Combo2");
  box->lineEdit()->selectAll();
  box->setFocus();

  atRest([&] {
    type("51");
    QTest::keyClick(window->windowHandle(), Qt::Key_Tab);
  });

  EXPECT_EQ(form->Combo2.text.get(), "51");
}

TEST_F(ControlsTest, ATextPickedFromTheListReachesTheComboBox) {
  auto* box = widget<QComboBox>("Combo1");
  box->setFocus();

  atRest([&] { QTest::keyClick(window->windowHandle(), Qt::Key_Down); });

  EXPECT_EQ(form->Combo1.text.get(), "50");
}

TEST_F(ControlsTest, AComboBoxTellsWhenTheKeyboardLeavesIt) {
  form->Combo1.lostFocus = [&] { log.emplace_back("left"); };
  widget("Combo1")->setFocus();

  atRest([&] { QTest::keyClick(window->windowHandle(), Qt::Key_Tab); });

  EXPECT_THAT(log, ElementsAre("left"));
}

TEST_F(ControlsTest, ATextThatTheProgramSetsInAComboBoxIsShownAndIsNoTyping) {
  form->Combo1.change = [&] { log.push_back(form->Combo1.text); };

  form->Combo1.text = "33";
  atRest([] {});

  EXPECT_EQ(widget<QComboBox>("Combo1")->currentText(), "33");
  EXPECT_THAT(log, ElementsAre("33"));
}

TEST_F(ControlsTest, AListShowsWhatTheModelHolds) {
  form->buff[0].add("12");
  form->buff[0].add("14");

  const QAbstractItemModel* rows = widget<QListView>("buff_0")->model();
  EXPECT_EQ(rows->rowCount(), 2);
  EXPECT_EQ(rows->index(1, 0).data().toString(), "14");
}

TEST_F(ControlsTest, AListThatIsEmptiedAndFilledAnewShowsTheNewRows) {
  form->buff[0].add("12");
  form->buff[0].clear();
  form->buff[0].add("99999");

  const QAbstractItemModel* rows = widget<QListView>("buff_0")->model();
  EXPECT_EQ(rows->rowCount(), 1);
  EXPECT_EQ(rows->index(0, 0).data().toString(), "99999");
}

TEST_F(ControlsTest, ALongTextIsAppendedToWithOneLineForEachLine) {
  auto* page = widget<QPlainTextEdit>("data1");
  form->data1.visible = true;

  form->data1.text = "first\r\n";
  form->data1.text += "second\r\nthird";

  EXPECT_EQ(page->toPlainText(), "first\nsecond\nthird");
  EXPECT_TRUE(page->textCursor().atEnd());
}

TEST_F(ControlsTest, ALineBreakThatIsCutBetweenTwoPiecesIsOne) {
  form->data1.visible = true;
  form->data1.text = "first\r";
  form->data1.text += "\nsecond";

  EXPECT_EQ(widget<QPlainTextEdit>("data1")->toPlainText(), "first\nsecond");
}

TEST_F(ControlsTest, ALetterThatIsCutBetweenTwoPiecesIsWhole) {
  form->data1.visible = true;
  form->data1.text = "caf\xC3";
  form->data1.text += "\xA9";

  EXPECT_EQ(widget<QPlainTextEdit>("data1")->toPlainText(), QString::fromUtf8("caf\xC3\xA9"));
}

TEST_F(ControlsTest, AppendingLeavesTheBlocksBeforeItUntouched) {
  auto* page = widget<QPlainTextEdit>("data1");
  form->data1.visible = true;
  form->data1.text = "first\r\nsecond\r\n";
  int lowest = -1;
  QObject::connect(page->document(), &QTextDocument::contentsChange, page,
                   [&](int position, int, int) { lowest = position; });

  form->data1.text += "third";

  EXPECT_EQ(lowest, 13);
}

TEST_F(ControlsTest, TypingInALongTextReachesTheModelWithTheProgramsLineBreaks) {
  form->data1.visible = true;
  form->data1.text = "one";
  auto* page = widget<QPlainTextEdit>("data1");
  page->setFocus();

  atRest([&] {
    QTest::keyClick(window->windowHandle(), Qt::Key_Return);
    type("two");
  });

  EXPECT_EQ(form->data1.text.get(), "one\r\ntwo");
  EXPECT_EQ(page->toPlainText(), "one\ntwo");
}

TEST_F(ControlsTest, TheProgramGoesOnBehindWhatTheUserTyped) {
  form->data1.visible = true;
  form->data1.text = "one";
  auto* page = widget<QPlainTextEdit>("data1");
  page->setFocus();
  atRest([&] { type("+"); });

  form->data1.text += "two";

  EXPECT_EQ(page->toPlainText(), "one+two");
}

TEST_F(ControlsTest, AClipPlaysWhileTheTestRuns) {
  auto* view = dynamic_cast<AnimationView*>(widget("playit"));

  atRest([&] { clickAt(widget("Command1")); });
  events.pumpUntil([&] { return view->frame() > 0; });

  EXPECT_EQ(view->frameCount(), 24U);
  EXPECT_TRUE(view->isVisible());
}

TEST_F(ControlsTest, NothingMovesWhenTheClipComesAndGoes) {
  const QPoint before = widget("Combo1")->pos();

  atRest([&] { clickAt(widget("Command1")); });

  EXPECT_EQ(widget("Combo1")->pos(), before);
}

TEST_F(ControlsTest, TheHourglassStandsOverTextsToo) {
  form->mousePointer = MousePointer::Hourglass;

  EXPECT_EQ(window->cursor().shape(), Qt::WaitCursor);
  EXPECT_EQ(widget("url_0")->cursor().shape(), Qt::WaitCursor);
}

TEST_F(ControlsTest, BehindTheHourglassEveryWidgetHasItsOwnPointerAgain) {
  form->mousePointer = MousePointer::Hourglass;
  form->mousePointer = MousePointer::Default;

  EXPECT_EQ(window->cursor().shape(), Qt::ArrowCursor);
  EXPECT_EQ(widget("url_0")->cursor().shape(), Qt::IBeamCursor);
}

TEST_F(ControlsTest, ATipWithMarkupInItIsShownToTheLetter) {
  form->Command1.toolTip = "a <b> & c";

  EXPECT_EQ(widget("Command1")->toolTip(), "<p>a &lt;b&gt; &amp; c</p>");
}

TEST_F(ControlsTest, ALabelShowsMarkupToTheLetter) {
  form->Label9.caption = "<b>x</b>";

  EXPECT_EQ(widget<QLabel>("Label9")->text(), "<b>x</b>");
  EXPECT_EQ(widget<QLabel>("Label9")->textFormat(), Qt::PlainText);
}

TEST_F(ControlsTest, AChartThatIsShownMakesTheWindowHighEnough) {
  const int before = window->height();

  form->PingChart.visible = true;
  atRest([] {});

  EXPECT_GE(window->height(), before + 100);
}

}  // namespace
}  // namespace veltrin
