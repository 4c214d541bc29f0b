// SPDX-License-Identifier: GPL-3.0-or-later
// The Bandwidth monitor on the simulated platform.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "frame/startup.h"
#include "monitor/frmNetwork.h"
#include "simulated/monitor_run.h"

namespace veltrin {

class NetworkRun : public MonitorRun {
 protected:
  frmNetwork& open() {
    window = program().show<frmNetwork>();
    return *window;
  }

  // Opens the window over one interface that the test lets traffic through.
  frmNetwork& openOverACard() {
    simulation.counters.instances = {kCard};
    return open();
  }

  // Lets a second pass with that traffic through the interface, in KB per second.
  void secondOf(double received, double sent, double total) {
    traffic(kCard, received * 1000, sent * 1000, total * 1000);
    simulation.run(1000);
  }

  // Which dials of a row are seen and what they show, as "1000: 50".
  static std::vector<std::string> seen(std::array<const bkCProg*, 3> row) {
    std::vector<std::string> dials;
    for (const bkCProg* dial : row) {
      if (!dial->visible) continue;
      dials.push_back(std::to_string(dial->Max) + ": " + std::to_string(dial->Value));
    }
    return dials;
  }
  std::vector<std::string> received() const {
    return seen({&window->NetRec1[0], &window->NetRec2[0], &window->NetRec3[0]});
  }
  std::vector<std::string> sent() const {
    return seen({&window->NetSend1[0], &window->NetSend2[0], &window->NetSend3[0]});
  }
  std::vector<std::string> total() const {
    return seen({&window->NetTotal1[0], &window->NetTotal2[0], &window->NetTotal3[0]});
  }

  bool isOnTop() const { return simulation.desktop.topmost.count(window.get()) != 0; }

  const std::string kCard = "Card One";
  std::shared_ptr<frmNetwork> window;
};

}  // namespace veltrin
