// The rows that tell what a test has found.
#pragma once

#include <QListView>

namespace veltrin {

// A list in letters like those of a book, so high that all rows of a summary are seen at
// once. A row that is longer than the list is wide is not cut: the list scrolls aside.
class SummaryList : public QListView {
 public:
  static constexpr int kRows = 13;

  explicit SummaryList(QWidget* parent = nullptr);

  QSize minimumSizeHint() const override;
  QSize sizeHint() const override { return minimumSizeHint(); }
};

}  // namespace veltrin
