// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/update_endpoint/options.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <optional>
#include <string_view>
#include <system_error>

namespace veltrin::endpoint {
namespace {

constexpr std::uint64_t kHighestPort = 65535;

std::optional<std::uint64_t> numberIn(std::string_view text, std::uint64_t least,
                                      std::uint64_t most) {
  std::uint64_t number = 0;
  const char* const end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, number);
  if (read.ec != std::errc{} || read.ptr != end || number < least || number > most) {
    return std::nullopt;
  }
  return number;
}

// The pieces between the commas; one empty piece for an empty text.
std::vector<std::string> piecesOf(const std::string& text) {
  std::vector<std::string> pieces(1);
  for (const char character : text) {
    if (character == ',') {
      pieces.emplace_back();
    } else {
      pieces.back() += character;
    }
  }
  return pieces;
}

// Goes through the arguments from the first to the last, or to the first mistake.
class Reader {
 public:
  explicit Reader(const std::vector<std::string>& arguments) : arguments_(arguments) {}

  Options read() {
    while (at_ < arguments_.size() && options_.mistake.empty() && !options_.help) {
      readArgument(arguments_[at_++]);
    }
    if (!options_.help && options_.version.empty()) {
      mistake("The version that callers are told is missing.");
    }
    return std::move(options_);
  }

 private:
  void mistake(const std::string& sentence) {
    if (options_.mistake.empty()) options_.mistake = sentence;
  }

  void readArgument(const std::string& argument) {
    if (argument == "-?" || argument == "--help") {
      options_.help = true;
    } else if (argument.starts_with('-')) {
      const std::size_t sign = argument.find('=');
      readOption(argument.substr(0, sign), sign == std::string::npos
                                               ? std::nullopt
                                               : std::optional(argument.substr(sign + 1)));
    } else {
      readVersion(argument);
    }
  }

  void readVersion(const std::string& text) {
    if (!options_.version.empty()) {
      mistake("There is one version too many: " + text + ".");
    } else if (!isVersion(text)) {
      mistake("\"" + text + "\" is no version: digit, point, two digits, as in 1.03.");
    } else {
      options_.version = text;
    }
  }

  void readOption(const std::string& name, std::optional<std::string> value) {
    static constexpr std::string_view kNames[] = {"--ports", "--listen", "--most-callers",
                                                  "--most-per-address", "--timeout"};
    if (std::find(std::begin(kNames), std::end(kNames), name) == std::end(kNames)) {
      return mistake("There is no option " + name + ".");
    }
    if (!value && at_ < arguments_.size()) value = arguments_[at_++];
    if (!value) return mistake("The value of " + name + " is missing.");
    if (name == "--ports") return readPorts(*value);
    if (name == "--listen") return readAddresses(*value);
    if (name == "--most-callers") {
      takeNumber(name, *value, 1, kMostCallersCeiling,
                 [this](std::uint64_t number) { options_.limits.mostCallers = number; });
    } else if (name == "--most-per-address") {
      takeNumber(name, *value, 1, kMostCallersCeiling,
                 [this](std::uint64_t number) { options_.limits.mostPerAddress = number; });
    } else {
      takeNumber(name, *value, kShortestTimeout.count(), kLongestTimeout.count(),
                 [this](std::uint64_t number) {
                   options_.limits.timeout = std::chrono::milliseconds(number);
                 });
    }
  }

  template <typename Take>
  void takeNumber(const std::string& name, const std::string& value, std::uint64_t least,
                  std::uint64_t most, Take&& take) {
    if (const auto number = numberIn(value, least, most)) {
      take(*number);
    } else {
      mistake("The value of " + name + " is to be a number from " + std::to_string(least) + " to " +
              std::to_string(most) + ", not \"" + value + "\".");
    }
  }

  void readPorts(const std::string& value) {
    options_.choosesSockets = true;
    options_.ports.clear();
    for (const std::string& piece : piecesOf(value)) {
      const auto number = numberIn(piece, 0, kHighestPort);
      if (!number) {
        return mistake("\"" + piece + "\" in --ports is no port: a number from 0 to 65535.");
      }
      const auto port = static_cast<std::uint16_t>(*number);
      if (port != 0 && contains(options_.ports, port)) {
        return mistake("The port " + piece + " is named twice.");
      }
      options_.ports.push_back(port);
    }
    if (options_.ports.size() > kMostSockets) tooMany("ports");
  }

  void readAddresses(const std::string& value) {
    options_.choosesSockets = true;
    options_.addresses.clear();
    for (const std::string& piece : piecesOf(value)) {
      const auto address = Address::parse(piece);
      if (!address) return mistake("\"" + piece + "\" in --listen is no IP address.");
      if (contains(options_.addresses, *address)) {
        return mistake("The address " + piece + " is named twice.");
      }
      options_.addresses.push_back(*address);
    }
    if (options_.addresses.size() > kMostSockets) tooMany("addresses");
  }

  void tooMany(const std::string& what) {
    mistake("There are more than " + std::to_string(kMostSockets) + " " + what + ".");
  }

  template <typename Value>
  static bool contains(const std::vector<Value>& values, const Value& value) {
    return std::find(values.begin(), values.end(), value) != values.end();
  }

  const std::vector<std::string>& arguments_;
  std::size_t at_ = 0;
  Options options_;
};

}  // namespace

Options readOptions(const std::vector<std::string>& arguments) { return Reader(arguments).read(); }

std::string usage() {
  return "Usage: update_endpoint [OPTIONS] VERSION\n"
         "\n"
         "Tells every caller the newest VERSION (digit, point, two digits, as in 1.03) and\n"
         "the address that the caller is seen under.\n"
         "\n"
         "  --ports LIST           the ports to listen on, with commas between them; 0 is any\n"
         "                         free one (31112,31113)\n"
         "  --listen LIST          the addresses of this machine to listen on, with commas\n"
         "                         between them (all, IPv4 and IPv6)\n"
         "  --most-callers N       how many may stand at once; one more, and who stands longest\n"
         "                         is let go (10000)\n"
         "  --most-per-address N   how many may stand at once from one IPv4 address or one\n"
         "                         IPv6 network of 64 bits; one more is turned away (64)\n"
         "  --timeout MS           how long a caller may stand, in milliseconds (10000)\n"
         "  -?, --help             this text\n"
         "\n"
         "Listening sockets that a service manager hands over (LISTEN_FDS) take the place of\n"
         "--ports and --listen. SIGTERM and SIGINT end the server.\n"
         "\n"
         "The exit code is\n"
         "  0   ended by a signal, or this text was shown\n"
         "  1   a socket cannot be had; the reason is told\n"
         "  2   the command line is not understood\n";
}

}  // namespace veltrin::endpoint
