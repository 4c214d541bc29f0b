// The frame of every window.
#pragma once

#include <functional>

#include <QWidget>

namespace veltrin {

// Closes only when the program takes it away. The key Enter, where no control has use
// for it, presses the window's default button.
class FormWindow : public QWidget {
 public:
  // Sets what the close button of the frame does.
  void onClose(std::function<void()> routine) { closing_ = std::move(routine); }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  std::function<void()> closing_;
};

}  // namespace veltrin
