// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portable/wmi_moniker.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "text/strings.h"

namespace veltrin {
namespace {

// Takes a text off the start of another, whatever the case of either.
bool take(std::string_view& text, std::string_view start) {
  if (!equalIgnoringCase(text.substr(0, start.size()), start)) return false;
  text.remove_prefix(start.size());
  return true;
}

// Takes all up to a sign, and the sign.
std::optional<std::string_view> takeUntil(std::string_view& text, char sign) {
  const std::size_t end = text.find(sign);
  if (end == std::string_view::npos) return std::nullopt;
  const std::string_view taken = text.substr(0, end);
  text.remove_prefix(end + 1);
  return taken;
}

// 0 for none.
std::uint32_t impersonationLevelOf(std::string_view word) {
  constexpr std::array<std::string_view, 4> kWords{"anonymous", "identify", "impersonate",
                                                   "delegate"};
  for (std::uint32_t level = 0; level < kWords.size(); ++level) {
    if (equalIgnoringCase(word, kWords[level])) return level + 1;
  }
  return 0;
}

// A machine, or one step of a namespace: a colon would begin the name of a class.
bool isName(std::string_view text) {
  return !text.empty() && std::none_of(text.begin(), text.end(), [](unsigned char each) {
    return each < ' ' || each == '/' || each == ':' || each == '\\';
  });
}

bool isSpaceName(std::string_view text) {
  while (const auto step = takeUntil(text, '\\')) {
    if (!isName(*step)) return false;
  }
  return isName(text);
}

}  // namespace

std::optional<WmiMoniker> wmiMonikerOf(std::string_view text) {
  WmiMoniker moniker;
  if (!take(text, "winmgmts:")) return std::nullopt;
  while (take(text, " ")) {
  }
  if (take(text, "{")) {
    if (!take(text, "impersonationLevel=")) return std::nullopt;
    moniker.impersonationLevel = impersonationLevelOf(takeUntil(text, '}').value_or(""));
    if (moniker.impersonationLevel == 0 || !take(text, "!")) return std::nullopt;
  }
  if (!take(text, "\\\\")) return std::nullopt;
  moniker.machine = takeUntil(text, '\\').value_or("");
  moniker.spaceName = text;
  if (!isName(moniker.machine) || !isSpaceName(moniker.spaceName)) return std::nullopt;
  return moniker;
}

}  // namespace veltrin
