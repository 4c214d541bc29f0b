// SPDX-License-Identifier: GPL-3.0-or-later
// Every text of every window can be read in each state that it may have: the contrast is
// measured in the painted pixels.
#include <functional>

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStringListModel>
#include <QStyleOptionButton>
#include <QStyleOptionComboBox>

#include "all_windows.h"
#include "view/contrast.h"
#include "view/line_list.h"

namespace veltrin {
namespace {

using testing::IsEmpty;

constexpr int kScale = 3;          // at which a stroke of a letter has its full colour somewhere
constexpr QSize kEnough(160, 20);  // pixels of a text that are looked at
const QString kWords = QStringLiteral("Mgx 8B0");

// One thing that is done to a widget to bring it into a state, and taken back.
struct State {
  const char* name;
  std::function<void(QWidget&)> enter;
  std::function<void(QWidget&)> leave;
};

void touch(QWidget& widget, bool isTouched) { widget.setAttribute(Qt::WA_UnderMouse, isTouched); }

void hold(QWidget& widget, bool isHeld) {
  if (auto* button = qobject_cast<QAbstractButton*>(&widget)) button->setDown(isHeld);
}

std::vector<State> statesOfAll() {
  return {{"normal", [](QWidget&) {}, [](QWidget&) {}},
          {"disabled", [](QWidget& widget) { widget.setEnabled(false); },
           [](QWidget& widget) { widget.setEnabled(true); }}};
}

std::vector<State> withKeyboardAndMouse() {
  std::vector<State> states = statesOfAll();
  states.push_back({"with the keyboard",
                    [](QWidget& widget) { widget.setFocus(Qt::TabFocusReason); },
                    [](QWidget& widget) { widget.clearFocus(); }});
  states.push_back({"under the mouse", [](QWidget& widget) { touch(widget, true); },
                    [](QWidget& widget) { touch(widget, false); }});
  return states;
}

std::vector<State> statesOfButton() {
  std::vector<State> states = withKeyboardAndMouse();
  states.push_back({"pressed", [](QWidget& widget) { hold(widget, true); },
                    [](QWidget& widget) { hold(widget, false); }});
  return states;
}

void select(QWidget& widget, bool isSelected) {
  if (auto* line = qobject_cast<QLineEdit*>(&widget)) {
    isSelected ? line->selectAll() : line->deselect();
  }
  if (auto* page = qobject_cast<QPlainTextEdit*>(&widget)) {
    page->moveCursor(QTextCursor::Start);
    if (isSelected) page->selectAll();
  }
}

void lock(QWidget& widget, bool isLocked) {
  if (auto* line = qobject_cast<QLineEdit*>(&widget)) line->setReadOnly(isLocked);
  if (auto* page = qobject_cast<QPlainTextEdit*>(&widget)) page->setReadOnly(isLocked);
}

std::vector<State> statesOfText() {
  std::vector<State> states = withKeyboardAndMouse();
  states.push_back({"read only", [](QWidget& widget) { lock(widget, true); },
                    [](QWidget& widget) { lock(widget, false); }});
  states.push_back({"selected", [](QWidget& widget) { select(widget, true); },
                    [](QWidget& widget) { select(widget, false); }});
  states.push_back({"selected and disabled",
                    [](QWidget& widget) {
                      select(widget, true);
                      widget.setEnabled(false);
                    },
                    [](QWidget& widget) {
                      widget.setEnabled(true);
                      select(widget, false);
                    }});
  return states;
}

// The best that a text and its ground reach: the colour that most of the picture has, and what
// stands out from it most. What is looked at holds a text and nothing else.
double contrastIn(const QImage& image) {
  std::map<QRgb, int> colours;
  for (int y = 0; y < image.height(); ++y) {
    const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    for (int x = 0; x < image.width();) {
      const int first = x;
      while (x < image.width() && line[x] == line[first]) ++x;
      colours[line[first]] += x - first;
    }
  }
  const auto rarer = [](const auto& one, const auto& other) { return one.second < other.second; };
  const QColor ground(std::max_element(colours.begin(), colours.end(), rarer)->first);
  double best = 1;
  for (const auto& [colour, count] : colours)
    best = std::max(best, contrast(QColor(colour), ground));
  return best;
}

class ReadableTest : public AllWindows {
 protected:
  // A part of a widget, as it is painted now.
  double contrastAt(QWidget& widget, const QRect& part) {
    QImage image(part.size() * kScale, QImage::Format_RGB32);
    image.setDevicePixelRatio(kScale);
    QWidget* top = widget.window();
    top->render(&image, QPoint(), QRegion(part.translated(widget.mapTo(top, QPoint()))));
    return contrastIn(image);
  }

