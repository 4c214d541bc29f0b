// SPDX-License-Identifier: GPL-3.0-or-later
#include "lab/installation.h"

#include <algorithm>

#include "text/strings.h"

namespace veltrin::lab {
namespace {

constexpr std::string_view kSection = "[Installation]";

std::string keyOf(std::string_view line) { return LCase(Trim(line.substr(0, line.find('=')))); }

}  // namespace

std::string withSettings(std::string_view text, std::span<const Setting> settings) {
  std::string head(kSection);
  head += "\r\n";
  for (const Setting& setting : settings) head += setting.key + '=' + setting.value + "\r\n";
  std::string before;
  std::string behind;
  bool seen = false;
  bool inside = false;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size() - 1);
    const std::string_view line = text.substr(0, end + 1);
    text.remove_prefix(end + 1);
    const std::string words = Trim(line.substr(0, line.find_first_of("\r\n")));
    if (words.starts_with('[')) inside = LCase(words) == LCase(kSection);
    if (inside && words.starts_with('[') && !seen) {
      seen = true;
      continue;
    }
    const bool replaced =
        inside && std::any_of(settings.begin(), settings.end(), [&](const Setting& setting) {
          return LCase(setting.key) == keyOf(words);
        });
    if (!replaced) (seen ? behind : before) += line;
  }
  return seen ? before + head + behind : head + before;
}

}  // namespace veltrin::lab
