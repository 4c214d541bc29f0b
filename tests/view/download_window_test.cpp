// SPDX-License-Identifier: GPL-3.0-or-later
// The window of the download test: what of it is in sight, and a run under real input.
#include <set>

#include <QLabel>
#include <QListView>
#include <QProgressBar>
#include <QScrollBar>

#include "download/testdl.h"
#include "frame/startup.h"
#include "view/contrast.h"
#include "view/drawing_view.h"
#include "view_test.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

const char* const kTitle = "Stability Analyzer ";

class DownloadWindow : public ViewTest {
 protected:
  // The window, which does not begin its work.
  std::shared_ptr<testdl> look() {
    looked = std::make_shared<testdl>(program);
    desktop.show(*looked);
    window = desktop.windowOf(*looked);
    EXPECT_TRUE(QTest::qWaitForWindowActive(window));
    return looked;
  }

  void TearDown() override {
    if (looked) desktop.remove(*looked);
  }

  // The summary of a run, with the path of its file.
  void summarise(const std::string& path) {
    for (const char* row :
         {"Advance Settings Summary", "Total Bytes Received = 10485760",
          "Download Time = ", "Speed: 1310.72 KB/s   /  10485.76 Kb/s", "",
          "Total Packets Send = 0", "Total Packets Received = 0", "Total Lost/Dropped Packets = 0",
          "Latency Lag = 0 sec", "", "Data Saved in"}) {
      looked->summ.add(row);
    }
    looked->summ.add(path);
    atRest([] {});
  }

  std::shared_ptr<testdl> looked;
};

TEST_F(DownloadWindow, ShowsWhatItTellsAndKeepsItsStoresOutOfSight) {
  look();

  for (const char* name : {"lb1", "prgBAR_0", "summ", "Command1"}) {
    EXPECT_TRUE(window->rect().contains(widget(name)->geometry())) << name;
    EXPECT_TRUE(widget(name)->isVisible()) << name;
  }
  for (const char* name :
       {"Text1", "Text2", "text3", "Label1", "Label2", "Label3", "List1", "List2", "List3", "buff1",
        "buff2", "buff3", "buff4", "dinfo1", "dinfo2", "dinfo3"}) {
    EXPECT_GT(widget(name)->mapTo(window, QPoint()).y(), window->height()) << name;
    EXPECT_FALSE(widget(name)->isVisible()) << name;
  }
}

TEST_F(DownloadWindow, TheSixPicturesHaveOnePlaceAndOneSize) {
  const auto form = look();
  atRest([] {});
  const QRect board = widget("decorBoard")->geometry();

  for (PictureBox& each : form->picGraph) each.visible = true;
  atRest([] {});

  for (int index = 0; index < 6; ++index) {
    const auto* picture = widget(("picGraph_" + std::to_string(index)).c_str());
    EXPECT_EQ(picture->geometry(), QRect(QPoint(), board.size())) << index;
  }
  EXPECT_EQ(widget("decorBoard")->geometry(), board);
}

// The place of the pictures looks the same while none of them is shown.
TEST_F(DownloadWindow, AnEmptyPictureLooksLikeTheBoardBelowIt) {
  const auto form = look();
  atRest([] {});
  const QImage bare = widget("decorBoard")->grab().toImage();

  form->picGraph[0].visible = true;
  atRest([] {});

  EXPECT_EQ(widget("decorBoard")->grab().toImage(), bare);
}

TEST_F(DownloadWindow, TheCurveIsReadableOnItsGround) {
  look();
  const QImage board = widget("decorBoard")->grab().toImage();

  EXPECT_GE(contrast(QColor(0, 255, 0), board.pixelColor(3, 3)), kReadableContrast);
}

TEST_F(DownloadWindow, AScreenReaderIsToldTheLastSampleOfTheCurve) {
  const auto form = look();
  form->picGraph[2].scale = UserScale{300, 15000};
  form->picGraph[2].visible = true;
  atRest([] {});

  program.shared<DownloadValues>().graph.DrawUsage1D(9400, form->picGraph[2], 2);

  EXPECT_TRUE(QTest::qWaitFor([this] {
    return widget("picGraph_2")->accessibleName() == "Speed in Kb/s over 30 seconds 9400";
  }));
}

TEST_F(DownloadWindow, TheSummaryIsSeenAsAWholeInLettersWithFeet) {
  look();
  summarise("/home/kim/.local/share/veltrin\\Download Stability Test.txt");
  const auto* list = widget<QListView>("summ");

  EXPECT_EQ(list->verticalScrollBar()->maximum(), 0);
  EXPECT_EQ(list->horizontalScrollBar()->maximum(), 0);
  EXPECT_EQ(list->font().families().constFirst(), "Times New Roman");
  EXPECT_EQ(list->font().styleHint(), QFont::Serif);
}

TEST_F(DownloadWindow, APathThatIsTooLongIsReachedByScrollingAside) {
  look();
  const std::string path = "/home/" + std::string(120, 'k') + "\\Download Stability Test.txt";
  summarise(path);
  auto* list = widget<QListView>("summ");

  EXPECT_GT(list->horizontalScrollBar()->maximum(), 0);
  EXPECT_EQ(list->verticalScrollBar()->maximum(), 0);
  const QRect row = list->visualRect(list->model()->index(11, 0));
  EXPECT_GE(row.width(), list->fontMetrics().horizontalAdvance(toQt(path)));
  EXPECT_LE(row.bottom(), list->viewport()->rect().bottom());
}

