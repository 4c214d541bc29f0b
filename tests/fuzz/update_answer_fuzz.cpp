// SPDX-License-Identifier: GPL-3.0-or-later
// Whatever the update endpoint says: the program starts in the time it always takes,
// and takes from the answer what stands there.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "frame/starter.h"
#include "frame/startup.h"
#include "support/simulation.h"
#include "tests/support/characters.h"

namespace {

constexpr std::int64_t kLongestStart = 100 + 2500 + 1000 + 1000;  // ms, with the answer shown

void require(bool condition) {
  if (!condition) std::abort();
}

}  // namespace

// The first byte cuts the rest into two arrivals, the second tells when they come.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const std::string text(reinterpret_cast<const char*>(data) + 2, size - 2);
  const std::string first = text.substr(0, data[0]);
  const std::string second = text.substr(first.size());
  const std::int64_t moment = std::int64_t{9} * data[1];

  veltrin::Simulation simulation;
  simulation.desktop.habit = {veltrin::kAnswerNo, 0};
  simulation.sockets.onConnect = [&](veltrin::SimulatedTcpSocket& socket, std::uint16_t) {
    simulation.sockets.later(moment, socket, [&](veltrin::SimulatedTcpSocket& connected) {
      connected.comeConnected();
      if (!first.empty()) connected.comeData(first);
    });
    simulation.sockets.later(moment + 1, socket, [&](veltrin::SimulatedTcpSocket& connected) {
      if (!second.empty()) connected.comeData(second);
    });
  };
  veltrin::Program& program = simulation.program();
  program.getinfo = {};
  program.show<veltrin::starter>();

  require(program.isLoaded<veltrin::startup>());
  require(simulation.loop.milliseconds() <= kLongestStart);
  require(simulation.loop.gate().escapedFailures() == 0);
  const std::string& answer = first.empty() || first == "XXX" ? second : first;
  const bool answered = !answer.empty() && answer != "XXX";
  require(program.start.UpdateWaiting == (answered ? 0 : 1));
  const std::string address = veltrin::joinedCharacters(veltrin::charactersOf(answer), 4);
  require(program.start.PublicIp == (answered ? address : ""));
  return 0;
}
