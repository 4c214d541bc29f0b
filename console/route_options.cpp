// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/route_options.h"

#include <algorithm>
#include <limits>

#include "console/icmp.h"
#include "console/options.h"

namespace veltrin {
namespace {

constexpr std::uint64_t kMostMilliseconds = std::numeric_limits<std::uint32_t>::max();
constexpr std::uint64_t kMostHops = 255;
constexpr std::uint64_t kMostQueries = 65535;
constexpr std::uint64_t kLongestPeriod = 3'600'000;

constexpr std::string_view kNoDestination = "A target name or address must be specified.";
constexpr std::string_view kNoRoundTrip =
    "Option -R is not supported: the routing header that it needs is withdrawn (RFC 5095).";

// Adds the parts of a word between commas.
void addParts(std::vector<std::string>& parts, const std::string& word) {
  std::size_t from = 0;
  while (from <= word.size()) {
    const std::size_t comma = std::min(word.find(',', from), word.size());
    if (comma > from) {
      parts.push_back(word.substr(from, comma - from));
    }
    from = comma + 1;
  }
}

// Reads one command line of a tool whose own options a derived class knows.
template <typename Settings>
class RouteReading {
 public:
  explicit RouteReading(const std::vector<std::string>& arguments) : reader(arguments) {}
  virtual ~RouteReading() = default;
  RouteReading(const RouteReading&) = delete;
  RouteReading& operator=(const RouteReading&) = delete;

  RouteCommand<Settings> run() {
    while (reader.next()) {
      if (!reader.isOption()) {
        destination.takeDestination();
      } else if (!takeOwn(reader.letter())) {
        takeShared(lowerLetter(reader.letter()));
      }
    }
    if (!command_.help) {
      takeHosts();
      destination.check(kNoDestination);
      command_.problem = reader.problem();
      command_.usage = reader.wantsUsage();
    }
    return command_;
  }

 protected:
  // Takes the present option when it is one of the tool's own.
  virtual bool takeOwn(char letter) = 0;

  // The present option's words are the hosts to pass.
  void takeThrough() {
    destination.needIpv4();
    words_ = reader.words();
  }

  OptionReader reader;
  RouteCommand<Settings> command_;
  Settings& settings = command_.settings;
  DestinationReader destination{reader, settings};

 private:
  void takeShared(char letter) {
    switch (letter) {
      case 'h':
        reader.take(settings.hops, 1, kMostHops);
        return;
      case 'w':
        reader.take(settings.timeout, 0, kMostMilliseconds);
        return;
      case '4':
        destination.chooseFamily(FamilyChoice::IPv4);
        return;
      case '6':
        destination.chooseFamily(FamilyChoice::IPv6);
        return;
      case '?':
        command_.usage = true;
        command_.help = true;
        reader.skipRest();
        return;
      default:
        reader.badOption();
    }
  }

  void takeHosts() {
    if (settings.destination.empty() && words_.size() > 1) {
      settings.destination = words_.back();
      words_.pop_back();
    }
    for (const std::string& word : words_) {
      addParts(settings.through, word);
    }
    if (settings.through.size() > kThroughMost) {
      reader.mistake("A packet has room for " + std::to_string(kThroughMost) +
                     " hosts on its way.");
    }
  }

  std::vector<std::string> words_;  // that name the hosts to pass
};

class TracertReading : public RouteReading<TracertSettings> {
 public:
  using RouteReading::RouteReading;

 private:
  bool takeOwn(char letter) override {
    switch (lowerLetter(letter)) {
      case 'd':
        settings.resolveNames = false;
        return true;
      case 'j':
        takeThrough();
        return true;
      case 'r':
        reader.mistake(std::string(kNoRoundTrip));
        return true;
      case 's':
        destination.takeSource();
        return true;
      default:
        return false;
    }
  }
};

class PathpingReading : public RouteReading<PathpingSettings> {
 public:
  using RouteReading::RouteReading;

 private:
  bool takeOwn(char letter) override {
    if (letter == 'P') {
      settings.reservations = true;
      return true;
    }
    switch (lowerLetter(letter)) {
      case 'b':
        settings.sideBySide = true;
        return true;
      case 'g':
        takeThrough();
        return true;
      case 'i':
        destination.takeSource();
        return true;
      case 'n':
        settings.resolveNames = false;
        return true;
      case 'p':
        reader.take(settings.period, 1, kLongestPeriod);
        return true;
      case 'q':
        reader.take(settings.queries, 1, kMostQueries);
        return true;
      case 'r':
        settings.reservingHops = true;
        return true;
      case 't':
        settings.priorities = true;
        return true;
      default:
        return false;
    }
  }
};

// A tool without a word to go by tells what it would like to hear.
template <typename Settings>
RouteCommand<Settings> withoutArguments() {
  RouteCommand<Settings> command;
  command.usage = true;
  return command;
}

}  // namespace

TracertCommand readTracertCommand(const std::vector<std::string>& arguments) {
  return arguments.empty() ? withoutArguments<TracertSettings>() : TracertReading(arguments).run();
}

PathpingCommand readPathpingCommand(const std::vector<std::string>& arguments) {
  return arguments.empty() ? withoutArguments<PathpingSettings>()
                           : PathpingReading(arguments).run();
}

}  // namespace veltrin
