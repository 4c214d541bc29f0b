// SPDX-License-Identifier: GPL-3.0-or-later
// Every window by the keyboard alone.
#include <algorithm>
#include <set>

#include <QAbstractButton>
#include <QImage>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>

#include "all_windows.h"
#include "forms/command_button.h"
#include "forms/image.h"
#include "forms/label.h"
#include "view/contrast.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Stops = std::vector<QWidget*>;

// A place in a window in one direction.
struct Span {
  int first = 0;
  int last = 0;
};

// The order in which a person reads what stands in a window, texts and stops alike: groups that
// a gap parts from side to side or from top to bottom. Down comes before across, but for columns
// of some stops each that stand further apart than their rows.
class ReadingOrder {
 public:
  ReadingOrder(const QWidget& window, const Stops& parts) : window_(window), read_(parts) {
    arrange(read_.begin(), read_.end());
  }

  const Stops& read() const { return read_; }

 private:
  using At = Stops::iterator;
  struct Cut {
    int width = 0;  // of the gap
    int place = 0;  // where the second group begins
  };

  Span spanOf(const QWidget& stop, bool down) const {
    const QRect place(stop.mapTo(&window_, QPoint()), stop.size());
    return down ? Span{place.top(), place.bottom()} : Span{place.left(), place.right()};
  }

  Cut widestCut(At first, At last, bool down) const {
    std::vector<Span> spans;
    for (At at = first; at != last; ++at) spans.push_back(spanOf(**at, down));
    std::sort(spans.begin(), spans.end(),
              [](const Span& one, const Span& other) { return one.first < other.first; });
    Cut widest;
    int covered = spans.front().last;
    for (const Span& span : spans) {
      const int gap = span.first - covered;
      if (gap > widest.width) widest = {gap, span.first};
      covered = std::max(covered, span.last);
    }
    return widest;
  }

  bool areColumns(At first, At last, int middle) const {
    constexpr int kShortest = 3;  // stops
    int left = 0;
    int right = 0;
    for (At at = first; at != last; ++at) {
      if (((*at)->focusPolicy() & Qt::TabFocus) == 0) continue;
      ++(spanOf(**at, false).first < middle ? left : right);
    }
    return std::min(left, right) >= kShortest;
  }

  void arrange(At first, At last) {
    if (last - first < 2) return;
    const Cut down = widestCut(first, last, true);
    const Cut across = widestCut(first, last, false);
    const bool isDown =
        down.width > 0 && (down.width >= across.width || !areColumns(first, last, across.place));
    const Cut& cut = isDown ? down : across;
    if (cut.width == 0) return;
    const At middle = std::stable_partition(
        first, last, [&](const QWidget* stop) { return spanOf(*stop, isDown).first < cut.place; });
    arrange(first, middle);
    arrange(middle, last);
  }

  const QWidget& window_;
  Stops read_;
};

class KeyboardTest : public AllWindows {
 protected:
  // What the keyboard can be brought to, by its name.
  Stops stops() const {
    Stops found;
    for (QWidget* child : window->findChildren<QWidget*>()) {
      const bool isStop = (child->focusPolicy() & Qt::TabFocus) == Qt::TabFocus &&
                          child->isEnabled() && child->focusProxy() == nullptr;
      if (isStop && isSeen(*child)) found.push_back(child);
    }
    return found;
  }

  // These in the order of reading.
  Stops stopsInOrder() const {
    const Stops found = stops();
    Stops parts = found;
    for (QWidget* child : window->findChildren<QWidget*>()) {
      const bool isText = qobject_cast<const QLabel*>(child) != nullptr ||
                          qobject_cast<const QAbstractButton*>(child) != nullptr;
      const bool isNew = std::find(found.begin(), found.end(), child) == found.end();
      if (isText && isNew && isSeen(*child)) parts.push_back(child);
    }
    Stops order = ReadingOrder(*window, parts).read();
    std::erase_if(order, [&](QWidget* part) {
      return std::find(found.begin(), found.end(), part) == found.end();
    });
    return order;
  }

  void press(int key, Qt::KeyboardModifiers modifiers = {}) {
    atRest([&] { QTest::keyClick(window->windowHandle(), Qt::Key(key), modifiers); });
  }

  // What the key visits, from where the keyboard is, until it is back or has gone nowhere.
  Stops visitedBy(int key, Qt::KeyboardModifiers modifiers = {}) {
    Stops visited;
    if (QApplication::focusWidget() == nullptr) press(key, modifiers);
    QWidget* first = QApplication::focusWidget();
    QWidget* now = first;
    while (now != nullptr && visited.size() < kMostStops) {
      visited.push_back(now);
      press(key, modifiers);
      now = QApplication::focusWidget();
      if (now == first) break;
    }
    return visited;
  }

