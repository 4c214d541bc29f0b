// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <gtest/gtest.h>

#include "tests/machine/smbios_table.h"
#include "wmi_answers.h"

namespace veltrin {
namespace {

constexpr const char* kFiles[] = {
    kSmbiosFile,
    "/etc/machine-info",
    "/etc/samba/smb.conf",
    "/proc/cmdline",
    "/proc/sys/kernel/domainname",
    "/proc/sys/kernel/panic",
    "/run/samba/smbd.pid",
    "/run/udev/data/+dmi:id",
    "/sys/bus/pci/slots/1/max_bus_speed",
    "/sys/class/dmi/id/board_name",
    "/sys/class/dmi/id/product_name",
    "/sys/devices/system/cpu/cpu0/acpi_cppc/nominal_freq",
    "/sys/devices/system/cpu/cpu0/cache/index0/level",
    "/sys/devices/system/cpu/cpu0/cache/index0/shared_cpu_list",
    "/sys/devices/system/cpu/cpu0/cache/index0/size",
    "/sys/devices/system/cpu/cpu0/cache/index0/type",
    "/sys/devices/system/cpu/cpu0/cpufreq/cpuinfo_max_freq",
    "/sys/devices/system/cpu/cpu0/cpufreq/scaling_cur_freq",
    "/sys/devices/system/cpu/cpu0/of_node/compatible",
    "/sys/devices/system/cpu/cpu0/topology/physical_package_id",
};

class HardwareOfGarbage : public AskedMachine, public ::testing::Test {
 protected:
  // Asks for everything; each property can be printed on a line.
  void expectPrintable() {
    for (const char* name : {"Win32_BaseBoard", "Win32_CacheMemory", "Win32_ComputerSystem",
                             "Win32_PhysicalMemory", "Win32_Processor", "Win32_SystemSlot"}) {
      for (const WmiObject& object : all(name)) {
        for (const auto& [property, value] : object.properties) {
          const std::string text = textOf(value);
          EXPECT_TRUE(
              std::all_of(text.begin(), text.end(),
                          [](char character) { return character >= ' ' && character < '\x7F'; }))
              << name << " " << property << ": " << text;
        }
      }
    }
  }
};

TEST_F(HardwareOfGarbage, IsToldInPrintableTexts) {
  for (const std::string& bytes :
       {std::string(), std::string("\xFF\x80\x01\0\0\x7F", 6), std::string("-1\n"),
        std::string("18446744073709551615\n"), std::string("nan\n"), std::string(20'000, '\xFF'),
        std::string(20'000, '9')}) {
    for (const char* file : kFiles) {
      tree.put(file, bytes);
    }
    for (const std::string& list :
         {bytes, "processor : 0\nmodel name : \xFF\x01\n" + bytes,
          std::string("processor : 18446744073709551615\ncpu MHz : 1e999\n"
                      "vendor_id : \xC0\ncpu family : 99999999999\nmodel : 7\n")}) {
      tree.put("/proc/cpuinfo", list);
      expectPrintable();
    }
  }
}

TEST_F(HardwareOfGarbage, IsToldWhereFilesAreFolders) {
  tree.put("/proc/cpuinfo", "processor : 0\n");
  for (const char* file : kFiles) {
    tree.makeFolder(file);
  }
  expectPrintable();
  EXPECT_EQ(all("Win32_Processor").size(), 1U);
}

}  // namespace
}  // namespace veltrin
