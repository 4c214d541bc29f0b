// SPDX-License-Identifier: GPL-3.0-or-later
// A text of many lines that the program hides and shows again.
#include <QScrollBar>

#include "text_page_fixture.h"

namespace veltrin {
namespace {

class HiddenTextPage : public TextPageTest {
 protected:
  void SetUp() override {
    TextPageTest::SetUp();
    form->txtOutputs.text = "one\r\n";
    events.DoEvents();
  }

  void setVisible(bool isVisible) {
    form->txtOutputs.visible = isVisible;
    events.DoEvents();
  }

  std::string shownText() const { return fromQt(page->toPlainText()); }
};

TEST_F(HiddenTextPage, TakesNothingIn) {
  setVisible(false);

  print("two\r\n");

  EXPECT_EQ(shownText(), "one\n");
}

TEST_F(HiddenTextPage, HasWhatWasPrintedWhenItIsShown) {
  setVisible(false);
  print("two\r\n");
  print("three\r\n");

  setVisible(true);

  EXPECT_EQ(shownText(), "one\ntwo\nthree\n");
}

TEST_F(HiddenTextPage, HasTheNewTextWhenTheOldOneWasReplaced) {
  setVisible(false);
  form->txtOutputs.text = "another\r\n";
  print("and more\r\n");

  setVisible(true);

  EXPECT_EQ(shownText(), "another\nand more\n");
}

TEST_F(HiddenTextPage, HasTheNewTextWhenThatIsAsLongAsTheOldOne) {
  setVisible(false);
  form->txtOutputs.text = "six\r\n";

  setVisible(true);

  EXPECT_EQ(shownText(), "six\n");
}

TEST_F(HiddenTextPage, GoesOnAsBeforeWhenItIsShown) {
  setVisible(false);
  print("two\r\n");
  setVisible(true);

  print("three\r\n");

  EXPECT_EQ(shownText(), "one\ntwo\nthree\n");
}

TEST_F(HiddenTextPage, ShowsItsEnd) {
  setVisible(false);
  for (int line = 0; line < 200; ++line) print("line\r\n");

  setVisible(true);

  EXPECT_EQ(page->verticalScrollBar()->value(), page->verticalScrollBar()->maximum());
  EXPECT_GT(page->verticalScrollBar()->maximum(), 0);
}

TEST_F(HiddenTextPage, MayBeHiddenAndShownWithoutAChange) {
  setVisible(false);

  setVisible(true);

  EXPECT_EQ(shownText(), "one\n");
}

}  // namespace
}  // namespace veltrin
