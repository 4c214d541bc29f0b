// SPDX-License-Identifier: GPL-3.0-or-later
#include <memory>
#include <string>
#include <system_error>
#include <windows.h>

#include "platform/portable/final_place.h"
#include "platform/windows/code_page.h"
#include "platform/windows/longest_system_path.h"

namespace veltrin {
namespace {

// The path behind all links of a file or folder, by the name of its device, which also disks
// have that no letter leads to, without a separator at the end. Empty where there is none, or
// where it cannot be reached.
std::filesystem::path finalPath(const std::filesystem::path& path) {
  const HANDLE opened =
      CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                  OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (opened == INVALID_HANDLE_VALUE) return {};
  const std::unique_ptr<void, decltype(&CloseHandle)> closing(opened, CloseHandle);
  std::wstring place(kLongestSystemPath, L'\0');
  const DWORD length =
      GetFinalPathNameByHandleW(opened, place.data(), kLongestSystemPath, VOLUME_NAME_NT);
  place.resize(length < kLongestSystemPath ? length : 0);
  if (place.ends_with(L'\\')) place.pop_back();  // of a disk's root
  return place;
}

}  // namespace

std::filesystem::path finalPlace(const std::string& path) {
  std::error_code failure;
  std::filesystem::path there = std::filesystem::absolute(toWide(path), failure);
  std::filesystem::path missing;
  while (!failure) {
    const std::filesystem::path place = finalPath(there);
    if (!place.empty()) return missing.empty() ? place : place / missing;
    const bool isThere = GetFileAttributesW(there.c_str()) != INVALID_FILE_ATTRIBUTES;
    if (isThere || !there.has_relative_path()) return {};
    if (there.has_filename()) {
      missing = missing.empty() ? there.filename() : there.filename() / missing;
    }
    there = there.parent_path();
  }
  return {};
}

}  // namespace veltrin
