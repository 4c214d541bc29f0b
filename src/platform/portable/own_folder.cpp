// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portable/own_folder.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#ifdef _WIN32
#include "platform/windows/code_page.h"
#endif

namespace veltrin {
namespace {

// Links in a row that are followed before they count as a circle.
constexpr int kLinkLimit = 40;

std::filesystem::path nativePath(const std::string& path) {
#ifdef _WIN32
  return toWide(path);
#else
  return path;
#endif
}

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
std::filesystem::path placeOf(const std::filesystem::path& path) {
  std::error_code failure;
  const std::filesystem::path named = path.has_filename() ? path : path.parent_path();
  const std::filesystem::path place = std::filesystem::weakly_canonical(named, failure);
  return failure ? std::filesystem::path() : place;
}

}  // namespace

bool staysBelow(const std::string& folder, const std::string& path) {
  const std::filesystem::path own = placeOf(nativePath(folder));
  const std::filesystem::path target = behindLinks(nativePath(path));
  const std::filesystem::path place = target.empty() ? target : placeOf(target);
  if (own.empty() || place.empty()) return false;
  return std::mismatch(own.begin(), own.end(), place.begin(), place.end()).first == own.end();
}

}  // namespace veltrin
