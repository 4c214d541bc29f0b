// SPDX-License-Identifier: GPL-3.0-or-later
// The program's summary of the machine.
#pragma once

#include <array>
#include <string>

namespace veltrin {

// Plain texts as the system tells them. All start empty, nothing clears them, and a
// field that the last reading did not tell keeps its old value.
struct SystemSummary {
  struct NetCard {
    std::string Name;
    std::string Connection;
    std::string Dhcp;
    std::string Ip;
  };

  std::string OsName;  // the product identifier
  std::string TotalRam;
  std::string AvailableRam;
  std::string WinVersion;
  std::string CpuNum;
  std::string CpuCores;
  std::string MbModel;
  std::string BiosVersion;
  std::string Location;
  std::string MbMan;
  std::string BootDevice;
  std::string OsVersion;
  std::string Installed;
  std::string BootTime;
  std::string UpTime;
  std::string PageFile;
  std::string Domain;
  std::string HotfixWidth;
  std::array<NetCard, 3> NetCards;
  std::array<std::string, 4> MemSlot;
};

}  // namespace veltrin