  // Goes through the states of a widget, in each of which its text is to be read there.
  void read(QWidget& widget, const QRect& text, const std::vector<State>& states) {
    const QRect part = text.intersected(widget.rect());
    ASSERT_FALSE(part.isEmpty()) << placeOf(widget);
    for (const State& state : states) {
      state.enter(widget);
      const double best = contrastAt(widget, part);
      state.leave(widget);
      ++read_;
      if (best >= kReadableContrast) continue;
      unreadable_.push_back(placeOf(widget) + " " + state.name + " " + std::to_string(best));
    }
  }

  static QRect middleOf(const QRect& whole) {
    QRect part(QPoint(), kEnough.boundedTo(whole.size()));
    part.moveCenter(whole.center());
    return part;
  }

  static QRect startOf(const QRect& whole) {
    return {whole.topLeft(), kEnough.boundedTo(whole.size())};
  }

  void readLabel(QLabel& label) {
    if (!label.pixmap().isNull()) return;
    if (label.text().isEmpty()) label.setText(kWords);
    read(label, label.contentsRect(), statesOfAll());
  }

  void readButton(QPushButton& button) {
    constexpr int kEdge = 6;  // pixels, the ring of the keyboard among them
    if (button.text().isEmpty()) return;
    button.setIcon(QIcon());
    read(button, button.rect().adjusted(kEdge, kEdge, -kEdge, -kEdge), statesOfButton());
  }

  void readTick(QAbstractButton& box) {
    constexpr int kRing = 2;  // pixels
    QStyleOptionButton option;
    option.initFrom(&box);
    const bool isBox = qobject_cast<QCheckBox*>(&box) != nullptr;
    const QRect text = box.style()->subElementRect(
        isBox ? QStyle::SE_CheckBoxContents : QStyle::SE_RadioButtonContents, &option, &box);
    read(box, text.adjusted(kRing, kRing, -kRing, -kRing), statesOfButton());
  }

  void readLine(QLineEdit& line) {
    constexpr int kEdge = 5;  // pixels
    line.setText(kWords.repeated(kMany));
    line.setCursorPosition(0);
    const QRect text = line.rect().adjusted(2 * kEdge, kEdge, -2 * kEdge, -kEdge);
    read(line, startOf(text), statesOfText());
    line.clear();
    line.setPlaceholderText(kWords);
    read(line, startOf(text), statesOfAll());
  }

  void readPicks(QComboBox& box) {
    QStyleOptionComboBox option;
    option.initFrom(&box);
    option.subControls = QStyle::SC_All;
    box.addItem(kWords);
    box.setCurrentIndex(box.count() - 1);
    const QRect text = box.style()->subControlRect(QStyle::CC_ComboBox, &option,
                                                   QStyle::SC_ComboBoxEditField, &box);
    read(box, text.adjusted(4, 4, -4, -4), withKeyboardAndMouse());
  }

  void readPage(QPlainTextEdit& page) {
    constexpr int kEdge = 6;  // pixels
    page.setPlainText((kWords.repeated(kMany) + '\n').repeated(kMany));
    page.moveCursor(QTextCursor::Start);
    read(page, startOf(page.rect().adjusted(kEdge, kEdge, -kEdge, -kEdge)), statesOfText());
  }

  void readList(QListView& list) {
    constexpr int kEdge = 8;  // pixels
    QStringListModel rows({kWords.repeated(kMany), kWords});
    QAbstractItemModel* own = list.model();
    list.setModel(&rows);
    const QRect text = startOf(list.visualRect(rows.index(0)).adjusted(kEdge, 1, 0, -1));
    const QRect part = text.translated(list.viewport()->pos());
    read(list, part, withKeyboardAndMouse());
    list.setCurrentIndex(rows.index(0));
    read(list, part, withKeyboardAndMouse());
    list.setModel(own);
  }

