// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/operating_system.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "fake_machine.h"
#include "temporary_tree.h"

namespace veltrin {
namespace {

class OperatingSystem : public ::testing::Test {
 protected:
  OperatingSystemFacts facts() { return operatingSystemFacts(tree_.files(), machine_); }

  // A file of the installer that was written at a moment.
  void putInstallerFile(const std::string& name, std::int64_t seconds) {
    const std::string path = "/var/log/installer/" + name;
    tree_.put(path, "");
    const timespec times[2] = {{seconds, 0}, {seconds, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, tree_.real(path).c_str(), times, 0), 0);
  }

  TemporaryTree tree_;
  FakeMachine machine_;
};

// --- Its name and maker ---

TEST_F(OperatingSystem, BearsItsPrettyName) {
  tree_.put("/etc/os-release", "NAME=Example\nPRETTY_NAME=\"Example Linux 7 (seven)\"\n");
  EXPECT_EQ(facts().name, "Example Linux 7 (seven)");
}

TEST_F(OperatingSystem, IsNamedByTheVendorsFileWhereThereIsNoOther) {
  tree_.put("/usr/lib/os-release", "PRETTY_NAME='Vendor Linux'\n");
  EXPECT_EQ(facts().name, "Vendor Linux");
}

TEST_F(OperatingSystem, WithoutANameIsLinux) {
  EXPECT_EQ(facts().name, "Linux");
  tree_.put("/etc/os-release", "\x01\xFF garbage\n");
  EXPECT_EQ(facts().name, "Linux");
}

TEST_F(OperatingSystem, VersionIsTheKernels) {
  machine_.kernelFacts.release = "6.1.0-21-amd64";
  machine_.kernelFacts.version = "#1 SMP PREEMPT_DYNAMIC Example 6.1.90-1";
  EXPECT_EQ(facts().version, "6.1.0-21-amd64 #1 SMP PREEMPT_DYNAMIC Example 6.1.90-1");
}

TEST_F(OperatingSystem, ManufacturerIsTheVendorThatItNames) {
  tree_.put("/etc/os-release", "VENDOR_NAME=\"Example Works\"\nCPE_NAME=cpe:/o:other:x:1\n");
  tree_.put("/etc/dpkg/origins/default", "Vendor: Third\n");
  EXPECT_EQ(facts().manufacturer, "Example Works");
}

TEST_F(OperatingSystem, ManufacturerIsTheVendorOfItsPackages) {
  tree_.put("/etc/dpkg/origins/default", "Vendor: Example\nVendor-URL: http://example.org/\n");
  EXPECT_EQ(facts().manufacturer, "Example");
}

TEST_F(OperatingSystem, ManufacturerIsTheVendorInItsPlatformName) {
  tree_.put("/etc/os-release", "CPE_NAME=\"cpe:/o:exampleproject:example:39\"\n");
  EXPECT_EQ(facts().manufacturer, "exampleproject");
  tree_.put("/etc/os-release", "CPE_NAME=\"cpe:2.3:o:example:linux:9\"\n");
  EXPECT_EQ(facts().manufacturer, "example");
}

TEST_F(OperatingSystem, WithoutAVendorHasNoManufacturer) {
  tree_.put("/etc/os-release", "NAME=Example\nHOME_URL=https://example.org/\n");
  EXPECT_EQ(facts().manufacturer, "");
}

TEST_F(OperatingSystem, ConfigurationIsItsEdition) {
  EXPECT_EQ(facts().configuration, "");
  tree_.put("/etc/os-release", "VARIANT=\"Workstation Edition\"\n");
  EXPECT_EQ(facts().configuration, "Workstation Edition");
}

TEST_F(OperatingSystem, BuildTypeTellsWhetherTheKernelIsForSeveralProcessors) {
  machine_.kernelFacts.version = "#1 SMP PREEMPT_DYNAMIC Mon May 6";
  EXPECT_EQ(facts().buildType, "Multiprocessor");
  machine_.kernelFacts.version = "#42 PREEMPT Mon May 6";
  EXPECT_EQ(facts().buildType, "Uniprocessor");
  machine_.kernelFacts.version = "made by hand";
  EXPECT_EQ(facts().buildType, "");
  machine_.kernelFacts.version = "";
  EXPECT_EQ(facts().buildType, "");
}

TEST_F(OperatingSystem, TellsTheTypeOfTheComputer) {
  for (const auto& [machine, type] :
       {std::pair("x86_64", "x64-based PC"), std::pair("i686", "X86-based PC"),
        std::pair("aarch64", "ARM64-based PC"), std::pair("armv7l", "ARM-based PC"),
        std::pair("riscv64", "riscv64-based computer"), std::pair("", "")}) {
    machine_.kernelFacts.machine = machine;
    EXPECT_EQ(facts().computerType, type);
  }
}

// --- When it was installed ---

TEST_F(OperatingSystem, WasInstalledWhenItsFileSystemWasMade) {
  machine_.rootBorn = 1769786571;
  putInstallerFile("syslog", 1700000000);
  EXPECT_EQ(facts().installed, "1/30/2026, 3:22:51 PM");
}

TEST_F(OperatingSystem, WasInstalledWhenTheInstallerHadDone) {
  putInstallerFile("syslog", 1769786580);
  putInstallerFile("status", 1769786571);
  EXPECT_EQ(facts().installed, "1/30/2026, 3:22:51 PM");
}

TEST_F(OperatingSystem, WasInstalledWhenThePackageManagerBegan) {
  tree_.put("/var/log/pacman.log",
            "[2026-01-30T16:22:51+0100] [PACMAN] Running 'pacman -r /mnt'\n"
            "[2026-01-31T16:22:51+0100] [ALPM] upgraded x (1 -> 2)\n");
  EXPECT_EQ(facts().installed, "1/30/2026, 3:22:51 PM");
}

TEST_F(OperatingSystem, StampedWithNoTimeOrOneToComeTellsNoInstallation) {
  for (const std::int64_t moment : {std::int64_t{0}, machine_.time + 1}) {
    machine_.rootBorn = moment;
    EXPECT_EQ(facts().installed, "") << moment;
  }
}

TEST_F(OperatingSystem, WithoutATraceTellsNoInstallation) {
  tree_.put("/var/log/pacman.log", "garbage\n");
  EXPECT_EQ(facts().installed, "");
}

// --- When it was started ---

TEST_F(OperatingSystem, WasStartedWhenTheKernelSays) {
  tree_.put("/proc/stat", "cpu  1 2 3\nintr 5 0\nctxt 9\nbtime 1769786571\nprocesses 7\n");
  EXPECT_EQ(facts().booted, "1/30/2026, 3:22:51 PM");
}

TEST_F(OperatingSystem, WithoutASoundTimeTellsNoStart) {
  for (const char* text : {"", "btime\n", "btime 0\n", "btime x\n", "btime 99999999999\n",
                           "btime 18446744073709551615\n", "\xFF\x01"}) {
    tree_.put("/proc/stat", text);
    EXPECT_EQ(facts().booted, "") << text;
  }
}

}  // namespace
}  // namespace veltrin
