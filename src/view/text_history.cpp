// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/text_history.h"

#include <utility>

namespace veltrin {
namespace {

constexpr std::size_t kMostSteps = 1000;  // the oldest go

// Whether the second change goes on with typing where the first one stopped. Each line
// is a step of its own.
bool goesOnTyping(const TextEdit& first, const TextEdit& second) {
  return first.removed.isEmpty() && second.removed.isEmpty() && second.added.size() == 1 &&
         second.added != QChar(u'\n') && !first.added.endsWith(QChar(u'\n')) &&
         second.position == first.position + first.added.size();
}

bool goesOnErasing(const TextEdit& first, const TextEdit& second) {
  return first.added.isEmpty() && second.added.isEmpty() && second.removed.size() == 1 &&
         second.removed != QChar(u'\n') &&
         (second.position + 1 == first.position || second.position == first.position);
}

// Adds a change to the one before it when both are one step.
bool join(TextEdit& first, const TextEdit& second) {
  if (goesOnTyping(first, second)) {
    first.added += second.added;
    return true;
  }
  if (!goesOnErasing(first, second)) return false;
  const bool isBackwards = second.position < first.position;
  first.removed = isBackwards ? second.removed + first.removed : first.removed + second.removed;
  first.position = second.position;
  return true;
}

TextEdit reverse(const TextEdit& edit) { return {edit.position, edit.added, edit.removed}; }

}  // namespace

void TextHistory::note(TextEdit edit) {
  const bool isFresh = !undone_.empty();
  undone_.clear();
  if (!isFresh && !done_.empty() && join(done_.back(), edit)) return;
  done_.push_back(std::move(edit));
  if (done_.size() > kMostSteps) done_.pop_front();
}

std::optional<TextEdit> TextHistory::undo() {
  if (done_.empty()) return std::nullopt;
  undone_.push_back(std::move(done_.back()));
  done_.pop_back();
  return reverse(undone_.back());
}

std::optional<TextEdit> TextHistory::redo() {
  if (undone_.empty()) return std::nullopt;
  done_.push_back(std::move(undone_.back()));
  undone_.pop_back();
  return done_.back();
}

void TextHistory::clear() {
  done_.clear();
  undone_.clear();
}

}  // namespace veltrin
