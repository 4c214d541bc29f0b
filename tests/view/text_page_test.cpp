// SPDX-License-Identifier: GPL-3.0-or-later
// A text box of many lines in which the user types while the program prints.
#include <random>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>

#include "text_page_fixture.h"
#include "view/text_place.h"

namespace veltrin {
namespace {

using testing::ElementsAre;

TEST_F(TextPageTest, ANoteTypedAboveATraceIsPartOfTheText) {
  print("Tracing route\r\nTrace complete.\r\n");

  atRest([&] {
    press(Qt::Key_Home, Qt::ControlModifier);
    type("my note");
    press(Qt::Key_Return);
  });

  EXPECT_EQ(text(), "my note\r\nTracing route\r\nTrace complete.\r\n");
}

TEST_F(TextPageTest, CopyTakesWhatTheUserWrote) {
  print("Trace complete.\r\n");
  atRest([&] {
    press(Qt::Key_Home, Qt::ControlModifier);
    type("note ");
  });

  pressAndAnswer(form->copy1);

  EXPECT_EQ(fromQt(QApplication::clipboard()->text()), "note Trace complete.\r\n");
}

TEST_F(TextPageTest, SaveTakesWhatTheUserWrote) {
  form->trace1.text = "near.example";
  print("Trace complete.\r\n");
  atRest([&] {
    press(Qt::Key_Home, Qt::ControlModifier);
    type("note ");
  });

  pressAndAnswer(form->write1);

  std::vector<std::string> saved;
  for (const auto& [name, content] : files.contents) {
    if (name.find("Traceroute_") != std::string::npos) saved.push_back(content);
  }
  EXPECT_THAT(saved, ElementsAre("note Trace complete.\r\n"));
}

TEST_F(TextPageTest, KeysThatWaitForTheGateComeWhereTheCaretIs) {
  print("first\r\n");
  caretTo(0);
  type("ab");
  EXPECT_EQ(text(), "first\r\n") << "the gate is closed";

  print("second\r\n");

  EXPECT_EQ(text(), "abfirst\r\nsecond\r\n");
  EXPECT_EQ(onPage(), "abfirst\nsecond\n");
}

TEST_F(TextPageTest, TextThatArrivesWhileTypingWaitsIsNotLost) {
  form->txtOutputs.change = {};
  form->txtOutputs.text = "first\r\n";
  caretTo(0);
  page->insertPlainText("ab");
  form->txtOutputs.text += "second\r\n";
  page->insertPlainText("c");
  form->txtOutputs.text += "third\r\n";
  EXPECT_EQ(text(), "first\r\nsecond\r\nthird\r\n") << "the gate is closed";

  atRest([] {});

  EXPECT_EQ(text(), "abcfirst\r\nsecond\r\nthird\r\n");
  EXPECT_EQ(onPage(), "abcfirst\nsecond\nthird\n");
}

TEST_F(TextPageTest, TextArrivesBehindWhatWaitsAtTheEnd) {
  form->txtOutputs.change = {};
  form->txtOutputs.text = "first\r\n";
  page->moveCursor(QTextCursor::End);
  page->insertPlainText("note\n");
  form->txtOutputs.text += "second\r\n";

  atRest([] {});

  EXPECT_EQ(text(), "first\r\nnote\r\nsecond\r\n");
  EXPECT_EQ(onPage(), "first\nnote\nsecond\n");
}

TEST_F(TextPageTest, WhatWasTypedIntoAnEmptyTextStaysAboveTheFirstThatArrives) {
  form->txtOutputs.change = {};
  page->insertPlainText("note\n");
  form->txtOutputs.text += "first\r\n";

  atRest([] {});

  EXPECT_EQ(text(), "note\r\nfirst\r\n");
  EXPECT_EQ(onPage(), "note\nfirst\n");
}

TEST_F(TextPageTest, TypingThatWaitsIsVoidWhenTheProgramReplacesTheText) {
  form->txtOutputs.change = {};
  form->txtOutputs.text = "old text\r\n";
  page->insertPlainText("note");
  form->txtOutputs.text = "new\r\n";

  atRest([] {});

  EXPECT_EQ(text(), "new\r\n");
  EXPECT_EQ(onPage(), "new\n");
}

TEST_F(TextPageTest, EachChangeIsToldOnce) {
  print("line\r\n");
  caretTo(4);
  std::vector<std::string> told;
  form->txtOutputs.change = [&] { told.push_back(text()); };

  atRest([&] { type("ab"); });

  EXPECT_THAT(told, ElementsAre("linea\r\n", "lineab\r\n"));
}

TEST_F(TextPageTest, WhatTheRoutineOfTheChangePrintsIsShown) {
  print("line\r\n");
  form->txtOutputs.change = [&] {
    form->txtOutputs.change = {};
    form->txtOutputs.text += "behind";
  };

  atRest([&] { type("x"); });

  EXPECT_EQ(text(), "line\r\nxbehind");
  EXPECT_EQ(onPage(), "line\nxbehind");
}

TEST_F(TextPageTest, DeletingALineBreakJoinsTheLines) {
  print("one\r\ntwo\r\n");
  caretTo(3);

  atRest([&] { press(Qt::Key_Delete); });

  EXPECT_EQ(text(), "onetwo\r\n");
}

TEST_F(TextPageTest, DeletingAllLeavesNothing) {
  print("one\r\ntwo\r\n");

  atRest([&] {
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_Delete);
  });

