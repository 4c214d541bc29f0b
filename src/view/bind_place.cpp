// SPDX-License-Identifier: GPL-3.0-or-later
// Places and sizes: of controls in windows with fixed places, and of the windows that their
// users size.
#include <memory>
#include <utility>

#include <QPointer>
#include <QScopedValueRollback>

#include "view/binding.h"
#include "view/watcher.h"

namespace veltrin {
namespace {

constexpr int kTwipsOfPixel = 15;  // at 100 percent

QSize twipsOf(const Form& form) { return {form.width, form.height}; }

// Keeps a form and its window at one size, whichever of them changes it.
class SizePost {
 public:
  SizePost(Form& form, FormWindow& window) : form_(form), window_(&window) {}

  // The size that the form has. While it answers its user, what it answers is shown in one.
  void show() {
    if (!isAnswering_ && window_) window_->showSize(twipsOf(form_));
  }

  // Whether the form is to be told of the size that the window has now. A system that insists
  // on a size that the form does not take is told so once.
  bool isNews() const {
    const QSize size = window_->size();
    const QSize shown = window_->insideOf(twipsOf(form_));
    return size != shown && !(size == told_ && shown == answer_);
  }

  // Whether the newest size is to be posted, as none waits for the gate.
  bool beginWaiting() { return !std::exchange(waits_, true); }

  void tell() {
    waits_ = false;
    if (!window_ || !isNews()) return;
    told_ = window_->size();
    const QSize twips = window_->twipsOf(told_);
    {
      const QScopedValueRollback<bool> answering(isAnswering_, true);
      form_.resizeTo(twips.width(), twips.height());
    }
    if (!window_) return;
    answer_ = window_->insideOf(twipsOf(form_));
    if (window_->size() == told_ && answer_ != told_) show();
  }

 private:
  Form& form_;
  const QPointer<FormWindow> window_;
  bool waits_ = false;
  bool isAnswering_ = false;
  QSize told_;    // to the form, inside the frame
  QSize answer_;  // the size that it then had
};

void bindSize(Form& form, FormWindow& window, Binding& binding) {
  const auto post = std::make_shared<SizePost>(form, window);
  const auto show = [post](int) { post->show(); };
  binding.show(form.width, show);
  binding.show(form.height, show);
  watch(window, binding, [post, &binding](const QEvent& event) {
    if (event.type() != QEvent::Resize || !post->isNews() || !post->beginWaiting()) return;
    binding.post([post] { post->tell(); });
  });
}

}  // namespace

void bindPlace(Control& control, QWidget& widget, Binding& binding) {
  binding.show(control.left, [&widget](int twips) {
    if (twips > 0) widget.move(twips / kTwipsOfPixel, widget.y());
  });
  binding.show(control.top, [&widget](int twips) {
    if (twips > 0) widget.move(widget.x(), twips / kTwipsOfPixel);
  });
  binding.show(control.width, [&widget](int twips) {
    if (twips > 0) widget.resize(twips / kTwipsOfPixel, widget.height());
  });
  binding.show(control.height, [&widget](int twips) {
    if (twips > 0) widget.resize(widget.width(), twips / kTwipsOfPixel);
  });
}

void bindWindowSize(Form& form, FormWindow& window, Binding& binding) {
  if (form.width > 0) return bindSize(form, window, binding);
  binding.show(form.height, [&window](int twips) { window.showHeight(twips); });
}

}  // namespace veltrin
