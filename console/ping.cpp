// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/ping.h"

#include <algorithm>
#include <utility>

#include "console/sentences.h"

namespace veltrin {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kTooBig = "Packet needs to be fragmented but DF set.";
constexpr std::string_view kTransmitFailed = "PING: transmit failed. General failure.";

// From one echo to the next.
constexpr Microseconds kInterval = kSecond;

}  // namespace

void PingFigures::addReply(std::uint64_t milliseconds) {
  minimum_ = replies_ == 0 ? milliseconds : std::min(minimum_, milliseconds);
  maximum_ = std::max(maximum_, milliseconds);
  total_ += milliseconds;
  ++replies_;
  ++received_;
}

std::uint64_t PingFigures::lossPercent() const { return sent_ == 0 ? 0 : lost() * 100 / sent_; }

int Ping::run(const std::vector<std::string>& arguments) {
  PingCommand command = readPingCommand(arguments);
  if (!command.problem.empty()) {
    line(command.problem);
  }
  if (command.usage && !readerGone_) {
    readerGone_ = !output_.write(pingUsage());
  }
  if (!command.problem.empty() || readerGone_) {
    return kPingFailed;
  }
  if (command.usage) {
    return kPingAnswered;
  }
  settings_ = std::move(command.settings);
  return start();
}

int Ping::start() {
  if (!findDestination() || !openNetwork()) {
    return kPingFailed;
  }
  announce();
  exchangeAll();
  printStatistics();
  return figures_.replies() > 0 && !readerGone_ ? kPingAnswered : kPingFailed;
}

bool Ping::findDestination() {
  const auto found = network_.resolve(settings_.destination, settings_.family);
  if (!found) {
    line("Ping request could not find host " + settings_.destination +
         ". Please check the name and try again.");
    return false;
  }
  destination_ = found->address;
  if (!found->numeric) {
    name_ = settings_.destination;
  } else if (settings_.resolveNames) {
    name_ = network_.nameOf(destination_).value_or("");
  }
  return true;
}

bool Ping::openNetwork() {
  const OpenResult result = network_.open(destination_.family, settings_.source);
  if (result != OpenResult::Opened) {
    line(openingProblem(result, "PING", settings_.source));
  }
  return result == OpenResult::Opened;
}

void Ping::announce() {
  std::string text = "Pinging ";
  if (name_.empty()) {
    text += destination_.text();
  } else {
    text += name_ + " [" + destination_.text() + "]";
  }
  if (settings_.source) {
    text += " from " + settings_.source->text();
  }
  line("");
  line(text + " with " + std::to_string(settings_.size) + " bytes of data:");
}

void Ping::exchangeAll() {
  std::uint16_t sequence = 1;
  while (!readerGone_) {
    const Microseconds due = network_.now() + kInterval;
    if (exchange(sequence) == Step::End) {
      return;
    }
    const bool all = !settings_.untilStopped && figures_.sent() >= settings_.count;
    if (all || rest(due) == Step::End) {
      return;
    }
    ++sequence;
  }
}

Ping::Step Ping::exchange(std::uint16_t sequence) {
  EchoRequest request;
  request.destination = destination_;
  request.sequence = sequence;
  request.size = settings_.size;
  request.ttl = settings_.ttl;
  request.tos = settings_.tos;
  request.dontFragment = settings_.dontFragment;
  request.routeSlots = settings_.routeSlots;
  request.stampSlots = settings_.stampSlots;

  const Sending sending = network_.send(request);
  figures_.addSent();
  switch (sending.result) {
    case SendResult::Sent:
      return awaitAnswer(sequence, sending.at);
    case SendResult::TooBig:
      line(std::string(kTooBig));
      break;
    case SendResult::Failed:
      line(std::string(kTransmitFailed));
      break;
  }
  return Step::GoOn;
}

