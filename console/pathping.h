// SPDX-License-Identifier: GPL-3.0-or-later
// The pathping tool: shows the way to a host and what each router and link on it
// loses.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "console/network.h"
#include "console/output.h"
#include "console/route_options.h"
#include "console/route_session.h"
#include "console/route_statistics.h"
#include "console/route_trace.h"

namespace veltrin {

class Pathping {
 public:
  Pathping(Network& network, Output& output) : session_(network, output, "PATHPING") {}

  // Runs the tool with its arguments, without the program's name, to the end.
  // Returns the exit code.
  int run(const std::vector<std::string>& arguments);

 private:
  // Whether there is more to tell, or what is next has to be waited for.
  enum class Step { GoOn, Wait };

  int measure();
  void findMachine();
  void findPath(RouteTrace& trace);
  std::string tell(const RouteTrace& trace, Microseconds now);
  Step tellNext(const RouteTrace& trace, Microseconds now, std::string& text);
  Step tellTitle(Microseconds now, std::string& text);
  Step tellHop(const RouteTrace& trace, Microseconds now, std::string& text);
  Step tellAnswer(const ProbeAnswer& answer, Microseconds now, std::string& text);
  Step waitUntil(Microseconds moment);
  void tellReservations();
  void tellPriorities(ProbeBook& book);
  void tellStatistics(ProbeBook& book);
  // So many queries to each hop of the path, from now on.
  RouteStatistics statisticsOf(ProbeBook& book, std::uint64_t queries);
  void query(RouteStatistics& statistics, int priority);
  std::string labelOf(std::size_t hop) const;

  RouteSession session_;
  PathpingSettings settings_;
  std::string machine_;  // this machine, as hop 0
  // The path from hop 1 on; nothing for a hop that is silent.
  std::vector<std::optional<Address>> path_;
  bool titled_ = false;
  bool found_ = false;         // all of the path
  bool failed_ = false;        // nothing could be sent
  Microseconds waitsFor_ = 0;  // when the next text is known at the latest
};

}  // namespace veltrin
