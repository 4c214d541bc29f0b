// SPDX-License-Identifier: GPL-3.0-or-later
#include <chrono>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

#include "mtu/mtu_values.h"
#include "platform/linux/linux_registry.h"
#include "platform/portable/registry_value.h"
#include "scratch_folder.h"
#include "support/program_with_registry.h"

namespace veltrin {
namespace {

class LinuxRegistryTest : public testing::Test {
 protected:
  static std::int32_t openError(Registry& registry, const std::string& path) {
    Registry::Key key = 0;
    const std::int32_t error = registry.open(kHkeyLocalMachine, path, kKeyAccess, key);
    if (error == kRegistrySuccess) registry.close(key);
    return error;
  }

  std::string content() const {
    std::ifstream file(file_, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }

  ScratchFolder scratch_;
  const std::string file_ = scratch_.path("Registry.dat");
};

TEST_F(LinuxRegistryTest, HasTheKeyOfTheInterfacesFromTheStart) {
  LinuxRegistry registry(file_);

  EXPECT_EQ(openError(registry, kInterfacesKey), 0);
}

TEST_F(LinuxRegistryTest, HasNoOtherKeys) {
  LinuxRegistry registry(file_);

  EXPECT_EQ(openError(registry, "SOFTWARE"), 2);
}

TEST_F(LinuxRegistryTest, IsNotWrittenAgainWhenTheKeyIsThere) {
  const LinuxRegistry first(file_);
  const auto longAgo = std::filesystem::last_write_time(file_) - std::chrono::hours(24);
  std::filesystem::last_write_time(file_, longAgo);

  const LinuxRegistry second(file_);

  EXPECT_EQ(std::filesystem::last_write_time(file_), longAgo);
}

TEST_F(LinuxRegistryTest, KeepsTheValuesOfAnEarlierRun) {
  {
    LinuxRegistry first(file_);
    ProgramWithRegistry run(first);
    writeMtu(run.program, Loose("1492"));
  }
  LinuxRegistry second(file_);
  ProgramWithRegistry run(second);

  EXPECT_EQ(readMtu(run.program).text(), "1492");
}

TEST_F(LinuxRegistryTest, HoldsAnMtuAsATextWithoutATerminator) {
  LinuxRegistry registry(file_);
  ProgramWithRegistry run(registry);

  writeMtu(run.program, Loose(1500));

  EXPECT_NE(content().find("[HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\Services\\Tcpip\\"
                           "Parameters\\Interfaces]\r\nMTU=sz:1500\r\n"),
            std::string::npos)
      << content();
}

TEST_F(LinuxRegistryTest, WhatCannotBeWrittenHoldsNothingAndHarmsNobody) {
  LinuxRegistry registry(scratch_.path("missing/Registry.dat"));
  ProgramWithRegistry run(registry);

  writeMtu(run.program, Loose("1500"));

  EXPECT_EQ(readMtu(run.program).text(), "");
}

}  // namespace
}  // namespace veltrin
