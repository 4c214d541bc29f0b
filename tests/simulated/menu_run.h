// SPDX-License-Identifier: GPL-3.0-or-later
// The main menu on the simulated platform.
#pragma once

#include <memory>

#include "simulated/start_run.h"

namespace veltrin {

// A window that a later tool brings along.
template <int Number>
class Tool : public Form {
 public:
  explicit Tool(Program& program) : Form("tool", program) {}
};

class MenuRun : public StartRun {
 protected:
  startup& open() {
    menu = simulation.program().show<startup>();
    return *menu;
  }

  // The menu with a tool behind the name of a window.
  template <int Number>
  startup& openWith(WindowName name) {
    simulation.program().provide<Tool<Number>>(name);
    return open();
  }

  template <int Number>
  bool isOpen() {
    return simulation.program().isLoaded<Tool<Number>>();
  }

  // Closes the window in front after so many ms.
  void closeFrontAfter(std::int64_t delay) {
    simulation.loop.after(
        delay, [this] { simulation.desktop.closeWindow(*simulation.desktop.shown.back()); });
  }

  void TearDown() override { EXPECT_EQ(simulation.loop.gate().escapedFailures(), 0); }

  std::shared_ptr<startup> menu;
};

}  // namespace veltrin
