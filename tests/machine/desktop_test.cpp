// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/desktop.h"

#include <gtest/gtest.h>
#include <map>
#include <utility>

#include "fake_machine.h"
#include "temporary_tree.h"

namespace veltrin {
namespace {

class DesktopTest : public ::testing::Test {
 protected:
  DesktopTest() { machine_.variables["HOME"] = "/home/anna"; }

  void set(const std::string& schema, const std::string& key, const std::string& value) {
    settings_[{schema, key}] = value;
  }

  DesktopFacts facts(const std::string& desktop) {
    machine_.variables["XDG_CURRENT_DESKTOP"] = desktop;
    return desktopFacts(
        tree_.files(), machine_, [this](const std::string& schema, const std::string& key) {
          const auto found = settings_.find({schema, key});
          return found == settings_.end() ? std::nullopt : std::optional(found->second);
        });
  }

  static void expectNothing(const DesktopFacts& facts) {
    EXPECT_EQ(facts.cursorBlink, std::nullopt);
    EXPECT_EQ(facts.dragFullWindows, std::nullopt);
    EXPECT_EQ(facts.iconTitle, std::nullopt);
    EXPECT_EQ(facts.saverActive, std::nullopt);
    EXPECT_EQ(facts.saverTime, std::nullopt);
    EXPECT_EQ(facts.saverSecure, std::nullopt);
    EXPECT_EQ(facts.wallpaper, "");
    EXPECT_EQ(facts.stretched, std::nullopt);
    EXPECT_EQ(facts.tiled, std::nullopt);
  }

