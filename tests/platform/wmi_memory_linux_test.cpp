// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sysinfo/memory_slots.h"
#include "tests/machine/smbios_table.h"
#include "wmi_answers.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Texts = std::map<std::string, std::string>;

constexpr const char* kNotes = "/run/udev/data/+dmi:id";

SmbiosPart module(const std::string& locator, const std::string& bank, unsigned megabytes,
                  unsigned speed) {
  return SmbiosPart(17, 0x5C)
      .text(0x10, locator)
      .text(0x11, bank)
      .number(0x0C, megabytes, 2)
      .number(0x15, speed, 2);
}

class Win32PhysicalMemory : public AskedMachine, public ::testing::Test {};

TEST_F(Win32PhysicalMemory, TellsAModuleInBytesAndTransfers) {
  tree.put(kSmbiosFile,
           smbiosTable({module("A1_DIMM0", "BANK 0", 0x7FFF, 5600).number(0x1C, 1'048'576, 4)}));
  EXPECT_EQ(properties("Win32_PhysicalMemory"), (Texts{{"DeviceLocator", "A1_DIMM0"},
                                                       {"BankLabel", "BANK 0"},
                                                       {"Capacity", "1099511627776"},
                                                       {"Speed", "5600"}}));
}

TEST_F(Win32PhysicalMemory, TellsAnEmptySocketWithoutACapacity) {
  tree.put(kNotes, "E:MEMORY_DEVICE_0_PRESENT=0\n");
  EXPECT_EQ(properties("Win32_PhysicalMemory"), (Texts{{"DeviceLocator", "null"},
                                                       {"BankLabel", "null"},
                                                       {"Capacity", "null"},
                                                       {"Speed", "null"}}));
}

TEST_F(Win32PhysicalMemory, FillsTheSlotsOfTheReport) {
  tree.put(kSmbiosFile,
           smbiosTable({module("A1", "BANK 0", 8192, 3200), module("A2", "BANK 1", 0, 0),
                        module("B1", "BANK 2", 8192, 3200), module("A3", "BANK 3", 512, 667)}));
  std::array<std::string, 4> slots;
  fillMemorySlots(all("Win32_PhysicalMemory"), slots);
  EXPECT_THAT(slots, ElementsAre("Slot 1:   8 GB  Speed: 3200 Mhz   (BANK 0)",
                                 "Slot 2:   Empty     (BANK 1)",
                                 "Slot 3:   524 MB  Speed: 667 Mhz   (BANK 3)", ""));
}

TEST_F(Win32PhysicalMemory, IsNoneWhereNobodyTellsIt) {
  EXPECT_THAT(all("Win32_PhysicalMemory"), IsEmpty());
}

}  // namespace
}  // namespace veltrin
