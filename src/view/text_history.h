// SPDX-License-Identifier: GPL-3.0-or-later
// What the user did to a text, to be undone and done again.
#pragma once

#include <deque>
#include <optional>
#include <vector>

#include <QString>

namespace veltrin {

// A change of a text on the screen: `added` came in the place of `removed`, `position`
// UTF-16 units behind the start.
struct TextEdit {
  int position = 0;
  QString removed;
  QString added;
};

// Holds the user's changes alone. What the program adds behind the end of the text moves
// none of their places, so that it stays when they are undone. Letters typed or taken
// away one behind the other are one step.
class TextHistory {
 public:
  // The user's newest change. What was undone before it is past doing again.
  void note(TextEdit edit);

  // The change that undoes the last step, or does the last undone one again; none when
  // there is no such step.
  std::optional<TextEdit> undo();
  std::optional<TextEdit> redo();

  bool canUndo() const { return !done_.empty(); }
  bool canRedo() const { return !undone_.empty(); }

  // For a text that the program has replaced.
  void clear();

 private:
  std::deque<TextEdit> done_;  // the latest at the end
  std::vector<TextEdit> undone_;
};

}  // namespace veltrin
