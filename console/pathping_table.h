// SPDX-License-Identifier: GPL-3.0-or-later
// The closing table of pathping.
#pragma once

#include <string>
#include <vector>

#include "console/route_statistics.h"

namespace veltrin {

// A hop as the table shows it.
struct TableHop {
  std::string label;
  HopFigures figures;
};

// The table: its two lines of titles, the line of this machine, and for each hop
// the line of the link before it and its own. Percents are rounded down; the round
// trip is the average of those seen, or "---" when none was.
std::string pathTable(const std::string& machine, const std::vector<TableHop>& hops);

}  // namespace veltrin