  EXPECT_EQ(text(), "");
}

TEST_F(TextPageTest, APastedTextTakesThePlaceOfTheSelection) {
  print("one\r\ntwo\r\n");
  QApplication::clipboard()->setText("a\nb\n");

  atRest([&] {
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_V, Qt::ControlModifier);
  });

  EXPECT_EQ(text(), "a\r\nb\r\n");
}

TEST_F(TextPageTest, ShiftAndEnterEndALineLikeEnterAlone) {
  print("ab");
  caretTo(1);

  atRest([&] { press(Qt::Key_Return, Qt::ShiftModifier); });

  EXPECT_EQ(text(), "a\r\nb");
}

TEST_F(TextPageTest, TypingLeavesBytesAloneThatTheScreenCannotShow) {
  print("a\xFFz\n\xE2\x82 end\r\n");
  caretTo(0);

  atRest([&] { type("x"); });

  EXPECT_EQ(text(), "xa\xFFz\n\xE2\x82 end\r\n");
}

TEST_F(TextPageTest, CharactersOfSeveralBytesBeforeTheCaretAreCounted) {
  print("\xC3\xA9\xF0\x9F\x99\x82|\r\n");
  caretTo(3);

  atRest([&] { type("x"); });

  EXPECT_EQ(text(), "\xC3\xA9\xF0\x9F\x99\x82x|\r\n");
}

TEST_F(TextPageTest, TwoLinesStayTwoWhenWhatStoodBetweenTheirEndsGoes) {
  print("one\rX\ntwo");
  caretTo(4);

  atRest([&] { press(Qt::Key_Delete); });

  EXPECT_EQ(onPage(), "one\n\ntwo");
  EXPECT_EQ(fromQt(onScreen(text())), onPage());
}

TEST_F(TextPageTest, ABoxThatTakesNoTypingIsShownAsItIs) {
  print("line");
  form->txtOutputs.enabled = false;
  page->setEnabled(true);

  page->insertPlainText("x");
  atRest([] {});

  EXPECT_EQ(text(), "line");
  EXPECT_EQ(onPage(), "line");
}

TEST_F(TextPageTest, UndoTakesTheTypingBackAndLeavesWhatArrived) {
  print("first\r\n");
  caretTo(0);
  atRest([&] { type("note"); });
  print("second\r\n");

  atRest([&] { press(Qt::Key_Z, Qt::ControlModifier); });

  EXPECT_EQ(text(), "first\r\nsecond\r\n");
  EXPECT_EQ(onPage(), "first\nsecond\n");
}

TEST_F(TextPageTest, RedoDoesAgainWhatWasUndone) {
  print("first\r\n");
  caretTo(0);
  atRest([&] {
    type("note");
    press(Qt::Key_Z, Qt::ControlModifier);
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  });

  EXPECT_EQ(text(), "notefirst\r\n");
}

TEST_F(TextPageTest, UndoBringsADeletedTextBack) {
  print("one\r\ntwo\r\n");
  atRest([&] {
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_Delete);
  });
  print("three\r\n");

  atRest([&] { press(Qt::Key_Z, Qt::ControlModifier); });

  EXPECT_EQ(text(), "one\r\ntwo\r\nthree\r\n");
}

TEST_F(TextPageTest, EachLineIsAStepOfUndoing) {
  atRest([&] {
    type("one");
    press(Qt::Key_Return);
    type("two");
    press(Qt::Key_Z, Qt::ControlModifier);
  });

  EXPECT_EQ(text(), "one\r\n");
}

