// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulated/menu_run.h"

namespace veltrin {
namespace {

class AboutWindow : public MenuRun {
 protected:
  About& openAbout() {
    about = simulation.program().show<About>();
    return *about;
  }

  std::shared_ptr<About> about;
};

TEST_F(AboutWindow, TellsWhatTheProgramIs) {
  openAbout();
  EXPECT_EQ(about->caption.get(), "About");
  EXPECT_EQ(about->Label9.caption.get(), "Veltrin");
  EXPECT_EQ(about->Label3.caption.get(), "Designed to help you troubleshoot Internet issues.");
  EXPECT_EQ(about->Label2.caption.get(), "Version: 1.03  5 Jan 2012");
  EXPECT_EQ(about->Label1.caption.get(), "System Info");
  EXPECT_EQ(about->Label4.caption.get(), "");
}

TEST_F(AboutWindow, ClosesByAClickOnItself) {
  openAbout().press();
  EXPECT_FALSE(about->isLoaded());
}

TEST_F(AboutWindow, ClosesByAClickOnThreeOfItsTexts) {
  for (Label About::*label : {&About::Label2, &About::Label3, &About::Label9}) {
    open();
    openAbout();
    simulation.desktop.click((*about).*label);
    EXPECT_FALSE(about->isLoaded());
  }
}

TEST_F(AboutWindow, StaysOpenAtAClickOnItsEmptyText) {
  openAbout();
  simulation.desktop.click(about->Label4);
  EXPECT_TRUE(about->isLoaded());
}

TEST_F(AboutWindow, OpensTheReportModallyAboveItself) {
  simulation.program().provide<Tool<30>>(WindowName::frmSysInfo);
  openAbout();
  bool above = false;
  simulation.loop.after(100,
                        [&] { above = !simulation.desktop.takesInput(*about) && isOpen<30>(); });
  closeFrontAfter(200);
  simulation.desktop.click(about->Label1);
  EXPECT_TRUE(above);
  EXPECT_TRUE(about->isLoaded());
}

TEST_F(AboutWindow, ItsWayToTheReportIsDisabledWithoutOne) {
  openAbout();
  EXPECT_EQ(about->Label1.enabled.get(), simulation.program().tools.has(WindowName::frmSysInfo));
}

}  // namespace
}  // namespace veltrin
