// SPDX-License-Identifier: GPL-3.0-or-later
// What the windows of the system report share.
#pragma once

#include <array>
#include <memory>
#include <string>

#include "sysinfo/status_text.h"

namespace veltrin {

class frmSysInfo;

struct ReportValues {
  // The window in which the report is read, while it is loaded. A report under way keeps to
  // the window that it was begun in.
  std::weak_ptr<frmSysInfo> window;

  std::string ComputerName;
  int PrintSource = 0;           // 1: the report is what is to be printed
  std::string PrintOrientation;  // "1" upright, "2" across; as last read from the settings

  // The processors of the video cards that the reports so far found. A filled one is never
  // emptied.
  std::array<std::string, 4> VideoProcessors;

  // The working text of all reports; nothing clears it between them.
  StatusText Status;
};

}  // namespace veltrin
