// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/tool_echo.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <chrono>
#include <climits>
#include <optional>
#include <unistd.h>
#include <utility>
#include <vector>

#include "platform/linux/ping_text.h"
#include "platform/linux/programs.h"

namespace veltrin {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

// What the tool may take, beside the time-out, to start and to print.
constexpr int kGrace = 500;  // ms

// More text than the tool has to say of one echo.
constexpr std::size_t kMostText = 16384;

// How long the tool may live in milliseconds.
int lifeFor(std::uint32_t timeout) {
  return static_cast<int>(std::min<std::uint32_t>(timeout, INT_MAX - kGrace)) + kGrace;
}

std::string dotted(std::uint32_t address) {
  std::array<char, INET_ADDRSTRLEN> text{};
  const in_addr bytes{address};
  return inet_ntop(AF_INET, &bytes, text.data(), text.size());
}

std::vector<std::string> argumentsFor(const EchoQuestion& question) {
  return {"ping", dotted(question.address),         "-n", "1",
          "-w",   std::to_string(question.timeout), "-l", std::to_string(question.data.size())};
}

// Reads what a tool prints up to its outcome, which is nothing when the pipe has ended, or
// the time, without one.
std::optional<PingOutcome> awaitOutcome(int pipe, steady_clock::time_point end,
                                        const EchoWay::Wait& wait) {
  std::string text;
  std::array<char, 256> chunk{};
  while (text.size() < kMostText) {
    const ssize_t taken = read(pipe, chunk.data(), chunk.size());
    if (taken == 0) break;
    if (taken > 0) {
      text.append(chunk.data(), static_cast<std::size_t>(taken));
      if (const auto outcome = readPingOutcome(text)) return outcome;
    } else if (errno != EAGAIN && errno != EINTR) {
      break;
    }
    const auto left = std::chrono::ceil<milliseconds>(end - steady_clock::now()).count();
    if (left <= 0) break;
    if (taken < 0) wait(pipe, static_cast<int>(left));
  }
  return std::nullopt;
}

}  // namespace

ToolEcho::ToolEcho(std::string program, Wait wait)
    : program_(std::move(program)), wait_(std::move(wait)) {}

bool ToolEcho::exchange(const EchoQuestion& question, ICMP_ECHO_REPLY& reply) {
  Processes::Handle readEnd = Processes::kNoHandle;
  Processes::Handle writeEnd = Processes::kNoHandle;
  if (!pipes_.CreatePipe(readEnd, writeEnd)) {
    reply.Status = kIpNoResources;
    return false;
  }
  Start what;
  what.path = program_;
  what.arguments = argumentsFor(question);
  what.output = static_cast<int>(writeEnd);
  what.longest = lifeFor(question.timeout);
  const auto end = steady_clock::now() + milliseconds(what.longest);
  const bool started = startProgram(std::move(what)).process != 0;
  pipes_.CloseHandle(writeEnd);
  std::optional<PingOutcome> outcome;
  if (started) outcome = awaitOutcome(static_cast<int>(readEnd), end, wait_);
  pipes_.CloseHandle(readEnd);

  reply.Status = outcome ? outcome->status : kIpGeneralFailure;
  if (!outcome) return false;
  reply.Address = outcome->address;
  if (outcome->status != kIpSuccess) return false;
  if (outcome->milliseconds > question.timeout) {
    reply.Status = kIpTimedOut;
    return false;
  }
  reply.RoundTripTime = outcome->milliseconds;
  reply.Options.Ttl = outcome->ttl;
  return true;
}

}  // namespace veltrin