Ping::Step Ping::awaitAnswer(std::uint16_t sequence, Microseconds sentAt) {
  const Microseconds deadline =
      sentAt + static_cast<Microseconds>(settings_.timeout) * kMillisecond;
  for (;;) {
    Incoming answer;
    switch (network_.wait(deadline, answer)) {
      case WaitEnd::Interrupted:
        interrupted_ = true;
        return Step::End;
      case WaitEnd::TimedOut:
        line("Request timed out.");
        return Step::GoOn;
      case WaitEnd::NameCame:
        break;
      case WaitEnd::Arrived:
        if (answer.at > deadline) {
          line("Request timed out.");
          return Step::GoOn;
        }
        // Answers to earlier echoes came too late or twice: those are settled.
        if (answer.sequence == sequence) {
          printAnswer(answer, sentAt);
          return Step::GoOn;
        }
    }
  }
}

Ping::Step Ping::rest(Microseconds until) {
  for (;;) {
    Incoming unwanted;
    switch (network_.wait(until, unwanted)) {
      case WaitEnd::Interrupted:
        interrupted_ = true;
        return Step::End;
      case WaitEnd::TimedOut:
        return Step::GoOn;
      case WaitEnd::NameCame:
        break;
      case WaitEnd::Arrived:
        if (unwanted.at > until) {
          return Step::GoOn;
        }
    }
  }
}

void Ping::printAnswer(const Incoming& answer, Microseconds sentAt) {
  if (!answer.error) {
    printReply(answer, std::max<Microseconds>(answer.at - sentAt, 0));
    return;
  }
  // IPv6 routers never split a packet, so there no flag forbids it.
  if (*answer.error == IcmpError::TooBig && answer.from.family == Family::IPv4) {
    line(std::string(kTooBig));
    return;
  }
  figures_.addError();
  line("Reply from " + answer.from.text() + ": " + std::string(sentenceOf(*answer.error)));
}

void Ping::printReply(const Incoming& reply, Microseconds elapsed) {
  const auto milliseconds = static_cast<std::uint64_t>(elapsed / kMillisecond);
  figures_.addReply(milliseconds);

  const bool ipv4 = reply.from.family == Family::IPv4;
  std::string text = "Reply from " + reply.from.text() + ":";
  if (ipv4) {
    text += " bytes=" + std::to_string(reply.size);
    if (reply.size != settings_.size) {
      text += " (sent " + std::to_string(settings_.size) + ")";
    }
  }
  text += milliseconds == 0 ? " time<1ms" : " time=" + std::to_string(milliseconds) + "ms";
  if (ipv4) {
    text += " TTL=" + std::to_string(reply.ttl);
  }
  line(std::move(text));
  printRoute(reply);
  printTimes(reply);
}

void Ping::printRoute(const Incoming& reply) {
  std::string lead = "    Route: ";
  for (std::size_t i = 0; i < reply.route.size(); ++i) {
    const bool last = i + 1 == reply.route.size();
    line(lead + reply.route[i].text() + (last ? "" : " ->"));
    lead = std::string(lead.size(), ' ');
  }
}

void Ping::printTimes(const Incoming& reply) {
  std::string lead = "    Timestamp: ";
  for (std::size_t i = 0; i < reply.stamps.size(); ++i) {
    const bool last = i + 1 == reply.stamps.size();
    line(lead + reply.stamps[i].hop.text() + " : " + std::to_string(reply.stamps[i].milliseconds) +
         (last ? "" : " ->"));
    lead = std::string(lead.size(), ' ');
  }
}

void Ping::printStatistics() {
  if (figures_.sent() > 0) {
    line("");
    line("Ping statistics for " + destination_.text() + ":");
    line("    Packets: Sent = " + std::to_string(figures_.sent()) + ", Received = " +
         std::to_string(figures_.received()) + ", Lost = " + std::to_string(figures_.lost()) +
         " (" + std::to_string(figures_.lossPercent()) + "% loss),");
  }
  if (figures_.replies() > 0) {
    line("Approximate round trip times in milli-seconds:");
    if (!readerGone_) {
      output_.letReaderCatchUp();
    }
    // A blank ends this line: with the line break, three characters follow "ms".
    line("    Minimum = " + std::to_string(figures_.minimum()) +
         "ms, Maximum = " + std::to_string(figures_.maximum()) +
         "ms, Average = " + std::to_string(figures_.average()) + "ms ");
  }
  if (interrupted_) {
    line("Control-C");
    line("");
  }
}

void Ping::line(std::string text) {
  if (!readerGone_) {
    text += kLineEnd;
    readerGone_ = !output_.write(text);
  }
}

}  // namespace veltrin
