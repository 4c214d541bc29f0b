// SPDX-License-Identifier: GPL-3.0-or-later
#include "sysinfo/report_lines.h"

namespace veltrin {
namespace {

// Of LogEvents.
constexpr std::int16_t kLineColour = 1;
constexpr std::int16_t kHeadingColour = 2;

std::int16_t numberOf(Picture picture) { return static_cast<std::int16_t>(picture); }

}  // namespace

void ReportLines::heading(const std::string& text, Picture picture) const {
  window_.LogEvents(text, numberOf(picture), kHeadingColour, true);
}

void ReportLines::bold(const std::string& text) const {
  window_.LogEvents(text, numberOf(Picture::None), kLineColour, true);
}

void ReportLines::plain(const std::string& text, Picture picture) const {
  window_.LogEvents(text, numberOf(picture), kLineColour, false);
}

}  // namespace veltrin
