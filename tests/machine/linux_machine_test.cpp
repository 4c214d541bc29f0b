// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/linux_machine.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <ctime>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "printed_by.h"
#include "temporary_tree.h"

namespace veltrin {
namespace {

// Sets a variable of the environment until the end of a test.
class Variable {
 public:
  Variable(std::string name, const std::string& value) : name_(std::move(name)) {
    if (const char* before = getenv(name_.c_str())) {
      before_ = before;
    }
    setenv(name_.c_str(), value.c_str(), 1);
  }

  ~Variable() {
    if (before_) {
      setenv(name_.c_str(), before_->c_str(), 1);
    } else {
      unsetenv(name_.c_str());
    }
  }

  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;

 private:
  std::string name_;
  std::optional<std::string> before_;
};

TEST(LinuxMachine, TellsTheKernelsFacts) {
  std::array<char, 256> host{};
  ASSERT_EQ(gethostname(host.data(), host.size() - 1), 0);
  const Kernel kernel = LinuxMachine().kernel();
  EXPECT_EQ(kernel.host, host.data());
  EXPECT_EQ(kernel.release + "\n", FileTree().text("/proc/sys/kernel/osrelease"));
  EXPECT_EQ(kernel.version + "\n", FileTree().text("/proc/sys/kernel/version"));
  EXPECT_NE(kernel.machine, "");
}

TEST(LinuxMachine, KnowsTheTime) {
  const time_t before = time(nullptr);
  const std::int64_t now = LinuxMachine().now();
  EXPECT_GE(now, before);
  EXPECT_LE(now, time(nullptr));
}

TEST(LinuxMachine, TellsAMomentInTheZoneOfTheEnvironment) {
  const Variable zone("TZ", "ABC-3:30");
  const LocalMoment local = LinuxMachine().local(1769786571);
  EXPECT_EQ(local.offset, 210);
  EXPECT_EQ(local.zone, "ABC");
  EXPECT_EQ(local.time.year, 2026);
  EXPECT_EQ(local.time.month, 1);
  EXPECT_EQ(local.time.day, 30);
  EXPECT_EQ(local.time.hour, 18);
  EXPECT_EQ(local.time.minute, 52);
  EXPECT_EQ(local.time.second, 51);
}

TEST(LinuxMachine, ReadsTheEnvironment) {
  const Variable variable("VELTRIN_TEST_VARIABLE", "its value");
  EXPECT_EQ(LinuxMachine().environment("VELTRIN_TEST_VARIABLE"), "its value");
  EXPECT_EQ(LinuxMachine().environment("VELTRIN_TEST_NO_VARIABLE"), "");
}

TEST(LinuxMachine, TellsWhenAFileWasMade) {
  const TemporaryTree tree;
  const std::int64_t before = time(nullptr);
  tree.put("/file", "");
  const auto born = LinuxMachine().born(tree.real("/file"));
  if (!born) {
    GTEST_SKIP() << "the file system keeps no such time";
  }
  // The kernel stamps files by a clock that may lag behind by a tick.
  EXPECT_GE(*born, before - 1);
  EXPECT_LE(*born, time(nullptr));
}

TEST(LinuxMachine, TellsNoTimeOfAMissingFile) {
  EXPECT_EQ(LinuxMachine().born("/no/such/file"), std::nullopt);
}

std::string inHexadecimal(const Id128& id) {
  constexpr const char* kDigits = "0123456789abcdef";
  std::string text;
  for (const std::uint8_t byte : id) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 0xF];
  }
  return text;
}

TEST(LinuxMachine, TellsAnApplicationsIdAsTheSystemItself) {
  const std::string expected =
      printedBy("systemd-id128 machine-id --app-specific=7eef91aa14b6b49f291d7f6da4fefc7d");
  if (expected.empty()) {
    GTEST_SKIP() << "the system cannot tell it, or has none";
  }
  const auto id = LinuxMachine().applicationId({0x7E, 0xEF, 0x91, 0xAA, 0x14, 0xB6, 0xB4, 0x9F,
                                                0x29, 0x1D, 0x7F, 0x6D, 0xA4, 0xFE, 0xFC, 0x7D});
  ASSERT_TRUE(id);
  EXPECT_EQ(inHexadecimal(*id) + "\n", expected);
}

TEST(LinuxMachine, TellsEachApplicationAnIdOfItsOwn) {
  const auto one = LinuxMachine().applicationId({1});
  if (!one) {
    GTEST_SKIP() << "this machine has no ID";
  }
  EXPECT_NE(LinuxMachine().applicationId({2}), one);
}

TEST(LinuxMachine, ListsTheInterfacesWithoutTheLoopback) {
  std::vector<std::string> expected = FileTree().names("/sys/class/net");
  std::erase(expected, "lo");
  std::erase(expected, "bonding_masters");  // a file of a driver
  const auto interfaces = LinuxMachine().interfaces();
  ASSERT_TRUE(interfaces);
  std::vector<std::string> names;
  for (const NetworkInterface& interface : *interfaces) {
    names.push_back(interface.name);
  }
  EXPECT_THAT(names, ::testing::UnorderedElementsAreArray(expected));
}

}  // namespace
}  // namespace veltrin
