// SPDX-License-Identifier: GPL-3.0-or-later
#include "lab/values.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <stdexcept>

#include "text/strings.h"

namespace veltrin::lab {
namespace {

constexpr std::string_view kEvery = "every ";
constexpr std::string_view kOf = " of ";
constexpr std::string_view kBy = " by ";
constexpr std::size_t kLongestName = 253;
constexpr std::size_t kLongestLabel = 63;

[[noreturn]] void refuse(std::string_view expected, std::string_view text) {
  throw std::invalid_argument("expected " + std::string(expected) + ", found \"" +
                              std::string(text) + "\"");
}

// A number and the word behind it, with or without a blank between.
struct Measure {
  double number = 0;
  std::string unit;
};

std::optional<Measure> readMeasure(std::string_view text) {
  Measure measure;
  const char* const end = text.data() + text.size();
  const auto [rest, error] =
      std::from_chars(text.data(), end, measure.number, std::chars_format::fixed);
  if (error != std::errc{}) return std::nullopt;
  measure.unit = Trim(std::string_view(rest, static_cast<std::size_t>(end - rest)));
  return measure;
}

double nanosecondsOf(std::string_view unit) {
  if (unit == "us") return 1e3;
  if (unit == "ms") return 1e6;
  if (unit == "s") return 1e9;
  return -1;
}

// The ending of an ordinal number in English.
std::string_view ordinalEnding(std::uint64_t number) {
  const std::uint64_t tens = number / 10 % 10;
  if (tens == 1) return "th";
  switch (number % 10) {
    case 1:
      return "st";
    case 2:
      return "nd";
    case 3:
      return "rd";
    default:
      return "th";
  }
}

template <typename Number>
std::optional<std::string_view> takeNumber(std::string_view text, Number& number) {
  const char* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc{}) return std::nullopt;
  return std::string_view(rest, static_cast<std::size_t>(end - rest));
}

bool isNameLetter(char letter) {
  return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') ||
         (letter >= '0' && letter <= '9') || letter == '-';
}

}  // namespace

Time readDuration(std::string_view text, std::chrono::seconds longest) {
  const auto measure = readMeasure(text);
  const double scale = measure ? nanosecondsOf(measure->unit) : -1;
  const auto most = static_cast<double>(Time(longest).count());
  if (scale < 0 || !(measure->number >= 0 && measure->number * scale <= most)) {
    refuse("a time from 0 to " + std::to_string(longest.count()) + " s, such as \"2 ms\"", text);
  }
  return Time(std::llround(measure->number * scale));
}

double readPercentage(std::string_view text) {
  const auto measure = readMeasure(text);
  if (!measure || measure->unit != "%" || !(measure->number >= 0 && measure->number <= 100)) {
    refuse("a share from 0 % to 100 %, such as \"20 %\"", text);
  }
  return measure->number / 100;
}

Pattern readPattern(std::string_view text) {
  Pattern pattern;
  bool sound = false;
  if (text.starts_with(kEvery)) {
    pattern.picked = 1;
    const auto ending = takeNumber(text.substr(kEvery.size()), pattern.of);
    sound = ending && *ending == ordinalEnding(pattern.of);
  } else if (const auto rest = takeNumber(text, pattern.picked); rest && rest->starts_with(kOf)) {
    const auto ending = takeNumber(rest->substr(kOf.size()), pattern.of);
    sound = ending && ending->empty();
  }
  if (!sound || pattern.of == 0 || pattern.picked > pattern.of) {
    refuse("a pattern, such as \"every 5th\" or \"13 of 100\"", text);
  }
  return pattern;
}

DelayedPattern readDelayedPattern(std::string_view text) {
  const std::size_t by = text.find(kBy);
  if (by == std::string_view::npos) {
    refuse("a pattern and a time, such as \"every 5th by 300 ms\"", text);
  }
  return {readPattern(text.substr(0, by)), readDuration(text.substr(by + kBy.size()))};
}

bool readYesNo(std::string_view text) {
  if (text != "yes" && text != "no") refuse("\"yes\" or \"no\"", text);
  return text == "yes";
}

std::uint64_t readNumber(std::string_view text, std::uint64_t least, std::uint64_t most) {
  std::uint64_t number = 0;
  const auto rest = takeNumber(text, number);
  if (!rest || !rest->empty() || number < least || number > most) {
    refuse("a whole number from " + std::to_string(least) + " to " + std::to_string(most), text);
  }
  return number;
}

std::vector<IpAddress> readAddresses(std::string_view text) {
  std::vector<IpAddress> addresses;
  for (const std::string& part : splitList(text)) {
    const auto address = IpAddress::parse(part);
    if (!address) refuse("an IPv4 or IPv6 address", part);
    addresses.push_back(*address);
  }
  return addresses;
}

std::vector<MachineAddress> readMachineAddresses(std::string_view text) {
  std::vector<MachineAddress> addresses;
  for (const std::string& part : splitList(text)) {
    const std::size_t slash = std::min(part.find('/'), part.size());
    const auto address = IpAddress::parse(part.substr(0, slash));
    std::uint8_t length = 0;
    const auto rest = slash < part.size() ? takeNumber(part.substr(slash + 1), length)
                                          : std::optional<std::string_view>();
    if (!address || !rest || !rest->empty() || length > address->bytes().size() * 8) {
      refuse("an address with the length of its network, such as \"192.0.2.2/24\"", part);
    }
    addresses.push_back({*address, length});
  }
  return addresses;
}

std::vector<std::string> splitList(std::string_view text, char separator) {
  std::vector<std::string> parts;
  while (true) {
    const std::size_t end = text.find(separator);
    parts.push_back(Trim(text.substr(0, end)));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

void checkName(std::string_view text) {
  std::size_t label = 0;
  bool sound = text.size() <= kLongestName;
  for (const char letter : text) {
    sound = sound && (letter == '.' ? label > 0 : isNameLetter(letter));
    label = letter == '.' ? 0 : label + 1;
    sound = sound && label <= kLongestLabel;
  }
  if (!sound || label == 0) refuse("a name, such as \"far.example\"", text);
}

}  // namespace veltrin::lab
