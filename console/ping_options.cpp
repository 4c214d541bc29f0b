// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/ping_options.h"

#include <limits>

#include "console/options.h"

namespace veltrin {
namespace {

constexpr std::uint64_t kMostEchoes = std::numeric_limits<std::uint32_t>::max();
constexpr std::uint64_t kMostMilliseconds = std::numeric_limits<std::uint32_t>::max();

// Leaves room for the headers in a packet of 65535 bytes.
constexpr std::uint64_t kMostData = 65500;

// What an IPv4 header has room for (RFC 791 section 3.1).
constexpr std::uint64_t kMostRouteSlots = 9;
constexpr std::uint64_t kMostStampSlots = 4;

constexpr std::string_view kUsage =
    "\r\n"
    "Usage: ping [-t] [-a] [-n count] [-l size] [-f] [-i TTL] [-v TOS]\r\n"
    "            [-r count] [-s count] [-w timeout] [-R] [-S srcaddr]\r\n"
    "            [-4] [-6] destination\r\n"
    "\r\n"
    "Sends echoes to a host and shows how long its replies take.\r\n"
    "\r\n"
    "Options:\r\n"
    "    -t             Go on until Ctrl+C is pressed.\r\n"
    "    -a             Show the name that belongs to the address.\r\n"
    "    -n count       How many echoes to send (4).\r\n"
    "    -l size        How many data bytes an echo carries (32).\r\n"
    "    -f             Forbid routers to split the packet (IPv4 only).\r\n"
    "    -i TTL         How many hops a packet may travel.\r\n"
    "    -v TOS         Type of service of the packets (IPv4 only).\r\n"
    "    -r count       Show the route of up to count hops (IPv4 only).\r\n"
    "    -s count       Show the clocks of up to count hops (IPv4 only).\r\n"
    "    -w timeout     How many milliseconds to wait for a reply (4000).\r\n"
    "    -R             Not available: the IPv6 header it needs is withdrawn.\r\n"
    "    -S srcaddr     Send from this address of the machine.\r\n"
    "    -4             Use IPv4.\r\n"
    "    -6             Use IPv6.\r\n"
    "    -?             Show these lines.\r\n";

// Reads one command line into settings.
class Reading {
 public:
  explicit Reading(const std::vector<std::string>& arguments) : reader_(arguments) {}

  PingCommand run() {
    while (reader_.next()) {
      if (!reader_.isOption()) {
        destination_.takeDestination();
      } else {
        takeOption();
      }
    }
    if (!command_.usage) {
      checkTogether();
      command_.problem = reader_.problem();
      command_.usage = reader_.wantsUsage();
    }
    return command_;
  }

 private:
  void takeOption() {
    // Two letters mean something else in the other case.
    switch (reader_.letter()) {
      case 'R':
        reader_.mistake(
            "Option -R is not supported: the routing header that it needs is withdrawn "
            "(RFC 5095).");
        return;
      case 'S':
        destination_.takeSource();
        return;
      case 'r':
        takeForIpv4(settings_.routeSlots, 1, kMostRouteSlots);
        return;
      case 's':
        takeForIpv4(settings_.stampSlots, 1, kMostStampSlots);
        return;
      default:
        takeAnyCase(lowerLetter(reader_.letter()));
    }
  }

  void takeAnyCase(char letter) {
    switch (letter) {
      case 't':
        settings_.untilStopped = true;
        return;
      case 'a':
        settings_.resolveNames = true;
        return;
      case 'n':
        reader_.take(settings_.count, 1, kMostEchoes);
        return;
      case 'l':
        reader_.take(settings_.size, 0, kMostData);
        return;
      case 'f':
        settings_.dontFragment = true;
        destination_.needIpv4();
        return;
      case 'i':
        reader_.take(settings_.ttl, 1, 255);
        return;
      case 'v':
        takeForIpv4(settings_.tos, 0, 255);
        return;
      case 'w':
        reader_.take(settings_.timeout, 0, kMostMilliseconds);
        return;
      case '4':
        destination_.chooseFamily(FamilyChoice::IPv4);
        return;
      case '6':
        destination_.chooseFamily(FamilyChoice::IPv6);
        return;
      case '?':
        command_.usage = true;
        reader_.skipRest();
        return;
      default:
        reader_.badOption();
    }
  }

  void takeForIpv4(int& setting, std::uint64_t least, std::uint64_t most) {
    destination_.needIpv4();
    reader_.take(setting, least, most);
  }

  // What no option can tell by itself.
  void checkTogether() {
    destination_.check("IP address must be specified.");
    if (optionsSize(settings_.routeSlots, settings_.stampSlots) > kOptionsSpace) {
      reader_.mistake("Options -r and -s together ask for more hops than a packet has room for.");
    }
  }

  OptionReader reader_;
  PingCommand command_;
  PingSettings& settings_ = command_.settings;
  DestinationReader destination_{reader_, settings_};
};

}  // namespace

PingCommand readPingCommand(const std::vector<std::string>& arguments) {
  if (arguments.empty()) {
    PingCommand command;
    command.problem = "IP address must be specified.";
    command.usage = true;
    return command;
  }
  return Reading(arguments).run();
}

std::string_view pingUsage() { return kUsage; }

}  // namespace veltrin
