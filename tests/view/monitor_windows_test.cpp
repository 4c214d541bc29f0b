// SPDX-License-Identifier: GPL-3.0-or-later
// The network monitors under real input: found, moved and closed with mouse and keyboard.
#include <QAccessible>
#include <QLabel>
#include <QMenu>
#include <QScreen>

#include "frame/startup.h"
#include "monitor/frmIP.h"
#include "monitor/frmNetwork.h"
#include "view_test.h"

namespace veltrin {
namespace {

class NetworkView : public ViewTest {
 protected:
  std::shared_ptr<frmNetwork> open() {
    program.start.HostName = "MYPC";
    program.start.PdhQuery = 1;
    counters.instances = {"Card One"};
    shown<setlang>();  // the program goes on without the monitor
    return form = shown<frmNetwork>();
  }

  void press(Qt::Key key, Qt::KeyboardModifiers with = {}) {
    atRest([&] { QTest::keyClick(window->windowHandle(), key, with); });
  }

  // What the user does with the menu that comes up next, within two seconds.
  void inMenu(const std::function<void(QMenu&)>& action, int looks = 200) {
    QTimer::singleShot(10, window, [this, action, looks] {
      auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      if (menu == nullptr) {
        if (looks > 0) inMenu(action, looks - 1);
        return;
      }
      entries = {};
      for (const QAction* entry : menu->actions()) entries.push_back(fromQt(entry->text()));
      defaultEntry = menu->defaultAction() == nullptr ? "" : fromQt(menu->defaultAction()->text());
      action(*menu);
    });
  }

  static void leave(QMenu& menu) { menu.close(); }

  std::string nameOf(const char* control) const {
    return fromQt(QAccessible::queryAccessibleInterface(widget(control))->text(QAccessible::Name));
  }

