// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portable/file_names.h"

#include <algorithm>
#include <array>

#include "text/statement.h"
#include "text/strings.h"

namespace veltrin {
namespace {

constexpr std::string_view kForbidden = "\\/:*?\"<>|";

bool isForbidden(char c) {
  return static_cast<unsigned char>(c) < 0x20 || kForbidden.find(c) != std::string_view::npos;
}

// Whether `text` is the number of a serial or parallel port. The superscripts
// 1, 2 and 3 are UTF-8 for U+00B9, U+00B2 and U+00B3.
bool isPortNumber(std::string_view text) {
  constexpr std::array<std::string_view, 3> kSuperscripts = {"\xC2\xB9", "\xC2\xB2", "\xC2\xB3"};
  if (text.size() == 1) return text[0] >= '1' && text[0] <= '9';
  return std::find(kSuperscripts.begin(), kSuperscripts.end(), text) != kSuperscripts.end();
}

// What stands before the first dot counts, without blanks at its end.
bool isDeviceName(std::string_view name) {
  const std::string base = Trim(name.substr(0, name.find('.')));
  constexpr std::array<std::string_view, 4> kDevices = {"con", "prn", "aux", "nul"};
  for (const std::string_view device : kDevices) {
    if (equalIgnoringCase(base, device)) return true;
  }
  const std::string_view kind = std::string_view(base).substr(0, 3);
  if (!equalIgnoringCase(kind, "com") && !equalIgnoringCase(kind, "lpt")) return false;
  return isPortNumber(std::string_view(base).substr(3));
}

}  // namespace

bool acceptableFileName(std::string_view name) {
  if (name.empty() || name.back() == ' ' || name.back() == '.') return false;
  if (std::any_of(name.begin(), name.end(), isForbidden)) return false;
  return lengthInUtf16(name) <= kLongestPath && !isDeviceName(name);
}

std::size_t lengthInUtf16(std::string_view text) {
  std::size_t length = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    const bool continues = (byte & 0xC0) == 0x80;
    const bool startsPair = byte >= 0xF0;
    if (!continues) length += startsPair ? 2 : 1;
  }
  return length;
}

std::string_view requireFileName(std::string_view folder, std::string_view name) {
  const bool acceptable = name.substr(0, 1) == "\\" && acceptableFileName(name.substr(1)) &&
                          lengthInUtf16(folder) + lengthInUtf16(name) <= kLongestPath;
  if (!acceptable) throw StatementFailed("Bad file name or number", kBadFileName);
  return name.substr(1);
}

}  // namespace veltrin
