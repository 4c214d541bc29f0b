// What the windows of the system report share.
#pragma once

#include <memory>
#include <string>

namespace veltrin {

class frmSysInfo;

struct ReportValues {
  // The window in which the report is read, while it is loaded. A report under way keeps to
  // the window that it was begun in.
  std::weak_ptr<frmSysInfo> window;

  std::string ComputerName;
  int PrintSource = 0;           // 1: the report is what is to be printed
  std::string PrintOrientation;  // "1" upright, "2" across; as last read from the settings
};

}  // namespace veltrin
