// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/network_counters.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <optional>
#include <string_view>

namespace veltrin {
namespace {

// Columns behind a device's name: eight of what it has received, then those of what it has
// sent. The bytes come first in both.
constexpr std::size_t kReceived = 0;
constexpr std::size_t kSent = 8;

struct Traffic {
  std::string device;
  double received = 0;  // bytes
  double sent = 0;
};

// The first columns of a line; nothing when there are fewer, or one is no number.
std::optional<std::array<std::uint64_t, kSent + 1>> columnsOf(std::string_view text) {
  std::array<std::uint64_t, kSent + 1> columns{};
  for (std::uint64_t& column : columns) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), column);
    if (failure != std::errc()) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  }
  return columns;
}

// A line has the device's name, a colon and the columns; the two lines of headings have no
// colon. The first number may stand right behind the colon.
std::optional<Traffic> trafficIn(std::string_view line) {
  const std::size_t colon = line.find(':');
  if (colon == std::string_view::npos) return std::nullopt;
  const auto columns = columnsOf(line.substr(colon + 1));
  if (!columns) return std::nullopt;
  line = line.substr(0, colon);
  line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
  if (line.empty()) return std::nullopt;
  return Traffic{std::string(line), static_cast<double>((*columns)[kReceived]),
                 static_cast<double>((*columns)[kSent])};
}

}  // namespace

std::vector<CounterName> NetworkCounters::counters() const {
  return {{"Bytes Total/sec", CounterKind::Rate},
          {"Bytes Received/sec", CounterKind::Rate},
          {"Bytes Sent/sec", CounterKind::Rate}};
}

std::vector<CounterInstance> NetworkCounters::read() const {
  std::ifstream file(procFolder_ + "/net/dev");
  std::vector<Traffic> all;
  std::vector<std::string> devices;
  for (std::string line; std::getline(file, line);) {
    if (auto traffic = trafficIn(line)) {
      devices.push_back(traffic->device);
      all.push_back(std::move(*traffic));
    }
  }
  const std::vector<std::string> names = adapters_->namesOf(devices);
  std::vector<CounterInstance> instances;
  instances.reserve(all.size());
  for (std::size_t i = 0; i < all.size(); ++i) {
    const double received = all[i].received;
    const double sent = all[i].sent;
    instances.push_back(
        {instanceNameOf(names[i]), {{received + sent, 1}, {received, 1}, {sent, 1}}});
  }
  return instances;
}

}  // namespace veltrin
