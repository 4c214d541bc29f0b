// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "wmi_answers.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;

TEST(WmiStartupCommands, AreTheDesktopsProgramsAndThenTheUnits) {
  const TemporaryTree tree;
  FakeMachine machine;
  machine.variables["HOME"] = "/home/anna";
  tree.put("/etc/xdg/autostart/clip.desktop",
           "[Desktop Entry]\nName=Clipboard\nComment=Keeps copies\nExec=clip --daemon\n");
  tree.put("/home/anna/.config/autostart/notes.desktop",
           "[Desktop Entry]\nName=Notes\nExec=notes\n");
  tree.put("/usr/lib/systemd/system/cups.service", "[Unit]\nDescription=CUPS Scheduler\n");
  tree.put("/usr/lib/systemd/system/plain.service", "[Unit]\n");
  const std::string wants = "/etc/systemd/system/multi-user.target.wants/";
  tree.link(wants + "cups.service", "/usr/lib/systemd/system/cups.service");
  tree.link(wants + "plain.service", "/usr/lib/systemd/system/plain.service");
  EXPECT_THAT(
      wmiTexts(tree.files(), machine, "Win32_StartupCommand"),
      ElementsAre("Caption=Notes;Command=notes;Description=null;"
                  "Location=/home/anna/.config/autostart;Name=notes.desktop;",
                  "Caption=Clipboard;Command=clip --daemon;Description=Keeps copies;"
                  "Location=/etc/xdg/autostart;Name=clip.desktop;",
                  "Caption=cups.service;Command=null;Description=CUPS Scheduler;"
                  "Location=/etc/systemd/system/multi-user.target.wants;Name=cups.service;",
                  "Caption=plain.service;Command=null;Description=null;"
                  "Location=/etc/systemd/system/multi-user.target.wants;Name=plain.service;"));
}

TEST(WmiStartupCommands, AreNoneOfAnEmptyMachine) {
  EXPECT_THAT(wmiTexts(TemporaryTree().files(), {}, "Win32_StartupCommand"), ElementsAre());
}

}  // namespace
}  // namespace veltrin
