// SPDX-License-Identifier: GPL-3.0-or-later
#include <system_error>

#include "platform/portable/final_place.h"

namespace veltrin {
namespace {

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

}  // namespace

std::filesystem::path finalPlace(const std::string& path) {
  const std::filesystem::path target = behindLinks(path);
  const std::filesystem::path named = target.has_filename() ? target : target.parent_path();
  if (named.empty()) return {};
  std::error_code failure;
  const std::filesystem::path place = std::filesystem::weakly_canonical(named, failure);
  return failure ? std::filesystem::path() : place;
}

}  // namespace veltrin