  TemporaryTree tree_;
  FakeMachine machine_;
  std::map<std::pair<std::string, std::string>, std::string> settings_;
};

TEST_F(DesktopTest, TellsNothingWithoutADesktopOrOfAnUnknownOne) {
  set("org.gnome.desktop.session", "idle-delay", "300");
  for (const char* desktop : {"", ":", "i3", "sway:wlroots", "GNOMELIKE"}) {
    SCOPED_TRACE(desktop);
    expectNothing(facts(desktop));
  }
}

TEST_F(DesktopTest, TellsNothingWhereNoSettingIsMade) {
  for (const char* desktop : {"GNOME", "X-Cinnamon", "MATE", "KDE", "XFCE"}) {
    SCOPED_TRACE(desktop);
    expectNothing(facts(desktop));
  }
}

TEST_F(DesktopTest, TellsNothingOfGnomeWhereNobodyTellsItsSettings) {
  machine_.variables["XDG_CURRENT_DESKTOP"] = "GNOME";
  expectNothing(desktopFacts(tree_.files(), machine_, nullptr));
}

class GnomeTest : public DesktopTest {
 protected:
  GnomeTest() {
    set("org.gnome.desktop.interface", "cursor-blink", "true");
    set("org.gnome.desktop.interface", "cursor-blink-time", "1200");
    set("org.gnome.desktop.interface", "color-scheme", "default");
    set("org.gnome.desktop.session", "idle-delay", "300");
    set("org.gnome.desktop.screensaver", "idle-activation-enabled", "true");
    set("org.gnome.desktop.screensaver", "lock-enabled", "false");
    set("org.gnome.desktop.background", "picture-uri", "file:///usr/share/a%20b%C3%A9.jpg");
    set("org.gnome.desktop.background", "picture-uri-dark", "file:///usr/share/night.jpg");
    set("org.gnome.desktop.background", "picture-options", "zoom");
  }
};

TEST_F(GnomeTest, TellsItsSettings) {
  const DesktopFacts told = facts("ubuntu:GNOME");
  EXPECT_EQ(told.cursorBlink, 600U);
  EXPECT_EQ(told.dragFullWindows, std::nullopt);
  EXPECT_EQ(told.iconTitle, std::nullopt);
  EXPECT_EQ(told.saverActive, true);
  EXPECT_EQ(told.saverTime, 300U);
  EXPECT_EQ(told.saverSecure, false);
  EXPECT_EQ(told.wallpaper, "/usr/share/a b\xC3\xA9.jpg");
  EXPECT_EQ(told.stretched, false);
  EXPECT_EQ(told.tiled, false);
}

TEST_F(GnomeTest, ItsKinKeepTheirSettingsWhereItDoes) {
  for (const char* desktop :
       {"GNOME", "GNOME-Classic:GNOME", "Unity:Unity7:ubuntu", "Budgie", "Pantheon", "gnome"}) {
    EXPECT_EQ(facts(desktop).saverTime, 300U) << desktop;
  }
}

TEST_F(GnomeTest, ACursorThatDoesNotBlinkHasNoRate) {
  set("org.gnome.desktop.interface", "cursor-blink", "false");
  EXPECT_EQ(facts("GNOME").cursorBlink, std::nullopt);
}

TEST_F(GnomeTest, ADelayOfNothingIsNever) {
  set("org.gnome.desktop.session", "idle-delay", "0");
  EXPECT_EQ(facts("GNOME").saverActive, false);
  EXPECT_EQ(facts("GNOME").saverTime, 0U);
}

TEST_F(GnomeTest, ASaverThatIsSwitchedOffIsNotActive) {
  set("org.gnome.desktop.screensaver", "idle-activation-enabled", "false");
  EXPECT_EQ(facts("GNOME").saverActive, false);
}

TEST_F(GnomeTest, ADarkDesktopHasAPictureOfItsOwn) {
  set("org.gnome.desktop.interface", "color-scheme", "prefer-dark");
  EXPECT_EQ(facts("GNOME").wallpaper, "/usr/share/night.jpg");
  set("org.gnome.desktop.background", "picture-uri-dark", "");
  EXPECT_EQ(facts("GNOME").wallpaper, "/usr/share/a b\xC3\xA9.jpg");
}

TEST_F(GnomeTest, TellsHowThePictureLies) {
  set("org.gnome.desktop.background", "picture-options", "stretched");
  EXPECT_EQ(facts("GNOME").stretched, true);
  EXPECT_EQ(facts("GNOME").tiled, false);
  set("org.gnome.desktop.background", "picture-options", "wallpaper");
  EXPECT_EQ(facts("GNOME").stretched, false);
  EXPECT_EQ(facts("GNOME").tiled, true);
}

TEST_F(GnomeTest, WithoutAPictureNothingIsStretched) {
  set("org.gnome.desktop.background", "picture-options", "none");
  EXPECT_EQ(facts("GNOME").wallpaper, "");
  EXPECT_EQ(facts("GNOME").stretched, std::nullopt);
}

TEST_F(GnomeTest, DecodesNoEscapeThatIsNone) {
  set("org.gnome.desktop.background", "picture-uri", "file:///a%zz%2");
  EXPECT_EQ(facts("GNOME").wallpaper, "/a%zz%2");
  set("org.gnome.desktop.background", "picture-uri", "/plain%20path");
  EXPECT_EQ(facts("GNOME").wallpaper, "/plain%20path");
}

TEST_F(DesktopTest, CinnamonHasSettingsOfItsOwn) {
  set("org.cinnamon.desktop.interface", "cursor-blink", "true");
  set("org.cinnamon.desktop.interface", "cursor-blink-time", "1000");
  set("org.cinnamon.desktop.session", "idle-delay", "900");
  set("org.cinnamon.desktop.screensaver", "lock-enabled", "true");
  set("org.cinnamon.desktop.background", "picture-uri", "file:///a.png");
  set("org.nemo.desktop", "font", "Noto Sans 10.5");
  const DesktopFacts told = facts("X-Cinnamon");
  EXPECT_EQ(told.cursorBlink, 500U);
  EXPECT_EQ(told.saverActive, true);
  EXPECT_EQ(told.saverTime, 900U);
  EXPECT_EQ(told.saverSecure, true);
  EXPECT_EQ(told.wallpaper, "/a.png");
  EXPECT_EQ(told.stretched, std::nullopt);
  EXPECT_EQ(told.iconTitle, 10U);
}

TEST_F(DesktopTest, MateCountsItsDelayInMinutesAndNamesItsPictureByItsPath) {
  set("org.mate.interface", "cursor-blink", "true");
  set("org.mate.interface", "cursor-blink-time", "1300");
  set("org.mate.session", "idle-delay", "5");
  set("org.mate.screensaver", "lock-enabled", "true");
  set("org.mate.background", "picture-filename", "/b.png");
  set("org.mate.background", "picture-options", "stretched");
  set("org.mate.caja.desktop", "font", "Sans 9");
  const DesktopFacts told = facts("MATE");
  EXPECT_EQ(told.cursorBlink, 650U);
  EXPECT_EQ(told.saverTime, 300U);
  EXPECT_EQ(told.saverSecure, true);
  EXPECT_EQ(told.wallpaper, "/b.png");
  EXPECT_EQ(told.stretched, true);
  EXPECT_EQ(told.iconTitle, 9U);
}

class PlasmaTest : public DesktopTest {
 protected:
  PlasmaTest() {
    tree_.put("/home/anna/.config/kdeglobals", "[KDE]\nCursorBlinkRate=1000\n");
    tree_.put("/home/anna/.config/kscreenlockerrc", "[Daemon]\nAutolock=true\nTimeout=10\n");
    tree_.put(kPlasma,
              "[Containments][1]\nlastScreen=0\nplugin=org.kde.panel\n"
              "wallpaperplugin=org.kde.image\n\n"
              "[Containments][1][Applets][2]\nImage=file:///no.png\n\n"
              "[Containments][25]\nlastScreen=0\nwallpaperplugin=org.kde.image\n\n"
              "[Containments][25][Wallpaper][org.kde.color][General]\nImage=file:///no.png\n\n"
              "[Containments][25][Wallpaper][org.kde.image][General]\n"
              "FillMode=0\nImage=file:///home/anna/my%20sea.jpg\n\n"
              "[Other][25][Wallpaper][org.kde.image][General]\nImage=file:///no.png\n");
  }