// Ten a second, for as long as the window is open.
TEST_F(DownloadWindow, SamplesAreNotLaidOutForNobodyToSee) {
  const auto form = look();

  for (int sample = 0; sample < 2000; ++sample) form->List2.add("9400");
  atRest([] {});

  const auto* list = widget<QListView>("List2");
  EXPECT_EQ(list->model()->rowCount(), 2000);
  EXPECT_EQ(list->verticalScrollBar()->maximum(), 0);
}

TEST_F(DownloadWindow, TheKeyboardGoesToTheSummaryOnceThereIsOne) {
  look();
  QWidget* list = widget("summ");
  EXPECT_EQ(list->focusPolicy(), Qt::NoFocus);
  EXPECT_FALSE(list->hasFocus());

  looked->summ.add("Advance Settings Summary");
  EXPECT_EQ(list->focusPolicy(), Qt::StrongFocus);

  looked->summ.clear();
  EXPECT_EQ(list->focusPolicy(), Qt::NoFocus);
}

TEST_F(DownloadWindow, EnterPressesItsButtonAlsoFromTheSummary) {
  int pressed = 0;
  const auto form = shown<testdl>();
  form->Command1.click = [&pressed] { ++pressed; };
  form->summ.add("Advance Settings Summary");
  form->Command1.enabled = true;
  widget("summ")->setFocus();

  atRest([&] { QTest::keyClick(window->windowHandle(), Qt::Key_Return); });

  EXPECT_EQ(pressed, 1);
}

TEST_F(DownloadWindow, EnterClosesNothingWhileTheFileComes) {
  const auto form = shown<testdl>();

  atRest([&] {
    for (const auto key : {Qt::Key_Return, Qt::Key_Space, Qt::Key_Escape}) {
      QTest::keyClick(window->windowHandle(), key);
    }
  });

  EXPECT_TRUE(form->isLoaded());
}

// A run from the menu with a server that sends 50 KB each 50 ms until there are some samples;
// the waits of the test are real.
class DownloadRun : public DownloadWindow {
 protected:
  void SetUp() override {
    DownloadWindow::SetUp();
    program.provide<testdl>(WindowName::testdl);
    profiles.write("Settings", "Rated Speed", "9,000", program.settingsFile);
    server.setInterval(50);
    server.callOnTimeout([this] { serve(); });
  }

  // The window of the test, or none.
  static QWidget* found() {
    for (QWidget* each : QApplication::topLevelWidgets()) {
      if (each->isVisible() && each->windowTitle() == kTitle) return each;
    }
    return nullptr;
  }

  void serve() {
    QWidget* here = found();
    if (here == nullptr || downloads.asked.empty()) return;
    constexpr int kSamples = 5;
    if (here->findChild<QListView*>("List2")->model()->rowCount() < kSamples) {
      downloads.asked[0]->comeProgress(static_cast<std::int64_t>(++pieces * kPiece), 100 * kPiece);
    } else if (!std::exchange(isSent, true)) {
      downloads.asked[0]->comeBody(std::string(pieces * kPiece, 'x'));
    }
    auto* button = here->findChild<QPushButton*>("Command1");
    captions.insert(fromQt(button->text()) + (button->isEnabled() ? " enabled" : " pale"));
    if (!button->isEnabled()) return;
    server.stop();
    note(*here);
    clickAt(button);
  }

  // What the window tells at its end.
  void note(QWidget& here) {
    scale = fromQt(here.findChild<QLabel*>("Label4")->text());
    const auto* rows = here.findChild<QListView*>("summ")->model();
    for (int row = 0; row < rows->rowCount(); ++row) {
      summary.push_back(fromQt(rows->index(row, 0).data().toString()));
    }
    for (int index = 0; index < 6; ++index) {
      const auto name = QStringLiteral("picGraph_%1").arg(index);
      if (here.findChild<QWidget*>(name)->isVisible()) pictures.push_back(index);
    }
    bar = here.findChild<QProgressBar*>("prgBAR_0")->value();
  }

  static constexpr std::size_t kPiece = 50000;  // bytes

  QTimer server;
  std::size_t pieces = 0;
  bool isSent = false;
  int bar = -1;
  std::string scale;
  std::set<std::string> captions;
  std::vector<std::string> summary;
  std::vector<int> pictures;
};

TEST_F(DownloadRun, FromTheMenuToTheButtonDone) {
  shown<startup>();
  server.start();

  atRest([&] { clickAt(widget("Image3")); });

  EXPECT_EQ(found(), nullptr);
  EXPECT_THAT(captions, ElementsAre("Cancel pale", "Done enabled", "Done pale"));
  EXPECT_EQ(scale, "Graph 0 to 15 Mbps");
  EXPECT_THAT(pictures, ElementsAre(0));
  EXPECT_EQ(bar, 0);
  ASSERT_THAT(summary, SizeIs(12));
  EXPECT_EQ(summary[1], "Total Bytes Received = " + std::to_string(pieces * kPiece));
  EXPECT_EQ(summary[11], program.programFolder + "\\Download Stability Test.txt");
  EXPECT_NE(program.shared<DownloadValues>().graph.UsageA.points().back(), 0);
}

}  // namespace
}  // namespace veltrin
