// SPDX-License-Identifier: GPL-3.0-or-later
// What tracert and pathping share beside the strategy: the destination, the
// sending, the names, and the writing.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "console/hop_names.h"
#include "console/network.h"
#include "console/output.h"
#include "console/probe_book.h"
#include "console/route_options.h"

namespace veltrin {

// Exit codes of both tools.
inline constexpr int kRouteDone = 0;    // the run went to its end, or the usage was asked for
inline constexpr int kRouteFailed = 1;  // a mistake, nothing could be sent, or the reader left
// The user ended the run: what a shell gives a program ended by an interrupt.
inline constexpr int kRouteInterrupted = 130;

inline constexpr std::string_view kLineEnd = "\r\n";
inline constexpr std::string_view kTraceComplete = "\r\nTrace complete.\r\n";

// The column of a probe that got no answer.
inline constexpr std::string_view kLostColumn = "   *     ";

// How long to wait for answers: what the settings say to the letter, or else at
// most `usual`.
Patience patienceOf(const RouteSettings& settings, Microseconds usual);

// A number, padded with blanks on its left.
std::string padded(std::uint64_t number, std::size_t width);

// Whole milliseconds, rounded to the nearest.
std::uint64_t inMilliseconds(Microseconds span);

class RouteSession {
 public:
  // `tool` is the tool's name as it stands before its own mistakes.
  RouteSession(Network& network, Output& output, std::string_view tool)
      : network_(network), output_(output), tool_(tool) {}

  // Finds the destination and the hosts to pass and makes ready to send. Writes
  // the reason when that fails.
  bool begin(const RouteSettings& settings);

  // The lines that announce the trace, when the destination's name is known or
  // not worth waiting for any more.
  std::optional<std::string> title(Microseconds now) const;

  // When title has its lines at the latest.
  Microseconds titleAt() const { return names_.labelAt(destination_); }

  const Address& destination() const { return destination_; }

  // Sends a probe, its frames with this priority.
  Sending send(const Probe& probe, int priority = 0);

  // Sleeps until a moment; answers wait meanwhile. ended() may be true behind it.
  void rest(Microseconds until) { network_.rest(until); }

  // Waits for an answer until `until`, or until a name has come. Nothing when
  // none came; ended() may be true then.
  std::optional<Incoming> wait(Microseconds until);

  // An answer's sender: the label of a hop, as HopNames tells it.
  void see(const Address& address) { names_.see(address, network_.now()); }
  std::optional<std::string> label(const Address& address, Microseconds now) const {
    return names_.label(address, now);
  }
  Microseconds labelAt(const Address& address) const { return names_.labelAt(address); }

  Microseconds now() { return network_.now(); }
  Network& network() { return network_; }

  // Writes a text, unless it is empty or nobody reads any more.
  void write(std::string_view text);

  // Whether the user or the reader has ended the run.
  bool ended() const { return interrupted_ || readerGone_; }

  // The exit code of a run that was ended, or else `otherwise`.
  int exitCode(int otherwise) const;

 private:
  bool findThrough(const std::vector<std::string>& hosts);

  Network& network_;
  Output& output_;
  std::string_view tool_;
  HopNames names_{network_};
  Address destination_;
  std::string name_;  // the destination's as typed; empty for an address
  std::vector<Address> through_;
  int hops_ = 0;
  bool interrupted_ = false;
  bool readerGone_ = false;
};

// Does what a command line says instead of a run, writing its sentence and the
// usage. The exit code; nothing when there is a run to be made.
template <typename Settings>
std::optional<int> answerInsteadOfRun(const RouteCommand<Settings>& command, std::string_view usage,
                                      RouteSession& session) {
  if (!command.problem.empty()) {
    session.write(command.problem + std::string(kLineEnd));
  }
  if (command.usage) {
    session.write(usage);
  }
  if (command.problem.empty() && !command.usage) {
    return std::nullopt;
  }
  return session.exitCode(command.help ? kRouteDone : kRouteFailed);
}

}  // namespace veltrin
