// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/tracert.h"

#include <algorithm>

#include "console/sentences.h"

namespace veltrin {
namespace {

// Of a probe, when nothing else is said.
constexpr Microseconds kTimeout = 4 * kSecond;

std::string columnOf(Microseconds trip) {
  const std::string time = trip < kMillisecond ? "  <1" : padded(inMilliseconds(trip), 4);
  return time + " ms  ";
}

}  // namespace

int Tracert::run(const std::vector<std::string>& arguments) {
  const TracertCommand command = readTracertCommand(arguments);
  if (const auto code = answerInsteadOfRun(command, tracertUsage(), session_)) {
    return *code;
  }
  return trace(command.settings);
}

int Tracert::trace(const RouteSettings& settings) {
  if (!session_.begin(settings)) {
    return kRouteFailed;
  }
  ProbeBook book(settings.hops, patienceOf(settings, kTimeout));
  RouteTrace trace(book, settings.hops, session_.now());
  trace_ = &trace;
  tellAll();
  trace_ = nullptr;
  return session_.exitCode(failed_ ? kRouteFailed : kRouteDone);
}

void Tracert::tellAll() {
  while (!finished_ && !session_.ended()) {
    if (const auto probe = trace_->next(session_.now())) {
      trace_->sent(*probe, session_.send(*probe));
    }
    session_.write(tell(session_.now()));
    if (finished_ || session_.ended()) {
      return;
    }
    const auto incoming = session_.wait(std::min(trace_->nextAt(), waitsFor_));
    if (incoming && trace_->take(*incoming)) {
      session_.see(incoming->from);
    }
  }
  if (begun_) {
    session_.write(kLineEnd);
  }
}

// All that is known and not written yet.
std::string Tracert::tell(Microseconds now) {
  std::string text;
  while (!finished_ && tellNext(now, text) == Step::GoOn) {
  }
  return text;
}

Tracert::Step Tracert::tellNext(Microseconds now, std::string& text) {
  if (!titled_) {
    return tellTitle(now, text);
  }
  if (!begun_ && hop_ > trace_->end()) {
    finish(text);
    return Step::GoOn;
  }
  if (!begun_) {
    begun_ = true;
    trace_->tell(hop_);
    text += padded(static_cast<std::uint64_t>(hop_), 3) + "  ";
  }
  return column_ < kProbesOfHop ? tellColumn(now, text) : tellSender(now, text);
}

Tracert::Step Tracert::tellTitle(Microseconds now, std::string& text) {
  const std::optional<std::string> title = session_.title(now);
  if (!title) {
    return waitUntil(session_.titleAt());
  }
  text += *title;
  text += kLineEnd;
  titled_ = true;
  return Step::GoOn;
}

Tracert::Step Tracert::tellColumn(Microseconds now, std::string& text) {
  switch (trace_->fate(hop_, column_, now)) {
    case RouteTrace::Fate::Open:
      return waitUntil(trace_->lostAt(hop_, column_));
    case RouteTrace::Fate::Answered:
      return tellAnswer(trace_->answer(hop_, column_), now, text);
    case RouteTrace::Fate::Lost:
      text += kLostColumn;
      ++column_;
      return Step::GoOn;
    case RouteTrace::Fate::Failed:
      break;
  }
  text += "General failure.\r\n";
  failed_ = true;
  finish(text);
  return Step::GoOn;
}

Tracert::Step Tracert::tellAnswer(const ProbeAnswer& answer, Microseconds now, std::string& text) {
  if (answer.meaning != Meaning::Refusal) {
    text += columnOf(answer.trip);
    sender_ = answer.from;
    ++column_;
    return Step::GoOn;
  }
  const std::optional<std::string> label = session_.label(answer.from, now);
  if (!label) {
    return waitUntil(session_.labelAt(answer.from));
  }
  text += *label + "  reports: " + std::string(sentenceOf(answer.error)) + std::string(kLineEnd);
  finish(text);
  return Step::GoOn;
}

// The end of a line.
Tracert::Step Tracert::tellSender(Microseconds now, std::string& text) {
  if (!sender_) {
    text += "Request timed out.\r\n";
  } else {
    const std::optional<std::string> label = session_.label(*sender_, now);
    if (!label) {
      return waitUntil(session_.labelAt(*sender_));
    }
    text += *label + " \r\n";
  }
  sender_.reset();
  begun_ = false;
  column_ = 0;
  ++hop_;
  return Step::GoOn;
}

Tracert::Step Tracert::waitUntil(Microseconds moment) {
  waitsFor_ = moment;
  return Step::Wait;
}

void Tracert::finish(std::string& text) {
  text += kTraceComplete;
  begun_ = false;
  finished_ = true;
}

}  // namespace veltrin
