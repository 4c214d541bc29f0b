#include "view/binder.h"

#include "forms/timer.h"
#include "platform/qt/qt_text.h"

namespace veltrin {
namespace {

// Only a tip with a paragraph in it breaks its lines.
void showTip(const QString& tip, QWidget& widget) {
  const QString paragraph = QStringLiteral("<p>%1</p>").arg(tip.toHtmlEscaped());
  widget.setToolTip(tip.isEmpty() ? tip : paragraph);
  widget.setAccessibleDescription(tip);
}

}  // namespace

std::string widgetName(const Control& control) {
  if (control.index() < 0) return control.name();
  return control.name() + "_" + std::to_string(control.index());
}

bool isInvisibleByKind(const Control& control) {
  return dynamic_cast<const Timer*>(&control) != nullptr;
}

Binder::Binder(Form& form, std::unique_ptr<FormWindow> window, EventGate& gate, const Files& files)
    : window_(std::move(window)), binding_(form, gate, files) {
  bindFrame(form);
  for (Control* control : form.controls()) {
    if (isInvisibleByKind(*control)) continue;
    auto* widget = window_->findChild<QWidget*>(toQt(widgetName(*control)));
    if (widget != nullptr) bindControl(*control, *widget);
  }
}

// A routine that was called from inside the window may have taken it away: the widgets
// go only when nothing of theirs is on the stack.
Binder::~Binder() {
  window_->onClose({});
  window_->hide();
  window_.release()->deleteLater();
}

void Binder::bindFrame(Form& form) {
  binding_.show(form.caption,
                [this](const std::string& caption) { window_->setWindowTitle(toQt(caption)); });
  binding_.show(form.mousePointer, [this](MousePointer pointer) { setPointer(pointer); });
  window_->onClose([this, &form] { binding_.post([&form] { form.close(); }); });
}

void Binder::bindControl(Control& control, QWidget& widget) {
  binding_.show(control.visible, [&widget](bool visible) { widget.setVisible(visible); });
  binding_.show(control.enabled, [&widget](bool enabled) { widget.setEnabled(enabled); });
  binding_.show(control.toolTip, [&widget](const std::string& tip) { showTip(toQt(tip), widget); });
  bindKind(control, widget);
}

void Binder::bindKind(Control& control, QWidget& widget) {
  if (auto* label = dynamic_cast<Label*>(&control)) bindLabel(*label, widget, binding_);
  if (auto* box = dynamic_cast<TextBox*>(&control)) bindTextBox(*box, widget, binding_);
  if (auto* box = dynamic_cast<ComboBox*>(&control)) bindComboBox(*box, widget, binding_);
  if (auto* button = dynamic_cast<CommandButton*>(&control)) bindButton(*button, widget, binding_);
  if (auto* list = dynamic_cast<ListBox*>(&control)) bindListBox(*list, widget, binding_);
  if (auto* clip = dynamic_cast<Animation*>(&control)) bindAnimation(*clip, widget, binding_);
  if (auto* chart = dynamic_cast<Chart*>(&control)) bindChart(*chart, widget, binding_);
}

// Widgets with a pointer of their own, as over a text, take the window's meanwhile.
void Binder::setPointer(MousePointer pointer) {
  for (const auto& [widget, own] : ownPointers_) {
    if (widget) widget->setCursor(own);
  }
  ownPointers_.clear();
  if (pointer == MousePointer::Default) {
    window_->unsetCursor();
    return;
  }
  const QCursor cursor(pointer == MousePointer::Hourglass ? Qt::WaitCursor : Qt::SizeAllCursor);
  for (QWidget* child : window_->findChildren<QWidget*>()) {
    if (!child->testAttribute(Qt::WA_SetCursor)) continue;
    ownPointers_.emplace_back(child, child->cursor());
    child->setCursor(cursor);
  }
  window_->setCursor(cursor);
}

}  // namespace veltrin
