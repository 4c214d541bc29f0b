// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/line_editor.h"

#include <utility>

#include <QLineEdit>

namespace veltrin {
namespace {

constexpr int kFrame = 3;  // pixels from the editor's edge to its text: 1 of the edge and Qt's 2

// What was typed is not to be lost because the line is told anew.
const char* const kFilled = "filled";

}  // namespace

LineEditor::LineEditor(QObject* parent, Place place, End end)
    : QStyledItemDelegate(parent), place_(std::move(place)), end_(std::move(end)) {}

// A thin edge, and the text where it stands in the line.
QWidget* LineEditor::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                  const QModelIndex&) const {
  auto* line = new QLineEdit(parent);
  line->setFrame(false);
  line->setTextMargins(0, 0, 0, 0);
  line->setAutoFillBackground(true);
  const QPalette look = parent->palette();
  line->setStyleSheet(QStringLiteral("QLineEdit { border: 1px solid %1; background: %2; "
                                     "color: %3; padding: 0; }")
                          .arg(look.color(QPalette::Highlight).name(),
                               look.color(QPalette::Base).name(),
                               look.color(QPalette::Text).name()));
  return line;
}

void LineEditor::setEditorData(QWidget* editor, const QModelIndex& index) const {
  auto* line = qobject_cast<QLineEdit*>(editor);
  if (line == nullptr || line->property(kFilled).toBool()) return;
  line->setProperty(kFilled, true);
  line->setText(index.data(Qt::EditRole).toString());
  line->selectAll();
}

void LineEditor::setModelData(QWidget* editor, QAbstractItemModel*,
                              const QModelIndex& index) const {
  if (const auto* line = qobject_cast<QLineEdit*>(editor)) end_(index.row(), line->text());
}

void LineEditor::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem&,
                                      const QModelIndex& index) const {
  editor->setGeometry(place_(index.row()).adjusted(-kFrame, 0, kFrame, 0));
}

}  // namespace veltrin
