// SPDX-License-Identifier: GPL-3.0-or-later
// A text that came from elsewhere, such as a host's name or a line of a tool, is shown letter
// by letter, whatever a browser would make of it.
#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QTextDocument>
#include <QTimer>

#include "download/testdl.h"
#include "forms/check_box.h"
#include "forms/combo_box.h"
#include "forms/command_button.h"
#include "forms/label.h"
#include "forms/option_button.h"
#include "forms/text_box.h"
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
#include "view_test.h"

namespace veltrin {
namespace {

using testing::IsEmpty;

const std::string kMarkup = "<b>bold</b><img src=\"file:///etc/hostname\"> & <a href=\"x\">x</a>";

template <class... Kinds>
std::vector<std::shared_ptr<Form>> make(Program& program) {
  return {std::make_shared<Kinds>(program)...};
}

std::vector<std::shared_ptr<Form>> allForms(Program& program) {
  return make<starter, startup, About, setlang, pingtester, trace, Stability, StabilitySUM, MonOut,
              indepth, indepth2, mtutest, pingit, setmtu, testdl, frmNetwork, frmIP, frmSysInfo,
              frmPrint>(program);
}

// Puts the text wherever a control shows one.
void fill(Control& control) {
  control.toolTip = kMarkup;
  if (auto* label = dynamic_cast<Label*>(&control)) label->caption = kMarkup;
  if (auto* button = dynamic_cast<CommandButton*>(&control)) button->caption = kMarkup;
  if (auto* check = dynamic_cast<CheckBox*>(&control)) check->caption = kMarkup;
  if (auto* option = dynamic_cast<OptionButton*>(&control)) option->caption = kMarkup;
  if (auto* box = dynamic_cast<TextBox*>(&control)) box->text = kMarkup;
  auto* combo = dynamic_cast<ComboBox*>(&control);
  if (combo == nullptr) return;
  combo->items = {kMarkup};
  combo->text = kMarkup;
}

// What a tip would show on the screen: it is marked up, so that its lines break.
QString shownTip(const QString& tip) {
  QTextDocument page;
  page.setHtml(tip);
  return page.toPlainText();
}

class PlainTextTest : public ViewTest {
 protected:
  // Names of the widgets of a shown window that show the text in another way.
  std::vector<std::string> findings(const Form& form) {
    std::vector<std::string> found;
    const QString markup = toQt(kMarkup);
    for (const QWidget* child : desktop.windowOf(form)->findChildren<QWidget*>()) {
      const auto say = [&](bool isWrong, const char* what) {
        if (isWrong) found.push_back(form.name() + " " + fromQt(child->objectName()) + what);
      };
      if (const auto* label = qobject_cast<const QLabel*>(child)) {
        const bool isPlain = label->textFormat() == Qt::PlainText;
        say(!isPlain && Qt::mightBeRichText(label->text()), ": marked-up text");
        texts_ += label->text() == markup ? 1 : 0;
      } else if (const auto* page = qobject_cast<const QPlainTextEdit*>(child)) {
        say(page->toPlainText().contains("bold") && page->toPlainText() != markup, ": other text");
        texts_ += page->toPlainText() == markup ? 1 : 0;
      } else if (const auto* line = qobject_cast<const QLineEdit*>(child)) {
        texts_ += line->text() == markup ? 1 : 0;
      } else if (child->inherits("QTextEdit")) {
        say(true, ": a box that reads marked-up text");
      }
      const QString tip = child->toolTip();
      say(!tip.isEmpty() && tip.contains("bold") && shownTip(tip) != markup, ": marked-up tip");
      tips_ += !tip.isEmpty() && shownTip(tip) == markup ? 1 : 0;
    }
    return found;
  }

  int texts_ = 0;  // that are shown as they are
  int tips_ = 0;
};

TEST_F(PlainTextTest, EveryTextAndTipOfEveryWindowIsShownLetterByLetter) {
  std::vector<std::string> wrong;
  for (const auto& form : allForms(program)) {
    desktop.show(*form);
    form->caption = kMarkup;
    for (Control* control : form->controls()) fill(*control);
    atRest([] {});
    const auto found = findings(*form);
    wrong.insert(wrong.end(), found.begin(), found.end());
    EXPECT_EQ(desktop.windowOf(*form)->windowTitle(), toQt(kMarkup)) << form->name();
    desktop.remove(*form);
  }

  EXPECT_THAT(wrong, IsEmpty());
  EXPECT_GT(texts_, 200);
  EXPECT_GT(tips_, 200);
}

TEST_F(PlainTextTest, AMessageAndItsTitleAreShownLetterByLetter) {
  shown<setlang>();
  QString text;
  QString title;
  Qt::TextFormat format = Qt::AutoText;
  soon([&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    text = box->text();
    title = box->windowTitle();
    format = box->textFormat();
    box->reject();
  });
  atRest([&] { program.MsgBox(kMarkup, kMessageOk, kMarkup); });

  EXPECT_EQ(text, toQt(kMarkup));
  EXPECT_EQ(title, toQt(kMarkup));
  EXPECT_EQ(format, Qt::PlainText);
}

}  // namespace
}  // namespace veltrin
