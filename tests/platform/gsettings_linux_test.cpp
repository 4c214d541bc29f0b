// SPDX-License-Identifier: GPL-3.0-or-later
// Settings by the system's own GSettings, from a folder of the test's own.
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>

#include "platform/linux/gsettings.h"
#include "tests/platform/scratch_folder.h"
#include "wmi_answers.h"

namespace veltrin {
namespace {

constexpr const char* kSchema = "org.gnome.desktop.session";

// The place of settings is chosen with the first question of a process, so all share one.
class GsettingsTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    static const ScratchFolder folder;
    std::filesystem::create_directories(folder.folder() / "glib-2.0/settings");
    folder.fill("glib-2.0/settings/keyfile",
                "[org/gnome/desktop/session]\nidle-delay=uint32 420\n\n"
                "[org/gnome/desktop/background]\npicture-uri='file:///home/a.png'\n"
                "picture-options='stretched'\n\n"
                "[org/gnome/desktop/screensaver]\nlock-enabled=false\n");
    setenv("GSETTINGS_BACKEND", "keyfile", 1);
    setenv("XDG_CONFIG_HOME", folder.folder().c_str(), 1);
  }

  void SetUp() override {
    if (!gsetting(kSchema, "idle-delay")) {
      GTEST_SKIP() << "The system has no settings of GNOME.";
    }
  }
};

TEST_F(GsettingsTest, TellWhatTheUserChose) {
  EXPECT_EQ(gsetting(kSchema, "idle-delay"), "420");
  EXPECT_EQ(gsetting("org.gnome.desktop.background", "picture-uri"), "file:///home/a.png");
  EXPECT_EQ(gsetting("org.gnome.desktop.background", "picture-options"), "stretched");
  EXPECT_EQ(gsetting("org.gnome.desktop.screensaver", "lock-enabled"), "false");
}

TEST_F(GsettingsTest, TellWhatHoldsWhereTheUserChoseNothing) {
  EXPECT_EQ(gsetting("org.gnome.desktop.screensaver", "idle-activation-enabled"), "true");
  EXPECT_EQ(gsetting("org.gnome.desktop.interface", "cursor-blink-time"), "1200");
}

TEST_F(GsettingsTest, TellNothingOfWhatThereIsNot) {
  EXPECT_EQ(gsetting("org.gnome.desktop.nothing", "idle-delay"), std::nullopt);
  EXPECT_EQ(gsetting("", ""), std::nullopt);
  EXPECT_EQ(gsetting(kSchema, "nothing"), std::nullopt);
  // One whose settings lie at no place of their own.
  EXPECT_EQ(gsetting("org.gnome.desktop.notifications.application", "enable"), std::nullopt);
}

TEST_F(GsettingsTest, StandInTheAnswerOfThisMachine) {
  setenv("XDG_CURRENT_DESKTOP", "GNOME", 1);
  const WmiAnswer desktop = wmiAnswer(sourcesOfThisMachine(nullptr), "Win32_Desktop");
  unsetenv("XDG_CURRENT_DESKTOP");
  EXPECT_EQ(answered(desktop, "Wallpaper"), std::vector<std::string>{"/home/a.png"});
}

}  // namespace
}  // namespace veltrin
