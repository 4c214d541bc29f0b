// SPDX-License-Identifier: GPL-3.0-or-later
// Windows whose size the program alone changes, and what of them is in sight.
#include <QPlainTextEdit>

#include "route/MonOut.h"
#include "route/Stability.h"
#include "route/stability_values.h"
#include "view_test.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FixedWindow : public ViewTest {
 protected:
  // Where the lower edge of a control lies in the window.
  int bottomOf(const char* name) const { return widget(name)->geometry().bottom() + 1; }

  bool isInSight(const char* name) const {
    return widget(name)->isVisible() && bottomOf(name) <= window->height();
  }

  // The numbers of the hops whose graphs are in sight, or the other way.
  std::vector<int> graphsInSight() const {
    std::vector<int> hops;
    for (int hop = 0; hop < 30; ++hop) {
      const std::string number = std::to_string(hop);
      const bool isGraph = isInSight(("PGraph_" + number).c_str());
      EXPECT_EQ(isInSight(("Label2_" + number).c_str()), isGraph) << hop;
      if (isGraph) hops.push_back(hop);
    }
    return hops;
  }

  // What the key Tab visits until it is back.
  std::vector<std::string> tabStops() {
    std::vector<std::string> stops;
    const QWidget* first = QApplication::focusWidget();
    atRest([&] {
      do {
        stops.push_back(fromQt(QApplication::focusWidget()->objectName()));
        QTest::keyClick(window->windowHandle(), Qt::Key_Tab);
      } while (QApplication::focusWidget() != first && stops.size() < 20);
    });
    return stops;
  }
};

TEST_F(FixedWindow, AHeightInTwipsIsThatOfTheWindowWithItsFrame) {
  const auto form = shown<Stability>();
  EXPECT_EQ(window->height(), 109);

  form->height = 2970;
  EXPECT_EQ(window->height(), 171);

  form->height = 7550;
  EXPECT_EQ(window->height(), 476);
}

TEST_F(FixedWindow, AWindowKeepsItsWidth) {
  const auto form = shown<Stability>();
  const int width = window->width();

  form->height = 7550;

  EXPECT_EQ(window->width(), width);
}

TEST_F(FixedWindow, TheUserDoesNotChangeItsSize) {
  const auto form = shown<Stability>();
  form->height = 4300;
  const QSize size = window->size();

  window->resize(900, 700);
  EXPECT_EQ(window->size(), size);
  window->resize(1, 1);
  EXPECT_EQ(window->size(), size);

  EXPECT_FALSE(window->windowFlags() & Qt::WindowMaximizeButtonHint);
}

TEST_F(FixedWindow, AWindowThatGrowsPastTheScreensEdgeGoesUp) {
  const auto form = shown<Stability>();
  const QRect room = window->screen()->availableGeometry();
  window->move(room.left() + 40, room.bottom() - 120);

  form->height = 2970;

  EXPECT_EQ(window->frameGeometry().bottom(), room.bottom());
  EXPECT_EQ(window->x(), room.left() + 40);
}

TEST_F(FixedWindow, AWindowThatHasRoomStaysInItsPlace) {
  const auto form = shown<Stability>();
  window->move(40, 30);

  form->height = 2970;

  EXPECT_EQ(window->pos(), QPoint(40, 30));
}

TEST_F(FixedWindow, AllControlsOfAnIdleStabilityTestAreInItsStrip) {
  shown<Stability>();

  for (const char* name :
       {"Label1", "TestPoint", "StartIt", "Command2", "txtOutputs", "Text1", "Label3", "Label4"}) {
    EXPECT_TRUE(isInSight(name)) << name;
  }
  EXPECT_THAT(graphsInSight(), IsEmpty());
}

TEST_F(FixedWindow, TwoHopsShareTheFirstRow) {
  const auto form = shown<Stability>();
  form->height = 2970;
  for (std::size_t hop = 2; hop < 30; ++hop) {
    form->PGraph[hop].visible = false;
    form->Label2[hop].visible = false;
  }

  EXPECT_THAT(graphsInSight(), ElementsAre(0, 1));
  EXPECT_EQ(widget("PGraph_0")->geometry(), QRect(20, 118, 253, 41));
  EXPECT_EQ(widget("PGraph_1")->geometry(), QRect(294, 118, 253, 41));
}

