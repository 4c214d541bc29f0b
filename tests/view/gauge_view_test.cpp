// Dial gauges on the screen: what is painted, when, and what a screen reader is told.
#include "view/gauge_view.h"

#include <QAccessible>
#include <QElapsedTimer>
#include <QImage>

#include "forms/form.h"
#include "view/binder.h"
#include "view_test.h"

namespace veltrin {
namespace {

constexpr std::array kScales{1.0, 1.5, 2.0};

// Counts the paintings of a widget.
class PaintCount : public QObject {
 public:
  explicit PaintCount(QWidget& widget) { widget.installEventFilter(this); }
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++count;
    return false;
  }
  int count = 0;
};

// A picture of two halves, the left one red and the right one of a colour that masks take.
QIcon halves() {
  QPixmap pixels(40, 40);
  pixels.fill(QColor(255, 0, 0));
  QPainter(&pixels).fillRect(20, 0, 20, 40, QColor(0, 255, 255));
  return pixels;
}
const DevicePicture kHalves{"halves", nullptr, 40, 40};

// A gauge of 101 pixels, around the middle of its pixel (50, 50).
class GaugeViewTest : public ViewTest {
 protected:
  GaugeViewTest() {
    gauge.BackColor = 0x1E140A;
    gauge.CircleColor = 0xFFFFFF;
    gauge.BorderColor = 0xFF00FF;
    view.setAccessibleName("Received");
    view.resize(101, 101);
    view.setGauge(&gauge,
                  [](const std::string& name) { return name == "halves" ? halves() : QIcon(); });
  }

  // The view's pixels on a screen of that scale, on a ground of pure blue.
  QImage atScale(double scale) {
    QImage image(view.size() * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::blue);
    view.render(&image, QPoint(), QRegion(), QWidget::DrawChildren | QWidget::IgnoreMask);
    return image;
  }

  // The colour in the middle of a pixel of the gauge.
  static QColor colourAt(const QImage& image, double x, double y) {
    const double scale = image.devicePixelRatio();
    return image.pixelColor(static_cast<int>((x + 0.5) * scale),
                            static_cast<int>((y + 0.5) * scale));
  }

  // Shows the view, painted as it is now.
  void show() {
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    settle();
  }

  // Waits until nothing is left to be painted.
  static void settle() { QTest::qWait(60); }

