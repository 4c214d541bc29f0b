// SPDX-License-Identifier: GPL-3.0-or-later
// The world around the random user: what tools print, servers send and cards count, and how
// disks, printers and the clock fail.
#include <algorithm>
#include <array>

#include "monkey/monkey.h"
#include "support/systeminfo_text.h"

namespace veltrin {
namespace {

// The settings of an installation with a file for all rated speeds but the lowest.
const char* const kInstallation =
    "[Installation]\r\n"
    "DownloadTestUrl1=http://files.example/large\r\n"
    "DownloadTestUrl2=http://files.example/large\r\n"
    "DownloadTestUrl3=http://files.example/large\r\n"
    "DownloadTestUrl4=http://files.example/large\r\n"
    "DownloadTestUrl5=http://files.example/large\r\n"
    "DownloadTestUrl6=\r\n";

constexpr std::array<const char*, 5> kSpeeds = {"512", "3,000", "9,000", "40,000", "100,000"};

}  // namespace

// A new computer, on which the program has run before or has not.
void Monkey::provideWorld() {
  simulation_ = std::make_unique<Simulation>(Simulation::OwnParts{&facts_, nullptr, nullptr});
  simulation_->profiles.contents[simulation_->files.programFolder() + "\\installation.ini"] =
      kInstallation;
  failedStarts_ = 0;
  isCalm_ = oneIn(3);
  provideTools();
  provideTraffic();
  provideUpdates();
  provideMachine();
  Program& program = simulation_->program();
  program.writeSetting("Settings", "Rated Speed", kSpeeds[below(kSpeeds.size())]);
  if (oneIn(2)) program.writeSetting("Settings", "OS", "Example Desktop 7");
}

void Monkey::provideTools() {
  simulation_->processes.tool =
      [this](const std::string& command) -> std::optional<std::vector<ToolWrite>> {
    ++result_.tools;
    if (oneIn(50)) {
      ++failedStarts_;
      return std::nullopt;
    }
    return writes(toolText(command));
  };
  simulation_->icmp.reply = [this](const auto&) -> std::optional<std::uint32_t> {
    ++result_.echoes;
    constexpr std::uint32_t kLongest = 900;  // ms
    return oneIn(3) ? std::nullopt : std::optional(below(kLongest));
  };
}

// An endpoint that tells a version, or talks nonsense, or hangs up, or is not there.
void Monkey::provideUpdates() {
  SimulatedSockets& sockets = simulation_->sockets;
  sockets.onConnect = [this, &sockets](SimulatedTcpSocket& socket, std::uint16_t /*port*/) {
    constexpr std::uint32_t kLatest = 4000;  // ms
    for (std::uint32_t count = below(4); count > 0; --count) {
      const std::uint32_t lot = below(6);
      sockets.later(below(kLatest), socket, [this, lot](SimulatedTcpSocket& other) {
        if (lot == 0) return other.comeError();
        if (lot == 1) return other.comeClosed();
        if (lot == 2) return other.comeRequest(1);
        other.comeConnected();
        other.comeData(lot == 3 ? "9.99192.0.2.44" : lot == 4 ? "XXX" : toolText(""));
      });
    }
  };
}

// Drives and processes that refuse what is asked of them, or tell it.
void Monkey::provideMachine() {
  simulation_->drives.clusters["C:\\"] = {below(64), 512, below(1U << 31U), below(1U << 31U)};
  simulation_->drives.bytes["C:\\"] = {below(1U << 31U), 1ULL << below(45), below(1U << 31U)};
  SimulatedProcessList& list = simulation_->processList;
  for (std::uint32_t id = 1; id < below(12); ++id) {
    list.processes.push_back({id, "x.exe", {"C:\\x.exe", "", "x.dll"}, oneIn(4), oneIn(4)});
  }
  list.refusesSnapshot = oneIn(8);
  list.refusesEnumeration = oneIn(8);
}

// Cards come and go, and their figures are of any size.
void Monkey::provideTraffic() {
  SimulatedCounters& counters = simulation_->counters;
  counters.onCall = [this, &counters] {
    if (oneIn(30)) counters.enumStatus = oneIn(3) ? kPdhMoreData : 0;
    if (oneIn(30)) counters.addStatus = oneIn(3) ? kPdhMoreData : 0;
    if (oneIn(30)) counters.instances.assign(below(9), "Network card");
    if (counters.paths.empty() || !oneIn(3)) return;
    const std::string& path =
        counters.paths[below(static_cast<std::uint32_t>(counters.paths.size()))];
    counters.values[path] = oneIn(20) ? 1e300 : below(200'000'000);
  };
}

// Printers come and go, too.
void Monkey::changePrinters() {
  SimulatedPrinters& printers = simulation_->printers;
  printers.jobsUntilRefusal = oneIn(4) ? static_cast<int>(below(3)) : -1;
  printers.names = oneIn(3) ? std::vector<std::string>() : std::vector<std::string>{"Laser", "Ink"};
  printers.defaultName = printers.names.empty() ? "" : printers.names[below(2)];
}

void Monkey::changeFaults() {
  if (oneIn(20)) setClock();
  simulation_->shell.refuse = oneIn(3);
  simulation_->profiles.refuseWriting = oneIn(3);
  simulation_->files.refuseOpening = oneIn(3);
  simulation_->files.refuseWriting = oneIn(3);
  simulation_->loop.failNextTimer = oneIn(4);
  simulation_->processes.failPipes = oneIn(8);
  changePrinters();
  simulation_->processes.readsBeforeError.reset();
  if (oneIn(8)) simulation_->processes.readsBeforeError = static_cast<int>(below(4));
}

// As somebody sets it, by some days or seconds, to the past too.
void Monkey::setClock() {
  constexpr std::int64_t kSecond = 1000;  // ms
  constexpr std::int64_t kDay = 86'400 * kSecond;
  const std::int64_t unit = oneIn(2) ? kDay : kSecond;
  simulation_->clock.setForward += (static_cast<std::int64_t>(below(100)) - 50) * unit;
}

// Lets a download go on, in which a server may take back what it told, or ends it.
void Monkey::serve() {
  auto& asked = simulation_->downloads.asked;
  if (asked.empty()) return;
  const auto read = asked[below(static_cast<std::uint32_t>(asked.size()))];
  constexpr std::uint32_t kLargest = 5'000'000;
  constexpr std::uint32_t kSteps = 40;
  if (!read->givenUp && !oneIn(kSteps)) {
    return read->comeProgress(below(kLargest), oneIn(4) ? 0 : kLargest);
  }
  asked.erase(std::find(asked.begin(), asked.end(), read));
  if (read->givenUp) return;
  ++result_.downloads;
  if (oneIn(3)) {
    read->comeFailure(below(kLargest));
  } else {
    read->comeBody(std::string(below(10'000), 'x'));
  }
}

std::vector<ToolWrite> Monkey::writes(const std::string& text) {
  std::vector<ToolWrite> pieces;
  std::size_t at = 0;
  while (at < text.size()) {
    const std::size_t length = 1 + below(oneIn(2) ? 400 : 12);
    const std::int64_t silence = oneIn(6) ? below(4000) : below(30);
    pieces.push_back({silence, text.substr(at, length)});
    at += length;
  }
  return pieces;
}

std::string Monkey::toolText(const std::string& command) {
  const bool isSummary = command.find("Systeminfo") != std::string::npos;
  if (isSummary && !oneIn(4)) return printed(desktop(below(20), below(4)));
  const bool isPing = command.starts_with("ping");
  if (isCalm_ && isPing && !oneIn(100)) return pingReply(static_cast<int>(5 + below(30)));
  switch (below(8)) {
    case 0:
      return traceText();
    case 1:
      return "Ping request could not find host x. Please check the name and try again.\r\n";
    case 2:
      return {};
    case 3: {
      std::string garbage(below(700), '\0');
      for (char& character : garbage) character = static_cast<char>(below(256));
      return garbage;
    }
    default:
      return pingText();
  }
}

std::string Monkey::pingText() {
  if (oneIn(5)) return pingTimeout();
  return pingReply(static_cast<int>(below(oneIn(4) ? 3 : 20000)));
}

std::string Monkey::traceText() {
  std::string text = "\r\nTracing route to x [192.0.2.7]\r\nover a maximum of 30 hops:\r\n\r\n";
  for (std::uint32_t hop = 1 + below(12); hop > 0; --hop) {
    text += oneIn(4) ? "  1     *        *        *     Request timed out.\r\n"
                     : "  1    <1 ms    12 ms     *     192.0.2.7 \r\n";
    if (oneIn(3)) text += "                              0/ 100 =  0%   |\r\n";
  }
  return text + "\r\nTrace complete.\r\n";
}

}  // namespace veltrin