TEST_F(TextPageTest, LettersTakenAwayOneByOneComeBackTogether) {
  print("note");
  atRest([&] {
    for (int letter = 0; letter < 3; ++letter) press(Qt::Key_Backspace);
    press(Qt::Key_Z, Qt::ControlModifier);
  });

  EXPECT_EQ(text(), "note");
}

TEST_F(TextPageTest, WhatTheProgramPrintsCannotBeUndone) {
  print("first\r\n");

  atRest([&] { press(Qt::Key_Z, Qt::ControlModifier); });

  EXPECT_EQ(text(), "first\r\n");
}

TEST_F(TextPageTest, NothingOfATextThatIsGoneCanBeUndone) {
  atRest([&] { type("note"); });
  form->txtOutputs.text = "new";

  atRest([&] { press(Qt::Key_Z, Qt::ControlModifier); });

  EXPECT_EQ(text(), "new");
}

TEST_F(TextPageTest, TheMenuOfTheTextUndoesToo) {
  atRest([&] { type("note"); });

  atRest([&] {
    QContextMenuEvent asked(QContextMenuEvent::Mouse, QPoint(20, 20),
                            page->viewport()->mapToGlobal(QPoint(20, 20)));
    QApplication::sendEvent(page->viewport(), &asked);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    auto* undo = menu->findChild<QAction*>("edit-undo");
    ASSERT_NE(undo, nullptr);
    EXPECT_TRUE(undo->isEnabled());
    undo->trigger();
    menu->close();
  });

  EXPECT_EQ(text(), "");
}

TEST_F(TextPageTest, TheRunningCommandMayBeTypedInto) {
  form->Text1.text = "ping near.example";
  widget("Text1")->setFocus();

  atRest([&] {
    press(Qt::Key_End);
    type(" -t");
  });

  EXPECT_EQ(form->Text1.text.get(), "ping near.example -t");
}

TEST_F(TextPageTest, WhatWasTypedIntoACommandThatHasBeenReplacedIsVoid) {
  form->Text1.text = "ping near.example";
  auto* line = widget<QLineEdit>("Text1");
  line->insert("x");
  emit line->textEdited(line->text());
  form->Text1.text = "tracert near.example";

  atRest([] {});

  EXPECT_EQ(form->Text1.text.get(), "tracert near.example");
  EXPECT_EQ(fromQt(line->text()), "tracert near.example");
}

// Random users and tools, by seed: whatever comes in whichever order, the screen and the
// program agree once all has come through the gate.
class TextPageSeeds : public TextPageTest, public testing::WithParamInterface<unsigned> {
 protected:
  // No caret gets into the middle of a letter of two units.
  int beforeLetter(int position) const {
    return page->document()->characterAt(position).isLowSurrogate() ? position - 1 : position;
  }
};

TEST_P(TextPageSeeds, TheScreenAndTheProgramAgree) {
  form->txtOutputs.change = {};
  std::mt19937 random(GetParam());
  const auto upTo = [&random](int most) {
    return std::uniform_int_distribution<int>(0, most)(random);
  };
  const std::vector<std::string> chunks = {"line\r\n", "\r",   "\n",   "a\r",
                                           "\xC3",     "\xA9", "b\n",  "\xF0\x9F",
                                           "\x99\x82", "\xFF", "word "};
  const std::vector<QString> typed = {"x", "\n", QString::fromUtf8("\xC3\xA9"), "two words\nand"};
  for (int step = 0; step < 300; ++step) {
    const int length = page->document()->characterCount() - 1;
    switch (upTo(5)) {
      case 0:
      case 1:
        form->txtOutputs.text += chunks[static_cast<std::size_t>(upTo(10))];
        break;
      case 2: {
        QTextCursor caret = page->textCursor();
        const int from = beforeLetter(upTo(length));
        caret.setPosition(from);
        caret.setPosition(beforeLetter(std::min(length, from + upTo(4))), QTextCursor::KeepAnchor);
        page->setTextCursor(caret);
        break;
      }
      case 3:
        page->insertPlainText(typed[static_cast<std::size_t>(upTo(3))]);
        break;
      case 4:
        page->textCursor().deletePreviousChar();
        break;
      default:
        atRest([&] { press(Qt::Key_Z, Qt::ControlModifier); });
    }
    if (upTo(40) == 0) form->txtOutputs.text = "anew\r\n";
  }
  atRest([] {});

  form->txtOutputs.text += "\n";  // whatever was cut is whole now
  EXPECT_EQ(fromQt(onScreen(text())), onPage());
}

INSTANTIATE_TEST_SUITE_P(Seeds, TextPageSeeds, testing::Range(1U, 21U));

}  // namespace
}  // namespace veltrin