  // Begins with the same stop as the other.
  static Stops turnedTo(const Stops& like, Stops stops) {
    if (like.empty()) return stops;
    const auto first = std::find(stops.begin(), stops.end(), like.front());
    std::rotate(stops.begin(), first, stops.end());
    return stops;
  }

  static std::vector<std::string> namesOf(const Stops& stops) {
    std::vector<std::string> names;
    for (const QWidget* stop : stops) names.push_back(fromQt(stop->objectName()));
    return names;
  }

  // The window around a control, as it is painted now.
  QImage around(const QWidget& stop) {
    constexpr int kMargin = 3;  // pixels
    const QRect place = QRect(stop.mapTo(window, QPoint()), stop.size())
                            .adjusted(-kMargin, -kMargin, kMargin, kMargin)
                            .intersected(window->rect());
    QImage image(place.size(), QImage::Format_RGB32);
    window->render(&image, QPoint(), QRegion(place));
    return image;
  }

  // How many pixels have become so much darker or lighter that it is noticed (WCAG 2.2, success
  // criterion 2.4.13: a contrast of 3 between the states).
  static int noticed(const QImage& before, const QImage& after) {
    constexpr double kNoticed = 3;
    int pixels = 0;
    for (int y = 0; y < before.height(); ++y) {
      for (int x = 0; x < before.width(); ++x) {
        const QRgb one = before.pixel(x, y);
        const QRgb other = after.pixel(x, y);
        if (one != other && contrast(QColor(one), QColor(other)) >= kNoticed) ++pixels;
      }
    }
    return pixels;
  }

  static constexpr std::size_t kMostStops = 100;
};

TEST_F(KeyboardTest, TabReachesEachControlOfEveryWindowOnceInTheOrderOfReading) {
  inEachFullWindow([&](Form&) {
    const Stops visited = visitedBy(Qt::Key_Tab);

    EXPECT_EQ(namesOf(visited), namesOf(turnedTo(visited, stopsInOrder())));
  });
}

TEST_F(KeyboardTest, AWindowAsItOpensHidesNoneOfTheStopsOfTheKeyTab) {
  inEachWindow([&](Form&) {
    const Stops visited = visitedBy(Qt::Key_Tab);

    EXPECT_EQ(namesOf(visited), namesOf(turnedTo(visited, stopsInOrder())));
  });
}

TEST_F(KeyboardTest, ShiftAndTabGoTheSameWayBack) {
  inEachFullWindow([&](Form&) {
    Stops there = visitedBy(Qt::Key_Tab);
    const Stops back = visitedBy(Qt::Key_Backtab, Qt::ShiftModifier);
    std::reverse(there.begin(), there.end());

    EXPECT_EQ(namesOf(back), namesOf(turnedTo(back, there)));
  });
}

TEST_F(KeyboardTest, TheKeyboardBeginsAtTheFirstControlAndInTheMenuAtTheFirstTool) {
  inEachFullWindow([&](Form& form) {
    const Stops order = stopsInOrder();
    const std::string first = order.empty() ? "" : fromQt(order.front()->objectName());
    const QWidget* now = QApplication::focusWidget();

    EXPECT_EQ(now == nullptr || order.empty() ? "" : fromQt(now->objectName()),
              form.name() == "startup" ? "Command4" : first);
  });
}

// Of choices the one that is chosen has it, and a list that has rows.
TEST_F(KeyboardTest, WhateverIsPressedOrTypedIntoTakesTheKeyboard) {
  std::vector<std::string> mouseOnly;
  inEachFullWindow([&](Form& form) {
    for (const Control* control : form.controls()) {
      const bool isForHands = dynamic_cast<const CommandButton*>(control) != nullptr ||
                              dynamic_cast<const CheckBox*>(control) != nullptr ||
                              dynamic_cast<const ComboBox*>(control) != nullptr ||
                              dynamic_cast<const TextBox*>(control) != nullptr;
      const auto* shown = window->findChild<QWidget*>(toQt(widgetName(*control)));
      if (!isForHands || shown == nullptr || !isSeen(*shown)) continue;
      if ((shown->focusPolicy() & Qt::TabFocus) == 0) mouseOnly.push_back(placeOf(*shown));
    }
  });

  EXPECT_THAT(mouseOnly, IsEmpty());
}

TEST_F(KeyboardTest, WhereTheKeyboardIsIsSeenInEveryWindow) {
  std::vector<std::string> unseen;
  inEachFullWindow([&](Form&) {
    for (QWidget* stop : stops()) {
      stop->clearFocus();
      const QImage before = around(*stop);
      stop->setFocus(Qt::TabFocusReason);
      // At least as much as a line along two sides.
      if (noticed(before, around(*stop)) < stop->width() + stop->height()) {
        unseen.push_back(placeOf(*stop));
      }
    }
  });

  EXPECT_THAT(unseen, IsEmpty());
}

