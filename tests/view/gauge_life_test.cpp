// SPDX-License-Identifier: GPL-3.0-or-later
// When a dial gauge is painted, whom its value is told, and how it ends.
#include <QAccessible>
#include <QElapsedTimer>

#include "forms/form.h"
#include "gauge_fixture.h"
#include "view/binder.h"

namespace veltrin {
namespace {

using GaugeLife = GaugeViewTest;

// --- When it is painted ---

TEST_F(GaugeLife, TheSameValueAgainPaintsNothing) {
  show();
  PaintCount paints(view);
  for (int i = 0; i < 10; ++i) gauge.Value = 50;
  settle();
  EXPECT_EQ(paints.count, 0);
}

TEST_F(GaugeLife, AValueThatLooksTheSamePaintsNothingAndIsToldAllTheSame) {
  gauge.Max = 100000;
  show();
  PaintCount paints(view);
  gauge.Value = 51;
  settle();
  EXPECT_EQ(paints.count, 0);
  EXPECT_EQ(view.accessibleName(), "Received 51");
}

TEST_F(GaugeLife, AThousandValuesBeforeTheNextPaintingArePaintedOnce) {
  show();
  PaintCount paints(view);
  for (int i = 0; i < 1000; ++i) gauge.Value = i % 100;
  settle();
  EXPECT_EQ(paints.count, 1);
  EXPECT_EQ(view.accessibleName(), "Received 99");
}

// The time is real: it is the screen's frames that count.
TEST_F(GaugeLife, AGaugeIsPaintedOnceAFrameHoweverOftenItChanges) {
  show();
  PaintCount paints(view);
  QElapsedTimer time;
  time.start();
  int changes = 0;
  while (time.elapsed() < 100 || (paints.count < 2 && time.elapsed() < 10000)) {
    gauge.Value = ++changes % 100;
    QCoreApplication::processEvents();
  }
  const double frames = static_cast<double>(time.elapsed()) / (1000.0 / 60);
  EXPECT_GT(changes, 20);
  EXPECT_GE(paints.count, 2);
  EXPECT_LE(paints.count, frames + 1);
}

TEST_F(GaugeLife, AGaugeThatChangedOutOfSightIsPaintedWhenItIsShown) {
  show();
  view.hide();
  gauge.Value = 12;
  settle();
  PaintCount paints(view);
  show();
  EXPECT_EQ(paints.count, 1);
  EXPECT_EQ(view.accessibleName(), "Received 12");
}

// --- Whom it is told, and how it ends ---

TEST_F(GaugeLife, AScreenReaderIsToldTheValueBehindTheName) {
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&view)->text(QAccessible::Name), "Received 50");
}

TEST_F(GaugeLife, AnotherGaugesValueTakesTheFirstOnesPlace) {
  bkCProg other;
  other.Value = 7;
  view.setGauge(&other);
  EXPECT_EQ(view.accessibleName(), "Received 7");
  view.setGauge(nullptr);
  EXPECT_EQ(view.accessibleName(), "Received");
}

TEST_F(GaugeLife, AGaugeWithoutANameIsToldByItsValue) {
  bkCProg other;
  GaugeView plain;
  plain.setGauge(&other);
  EXPECT_EQ(plain.accessibleName(), "50");
}

TEST_F(GaugeLife, TheHandleIsThatOfTheWindow) {
  show();
  EXPECT_EQ(gauge.hWnd(), view.winId());
}

TEST_F(GaugeLife, AGaugeThatIsTakenAwayIsNotAskedAgain) {
  view.setGauge(nullptr);
  EXPECT_EQ(gauge.hWnd(), 0U);
  gauge.Value = 70;
  view.resize(60, 60);
  EXPECT_EQ(gauge.width(), 101);
  EXPECT_EQ(atScale(1).pixelColor(30, 30), QColor(Qt::blue));
}

TEST_F(GaugeLife, AGaugeMayEndBeforeItsView) {
  GaugeView other;
  {
    bkCProg brief;
    other.setGauge(&brief);
  }
  other.resize(60, 60);
  EXPECT_EQ(other.width(), 60);
}

TEST_F(GaugeLife, AViewMayEndBeforeItsGauge) {
  bkCProg other;
  { GaugeView().setGauge(&other); }
  other.Value = 70;
  EXPECT_EQ(other.hWnd(), 0U);
}

TEST_F(GaugeLife, TheSystemsColoursAreThoseOfTheProgramsLook) {
  const QPalette look = QApplication::palette();
  EXPECT_EQ(toQt(translated(kButtonFace)), look.color(QPalette::Window));
  EXPECT_EQ(toQt(translated(kButtonText)), look.color(QPalette::ButtonText));
  EXPECT_EQ(toQt(translated(0x80000005)), look.color(QPalette::Base));
  EXPECT_EQ(toQt(translated(0x80000008)), look.color(QPalette::WindowText));
  EXPECT_EQ(toQt(translated(0x8000000D)), look.color(QPalette::Highlight));
  EXPECT_EQ(toQt(translated(0x80000010)), look.color(QPalette::Dark));
  EXPECT_EQ(toQt(translated(0x80000018)), look.color(QPalette::ToolTipBase));
}

// A window with two gauges in the same place.
class GaugeForm : public Form {
 public:
  explicit GaugeForm(FormHost& host) : Form("GaugeForm", host) { own("NetRec1", NetRec1); }

  std::array<bkCProg, 2> NetRec1;
};

std::unique_ptr<FormWindow> windowOfGauges() {
  auto look = std::make_unique<FormWindow>();
  for (const char* name : {"NetRec1_0", "NetRec1_1"}) {
    auto* view = new GaugeView(look.get());
    view->setObjectName(name);
    view->resize(80, 80);
  }
  look->resize(80, 80);
  return look;
}

TEST_F(GaugeLife, TheBinderTiesEveryGaugeToItsWidget) {
  const auto form = std::make_shared<GaugeForm>(program);
  form->load();
  Binder binder(*form, windowOfGauges(), events.gate(), files);

  form->NetRec1[1].visible = false;
  form->NetRec1[0].Value = 30;
  settle();

  EXPECT_EQ(form->NetRec1[0].width(), 80);
  EXPECT_TRUE(binder.window().findChild<QWidget*>("NetRec1_1")->isHidden());
  EXPECT_FALSE(binder.window().findChild<QWidget*>("NetRec1_0")->isHidden());
}

TEST_F(GaugeLife, ABinderThatGoesLeavesNoObserverBehind) {
  const auto form = std::make_shared<GaugeForm>(program);
  form->load();
  { const Binder binder(*form, windowOfGauges(), events.gate(), files); }

  form->NetRec1[0].Value = 30;
  form->NetRec1[0].visible = false;

  EXPECT_EQ(form->NetRec1[0].hWnd(), 0U);
}

}  // namespace
}  // namespace veltrin
