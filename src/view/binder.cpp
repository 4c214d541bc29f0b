// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/binder.h"

#include <QMenu>
#include <QPushButton>

#include "download/dwnLoader.h"
#include "forms/image_list.h"
#include "forms/timer.h"
#include "frame/winsock.h"
#include "platform/qt/qt_text.h"
#include "view/picture.h"
#include "view/picture_view.h"

namespace veltrin {
namespace {

// Only a tip with a paragraph in it breaks its lines.
void showTip(const QString& tip, QWidget& widget) {
  const QString paragraph = QStringLiteral("<p>%1</p>").arg(tip.toHtmlEscaped());
  widget.setToolTip(tip.isEmpty() ? tip : paragraph);
  widget.setAccessibleDescription(tip);
}

// The action of a menu's entry, or of an entry that opens a menu of its own; null without one.
QAction* actionOf(const QWidget& window, const QString& name) {
  if (auto* action = window.findChild<QAction*>(name)) return action;
  const auto* menu = window.findChild<QMenu*>(name);
  return menu == nullptr ? nullptr : menu->menuAction();
}

// Widgets name their pictures in the forms.
void showPicture(QWidget& widget, const Files& files) {
  const QString name = widget.property(kPictureProperty).toString();
  if (name.isEmpty()) return;
  const QIcon picture = loadPicture(files, fromQt(name));
  if (auto* button = qobject_cast<QPushButton*>(&widget)) button->setIcon(picture);
  if (auto* view = dynamic_cast<PictureView*>(&widget)) view->setPicture(picture);
}

}  // namespace

std::string widgetName(const Control& control) {
  if (control.index() < 0) return control.name();
  return control.name() + "_" + std::to_string(control.index());
}

bool isInvisibleByKind(const Control& control) {
  return dynamic_cast<const Timer*>(&control) != nullptr ||
         dynamic_cast<const Winsock*>(&control) != nullptr ||
         dynamic_cast<const dwnLoader*>(&control) != nullptr ||
         dynamic_cast<const ImageList*>(&control) != nullptr;
}

Binder::Binder(Form& form, std::unique_ptr<FormWindow> window, EventGate& gate, const Files& files)
    : window_(std::move(window)), binding_(form, gate, files) {
  bindFrame(form);
  for (QWidget* widget : window_->findChildren<QWidget*>()) showPicture(*widget, files);
  for (Control* control : form.controls()) {
    if (isInvisibleByKind(*control)) continue;
    const QString name = toQt(widgetName(*control));
    if (auto* entry = dynamic_cast<MenuEntry*>(control)) {
      if (auto* action = actionOf(*window_, name)) bindMenuEntry(*entry, *action, binding_);
    } else if (auto* widget = window_->findChild<QWidget*>(name)) {
      bindControl(*control, *widget);
    }
  }
}

// A routine that was called from inside the window may have taken it away: the widgets
// go only when nothing of theirs is on the stack. Until then Windows finds the window,
// hidden as it is, by its title, under which a second copy of the program looks for the
// first; an empty title would be replaced by the program's name.
Binder::~Binder() {
  window_->onClose({});
  window_->onPress({});
  window_->hide();
  window_->setWindowTitle(QStringLiteral(" "));
  window_.release()->deleteLater();
}

void Binder::bindFrame(Form& form) {
  binding_.show(form.caption,
                [this](const std::string& caption) { window_->setWindowTitle(toQt(caption)); });
  binding_.show(form.mousePointer, [this](MousePointer pointer) { setPointer(pointer); });
  bindWindowSize(form, *window_, binding_);
  window_->onClose([this, &form] { binding_.post([&form] { form.close(); }); });
  bindWindowMouse(form, *window_, binding_);
}

void Binder::bindControl(Control& control, QWidget& widget) {
  binding_.show(control.visible, [&widget](bool visible) { widget.setVisible(visible); });
  binding_.show(control.enabled, [&widget](bool enabled) { widget.setEnabled(enabled); });
  binding_.show(control.toolTip, [&widget](const std::string& tip) { showTip(toQt(tip), widget); });
  bindPlace(control, widget, binding_);
  bindKind(control, widget);
  bindMouse(control, widget, binding_);
}

void Binder::bindKind(Control& control, QWidget& widget) {
  if (auto* label = dynamic_cast<Label*>(&control)) bindLabel(*label, widget, binding_);
  if (auto* box = dynamic_cast<TextBox*>(&control)) bindTextBox(*box, widget, binding_);
  if (auto* box = dynamic_cast<ComboBox*>(&control)) bindComboBox(*box, widget, binding_);
  if (auto* button = dynamic_cast<CommandButton*>(&control)) bindButton(*button, widget, binding_);
  if (auto* list = dynamic_cast<ListBox*>(&control)) bindListBox(*list, widget, binding_);
  if (auto* clip = dynamic_cast<Animation*>(&control)) bindAnimation(*clip, widget, binding_);
  if (auto* box = dynamic_cast<CheckBox*>(&control)) bindCheckBox(*box, widget, binding_);
  if (auto* button = dynamic_cast<OptionButton*>(&control)) bindOption(*button, widget, binding_);
  if (auto* image = dynamic_cast<Image*>(&control)) bindImage(*image, widget, binding_);
  if (auto* chart = dynamic_cast<Chart*>(&control)) bindChart(*chart, widget, binding_);
  if (auto* box = dynamic_cast<PictureBox*>(&control)) bindPictureBox(*box, widget, binding_);
  if (auto* bar = dynamic_cast<ProgressBar*>(&control)) bindProgressBar(*bar, widget, binding_);
  if (auto* list = dynamic_cast<LVListBox*>(&control)) bindLineList(*list, widget, binding_);
  if (auto* gauge = dynamic_cast<bkCProg*>(&control)) bindGauge(*gauge, widget, binding_);
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
