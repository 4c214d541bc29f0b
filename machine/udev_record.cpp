// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/udev_record.h"

#include "machine/fact_text.h"

namespace veltrin {
namespace {

constexpr std::string_view kEscape = "\\x";
constexpr std::size_t kEscapeLength = 4;

// A line that tells a property begins with this.
constexpr std::string_view kProperty = "E:";

}  // namespace

std::string UdevRecord::value(std::string_view name) const {
  LineReader lines(text_);
  for (std::string_view line; lines.next(line);) {
    if (!line.starts_with(kProperty)) {
      continue;
    }
    line.remove_prefix(kProperty.size());
    if (line.size() > name.size() && line.starts_with(name) && line[name.size()] == '=') {
      return std::string(line.substr(name.size() + 1));
    }
  }
  return "";
}

std::string UdevRecord::decoded(std::string_view name) const { return undoHexEscapes(value(name)); }

std::string undoHexEscapes(std::string_view text) {
  std::string plain;
  while (!text.empty()) {
    const auto code = text.starts_with(kEscape) && text.size() >= kEscapeLength
                          ? wholeNumber(text.substr(kEscape.size(), 2), 16)
                          : std::nullopt;
    plain += code ? static_cast<char>(*code) : text.front();
    text.remove_prefix(code ? kEscapeLength : 1);
  }
  return plain;
}

}  // namespace veltrin
