// SPDX-License-Identifier: GPL-3.0-or-later
// The lines of a list box: what the program does to them comes to the screen.
#include <QAccessible>

#include "line_list_fixture.h"
#include "view/contrast.h"

namespace veltrin {
namespace {

// Letters that are full of their colour.
const char* const kBlocks = "\u2588\u2588\u2588";

TEST_F(LineListTest, LinesThatAreAddedAreShownInTheirOrder) {
  list().AddItem("One");
  list().AddItem("Two");
  settle();

  ASSERT_EQ(rows(), 2);
  EXPECT_EQ(rowText(0), "One");
  EXPECT_EQ(rowText(1), "Two");
}

TEST_F(LineListTest, ALineThatComesAmongTheOthersIsShownThere) {
  list().Sorted = true;
  list().AddItem("Berlin");
  list().AddItem("Delft");
  settle();

  list().AddItem("Calais");
  settle();

  ASSERT_EQ(rows(), 3);
  EXPECT_EQ(rowText(1), "Calais");
}

TEST_F(LineListTest, ALineThatIsRemovedGoes) {
  fill(3);

  list().RemoveItem(1);
  settle();

  ASSERT_EQ(rows(), 2);
  EXPECT_EQ(rowText(1), "Line 2");
}

TEST_F(LineListTest, ALineThatComesAndGoesWithinAFrameLeavesTheOthers) {
  fill(2);

  list().AddItem("Short");
  list().RemoveItem(2);
  list().AddItem("Long");
  settle();

  ASSERT_EQ(rows(), 3);
  EXPECT_EQ(rowText(2), "Long");
}

TEST_F(LineListTest, ATextThatChangesIsPaintedAnew) {
  list().AddItem("");
  settle();
  const QImage before = pixels();

  list().setList(0, "Text");
  settle();

  EXPECT_NE(pixels(), before);
}

TEST_F(LineListTest, TheSelectedLineIsBroughtIntoView) {
  fill(100);

  list().setListIndex(list().ListCount());
  settle();

  EXPECT_EQ(view->currentIndex().row(), 99);
  EXPECT_TRUE(view->selectionModel()->isSelected(view->model()->index(99, 0)));
  EXPECT_EQ(view->visualRect(view->model()->index(99, 0)).bottom(),
            view->viewport()->rect().bottom());
}

TEST_F(LineListTest, TheFirstLineComesIntoViewAtTheTop) {
  fill(100);
  list().setListIndex(99);
  settle();

  list().setListIndex(0);
  settle();

  EXPECT_EQ(view->verticalScrollBar()->value(), 0);
}

TEST_F(LineListTest, ALineThatIsOnlySelectedMovesNothing) {
  fill(100);

  list().setSelected(99, true);
  settle();

  EXPECT_EQ(view->verticalScrollBar()->value(), 0);
}

TEST_F(LineListTest, ALineIsShownBelowTheOthersWithoutGaps) {
  fill(1000);

  const int height = view->look()->height();
  for (const int row : {0, 1, 999}) {
    EXPECT_EQ(view->visualRect(view->model()->index(row, 0)).top(), row * height);
  }
  EXPECT_EQ(view->verticalScrollBar()->maximum(), 1000 * height - view->viewport()->height());
}

TEST_F(LineListTest, LinesThatComeInOneFrameArePaintedAtOnce) {
  PaintCount paintings(*view->viewport());

  for (int line = 0; line < 5000; ++line) {
    list().AddItem("Line");
    list().setListIndex(list().ListCount());
  }
  settle();

  EXPECT_GE(paintings.count, 1);
  EXPECT_LE(paintings.count, 2);
}

TEST_F(LineListTest, RefreshesInOneFramePaintOnceAtMost) {
  fill(1);
  PaintCount paintings(*view->viewport());
  QElapsedTimer time;
  time.start();

  for (int line = 0; line < 1000; ++line) list().Refresh();
  settle();

  EXPECT_LE(paintings.count, 3 + time.elapsed() / 17);
}

TEST_F(LineListTest, ARefreshPaintsThoughNoEventsRun) {
  settle();
  PaintCount paintings(*view->viewport());

  list().AddItem("Now");
  list().Refresh();

  EXPECT_EQ(paintings.count, 1);
  EXPECT_EQ(rows(), 1);
}

TEST_F(LineListTest, ClearingALongListPaintsOnce) {
  fill(1000);
  PaintCount paintings(*view->viewport());

  list().Clear();
  settle();

  EXPECT_EQ(rows(), 0);
  EXPECT_EQ(paintings.count, 1);
}

TEST_F(LineListTest, AListThatWasClearedUnseenIsPaintedWithoutItsLines) {
  fill(10);

  list().ListView1.clear();

  EXPECT_EQ(pixels().pixelColor(20, 10), view->palette().color(QPalette::Base));
}

TEST_F(LineListTest, ALineHasItsOwnColourAndTheOthersTheLists) {
  list().AddItem(kBlocks, 0, kPurpleInk);
  list().AddItem(kBlocks);
  settle();
  list().setListIndex(-1);
  settle();

  const QImage image = pixels();
  EXPECT_TRUE(has(image, view->partsOf(0).text, QColor(192, 0, 192)));
  EXPECT_TRUE(has(image, view->partsOf(1).text, view->palette().color(QPalette::Text)));
}

TEST_F(LineListTest, EveryColourCanBeReadOnEveryGroundOfALine) {
  const LineLook* look = view->look();
  for (const ColourCode ground : {0xFFFFFFU, 0x000000U, 0x202020U, 0x808080U, 0x00FFFFU}) {
    list().BackColor = ground;
    settle();
    for (const ColourCode ink : {0x008000U, 0x0040C0U, 0x0000FFU, 0xC000C0U, 0xC0C000U, 0U}) {
      for (const bool isSelected : {false, true}) {
        for (const bool isPale : {false, true}) {
          ListLine line;
          line.ForeColor = ink;
          line.Ghosted = isPale;
          const LineState state{isSelected, true, false, false};
          EXPECT_GE(contrast(look->groundOf(state), look->inkOf(line, state)), 4.49)
              << ground << " " << ink << " " << isSelected << isPale;
        }
      }
    }
  }
}

TEST_F(LineListTest, ADarkDesktopHasADarkListWithLightLetters) {
  QPalette dark = view->palette();
  dark.setColor(QPalette::Base, QColor(30, 30, 30));
  dark.setColor(QPalette::Text, QColor(230, 230, 230));
  window->setPalette(dark);
  list().AddItem(kBlocks);
  settle();

  const QImage image = pixels();
  EXPECT_EQ(image.pixelColor(0, view->viewport()->height() - 1), QColor(30, 30, 30));
  EXPECT_TRUE(has(image, view->partsOf(0).text, QColor(230, 230, 230)));
}

TEST_F(LineListTest, ABoldLineIsWider) {
  list().AddItem("WWWWWWWW");
  list().AddItem("WWWWWWWW", 0, -1, true);
  settle();

  const ListView& lines = list().ListView1;
  EXPECT_FALSE(view->look()->lettersOf(lines.line(0)).bold());
  EXPECT_TRUE(view->look()->lettersOf(lines.line(1)).bold());
}

TEST_F(LineListTest, APaleLineIsCloserToTheGround) {
  list().AddItem("Plain");
  list().AddItem("Pale", 0, -1, false, false, true);
  settle();

  const ListView& lines = list().ListView1;
  const QColor ground = view->look()->groundOf({});
  EXPECT_LT(contrast(ground, view->look()->inkOf(lines.line(1), {})),
            contrast(ground, view->look()->inkOf(lines.line(0), {})));
}

TEST_F(LineListTest, OnlyAListWithPicturesHasRoomForThem) {
  fill(1);
  EXPECT_TRUE(view->partsOf(0).picture.isEmpty());

  list().setImageList(&form->ImageList1);
  settle();

  EXPECT_EQ(view->partsOf(0).picture.size(), QSize(16, 16));
  EXPECT_GT(view->partsOf(0).text.left(), view->partsOf(0).picture.right());
}

TEST_F(LineListTest, APictureThatIsNotThereLeavesItsRoomBlank) {
  list().setImageList(&form->ImageList1);
  list().AddItem("Memory", 2);
  settle();

  const QRect room = view->partsOf(0).picture;
  const QImage image = pixels();
  const QColor ground = view->palette().color(QPalette::Base);
  for (int x = room.left(); x <= room.right(); ++x) {
    EXPECT_EQ(image.pixelColor(x, room.center().y()), ground);
  }
}

TEST_F(LineListTest, ATickedLineShowsItsTick) {
  list().CheckBoxes = true;
  list().AddItem("A");
  list().AddItem("A", 0, -1, false, true);
  settle();

  const QImage image = pixels();
  EXPECT_NE(image.copy(view->partsOf(0).check), image.copy(view->partsOf(1).check));
}

TEST_F(LineListTest, TheSelectionIsHiddenWhileTheKeyboardIsElsewhere) {
  fill(1);
  list().setListIndex(0);
  settle();
  const QColor selected = view->palette().color(QPalette::Highlight);
  EXPECT_EQ(pixels().pixelColor(1, 2), selected);

  view->clearFocus();
  settle();
  EXPECT_EQ(pixels().pixelColor(1, 2), view->palette().color(QPalette::Base));

  list().HideSelection = false;
  settle();
  EXPECT_EQ(pixels().pixelColor(1, 2), view->palette().color(QPalette::Mid));
}

TEST_F(LineListTest, AListWithoutABorderHasNoFrame) {
  EXPECT_GT(view->frameWidth(), 0);

  list().BorderStyle = 0;

  EXPECT_EQ(view->frameWidth(), 0);
}

TEST_F(LineListTest, AFlatListHasAPlainEdge) {
  list().Appearance = 0;

  EXPECT_EQ(view->frameShape(), QFrame::Box);
  EXPECT_EQ(view->frameShadow(), QFrame::Plain);
}

TEST_F(LineListTest, TheListHasItsOwnGroundAndLetters) {
  list().BackColor = 0x336699;
  list().Font = DeviceFont{"DejaVu Serif", 20, false, true};
  settle();

  EXPECT_EQ(pixels().pixelColor(150, 100), QColor(0x99, 0x66, 0x33));
  EXPECT_EQ(view->font().pointSizeF(), 20);
  EXPECT_TRUE(view->font().italic());
  EXPECT_GT(view->look()->height(), 28);
}

TEST_F(LineListTest, ALineThatWrapsIsTwoLinesHigh) {
  fill(1);
  const int height = view->look()->height();

  list().LabelWrap = true;
  settle();

  EXPECT_GT(view->look()->height(), height + 10);
}

TEST_F(LineListTest, ThePointerIsTheOneThatIsAskedFor) {
  list().MousePointer = 2;
  EXPECT_EQ(view->viewport()->cursor().shape(), Qt::CrossCursor);

  list().MousePointer = 11;
  EXPECT_EQ(view->viewport()->cursor().shape(), Qt::WaitCursor);
}

TEST_F(LineListTest, APictureBehindTheLinesStandsWhereItIsAligned) {
  auto drawing = std::make_shared<DeviceDrawing>();
  drawing->width = 10;
  drawing->height = 10;
  drawing->operations = {Cls{Colour{200, 100, 50}}};
  list().Picture = DevicePicture{"", drawing, 10, 10};
  list().PictureAlignment = 3;
  settle();

  const QImage image = pixels();
  const QRect whole = view->viewport()->rect();
  EXPECT_EQ(image.pixelColor(whole.right() - 5, whole.bottom() - 5), QColor(200, 100, 50));
  EXPECT_EQ(image.pixelColor(5, 5), view->palette().color(QPalette::Base));

  list().PictureAlignment = 5;
  settle();
  EXPECT_EQ(pixels().pixelColor(95, 95), QColor(200, 100, 50));
}

TEST_F(LineListTest, AScreenReaderIsToldTheLinesAndWhatTheirPicturesStandFor) {
  list().setImageList(&form->ImageList1);
  list().AddItem("Four cores", 1);
  list().AddItem("No picture");
  list().setListIndex(0);
  settle();

  QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(view);
  ASSERT_NE(reader, nullptr);
  ASSERT_EQ(reader->childCount(), 2);
  EXPECT_EQ(reader->text(QAccessible::Name), "Lines");
  EXPECT_EQ(reader->child(0)->text(QAccessible::Name), "Four cores");
  EXPECT_EQ(reader->child(0)->text(QAccessible::Description), "Processor");
  EXPECT_TRUE(reader->child(0)->state().selected);
  EXPECT_EQ(reader->child(1)->text(QAccessible::Description), "");
  EXPECT_FALSE(reader->child(1)->state().selected);
}

TEST_F(LineListTest, AScreenReaderIsToldWhichLinesAreTicked) {
  list().CheckBoxes = true;
  list().AddItem("A", 0, -1, false, true);
  list().AddItem("B");
  settle();

  QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(view);
  EXPECT_TRUE(reader->child(0)->state().checked);
  EXPECT_FALSE(reader->child(1)->state().checked);
}

TEST_F(LineListTest, AWindowThatGoesLeavesTheListWithoutAScreen) {
  fill(3);

  binder.reset();
  view = nullptr;

  EXPECT_EQ(list().ListView1.screen(), nullptr);
  list().AddItem("Later");
  settle();
  EXPECT_EQ(list().ListCount(), 4);
}

TEST_F(LineListTest, AFormThatGoesBeforeItsWindowIsNotReadAnyMore) {
  fill(3);
  const QPointer<LineList> shown(view);

  form.reset();
  binder.reset();

  ASSERT_TRUE(shown);
  EXPECT_EQ(shown->model()->rowCount(), 0);
  view = nullptr;
}

}  // namespace
}  // namespace veltrin
