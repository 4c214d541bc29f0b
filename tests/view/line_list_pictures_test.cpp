// SPDX-License-Identifier: GPL-3.0-or-later
// Photographs of the lines of a list box.
#include <array>

#include "line_list_fixture.h"
#include "pictures.h"

namespace veltrin {
namespace {

class LineListPictures : public WithLineList<Pictures> {
 protected:
  // A heading and a line in each colour of the report.
  void fillReport() {
    constexpr std::array<std::int32_t, 6> kInks{0x008000, 0x0040C0, 0x0000FF,
                                                0x0000C0, 0xC000C0, 0xC0C000};
    list().setImageList(&form->ImageList1);
    for (const std::int32_t ink : kInks) {
      list().AddItem("Physical Memory", 1, ink, true);
      list().AddItem("     Capacity: 16384 MB", 0, ink);
    }
    list().AddItem("     A line that is much too long for the width of the list box", 1);
    settle();
  }
};

TEST_F(LineListPictures, AnEmptyList) { photograph("lines-empty"); }

TEST_F(LineListPictures, HeadingsAndLinesInAllColours) {
  view->resize(300, 300);
  window->resize(300, 300);
  fillReport();
  photograph("lines-colours");
}

TEST_F(LineListPictures, AllColoursOnADarkDesktop) {
  QPalette dark = view->palette();
  dark.setColor(QPalette::Base, QColor(30, 30, 28));
  dark.setColor(QPalette::Text, QColor(230, 230, 226));
  window->setPalette(dark);
  view->resize(300, 300);
  window->resize(300, 300);
  fillReport();
  list().setListIndex(3);
  photograph("lines-dark");
}

TEST_F(LineListPictures, CheckBoxesAPaleLineAndTheSelection) {
  list().CheckBoxes = true;
  list().setImageList(&form->ImageList1);
  list().AddItem("Processors", 1, 0x008000, true, true);
  list().AddItem("Cache", 1, -1, false, false, true);
  list().AddItem("Selected", 1, 0xC000C0, false, true);
  list().AddItem("Plain", 1);
  list().setListIndex(2);
  settle();
  photograph("lines-checks");
}

TEST_F(LineListPictures, AnEditUnderWay) {
  fillReport();
  list().setListIndex(1);
  settle();
  press(Qt::Key_F2);
  photograph("lines-edit");
}

TEST_F(LineListPictures, SelectedWithoutTheKeyboard) {
  fillReport();
  list().HideSelection = false;
  list().setListIndex(2);
  view->clearFocus();
  settle();
  photograph("lines-inactive");
}

TEST_F(LineListPictures, LinesThatWrapAndADisabledList) {
  list().LabelWrap = true;
  fillReport();
  list().setListIndex(12);
  settle();
  photograph("lines-wrap");
  list().enabled = false;
  settle();
  photograph("lines-disabled");
}

}  // namespace
}  // namespace veltrin