  bkCProg gauge;
  GaugeView view;
};

// Whether a colour is another one but for the smoothing of an edge.
bool isNear(const QColor& colour, const QColor& other) {
  constexpr int kMost = 70;
  return std::abs(colour.red() - other.red()) < kMost &&
         std::abs(colour.green() - other.green()) < kMost &&
         std::abs(colour.blue() - other.blue()) < kMost;
}

const QColor kGround(10, 20, 30);
const QColor kWhite(255, 255, 255);
const QColor kPurple(255, 0, 255);

TEST_F(GaugeViewTest, TheGroundReachesEveryEdgeAtEveryScale) {
  for (const double scale : kScales) {
    const QImage image = atScale(scale);
    const QPoint last(image.width() - 1, image.height() - 1);
    EXPECT_EQ(image.pixelColor(0, 0), kGround) << scale;
    EXPECT_EQ(image.pixelColor(last), kGround) << scale;
    EXPECT_EQ(image.pixelColor(0, last.y()), kGround) << scale;
    EXPECT_EQ(image.pixelColor(last.x(), 0), kGround) << scale;
  }
}

TEST_F(GaugeViewTest, TheArcCoversItsPartOfTheCircleInItsColoursAtEveryScale) {
  gauge.Value = 75;
  for (const double scale : kScales) {
    const QImage image = atScale(scale);
    const QColor colour = colourAt(image, 60, 20);  // 18 degrees of 360
    EXPECT_NEAR(colour.red(), 199, 2) << scale;
    EXPECT_NEAR(colour.green(), 28, 4) << scale;
    EXPECT_EQ(colourAt(image, 30, 30), kWhite) << scale;
    EXPECT_GT(colourAt(image, 30, 70).green(), 200) << scale;
  }
}

TEST_F(GaugeViewTest, TheBorderLiesOnTheEdgeOfTheDialAndNothingBeyondIt) {
  gauge.Value = 100;
  for (const double scale : kScales) {
    const QImage image = atScale(scale);
    for (const QPoint place : {QPoint(50, 1), QPoint(99, 50), QPoint(50, 99), QPoint(1, 50)}) {
      EXPECT_TRUE(isNear(colourAt(image, place.x(), place.y()), kPurple))
          << scale << " " << place.x();
    }
    const int middle = static_cast<int>(50.5 * scale);
    EXPECT_EQ(image.pixelColor(middle, 0), kGround) << scale;
    EXPECT_EQ(image.pixelColor(image.width() - 1, middle), kGround) << scale;
  }
}

// How far the spokes miss the border on each side differs by less than a pixel.
TEST_F(GaugeViewTest, SpokesFillTheDialToItsBorderAllAround) {
  gauge.Value = 100;
  gauge.Gradient = false;
  const QImage image = atScale(2);
  for (int degrees = 0; degrees < 360; ++degrees) {
    const double turn = degrees * 3.141592653589793 / 180;
    const QColor colour = colourAt(image, 50 + 47.5 * std::sin(turn), 50 - 47.5 * std::cos(turn));
    EXPECT_EQ(colour, QColor(192, 0, 0)) << degrees;
  }
}

TEST_F(GaugeViewTest, AnUprightNeedleHasSharpEdgesAtEveryScale) {
  gauge.ShowArc = false;
  gauge.ShowCircle = false;
  gauge.ShowBorder = false;
  gauge.Gradient = false;
  gauge.ShowNeedle = true;
  gauge.NeedleColor = 0xFF;
  gauge.Value = 0;
  for (const double scale : kScales) {
    const QImage image = atScale(scale);
    int red = 0;
    for (int x = 0; x < image.width(); ++x) {
      const QColor colour = image.pixelColor(x, static_cast<int>(25 * scale));
      if (colour == QColor(255, 0, 0)) {
        ++red;
      } else {
        EXPECT_EQ(colour, kGround) << scale << " " << x;
      }
    }
    EXPECT_EQ(red, std::lround(3 * scale)) << scale;
  }
}

// The tick at the top, 10 pixels and half the pen around (50, 6).
TEST_F(GaugeViewTest, SquareTicksHaveSharpEdgesAtEveryScale) {
  gauge.ShowArc = false;
  gauge.ShowCircle = false;
  gauge.ShowBorder = false;
  gauge.TickStyle = kFilledSquares;
  gauge.TickFrequency = 50;
  gauge.TickSize = 10;
  for (const double scale : kScales) {
    const QImage image = atScale(scale);
    int black = 0;
    for (int x = 0; x < image.width(); ++x) {
      const QColor colour = image.pixelColor(x, static_cast<int>(6 * scale));
      if (colour == QColor(Qt::black)) {
        ++black;
      } else {
        EXPECT_EQ(colour, kGround) << scale << " " << x;
      }
    }
    EXPECT_NEAR(black, 10 * scale, 1) << scale;
  }
}

TEST_F(GaugeViewTest, HollowTicksShowWhatLiesBehind) {
  gauge.ShowArc = false;
  gauge.ShowBorder = false;
  gauge.TickSize = 20;
  gauge.TickStyle = kHollowDots;
  EXPECT_EQ(colourAt(atScale(1), 49, 11), kWhite);
  gauge.TickStyle = kHollowSquares;
  EXPECT_EQ(colourAt(atScale(1), 49, 11), kWhite);
  gauge.TickStyle = kFilledDots;
  EXPECT_EQ(colourAt(atScale(1), 49, 11), QColor(Qt::black));
}

TEST_F(GaugeViewTest, ABorderOverAPartOfATurnLeavesTheRestOpen) {
  gauge.Span = 180;
  gauge.Value = 0;
  const QImage right = atScale(1);
  EXPECT_TRUE(isNear(colourAt(right, 99, 49), kPurple));
  EXPECT_EQ(colourAt(right, 1, 49), kGround);

  gauge.Clockwise = false;
  const QImage left = atScale(1);
  EXPECT_EQ(colourAt(left, 99, 49), kGround);
  EXPECT_TRUE(isNear(colourAt(left, 1, 49), kPurple));
}

TEST_F(GaugeViewTest, TheTextStandsInTheMiddleInItsColour) {
  gauge.ShowArc = false;
  gauge.ShowValue = true;
  gauge.TextColor = 0;
  gauge.Value = 88;
  const QImage image = atScale(2);
  QRect ink;
  for (int y = 20; y < 180; ++y) {
    for (int x = 20; x < 180; ++x) {
      if (image.pixelColor(x, y) == QColor(Qt::black)) ink |= QRect(x, y, 1, 1);
    }
  }
  EXPECT_GT(ink.width(), 10);
  EXPECT_NEAR(ink.center().x(), 101, 3);
  EXPECT_NEAR(ink.center().y(), 101, 4);
}

TEST_F(GaugeViewTest, OtherLettersOfTheWindowAreMeasuredAnew) {
  gauge.ShowValue = true;
  const auto before = std::get<TextOutA>(gauge.operations().back());
  QFont larger = view.font();
  larger.setPointSize(30);
  view.setFont(larger);
  const auto after = std::get<TextOutA>(gauge.operations().back());
  EXPECT_LT(after.x, before.x - 10);
  EXPECT_LT(after.y, before.y - 5);
}

TEST_F(GaugeViewTest, AFontOfTheGaugesOwnIsTaken) {
  gauge.ShowValue = true;
  const auto before = std::get<TextOutA>(gauge.operations().back());
  gauge.Font = DeviceFont{"DejaVu Sans Mono", 30, true, true};
  const auto after = std::get<TextOutA>(gauge.operations().back());
  EXPECT_LT(after.x, before.x - 10);
}

TEST_F(GaugeViewTest, LettersAreThoseAroundButForWhatTheFontNames) {
  QFont around("DejaVu Sans", 9);
  EXPECT_EQ(lettersOf(DeviceFont{}, around), around);
  const QFont own = lettersOf(DeviceFont{"DejaVu Serif", 12, true, true}, around);
  EXPECT_EQ(own.family(), "DejaVu Serif");
  EXPECT_EQ(own.pointSizeF(), 12);
  EXPECT_TRUE(own.bold());
  EXPECT_TRUE(own.italic());
}

// --- Pictures, edges and shapes ---

TEST_F(GaugeViewTest, APictureFillsTheControlBehindTheDial) {
  gauge.ShowCircle = false;
  gauge.Value = 0;
  gauge.Picture = kHalves;
  const QImage image = atScale(1);
  EXPECT_EQ(colourAt(image, 0, 0), QColor(255, 0, 0));
  EXPECT_EQ(colourAt(image, 100, 100), QColor(0, 255, 255));
  EXPECT_TRUE(isNear(colourAt(image, 50, 1), kPurple));
}

TEST_F(GaugeViewTest, APictureThatIsNotThereLeavesTheGround) {
  gauge.Picture = DevicePicture{"none", nullptr, 40, 40};
  EXPECT_EQ(colourAt(atScale(1), 0, 0), kGround);
}

TEST_F(GaugeViewTest, TheImageOfAGaugeIsAPictureForAnother) {
  bkCProg other;
  other.BackColor = 0x0000FF;
  other.ShowBorder = false;
  other.ShowArc = false;
  gauge.ShowCircle = false;
  gauge.Value = 0;
  gauge.Picture = other.Image();
  EXPECT_EQ(colourAt(atScale(2), 0, 0), QColor(255, 0, 0));
}

TEST_F(GaugeViewTest, AGaugeThatTakesItsPicturesSizeIsShownInIt) {
  gauge.Picture = kHalves;
  gauge.AutoSizeToPicture();
  EXPECT_EQ(view.size(), QSize(40, 40));
  EXPECT_EQ(gauge.width(), 40);
  EXPECT_EQ(gauge.XCenter, 20);
}

TEST_F(GaugeViewTest, ASunkenEdgeLiesAroundTheDialAndNotOnIt) {
  gauge.Inset = true;
  EXPECT_EQ(gauge.width(), 99);
  const QImage image = atScale(1);
  EXPECT_EQ(colourAt(image, 30, 0), view.palette().color(QPalette::Dark));
  EXPECT_EQ(colourAt(image, 30, 100), view.palette().color(QPalette::Light));
  EXPECT_TRUE(isNear(colourAt(image, 50, 2), kPurple));

  gauge.Inset = false;
  EXPECT_EQ(gauge.width(), 101);
}

TEST_F(GaugeViewTest, AnAutoMaskLeavesTheWindowAroundTheDial) {
  gauge.AutoMask = true;
  show();
  for (const double scale : kScales) {
    const QImage image = atScale(scale);
    EXPECT_EQ(colourAt(image, 0, 0), QColor(Qt::blue)) << scale;
    EXPECT_TRUE(isNear(colourAt(image, 50, 1), kPurple)) << scale;
    EXPECT_EQ(colourAt(image, 30, 30), kWhite) << scale;
  }
}

TEST_F(GaugeViewTest, TheMouseGoesPastWhatTheMaskTakesAway) {
  gauge.AutoMask = true;
  show();
  EXPECT_FALSE(view.mask().contains(QPoint(3, 3)));
  EXPECT_TRUE(view.mask().contains(QPoint(50, 50)));

  gauge.AutoMask = false;
  settle();
  EXPECT_TRUE(view.mask().isEmpty());
}

TEST_F(GaugeViewTest, AMaskPictureTakesAwayWhatHasItsColour) {
  gauge.MaskPicture = kHalves;
  gauge.MaskColor = 0xFFFF00;
  gauge.UseMask = true;
  const QImage image = atScale(1);
  EXPECT_EQ(colourAt(image, 0, 0), kGround);
  EXPECT_EQ(colourAt(image, 100, 100), QColor(Qt::blue));
  EXPECT_EQ(colourAt(image, 70, 50), QColor(Qt::blue));
}

// --- When it is painted ---

TEST_F(GaugeViewTest, TheSameValueAgainPaintsNothing) {
  show();
  PaintCount paints(view);
  for (int i = 0; i < 10; ++i) gauge.Value = 50;
  settle();
  EXPECT_EQ(paints.count, 0);
}

TEST_F(GaugeViewTest, AValueThatLooksTheSamePaintsNothingAndIsToldAllTheSame) {
  gauge.Max = 100000;
  show();
  PaintCount paints(view);
  gauge.Value = 51;
  settle();
  EXPECT_EQ(paints.count, 0);
  EXPECT_EQ(view.accessibleName(), "Received 51");
}

TEST_F(GaugeViewTest, AThousandValuesBeforeTheNextPaintingArePaintedOnce) {
  show();
  PaintCount paints(view);
  for (int i = 0; i < 1000; ++i) gauge.Value = i % 100;
  settle();
  EXPECT_EQ(paints.count, 1);
  EXPECT_EQ(view.accessibleName(), "Received 99");
}

// The time is real: it is the screen's frames that count.
TEST_F(GaugeViewTest, AGaugeIsPaintedOnceAFrameHoweverOftenItChanges) {
  show();
  PaintCount paints(view);
  QElapsedTimer time;
  time.start();
  int changes = 0;
  while (time.elapsed() < 100) {
    gauge.Value = ++changes % 100;
    QCoreApplication::processEvents();
  }
  const double frames = static_cast<double>(time.elapsed()) / (1000.0 / 60);
  EXPECT_GT(changes, 20);
  EXPECT_GE(paints.count, 2);
  EXPECT_LE(paints.count, frames + 1);
}

TEST_F(GaugeViewTest, AGaugeThatChangedOutOfSightIsPaintedWhenItIsShown) {
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

TEST_F(GaugeViewTest, AScreenReaderIsToldTheValueBehindTheName) {
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&view)->text(QAccessible::Name), "Received 50");
}

