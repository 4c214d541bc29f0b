// SPDX-License-Identifier: GPL-3.0-or-later
// The Outage monitor on the simulated platform: a line that is scripted probe by probe, and
// a user who stops the run.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "route/MonOut.h"
#include "simulated/route_run.h"

namespace veltrin {

class OutageRun : public RouteRun {
 protected:
  OutageRun() {
    script = [this](const std::string& command) -> std::vector<ToolWrite> {
      if (command.starts_with("tracert")) return trace;
      return {{kToolTime, ping}};
    };
    simulation.icmp.reply = [this](const auto&) -> std::optional<std::uint32_t> {
      const std::size_t number = ++probes;
      if (afterProbe) afterProbe(number);
      if (times.count(number) != 0) return times.at(number);
      if (failing.count(number) != 0) return std::nullopt;
      return kUsualTime;
    };
  }

  MonOut& open() {
    window = simulation.program().show<MonOut>();
    return *window;
  }

  // Opens the window and lets it probe so many times, then stops it behind the last one.
  MonOut& probe(std::size_t count) {
    open();
    stopBehind(count);
    start();
    return *window;
  }

  // The user presses Stop in the pause behind that probe.
  void stopBehind(std::size_t count) {
    behind(count, [this] { press(); });
  }

  // Something the user does in the pause behind a probe. One thing at a time.
  void behind(std::size_t count, std::function<void()> action) {
    afterProbe = [this, count, action = std::move(action)](std::size_t number) {
      if (number == count) simulation.loop.after(kReactionTime, action);
    };
  }

  // Presses the button that starts and stops.
  void press() { simulation.desktop.click(window->Command3); }
  void start() { press(); }

  std::string log() const {
    const auto& files = simulation.files.contents;
    const auto found = files.find(kLog);
    return found == files.end() ? "(no log)" : found->second;
  }

  std::vector<std::int64_t> probeMoments() const {
    std::vector<std::int64_t> moments;
    for (const auto& echo : simulation.icmp.echoes) moments.push_back(echo.moment);
    return moments;
  }

  // The commands but the ping that finds the address.
  std::vector<std::string> traces() const {
    std::vector<std::string> lines;
    for (const std::string& command : commands()) {
      if (command.starts_with("tracert")) lines.push_back(command);
    }
    return lines;
  }

  static constexpr std::uint32_t kUsualTime = 20;     // ms
  static constexpr std::int64_t kReactionTime = 500;  // ms from a probe's start to the press
  const std::string kLog = kProgramFolder + "\\Files\\Outage Log 07 Mar 26 0905.txt";

  std::shared_ptr<MonOut> window;
  std::string ping =
      "\r\nPinging www.wikipedia.org [192.0.2.7] with 32 bytes of data:\r\n"
      "Reply from 192.0.2.7: bytes=32 time=20ms TTL=56\r\n";
  std::vector<ToolWrite> trace = {{300, "\r\nTracing route to www.wikipedia.org [192.0.2.7]\r\n"},
                                  {700, "  1     *        *        *     Request timed out.\r\n"}};
  std::set<std::size_t> failing;               // numbers of the probes without a reply, from 1
  std::map<std::size_t, std::uint32_t> times;  // round trips of others than the usual
  std::size_t probes = 0;
  std::function<void(std::size_t number)> afterProbe;
};

}  // namespace veltrin
