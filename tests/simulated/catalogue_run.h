// SPDX-License-Identifier: GPL-3.0-or-later
// The report of the system on the simulated platform: a window whose user ticks sections and
// presses the button, and a service that answers what a test tells.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "simulated/system_summary_run.h"
#include "sysinfo/frmSysInfo.h"
#include "sysinfo/report.h"

namespace veltrin {

// One line of the report, as its list shows it.
struct ReportLine {
  std::string text;
  int picture = 0;
  std::string colour;
  bool bold = false;
  friend bool operator==(const ReportLine&, const ReportLine&) = default;
  friend std::ostream& operator<<(std::ostream& out, const ReportLine& line) {
    return out << '"' << line.text << "\" picture " << line.picture << ' ' << line.colour
               << (line.bold ? " bold" : "");
  }
};
using ReportText = std::vector<ReportLine>;

inline ReportLine headingLine(const std::string& text, int picture) {
  return {text, picture, "192,64,0", true};
}
inline ReportLine boldLine(const std::string& text) { return {text, 0, "0,128,0", true}; }
inline ReportLine plainLine(const std::string& text, int picture = 0) {
  return {text, picture, "0,128,0", false};
}
inline const ReportLine kGap = plainLine("    ");

// Lines one behind the other.
inline ReportText joinedLines(const std::vector<ReportText>& parts) {
  ReportText lines;
  for (const ReportText& part : parts) lines.insert(lines.end(), part.begin(), part.end());
  return lines;
}

// What every report begins with when nothing is known of the system.
inline ReportText unknownSystem() {
  return {headingLine("Operating System", 26), boldLine("OS:    "),
          plainLine("   Installed:    BootTime: "), plainLine("   Product ID: ")};
}

// The classes that the whole report asks for, in its order.
inline const std::vector<std::string> kReportClasses{
    "Win32_PhysicalMemory",   "Win32_Processor",       "Win32_CacheMemory",
    "Win32_BaseBoard",        "Win32_SystemSlot",      "Win32_IDEController",
    "Win32_FloppyController", "Win32_videocontroller", "Win32_DesktopMonitor",
    "Win32_SoundDevice",      "Win32_Keyboard",        "Win32_PointingDevice",
    "Win32_Printer",          "Win32_USBHub",          "Win32_PnPSignedDriver",
    "Win32_ComputerSystem",   "Win32_Desktop",         "Win32_StartupCommand",
    "Win32_SystemDriver",     "Win32_Product",         "Win32_Account",
    "Win32_NTLogEvent"};

// The service answers each query, and finds nothing unless a test tells of something.
class CatalogueRun : public SystemSummaryRun {
 protected:
  CatalogueRun() {
    simulation.environment.variables = {
        {"WinDir", "C:\\Windows"}, {"Computername", "KITCHEN"}, {"NUMBER_OF_PROCESSORS", "4"}};
    for (const std::string& name : kReportClasses) answer("Select * from " + name, {});
    window = open();
  }

  // A report window in which nothing is ticked.
  std::shared_ptr<frmSysInfo> open() {
    auto opened = program.show<frmSysInfo>();
    for (CheckBox& box : opened->Showme) box.value = kUnchecked;
    return opened;
  }

  void tick(std::initializer_list<ReportBox> boxes) {
    for (const ReportBox box : boxes) {
      window->Showme[static_cast<std::size_t>(box)].value = kChecked;
    }
  }

  void tickAll() {
    for (CheckBox& box : window->Showme) box.value = kChecked;
  }

  void answer(const std::string& query, const std::vector<WmiObject>& objects) {
    simulation.wmi.answers[query] = objects;
  }

  // The user presses the button; returns the report.
  ReportText press() {
    simulation.desktop.click(window->Command1);
    return lines(*window);
  }

  static ReportText lines(const frmSysInfo& report) {
    ReportText lines;
    const ListView& list = report.SYSView.ListView1;
    for (std::size_t index = 0; index < list.count(); ++index) {
      const ListLine& line = list.line(index);
      lines.push_back({line.Text, line.SmallIcon, colourText(line.ForeColor), line.Bold});
    }
    return lines;
  }

  // The report with nothing known of the system, and one section ticked that stands before
  // the two gaps, between them or behind them.
  static ReportText before(const ReportText& section) {
    return joinedLines({unknownSystem(), section, {kGap, kGap}});
  }
  static ReportText between(const ReportText& section) {
    return joinedLines({unknownSystem(), {kGap}, section, {kGap}});
  }
  static ReportText behind(const ReportText& section) {
    return joinedLines({unknownSystem(), {kGap, kGap}, section});
  }

  std::shared_ptr<frmSysInfo> window;

 private:
  static std::string colourText(ColourCode colour) {
    const auto part = [&](int shift) { return std::to_string(colour >> shift & 0xFF); };
    return part(0) + "," + part(8) + "," + part(16);
  }
};

}  // namespace veltrin