TEST_F(FixedWindow, TheSecondPageTakesThePlacesOfTheFirst) {
  shown<Stability>();

  EXPECT_EQ(widget("PGraph_15")->geometry(), QRect(294, 426, 253, 41));
  for (int hop = 16; hop < 30; ++hop) {
    const auto placeOf = [&](int index) {
      return widget(("PGraph_" + std::to_string(index)).c_str())->geometry();
    };
    EXPECT_EQ(placeOf(hop), placeOf(hop - 16)) << hop;
  }
}

TEST_F(FixedWindow, ThePageButtonShowsTheOtherGraphs) {
  const auto form = shown<Stability>();
  form->height = 7550;
  form->Command1.visible = true;
  program.shared<StabilityValues>().Total = 18.0;

  atRest([&] { clickAt(widget("Command1")); });
  EXPECT_THAT(graphsInSight(), ElementsAre(16, 17));
  EXPECT_EQ(widget<QPushButton>("Command1")->text(), "Page 2");

  atRest([&] { clickAt(widget("Command1")); });
  EXPECT_THAT(graphsInSight(), ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15));
  EXPECT_EQ(widget<QPushButton>("Command1")->text(), "Page 1");
}

TEST_F(FixedWindow, TheStoresOfAStabilityTestAreNeverInSight) {
  const auto form = shown<Stability>();
  form->height = 7550;

  for (const char* name : {"Text2", "dosbox", "TestIPs", "results", "BadHops"}) {
    EXPECT_GE(widget(name)->y(), window->height()) << name;
  }
}

TEST_F(FixedWindow, AnIdleOutageMonitorShowsItsGraphAndNothingOfItsTexts) {
  shown<MonOut>();

  EXPECT_EQ(window->height(), 215);
  for (const char* name : {"OGraph", "Label1", "Label7", "Label8", "Command1", "Check1"}) {
    EXPECT_TRUE(isInSight(name)) << name;
  }
  EXPECT_GE(widget("DosBox2")->y(), window->height());
}

TEST_F(FixedWindow, ATickShowsTheDataOfTheOutageMonitor) {
  shown<MonOut>();

  atRest([&] { QTest::mouseClick(widget("Check1"), Qt::LeftButton, {}, {8, 12}); });

  EXPECT_EQ(window->height(), 324);
  EXPECT_TRUE(isInSight("DosBox2"));
  EXPECT_GE(widget("Text1")->y(), window->height());
}

TEST_F(FixedWindow, AnOutageShowsItsTracesToo) {
  const auto form = shown<MonOut>();

  form->height = 6700;

  EXPECT_EQ(window->height(), 410);
  EXPECT_TRUE(isInSight("Text1"));
  EXPECT_GE(widget("dosbox")->y(), window->height());
}

TEST_F(FixedWindow, TheTicksOfTheGraphMarkItsQuarters) {
  shown<MonOut>();
  const QRect graph = widget("OGraph")->geometry();

  int quarter = 0;
  for (const char* name : {"Line1", "Line2", "Line3"}) {
    const QRect tick = widget(name)->geometry();
    EXPECT_EQ(tick.left(), graph.left() + ++quarter * graph.width() / 4) << name;
    EXPECT_EQ(tick.top(), graph.bottom() + 1) << name;
  }
}

TEST_F(FixedWindow, TheKeyTabGoesWhereTheUserSees) {
  const auto form = shown<MonOut>();

  EXPECT_THAT(tabStops(), ElementsAre("Command3", "Command2", "Combo1", "Check1", "Command1"));

  form->height = 5410;
  EXPECT_THAT(tabStops(),
              ElementsAre("Command3", "Command2", "Combo1", "Check1", "Command1", "DosBox2"));

  form->height = 6700;
  EXPECT_THAT(tabStops(), ElementsAre("Command3", "Command2", "Combo1", "Check1", "Command1",
                                      "DosBox2", "Text1"));
}

TEST_F(FixedWindow, TheKeyboardLeavesWhatGoesOutOfSight) {
  const auto form = shown<MonOut>();
  form->height = 5410;
  widget("DosBox2")->setFocus();
  ASSERT_TRUE(widget("DosBox2")->hasFocus());

  form->height = 3775;

  EXPECT_TRUE(widget("Command3")->hasFocus());
}

}  // namespace
}  // namespace veltrin
