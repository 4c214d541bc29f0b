// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of a list box for a list view.
#pragma once

#include <QAbstractListModel>

#include "forms/list_box.h"

namespace veltrin {

// Reads the rows from the control; nothing is copied.
class ListModel : public QAbstractListModel {
 public:
  ListModel(const ListBox& list, QObject* parent);

  // Takes in what has changed. For the control's observer.
  void refresh();

  // Lets the control go; the list is empty from then on.
  void release();

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  const ListBox* list_;
  int shown_;  // number of rows that the view knows of
};

}  // namespace veltrin
