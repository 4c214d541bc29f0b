// SPDX-License-Identifier: GPL-3.0-or-later
// The sections of the report about the system, its processors and its memory.
#include "sysinfo/report_sections.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace veltrin {
namespace {

// The cache tells the size of one core's third level.
std::string ofAllCores(const WmiValue& size, const std::string& cores) {
  return size.isNull() ? "" : toText(size.number() * toNumber(cores));
}

// The first two caches count as the first level, and from the fifth on none has a size.
void printCacheSize(const ObjectLines& cache, int index, const std::string& cores) {
  const auto line = [&](const std::string& level, const std::string& size) {
    return level + ": " + size + " KB";
  };
  if (index <= 1) cache.plain([&] { return line("L1", cache.text("MaxCacheSize")); });
  if (index == 2) cache.plain([&] { return line("L2", cache.text("MaxCacheSize")); });
  if (index == 3) {
    cache.plain([&] { return line("L3", ofAllCores(cache.value("MaxCacheSize"), cores)); });
  }
}

}  // namespace

void printOperatingSystem(const Report& report) {
  const SystemSummary& summary = report.summary();
  const ReportLines& lines = report.lines;
  lines.heading("Operating System", Picture::OperatingSystem);
  lines.bold("OS: " + summary.WinVersion + "   " + summary.OsVersion);
  lines.plain("   Installed: " + summary.Installed +
              (summary.UpTime.empty() ? "   BootTime: " + summary.BootTime
                                      : "   UP Time: " + summary.UpTime));
  lines.plain("   Product ID: " + summary.OsName);
}

void printProcessors(Report& report, ResultSet& results) {
  const SystemSummary& summary = report.summary();
  report.lines.heading("Processors", Picture::Processor);
  report.lines.bold("Number of CPUs: " + Trim(summary.CpuNum) + "     Cores: " + summary.CpuCores);
  report.each(results, "Select * from Win32_Processor", [](const ObjectLines& processor) {
    const auto speed = [&](const char* property) {
      return grouped(Trim(processor.text(property))) + " MHz";
    };
    processor.bold("Name: ", "Name");
    processor.bold([&] { return "Speed: " + speed("MaxClockSpeed"); });
    processor.plain([&] { return "    CurrentClockSpeed: " + speed("CurrentClockSpeed"); });
    processor.plain("    Manufacturer: ", "Manufacturer");
    processor.plain("    Revision: ", "Revision");
    processor.plain("    Socket: ", "SocketDesignation");
    processor.plain("    Description: ", "Description");
    processor.plain("    DeviceID: ", "DeviceID");
    processor.plain("    DataWidth: ", "DataWidth");
    processor.plain("    L2CacheSize: ", "L2CacheSize");
    processor.plain("    ProcessorType: ", "ProcessorType");
  });
}

void printCache(Report& report, ResultSet& results) {
  report.lines.heading("Cache", Picture::Cache);
  int index = 0;
  report.each(results, "Select * from Win32_CacheMemory", [&](const ObjectLines& cache) {
    printCacheSize(cache, index, report.summary().CpuCores);
    cache.word("    Location: ", "Location", &StatusText::Location);
    cache.word("    Level: ", "Level", &StatusText::Level);
    cache.plain("    Status: ", "status");
    ++index;
  });
}

// The slots were filled when the summary was collected. A board with one module has its
// picture.
void printMemory(const Report& report) {
  const SystemSummary& summary = report.summary();
  report.lines.heading("Physical Memory",
                       summary.MemSlot[1].empty() ? Picture::Board : Picture::Memory);
  report.lines.bold("Total Memory: " + grouped(summary.TotalRam) +
                    "MB  Free: " + grouped(summary.AvailableRam) + "MB");
  for (const std::string& slot : summary.MemSlot) {
    if (!slot.empty()) report.lines.plain("   " + slot);
  }
}

}  // namespace veltrin
