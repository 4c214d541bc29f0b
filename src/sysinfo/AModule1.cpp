// SPDX-License-Identifier: GPL-3.0-or-later
#include "sysinfo/AModule1.h"

namespace veltrin {

void FreeSpace(Program& program, const std::string& Root) {
  std::uint64_t freeToCaller = 0;
  std::uint64_t total = 0;
  std::uint64_t free = 0;
  program.platform.drives.GetDiskFreeSpaceExA(Root, freeToCaller, total, free);
  auto& values = program.shared<DriveValues>();
  values.FreeBytes = free;
  values.TotalBytes = total;
}

}  // namespace veltrin