TEST_F(KeyboardTest, SpaceAndEnterPressEveryButtonThatHasTheKeyboard) {
  std::vector<std::string> unpressed;
  inEachFullWindow([&](Form& form) {
    for (Control* control : form.controls()) {  // so that a button does no more than count
      if (auto* button = dynamic_cast<CommandButton*>(control)) button->click = {};
      if (auto* label = dynamic_cast<Label*>(control)) label->click = {};
      if (auto* image = dynamic_cast<Image*>(control)) image->click = {};
    }
    for (QWidget* stop : stops()) {
      auto* button = qobject_cast<QPushButton*>(stop);
      if (button == nullptr) continue;
      int clicks = 0;
      QObject::connect(button, &QPushButton::clicked, button, [&clicks] { ++clicks; });
      button->setFocus();
      for (const int key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) press(key);
      if (clicks != 3) unpressed.push_back(placeOf(*button));
      button->disconnect(SIGNAL(clicked(bool)));
    }
  });

  EXPECT_THAT(unpressed, IsEmpty());
}

// What is done with the mouse alone: a click on something that the keyboard does not reach. The
// window itself takes keys for a click on it, which its texts share.
TEST_F(KeyboardTest, WhateverIsClickedIsPressedByAKeyToo) {
  std::vector<std::string> mouseOnly;
  inEachFullWindow([&](Form& form) {
    for (Control* control : form.controls()) {
      const auto* label = dynamic_cast<const Label*>(control);
      const auto* image = dynamic_cast<const Image*>(control);
      const bool isClicked =
          (label != nullptr && label->click) || (image != nullptr && image->click);
      const auto* shown = window->findChild<QWidget*>(toQt(widgetName(*control)));
      if (!isClicked || form.click || shown == nullptr) continue;
      if (shown->focusPolicy() != Qt::StrongFocus) mouseOnly.push_back(placeOf(*shown));
    }
  });

  EXPECT_THAT(mouseOnly, IsEmpty());
}

TEST_F(KeyboardTest, ArrowsGoThroughAGroupOfChoices) {
  printers.names = {"Laser printer"};
  printers.defaultName = printers.names.front();
  const auto form = shown<frmPrint>();
  widget("Option1")->setFocus();

  press(Qt::Key_Right);
  EXPECT_TRUE(widget("Option2")->hasFocus());
  EXPECT_TRUE(form->Option2.value().get());

  press(Qt::Key_Left);
  EXPECT_TRUE(form->Option1.value().get());
}

TEST_F(KeyboardTest, F10OpensTheMenuOfEveryWindowThatHasOne) {
  std::vector<std::string> withMenu;
  inEachWindow([&](Form& form) {
    auto* bar = window->findChild<QMenuBar*>();
    if (bar == nullptr) return;
    withMenu.push_back(form.name());

    press(Qt::Key_F10);
    EXPECT_EQ(bar->activeAction(), bar->actions().front());

    atRest([] {
      if (QWidget* menu = QApplication::activePopupWidget()) menu->close();
    });
  });

  EXPECT_THAT(withMenu, ElementsAre("trace", "frmSysInfo"));
}

// The letters that Alt brings to a control, a field by its label, or a menu.
TEST_F(KeyboardTest, NoLetterStandsForTwoThingsOfAWindow) {
  inEachFullWindow([&](Form&) {
    std::set<QString> letters;
    const auto note = [&](const QString& text) {
      const QKeySequence letter = QKeySequence::mnemonic(text);
      if (letter.isEmpty()) return;
      EXPECT_TRUE(letters.insert(letter.toString()).second) << fromQt(text);
    };
    for (const QWidget* child : window->findChildren<QWidget*>()) {
      if (!isSeen(*child)) continue;
      if (const auto* button = qobject_cast<const QAbstractButton*>(child)) note(button->text());
      const auto* label = qobject_cast<const QLabel*>(child);
      if (label != nullptr && label->buddy() != nullptr) note(label->text());
      const auto* bar = qobject_cast<const QMenuBar*>(child);
      if (bar == nullptr) continue;
      for (const QAction* entry : bar->actions()) note(entry->text());
    }
  });
}

TEST_F(KeyboardTest, TheKeyTabThatComesToAnOptionExplainsItAsTheMouseDoes) {
  const auto form = shown<indepth>();
  widget("text4")->setFocus(Qt::TabFocusReason);

  press(Qt::Key_Tab);

  EXPECT_TRUE(widget("Check1")->hasFocus());
  EXPECT_EQ(form->info.text.get(), program.texts.TipNoResolve);
  photograph("indepth-keyboard");
}

}  // namespace
}  // namespace veltrin
