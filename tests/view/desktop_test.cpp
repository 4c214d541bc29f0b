// SPDX-License-Identifier: GPL-3.0-or-later
// Windows, message boxes and the clipboard on a real desktop.
#include <QApplication>
#include <QClipboard>
#include <QMessageBox>
#include <QTimer>
#include <QTranslator>

#include "frame/modIsItRunning.h"
#include "view_test.h"

namespace veltrin {
namespace {

class DesktopTest : public ViewTest {
 protected:
  // Shows a message from a routine and answers it with a key.
  int answerTo(int style, Qt::Key key, const std::string& title = {},
               const std::string& text = "A message\r\nof two lines\r\n \r\n") {
    int answer = 0;
    atRest([&] {
      events.gate().post([&] {
        soon([this, key] {
          box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
          ASSERT_NE(box, nullptr);
          titleShown = box->windowTitle();
          textShown = box->text();
          icon = box->icon();
          for (const auto* button : box->buttons()) buttons << button->text();
          QTest::keyClick(box->windowHandle(), key);
        });
        answer = program.MsgBox(text, style, title);
      });
    });
    return answer;
  }

  QPointer<QMessageBox> box;
  QString titleShown;
  QString textShown;
  QMessageBox::Icon icon = QMessageBox::Question;
  QStringList buttons;
};

// The texts of the toolkit in a language of long words.
class LongWords : public QTranslator {
 public:
  QString translate(const char* /*context*/, const char* text, const char* /*comment*/,
                    int /*count*/) const override {
    return QString(text) + "einverstanden";
  }
  bool isEmpty() const override { return false; }
};

TEST_F(DesktopTest, EnterAnswersAMessageWithOk) {
  EXPECT_EQ(answerTo(kMessageOk, Qt::Key_Return), kAnswerOk);
}

TEST_F(DesktopTest, EscapeAnswersAMessageWithOk) {
  EXPECT_EQ(answerTo(kMessageOk, Qt::Key_Escape), kAnswerOk);
}

TEST_F(DesktopTest, EnterAnswersAQuestionWithYes) {
  EXPECT_EQ(answerTo(kMessageYesNo, Qt::Key_Return), kAnswerYes);
}

TEST_F(DesktopTest, TheKeyNAnswersAQuestionWithNo) {
  EXPECT_EQ(answerTo(kMessageYesNo, Qt::Key_N), kAnswerNo);
}

TEST_F(DesktopTest, ItsAnswersAreEnglishInAnyLanguageOfTheToolkit) {
  LongWords words;
  QApplication::installTranslator(&words);
  const int answer = answerTo(kMessageYesNo, Qt::Key_N);
  QApplication::removeTranslator(&words);
  EXPECT_EQ(answer, kAnswerNo);
  EXPECT_EQ(buttons, (QStringList{"&Yes", "&No"}));
}

TEST_F(DesktopTest, AMessageWithoutATitleHasTheApplications) {
  answerTo(kMessageOk, Qt::Key_Return);

  EXPECT_EQ(titleShown, "Veltrin");
}

TEST_F(DesktopTest, AMessageHasItsOwnTitleAndItsText) {
  answerTo(kMessageOk, Qt::Key_Return, "Ping Test");

  EXPECT_EQ(titleShown, "Ping Test");
  EXPECT_EQ(textShown, "A message\nof two lines");
}

TEST_F(DesktopTest, BlanksAtTheEndOfTheLastLineStay) {
  answerTo(kMessageOk, Qt::Key_Return, "MTU", "Original MTU was ");
  EXPECT_EQ(textShown, "Original MTU was ");

  answerTo(kMessageOk, Qt::Key_Return, "MTU", "One line \r\nobtain the results.   \r\n");
  EXPECT_EQ(textShown, "One line \nobtain the results.   ");
}

TEST_F(DesktopTest, ACriticalMessageHasItsPicture) {
  answerTo(kMessageCritical, Qt::Key_Return);

  EXPECT_EQ(icon, QMessageBox::Critical);
}

TEST_F(DesktopTest, AWarningThatAsksHasItsPicture) {
  answerTo(kMessageWarning | kMessageYesNo, Qt::Key_Return);

  EXPECT_EQ(icon, QMessageBox::Warning);
}

TEST_F(DesktopTest, AnAnsweredMessageIsGone) {
  answerTo(kMessageOk, Qt::Key_Return);

  EXPECT_TRUE(box.isNull());
}

TEST_F(DesktopTest, AMessageThatIsUnwoundIsGone) {
  QTimer end;
  end.callOnTimeout([this] {
    box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    events.gate().end();
  });
  atRest([&] {
    events.gate().post([&] {
      end.start(0);
      program.MsgBox("never answered");
    });
  });

  EXPECT_TRUE(box.isNull());
  EXPECT_TRUE(events.gate().hasEnded());
}

TEST_F(DesktopTest, TheCloseButtonUnloadsTheWindow) {
  program.show<setlang>();
  const auto form = shown<pingtester>();

  atRest([&] { window->windowHandle()->close(); });

  EXPECT_FALSE(form->isLoaded());
  EXPECT_EQ(desktop.windowOf(*form), nullptr);
}

TEST_F(DesktopTest, TheProgramEndsWithItsLastWindow) {
  shown<pingtester>();
  soon([this] { window->windowHandle()->close(); });

  events.run();

  EXPECT_TRUE(events.gate().hasEnded());
}

TEST_F(DesktopTest, AButtonThatUnloadsItsWindowLeavesTheProgramWhole) {
  program.show<setlang>();
  const auto form = shown<pingtester>();

  atRest([&] { clickAt(widget("Command4")); });

  EXPECT_FALSE(form->isLoaded());
}

TEST_F(DesktopTest, AModalWindowIsTheOnlyOneThatTakesInput) {
  shown<pingtester>();
  bool modal = false;
  atRest([&] {
    events.gate().post([&] {
      soon([&] {
        QWidget* front = QApplication::activeModalWidget();
        ASSERT_NE(front, nullptr);
        modal = front->windowTitle() == "Set Language";
        clickAt(front->findChild<QWidget*>("Command2"));
      });
      program.showModal<setlang>();
    });
  });

  EXPECT_TRUE(modal);
  EXPECT_TRUE(program.LanguageId == kDutch);
  EXPECT_FALSE(program.isLoaded<setlang>());
}

TEST_F(DesktopTest, TheTextOfTheClipboardIsThatOfTheProgram) {
  desktop.clearClipboard();
  desktop.setClipboardText("Ping Test\r\n");

  EXPECT_EQ(QApplication::clipboard()->text(), "Ping Test\r\n");
}

TEST_F(DesktopTest, AWindowOnTheScreenIsFoundByItsTitle) {
  shown<pingtester>();

  EXPECT_NE(desktop.findWindow("Ping Test"), 0U);
  EXPECT_EQ(desktop.findWindow("Ping"), 0U);
}

TEST_F(DesktopTest, AWindowThatIsTakenOffTheScreenIsNotFound) {
  const auto form = shown<pingtester>();

  desktop.hide(*form);

  EXPECT_EQ(desktop.findWindow("Ping Test"), 0U);
}

TEST_F(DesktopTest, AWindowIsFoundByTheTitleItHasNow) {
  const auto form = shown<pingtester>();

  form->caption = "Echo";

  EXPECT_NE(desktop.findWindow("Echo"), 0U);
}

TEST_F(DesktopTest, TheProgramDoesNotTakeItselfForASecondCopy) {
  EXPECT_NE(desktop.findWindow("Veltrin"), 0U);
  EXPECT_EQ(runningWindow(desktop, "Veltrin"), 0U);
}

TEST_F(DesktopTest, TheProgramFindsAnotherCopyByItsTitle) {
  QtDesktop other(events, files, "Veltrin", showInWindow);

  EXPECT_NE(runningWindow(desktop, "Veltrin"), 0U);
}

}  // namespace
}  // namespace veltrin
