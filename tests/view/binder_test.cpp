// SPDX-License-Identifier: GPL-3.0-or-later
// Every control has its widget, and every widget its control.
#include "view/binder.h"

#include <set>

#include <QAccessible>
#include <QAction>
#include <QLabel>
#include <QMenu>

#include "all_windows.h"
#include "forms/line.h"
#include "view/window_catalogue.h"

namespace veltrin {
namespace {

using testing::IsEmpty;

// Rules of the look that a model knows.
std::set<std::string> decorationsOf(const Form& form) {
  std::set<std::string> names;
  for (const Control* control : form.controls()) {
    if (dynamic_cast<const Line*>(control) != nullptr) names.insert(widgetName(*control));
  }
  return names;
}

std::set<std::string> controlNames(const Form& form) {
  std::set<std::string> names;
  for (const Control* control : form.controls()) {
    if (!isInvisibleByKind(*control)) names.insert(widgetName(*control));
  }
  return names;
}

// The names of the widgets and the menu entries that are laid out in a form, but the
// decoration and what Qt makes for its own use.
std::set<std::string> widgetNames(const QWidget& window) {
  std::set<std::string> names;
  for (const QObject* part : window.findChildren<QObject*>()) {
    const QString name = part->objectName();
    const bool isForms = part->isWidgetType() || qobject_cast<const QAction*>(part) != nullptr;
    if (isForms && !name.isEmpty() && !name.startsWith("decor") && !name.startsWith("qt_")) {
      names.insert(fromQt(name));
    }
  }
  return names;
}

class BinderTest : public ViewTest {};

TEST_F(BinderTest, EveryFormHasAWindowAndEveryWindowAForm) {
  std::vector<std::string> names;
  for (const auto& form : allForms(program)) names.push_back(form->name());

  EXPECT_EQ(windowNames(), names);
}

TEST_F(BinderTest, ControlsAndWidgetsOfEveryWindowHaveTheSameNames) {
  for (const auto& form : allForms(program)) {
    SCOPED_TRACE(form->name());

    EXPECT_EQ(widgetNames(*makeWindow(form->name())), controlNames(*form));
  }
}

// A text without words has nothing to be read.
TEST_F(BinderTest, AScreenReaderFindsANameForEveryControlOfEveryWindow) {
  std::vector<std::string> nameless;
  for (const auto& form : allForms(program)) {
    desktop.show(*form);
    const std::set<std::string> decorations = decorationsOf(*form);
    for (const std::string& name : controlNames(*form)) {
      auto* child = desktop.windowOf(*form)->findChild<QWidget*>(toQt(name));
      const bool isMenu = child == nullptr || qobject_cast<QMenu*>(child) != nullptr;
      if (isMenu) continue;  // menus and their entries are read by their texts
      const auto* label = qobject_cast<QLabel*>(child);
      const bool isEmpty =
          (label != nullptr && label->text().isEmpty()) || decorations.contains(name);
      QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(child);
      if (!isEmpty && reader->text(QAccessible::Name).isEmpty()) {
        nameless.push_back(form->name() + " " + name);
      }
    }
    desktop.remove(*form);
  }

  EXPECT_THAT(nameless, IsEmpty());
}

TEST_F(BinderTest, ANumberIsReadTogetherWithItsMeaning) {
  const auto form = shown<pingtester>();

  form->pinglow[2].caption = "17";

  EXPECT_EQ(widget("pinglow_2")->accessibleName(), "Lowest time of destination 3 17");
}

TEST_F(BinderTest, AWindowThatIsUnloadedLeavesNoObserverBehind) {
  shown<setlang>();
  const auto form = shown<pingtester>();
  program.unload(*form);
  atRest([] {});

  form->caption = "Gone";
  form->url[0].text = "192.0.2.1";
  form->Label9.caption = "Complete";

  EXPECT_EQ(desktop.windowOf(*form), nullptr);
}

}  // namespace
}  // namespace veltrin
