// SPDX-License-Identifier: GPL-3.0-or-later
// A start of the program on the simulated platform.
#pragma once

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "frame/About.h"
#include "frame/starter.h"
#include "frame/startup.h"
#include "support/simulation.h"

namespace veltrin {

inline constexpr std::uint16_t kFirstUpdatePort = 31112;
inline constexpr std::uint16_t kSecondUpdatePort = 31113;

class StartRun : public ::testing::Test {
 protected:
  StartRun() {
    simulation.profiles.contents[folder() + "\\installation.ini"] =
        "[Installation]\r\nUpdateServer=update.example\r\n";
  }

  static std::string folder() { return "C:\\Program Files\\Veltrin"; }

  // What the settings file holds before the program starts.
  void settingsAre(const std::string& text) {
    simulation.profiles.contents[folder() + "\\Files\\Veltrin.dat"] = text;
  }

  // The endpoint sends these texts to who connects to a port, each so many ms after the
  // connecting.
  void answers(std::uint16_t wanted, std::vector<ToolWrite> texts) {
    simulation.sockets.onConnect = [this, wanted, texts = std::move(texts)](
                                       SimulatedTcpSocket& socket, std::uint16_t port) {
      if (port != wanted) return;
      for (const ToolWrite& text : texts) {
        simulation.sockets.later(text.delay, socket, [text](SimulatedTcpSocket& connected) {
          connected.comeConnected();
          connected.comeData(text.text);
        });
      }
    };
  }

  // Starts the program; the menu is shown when this returns, if it ever is.
  void start() {
    Program& program = simulation.program();
    program.getinfo = [this] {
      ++collections;
      simulation.program().writeSetting("Settings", "OS", "00000-00000-00000-AA");
    };
    program.show<starter>();
  }

  std::string setting(const std::string& section, const std::string& key) {
    return simulation.program().readSetting(section, key);
  }

  std::vector<std::string> connections() const {
    std::vector<std::string> found;
    for (const std::string& call : simulation.sockets.calls) {
      if (call.rfind("connect", 0) == 0) found.push_back(call);
    }
    return found;
  }

  std::int64_t now() const { return simulation.loop.milliseconds(); }

  Simulation simulation;
  int collections = 0;  // of the summary
};

}  // namespace veltrin
