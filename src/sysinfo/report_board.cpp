// SPDX-License-Identifier: GPL-3.0-or-later
// The sections of the report about the board and its controllers.
#include "sysinfo/report_sections.h"

namespace veltrin {

// Nothing of what the query about the board finds is printed; the summary tells of it.
void printMotherBoard(Report& report, ResultSet& results) {
  const SystemSummary& summary = report.summary();
  report.lines.heading("MotherBoard", Picture::Board);
  results.ExecQuery("Select * from Win32_BaseBoard");
  report.lines.plain(summary.MbModel + " ");
  report.lines.plain("    " + summary.MbMan);
  report.lines.bold("   Bios Version: " + summary.BiosVersion);
  report.lines.bold("   Slots:");
  report.each(results, "Select * from Win32_SystemSlot", [](const ObjectLines& slot) {
    slot.plain("    ", "SlotDesignation");
    slot.word("            Max Data Width: ", "MaxDataWidth", &StatusText::MaxDataWidth);
    slot.words("            Voltage Supported: ", "VccMixedVoltageSupport",
               &StatusText::VccMixedVoltageSupport);
    slot.words("            Connector Type: ", "ConnectorType", &StatusText::ConnectorType);
  });
}

void printHardDriveControllers(Report& report, ResultSet& results) {
  report.lines.bold("HD Controller:");
  report.each(results, "Select * from Win32_IDEController", [](const ObjectLines& controller) {
    controller.plain("    ", "Caption");
    controller.word("       Availability: ", "Availability", &StatusText::Availability);
    controller.word("       ConfigManagerErrorCode: ", "ConfigManagerErrorCode",
                    &StatusText::ConfigManagerErrorCode);
    controller.plain("       Name: ", "Name");
    controller.plain("       PNPDeviceID: ", "PNPDeviceID");
    controller.plain([&] {
      StatusText& status = controller.status();
      status.PowerManagementCapabilities(controller.value("PowerManagementCapabilities"));
      status.ProtocolSupported(controller.value("ProtocolSupported"));
      return "       ProtocolSupported: " + status.text;
    });
    controller.plain("       Status: ", "status");
  });
}

void printFloppyControllers(Report& report, ResultSet& results) {
  report.lines.bold("Floppy Controller:");
  report.each(results, "Select * from Win32_FloppyController", [](const ObjectLines& controller) {
    controller.bold("   ", "Caption");
    controller.boldWord("       Availability: ", "Availability", &StatusText::Availability);
    controller.boldWord("       ConfigManagerErrorCode: ", "ConfigManagerErrorCode",
                        &StatusText::ConfigManagerErrorCode);
  });
}

}  // namespace veltrin
