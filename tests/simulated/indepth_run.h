// SPDX-License-Identifier: GPL-3.0-or-later
// Both InDepth windows on the simulated platform.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "route/indepth.h"
#include "route/indepth2.h"
#include "simulated/route_run.h"

namespace veltrin {

class InDepthRun : public RouteRun {
 protected:
  // Opens one of the windows. The one that starts by itself has done its test then.
  template <class Kind>
  Kind& openWindow() {
    keepBadHops();
    const auto made = simulation.program().show<Kind>();
    window = made;
    return *made;
  }

  indepth& open() { return openWindow<indepth>(); }

  // Opens the window that the user starts, with a destination.
  indepth& openFor(const std::string& destination) {
    indepth& opened = open();
    simulation.desktop.type(opened.Text1, destination);
    return opened;
  }

  // Clicks "Test It" and lets the test come to its end.
  void test(indepth_window& opened) { simulation.desktop.click(opened.Command1); }

  // pathping prints texts at moments of the clock; ping prints nothing.
  void pathpingPrints(std::vector<ToolWrite> texts) {
    script = [this, texts = std::move(texts)](const std::string& command) {
      std::vector<ToolWrite> writes;
      if (command.substr(0, 8) != "pathping") return writes;
      std::int64_t before = simulation.loop.milliseconds();
      for (const ToolWrite& text : texts) {
        writes.push_back({text.delay - before, text.text});
        before = text.delay;
      }
      return writes;
    };
  }

  // The list of silent hops is kept as a loaded Hop Stability Test keeps it.
  void keepBadHops() {
    if (!badHop) return;
    simulation.program().shared<InDepthValues>().lastBadHop = [this] { return *badHop; };
  }

  std::optional<std::string> badHop = "3";  // nothing when nobody keeps the list
  std::shared_ptr<indepth_window> window;
};

}  // namespace veltrin
