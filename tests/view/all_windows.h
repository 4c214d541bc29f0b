// SPDX-License-Identifier: GPL-3.0-or-later
// Every window that there is, for rules that hold in all of them. A window that is added to
// the list here comes under all these rules; a test sees to it that none is left out.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include <QApplication>

#include "download/testdl.h"
#include "frame/About.h"
#include "frame/starter.h"
#include "frame/startup.h"
#include "monitor/frmIP.h"
#include "monitor/frmNetwork.h"
#include "mtu/mtutest.h"
#include "mtu/pingit.h"
#include "mtu/setmtu.h"
#include "pictures.h"
#include "route/MonOut.h"
#include "route/Stability.h"
#include "route/StabilitySUM.h"
#include "route/indepth.h"
#include "route/indepth2.h"
#include "route/trace.h"
#include "sysinfo/frmPrint.h"
#include "sysinfo/frmSysInfo.h"
#include "view/binder.h"

namespace veltrin {

template <class... Kinds>
std::vector<std::shared_ptr<Form>> makeForms(Program& program) {
  return {std::make_shared<Kinds>(program)...};
}

// Makes every form that has a look.
inline std::vector<std::shared_ptr<Form>> allForms(Program& program) {
  return makeForms<starter, startup, About, setlang, pingtester, trace, Stability, StabilitySUM,
                   MonOut, indepth, indepth2, mtutest, pingit, setmtu, testdl, frmNetwork, frmIP,
                   frmSysInfo, frmPrint>(program);
}

class AllWindows : public Pictures {
 protected:
  // Does something with each window as it opens, on the screen and with the keyboard, none of
  // whose routines has run.
  template <class Routine>
  void inEachWindow(Routine routine) {
    goThrough(routine, {{"Stability", 2040}, {"MonOut", 3775}}, [](Form&) {});
  }

  // The same, with all that a window shows later: each control enabled, the chart of the Ping
  // Test, windows of fixed places at their full height.
  template <class Routine>
  void inEachFullWindow(Routine routine) {
    goThrough(routine, {{"Stability", 7550}, {"MonOut", 6700}}, showInFull);
  }

  // A name for what a test found in the window: "trace Command1".
  std::string placeOf(const QObject& found) const {
    return form->name() + " " + fromQt(found.objectName());
  }

  // Whether something belongs to the user's window and not to its stores or its toolkit.
  bool isSeen(const QWidget& child) const {
    return child.isVisible() && !child.visibleRegion().isEmpty() &&
           !child.objectName().startsWith(QLatin1String("qt_"));
  }

  Form* form = nullptr;  // whose window it is

 private:
  using Heights = std::map<std::string, int>;  // of windows with fixed places, in twips

  template <class Routine, class Preparation>
  void goThrough(Routine routine, const Heights& heights, Preparation prepare) {
    for (const auto& made : allForms(program)) {
      SCOPED_TRACE(made->name());
      form = made.get();
      prepare(*made);
      desktop.show(*made);
      window = desktop.windowOf(*made);
      EXPECT_TRUE(QTest::qWaitForWindowActive(window));
      if (const auto found = heights.find(made->name()); found != heights.end()) {
        made->height = found->second;
      }
      atRest([] {});
      routine(*made);
      desktop.remove(*made);
    }
  }

  static void showInFull(Form& made) {
    for (Control* control : made.controls()) control->enabled = true;
    if (auto* pings = dynamic_cast<pingtester*>(&made)) {
      pings->PingChart.visible = true;
      pings->Text1.visible = true;
      pings->Text2.visible = true;
    }
    if (auto* hops = dynamic_cast<Stability*>(&made)) hops->Command1.visible = true;
  }
};

}  // namespace veltrin
