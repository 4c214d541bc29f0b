// SPDX-License-Identifier: GPL-3.0-or-later
// The rows that tell what a test has found.
#pragma once

#include <QListView>

namespace veltrin {

// A list in letters like those of a book, so high that all rows of a summary are seen at
// once. A row that is longer than the list is wide is not cut: the list scrolls aside. The
// keyboard does not go to a list without rows.
class SummaryList : public QListView {
 public:
  static constexpr int kRows = 13;

  explicit SummaryList(QWidget* parent = nullptr);

  QSize minimumSizeHint() const override;
  QSize sizeHint() const override { return minimumSizeHint(); }

  void reset() override;

 protected:
  void rowsInserted(const QModelIndex& parent, int first, int last) override;

 private:
  void takeKeyboardWithRows();
};

}  // namespace veltrin