  // One desktop, whose picture is "/a.png".
  void putDesktop(const std::string& settings, const std::string& picture) {
    tree_.put(kPlasma, "[Containments][3]\n" + settings +
                           "\n[Containments][3][Wallpaper][org.kde.image][General]\n"
                           "Image=/a.png\n" +
                           picture + "\n");
  }

  const std::string kPlasma = "/home/anna/.config/plasma-org.kde.plasma.desktop-appletsrc";
};

TEST_F(PlasmaTest, TellsItsSettings) {
  const DesktopFacts told = facts("KDE");
  EXPECT_EQ(told.cursorBlink, 500U);
  EXPECT_EQ(told.saverActive, true);
  EXPECT_EQ(told.saverSecure, true);
  EXPECT_EQ(told.saverTime, 600U);
  EXPECT_EQ(told.wallpaper, "/home/anna/my sea.jpg");
  EXPECT_EQ(told.stretched, true);
  EXPECT_EQ(told.tiled, false);
}

TEST_F(PlasmaTest, TellsHowThePictureLies) {
  const std::map<std::string, std::pair<std::optional<bool>, std::optional<bool>>> modes{
      {"", {std::nullopt, std::nullopt}},
      {"FillMode=2", {false, false}},
      {"FillMode=3", {false, true}},
      {"FillMode=5", {false, true}},
      {"FillMode=6", {false, false}}};
  for (const auto& [mode, lies] : modes) {
    putDesktop("wallpaperplugin=org.kde.image", mode);
    const DesktopFacts told = facts("KDE");
    EXPECT_EQ(told.wallpaper, "/a.png") << mode;
    EXPECT_EQ(told.stretched, lies.first) << mode;
    EXPECT_EQ(told.tiled, lies.second) << mode;
  }
}

TEST_F(PlasmaTest, APictureThatIsNotShownIsNoWallpaper) {
  putDesktop("wallpaperplugin=org.kde.color", "");
  EXPECT_EQ(facts("KDE").wallpaper, "");
  putDesktop("wallpaperplugin=org.kde.image\nlastScreen=1", "");
  EXPECT_EQ(facts("KDE").wallpaper, "");
  putDesktop("wallpaperplugin=org.kde.image\nlastScreen=0", "");
  EXPECT_EQ(facts("KDE").wallpaper, "/a.png");
}

TEST_F(PlasmaTest, TheUsersSettingComesBeforeTheSystems) {
  tree_.put("/etc/xdg/kscreenlockerrc", "[Daemon]\nTimeout=1\n");
  tree_.put("/etc/xdg/kdeglobals", "[KDE]\nCursorBlinkRate=600\n");
  tree_.put("/home/anna/.config/kdeglobals", "");
  EXPECT_EQ(facts("KDE").saverTime, 600U);
  EXPECT_EQ(facts("KDE").cursorBlink, 300U);
}

TEST_F(PlasmaTest, SettingsLieWhereTheEnvironmentSays) {
  tree_.put("/mine/kscreenlockerrc", "[Daemon]\nTimeout=2\n");
  tree_.put("/two/kdeglobals", "[KDE]\nCursorBlinkRate=400\n");
  machine_.variables["XDG_CONFIG_HOME"] = "/mine";
  machine_.variables["XDG_CONFIG_DIRS"] = "/one:/two";
  EXPECT_EQ(facts("KDE").saverTime, 120U);
  EXPECT_EQ(facts("KDE").cursorBlink, 200U);
}

TEST_F(PlasmaTest, WithoutAHomeOnlyTheSystemsSettingsCount) {
  tree_.put("/.config/kscreenlockerrc", "[Daemon]\nTimeout=2\n");
  machine_.variables.erase("HOME");
  expectNothing(facts("KDE"));
}

TEST_F(PlasmaTest, AnAbsurdTimeIsNone) {
  for (const char* time : {"99999999999999999999999", "4294967296", "-1", "soon"}) {
    tree_.put("/home/anna/.config/kscreenlockerrc", "[Daemon]\nTimeout=" + std::string(time));
    EXPECT_EQ(facts("KDE").saverTime, std::nullopt) << time;
  }
}

class XfceTest : public DesktopTest {
 protected:
  void putChannel(const std::string& name, const std::string& properties,
                  const std::string& folder = "/home/anna/.config") {
    tree_.put(folder + "/xfce4/xfconf/xfce-perchannel-xml/" + name + ".xml",
              "<channel name=\"" + name + "\" version=\"1.0\">" + properties + "</channel>");
  }

