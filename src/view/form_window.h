// SPDX-License-Identifier: GPL-3.0-or-later
// The frame of every window.
#pragma once

#include <functional>
#include <map>
#include <utility>

#include <QPointer>
#include <QWidget>

namespace veltrin {

// The property of a window with fixed places that tells what its frame takes of its height.
inline constexpr const char* kFrameProperty = "frameTwips";

// The same for the width of a window that its user may size. Below 0 where the look is wider
// than the window is to be without its frame.
inline constexpr const char* kFrameWidthProperty = "frameWidthTwips";

// The property of the button that the key Escape presses, where no control has use for it.
inline constexpr const char* kCancelProperty = "cancel";

// The property of the control at which the keyboard begins when its window comes up, where that
// is not the first stop of the key Tab.
inline constexpr const char* kFirstKeyboardProperty = "firstKeyboard";

// Closes only when the program takes it away. The keys Enter and Escape, where no control has
// use for them, press the window's default button and the one that cancels, and F10 goes to its
// menu bar. A window without a
// frame comes up in the middle of its screen, with a thin edge. A modal one belongs to the window
// that was in front before it, comes up over its middle, and stays above it.
class FormWindow : public QWidget {
 public:
  // Sets what the close button of the frame does.
  void onClose(std::function<void()> routine) { closing_ = std::move(routine); }

  // Gives the window a height that the user does not change, with its frame, in twips. Its
  // look tells what of that is the frame, in a property of the name above, and the width.
  // The keyboard does not go to what lies below the edge. 0 leaves the window as it is.
  void showHeight(int twips);

  // The size that a window of so many twips with its frame has inside it, and the other way. The
  // look tells what is the frame, in the properties above.
  QSize insideOf(const QSize& twips) const;
  QSize twipsOf(const QSize& inside) const;

  // Gives a window that its user may size that size, in twips with its frame, unless the system
  // has chosen one for it, as for a maximized one.
  void showSize(const QSize& twips);

  // Sets what the menu key and Escape do, where no control has use for them.
  void onMenu(std::function<void()> routine) { opening_ = std::move(routine); }

  // Lets the arrow keys move the window, never beyond the edges of its screen.
  void moveByKeys();

  // Sets what Space, Enter and Escape do, where no control has use for them.
  void onPress(std::function<void()> routine) { pressing_ = std::move(routine); }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  bool pressButton(int key);
  bool openMenuBar(const QKeyEvent& event);
  QWidget* findOpener() const;
  void noteOpener();
  void standOver(const QWidget& window);
  void giveKeyboardToWhatIsSeen();
  void keepOnScreen();
  void comeOntoScreen();

  std::function<void()> closing_;
  std::function<void()> pressing_;
  std::function<void()> opening_;
  QPointer<QWidget> opener_;  // the window that was in front when this one came up
  bool standsOver_ = false;   // whether it was put there
  std::map<QWidget*, Qt::FocusPolicy> unseen_;  // controls below the edge, as they are above it
};

}  // namespace veltrin
