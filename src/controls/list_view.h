// SPDX-License-Identifier: GPL-3.0-or-later
// Lines with small pictures, colours and check boxes, in one column.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "controls/colour_code.h"
#include "controls/device_context.h"
#include "forms/image_list.h"
#include "forms/property.h"

namespace veltrin {

// Colours of the system's windows: the ground, and the text on it.
inline constexpr ColourCode kWindowBackground = 0x80000005;
inline constexpr ColourCode kWindowText = 0x80000008;

struct ListLine {
  std::string Text;
  std::int16_t SmallIcon = 0;          // number in the image list; 0 for none
  ColourCode ForeColor = kWindowText;  // that number: the list's own colour
  bool Bold = false;
  bool Checked = false;
  bool Ghosted = false;  // pale
  bool Selected = false;
  std::string Tag;
  std::string Key;
};

// Orders of a sorted list, by their numbers in the system.
inline constexpr std::int32_t kAscending = 0;
inline constexpr std::int32_t kDescending = 1;

// When a click on the selected line begins the edit of its text: LabelEdit.
inline constexpr std::int32_t kEditByClick = 0;
inline constexpr std::int32_t kEditByCallOnly = 1;

// What a list tells whoever shows it, and asks of it. Lines are named by their index from 0.
class ListViewScreen {
 public:
  virtual ~ListViewScreen() = default;

  virtual void noteInserted(std::size_t index) = 0;  // a line is there that was not
  virtual void noteRemoved(std::size_t index) = 0;
  virtual void noteChanged(std::size_t index) = 0;  // a line is another one
  virtual void noteReset() = 0;                     // all lines may be others
  virtual void noteSelection() = 0;                 // other lines are selected
  virtual void EnsureVisible(std::size_t index) = 0;
  virtual void StartLabelEdit(std::size_t index) = 0;
  virtual void lockDrawing(bool locked) = 0;  // LockWindowUpdate
  virtual void Refresh() = 0;

  // The system's handle of the window, 0 when there is none.
  virtual std::uintptr_t hWnd() const = 0;
};

// The lines of a list and how it looks. An index that has no line throws StatementFailed.
class ListView {
 public:
  ListView() = default;
  ListView(const ListView&) = delete;
  ListView& operator=(const ListView&) = delete;

  // Of the look. PictureAlignment puts the background picture to the corners from the upper
  // left (0), upper right, lower left, lower right, to the middle (4), or tiles it (5).
  Property<std::int32_t> Appearance{1};  // 1: a sunken edge, 0: a flat one
  Property<ColourCode> BackColor{kWindowBackground};
  Property<std::int32_t> BorderStyle{1};  // 1: an edge, 0: none
  Property<bool> CheckBoxes{false};
  Property<DeviceFont> Font;
  Property<ColourCode> ForeColor{kWindowText};
  Property<bool> HideSelection{true};    // while the keyboard is elsewhere
  Property<bool> HotTracking{false};     // the line under the mouse is marked
  Property<bool> HoverSelection{false};  // and selected
  Property<std::int32_t> LabelEdit{kEditByClick};
  Property<bool> LabelWrap{false};
  Property<DevicePicture> MouseIcon;
  Property<std::int16_t> MousePointer{0};
  Property<bool> MultiSelect{false};
  Property<DevicePicture> Picture;
  Property<std::int32_t> PictureAlignment{5};

  // A sorted list keeps its lines by their texts, ASCII letters folded, of equal ones the
  // older first. A line whose text changes stays where it is until the list is sorted anew.
  bool Sorted() const { return sorted_; }
  std::int32_t SortOrder() const { return order_; }
  void setSorted(bool isSorted);
  void setSortOrder(std::int32_t order);

  // The pictures of the lines; null for none. They live as long as the list.
  Property<const ImageList*> SmallIcons{nullptr};

  std::size_t count() const { return lines_.size(); }
  const std::vector<ListLine>& lines() const { return lines_; }
  const ListLine& line(std::size_t index) const;

  // The line that was selected last; when it no longer is, the first of those that are, and
  // null when none is.
  const ListLine* SelectedItem() const;
  std::int32_t SelectedIndex() const { return selected_; }  // -1 for none

  std::size_t selectedCount() const { return selectedCount_; }

  // Adds a line: at the end, or where its text belongs. A selected one is then the selection.
  void add(ListLine line);
  void remove(std::size_t index);
  void clear();
  void setText(std::size_t index, std::string text);
  void setChecked(std::size_t index, bool isChecked);

  // Selects a line or not. Without MultiSelect no other one stays selected.
  void select(std::size_t index, bool isSelected);

  // Makes these the selected lines, the last of them the one that was selected last, and
  // without MultiSelect the only one.
  void selectOnly(const std::vector<std::size_t>& indexes);

  void ensureVisible(std::size_t index) const;
  void startLabelEdit(std::size_t index) const;
  void lockDrawing(bool locked) const;
  void Refresh() const;
  std::uintptr_t hWnd() const { return screen_ == nullptr ? 0 : screen_->hWnd(); }

  // Counts what gives lines other indexes. An index that was found under another number may
  // now be another line's.
  std::uint64_t life() const { return life_; }

  // Sets who shows the list; null for nobody.
  void setScreen(ListViewScreen* screen) { screen_ = screen; }
  ListViewScreen* screen() const { return screen_; }

 private:
  ListLine& lineAt(std::size_t index);
  bool isBefore(const ListLine& one, const ListLine& other) const;
  void mark(std::size_t index, bool isSelected);
  std::int32_t firstSelected() const;
  void deselectAll();
  void sort();

  std::vector<ListLine> lines_;
  bool sorted_ = false;
  std::int32_t order_ = kAscending;
  std::size_t selectedCount_ = 0;
  std::int32_t selected_ = -1;  // SelectedItem
  std::uint64_t life_ = 0;
  ListViewScreen* screen_ = nullptr;
};

}  // namespace veltrin
