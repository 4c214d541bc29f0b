// SPDX-License-Identifier: GPL-3.0-or-later
// The section of the report about the computer as a whole.
#include "sysinfo/report_sections.h"
#include "text/statement.h"

namespace veltrin {
namespace {

void printStates(const ObjectLines& computer) {
  computer.bold("", "Caption");
  computer.plain("    Description: ", "Description");
  computer.word("    AdminPassword: ", "AdminPasswordStatus", &StatusText::AdminPasswordStatus);
  computer.plain("    AutomaticResetBootOption: ", "AutomaticResetBootOption");
  computer.plain("    AutomaticResetCapability: ", "AutomaticResetCapability");
  computer.plain("    BootROMSupported: ", "BootROMSupported");
  computer.plain("    BootupState: ", "BootupState");
  computer.plain("    AdminPassword: " + computer.status().text);  // once more
  computer.word("    ChassisBootupState: ", "ChassisBootupState", &StatusText::ChassisBootupState);
  computer.plain("    CurrentTimeZone: ", "CurrentTimeZone");
  computer.plain("    Domain: ", "domain");
  computer.word("    FrontPanelResetStatus: ", "FrontPanelResetStatus",
                &StatusText::FrontPanelResetStatus);
  computer.plain("    InfraredSupported: ", "InfraredSupported");
  computer.word("    KeyboardPasswordStatus: ", "KeyboardPasswordStatus",
                &StatusText::KeyboardPasswordStatus);
  computer.plain("    Manufacturer: ", "Manufacturer");
  computer.plain("    Model: ", "model");
  computer.plain("    Name: ", "Name");
  computer.plain("    NetworkServerModeEnabled: ", "NetworkServerModeEnabled");
  computer.plain("    PartOfDomain: ", "PartOfDomain");
}

void printPower(const ObjectLines& computer) {
  computer.plain("    PauseAfterReset: ", "PauseAfterReset");
  computer.word("    PowerOnPasswordStatus: ", "PowerOnPasswordStatus",
                &StatusText::PowerOnPasswordStatus);
  computer.word("    PowerState: ", "PowerState", &StatusText::PowerState);
  computer.word("    PowerSupplyState: ", "PowerSupplyState", &StatusText::PowerSupplyState);
  computer.word("    ResetCapability: ", "ResetCapability", &StatusText::ResetCapability);
  computer.plain("    ystemStartupSetting: ", "SystemStartupSetting");
  computer.plain("    SystemType: ", "SystemType");
  computer.word("    ThermalState: ", "ThermalState", &StatusText::ThermalState);
  computer.word("    WakeUpType: ", "WakeUpType", &StatusText::WakeUpType);
}

void printStartupOptions(const ObjectLines& computer) {
  skip([&] {
    for (const Loose& option : computer.value("SystemStartupOptions").elements()) {
      computer.plain("    Startup Options: " + option.text());
    }
  });
}

}  // namespace

// A routine of its own, with its own set of results.
void systeminfo(Report& report) {
  ResultSet results = report.resultSet();
  report.lines.heading("System", Picture::Computer);
  report.each(results, "Select * from Win32_ComputerSystem", [](const ObjectLines& computer) {
    printStates(computer);
    printPower(computer);
    printStartupOptions(computer);
  });
}

}  // namespace veltrin
