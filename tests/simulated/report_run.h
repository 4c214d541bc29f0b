// SPDX-License-Identifier: GPL-3.0-or-later
// The windows of the report on the simulated platform.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "simulated/system_summary_run.h"
#include "sysinfo/frmPrint.h"
#include "sysinfo/frmSysInfo.h"

namespace veltrin {

class ReportRun : public SystemSummaryRun {
 protected:
  ReportRun() {
    simulation.environment.variables["Computername"] = "KITCHEN";
    simulation.environment.variables["NUMBER_OF_PROCESSORS"] = "4";
  }

  frmSysInfo& open() {
    window = program.show<frmSysInfo>();
    return *window;
  }

  ReportValues& report() { return program.shared<ReportValues>(); }

  // Texts of the list's lines.
  Lines lines() const {
    Lines texts;
    const ListView& list = window->SYSView.ListView1;
    for (std::size_t index = 0; index < list.count(); ++index)
      texts.push_back(list.line(index).Text);
    return texts;
  }

  std::vector<std::string> messages() const {
    std::vector<std::string> texts;
    for (const auto& message : simulation.desktop.messages) texts.push_back(message.text);
    return texts;
  }

  std::shared_ptr<frmSysInfo> window;
};

}  // namespace veltrin
