// SPDX-License-Identifier: GPL-3.0-or-later
// The sections of the report that ask the machine about itself, one routine each. A section
// without objects is its heading alone.
#pragma once

#include "forms/list_box.h"
#include "sysinfo/report.h"

namespace veltrin {

// The summary and the processors.
void printOperatingSystem(const Report& report);
void printProcessors(Report& report, ResultSet& results);
void printCache(Report& report, ResultSet& results);
void printMemory(const Report& report);

// The board and what is built into it.
void printMotherBoard(Report& report, ResultSet& results);
void printHardDriveControllers(Report& report, ResultSet& results);
void printFloppyControllers(Report& report, ResultSet& results);

// What is connected to it.
void printVideoCards(Report& report, ResultSet& results);
void printMonitors(Report& report, ResultSet& results);
void printSound(Report& report, ResultSet& results);
void printKeyboards(Report& report, ResultSet& results);
void printMice(Report& report, ResultSet& results);
void printPrinters(Report& report, ResultSet& results);
void printNetCards(const Report& report);
void printUsb(Report& report, ResultSet& results);
void printSignedDrivers(Report& report, ResultSet& results);

// The computer as a whole.
void systeminfo(Report& report);

// What is installed and set, and what went wrong.
void printDesktops(Report& report, ResultSet& results);
void printStartup(Report& report, ResultSet& results);
void printSystemDrivers(Report& report, ResultSet& results);
void printSoftware(Report& report, ResultSet& results);
void printUsers(Report& report, ResultSet& results);
void printHotfixes(const Report& report, const ListBox& hotfixes);
void printErrors(Report& report, ResultSet& results);

}  // namespace veltrin
