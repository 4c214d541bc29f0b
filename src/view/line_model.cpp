// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/line_model.h"

#include <algorithm>

#include "platform/qt/qt_text.h"

namespace veltrin {

void LineModel::setLines(const ListView* lines) {
  lines_ = lines;
  restart();
}

void LineModel::restart() {
  beginResetModel();
  shown_ = lines_ == nullptr ? 0 : static_cast<int>(lines_->count());
  endResetModel();
}

void LineModel::takeInNew() {
  const int count = lines_ == nullptr ? 0 : static_cast<int>(lines_->count());
  if (count <= shown_) return;
  beginInsertRows({}, shown_, count - 1);
  shown_ = count;
  endInsertRows();
}

void LineModel::noteInserted(std::size_t index) {
  const int row = static_cast<int>(index);
  if (row >= shown_) return;
  beginInsertRows({}, row, row);
  ++shown_;
  endInsertRows();
}

void LineModel::noteRemoved(std::size_t index) {
  const int row = static_cast<int>(index);
  if (row >= shown_) return;
  beginRemoveRows({}, row, row);
  --shown_;
  endRemoveRows();
}

void LineModel::noteChanged(int first, int last) {
  const int end = std::min(last, shown_ - 1);
  if (first <= end) emit dataChanged(index(first), index(end));
}

const ListLine* LineModel::find(int row) const {
  const auto index = static_cast<std::size_t>(row);
  const bool isThere = lines_ != nullptr && row >= 0 && row < shown_ && index < lines_->count();
  return isThere ? &lines_->line(index) : nullptr;
}

int LineModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : shown_; }

QString LineModel::meaningOf(const ListLine& line) const {
  const ImageList* pictures = lines_->SmallIcons;
  const auto* picture = pictures == nullptr ? nullptr : pictures->find(line.SmallIcon);
  return picture == nullptr ? QString() : toQt(picture->meaning);
}

// What a picture stands for is the line's description to who cannot see it.
QVariant LineModel::data(const QModelIndex& index, int role) const {
  const ListLine* line = find(index.row());
  if (line == nullptr) return {};
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
    case Qt::AccessibleTextRole:
      return toQt(line->Text);
    case Qt::AccessibleDescriptionRole:
      return meaningOf(*line);
    case Qt::CheckStateRole:
      if (!lines_->CheckBoxes) return {};
      return line->Checked ? Qt::Checked : Qt::Unchecked;
    default:
      return {};
  }
}

Qt::ItemFlags LineModel::flags(const QModelIndex& index) const {
  if (find(index.row()) == nullptr) return Qt::NoItemFlags;
  Qt::ItemFlags flags =
      Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemNeverHasChildren;
  if (lines_->CheckBoxes) flags |= Qt::ItemIsUserCheckable;
  return flags;
}

}  // namespace veltrin
