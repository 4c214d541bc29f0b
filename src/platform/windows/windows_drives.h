// SPDX-License-Identifier: GPL-3.0-or-later
// The room on the drives of Windows.
#pragma once

#include <string>

#include "platform/drives.h"

namespace veltrin {

// A drive without a medium fails at once: the system does not ask the user for one.
class WindowsDrives : public Drives {
 public:
  bool GetDiskFreeSpaceA(const std::string& Root, std::uint32_t& SectorsPerCluster,
                         std::uint32_t& BytesPerSector, std::uint32_t& FreeClusters,
                         std::uint32_t& TotalClusters) override;
  bool GetDiskFreeSpaceExA(const std::string& Root, std::uint64_t& FreeToCaller,
                           std::uint64_t& Total, std::uint64_t& Free) override;
};

}  // namespace veltrin