TEST_F(GaugeViewTest, AGaugeWithoutANameIsToldByItsValue) {
  bkCProg other;
  GaugeView plain;
  plain.setGauge(&other);
  EXPECT_EQ(plain.accessibleName(), "50");
}

TEST_F(GaugeViewTest, TheHandleIsThatOfTheWindow) {
  show();
  EXPECT_EQ(gauge.hWnd(), view.winId());
}

TEST_F(GaugeViewTest, AGaugeThatIsTakenAwayIsNotAskedAgain) {
  view.setGauge(nullptr);
  EXPECT_EQ(gauge.hWnd(), 0U);
  gauge.Value = 70;
  view.resize(60, 60);
  EXPECT_EQ(gauge.width(), 101);
  EXPECT_EQ(atScale(1).pixelColor(30, 30), QColor(Qt::blue));
}

TEST_F(GaugeViewTest, AGaugeMayEndBeforeItsView) {
  GaugeView other;
  {
    bkCProg brief;
    other.setGauge(&brief);
  }
  other.resize(60, 60);
  EXPECT_EQ(other.width(), 60);
}

TEST_F(GaugeViewTest, AViewMayEndBeforeItsGauge) {
  bkCProg other;
  { GaugeView().setGauge(&other); }
  other.Value = 70;
  EXPECT_EQ(other.hWnd(), 0U);
}

TEST_F(GaugeViewTest, TheSystemsColoursAreThoseOfTheProgramsLook) {
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

TEST_F(GaugeViewTest, TheBinderTiesEveryGaugeToItsWidget) {
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

TEST_F(GaugeViewTest, ABinderThatGoesLeavesNoObserverBehind) {
  const auto form = std::make_shared<GaugeForm>(program);
  form->load();
  { const Binder binder(*form, windowOfGauges(), events.gate(), files); }

  form->NetRec1[0].Value = 30;
  form->NetRec1[0].visible = false;

  EXPECT_EQ(form->NetRec1[0].hWnd(), 0U);
}

}  // namespace
}  // namespace veltrin
