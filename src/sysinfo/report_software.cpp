// SPDX-License-Identifier: GPL-3.0-or-later
// The sections of the report about programs, users and events.
#include <memory>

#include "frame/result_file.h"
#include "sysinfo/report_sections.h"
#include "text/statement.h"

namespace veltrin {
namespace {

constexpr std::size_t kMostEvents = 201;

}  // namespace

void printDesktops(Report& report, ResultSet& results) {
  report.lines.heading("DeskTOP", Picture::Desktop);
  report.each(results, "Select * from Win32_Desktop", [](const ObjectLines& desktop) {
    desktop.plain("", "Description");
    desktop.plain([&] { return "Name: " + desktop.text("Name") + " "; });
    desktop.plain("    BorderWidth: ", "BorderWidth");
    desktop.plain("    CoolSwitch: ", "CoolSwitch");
    desktop.plain("    CursorBlinkRate: ", "CursorBlinkRate");
    desktop.plain("    DragFullWindows: ", "DragFullWindows");
    desktop.plain("    GridGranularity: ", "GridGranularity");
    desktop.plain("    IconSpacing: ", "IconSpacing");
    desktop.plain("    IconTitleSize: ", "IconTitleSize");
    desktop.plain("    IconTitleWrap: ", "IconTitleWrap");
    desktop.plain("    Pattern: ", "Pattern");
    desktop.plain("    ScreenSaverActive: ", "ScreenSaverActive");
    desktop.plain("    ScreenSaverExecutable: ", "ScreenSaverExecutable");
    desktop.plain("    ScreenSaverSecure: ", "ScreenSaverSecure");
    desktop.plain("    Wallpaper: ", "wallpaper");
    desktop.plain("    WallpaperStretched: ", "WallpaperStretched");
    desktop.plain("    WallpaperTiled: ", "WallpaperTiled");
  });
}

void printStartup(Report& report, ResultSet& results) {
  report.lines.heading("Start UP", Picture::Programs);
  report.each(results, "Select * from Win32_StartupCommand", [](const ObjectLines& command) {
    command.plain("Name: ", "Caption");  // the name too is the caption
    command.plain("    Caption: ", "Caption");
    command.plain("    Description: ", "Description");
    command.plain("    Location: ", "Location");
  });
}

void printSystemDrivers(Report& report, ResultSet& results) {
  report.lines.heading("System Drivers", Picture::Programs);
  report.each(results, "Select * from Win32_SystemDriver", [](const ObjectLines& driver) {
    driver.plain("", "Name");
    driver.plain("    Name: ", "Caption");
    driver.plain("    PathName: ", "PathName");
    driver.plain("    StartMode: ", "StartMode");
  });
}

// Asked of this machine, and not by its name.
void printSoftware(Report& report, ResultSet& results) {
  report.lines.heading("Installed Software", Picture::Programs);
  results.ExecQueryHere("Select * from Win32_Product");
  results.forEach([&](const WmiObject& object) {
    const ObjectLines product(report, object);
    product.bold("", "Name");
    product.plain("    Version: ", "Version");
  });
}

void printUsers(Report& report, ResultSet& results) {
  report.lines.heading("Users", Picture::UsersAndEvents);
  report.each(results, "Select * from Win32_Account", [](const ObjectLines& account) {
    account.bold("", "Caption");
    account.plain("    Description: ", "Description");
    account.plain("    Domain: ", "domain");
    account.plain("    Account: ", "LocalAccount");
    account.plain("    Name: ", "Name");
    account.plain("    SID: ", "SID");
    account.plain("    SID Type: ", "SIDType");
  });
}

// The list has those of all reports so far.
void printHotfixes(const Report& report, const ListBox& hotfixes) {
  report.lines.heading("HOT Fixes");
  for (std::size_t index = 0; index < hotfixes.count(); ++index) {
    report.lines.plain("HotFix" + std::to_string(index + 1) + ": " + hotfixes.item(index));
  }
}

// Of all logs together, as many as are enough; the service is not asked for the rest. At the
// end a result that is still being saved is closed.
void printErrors(Report& report, ResultSet& results) {
  report.lines.heading("Windows Errors", Picture::UsersAndEvents);
  results.ExecQuery("Select * from Win32_NTLogEvent");
  results.forFirst(kMostEvents, [&](const WmiObject& object) {
    const ObjectLines event(report, object);
    event.bold("Category: ", "Category");
    event.plain("    EventCode: ", "EventCode");
    event.plain("    Message: ", "Message");
  });
  const auto& stream = report.program.shared<ResultValues>().ResultStream;
  if (stream) skip([&] { stream->Close(); });
}

}  // namespace veltrin
