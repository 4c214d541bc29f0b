// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/window_catalogue.h"

#include <array>

#include "frame/window_name.h"
#include "ui_About.h"
#include "ui_MonOut.h"
#include "ui_Stability.h"
#include "ui_StabilitySUM.h"
#include "ui_frmIP.h"
#include "ui_frmNetwork.h"
#include "ui_frmPrint.h"
#include "ui_frmSysInfo.h"
#include "ui_indepth.h"
#include "ui_indepth2.h"
#include "ui_mtutest.h"
#include "ui_pingit.h"
#include "ui_pingtester.h"
#include "ui_setlang.h"
#include "ui_setmtu.h"
#include "ui_starter.h"
#include "ui_startup.h"
#include "ui_testdl.h"
#include "ui_trace.h"
#include "view/binder.h"

namespace veltrin {
namespace {

struct Entry {
  WindowName name;
  void (*lay)(FormWindow&);
  Qt::WindowFlags flags = Qt::Window;
};

// A window whose size the program alone changes has no button that makes it large.
constexpr Qt::WindowFlags kFixedWindow = Qt::Window | Qt::CustomizeWindowHint |
                                         Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                                         Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint;

template <class Look>
void lay(FormWindow& window) {
  Look().setupUi(&window);
}

// The keyboard begins at the first stop of the key Tab where a look does not name another.
void giveKeyboard(const FormWindow& window) {
  for (QWidget* child : window.findChildren<QWidget*>()) {
    if (child->property(kFirstKeyboardProperty).toBool()) child->setFocus();
  }
}

constexpr std::array<Entry, 19> kWindows = {{
    {WindowName::starter, lay<Ui::starter>, Qt::Window | Qt::FramelessWindowHint},
    {WindowName::startup, lay<Ui::startup>},
    {WindowName::About, lay<Ui::About>, Qt::Dialog},
    {WindowName::setlang, lay<Ui::setlang>},
    {WindowName::pingtester, lay<Ui::pingtester>},
    {WindowName::trace, lay<Ui::trace>},
    {WindowName::Stability, lay<Ui::Stability>, kFixedWindow},
    {WindowName::StabilitySUM, lay<Ui::StabilitySUM>},
    {WindowName::MonOut, lay<Ui::MonOut>, kFixedWindow},
    {WindowName::indepth, lay<Ui::indepth>},
    {WindowName::indepth2, lay<Ui::indepth2>},
    {WindowName::mtutest, lay<Ui::mtutest>, kFixedWindow},
    {WindowName::pingit, lay<Ui::pingit>, kFixedWindow},
    {WindowName::setmtu, lay<Ui::setmtu>},
    {WindowName::testdl, lay<Ui::testdl>},
    {WindowName::frmNetwork, lay<Ui::frmNetwork>, Qt::Window | Qt::FramelessWindowHint},
    {WindowName::frmIP, lay<Ui::frmIP>, kFixedWindow},
    {WindowName::frmSysInfo, lay<Ui::frmSysInfo>},
    {WindowName::frmPrint, lay<Ui::frmPrint>, Qt::Dialog},
}};

}  // namespace

std::unique_ptr<FormWindow> makeWindow(const std::string& name) {
  for (const Entry& entry : kWindows) {
    if (name != nameOf(entry.name)) continue;
    auto window = std::make_unique<FormWindow>();
    window->setWindowFlags(entry.flags);
    entry.lay(*window);
    giveKeyboard(*window);
    return window;
  }
  return nullptr;
}

std::unique_ptr<ShownForm> showInWindow(Form& form, EventGate& gate, const Files& files) {
  auto window = makeWindow(form.name());
  if (window == nullptr) return nullptr;
  return std::make_unique<Binder>(form, std::move(window), gate, files);
}

std::vector<std::string> windowNames() {
  std::vector<std::string> names;
  names.reserve(kWindows.size());
  for (const Entry& entry : kWindows) names.push_back(nameOf(entry.name));
  return names;
}

}  // namespace veltrin
