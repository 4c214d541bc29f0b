// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/computer_modes.h"

#include <gtest/gtest.h>

#include "temporary_tree.h"

namespace veltrin {
namespace {

std::optional<bool> rescueWith(const std::string& line) {
  const TemporaryTree tree;
  tree.put("/proc/cmdline", line);
  return startedForRescue(tree.files());
}

TEST(ComputerModes, TellAStartForRescueByEachOfItsWords) {
  for (const char* word :
       {"1", "s", "S", "single", "rescue", "emergency", "-b", "systemd.unit=rescue",
        "systemd.unit=rescue.target", "systemd.unit=emergency", "systemd.unit=emergency.target"}) {
    EXPECT_EQ(rescueWith("BOOT_IMAGE=/vmlinuz root=/dev/sda1 " + std::string(word) + "\n"), true)
        << word;
  }
}

TEST(ComputerModes, TellACommonStartByOtherWords) {
  EXPECT_EQ(rescueWith("BOOT_IMAGE=/vmlinuz ro quiet rd.rescue 1st systemd.unit=graphical.target"),
            false);
  EXPECT_EQ(rescueWith(""), false);
}

TEST(ComputerModes, TellNoStartWhereTheKernelDoesNot) {
  EXPECT_EQ(startedForRescue(TemporaryTree().files()), std::nullopt);
}

std::optional<bool> restartsWith(const std::string& setting) {
  const TemporaryTree tree;
  tree.put("/proc/sys/kernel/panic", setting);
  return restartsAfterFailure(tree.files());
}

TEST(ComputerModes, TellWhetherTheComputerRestartsAfterAFailure) {
  EXPECT_EQ(restartsWith("0\n"), false);
  EXPECT_EQ(restartsWith("10\n"), true);
  EXPECT_EQ(restartsWith("-1\n"), true);
  EXPECT_EQ(restartsWith(""), std::nullopt);
  EXPECT_EQ(restartsAfterFailure(TemporaryTree().files()), std::nullopt);
}

TEST(ComputerModes, TellAnInfraredPort) {
  const TemporaryTree tree;
  EXPECT_EQ(hasInfraredPort(tree.files()), std::nullopt);
  tree.makeFolder("/sys/class/lirc");
  EXPECT_EQ(hasInfraredPort(tree.files()), std::nullopt);
  tree.makeFolder("/sys/class/lirc/lirc0");
  EXPECT_EQ(hasInfraredPort(tree.files()), true);
}

std::optional<bool> sharesWith(const std::string& note, const std::string& number,
                               const std::string& process) {
  const TemporaryTree tree;
  tree.put(note, number + "\n");
  tree.put("/proc/812/comm", process + "\n");
  return sharesFiles(tree.files());
}

TEST(ComputerModes, TellSharedFilesByTheServerThatRuns) {
  EXPECT_EQ(sharesWith("/run/samba/smbd.pid", "812", "smbd"), true);
  EXPECT_EQ(sharesWith("/run/smbd.pid", "812", "smbd"), true);
  EXPECT_EQ(sharesWith("/run/ksmbd.lock", "812", "ksmbd.mountd"), true);
}

TEST(ComputerModes, TellNoSharedFilesByANoteThatAServerLeftBehind) {
  EXPECT_EQ(sharesWith("/run/samba/smbd.pid", "813", "smbd"), false);
  EXPECT_EQ(sharesWith("/run/samba/smbd.pid", "812", "bash"), false);
  EXPECT_EQ(sharesWith("/run/samba/smbd.pid", "", "smbd"), false);
  EXPECT_EQ(sharesWith("/run/utmp", "812", "smbd"), false);
}

TEST(ComputerModes, TellNoSharedFilesWhereNothingIsNoted) {
  EXPECT_EQ(sharesFiles(TemporaryTree().files()), std::nullopt);
}

TEST(ComputerModes, TellWhatTheOwnerCallsTheComputer) {
  const TemporaryTree tree;
  EXPECT_EQ(calledByOwner(tree.files()), "");
  tree.put("/etc/machine-info", "CHASSIS=laptop\nPRETTY_HOSTNAME=\"Anna's \\\"old\\\" laptop\"\n");
  EXPECT_EQ(calledByOwner(tree.files()), "Anna's \"old\" laptop");
}

}  // namespace
}  // namespace veltrin
