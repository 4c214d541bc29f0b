// SPDX-License-Identifier: GPL-3.0-or-later
// Photographs of the splash, the main menu and the About window.
#include "frame/About.h"
#include "frame/starter.h"
#include "frame/startup.h"
#include "pictures.h"

namespace veltrin {
namespace {

class StartPictures : public Pictures {
 protected:
  void provideTools() {
    for (const WindowName name :
         {WindowName::pingtester, WindowName::trace, WindowName::indepth, WindowName::Stability,
          WindowName::MonOut, WindowName::mtutest, WindowName::frmNetwork, WindowName::frmIP,
          WindowName::testdl, WindowName::frmSysInfo}) {
      program.tools.enter(name, {});
    }
  }

  std::shared_ptr<startup> menu() {
    program.start.LocalIp = "192.168.178.24";
    profiles.write("Settings", "Rated Speed", "50,000", program.settingsFile);
    return shown<startup>();
  }
};

TEST_F(StartPictures, Splash) {
  const auto form = look<starter>();
  form->Label1.caption = "Veltrin";
  form->Label2.caption = "Your Version 1.03  -  Dated 5 Jan 2012";
  form->playit.open(program.programFolder + "\\files\\update.avi");
  photograph("starter");
}

TEST_F(StartPictures, SplashWithTheNewestVersion) {
  const auto form = look<starter>();
  form->Label1.caption = "Current Version: 1.05";
  form->Label2.caption = "Your Version 1.03  -  Dated 5 Jan 2012";
  form->playit.open(program.programFolder + "\\files\\update.avi");
  photograph("starter-newest");
}

TEST_F(StartPictures, Menu) {
  provideTools();
  menu();
  photograph("startup-idle");
}

TEST_F(StartPictures, MenuBehindARouter) {
  provideTools();
  program.start.PublicIp = "203.0.113.201";
  menu();
  photograph("startup-router");
}

TEST_F(StartPictures, MenuWithTheLongestAddresses) {
  provideTools();
  program.start.PublicIp = "2001:db8:85a3:8d3:1319:8a2e:370:7348";
  menu();
  photograph("startup-long");
}

TEST_F(StartPictures, MenuWithoutTools) {
  menu();
  photograph("startup-none");
}

TEST_F(StartPictures, MenuWithItsKeyboardOnAPicture) {
  provideTools();
  menu();
  widget("Image3")->setFocus();
  photograph("startup-keyboard");
}

TEST_F(StartPictures, MenuUnderThePointer) {
  provideTools();
  menu();
  for (const char* name : {"Command9", "Command5", "Image2"}) {
    widget(name)->setAttribute(Qt::WA_UnderMouse);
  }
  photograph("startup-hover");
}

TEST_F(StartPictures, AboutWindow) {
  provideTools();
  shown<About>();
  photograph("about");
}

TEST_F(StartPictures, AboutWindowWithoutAReport) {
  shown<About>();
  photograph("about-today");
}

}  // namespace
}  // namespace veltrin
