// SPDX-License-Identifier: GPL-3.0-or-later
// The Hop Stability Test on the simulated platform: a path of hops whose reply times a
// test scripts, and a user who closes the windows behind the run.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "route/Stability.h"
#include "route/StabilitySUM.h"
#include "route/indepth2.h"
#include "simulated/route_run.h"

namespace veltrin {

class StabilityRun : public RouteRun {
 protected:
  StabilityRun() {
    script = [this](const std::string& command) { return textOf(command); };
    simulation.desktop.onModal = [this](Form& form) {
      opened.push_back(form.name());
      if (auto* summary = dynamic_cast<StabilitySUM*>(&form)) summaryText = summary->Text1.text;
      if (auto* indepth = dynamic_cast<indepth2*>(&form)) analysed = indepth->Text1.text;
      simulation.loop.after(kReadingTime, [&form] { form.close(); });
    };
  }

  Stability& open() {
    window = simulation.program().show<Stability>();
    return *window;
  }

  // Presses Test and lets the run come to its end.
  void test() { simulation.desktop.click(window->StartIt); }

  // Opens the window and tests a path of so many hops.
  Stability& testPath(std::size_t hops) {
    pathOf(hops);
    open();
    test();
    return *window;
  }

  // Hops with the addresses "10.0.0.1" and so on, in brackets.
  void pathOf(std::size_t hops) {
    path.clear();
    for (std::size_t hop = 1; hop <= hops; ++hop) path.push_back(bracketed(addressOf(hop)));
  }

  static std::string addressOf(std::size_t hop) { return "10.0.0." + std::to_string(hop); }
  static std::string bracketed(const std::string& address) { return "router [" + address + "] "; }
  static std::string bare(const std::string& address) { return address + " "; }

  // Every ping to the hop of an address takes the next of these times, in ms.
  void timesOf(const std::string& address, std::vector<std::optional<int>> times) {
    scripted[address] = std::move(times);
  }

  // So many times the same.
  static std::vector<std::optional<int>> times(const std::vector<std::pair<int, int>>& counts) {
    std::vector<std::optional<int>> all;
    for (const auto& [count, time] : counts) all.insert(all.end(), count, time);
    return all;
  }

  // The user closes the window when the first hop's turn comes, behind the list of hops.
  void closeBehindTheList() {
    window->txtOutputs.change = [this, follow = window->txtOutputs.change] {
      if (window->txtOutputs.text == "Testing Hop 1\r\n") window->close();
      follow();
    };
  }

  StabilityValues& values() { return simulation.program().shared<StabilityValues>(); }

  std::vector<std::size_t> visibleGraphs() const {
    std::vector<std::size_t> visible;
    for (std::size_t hop = 0; hop < window->PGraph.size(); ++hop) {
      EXPECT_EQ(window->PGraph[hop].visible.get(), window->Label2[hop].visible.get()) << hop;
      if (window->PGraph[hop].visible) visible.push_back(hop);
    }
    return visible;
  }

  static std::vector<std::size_t> range(std::size_t first, std::size_t end) {
    std::vector<std::size_t> numbers;
    for (std::size_t number = first; number < end; ++number) numbers.push_back(number);
    return numbers;
  }

  // The pings to an address, in order: when they were started.
  std::vector<std::int64_t> pingsTo(const std::string& address) const {
    std::vector<std::int64_t> started;
    for (const auto& start : simulation.processes.starts) {
      if (start.commandLine == "ping " + address + " -n 1") started.push_back(start.moment);
    }
    return started;
  }

  static constexpr std::int64_t kTrials = 4080;      // ms, of four of them
  static constexpr std::int64_t kNearPing = 220;     // ms from a ping to the next, of a near hop
  static constexpr std::int64_t kReadingTime = 100;  // ms that a user looks at a result
  static constexpr int kUsualTime = 30;              // ms

  std::shared_ptr<Stability> window;
  std::string destination = "www.wikipedia.org";  // which the trials ask
  std::vector<std::string> path;                  // ends of the trace's lines; "*" is silent
  std::map<std::string, std::vector<std::optional<int>>> scripted;
  std::vector<std::string> opened;  // modal windows, in order
  std::string summaryText;          // as the user reads it
  std::string analysed;             // destination of the analysis behind the run

 private:
  std::vector<ToolWrite> textOf(const std::string& command) {
    if (command.starts_with("tracert ")) return {{kToolTime, traceText()}};
    if (!command.starts_with("ping ")) return {{kToolTime, "<" + command + ">"}};
    const std::string address = command.substr(5, command.size() - 10);
    const std::size_t number = asked_[address]++;
    const auto found = scripted.find(address);
    std::optional<int> time = kUsualTime;
    if (found != scripted.end() && number < found->second.size()) time = found->second[number];
    return {{kToolTime, time ? pingReply(*time, address) : pingTimeout(address)}};
  }

  std::string traceText() const {
    std::string text = "\r\nTracing route to " + destination +
                       " [203.0.113.80]\r\nover a maximum of 30 hops:\r\n\r\n";
    for (std::size_t hop = 0; hop < path.size(); ++hop) {
      const std::string number = std::to_string(hop + 1);
      text += std::string(3 - number.size(), ' ') + number;
      text += path[hop] == "*" ? "     *        *        *     Request timed out."
                               : "    12 ms    11 ms    12 ms  " + path[hop];
      text += "\r\n";
    }
    return text + "\r\nTrace complete.\r\n";
  }

  std::map<std::string, std::size_t> asked_;
};

}  // namespace veltrin
