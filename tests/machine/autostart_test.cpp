// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/autostart.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_machine.h"
#include "temporary_tree.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Autostart : public ::testing::Test {
 protected:
  Autostart() { machine_.variables["HOME"] = "/home/anna"; }

  void putOfSystem(const std::string& file, const std::string& lines) {
    tree_.put("/etc/xdg/autostart/" + file, "[Desktop Entry]\nType=Application\n" + lines);
  }
  void putOfUser(const std::string& file, const std::string& lines) {
    tree_.put("/home/anna/.config/autostart/" + file, "[Desktop Entry]\n" + lines);
  }

  // "FOLDER/FILE|CAPTION|COMMENT|COMMAND" of each.
  std::vector<std::string> texts() const {
    std::vector<std::string> texts;
    for (const AutostartFacts& each : autostartPrograms(tree_.files(), machine_)) {
      texts.push_back(each.folder + "/" + each.file + "|" + each.caption + "|" + each.comment +
                      "|" + each.command);
    }
    return texts;
  }
  std::vector<std::string> captions() const {
    std::vector<std::string> captions;
    for (const AutostartFacts& each : autostartPrograms(tree_.files(), machine_)) {
      captions.push_back(each.caption);
    }
    return captions;
  }

  TemporaryTree tree_;
  FakeMachine machine_;
};

TEST_F(Autostart, HoldsTheUsersProgramsAndThenTheSystems) {
  putOfSystem("b.desktop", "Name=Beep\nName[de]=Piep\nComment=Beeps once\nExec=beep --now %u\n");
  putOfSystem("a.desktop", "Exec=/usr/bin/a\n");
  putOfUser("z.desktop", "Name=Notes\nExec=notes\n");
  EXPECT_THAT(texts(), ElementsAre("/home/anna/.config/autostart/z.desktop|Notes||notes",
                                   "/etc/xdg/autostart/a.desktop|a.desktop||/usr/bin/a",
                                   "/etc/xdg/autostart/b.desktop|Beep|Beeps once|beep --now %u"));
}

TEST_F(Autostart, LeavesOutWhatTheUserHasHiddenOrReplaced) {
  putOfSystem("hidden.desktop", "Name=Hidden\nExec=a\n");
  putOfUser("hidden.desktop", "Hidden=true\n");
  putOfSystem("changed.desktop", "Name=The system's\nExec=a\n");
  putOfUser("changed.desktop", "Name=My own\nExec=b\n");
  EXPECT_THAT(captions(), ElementsAre("My own"));
}

TEST_F(Autostart, LeavesOutWhatIsSwitchedOff) {
  putOfSystem("a.desktop", "Name=Off\nExec=a\nX-GNOME-Autostart-enabled=false\n");
  putOfSystem("b.desktop", "Name=On\nExec=a\nX-GNOME-Autostart-enabled=true\nHidden=false\n");
  EXPECT_THAT(captions(), ElementsAre("On"));
}

TEST_F(Autostart, LeavesOutWhatIsForOtherDesktops) {
  machine_.variables["XDG_CURRENT_DESKTOP"] = "ubuntu:GNOME";
  putOfSystem("a.desktop", "Name=Only here\nExec=a\nOnlyShowIn=KDE;GNOME;\n");
  putOfSystem("b.desktop", "Name=Only there\nExec=a\nOnlyShowIn=KDE;GNOME-Flashback;\n");
  putOfSystem("c.desktop", "Name=Not here\nExec=a\nNotShowIn=XFCE;ubuntu\n");
  putOfSystem("d.desktop", "Name=Not there\nExec=a\nNotShowIn=KDE;\n");
  EXPECT_THAT(captions(), ElementsAre("Only here", "Not there"));
}

TEST_F(Autostart, OfAnUnknownDesktopIsWhatAllDesktopsStart) {
  putOfSystem("a.desktop", "Name=Only there\nExec=a\nOnlyShowIn=KDE;\n");
  putOfSystem("b.desktop", "Name=Anywhere\nExec=a\nNotShowIn=KDE;\n");
  EXPECT_THAT(captions(), ElementsAre("Anywhere"));
}

TEST_F(Autostart, LeavesOutAProgramThatIsNotInstalled) {
  machine_.variables["PATH"] = "/usr/local/bin:/usr/bin";
  tree_.put("/usr/bin/there", "");
  tree_.put("/opt/there", "");
  putOfSystem("a.desktop", "Name=In the path\nExec=a\nTryExec=there\n");
  putOfSystem("b.desktop", "Name=Nowhere\nExec=a\nTryExec=missing\n");
  putOfSystem("c.desktop", "Name=At its place\nExec=a\nTryExec=/opt/there\n");
  putOfSystem("d.desktop", "Name=Not at its place\nExec=a\nTryExec=/opt/missing\n");
  EXPECT_THAT(captions(), ElementsAre("In the path", "At its place"));
}

TEST_F(Autostart, LeavesOutWhatStartsNothing) {
  putOfSystem("a.desktop", "Name=No command\n");
  putOfSystem("b.txt", "Name=No entry\nExec=a\n");
  tree_.put("/etc/xdg/autostart/c.desktop", "");
  tree_.put("/etc/xdg/autostart/d.desktop", "[Desktop Action x]\nName=Elsewhere\nExec=a\n");
  EXPECT_THAT(texts(), IsEmpty());
}

TEST_F(Autostart, IsReadFromTheFoldersOfTheEnvironment) {
  machine_.variables["XDG_CONFIG_HOME"] = "/settings";
  machine_.variables["XDG_CONFIG_DIRS"] = "relative:/one:/two";
  tree_.put("/settings/autostart/u.desktop", "[Desktop Entry]\nName=User\nExec=a\n");
  tree_.put("/one/autostart/s.desktop", "[Desktop Entry]\nName=One\nExec=a\n");
  tree_.put("/two/autostart/s.desktop", "[Desktop Entry]\nName=Two\nExec=a\n");
  putOfSystem("x.desktop", "Name=Not asked for\nExec=a\n");
  putOfUser("y.desktop", "Name=Not asked for\nExec=a\n");
  EXPECT_THAT(captions(), ElementsAre("User", "One"));
}

TEST_F(Autostart, TakesARelativeFolderForNone) {
  machine_.variables["XDG_CONFIG_HOME"] = "settings";
  machine_.variables["XDG_CONFIG_DIRS"] = "relative";
  putOfUser("u.desktop", "Name=User\nExec=a\n");
  putOfSystem("s.desktop", "Name=System\nExec=a\n");
  EXPECT_THAT(captions(), ElementsAre("User", "System"));
}

TEST_F(Autostart, FollowsALinkToAnotherEntry) {
  tree_.put("/usr/share/applications/chat.desktop", "[Desktop Entry]\nName=Chat\nExec=chat\n");
  tree_.link("/home/anna/.config/autostart/chat.desktop", "/usr/share/applications/chat.desktop");
  EXPECT_THAT(texts(), ElementsAre("/home/anna/.config/autostart/chat.desktop|Chat||chat"));
}

TEST_F(Autostart, UndoesEscapesAndLineEndsOfWindows) {
  putOfUser("a.desktop", "Name=One\\sTwo\\\\Three\r\nComment=A\\nB\\\r\nExec=a\xFF\r\n");
  EXPECT_THAT(texts(),
              ElementsAre("/home/anna/.config/autostart/a.desktop|One Two\\Three|A B\\|a?"));
}

TEST_F(Autostart, IsEmptyWithoutFolders) { EXPECT_THAT(texts(), IsEmpty()); }

}  // namespace
}  // namespace veltrin
