// SPDX-License-Identifier: GPL-3.0-or-later
// What the sections of the system's report cost on this machine.
#pragma once

#include <array>
#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "figures.h"
#include "own_folder.h"
#include "platform/wmi.h"
#include "real_report.h"
#include "table.h"
#include "tool_run.h"

namespace veltrin {

// The classes that the report asks for, and how many objects it takes of each at most.
struct ReportClass {
  const char* name;
  std::size_t most = static_cast<std::size_t>(-1);
};
inline constexpr std::array kReportClasses{
    ReportClass{"Win32_Account"},        ReportClass{"Win32_BaseBoard"},
    ReportClass{"Win32_CacheMemory"},    ReportClass{"Win32_ComputerSystem"},
    ReportClass{"Win32_Desktop"},        ReportClass{"Win32_DesktopMonitor"},
    ReportClass{"Win32_DiskDrive"},      ReportClass{"Win32_FloppyController"},
    ReportClass{"Win32_IDEController"},  ReportClass{"Win32_Keyboard"},
    ReportClass{"Win32_LogicalDisk"},    ReportClass{"Win32_NTLogEvent", 201},
    ReportClass{"Win32_PhysicalMemory"}, ReportClass{"Win32_PnPSignedDriver"},
    ReportClass{"Win32_PointingDevice"}, ReportClass{"Win32_Printer"},
    ReportClass{"Win32_Processor"},      ReportClass{"Win32_Product"},
    ReportClass{"Win32_SoundDevice"},    ReportClass{"Win32_StartupCommand"},
    ReportClass{"Win32_SystemDriver"},   ReportClass{"Win32_SystemSlot"},
    ReportClass{"Win32_USBHub"},         ReportClass{"Win32_VideoController"},
};

// Takes the objects of a class, as many as the report does. Returns how many there were.
inline std::size_t walk(Wmi& wmi, const ReportClass& wanted) {
  const auto objects = wmi.connect("winmgmts:\\\\.\\root\\cimv2")
                           ->ExecQuery(std::string("Select * from ") + wanted.name, std::nullopt);
  std::size_t count = 0;
  while (count < wanted.most && objects->next()) ++count;
  return count;
}

inline void printRow(const std::string& what, const Cost& cost, std::size_t count,
                     const char* unit) {
  std::printf("  %-24s %8.1f ms, processor %8.1f ms, %6zu %s\n", what.c_str(), cost.wall,
              cost.processor, count, unit);
}

inline void printClassTimes(Wmi& wmi, int runs, Table& table) {
  std::printf("the classes of which the report is made:\n");
  double most = 0;
  std::string dearest;
  for (const ReportClass& each : kReportClasses) {
    std::vector<Cost> costs;
    costs.reserve(static_cast<std::size_t>(runs));
    std::size_t count = 0;
    for (int run = 0; run < runs; ++run) costs.push_back(costOf([&] { count = walk(wmi, each); }));
    const Cost cost = median(costs);
    printRow(each.name, cost, count, "objects");
    if (cost.wall < most) continue;
    most = cost.wall;
    dearest = std::string("`") + each.name + "`, " + std::to_string(count) + " objects";
  }
  table.add({"The dearest of the " + std::to_string(kReportClasses.size()) +
                 " classes of the report here, " + dearest,
             most, "ms", "", std::nullopt, std::nullopt});
}

// Each box ticked alone, and none: that is the tool, and what every report begins with. False
// when a report is empty.
inline bool printBoxTimes(const BenchFolder& folder, const std::filesystem::path& systemInfo,
                          int runs) {
  std::printf("reports of one section, from the opening of the window to the last painting:\n");
  constexpr std::size_t kBoxes = std::tuple_size_v<RealReport::Boxes>;
  for (std::size_t box = 0; box <= kBoxes; ++box) {
    RealReport::Boxes boxes{};
    if (box < kBoxes) boxes[box] = true;
    std::vector<Cost> costs;
    std::size_t lines = 0;
    std::string caption = "none of them";
    for (int run = 0; run < runs; ++run) {
      RealReport report(folder, systemInfo);
      costs.push_back(costOf([&] {
        report.open();
        report.run(boxes);
      }));
      lines = report.lines();
      if (box < kBoxes) caption = report.captionOf(box);
    }
    printRow(caption, median(costs), lines, "lines");
    if (lines == 0) return false;
  }
  return true;
}

// False when something of it does not work.
inline bool printSectionTimes(const std::filesystem::path& systemInfo, int runs, Table& table) {
  std::vector<Cost> costs;
  std::size_t bytes = 0;
  for (int run = 0; run < runs; ++run) {
    const auto tool = runTool({systemInfo.string()});
    if (!tool || tool->bytes == 0) return false;
    costs.push_back(tool->cost);
    bytes = tool->bytes;
  }
  std::printf("the summary:\n");
  printRow("systeminfo", median(costs), bytes, "bytes");
  const BenchFolder folder("sections");
  {
    // The settings are written by the first report, whatever its sections.
    RealReport first(folder, systemInfo);
    first.open();
    first.run(RealReport::allBoxes());
    printClassTimes(first.platform().wmi, runs, table);
  }
  return printBoxTimes(folder, systemInfo, runs);
}

}  // namespace veltrin
