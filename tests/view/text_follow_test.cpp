// SPDX-License-Identifier: GPL-3.0-or-later
// What of a growing text is in view while the user works in it.
#include <QScrollBar>
#include <QTextBlock>

#include "text_page_fixture.h"

namespace veltrin {
namespace {

using TextFollowTest = TextPageTest;

TEST_F(TextFollowTest, WhoTypesInTheMiddleStaysThereWhileTextArrives) {
  for (int line = 0; line < 200; ++line) print("line\r\n");
  caretTo(page->document()->findBlockByNumber(195).position());

  atRest([&] { type("a"); });
  print("more\r\nmore\r\nmore\r\n");
  atRest([&] { type("b"); });
  print("more\r\n");

  EXPECT_EQ(page->textCursor().blockNumber(), 195);
  EXPECT_EQ(fromQt(page->textCursor().block().text()), "abline");
}

TEST_F(TextFollowTest, TheViewStaysWhereTheUserTypes) {
  for (int line = 0; line < 200; ++line) print("line\r\n");
  caretTo(page->document()->findBlockByNumber(195).position());
  const int place = page->verticalScrollBar()->value();

  for (int line = 0; line < 20; ++line) print("more\r\n");

  EXPECT_EQ(page->verticalScrollBar()->value(), place);
}

TEST_F(TextFollowTest, WhoHasClickedIntoAShortTextAndGoneElsewhereFollowsTheNewest) {
  print("an introduction\r\n");
  caretTo(3);
  widget<QWidget>("startit")->setFocus();

  for (int line = 0; line < 200; ++line) print("more\r\n");

  EXPECT_EQ(page->verticalScrollBar()->value(), page->verticalScrollBar()->maximum());
}

TEST_F(TextFollowTest, AWindowThatComesBackIntoViewLeavesThePlaceThatWasScrolledTo) {
  for (int line = 0; line < 200; ++line) print("line\r\n");
  page->verticalScrollBar()->triggerAction(QAbstractSlider::SliderToMinimum);
  const int caret = page->textCursor().position();

  window->hide();
  window->show();
  events.DoEvents();

  EXPECT_EQ(page->verticalScrollBar()->value(), 0);
  EXPECT_EQ(page->textCursor().position(), caret);
}

TEST_F(TextFollowTest, WhoScrollsToTheEndAfterTypingFollowsItAgain) {
  for (int line = 0; line < 200; ++line) print("line\r\n");
  caretTo(0);
  page->verticalScrollBar()->triggerAction(QAbstractSlider::SliderToMaximum);

  for (int line = 0; line < 20; ++line) print("more\r\n");

  EXPECT_EQ(page->verticalScrollBar()->value(), page->verticalScrollBar()->maximum());
}

TEST_F(TextFollowTest, WhoTypesAtTheEndKeepsItInView) {
  for (int line = 0; line < 200; ++line) print("line\r\n");

  atRest([&] { type("note"); });
  for (int line = 0; line < 20; ++line) print("more\r\n");

  EXPECT_EQ(page->verticalScrollBar()->value(), page->verticalScrollBar()->maximum());
  EXPECT_TRUE(page->textCursor().atEnd());
}

}  // namespace
}  // namespace veltrin
