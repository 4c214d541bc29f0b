// SPDX-License-Identifier: GPL-3.0-or-later
#include "sysinfo/report_catalogue.h"

#include "sysinfo/modTasks.h"
#include "sysinfo/report_sections.h"
#include "text/statement.h"

namespace veltrin {
namespace {

// What the check box of the peripherals stands for.
void printPeripherals(Report& report, ResultSet& results) {
  printSound(report, results);
  printKeyboards(report, results);
  printMice(report, results);
  printPrinters(report, results);
  printNetCards(report);
  printUsb(report, results);
  printSignedDrivers(report, results);
}

// The machine itself.
void printHardware(Report& report, ResultSet& results, DosApp& buffers) {
  const ReportLines& lines = report.lines;
  printOperatingSystem(report);
  if (report.wants(ReportBox::Processors)) {
    lines.gap();
    printProcessors(report, results);
    printCache(report, results);
  }
  if (report.wants(ReportBox::Memory)) {
    lines.gap();
    printMemory(report);
  }
  if (report.wants(ReportBox::HardDrives)) skip([&] { buffers.TEST("2"); });
  if (report.wants(ReportBox::Board)) {
    lines.gap();
    printMotherBoard(report, results);
    printHardDriveControllers(report, results);
    printFloppyControllers(report, results);
  }
  if (report.wants(ReportBox::Video)) {
    lines.gap();
    printVideoCards(report, results);
    printMonitors(report, results);
  }
  if (report.wants(ReportBox::Peripherals)) {
    lines.gap();
    printPeripherals(report, results);
  }
}

// What runs on it. The computer's own section stands between two gaps, printed or not.
void printSystem(Report& report, ResultSet& results) {
  const ReportLines& lines = report.lines;
  lines.gap();
  if (report.wants(ReportBox::System)) systeminfo(report);
  lines.gap();
  if (report.wants(ReportBox::Desktop)) {
    lines.gap();
    printDesktops(report, results);
  }
  if (report.wants(ReportBox::Startup)) {
    lines.gap();
    printStartup(report, results);
    modTasks(report.program, &report.window);
  }
  if (report.wants(ReportBox::Drivers)) {
    lines.gap();
    printSystemDrivers(report, results);
  }
}

void printRecords(Report& report, ResultSet& results, const ListBox& hotfixes) {
  const ReportLines& lines = report.lines;
  if (report.wants(ReportBox::Software)) {
    lines.gap();
    printSoftware(report, results);
  }
  if (report.wants(ReportBox::Users)) {
    lines.gap();
    printUsers(report, results);
  }
  if (report.wants(ReportBox::Hotfixes)) {
    lines.gap();
    printHotfixes(report, hotfixes);
  }
  if (report.wants(ReportBox::Errors)) {
    lines.gap();
    printErrors(report, results);
  }
}

}  // namespace

// All sections share one set of results but that of the computer; the first stage has
// one of its own, and the drives ask by themselves.
void printReport(Report& report, DosApp& buffers) {
  ResultSet results = report.resultSet();
  printHardware(report, results, buffers);
  printSystem(report, results);
  printRecords(report, results, buffers.List3);
}

}  // namespace veltrin
