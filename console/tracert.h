// SPDX-License-Identifier: GPL-3.0-or-later
// The tracert tool: shows the routers on the way to a host.
//
// Lines appear in the order of the hops, however the answers come: each column is
// written as soon as it and all before it are known.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "console/network.h"
#include "console/output.h"
#include "console/route_options.h"
#include "console/route_session.h"
#include "console/route_trace.h"

namespace veltrin {

class Tracert {
 public:
  Tracert(Network& network, Output& output) : session_(network, output, "TRACERT") {}

  // Runs the tool with its arguments, without the program's name, to the end.
  // Returns the exit code.
  int run(const std::vector<std::string>& arguments);

 private:
  // Whether there is more to tell, or what is next has to be waited for.
  enum class Step { GoOn, Wait };

  int trace(const RouteSettings& settings);
  void tellAll();
  std::string tell(Microseconds now);
  Step tellNext(Microseconds now, std::string& text);
  Step tellTitle(Microseconds now, std::string& text);
  Step tellColumn(Microseconds now, std::string& text);
  Step tellAnswer(const ProbeAnswer& answer, Microseconds now, std::string& text);
  Step tellSender(Microseconds now, std::string& text);
  Step waitUntil(Microseconds moment);
  void finish(std::string& text);

  RouteSession session_;
  RouteTrace* trace_ = nullptr;
  bool titled_ = false;
  int hop_ = 1;     // the hop of the present line
  int column_ = 0;  // the columns of it that are written; 0 when the line has not begun
  bool begun_ = false;
  std::optional<Address> sender_;  // of the line's last answer
  Microseconds waitsFor_ = 0;      // when the next text is known at the latest
  bool finished_ = false;
  bool failed_ = false;  // nothing could be sent
};

}  // namespace veltrin
