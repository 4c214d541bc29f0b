// SPDX-License-Identifier: GPL-3.0-or-later
// The windows of the MTU optimizer on the simulated platform.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "frame/startup.h"
#include "mtu/mtutest.h"
#include "mtu/pingit.h"
#include "mtu/setmtu.h"
#include "simulated/route_run.h"

namespace veltrin {

class MtuRun : public RouteRun {
 protected:
  using Samples = std::vector<std::optional<int>>;

  MtuRun() {
    script = [this](const std::string& command) -> std::vector<ToolWrite> {
      if (command.starts_with("ping -f")) return {{kToolTime, probeText(command)}};
      return {{kToolTime, sampleText()}};
    };
  }

  void makeKey() { simulation.registry.keys[{kHkeyLocalMachine, kKeyPath}]; }

  // What the registry holds before.
  void registryHolds(const std::string& mtu) {
    simulation.registry.keys[{kHkeyLocalMachine, kKeyPath}]["MTU"] = {kRegSz, mtu};
  }

  // The bytes and the type that the registry holds now; "(none)" when it holds none.
  std::string registryValue() {
    const auto& keys = simulation.registry.keys;
    const auto key = keys.find({kHkeyLocalMachine, kKeyPath});
    if (key == keys.end()) return "(no key)";
    const auto found = key->second.find("MTU");
    if (found == key->second.end()) return "(none)";
    return std::to_string(found->second.type) + ":" + found->second.data;
  }

  void settingsAre(const std::string& text) {
    simulation.profiles.contents[kProgramFolder + "\\Files\\Veltrin.dat"] = text;
  }

  std::vector<std::string> messages() const {
    std::vector<std::string> texts;
    for (const auto& message : simulation.desktop.messages) texts.push_back(message.text);
    return texts;
  }

  // Sizes of the probes, in order.
  std::vector<std::string> probedSizes() const {
    std::vector<std::string> sizes;
    const std::string head = "ping -f -n 2 -l ";
    for (const std::string& command : commands()) {
      if (command.starts_with(head)) {
        sizes.push_back(command.substr(head.size(), command.size() - head.size() - 1));
      }
    }
    return sizes;
  }

  std::vector<std::int64_t> probeMoments() const {
    std::vector<std::int64_t> moments;
    for (const auto& start : simulation.processes.starts) {
      if (start.commandLine.starts_with("ping -f")) moments.push_back(start.moment);
    }
    return moments;
  }

  static const inline std::string kKeyPath =
      "system\\currentcontrolset\\services\\tcpip\\parameters\\interfaces";

  // Sizes above this are cut into pieces; 0: none passes.
  int largest = 65500;
  std::string cutText = "Packet needs to be fragmented but DF set.\r\n";
  std::string passText = "Usage: ping ...\r\n";

  Samples samples;  // of the pings to the site, in order; behind the last, 25 ms
  std::size_t taken = 0;

 private:
  std::string probeText(const std::string& command) const {
    const int size = std::stoi(command.substr(std::string("ping -f -n 2 -l ").size()));
    return size > largest ? cutText : passText;
  }

  // The summary ends in "ms" and three characters, as it comes through the pipe.
  std::string sampleText() {
    const std::optional<int> time = taken < samples.size() ? samples[taken] : std::optional(25);
    ++taken;
    if (!time) return "Request timed out.\r\n";
    const std::string average = std::to_string(*time) + "ms";
    return "    Minimum = " + average + ", Maximum = " + average + ", Average = " + average +
           " \r\n";
  }
};

}  // namespace veltrin
