// SPDX-License-Identifier: GPL-3.0-or-later
// What the system tells of a printer.
#pragma once

#include <string>

namespace veltrin {

struct PrinterFacts {
  std::string name;         // its DeviceName
  std::string description;  // as its owner describes it; empty without
  friend bool operator==(const PrinterFacts&, const PrinterFacts&) = default;
};

}  // namespace veltrin
