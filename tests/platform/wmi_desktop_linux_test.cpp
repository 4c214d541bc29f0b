// SPDX-License-Identifier: GPL-3.0-or-later
// The desktop of the user of a machine that is made up.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/wmi_classes.h"
#include "tests/machine/fake_machine.h"
#include "tests/machine/temporary_tree.h"

namespace veltrin {
namespace {

class WmiDesktopTest : public ::testing::Test {
 protected:
  WmiDesktopTest() {
    machine_->kernelFacts.host = "desk.example.org";
    machine_->variables = {{"USER", "anna"}, {"HOME", "/home/anna"}};
  }

  WmiObject desktop() const {
    const WmiAnswer answer = win32Desktop(sources_);
    EXPECT_EQ(answer.size(), 1U);
    return answer.at(0);
  }

  TemporaryTree tree_;
  std::shared_ptr<FakeMachine> machine_ = std::make_shared<FakeMachine>();
  WmiSources sources_{tree_.files(), machine_, nullptr};
};

TEST_F(WmiDesktopTest, IsNamedByTheHostAndTheUser) {
  EXPECT_EQ(desktop().value("Name").text(), "DESK\\anna");
  machine_->variables = {{"LOGNAME", "bert"}};
  EXPECT_EQ(desktop().value("Name").text(), "DESK\\bert");
}

TEST_F(WmiDesktopTest, HasNoNameWhereNobodyLoggedIn) {
  machine_->variables.clear();
  EXPECT_TRUE(desktop().value("Name").isNull());
}

TEST_F(WmiDesktopTest, HasEveryPropertyThoughNothingIsTold) {
  const WmiObject object = desktop();
  for (const char* name :
       {"Description", "BorderWidth", "CoolSwitch", "CursorBlinkRate", "DragFullWindows",
        "GridGranularity", "IconSpacing", "IconTitleSize", "IconTitleWrap", "Pattern",
        "ScreenSaverActive", "ScreenSaverExecutable", "ScreenSaverSecure", "ScreenSaverTimeout",
        "Wallpaper", "WallpaperStretched", "WallpaperTiled"}) {
    EXPECT_TRUE(object.value(name).isNull()) << name;
  }
}

TEST_F(WmiDesktopTest, TellsTheSettingsOfTheDesktop) {
  machine_->variables["XDG_CURRENT_DESKTOP"] = "KDE";
  tree_.put("/home/anna/.config/kdeglobals", "[KDE]\nCursorBlinkRate=1000\n");
  tree_.put("/home/anna/.config/kscreenlockerrc", "[Daemon]\nAutolock=false\nTimeout=10\n");
  tree_.put("/home/anna/.config/plasma-org.kde.plasma.desktop-appletsrc",
            "[Containments][25]\nwallpaperplugin=org.kde.image\n"
            "[Containments][25][Wallpaper][org.kde.image][General]\n"
            "FillMode=3\nImage=/home/anna/\xFFsea.jpg\n");
  const WmiObject object = desktop();
  EXPECT_EQ(object.value("CursorBlinkRate").number(), 500);
  EXPECT_EQ(object.value("ScreenSaverActive").text(), "False");
  EXPECT_EQ(object.value("ScreenSaverSecure").text(), "False");
  EXPECT_EQ(object.value("ScreenSaverTimeout").number(), 600);
  EXPECT_EQ(object.value("wallpaper").text(), "/home/anna/?sea.jpg");
  EXPECT_EQ(object.value("WallpaperStretched").text(), "False");
  EXPECT_EQ(object.value("WallpaperTiled").text(), "True");
}

TEST_F(WmiDesktopTest, TellsSizesAndFramesWhereADesktopDoes) {
  machine_->variables["XDG_CURRENT_DESKTOP"] = "XFCE";
  const std::string folder = "/home/anna/.config/xfce4/xfconf/xfce-perchannel-xml/";
  tree_.put(folder + "xfwm4.xml",
            R"(<property name="general"><property name="box_move" value="true"/></property>)");
  tree_.put(folder + "xfce4-desktop.xml",
            R"(<property name="desktop-icons"><property name="font-size" value="12"/>
               <property name="use-custom-font-size" value="true"/></property>)");
  EXPECT_EQ(desktop().value("DragFullWindows").text(), "False");
  EXPECT_EQ(desktop().value("IconTitleSize").number(), 12);
}

TEST_F(WmiDesktopTest, AsksForTheSettingsOfGnome) {
  machine_->variables["XDG_CURRENT_DESKTOP"] = "GNOME";
  sources_.setting = [](const std::string& schema, const std::string& key) {
    return schema == "org.gnome.desktop.screensaver" && key == "lock-enabled"
               ? std::optional<std::string>("true")
               : std::nullopt;
  };
  EXPECT_EQ(desktop().value("ScreenSaverSecure").text(), "True");
}

}  // namespace
}  // namespace veltrin
