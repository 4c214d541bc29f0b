// SPDX-License-Identifier: GPL-3.0-or-later
// The system report's window on the simulated platform, and its lines as short texts.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "support/simulation.h"
#include "sysinfo/frmSysInfo.h"

namespace veltrin {

using ReportLines = std::vector<std::string>;

class ReportedRun : public ::testing::Test {
 protected:
  // The window's lines, each behind the number of its picture and a word for how it looks:
  // "15 drive: C:" in the drives' colour and bold, "0 bold: x.exe" and "0 plain: x.dll" in the
  // usual one.
  static ReportLines linesOf(const frmSysInfo& window) {
    ReportLines lines;
    const ListView& list = window.SYSView.ListView1;
    for (std::size_t index = 0; index < list.count(); ++index) {
      const ListLine& line = list.line(index);
      lines.push_back(std::to_string(line.SmallIcon) + " " + lookOf(line) + ": " + line.Text);
    }
    return lines;
  }

  ReportLines lines() const { return linesOf(*window); }

  Simulation simulation;
  Program& program = simulation.program();
  std::shared_ptr<frmSysInfo> window = program.show<frmSysInfo>();

 private:
  static std::string lookOf(const ListLine& line) {
    constexpr ColourCode kGreen = 0x008000;
    constexpr ColourCode kOrange = 0x0040C0;
    if (line.ForeColor == kOrange && line.Bold) return "drive";
    if (line.ForeColor == kGreen) return line.Bold ? "bold" : "plain";
    return "unknown";
  }
};

}  // namespace veltrin