  static std::string property(const std::string& name, const std::string& value) {
    return "<property name=\"" + name + "\" type=\"string\" value=\"" + value + "\"/>";
  }

  static std::string folder(const std::string& name, const std::string& properties) {
    return "<property name=\"" + name + "\" type=\"empty\">" + properties + "</property>";
  }

  static std::string monitor(const std::string& name, const std::string& image,
                             const std::string& style) {
    return folder(
        name, folder("workspace0", property("image-style", style) + property("last-image", image)));
  }

  void putWallpapers(const std::string& monitors) {
    putChannel("xfce4-desktop", folder("backdrop", folder("screen0", monitors)));
  }
};

TEST_F(XfceTest, TellsItsSettings) {
  putChannel("xsettings",
             folder("Net", property("CursorBlink", "true") + property("CursorBlinkTime", "1200")));
  putChannel("xfwm4", folder("general", property("box_move", "false")));
  putChannel("xfce4-desktop", folder("desktop-icons", property("use-custom-font-size", "true") +
                                                          property("font-size", "11.000000")));
  putChannel("xfce4-screensaver",
             folder("saver", property("enabled", "true") +
                                 folder("idle-activation", property("delay", "7"))) +
                 folder("lock", property("enabled", "false")));
  const DesktopFacts told = facts("XFCE");
  EXPECT_EQ(told.cursorBlink, 600U);
  EXPECT_EQ(told.dragFullWindows, true);
  EXPECT_EQ(told.iconTitle, 11U);
  EXPECT_EQ(told.saverActive, true);
  EXPECT_EQ(told.saverTime, 420U);
  EXPECT_EQ(told.saverSecure, false);
  EXPECT_EQ(told.wallpaper, "");
}

TEST_F(XfceTest, WhatIsSwitchedOffHasNoRateNorSize) {
  putChannel("xsettings",
             folder("Net", property("CursorBlink", "false") + property("CursorBlinkTime", "9")));
  putChannel("xfce4-desktop", folder("desktop-icons", property("font-size", "11")));
  expectNothing(facts("XFCE"));
}

TEST_F(XfceTest, ASaverThatIsNotStartedByTimeIsNotActive) {
  putChannel("xfce4-screensaver",
             folder("saver", property("enabled", "true") +
                                 folder("idle-activation", property("enabled", "false"))));
  EXPECT_EQ(facts("XFCE").saverActive, false);
}

TEST_F(XfceTest, TellsThePictureAndHowItLies) {
  putWallpapers(monitor("monitor0", "/a.png", "3"));
  EXPECT_EQ(facts("XFCE").wallpaper, "/a.png");
  EXPECT_EQ(facts("XFCE").stretched, true);
  EXPECT_EQ(facts("XFCE").tiled, false);
  putWallpapers(monitor("monitor0", "/a.png", "2"));
  EXPECT_EQ(facts("XFCE").stretched, false);
  EXPECT_EQ(facts("XFCE").tiled, true);
  putWallpapers(monitor("monitor0", "/a.png", "0"));
  EXPECT_EQ(facts("XFCE").wallpaper, "");
}

TEST_F(XfceTest, ThePictureIsThatOfAMonitorThatIsThere) {
  putWallpapers(monitor("monitor0", "/old.png", "3") + monitor("monitorHDMI-A-1", "/new.png", "5"));
  EXPECT_EQ(facts("XFCE").wallpaper, "/old.png");
  tree_.put("/sys/class/drm/card0-HDMI-A-1/status", "connected\n");
  tree_.makeFolder("/sys/class/drm/card0");
  EXPECT_EQ(facts("XFCE").wallpaper, "/new.png");
  EXPECT_EQ(facts("XFCE").stretched, false);
}

TEST_F(XfceTest, TheUsersSettingComesBeforeTheSystems) {
  putChannel("xfwm4", folder("general", property("box_move", "true")));
  putChannel("xfwm4", folder("general", property("box_move", "false")), "/etc/xdg");
  putChannel("xsettings", folder("Net", property("CursorBlinkTime", "800")), "/etc/xdg");
  EXPECT_EQ(facts("XFCE").dragFullWindows, false);
  EXPECT_EQ(facts("XFCE").cursorBlink, 400U);
}

}  // namespace
}  // namespace veltrin
