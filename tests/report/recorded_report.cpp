// SPDX-License-Identifier: GPL-3.0-or-later
#include "report/recorded_report.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>

#include "console/sysinfo/systeminfo.h"
#include "platform/linux/linux_drives.h"
#include "platform/linux/linux_process_list.h"
#include "platform/linux/linux_wmi.h"
#include "report/report_text.h"
#include "support/simulation.h"
#include "sysinfo/frmSysInfo.h"

namespace veltrin {
namespace {

class KeptOutput : public Output {
 public:
  bool write(std::string_view text) override {
    kept += text;
    return true;
  }
  void letReaderCatchUp() override {}

  std::string kept;
};

// What the tool prints on the recorded machine.
std::string toldByTool(const RecordedMachine& recorded) {
  KeptOutput output;
  const FileTree files = recorded.files();
  EXPECT_EQ(SystemInfo(files, recorded.machine, output).run({}), kSystemInfoTold);
  return output.kept;
}

// The parts of Linux, on the recorded machine.
class RecordedParts {
 public:
  explicit RecordedParts(const RecordedMachine& recorded)
      : wmi({recorded.files(), std::make_shared<FakeMachine>(recorded.machine),
             [printers = recorded.printers] { return printersOf(printers); },
             [&recorded](const std::string& schema, const std::string& key) {
               return recorded.setting(schema, key);
             }}),
        drives(recorded.files(), std::make_shared<FakeMachine>(recorded.machine)),
        processList(recorded.files()) {}

  LinuxWmi wmi;
  LinuxDrives drives;
  LinuxProcessList processList;

 private:
  static std::vector<PrinterFacts> printersOf(
      const std::vector<std::pair<std::string, std::string>>& printers) {
    std::vector<PrinterFacts> facts;
    facts.reserve(printers.size());
    for (const auto& [name, description] : printers) facts.push_back({name, description});
    return facts;
  }
};

// As the environment of Linux tells it: the name without its domain, in capitals.
std::string computerName(const RecordedMachine& recorded) {
  const std::string host = recorded.machine.kernelFacts.host;
  return UCase(host.substr(0, host.find('.')));
}

std::string processorCount(const RecordedMachine& recorded) {
  std::size_t count = 0;
  recorded.files().readLines("/proc/cpuinfo", [&](std::string_view line) {
    count += line.starts_with("processor\t") ? 1 : 0;
  });
  return std::to_string(count);
}

}  // namespace

std::string wholeReport(const RecordedMachine& recorded) {
  RecordedParts parts(recorded);
  Simulation simulation({&parts.wmi, &parts.drives, &parts.processList});
  simulation.environment.variables["Computername"] = computerName(recorded);
  simulation.environment.variables["NUMBER_OF_PROCESSORS"] = processorCount(recorded);
  simulation.processes.tool = [told = toldByTool(recorded)](const std::string&) {
    return std::optional(std::vector<ToolWrite>{{20, told}});
  };
  const auto window = simulation.program().show<frmSysInfo>();
  for (CheckBox& box : window->Showme) box.value = kChecked;
  simulation.desktop.click(window->Command1);
  std::string report;
  const ListView& list = window->SYSView.ListView1;
  for (std::size_t index = 0; index < list.count(); ++index) {
    report += textOf(list.line(index)) + "\n";
  }
  EXPECT_EQ(simulation.loop.gate().escapedFailures(), 0);
  return report;
}

std::string reportFile(const std::string& folder, const std::string& machine) {
  return folder + "/" + machine + ".report";
}

int writeReports(const std::string& folder) {
  int code = EXIT_SUCCESS;
  for (const std::string& machine : recordedMachines()) {
    const RecordedMachine recorded(recordingsFolder() + machine + ".machine");
    const std::string path = reportFile(folder, machine);
    bool isWritten = recorded.mistakes().empty() && recorded.lacks().empty();
    if (isWritten) {
      std::ofstream file(path, std::ios::binary);
      file << wholeReport(recorded);
      file.close();
      isWritten = file.good();
    }
    std::printf("%s %s\n", isWritten ? "written:" : "NOT written:", path.c_str());
    if (!isWritten) code = EXIT_FAILURE;
  }
  return code;
}

}  // namespace veltrin
