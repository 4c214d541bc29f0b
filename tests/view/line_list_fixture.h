// SPDX-License-Identifier: GPL-3.0-or-later
// A list box of the program's own in a small window.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>
#include <QScrollBar>

#include "gauge_fixture.h"
#include "view/binder.h"
#include "view/line_list.h"
#include "view_test.h"

namespace veltrin {

inline constexpr std::int32_t kGreenInk = 0x008000;   // 0, 128, 0
inline constexpr std::int32_t kPurpleInk = 0xC000C0;  // 192, 0, 192

class ListForm : public Form {
 public:
  ListForm(FormHost& host, Platform& platform) : Form("ListForm", host), List1(platform) {
    own("List1", List1);
    own("ImageList1", ImageList1);
    ImageList1.pictures = {{"indepth", "Processor"}, {"no-such-picture", "Memory"}};
  }

  LVListBox List1;
  ImageList ImageList1;
};

class NoHost : public FormHost {
 public:
  void unload(Form& form) override { form.end(); }
};

// The window, 300 by 200 pixels, is shown and has the keyboard on its list.
template <class Base>
class WithLineList : public Base {
 protected:
  void SetUp() override {
    Base::SetUp();
    form = std::make_shared<ListForm>(host, this->platform);
    form->load();
    auto look = std::make_unique<FormWindow>();
    look->resize(300, 200);
    auto* shown = new LineList(look.get());
    shown->setObjectName("List1");
    shown->setAccessibleName("Lines");
    shown->setGeometry(0, 0, 300, 200);
    binder = std::make_unique<Binder>(*form, std::move(look), this->events.gate(), this->files);
    this->window = &binder->window();
    view = shown;
    this->window->show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(this->window));
    view->setFocus();
    settle();
  }

  // So many lines, "Line 0" and so on.
  void fill(int count) {
    for (int line = 0; line < count; ++line) list().AddItem("Line " + std::to_string(line));
    settle();
  }

  // Waits until all that has happened to the list is on the screen.
  void settle() {
    QTest::qWait(40);
    this->atRest([] {});
  }

  void press(Qt::Key key, Qt::KeyboardModifiers with = {}) {
    this->atRest([&] { QTest::keyClick(this->window->windowHandle(), key, with); });
  }

  QPoint inWindow(const QPoint& place) const {
    return view->viewport()->mapTo(this->window, place);
  }
  QPoint textOf(int row) const { return view->partsOf(row).text.center(); }
  void click(const QPoint& place, Qt::KeyboardModifiers with = {}) {
    this->atRest([&] {
      QTest::mouseClick(this->window->windowHandle(), Qt::LeftButton, with, inWindow(place));
    });
  }

  QLineEdit* editor() const { return view->viewport()->template findChild<QLineEdit*>(); }

  QImage pixels(double scale = 1) const {
    QImage image(view->viewport()->size() * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    view->viewport()->render(&image);
    return image;
  }

  // Whether a colour is seen somewhere in a part of the list.
  static bool has(const QImage& image, const QRect& part, const QColor& colour) {
    const double scale = image.devicePixelRatio();
    for (int y = static_cast<int>(part.top() * scale); y < (part.bottom() + 1) * scale; ++y) {
      for (int x = static_cast<int>(part.left() * scale); x < (part.right() + 1) * scale; ++x) {
        if (image.pixelColor(x, y) == colour) return true;
      }
    }
    return false;
  }

  LVListBox& list() const { return form->List1; }
  int rows() const { return view->model()->rowCount(); }
  std::string rowText(int row) const {
    return fromQt(view->model()->index(row, 0).data().toString());
  }

  NoHost host;
  std::shared_ptr<ListForm> form;
  std::unique_ptr<Binder> binder;
  LineList* view = nullptr;
};

using LineListTest = WithLineList<ViewTest>;

}  // namespace veltrin
