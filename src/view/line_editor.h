// SPDX-License-Identifier: GPL-3.0-or-later
// Edits the text of a line in its place.
#pragma once

#include <functional>

#include <QRect>
#include <QStyledItemDelegate>

namespace veltrin {

// What stands in the editor when it ends goes to a routine, and never to the model by
// itself. Enter and the loss of the keyboard end it, Escape cancels it.
class LineEditor : public QStyledItemDelegate {
 public:
  using End = std::function<void(int row, const QString& text)>;
  using Place = std::function<QRect(int row)>;

  // `place` is that of a line's text.
  LineEditor(QObject* parent, Place place, End end);

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override;
  void setEditorData(QWidget* editor, const QModelIndex& index) const override;
  void setModelData(QWidget* editor, QAbstractItemModel* model,
                    const QModelIndex& index) const override;
  void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const override;

 protected:
  bool editorEvent(QEvent*, QAbstractItemModel*, const QStyleOptionViewItem&,
                   const QModelIndex&) override {
    return false;  // the list's own business
  }

 private:
  Place place_;
  End end_;
};

}  // namespace veltrin
