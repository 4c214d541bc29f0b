// SPDX-License-Identifier: GPL-3.0-or-later
// The small pictures of the report's lines.
#pragma once

#include <array>

namespace veltrin {

struct ReportPicture {
  const char* name;     // of the installation's picture
  const char* meaning;  // what it stands for
};

// Number 1 is the first; the report's lines name them by their numbers.
extern const std::array<ReportPicture, 38> kReportPictures;

}  // namespace veltrin
