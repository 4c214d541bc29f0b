// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/route_session.h"

#include <utility>

#include "console/sentences.h"

namespace veltrin {
namespace {

// Data bytes of a probe.
constexpr std::size_t kProbeSize = 64;

}  // namespace

Patience patienceOf(const RouteSettings& settings, Microseconds usual) {
  if (!settings.timeout) {
    return {usual, false};
  }
  return {static_cast<Microseconds>(*settings.timeout) * kMillisecond, true};
}

std::string padded(std::uint64_t number, std::size_t width) {
  const std::string digits = std::to_string(number);
  return std::string(digits.size() < width ? width - digits.size() : 0, ' ') + digits;
}

std::uint64_t inMilliseconds(Microseconds span) {
  return static_cast<std::uint64_t>((span + kMillisecond / 2) / kMillisecond);
}

bool RouteSession::begin(const RouteSettings& settings) {
  const auto found = network_.resolve(settings.destination, settings.family);
  if (!found) {
    write("Unable to resolve target system name " + settings.destination + ".\r\n");
    return false;
  }
  if (!findThrough(settings.through)) {
    return false;
  }
  destination_ = found->address;
  hops_ = settings.hops;
  const OpenResult result = network_.open(destination_.family, settings.source);
  if (result != OpenResult::Opened) {
    write(openingProblem(result, tool_, settings.source) + std::string(kLineEnd));
    return false;
  }
  names_.want(settings.resolveNames);
  if (found->numeric) {
    see(destination_);
  } else {
    name_ = settings.destination;
  }
  return true;
}

bool RouteSession::findThrough(const std::vector<std::string>& hosts) {
  for (const std::string& host : hosts) {
    const auto found = network_.resolve(host, FamilyChoice::IPv4);
    if (!found) {
      write("Unable to resolve the name " + host + " of a host on the way.\r\n");
      return false;
    }
    through_.push_back(found->address);
  }
  return true;
}

std::optional<std::string> RouteSession::title(Microseconds now) const {
  const std::optional<std::string> label = name_.empty()
                                               ? names_.label(destination_, now)
                                               : std::optional(nameAndAddress(name_, destination_));
  if (!label) {
    return std::nullopt;
  }
  const std::string hops = "over a maximum of " + std::to_string(hops_) + " hops";
  if (*label == destination_.text()) {
    return "\r\nTracing route to " + *label + " " + hops + "\r\n";
  }
  return "\r\nTracing route to " + *label + "\r\n" + hops + ":\r\n";
}

Sending RouteSession::send(const Probe& probe, int priority) {
  EchoRequest request;
  request.destination = destination_;
  request.sequence = probe.sequence;
  request.size = kProbeSize;
  request.ttl = probe.hop;
  request.through = through_;
  request.oneFlow = true;
  request.priority = priority;
  return network_.send(request);
}

std::optional<Incoming> RouteSession::wait(Microseconds until) {
  Incoming incoming;
  switch (network_.wait(until, incoming)) {
    case WaitEnd::Arrived:
      return incoming;
    case WaitEnd::NameCame:
      names_.collect();
      break;
    case WaitEnd::Interrupted:
      interrupted_ = true;
      break;
    case WaitEnd::TimedOut:
      break;
  }
  return std::nullopt;
}

void RouteSession::write(std::string_view text) {
  if (!text.empty() && !readerGone_) {
    readerGone_ = !output_.write(text);
  }
}

int RouteSession::exitCode(int otherwise) const {
  if (readerGone_) {
    return kRouteFailed;
  }
  return interrupted_ ? kRouteInterrupted : otherwise;
}

}  // namespace veltrin
