// SPDX-License-Identifier: GPL-3.0-or-later
// A window that its user sizes, under a window manager.
#include <cmath>

#include "sysinfo/frmSysInfo.h"
#include "view_test.h"

namespace veltrin {
namespace {

class SizeOnX11 : public ViewTest {
 protected:
  void SetUp() override {
    ViewTest::SetUp();
    form = shown<frmSysInfo>();
    const auto routine = form->resize;
    form->resize = [this, routine] {
      ++sizes;
      routine();
    };
  }

  // Lets the manager answer until the form has another size than that.
  bool comesToAnotherSizeThan(const QSize& size) {
    return QTest::qWaitFor([&] {
      atRest([] {});
      return sizeOfForm() != size;
    });
  }

  // As long as a manager that answers each size with another one would take.
  void letAllSettle() {
    QTest::qWait(500);
    atRest([] {});
  }

  QSize sizeOfForm() const { return {form->width, form->height}; }
  QSize sizeOfWindow() const { return {window->width() * 15 - 540, window->height() * 15 + 610}; }

  std::shared_ptr<frmSysInfo> form;
  int sizes = 0;
};

TEST_F(SizeOnX11, AWindowThatFillsTheScreenTellsItsFormOnce) {
  const QSize least(10890, 7330);
  window->showMaximized();

  ASSERT_TRUE(comesToAnotherSizeThan(least));
  letAllSettle();

  EXPECT_TRUE(window->isMaximized());
  EXPECT_GT(form->width.get(), least.width());
  EXPECT_EQ(sizeOfForm(), sizeOfWindow());
  EXPECT_LE(sizes, 2);
}

TEST_F(SizeOnX11, AWindowComesBackFromFillingTheScreen) {
  const QSize least(10890, 7330);
  window->showMaximized();
  ASSERT_TRUE(comesToAnotherSizeThan(least));
  letAllSettle();
  const QSize whole = sizeOfForm();

  window->showNormal();
  ASSERT_TRUE(comesToAnotherSizeThan(whole));
  letAllSettle();

  EXPECT_EQ(sizeOfForm(), least);
  EXPECT_EQ(window->size(), QSize(762, 448));
}

// At a scale between two whole ones the server may have a pixel less than was asked for, and
// the form is told that.
TEST_F(SizeOnX11, ASizeThatTheProgramGivesIsNotToldBack) {
  const int slack = static_cast<int>(std::ceil(window->devicePixelRatioF())) - 1;  // pixels
  form->width = 14460;
  form->height = 9610;
  letAllSettle();

  EXPECT_NEAR(window->width(), 1000, slack);
  EXPECT_NEAR(window->height(), 600, slack);
  EXPECT_EQ(sizeOfForm(), sizeOfWindow());
  EXPECT_LE(sizes, slack);
}

}  // namespace
}  // namespace veltrin
