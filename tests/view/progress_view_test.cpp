// SPDX-License-Identifier: GPL-3.0-or-later
// Bars that fill as work goes on.
#include "view/progress_view.h"

#include <limits>

#include <QAccessible>

#include "download/testdl.h"
#include "view_test.h"

namespace veltrin {
namespace {

class ProgressViewTest : public ViewTest {
 protected:
  // The look of a bar in a window that does not begin its work.
  void SetUp() override {
    ViewTest::SetUp();
    form = std::make_shared<testdl>(program);
    desktop.show(*form);
    window = desktop.windowOf(*form);
    view = widget<QProgressBar>("prgBAR_0");
    bar = &form->prgBAR[0];
  }
  void TearDown() override { desktop.remove(*form); }

  // The colour of a place of the bar, as a part of its width, in the middle of its height.
  QColor colourAt(double part) const {
    const QImage image = view->grab().toImage();
    return image.pixelColor(static_cast<int>(part * image.width()), image.height() / 2);
  }

  std::shared_ptr<testdl> form;
  QProgressBar* view = nullptr;
  ProgressBar* bar = nullptr;
};

TEST_F(ProgressViewTest, TheBarIsFilledByThePartThatHasCome) {
  bar->maximum = 29360128;
  bar->value = 22020096;

  EXPECT_EQ(view->value(), 7500);
  EXPECT_EQ(view->maximum(), 10000);
}

TEST_F(ProgressViewTest, CountsBeyond32BitsFillItLikeOthers) {
  bar->maximum = 8e12;
  bar->value = 2e12;

  EXPECT_EQ(view->value(), 2500);
}

TEST_F(ProgressViewTest, ALowerEndThatIsNotZeroIsEmpty) {
  bar->minimum = 50;
  bar->value = 50;
  EXPECT_EQ(view->value(), 0);

  bar->value = 75;
  EXPECT_EQ(view->value(), 5000);
}

TEST_F(ProgressViewTest, WhatLiesOutsideOfTheEndsIsAtOneOfThem) {
  bar->value = 101;
  EXPECT_EQ(view->value(), 10000);

  bar->value = -1;
  EXPECT_EQ(view->value(), 0);

  bar->value = std::numeric_limits<double>::infinity();
  EXPECT_EQ(view->value(), 10000);
}

// The toolkit would let one run to and fro.
TEST_F(ProgressViewTest, ABarWithoutALengthIsEmptyAndStandsStill) {
  bar->maximum = 0;

  EXPECT_EQ(view->value(), 0);
  EXPECT_LT(view->minimum(), view->maximum());
}

TEST_F(ProgressViewTest, TheFilledPartHasTheBarsColourAndTheRestThatOfPaper) {
  bar->SendMessageA(kSetBarColour, 0, 0xFF00FF);
  bar->value = 40;

  EXPECT_EQ(colourAt(0.2), QColor(255, 0, 255));
  EXPECT_EQ(colourAt(0.38), QColor(255, 0, 255));
  EXPECT_EQ(colourAt(0.42), QColor(Qt::white));

  bar->SendMessageA(kSetBarColour, 0, 65280);
  EXPECT_EQ(colourAt(0.2), QColor(0, 255, 0));
}

TEST_F(ProgressViewTest, AnEmptyBarShowsNothingOfItsColour) {
  bar->SendMessageA(kSetBarColour, 0, 0xFF00FF);

  for (const double part : {0.01, 0.5, 0.99}) EXPECT_EQ(colourAt(part), QColor(Qt::white)) << part;
}

TEST_F(ProgressViewTest, AScreenReaderIsToldTheNameAndHowFarItIs) {
  bar->value = 30;

  QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(view);

  EXPECT_EQ(reader->role(), QAccessible::ProgressBar);
  EXPECT_EQ(reader->text(QAccessible::Name), "Part of the file that has come");
  EXPECT_EQ(reader->valueInterface()->currentValue().toInt(), 3000);
  EXPECT_EQ(reader->valueInterface()->maximumValue().toInt(), 10000);
}

TEST_F(ProgressViewTest, AWindowThatIsTakenAwayLeavesNoObserverBehind) {
  desktop.remove(*form);

  bar->minimum = 1;
  bar->maximum = 2;
  bar->value = 2;
  bar->barColour = Colour{1, 2, 3};

  EXPECT_EQ(desktop.windowOf(*form), nullptr);
}

}  // namespace
}  // namespace veltrin
