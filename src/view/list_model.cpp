// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/list_model.h"

#include "platform/qt/qt_text.h"

namespace veltrin {

ListModel::ListModel(const ListBox& list, QObject* parent)
    : QAbstractListModel(parent), list_(&list), shown_(static_cast<int>(list.count())) {}

void ListModel::refresh() {
  const int count = static_cast<int>(list_->count());
  if (count > shown_) {
    beginInsertRows({}, shown_, count - 1);
    shown_ = count;
    endInsertRows();
  } else {
    beginResetModel();
    shown_ = count;
    endResetModel();
  }
}

void ListModel::release() {
  beginResetModel();
  shown_ = 0;
  list_ = nullptr;
  endResetModel();
}

int ListModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : shown_; }

QVariant ListModel::data(const QModelIndex& index, int role) const {
  if (role != Qt::DisplayRole || list_ == nullptr || !index.isValid()) return {};
  return toQt(list_->item(static_cast<std::size_t>(index.row())));
}

}  // namespace veltrin
