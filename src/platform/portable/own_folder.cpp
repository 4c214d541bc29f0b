// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portable/own_folder.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#ifdef _WIN32
#include <memory>
#include <string>
#include <windows.h>

#include "platform/windows/code_page.h"
#endif

namespace veltrin {
namespace {

#ifdef _WIN32

// Longest path that the system knows, in UTF-16 units with the closing NUL.
constexpr DWORD kLongestSystemPath = 32768;

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

// Where a path really lies. What is missing counts as it is written: nothing can be made
// behind a folder that is not there. Empty for a link to nothing, for a circle of them, and
// where the system does not tell.
std::filesystem::path placeOf(const std::string& path) {
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

#else

// Links in a row that are followed before they count as a circle.
constexpr int kLinkLimit = 40;

// The last link is followed by hand: one that leads to nothing still tells where a new file
// would be made. Empty for a circle.
std::filesystem::path behindLinks(std::filesystem::path path) {
  for (int links = 0; links < kLinkLimit; ++links) {
    std::error_code noLink;
    const std::filesystem::path target = std::filesystem::read_symlink(path, noLink);
    if (noLink) return path;
    path = path.parent_path() / target;  // an absolute target stands alone
  }
  return {};
}

// Where a path really lies. What is missing counts as it is written: nothing can be made
// behind a folder that is not there. Empty where the system does not tell.
std::filesystem::path placeOf(const std::string& path) {
  const std::filesystem::path target = behindLinks(path);
  const std::filesystem::path named = target.has_filename() ? target : target.parent_path();
  if (named.empty()) return {};
  std::error_code failure;
  const std::filesystem::path place = std::filesystem::weakly_canonical(named, failure);
  return failure ? std::filesystem::path() : place;
}

#endif

}  // namespace

bool staysBelow(const std::string& folder, const std::string& path) {
  const std::filesystem::path own = placeOf(folder);
  const std::filesystem::path place = placeOf(path);
  if (own.empty() || place.empty()) return false;
  return std::mismatch(own.begin(), own.end(), place.begin(), place.end()).first == own.end();
}

}  // namespace veltrin
