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
  tree.makeFolder("/sys/class/net");
  EXPECT_EQ(hasInfraredPort(tree.files()), false);
  tree.makeFolder("/sys/class/lirc/lirc0");
  EXPECT_EQ(hasInfraredPort(tree.files()), true);
}

constexpr const char* kHeading =
    "  sl  local_address rem_address   st tx_queue rx_queue tr tm->when retrnsmt   uid\n";

std::optional<bool> sharesWith(const std::string& four, const std::string& six) {
  const TemporaryTree tree;
  tree.put("/proc/net/tcp", kHeading + four);
  tree.put("/proc/net/tcp6", kHeading + six);
  return sharesFiles(tree.files());
}

TEST(ComputerModes, TellSharedFilesByWhoWaitsForThem) {
  const std::string none;
  EXPECT_EQ(sharesWith("   0: 00000000:01BD 00000000:0000 0A 00000000:00000000\n", none), true);
  EXPECT_EQ(sharesWith("   0: 00000000:008B 00000000:0000 0A 00000000:00000000\n", none), true);
  EXPECT_EQ(sharesWith(none,
                       "   0: 00000000000000000000000000000000:01BD "
                       "00000000000000000000000000000000:0000 0A 00000000:00000000\n"),
            true);
}

TEST(ComputerModes, TellNoSharedFilesByOtherSockets) {
  const std::string client = "   0: 0100007F:01BD 0100007F:C000 01 00000000:00000000\n";
  const std::string other = "   1: 00000000:0016 00000000:0000 0A 00000000:00000000\n";
  EXPECT_EQ(sharesWith(client + other + "garbage\n", ""), false);
}

TEST(ComputerModes, TellNoSharedFilesWhereTheKernelTellsNoSockets) {
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
