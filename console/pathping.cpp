// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/pathping.h"

#include <algorithm>

#include "console/pathping_table.h"
#include "console/sentences.h"

namespace veltrin {
namespace {

// Of a query, when nothing else is said.
constexpr Microseconds kTimeout = 3 * kSecond;

// Queries with priority: how many each hop gets, and the highest priority that
// every user may give (SO_PRIORITY, socket(7)).
constexpr std::uint64_t kPriorityQueries = 3;
constexpr int kPriority = 6;

constexpr std::string_view kNoReservations =
    "\r\n"
    "RSVP PATH connectivity cannot be tested: its messages are IP protocol 46, and this\r\n"
    "program keeps no right to send any but echoes.\r\n";
constexpr std::string_view kNoReservingHops =
    "\r\n"
    "Which hops are RSVP aware cannot be tested: routers do not tell it in what they\r\n"
    "answer to echoes.\r\n";
constexpr std::string_view kTagsUnseen =
    "Which links carried the priority as a tag in their frames cannot be seen from here.\r\n";

// The address that a hop shows which has none.
Address noAddress(Family family) {
  Address none;
  none.family = family;
  return none;
}

// Milliseconds in which each hop gets one query. In turn, a router is asked so
// seldom that one which limits its answers to a few a second still gives them all.
std::uint64_t roundOf(const PathpingSettings& settings, std::size_t hops) {
  const std::uint64_t periods = settings.sideBySide ? std::min<std::size_t>(hops, 1) : hops;
  return periods * settings.period;
}

// Whole seconds that all queries take, rounded up.
std::uint64_t secondsFor(const PathpingSettings& settings, std::size_t hops) {
  return (settings.queries * roundOf(settings, hops) + 999) / 1000;
}

}  // namespace

int Pathping::run(const std::vector<std::string>& arguments) {
  const PathpingCommand command = readPathpingCommand(arguments);
  if (const auto code = answerInsteadOfRun(command, pathpingUsage(), session_)) {
    return *code;
  }
  settings_ = command.settings;
  return measure();
}

int Pathping::measure() {
  if (!session_.begin(settings_)) {
    return kRouteFailed;
  }
  findMachine();
  ProbeBook book(settings_.hops, patienceOf(settings_, kTimeout));
  RouteTrace trace(book, settings_.hops, session_.now());
  findPath(trace);
  if (!session_.ended() && !failed_) {
    tellReservations();
    tellPriorities(book);
    tellStatistics(book);
  }
  if (!session_.ended()) {
    session_.write(kTraceComplete);
  }
  return session_.exitCode(failed_ ? kRouteFailed : kRouteDone);
}

void Pathping::findMachine() {
  const std::optional<Address> source =
      settings_.source ? settings_.source : session_.network().sourceFor(session_.destination());
  machine_ = source ? source->text() : "";
  const std::string name = session_.network().hostName();
  if (settings_.resolveNames && !name.empty()) {
    machine_ = source ? nameAndAddress(name, *source) : name;
  }
}

void Pathping::findPath(RouteTrace& trace) {
  while (!session_.ended()) {
    if (const auto probe = trace.next(session_.now())) {
      trace.sent(*probe, session_.send(*probe));
    }
    session_.write(tell(trace, session_.now()));
    if (found_ || session_.ended()) {
      return;
    }
    const auto incoming = session_.wait(std::min(trace.nextAt(), waitsFor_));
    if (incoming && trace.take(*incoming)) {
      session_.see(incoming->from);
    }
    trace.tell(static_cast<int>(path_.size()));
  }
}

// All that is known of the path and not written yet.
std::string Pathping::tell(const RouteTrace& trace, Microseconds now) {
  std::string text;
  while (!found_ && tellNext(trace, now, text) == Step::GoOn) {
  }
  return text;
}

Pathping::Step Pathping::tellNext(const RouteTrace& trace, Microseconds now, std::string& text) {
  if (!titled_) {
    return tellTitle(now, text);
  }
  if (static_cast<int>(path_.size()) >= trace.end()) {
    found_ = true;
    return Step::GoOn;
  }
  return tellHop(trace, now, text);
}

Pathping::Step Pathping::tellTitle(Microseconds now, std::string& text) {
  const std::optional<std::string> title = session_.title(now);
  if (!title) {
    return waitUntil(session_.titleAt());
  }
  text += *title + "  0  " + machine_ + " \r\n";
  titled_ = true;
  return Step::GoOn;
}

// The hop behind those that are told. Its first answer tells where it is; it is
// silent when all of its probes are lost. Behind the last one that answers, one
// silent hop is told and the path is taken to end.
Pathping::Step Pathping::tellHop(const RouteTrace& trace, Microseconds now, std::string& text) {
  const int hop = static_cast<int>(path_.size()) + 1;
  const std::string number = padded(static_cast<std::uint64_t>(hop), 3) + "  ";
  Microseconds lostAt = 0;
  for (int probe = 0; probe < kProbesOfHop; ++probe) {
    switch (trace.fate(hop, probe, now)) {
      case RouteTrace::Fate::Answered: {
        std::string line = number;
        const Step step = tellAnswer(trace.answer(hop, probe), now, line);
        text += step == Step::GoOn ? line : "";
        return step;
      }
      case RouteTrace::Fate::Failed:
        text += number + "General failure.\r\n";
        failed_ = path_.empty();
        found_ = true;
        return Step::GoOn;
      case RouteTrace::Fate::Open:
        lostAt = std::max(lostAt, trace.lostAt(hop, probe));
        break;
      case RouteTrace::Fate::Lost:
        break;
    }
  }
  if (lostAt > 0) {
    return waitUntil(lostAt);
  }
  text += number;
  for (int probe = 0; probe < kProbesOfHop; ++probe) {
    text += kLostColumn;
  }
  text += kLineEnd;
  if (trace.furthest() < hop) {
    found_ = true;
  } else {
    path_.emplace_back();
  }
  return Step::GoOn;
}

Pathping::Step Pathping::tellAnswer(const ProbeAnswer& answer, Microseconds now,
                                    std::string& text) {
  const std::optional<std::string> label = session_.label(answer.from, now);
  if (!label) {
    return waitUntil(session_.labelAt(answer.from));
  }
  text += *label;
  if (answer.meaning == Meaning::Refusal) {
    text += "  reports: " + std::string(sentenceOf(answer.error));
  } else {
    text += ' ';
  }
  text += kLineEnd;
  path_.emplace_back(answer.from);
  return Step::GoOn;
}

Pathping::Step Pathping::waitUntil(Microseconds moment) {
  waitsFor_ = moment;
  return Step::Wait;
}

void Pathping::tellReservations() {
  if (settings_.reservations) {
    session_.write(kNoReservations);
  }
  if (settings_.reservingHops) {
    session_.write(kNoReservingHops);
  }
}

void Pathping::tellPriorities(ProbeBook& book) {
  if (!settings_.priorities) {
    return;
  }
  session_.write("\r\nSending echoes with priority " + std::to_string(kPriority) + "...\r\n");
  RouteStatistics statistics = statisticsOf(book, kPriorityQueries);
  query(statistics, kPriority);
  const std::vector<HopFigures> figures = statistics.figures(kNever);
  std::string text;
  for (std::size_t at = 0; at < path_.size(); ++at) {
    text += padded(at + 1, 3) + (figures[at].received > 0 ? "  answers    " : "  no answer  ") +
            labelOf(at) + " \r\n";
  }
  session_.write(text + std::string(kTagsUnseen));
}

void Pathping::tellStatistics(ProbeBook& book) {
  if (session_.ended()) {
    return;
  }
  session_.write("\r\nComputing statistics for " +
                 std::to_string(secondsFor(settings_, path_.size())) + " seconds...\r\n");
  RouteStatistics statistics = statisticsOf(book, settings_.queries);
  query(statistics, 0);
  const std::vector<HopFigures> figures =
      statistics.figures(session_.ended() ? session_.now() : kNever);
  std::vector<TableHop> hops;
  for (std::size_t at = 0; at < path_.size(); ++at) {
    hops.push_back(TableHop{labelOf(at), figures[at]});
  }
  session_.write(pathTable(machine_, hops));
}

RouteStatistics Pathping::statisticsOf(ProbeBook& book, std::uint64_t queries) {
  const auto round = static_cast<Microseconds>(roundOf(settings_, path_.size()));
  return {book, static_cast<int>(path_.size()), queries, round * kMillisecond, session_.now()};
}

// Between two queries it sleeps and then reads all answers that came meanwhile: they
// bear their moments, and to be woken by each would cost more than all the rest.
void Pathping::query(RouteStatistics& statistics, int priority) {
  while (!session_.ended()) {
    const Microseconds now = session_.now();
    if (const auto probe = statistics.next(now)) {
      statistics.sent(*probe, session_.send(*probe, priority));
      continue;
    }
    if (now >= statistics.overAt()) {
      return;
    }
    const bool more = statistics.nextAt() != kNever;
    if (const auto incoming = session_.wait(more ? now : statistics.overAt())) {
      statistics.take(*incoming);
    } else if (more && !session_.ended()) {
      session_.rest(statistics.nextAt());
    }
  }
}

std::string Pathping::labelOf(std::size_t hop) const {
  const Address address = path_[hop].value_or(noAddress(session_.destination().family));
  return session_.label(address, kNever).value_or(address.text());
}

}  // namespace veltrin
