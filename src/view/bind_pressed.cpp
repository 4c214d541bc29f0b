// SPDX-License-Identifier: GPL-3.0-or-later
// Controls that the user presses: buttons, check boxes, choices, pictures, entries of the menu.
#include <QAction>
#include <QCheckBox>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>

#include "platform/qt/qt_text.h"
#include "view/binder.h"
#include "view/binding.h"

namespace veltrin {
namespace {

// Qt lets nobody take the choice away from a button of an exclusive group.
void showChoice(const OptionButton& button, QRadioButton& view) {
  if (view.isChecked() == button.value().get()) return;
  view.setAutoExclusive(false);
  view.setChecked(button.value());
  view.setAutoExclusive(true);
}

void showChoices(const Form& form, const QWidget& window) {
  for (const Control* control : form.controls()) {
    const auto* button = dynamic_cast<const OptionButton*>(control);
    if (button == nullptr) continue;
    auto* view = window.findChild<QRadioButton*>(toQt(widgetName(*button)));
    if (view != nullptr) showChoice(*button, *view);
  }
}

}  // namespace

void bindButton(CommandButton& button, QWidget& widget, Binding& binding) {
  auto* view = qobject_cast<QPushButton*>(&widget);
  if (view == nullptr) return;
  binding.show(button.caption,
               [view](const std::string& caption) { view->setText(toQt(caption)); });
  binding.show(button.backColour, [view](Colour colour) {
    QPalette palette = view->palette();
    palette.setColor(QPalette::Button, QColor(colour.red, colour.green, colour.blue));
    view->setPalette(palette);
  });
  QObject::connect(view, &QPushButton::clicked, binding.receiver(),
                   [&button, &binding] { binding.post([&button] { button.press(); }); });
}

// The widget ticks itself when it is clicked. Whether the control did so too is shown
// behind it.
void bindCheckBox(CheckBox& box, QWidget& widget, Binding& binding) {
  auto* view = qobject_cast<QCheckBox*>(&widget);
  if (view == nullptr) return;
  const auto show = [view](int value) { view->setChecked(value == kChecked); };
  binding.show(box.caption, [view](const std::string& caption) { view->setText(toQt(caption)); });
  binding.show(box.value, show);
  QObject::connect(view, &QCheckBox::clicked, binding.receiver(), [&box, &binding, view, show] {
    binding.post([&box, shown = QPointer<QCheckBox>(view), show] {
      box.press();
      if (shown) show(box.value);
    });
  });
}

// Qt chooses by itself, too. What the window's choice is then is shown behind it.
void bindOption(OptionButton& button, QWidget& widget, Binding& binding) {
  auto* view = qobject_cast<QRadioButton*>(&widget);
  if (view == nullptr) return;
  binding.show(button.caption,
               [view](const std::string& caption) { view->setText(toQt(caption)); });
  binding.show(button.observedValue(), [&button, view](bool) { showChoice(button, *view); });
  QObject::connect(view, &QRadioButton::clicked, binding.receiver(), [&button, &binding, view] {
    binding.post([&button, shown = QPointer<QRadioButton>(view)] {
      button.press();
      if (shown) showChoices(*button.form(), *shown->window());
    });
  });
}

// A picture that does nothing when it is clicked has no button for a widget.
void bindImage(Image& image, QWidget& widget, Binding& binding) {
  auto* view = qobject_cast<QPushButton*>(&widget);
  if (view == nullptr) return;
  QObject::connect(view, &QPushButton::clicked, binding.receiver(),
                   [&image, &binding] { binding.post([&image] { image.press(); }); });
}

void bindMenuEntry(MenuEntry& entry, QAction& action, Binding& binding) {
  binding.show(entry.visible, [&action](bool visible) { action.setVisible(visible); });
  binding.show(entry.enabled, [&action](bool enabled) { action.setEnabled(enabled); });
  binding.show(entry.caption,
               [&action](const std::string& caption) { action.setText(toQt(caption)); });
  QObject::connect(&action, &QAction::triggered, binding.receiver(),
                   [&entry, &binding] { binding.post([&entry] { entry.press(); }); });
}

}  // namespace veltrin
