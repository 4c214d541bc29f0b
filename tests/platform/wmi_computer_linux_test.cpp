// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/machine/smbios_table.h"
#include "wmi_answers.h"

namespace veltrin {
namespace {

using Texts = std::map<std::string, std::string>;

class Win32ComputerSystem : public AskedMachine, public ::testing::Test {
 protected:
  std::string value(const char* property) const {
    return values("Win32_ComputerSystem", property).at(0);
  }

  // A property of a machine with one structure of the firmware, which has this byte.
  std::string valueWith(unsigned type, std::size_t at, unsigned code, const char* property) {
    tree.put(kSmbiosFile, smbiosTable({SmbiosPart(type, 0x1B).number(at, code)}));
    return value(property);
  }
};

TEST_F(Win32ComputerSystem, OfWhichNothingIsToldHasTheCodesForThat) {
  machine->kernelFacts = Kernel();
  machine->offset = -90;
  EXPECT_EQ(properties("Win32_ComputerSystem"), (Texts{{"AdminPasswordStatus", "3"},
                                                       {"AutomaticResetBootOption", "null"},
                                                       {"AutomaticResetCapability", "null"},
                                                       {"BootROMSupported", "null"},
                                                       {"BootupState", "null"},
                                                       {"Caption", "null"},
                                                       {"ChassisBootupState", "2"},
                                                       {"CurrentTimeZone", "-90"},
                                                       {"Description", "null"},
                                                       {"Domain", "null"},
                                                       {"FrontPanelResetStatus", "3"},
                                                       {"InfraredSupported", "null"},
                                                       {"KeyboardPasswordStatus", "3"},
                                                       {"Manufacturer", "null"},
                                                       {"Model", "null"},
                                                       {"Name", "null"},
                                                       {"NetworkServerModeEnabled", "null"},
                                                       {"PartOfDomain", "null"},
                                                       {"PauseAfterReset", "null"},
                                                       {"PowerOnPasswordStatus", "3"},
                                                       {"PowerState", "0"},
                                                       {"PowerSupplyState", "2"},
                                                       {"ResetCapability", "2"},
                                                       {"SystemStartupOptions", "null"},
                                                       {"SystemStartupSetting", "null"},
                                                       {"SystemType", "null"},
                                                       {"ThermalState", "2"},
                                                       {"WakeUpType", "2"}}));
}

TEST_F(Win32ComputerSystem, IsToldByKernelFilesAndFirmware) {
  machine->kernelFacts.host = "desk.example.org";
  machine->offset = 60;
  tree.put("/etc/machine-info", "PRETTY_HOSTNAME=\"The desk\"\n");
  tree.put("/etc/samba/smb.conf", "[global]\nsecurity = user\n");
  tree.put("/sys/class/dmi/id/sys_vendor", "Example Works\n");
  tree.put("/sys/class/dmi/id/product_name", "Model 7\n");
  tree.put("/sys/class/dmi/id/bios_version", "F.20\n");
  tree.put("/proc/cmdline", "root=/dev/sda1 ro\n");
  tree.put("/proc/sys/kernel/panic", "0\n");
  tree.put("/run/samba/smbd.pid", "812\n");
  tree.put("/proc/812/comm", "smbd\n");
  tree.put(kSmbiosFile,
           smbiosTable({SmbiosPart(1, 0x1B).number(0x18, 6),
                        SmbiosPart(3, 0x0D).number(0x09, 3).number(0x0A, 4).number(0x0B, 5),
                        SmbiosPart(23, 0x0D).number(0x04, 1).number(0x0B, 3, 2),
                        SmbiosPart(24, 0x05).number(0x04, 0b00'01'10'01)}));
  EXPECT_EQ(properties("Win32_ComputerSystem"), (Texts{{"AdminPasswordStatus", "2"},
                                                       {"AutomaticResetBootOption", "False"},
                                                       {"AutomaticResetCapability", "True"},
                                                       {"BootROMSupported", "True"},
                                                       {"BootupState", "Normal boot"},
                                                       {"Caption", "desk.example.org"},
                                                       {"ChassisBootupState", "3"},
                                                       {"CurrentTimeZone", "60"},
                                                       {"Description", "The desk"},
                                                       {"Domain", "example.org"},
                                                       {"FrontPanelResetStatus", "1"},
                                                       {"InfraredSupported", "null"},
                                                       {"KeyboardPasswordStatus", "1"},
                                                       {"Manufacturer", "Example Works"},
                                                       {"Model", "Model 7"},
                                                       {"Name", "desk.example.org"},
                                                       {"NetworkServerModeEnabled", "True"},
                                                       {"PartOfDomain", "null"},
                                                       {"PauseAfterReset", "180000"},
                                                       {"PowerOnPasswordStatus", "0"},
                                                       {"PowerState", "0"},
                                                       {"PowerSupplyState", "4"},
                                                       {"ResetCapability", "4"},
                                                       {"SystemStartupOptions", "null"},
                                                       {"SystemStartupSetting", "null"},
                                                       {"SystemType", "x64-based PC"},
                                                       {"ThermalState", "5"},
                                                       {"WakeUpType", "6"}}));
}

TEST_F(Win32ComputerSystem, HasTheCodesOfTheEnclosure) {
  const std::map<unsigned, std::string> states{{0, "2"}, {1, "1"}, {2, "2"}, {3, "3"},
                                               {4, "4"}, {5, "5"}, {6, "6"}, {7, "2"}};
  for (const auto& [code, state] : states) {
    EXPECT_EQ(valueWith(3, 0x09, code, "ChassisBootupState"), state) << code;
    EXPECT_EQ(valueWith(3, 0x0A, code, "PowerSupplyState"), state) << code;
    EXPECT_EQ(valueWith(3, 0x0B, code, "ThermalState"), state) << code;
  }
}

TEST_F(Win32ComputerSystem, HasTheCodesOfTheWakeUp) {
  for (unsigned code = 0; code <= 8; ++code) {
    EXPECT_EQ(valueWith(1, 0x18, code, "WakeUpType"), std::to_string(code));
  }
  EXPECT_EQ(valueWith(1, 0x18, 9, "WakeUpType"), "2");
}

TEST_F(Win32ComputerSystem, HasTheCodesOfTheHardwareSecurity) {
  for (unsigned setting = 0; setting <= 3; ++setting) {
    const std::string code = std::to_string(setting);
    EXPECT_EQ(valueWith(24, 0x04, setting << 6, "PowerOnPasswordStatus"), code);
    EXPECT_EQ(valueWith(24, 0x04, setting << 4, "KeyboardPasswordStatus"), code);
    EXPECT_EQ(valueWith(24, 0x04, setting << 2, "AdminPasswordStatus"), code);
    EXPECT_EQ(valueWith(24, 0x04, setting, "FrontPanelResetStatus"), code);
  }
}

TEST_F(Win32ComputerSystem, CanBeResetAsItsButtonIsSet) {
  EXPECT_EQ(valueWith(24, 0x04, 0, "ResetCapability"), "3");
  EXPECT_EQ(valueWith(24, 0x04, 1, "ResetCapability"), "4");
  EXPECT_EQ(valueWith(24, 0x04, 2, "ResetCapability"), "5");
  EXPECT_EQ(valueWith(24, 0x04, 3, "ResetCapability"), "2");
}

TEST_F(Win32ComputerSystem, PausesForAnUnknownTime) {
  tree.put(kSmbiosFile, smbiosTable({SmbiosPart(23, 0x0D).number(0x0B, 0xFFFF, 2)}));
  EXPECT_EQ(value("PauseAfterReset"), "-1");
  tree.put(kSmbiosFile, smbiosTable({SmbiosPart(23, 0x0D).number(0x0B, 0xFFFE, 2)}));
  EXPECT_EQ(value("PauseAfterReset"), "3932040000");
}

TEST_F(Win32ComputerSystem, MayRestartByItselfByTheWordOfTheFirmwareFirst) {
  tree.put("/proc/sys/kernel/panic", "10\n");
  EXPECT_EQ(value("AutomaticResetBootOption"), "True");
  EXPECT_EQ(value("AutomaticResetCapability"), "True");
  EXPECT_EQ(valueWith(23, 0x04, 0, "AutomaticResetCapability"), "False");
  EXPECT_EQ(value("AutomaticResetBootOption"), "True");
}

TEST_F(Win32ComputerSystem, TellsAStartForRescue) {
  tree.put("/proc/cmdline", "root=/dev/sda1 single\n");
  EXPECT_EQ(value("BootupState"), "Fail-safe boot");
}

TEST_F(Win32ComputerSystem, HasTheNamesByWhichTheReportAsks) {
  const WmiObject object = all("Win32_ComputerSystem").at(0);
  for (const char* name : {"domain", "model", "Name"}) {
    EXPECT_NO_THROW(object.value(name)) << name;
  }
}

}  // namespace
}  // namespace veltrin
