// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/enabled_units.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_machine.h"
#include "temporary_tree.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kWants = "/etc/systemd/system/multi-user.target.wants/";

class EnabledUnits : public ::testing::Test {
 protected:
  EnabledUnits() {
    machine_.variables["HOME"] = "/home/anna";
    machine_.kernelFacts.host = "mypc";
  }

  void putUnit(const std::string& path, const std::string& description) {
    tree_.put(path, "# Description=None\n[Unit]\nDescription=" + description +
                        "\n\n[Service]\nDescription=Not this\n");
  }
  void enable(const std::string& name, const std::string& unit) { tree_.link(kWants + name, unit); }

  // "FOLDER/NAME: DESCRIPTION" of each.
  std::vector<std::string> texts() const {
    std::vector<std::string> texts;
    for (const UnitFacts& unit : enabledUnits(tree_.files(), machine_)) {
      texts.push_back(unit.folder + "/" + unit.name + ": " + unit.description);
    }
    return texts;
  }
  std::vector<std::string> descriptions() const {
    std::vector<std::string> descriptions;
    for (const UnitFacts& unit : enabledUnits(tree_.files(), machine_)) {
      descriptions.push_back(unit.description);
    }
    return descriptions;
  }

  TemporaryTree tree_;
  FakeMachine machine_;
};

TEST_F(EnabledUnits, AreTheLinksInTheFoldersOfThoseThatWantThem) {
  putUnit("/usr/lib/systemd/system/cups.service", "CUPS Scheduler");
  putUnit("/lib/systemd/system/ssh.service", "Secure Shell server");
  enable("ssh.service", "/lib/systemd/system/ssh.service");
  enable("cups.service", "/usr/lib/systemd/system/cups.service");
  tree_.link("/etc/systemd/system/printer.target.requires/cups.service",
             "/usr/lib/systemd/system/cups.service");
  tree_.link("/etc/systemd/system/dbus-org.example.service", "/lib/systemd/system/ssh.service");
  tree_.link("/etc/systemd/system/ssh.service.d/x", "/lib/systemd/system/ssh.service");
  EXPECT_THAT(
      texts(),
      ElementsAre("/etc/systemd/system/multi-user.target.wants/cups.service: CUPS Scheduler",
                  "/etc/systemd/system/multi-user.target.wants/ssh.service: Secure Shell server",
                  "/etc/systemd/system/printer.target.requires/cups.service: CUPS Scheduler"));
}

TEST_F(EnabledUnits, OfTheUsersComeBehindTheSystems) {
  putUnit("/usr/lib/systemd/user/sound.socket", "Sound System");
  putUnit("/home/anna/.config/systemd/user/backup.timer", "My backup");
  putUnit("/home/anna/.local/share/systemd/user/sync.service", "My sync");
  putUnit("/usr/lib/systemd/system/cron.service", "Cron");
  const std::string own = "/home/anna/.config/systemd/user/";
  tree_.link(own + "default.target.wants/sync.service", "../sync.service");
  tree_.link(own + "timers.target.wants/backup.timer", "../backup.timer");
  tree_.link("/etc/systemd/user/sockets.target.wants/sound.socket", "x");
  enable("cron.service", "x");
  EXPECT_THAT(descriptions(), ElementsAre("Cron", "Sound System", "My sync", "My backup"));
}

TEST_F(EnabledUnits, AreDescribedByTheFileOfHighestRank) {
  putUnit("/usr/lib/systemd/system/a.service", "The distribution's");
  putUnit("/etc/systemd/system/a.service", "The owner's");
  enable("a.service", "/usr/lib/systemd/system/a.service");
  EXPECT_THAT(descriptions(), ElementsAre("The owner's"));
}

TEST_F(EnabledUnits, AreNotThoseThatAreMasked) {
  putUnit("/usr/lib/systemd/system/a.service", "A");
  enable("a.service", "/usr/lib/systemd/system/a.service");
  tree_.link("/etc/systemd/system/a.service", "/dev/null");
  putUnit("/usr/lib/systemd/system/b.service", "B");
  enable("b.service", "/usr/lib/systemd/system/b.service");
  tree_.put("/etc/systemd/system/b.service", "");
  EXPECT_THAT(texts(), IsEmpty());
}

TEST_F(EnabledUnits, AreNotThoseWithoutAFile) {
  enable("gone.service", "/lib/systemd/system/gone.service");
  EXPECT_THAT(texts(), IsEmpty());
}

TEST_F(EnabledUnits, MayLieWhereTheirLinkPoints) {
  putUnit("/opt/vendor/agent.service", "Agent");
  enable("agent.service", "/opt/vendor/agent.service");
  EXPECT_THAT(descriptions(), ElementsAre("Agent"));
}

TEST_F(EnabledUnits, FillInWhatADescriptionLeavesOpen) {
  putUnit("/lib/systemd/system/getty@.service", "Getty on %I of %H: %n %N %p %P %i 100%% %Z %");
  enable("getty@dev-tty\\x2d1.service", "x");
  EXPECT_THAT(descriptions(),
              ElementsAre("Getty on dev/tty-1 of mypc: getty@dev-tty\\x2d1.service "
                          "getty@dev-tty\\x2d1 getty getty dev-tty\\x2d1 100% %Z %"));
}

TEST_F(EnabledUnits, OfAnInstanceMayHaveAFileOfTheirOwn) {
  putUnit("/lib/systemd/system/getty@.service", "Any");
  putUnit("/lib/systemd/system/getty@tty1.service", "First");
  enable("getty@tty1.service", "x");
  enable("getty@tty2.service", "x");
  EXPECT_THAT(descriptions(), ElementsAre("First", "Any"));
}

TEST_F(EnabledUnits, AreReadFromFilesThatAreNoText) {
  tree_.put("/lib/systemd/system/a.service", "[Unit]\r\nDescription=\xFF\x01 A\r\n");
  tree_.put("/lib/systemd/system/b.service", std::string(100000, '\xFF'));
  tree_.put("/lib/systemd/system/no ending", "[Unit]\nDescription=C\n");
  for (const char* name : {"a.service", "b.service", "no ending", "@.", "\xFE"}) {
    enable(name, "x");
  }
  EXPECT_THAT(descriptions(), ElementsAre("?  A", "", "C"));
}

TEST_F(EnabledUnits, AreNoneWithoutTheirFolders) { EXPECT_THAT(texts(), IsEmpty()); }

}  // namespace
}  // namespace veltrin