  void readMenu(QMenu& menu) {
    menu.popup(QPoint());
    for (QAction* entry : menu.actions()) {
      if (entry->isSeparator() || !entry->isVisible()) continue;
      if (entry->text().isEmpty()) entry->setText(kWords);
      const QRect text = menu.actionGeometry(entry).adjusted(2, 2, -2, -2);
      for (QAction* active : {static_cast<QAction*>(nullptr), entry}) {
        menu.setActiveAction(active);
        read(menu, text, statesOfAll());
      }
    }
    menu.close();
  }

  void readBar(QMenuBar& bar) {
    for (QAction* entry : bar.actions()) {
      if (entry->text().isEmpty()) continue;
      const QRect text = bar.actionGeometry(entry).adjusted(2, 2, -2, -2);
      read(bar, text, statesOfAll());
      bar.setActiveAction(entry);
      read(bar, text, statesOfAll());
      if (QWidget* menu = QApplication::activePopupWidget()) menu->close();
      bar.setActiveAction(nullptr);
    }
  }

  void readAnything(QWidget& child) {
    if (auto* label = qobject_cast<QLabel*>(&child)) return readLabel(*label);
    if (auto* button = qobject_cast<QPushButton*>(&child)) return readButton(*button);
    if (auto* button = qobject_cast<QAbstractButton*>(&child)) return readTick(*button);
    if (auto* line = qobject_cast<QLineEdit*>(&child)) return readLine(*line);
    if (auto* page = qobject_cast<QPlainTextEdit*>(&child)) return readPage(*page);
    if (auto* bar = qobject_cast<QMenuBar*>(&child)) return readBar(*bar);
    auto* box = qobject_cast<QComboBox*>(&child);
    if (box != nullptr && !box->isEditable()) return readPicks(*box);
    auto* list = qobject_cast<QListView*>(&child);
    if (list != nullptr && dynamic_cast<LineList*>(list) == nullptr) return readList(*list);
  }

  static constexpr int kMany = 12;  // more words than a field has room for

  std::vector<std::string> unreadable_;
  int read_ = 0;
};

TEST_F(ReadableTest, EveryTextOfEveryWindowInEachOfItsStates) {
  inEachFullWindow([&](Form&) {
    for (QWidget* child : window->findChildren<QWidget*>()) {
      if (isSeen(*child)) readAnything(*child);
    }
  });

  EXPECT_THAT(unreadable_, IsEmpty());
  EXPECT_GT(read_, 700);
}

TEST_F(ReadableTest, EveryEntryOfEveryMenu) {
  inEachWindow([&](Form&) {
    for (QMenu* menu : window->findChildren<QMenu*>()) {
      if (!menu->actions().isEmpty()) readMenu(*menu);
    }
  });

  EXPECT_THAT(unreadable_, IsEmpty());
  EXPECT_GE(read_, 20);
}

// What paints with a pair of them that no window above shows: tips, scales, charts, lists that
// drop down, boxes with messages.
TEST_F(ReadableTest, EveryPairOfTheProgramsColours) {
  const std::vector<std::pair<QPalette::ColorRole, QPalette::ColorRole>> pairs{
      {QPalette::WindowText, QPalette::Window},
      {QPalette::WindowText, QPalette::Base},
      {QPalette::WindowText, QPalette::AlternateBase},
      {QPalette::Text, QPalette::Base},
      {QPalette::Text, QPalette::AlternateBase},
      {QPalette::Text, QPalette::Window},
      {QPalette::ButtonText, QPalette::Button},
      {QPalette::ButtonText, QPalette::Window},
      {QPalette::HighlightedText, QPalette::Highlight},
      {QPalette::PlaceholderText, QPalette::Base},
      {QPalette::PlaceholderText, QPalette::Window},
      {QPalette::ToolTipText, QPalette::ToolTipBase},
      {QPalette::Link, QPalette::Window},
      {QPalette::Link, QPalette::Base},
      {QPalette::Link, QPalette::AlternateBase},
      {QPalette::LinkVisited, QPalette::Base}};
  const QPalette palette = QApplication::palette();

  for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
    for (const auto& [ink, ground] : pairs) {
      EXPECT_GE(contrast(palette.color(group, ink), palette.color(group, ground)),
                kReadableContrast)
          << "group " << group << ", " << ink << " on " << ground;
    }
  }
}

}  // namespace
}  // namespace veltrin
