// SPDX-License-Identifier: GPL-3.0-or-later
#include "controls/list_view.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>

#include "text/statement.h"
#include "text/strings.h"

namespace veltrin {
namespace {

[[noreturn]] void failIndex() {
  throw StatementFailed("Index out of bounds", kSubscriptOutOfRange);
}

}  // namespace

void ListView::setSorted(bool isSorted) {
  sorted_ = isSorted;
  sort();
}

void ListView::setSortOrder(std::int32_t order) {
  order_ = order;
  sort();
}

const ListLine& ListView::line(std::size_t index) const {
  if (index >= lines_.size()) failIndex();
  return lines_[index];
}

ListLine& ListView::lineAt(std::size_t index) {
  if (index >= lines_.size()) failIndex();
  return lines_[index];
}

const ListLine* ListView::SelectedItem() const {
  return selected_ < 0 ? nullptr : &lines_[static_cast<std::size_t>(selected_)];
}

bool ListView::isBefore(const ListLine& one, const ListLine& other) const {
  const bool descending = order_ == kDescending;
  const ListLine& first = descending ? other : one;
  const ListLine& second = descending ? one : other;
  return LCase(first.Text) < LCase(second.Text);
}

// The selection goes with its lines.
void ListView::sort() {
  if (!sorted_) return;
  std::vector<std::size_t> places(lines_.size());
  std::iota(places.begin(), places.end(), std::size_t{0});
  std::stable_sort(places.begin(), places.end(), [this](std::size_t one, std::size_t other) {
    return isBefore(lines_[one], lines_[other]);
  });
  std::vector<ListLine> sorted;
  sorted.reserve(lines_.size());
  std::int32_t selected = -1;
  for (const std::size_t place : places) {
    if (static_cast<std::int32_t>(place) == selected_) {
      selected = static_cast<std::int32_t>(sorted.size());
    }
    sorted.push_back(std::move(lines_[place]));
  }
  lines_ = std::move(sorted);
  selected_ = selected;
  ++life_;
  if (screen_ != nullptr) screen_->noteReset();
}

void ListView::add(ListLine line) {
  auto place = lines_.end();
  if (sorted_) {
    place = std::upper_bound(
        lines_.begin(), lines_.end(), line,
        [this](const ListLine& one, const ListLine& other) { return isBefore(one, other); });
  }
  const auto index = static_cast<std::size_t>(place - lines_.begin());
  const bool isSelected = std::exchange(line.Selected, false);
  const bool moves = index < lines_.size();
  lines_.insert(place, std::move(line));
  if (moves) {
    ++life_;
    if (selected_ >= static_cast<std::int32_t>(index)) ++selected_;
  }
  if (screen_ != nullptr) screen_->noteInserted(index);
  if (isSelected) select(index, true);
}

void ListView::remove(std::size_t index) {
  if (lineAt(index).Selected) mark(index, false);
  lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(index));
  if (selected_ > static_cast<std::int32_t>(index)) --selected_;
  ++life_;
  if (screen_ != nullptr) screen_->noteRemoved(index);
}

void ListView::clear() {
  lines_.clear();
  selectedCount_ = 0;
  selected_ = -1;
  ++life_;
  if (screen_ != nullptr) screen_->noteReset();
}

void ListView::setText(std::size_t index, std::string text) {
  lineAt(index).Text = std::move(text);
  if (screen_ != nullptr) screen_->noteChanged(index);
}

void ListView::setChecked(std::size_t index, bool isChecked) {
  lineAt(index).Checked = isChecked;
  if (screen_ != nullptr) screen_->noteChanged(index);
}

void ListView::mark(std::size_t index, bool isSelected) {
  ListLine& line = lineAt(index);
  if (line.Selected != isSelected) selectedCount_ += isSelected ? 1 : std::size_t(-1);
  line.Selected = isSelected;
  const auto number = static_cast<std::int32_t>(index);
  if (isSelected) {
    selected_ = number;
  } else if (selected_ == number) {
    selected_ = firstSelected();
  }
}

// Mostly one line is selected, and the others need not be looked at.
std::int32_t ListView::firstSelected() const {
  if (selectedCount_ == 0) return -1;
  const auto first = std::find_if(lines_.begin(), lines_.end(),
                                  [](const ListLine& line) { return line.Selected; });
  return static_cast<std::int32_t>(first - lines_.begin());
}

void ListView::deselectAll() {
  if (selectedCount_ == 1) lines_[static_cast<std::size_t>(selected_)].Selected = false;
  if (selectedCount_ > 1) {
    for (ListLine& line : lines_) line.Selected = false;
  }
  selectedCount_ = 0;
  selected_ = -1;
}

void ListView::select(std::size_t index, bool isSelected) {
  if (index >= lines_.size()) failIndex();
  if (isSelected && !MultiSelect) deselectAll();
  mark(index, isSelected);
  if (screen_ != nullptr) screen_->noteSelection();
}

void ListView::selectOnly(const std::vector<std::size_t>& indexes) {
  deselectAll();
  for (const std::size_t index : indexes) {
    if (!MultiSelect) deselectAll();
    mark(index, true);
  }
  if (screen_ != nullptr) screen_->noteSelection();
}

void ListView::ensureVisible(std::size_t index) const {
  if (screen_ != nullptr) screen_->EnsureVisible(index);
}

void ListView::startLabelEdit(std::size_t index) const {
  if (screen_ != nullptr) screen_->StartLabelEdit(index);
}

void ListView::lockDrawing(bool locked) const {
  if (screen_ != nullptr) screen_->lockDrawing(locked);
}

void ListView::Refresh() const {
  if (screen_ != nullptr) screen_->Refresh();
}

}  // namespace veltrin
