// Every control has its widget, and every widget its control.
#include <set>

#include <QAccessible>
#include <QLineEdit>

#include "view/window_catalogue.h"
#include "view_test.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Makes every form that there is.
std::vector<std::shared_ptr<Form>> allForms(Program& program) {
  return {std::make_shared<pingtester>(program), std::make_shared<setlang>(program)};
}

std::set<std::string> controlNames(const Form& form) {
  std::set<std::string> names;
  for (const Control* control : form.controls()) {
    if (!isInvisibleByKind(*control)) names.insert(widgetName(*control));
  }
  return names;
}

// The names of the widgets that are laid out in a form, but the decoration and what Qt
// makes for its own use.
std::set<std::string> widgetNames(const QWidget& window) {
  std::set<std::string> names;
  for (const QWidget* widget : window.findChildren<QWidget*>()) {
    const QString name = widget->objectName();
    if (!name.isEmpty() && !name.startsWith("decor") && !name.startsWith("qt_")) {
      names.insert(fromQt(name));
    }
  }
  return names;
}

using BinderTest = ViewTest;

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

TEST_F(BinderTest, AScreenReaderFindsANameForEveryControlOfThePingTest) {
  shown<pingtester>();

  std::vector<QString> nameless;
  for (QWidget* child : window->findChildren<QWidget*>()) {
    QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(child);
    const bool isControl =
        controlNames(*program.show<pingtester>()).contains(fromQt(child->objectName()));
    if (isControl && child->objectName() != "Label9" && reader->text(QAccessible::Name).isEmpty()) {
      nameless.push_back(child->objectName());
    }
  }

  EXPECT_THAT(nameless, IsEmpty());
}

TEST_F(BinderTest, ANumberIsReadTogetherWithItsMeaning) {
  const auto form = shown<pingtester>();

  form->pinglow[2].caption = "17";

  EXPECT_EQ(widget("pinglow_2")->accessibleName(), "Lowest time of destination 3 17");
}

TEST_F(BinderTest, TheKeyTabGoesThroughThePingTestInReadingOrder) {
  const auto form = shown<pingtester>();
  form->Command2.enabled = true;
  form->Command3.enabled = true;
  widget("url_0")->setFocus();

  std::vector<std::string> visited;
  atRest([&] {
    for (int stop = 0; stop < 11; ++stop) {
      const QWidget* focus = QApplication::focusWidget();
      visited.push_back(fromQt(focus->objectName()));
      QTest::keyClick(window->windowHandle(), Qt::Key_Tab);
    }
  });

  EXPECT_THAT(visited, ElementsAre("url_0", "url_1", "url_2", "url_3", "url_4", "Combo1", "Combo2",
                                   "Command1", "Command2", "Command3", "Command4"));
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
