// SPDX-License-Identifier: GPL-3.0-or-later
// A text of many lines on the screen.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <QObject>
#include <QPlainTextEdit>

#include "forms/text_box.h"
#include "view/binding.h"
#include "view/text_history.h"
#include "view/text_place.h"

namespace veltrin {

// Shows a text box that may grow to megabytes, and hands on what the user does to its
// text. Either is told to the other as a change and never as the whole text, so that
// nothing of it is copied, and nothing is lost while both change it: what
// the user types waits for the gate, and what the program adds meanwhile goes behind the
// end, which moves nothing. When the program replaces the text, what the user did to
// the old one and still waits is void.
//
// A page that the program hides costs nothing: it takes in its text when it is shown.
//
// A letter or line break that the end of the text cuts is shown when its rest has come.
// Undoing takes back what the user did and leaves what the program added.
class TextPage : public QObject {
 public:
  // Belongs to `view`. `box` and `binding` have to live until the binding has ended.
  TextPage(TextBox& box, QPlainTextEdit& view, Binding& binding);

  // Shows the text of the box, whose `kept` leading bytes stayed as they were.
  void show(std::size_t kept);

  // Brings the end of the text into view behind a change, unless the user looks at
  // something further up, works somewhere else in the text, or holds a selection.
  void followEnd();

  bool eventFilter(QObject* target, QEvent* event) override;

 private:
  static constexpr std::size_t kNone = std::string::npos;

  // What the user did, on its way through the gate.
  struct Typed {
    TextPlace place;
    int position = 0;  // of the place, from the start of the text
    int removed = 0;   // units
    QString added;
    bool isNew = true;  // and not the undoing of something
    int life = 0;
  };

  void collect(int position, int removed, int added);
  void postCollected();
  void deliver(const Typed& typed);
  bool enter(const Typed& typed);

  bool isHidden() const;
  void catchUp();
  bool keepsToEnd() const;
  bool isAtEnd() const;
  void restart();
  void append(std::string_view added);
  void select(int anchor, int caret);

  bool pressKey(const QKeyEvent& key);
  void carryOut(const std::optional<TextEdit>& edit);
  void showMenu(const QPoint& place);

  TextBox& box_;
  QPlainTextEdit& view_;
  Binding& binding_;
  std::size_t shown_ = 0;         // bytes of the box's text that are on the screen
  std::size_t unseen_ = kNone;    // the first byte that has changed while the page was hidden
  std::string cut_;               // the end of these that waits for its rest
  bool follows_ = true;           // behind the last change the end comes into view
  bool scrolled_ = false;         // the user has scrolled, and not put the caret anywhere since
  bool showing_ = false;          // the change under way is the program's
  bool entering_ = false;         // the change of the box under way is on the screen already
  bool undoing_ = false;          // the change under way undoes one, or does it again
  int life_ = 0;                  // counts the texts that the program began anew
  int waiting_ = 0;               // changes of this text on their way to the box
  std::vector<Typed> collected_;  // changes that are not on their way yet
  TextHistory history_;
};

}  // namespace veltrin
