// SPDX-License-Identifier: GPL-3.0-or-later
// Every control has its widget, and every widget its control.
#include "view/binder.h"

#include <set>

#include <QAccessible>
#include <QAction>
#include <QLabel>
#include <QMenu>

#include "download/testdl.h"
#include "frame/About.h"
#include "frame/starter.h"
#include "frame/startup.h"
#include "monitor/frmIP.h"
#include "monitor/frmNetwork.h"
#include "mtu/mtutest.h"
#include "mtu/pingit.h"
#include "mtu/setmtu.h"
#include "route/MonOut.h"
#include "route/Stability.h"
#include "route/StabilitySUM.h"
#include "route/indepth.h"
#include "route/indepth2.h"
#include "route/trace.h"
#include "sysinfo/frmPrint.h"
#include "sysinfo/frmSysInfo.h"
#include "view/window_catalogue.h"
#include "view_test.h"

namespace veltrin {
namespace {

using testing::IsEmpty;

template <class... Kinds>
std::vector<std::shared_ptr<Form>> make(Program& program) {
  return {std::make_shared<Kinds>(program)...};
}

// Makes every form that has a look.
std::vector<std::shared_ptr<Form>> allForms(Program& program) {
  return make<starter, startup, About, setlang, pingtester, trace, Stability, StabilitySUM, MonOut,
              indepth, indepth2, mtutest, pingit, setmtu, testdl, frmNetwork, frmIP, frmSysInfo,
              frmPrint>(program);
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

class BinderTest : public ViewTest {
 protected:
  // The controls that the key Tab reaches, in the order of the model.
  std::vector<std::string> tabStops(const Form& form) const {
    std::vector<std::string> stops;
    for (const Control* control : form.controls()) {
      const auto* stop = window->findChild<QWidget*>(toQt(widgetName(*control)));
      const bool isStop = stop != nullptr && stop->isVisible() &&
                          (stop->focusPolicy() & Qt::TabFocus) == Qt::TabFocus;
      if (isStop) stops.push_back(widgetName(*control));
    }
    return stops;
  }

  // What the key Tab visits, from where the keyboard stands, until it is there again.
  std::vector<std::string> visitedByTab() {
    std::vector<std::string> visited;
    const QWidget* first = QApplication::focusWidget();
    if (first == nullptr) return visited;
    atRest([&] {
      do {
        visited.push_back(fromQt(QApplication::focusWidget()->objectName()));
        QTest::keyClick(window->windowHandle(), Qt::Key_Tab);
      } while (QApplication::focusWidget() != first && visited.size() < kMostStops);
    });
    return visited;
  }

  static constexpr std::size_t kMostStops = 100;
};

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
    for (const std::string& name : controlNames(*form)) {
      auto* child = desktop.windowOf(*form)->findChild<QWidget*>(toQt(name));
      const bool isMenu = child == nullptr || qobject_cast<QMenu*>(child) != nullptr;
      if (isMenu) continue;  // menus and their entries are read by their texts
      const auto* label = qobject_cast<QLabel*>(child);
      const bool isEmpty = label != nullptr && label->text().isEmpty();
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

TEST_F(BinderTest, TheKeyTabGoesThroughEveryWindowInTheOrderOfItsControls) {
  for (const auto& form : allForms(program)) {
    SCOPED_TRACE(form->name());
    for (Control* control : form->controls()) control->enabled = true;
    desktop.show(*form);
    window = desktop.windowOf(*form);
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));

    EXPECT_EQ(visitedByTab(), tabStops(*form));

    desktop.remove(*form);
  }
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
