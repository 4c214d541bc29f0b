// SPDX-License-Identifier: GPL-3.0-or-later
// The lines of a list box for a list view.
#pragma once

#include <cstddef>

#include <QAbstractListModel>

#include "controls/list_view.h"

namespace veltrin {

// Reads the lines from the list as they are asked for; nothing is copied. The view learns of
// new lines when the list catches up: until then it knows of as many as before, and a line
// that has gone meanwhile is empty.
class LineModel : public QAbstractListModel {
 public:
  explicit LineModel(QObject* parent) : QAbstractListModel(parent) {}

  // Shows a list, or none, whose lines are then gone.
  void setLines(const ListView* lines);

  // Tells the view of all lines anew.
  void restart();

  // Tells it of the lines that have come at the end.
  void takeInNew();

  // Tells it of one line that has come before others, that has gone, or that lines of that
  // range look different. Does nothing for lines that the view does not know of yet.
  void noteInserted(std::size_t index);
  void noteRemoved(std::size_t index);
  void noteChanged(int first, int last);

  // Number of lines that the view knows of.
  int shown() const { return shown_; }

  // A line that is shown; null when it has gone meanwhile.
  const ListLine* find(int row) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  QString meaningOf(const ListLine& line) const;

  const ListView* lines_ = nullptr;
  int shown_ = 0;
};

}  // namespace veltrin
