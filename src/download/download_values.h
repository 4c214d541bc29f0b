// SPDX-License-Identifier: GPL-3.0-or-later
// What a run of the download test leaves behind, and what its parts tell each other.
#pragma once

#include "download/speed_graph.h"
#include "text/loose.h"

namespace veltrin {

struct DownloadValues {
  Loose DownloadLag;             // seconds to the first report, where a caller asks for it
  double DownloadStartTime = 0;  // seconds since midnight at which the read was started
  Loose SuggestedSpeed;          // a rated speed that a test would propose; none does now
  SpeedGraph graph;
};

}  // namespace veltrin
