// SPDX-License-Identifier: GPL-3.0-or-later
// The console runner of a window: the one way in which windows own one.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "forms/form.h"
#include "frame/DOSOutputs.h"

namespace veltrin {

// There from the window's load to the end of its unload. A run under way then reads its
// tool to the end, on the window's object, which lives as long as a routine of its own is
// on the stack; no further tool is started. A routine with more destinations to come asks
// before each of them whether there still is a runner.
class WindowRunner {
 public:
  // `receive` takes each piece that a tool prints, as DOSOutputs tells it.
  WindowRunner(Form& window, Platform& platform,
               std::function<void(const std::string& chunk)> receive)
      : window_(window), runner_(platform) {
    runner_.ReceiveOutputs = std::move(receive);
  }

  // Whether a tool can be started: the window is loaded.
  explicit operator bool() const { return window_.isLoaded(); }

  // Runs a command to the end of its output, or nothing once the window is unloaded.
  void run(const std::string& commandLine) {
    if (!*this) return;
    runner_.CommandLine = commandLine;
    runner_.ExecuteCommand();
  }

 private:
  Form& window_;
  DOSOutputs runner_;
};

}  // namespace veltrin
