// SPDX-License-Identifier: GPL-3.0-or-later
// Every window as a screen reader finds it: kinds, names, labels, values and texts.
#include <algorithm>

#include <QAccessible>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>

#include "all_windows.h"
#include "forms/line.h"

namespace veltrin {
namespace {

using testing::IsEmpty;

QAccessibleInterface& readerOf(QWidget& widget) {
  return *QAccessible::queryAccessibleInterface(&widget);
}

QString nameOf(QWidget& widget) { return readerOf(widget).text(QAccessible::Name); }

// What a control may be to a reader; nothing for what has no widget of its own.
std::vector<QAccessible::Role> rolesFor(const Control& control) {
  if (dynamic_cast<const TextBox*>(&control)) return {QAccessible::EditableText};
  if (dynamic_cast<const ComboBox*>(&control)) return {QAccessible::ComboBox};
  if (dynamic_cast<const ListBox*>(&control)) return {QAccessible::List};
  if (dynamic_cast<const LVListBox*>(&control)) return {QAccessible::List};
  if (dynamic_cast<const CommandButton*>(&control)) return {QAccessible::Button};
  if (dynamic_cast<const CheckBox*>(&control)) return {QAccessible::CheckBox};
  if (dynamic_cast<const OptionButton*>(&control)) return {QAccessible::RadioButton};
  if (dynamic_cast<const ProgressBar*>(&control)) return {QAccessible::ProgressBar};
  if (dynamic_cast<const Animation*>(&control)) return {QAccessible::Animation};
  if (dynamic_cast<const Chart*>(&control)) return {QAccessible::Chart};
  if (dynamic_cast<const bkCProg*>(&control)) return {QAccessible::Dial};
  if (dynamic_cast<const PictureBox*>(&control)) return {QAccessible::Chart, QAccessible::Graphic};
  if (dynamic_cast<const Image*>(&control)) return {QAccessible::Button, QAccessible::Graphic};
  if (dynamic_cast<const Label*>(&control)) {
    return {QAccessible::StaticText, QAccessible::Button, QAccessible::Graphic};
  }
  return {};
}

bool isField(const QWidget& widget) {
  const bool isPartOfBox = qobject_cast<const QComboBox*>(widget.parentWidget()) != nullptr;
  return qobject_cast<const QComboBox*>(&widget) != nullptr ||
         (qobject_cast<const QLineEdit*>(&widget) != nullptr && !isPartOfBox);
}

class ReaderTest : public AllWindows {
 protected:
  QWidget* widgetOf(const Control& control) const {
    return window->findChild<QWidget*>(toQt(widgetName(control)));
  }

  QRect rectOf(const QWidget& child) const { return {child.mapTo(window, QPoint()), child.size()}; }

