// The lines of a list box of the program's own, on the screen.
#pragma once

#include <QListView>

#include "controls/LVListBox.h"
#include "view/binding.h"

namespace veltrin {

class LineList : public QListView {
 public:
  using QListView::QListView;
};

}  // namespace veltrin
