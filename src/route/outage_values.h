// SPDX-License-Identifier: GPL-3.0-or-later
// What the Outage monitor leaves behind when its window has gone.
#pragma once

#include <cstddef>

#include "forms/strip_graph.h"
#include "platform/icmp.h"

namespace veltrin {

struct OutageValues {
  static constexpr std::size_t kProbes = 1800;  // across the picture

  // Round trips of the last probes. Never cleared: a second run goes on with the old curve.
  StripGraph<kProbes> graph;
  ICMP_ECHO_REPLY reply;  // to the last probe
};

}  // namespace veltrin