  // The text that a person takes for a field's: it stands before the field in its row, with
  // nothing between them but a little room.
  QLabel* labelBefore(const QWidget& field) const {
    constexpr int kNear = 60;  // pixels
    const QRect place = rectOf(field);
    for (QLabel* label : window->findChildren<QLabel*>()) {
      const QRect there = rectOf(*label);
      const int gap = place.left() - there.right();
      const bool isInRow = there.center().y() > place.top() && there.center().y() < place.bottom();
      if (label->isVisible() && !label->text().isEmpty() && isInRow && gap > 0 && gap < kNear) {
        return label;
      }
    }
    return nullptr;
  }
};

TEST_F(ReaderTest, EveryControlIsToAReaderWhatItIsToItsModel) {
  std::vector<std::string> others;
  inEachWindow([&](Form& form) {
    for (const Control* control : form.controls()) {
      const auto roles = rolesFor(*control);
      QWidget* shown = widgetOf(*control);
      if (roles.empty() || shown == nullptr) continue;
      const QAccessible::Role role = readerOf(*shown).role();
      if (std::find(roles.begin(), roles.end(), role) == roles.end()) {
        others.push_back(placeOf(*shown) + " " + std::to_string(role));
      }
    }
  });

  EXPECT_THAT(others, IsEmpty());
}

// A reader that comes to a field says the words beside it, too.
TEST_F(ReaderTest, TheTextBesideAFieldIsItsLabel) {
  std::vector<std::string> untied;
  int fields = 0;
  inEachFullWindow([&](Form&) {
    for (QWidget* field : window->findChildren<QWidget*>()) {
      if (!isField(*field) || !isSeen(*field)) continue;
      QLabel* label = labelBefore(*field);
      if (label == nullptr) continue;
      ++fields;
      const auto relations = readerOf(*field).relations(QAccessible::Label);
      const bool isTied =
          std::any_of(relations.begin(), relations.end(),
                      [&](const auto& relation) { return relation.first->object() == label; });
      if (!isTied) untied.push_back(placeOf(*field) + " is not " + placeOf(*label));
    }
  });

  EXPECT_THAT(untied, IsEmpty());
  EXPECT_GE(fields, 17);
}

// Names tell two controls of a window apart; two figures of the same meaning do by their values.
TEST_F(ReaderTest, WhatTakesTheKeyboardHasANameOfItsOwnInItsWindow) {
  inEachFullWindow([&](Form&) {
    std::vector<QString> names;
    for (QWidget* child : window->findChildren<QWidget*>()) {
      const bool isStop = (child->focusPolicy() & Qt::TabFocus) == Qt::TabFocus;
      if (!isStop || !isSeen(*child) || child->focusProxy() != nullptr) continue;
      const QString name = nameOf(*child);
      EXPECT_FALSE(name.isEmpty()) << placeOf(*child);
      EXPECT_EQ(std::count(names.begin(), names.end(), name), 0) << fromQt(name);
      names.push_back(name);
    }
  });
}

TEST_F(ReaderTest, DecorationIsNotRead) {
  std::vector<std::string> read;
  int decorations = 0;
  inEachWindow([&](Form& form) {
    std::vector<QWidget*> shown;
    for (const Control* control : form.controls()) {
      if (dynamic_cast<const Line*>(control) != nullptr) shown.push_back(widgetOf(*control));
    }
    for (QWidget* child : window->findChildren<QWidget*>()) {
      const bool isMenu =
          qobject_cast<QMenuBar*>(child) != nullptr || qobject_cast<QMenu*>(child) != nullptr;
      const auto* label = qobject_cast<const QLabel*>(child);
      const bool isText = label != nullptr && !label->text().isEmpty();
      const bool isDecor = child->objectName().startsWith(QLatin1String("decor"));
      if (isDecor && !isMenu && !isText) shown.push_back(child);
    }
    for (QWidget* child : shown) {
      ++decorations;
      if (!nameOf(*child).isEmpty()) read.push_back(placeOf(*child));
    }
  });

  EXPECT_THAT(read, IsEmpty());
  EXPECT_GE(decorations, 20);
}

TEST_F(ReaderTest, AProgressIsReadAsItsValue) {
  const auto form = look<testdl>();
  form->prgBAR[0].minimum = 0;
  form->prgBAR[0].maximum = 200;

  form->prgBAR[0].value = 50;

  auto* value = readerOf(*widget("prgBAR_0")).valueInterface();
  ASSERT_NE(value, nullptr);
  EXPECT_DOUBLE_EQ(value->currentValue().toDouble() / value->maximumValue().toDouble(), 0.25);
}

TEST_F(ReaderTest, ADialIsReadAsItsValueBetweenItsEnds) {
  const auto form = look<frmNetwork>();
  form->NetRec1[0].Max = 1000;

  form->NetRec1[0].Value = 17;

  auto* value = readerOf(*widget("NetRec1_0")).valueInterface();
  ASSERT_NE(value, nullptr);
  EXPECT_EQ(value->currentValue().toInt(), 17);
  EXPECT_EQ(value->minimumValue().toInt(), 0);
  EXPECT_EQ(value->maximumValue().toInt(), 1000);
}

TEST_F(ReaderTest, AChartTellsWhereItsLinesEnd) {
  const auto form = shown<pingtester>();
  form->PingChart.visible = true;
  form->PingChart.setColumnCount(2);
  form->PingChart.setRowCount(2);
  for (const std::size_t column : {1, 2}) {
    form->PingChart.column = column;
    form->PingChart.row = 2;
    form->PingChart.setData(10.0 * static_cast<double>(column));
  }
  atRest([] {});

  window->grab();

  EXPECT_EQ(nameOf(*widget("PingChart")), "Times of all destinations 10 20");
}

// A reader takes in what a page or field holds, not only its name.
TEST_F(ReaderTest, EveryFieldAndPageIsReadAsText) {
  std::vector<std::string> unread;
  int texts = 0;
  inEachFullWindow([&](Form&) {
    for (QWidget* child : window->findChildren<QWidget*>()) {
      auto* page = qobject_cast<QPlainTextEdit*>(child);
      auto* line = qobject_cast<QLineEdit*>(child);
      if (!isSeen(*child) || (page == nullptr && line == nullptr)) continue;
      ++texts;
      const QString words = page != nullptr ? "one\ntwo" : "one";
      if (page != nullptr) page->setPlainText(words);
      if (line != nullptr) line->setText(words);
      QAccessibleTextInterface* text = readerOf(*child).textInterface();
      if (text == nullptr || text->text(0, text->characterCount()) != words) {
        unread.push_back(placeOf(*child));
      }
    }
  });

  EXPECT_THAT(unread, IsEmpty());
  EXPECT_GE(texts, 30);
}

TEST_F(ReaderTest, AListIsReadRowByRow) {
  const auto form = look<testdl>();
  form->summ.add("Total Bytes Received = 10485760");
  form->summ.add("Test Time = 12.5");

  QAccessibleInterface& list = readerOf(*widget("summ"));

  ASSERT_EQ(list.childCount(), 2);
  EXPECT_EQ(list.child(1)->role(), QAccessible::ListItem);
  EXPECT_EQ(list.child(1)->text(QAccessible::Name), "Test Time = 12.5");
}

TEST_F(ReaderTest, TheReportIsReadLineByLine) {
  const auto form = look<frmSysInfo>();
  form->SYSView.AddItem("Processors");
  form->SYSView.AddItem("Number of Cores: 4");
  ASSERT_TRUE(
      QTest::qWaitFor([&] { return widget<QListView>("SYSView")->model()->rowCount() == 2; }));

  QAccessibleInterface& list = readerOf(*widget("SYSView"));

  ASSERT_EQ(list.childCount(), 2);
  EXPECT_EQ(list.child(1)->text(QAccessible::Name), "Number of Cores: 4");
}

}  // namespace
}  // namespace veltrin
