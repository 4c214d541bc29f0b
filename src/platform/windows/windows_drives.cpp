// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/windows_drives.h"

#include <windows.h>

#include "platform/windows/code_page.h"

namespace veltrin {
namespace {

// Keeps the system from asking the user for a medium.
class NoQuestions {
 public:
  NoQuestions() { SetThreadErrorMode(SEM_FAILCRITICALERRORS, &before_); }
  ~NoQuestions() { SetThreadErrorMode(before_, nullptr); }
  NoQuestions(const NoQuestions&) = delete;
  NoQuestions& operator=(const NoQuestions&) = delete;

 private:
  DWORD before_ = 0;
};

}  // namespace

bool WindowsDrives::GetDiskFreeSpaceA(const std::string& Root, std::uint32_t& SectorsPerCluster,
                                      std::uint32_t& BytesPerSector, std::uint32_t& FreeClusters,
                                      std::uint32_t& TotalClusters) {
  const NoQuestions quiet;
  DWORD sectors = 0;
  DWORD bytes = 0;
  DWORD free = 0;
  DWORD total = 0;
  if (!::GetDiskFreeSpaceW(toWide(Root).c_str(), &sectors, &bytes, &free, &total)) return false;
  SectorsPerCluster = sectors;
  BytesPerSector = bytes;
  FreeClusters = free;
  TotalClusters = total;
  return true;
}

bool WindowsDrives::GetDiskFreeSpaceExA(const std::string& Root, std::uint64_t& FreeToCaller,
                                        std::uint64_t& Total, std::uint64_t& Free) {
  const NoQuestions quiet;
  ULARGE_INTEGER toCaller{};
  ULARGE_INTEGER total{};
  ULARGE_INTEGER free{};
  if (!::GetDiskFreeSpaceExW(toWide(Root).c_str(), &toCaller, &total, &free)) return false;
  FreeToCaller = toCaller.QuadPart;
  Total = total.QuadPart;
  Free = free.QuadPart;
  return true;
}

}  // namespace veltrin