  std::shared_ptr<frmNetwork> form;
  std::vector<std::string> entries;  // of the last menu
  std::string defaultEntry;
};

// --- Where it is ---

TEST_F(NetworkView, HasATitleByWhichItIsFoundAndNoFrame) {
  open();
  EXPECT_EQ(fromQt(window->windowTitle()), "NETWORK BANDWIDTH");
  EXPECT_TRUE(window->windowFlags() & Qt::FramelessWindowHint);
  EXPECT_TRUE(window->windowFlags() & Qt::WindowStaysOnTopHint);
}

TEST_F(NetworkView, StandsAThousandTwipsLeftOfAndAboveTheMenu) {
  const auto menu = shown<startup>();
  window->move(300, 200);
  const QPoint corner = window->frameGeometry().topLeft();
  open();
  EXPECT_EQ(window->frameGeometry().topLeft(), corner - QPoint(67, 67));
}

TEST_F(NetworkView, StaysOnTheScreenWhenTheMenuStandsInItsCorner) {
  const auto menu = shown<startup>();
  const QRect room = window->screen()->availableGeometry();
  window->move(room.topLeft());
  open();
  EXPECT_EQ(window->frameGeometry().topLeft(), room.topLeft());
}

// --- Mouse ---

TEST_F(NetworkView, ItsGroundDragsItAlsoOverItsControls) {
  open();
  window->move(200, 200);
  const QPoint ground(3, 3);
  atRest([&] {
    QCursor::setPos(window->mapToGlobal(ground));
    QTest::mousePress(window->windowHandle(), Qt::LeftButton, {}, ground);
  });
  ASSERT_EQ(window->pos(), QPoint(200, 200));
  const QPoint before = QCursor::pos();
  atRest([&] {
    QCursor::setPos(before + QPoint(25, 40));
    QTest::mouseMove(window->windowHandle(), ground + QPoint(25, 40));
  });
  EXPECT_EQ(window->pos(), QPoint(225, 240));
  atRest([&] { QTest::mouseRelease(window->windowHandle(), Qt::LeftButton, {}, ground); });
}

TEST_F(NetworkView, TheRightButtonOpensItsMenu) {
  open();
  inMenu(leave);
  atRest([&] { QTest::mouseClick(window->windowHandle(), Qt::RightButton, {}, QPoint(3, 3)); });
  EXPECT_EQ(entries, (std::vector<std::string>{"Exit"}));
  EXPECT_EQ(defaultEntry, "Exit");
  EXPECT_TRUE(form->isLoaded());
}

TEST_F(NetworkView, NoWholePixelIsAPlaceWithAMeaningOfItsOwn) {
  open();
  for (int x = 30; x < 40; ++x) {
    atRest([&] { QTest::mouseMove(window->windowHandle(), QPoint(x, 3)); });
    EXPECT_EQ(form->mouseX(), 15 * x);
  }
  EXPECT_TRUE(form->isLoaded());
}

TEST_F(NetworkView, ItsTwoLabelsEndAndBringBackThatItIsAboveAllOthers) {
  open();
  atRest([&] { clickAt(widget("NotOnTOP")); });
  EXPECT_FALSE(window->windowFlags() & Qt::WindowStaysOnTopHint);
  atRest([&] { clickAt(widget("OnTopALL")); });
  EXPECT_TRUE(window->windowFlags() & Qt::WindowStaysOnTopHint);
}

// --- Keyboard ---

TEST_F(NetworkView, EscapeOpensItsMenuAndEnterThereClosesIt) {
  open();
  inMenu([](QMenu& menu) {
    QTest::keyClick(&menu, Qt::Key_Down);
    QTest::keyClick(&menu, Qt::Key_Return);
  });
  press(Qt::Key_Escape);
  EXPECT_EQ(entries, (std::vector<std::string>{"Exit"}));
  EXPECT_FALSE(form->isLoaded());
}

TEST_F(NetworkView, TheMenuKeyOpensItsMenu) {
  open();
  inMenu(leave);
  atRest([&] {
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(5, 5), QCursor::pos());
    QCoreApplication::sendEvent(QApplication::focusWidget(), &event);
  });
  EXPECT_EQ(entries, (std::vector<std::string>{"Exit"}));
}

TEST_F(NetworkView, ItsMenuLiesToTheLeftOfTheMouse) {
  open();
  window->move(200, 200);
  int right = 0;
  inMenu([&](QMenu& menu) {
    right = menu.geometry().right() + 1;
    menu.close();
  });
  atRest([&] { QTest::mouseClick(window->windowHandle(), Qt::RightButton, {}, QPoint(3, 3)); });
  EXPECT_EQ(right, QCursor::pos().x());
}

TEST_F(NetworkView, ShiftAndF10OpenItsMenu) {
  open();
  inMenu(leave);
  press(Qt::Key_F10, Qt::ShiftModifier);
  EXPECT_EQ(entries, (std::vector<std::string>{"Exit"}));
}

TEST_F(NetworkView, TheArrowKeysMoveItAndStopAtTheEdgesOfTheScreen) {
  open();
  window->move(200, 200);
  press(Qt::Key_Right);
  press(Qt::Key_Down);
  press(Qt::Key_Down);
  EXPECT_EQ(window->pos(), QPoint(210, 220));
  press(Qt::Key_Left);
  press(Qt::Key_Up);
  EXPECT_EQ(window->pos(), QPoint(200, 210));
  const QRect room = window->screen()->availableGeometry();
  window->move(room.left() + 4, room.top() + 4);
  press(Qt::Key_Left);
  press(Qt::Key_Up);
  EXPECT_EQ(window->pos(), room.topLeft());
}

TEST_F(NetworkView, TheSpaceBarPressesTheLabelThatHasTheKeyboard) {
  open();
  widget("NotOnTOP")->setFocus();
  press(Qt::Key_Space);
  EXPECT_FALSE(window->windowFlags() & Qt::WindowStaysOnTopHint);
}

TEST_F(NetworkView, ItIsClosedAsEveryWindowIs) {
  open();
  atRest([&] { window->close(); });
  EXPECT_FALSE(form->isLoaded());
}

// --- The dials ---

TEST_F(NetworkView, AScreenReaderReadsTheThreeFiguresWithTheirRanges) {
  open();
  const std::string card = "\\\\MYPC\\Network Interface(Card One)\\Bytes ";
  counters.values[card + "Received/sec"] = 8'600'000;
  counters.values[card + "Sent/sec"] = 420'000;
  counters.values[card + "Total/sec"] = 9'020'000;
  atRest([&] { form->Timer1.tick(); });
  QTest::qWait(100);
  EXPECT_EQ(nameOf("NetRec2_0"), "Scale to 10,000 KB per second, received 8600");
  EXPECT_EQ(nameOf("NetSend1_0"), "Scale to 1,000 KB per second, sent 420");
  EXPECT_EQ(nameOf("NetTotal2_0"), "Scale to 10,000 KB per second, total 9020");
  for (const char* hidden : {"NetRec1_0", "NetRec3_0", "NetSend2_0", "NetTotal1_0"}) {
    EXPECT_FALSE(widget(hidden)->isVisible()) << hidden;
  }
}

TEST_F(NetworkView, TheScaleIsThatOfTheDialThatIsSeen) {
  open();
  QWidget* scale = widget("decorReceivedScale");
  const QImage small = scale->parentWidget()->grab().toImage();
  form->NetRec2[0].visible = true;
  form->NetRec1[0].visible = false;
  const QImage medium = scale->parentWidget()->grab().toImage();
  form->NetRec1[0].visible = true;
  form->NetRec2[0].visible = false;
  const QImage again = scale->parentWidget()->grab().toImage();
  EXPECT_NE(small, medium);
  EXPECT_EQ(small, again);
}

// --- The Protocol monitor ---

class ProtocolView : public ViewTest {};

TEST_F(ProtocolView, ItsRowsStandWhereTheModelPutsThem) {
  const auto form = shown<frmIP>();
  for (int row = 0; row < 17; ++row) {
    const std::string end = "_" + std::to_string(row);
    for (const auto& [name, column] :
         std::vector<std::pair<std::string, frmIP::Column*>>{{"LeftCap", &form->LeftCap},
                                                             {"LeftVal", &form->LeftVal},
                                                             {"RightCap", &form->RightCap},
                                                             {"RightVal", &form->RightVal}}) {
      const Label& label = (*column)[static_cast<std::size_t>(row)];
      EXPECT_EQ(widget((name + end).c_str())->pos(), QPoint(label.left / 15, label.top / 15));
    }
  }
  EXPECT_EQ(window->height(), form->height / 15);
}

TEST_F(ProtocolView, ALabelFollowsItsPlace) {
  const auto form = shown<frmIP>();
  form->LeftCap[3].top = 1500;
  form->LeftCap[3].left = 300;
  EXPECT_EQ(widget("LeftCap_3")->pos(), QPoint(20, 100));
}

TEST_F(ProtocolView, AScreenReaderReadsEachFigureWithItsMeaning) {
  const auto form = shown<frmIP>();
  form->RightVal[10].caption = "7";
  EXPECT_EQ(widget("RightVal_10")->accessibleName(),
            "Version 6, outbound datagrams without a route 7");
}

TEST_F(ProtocolView, ItsMenuIsNowhereToBeSeen) {
  shown<frmIP>();
  EXPECT_EQ(window->findChild<QMenu*>(), nullptr);
}

}  // namespace
}  // namespace veltrin
