// SPDX-License-Identifier: GPL-3.0-or-later
// Windows that alone take input: how they come up and where.
#include <algorithm>

#include "view_test.h"

namespace veltrin {
namespace {

using testing::IsEmpty;

// Keeps the names of the events by which a window comes, goes or moves.
class Comings : public QObject {
 public:
  explicit Comings(QWidget& window) { window.installEventFilter(this); }

  std::vector<std::string> seen;

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Show) seen.emplace_back("show");
    if (event->type() == QEvent::Hide) seen.emplace_back("hide");
    if (event->type() == QEvent::Move) seen.emplace_back("move");
    return false;
  }
};

class ModalWindow : public ViewTest {
 protected:
  // A modal window that came up from a Ping Test at a place.
  QWidget* above(const QPoint& place) {
    opener = shown<pingtester>();
    openers = window;
    openers->move(place);
    atRest([] {});
    form = program.keep<setlang>();
    program.showInLoad(*form);
    return window = desktop.windowOf(*form);
  }

  std::shared_ptr<pingtester> opener;
  std::shared_ptr<setlang> form;
  QWidget* openers = nullptr;
};

TEST_F(ModalWindow, ComesUpOnce) {
  form = program.keep<setlang>();
  desktop.setTopmost(*form, false);  // makes the window
  Comings comings(*desktop.windowOf(*form));

  program.showInLoad(*form);

  EXPECT_EQ(std::count(comings.seen.begin(), comings.seen.end(), "show"), 1);
  EXPECT_EQ(std::count(comings.seen.begin(), comings.seen.end(), "hide"), 0);
}

TEST_F(ModalWindow, ComesUpOverTheMiddleOfTheOneBeforeIt) {
  above(QPoint(20, 30));

  const QPoint away = window->frameGeometry().center() - openers->frameGeometry().center();
  EXPECT_LE(away.manhattanLength(), 2);
}

TEST_F(ModalWindow, ComesUpOnTheScreenEvenWhereTheOneBeforeItIsNot) {
  const QRect room = QApplication::primaryScreen()->availableGeometry();
  above(room.bottomRight() - QPoint(80, 60));

  EXPECT_TRUE(room.contains(window->frameGeometry()));
}

TEST_F(ModalWindow, ComesUpInSightOfItsTitleWhereTheOneBeforeItIsNot) {
  above(QPoint(-700, -400));

  EXPECT_GE(window->frameGeometry().top(), 0);
  EXPECT_GE(window->frameGeometry().left(), 0);
}

TEST_F(ModalWindow, BelongsToTheOneBeforeIt) {
  above(QPoint(20, 30));

  EXPECT_EQ(window->windowHandle()->transientParent(), openers->windowHandle());
}

// A window that is none of the program's forms has the keyboard.
TEST_F(ModalWindow, BelongsToOneInSightWhileNoneHasTheFront) {
  opener = shown<pingtester>();
  openers = window;
  QWindow other;
  other.show();
  other.requestActivate();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
  ASSERT_EQ(QApplication::activeWindow(), nullptr);

  form = program.keep<setlang>();
  program.showInLoad(*form);

  EXPECT_EQ(desktop.windowOf(*form)->windowHandle()->transientParent(), openers->windowHandle());
}

TEST_F(ModalWindow, StaysWhereItsUserPutItWhenItComesAgain) {
  above(QPoint(20, 30));
  window->move(3, 4);
  desktop.hide(*form);

  desktop.makeModal(*form);

  EXPECT_EQ(window->pos(), QPoint(3, 4));
}

TEST_F(ModalWindow, ThatIsThereAlreadyNeitherGoesNorMovesWhenItBecomesSoAgain) {
  form = shown<setlang>();
  desktop.makeModal(*form);
  atRest([] {});
  Comings comings(*window);

  desktop.makeModal(*form);
  atRest([] {});

  EXPECT_THAT(comings.seen, IsEmpty());
  EXPECT_TRUE(window->isModal());
  EXPECT_TRUE(window->isVisible());
}

TEST_F(ModalWindow, ThatIsMinimizedComesBackWhenItBecomesSoAgain) {
  form = shown<setlang>();
  desktop.makeModal(*form);
  window->showMinimized();
  ASSERT_TRUE(window->isMinimized());

  desktop.makeModal(*form);

  EXPECT_FALSE(window->isMinimized());
}

TEST_F(ModalWindow, ThatIsHiddenComesBackWhenItBecomesSoAgain) {
  form = shown<setlang>();
  desktop.makeModal(*form);
  desktop.hide(*form);

  desktop.makeModal(*form);

  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(QApplication::activeModalWidget(), window);
}

}  // namespace
}  // namespace veltrin
