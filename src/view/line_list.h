// SPDX-License-Identifier: GPL-3.0-or-later
// The lines of a list box of the program's own, on the screen.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include <QElapsedTimer>
#include <QListView>
#include <QTimer>

#include "controls/LVListBox.h"
#include "platform/qt/later.h"
#include "view/binding.h"
#include "view/line_look.h"
#include "view/line_model.h"

namespace veltrin {

// Shows the lines of a list box, and hands on what the user does to them. The lines stay in
// the list: where each of them lies is computed, so that neither a new line nor a painting
// costs more in a long list than in a short one. What the program does to the list is shown
// once a frame at most.
class LineList : public QListView, private ListViewScreen {
 public:
  explicit LineList(QWidget* parent = nullptr);
  ~LineList() override;
  LineList(const LineList&) = delete;
  LineList& operator=(const LineList&) = delete;

  // The list to show until the binding ends. What the user does goes through its gate.
  void setList(LVListBox& list, Binding& binding, PictureSource pictures);
  void release();

  // How the lines look, and where the parts of one are on the viewport.
  const LineLook* look() const { return look_.get(); }
  LineParts partsOf(int row) const;

  QRect visualRect(const QModelIndex& index) const override;
  void scrollTo(const QModelIndex& index, ScrollHint hint = QListView::EnsureVisible) override;
  QModelIndex indexAt(const QPoint& place) const override;
  void doItemsLayout() override;

 protected:
  bool viewportEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void dataChanged(const QModelIndex& first, const QModelIndex& last,
                   const QList<int>& roles) override;
  void rowsInserted(const QModelIndex& parent, int first, int last) override;
  void rowsAboutToBeRemoved(const QModelIndex& parent, int first, int last) override;
  void updateGeometries() override;
  int horizontalOffset() const override { return 0; }
  int verticalOffset() const override;
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
  void setSelection(const QRect& place, QItemSelectionModel::SelectionFlags command) override;
  QRegion visualRegionForSelection(const QItemSelection& selection) const override;
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
  bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
  void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

 private:
  // A range of lines that look different.
  struct Rows {
    int first;
    int last;
  };

  void noteInserted(std::size_t index) override;
  void noteRemoved(std::size_t index) override;
  void noteChanged(std::size_t index) override;
  void noteReset() override;
  void noteSelection() override;
  void EnsureVisible(std::size_t index) override;
  void StartLabelEdit(std::size_t index) override;
  void lockDrawing(bool locked) override;
  void Refresh() override;
  std::uintptr_t hWnd() const override { return effectiveWinId(); }

  void observe(Binding& binding);
  void forget();
  void takeLook();
  void takeFrame();
  void takeColours();
  void takePointer();
  void takeSelectionMode();
  void takeMouse();

  int restOfFrame() const;
  void schedule();
  void catchUp();
  void showSelection();
  void selectRanges();
  void reveal(int row, ScrollHint hint);

  bool hasKeyboard() const;
  int rowAt(int y) const;
  LineState stateOf(int row, const ListLine& line) const;
  void setHover(int row);
  bool showTip(const QPoint& place, const QPoint& onScreen);

  // Hands an action on the list to the gate; one on a line names it as it now is.
  void post(std::function<void(LVListBox&)> action) const;
  using OnLine = void (LVListBox::*)(std::size_t, std::uint64_t);
  void post(OnLine action, int row) const;
  bool isTakenByRoutine(const QKeyEvent& key);
  bool isCheckAt(const QPoint& place) const;
  void copySelected() const;
  void endEdit(int row, const QString& text);

  LVListBox* list_ = nullptr;
  Binding* binding_ = nullptr;
  PictureSource pictures_;
  LineModel* model_;
  std::unique_ptr<LineLook> look_;

  // What has happened to the list since it was last shown as it is.
  bool hasNews_ = false;
  bool isReset_ = false;
  bool isSelectionNew_ = false;
  std::optional<Rows> changed_;
  int revealed_ = -1;  // the line that is to come into view
  bool isLocked_ = false;

  bool isCatchingUp_ = false;  // what changes now is the program's doing
  QTimer pause_;               // to the next frame
  Later later_;                // what the list is to do once it has caught up
  QElapsedTimer sincePainted_;

  int pressed_ = -1;            // the line on which the left button went down
  int ticking_ = -1;            // the same for a check box
  bool isClick_ = false;        // its release makes a click
  bool isFocusing_ = false;     // it gave the list the keyboard
  std::uint64_t editLife_ = 0;  // of the list when the edit began
  int hover_ = -1;              // the line under the mouse, if that is to be seen
};

}  // namespace veltrin
