// SPDX-License-Identifier: GPL-3.0-or-later
// What a web host of the simulated Internet serves, and the keys of a scenario file that
// say so.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "lab/behaviour.h"

namespace veltrin::lab {

// A pause in the middle of an answer.
struct WebStall {
  std::uint64_t after = 0;  // bytes of the file before it
  Time length{};

  bool operator==(const WebStall&) const = default;
};

// A file. Its bytes are those of webByte.
struct WebFile {
  std::string path;  // with a slash in front
  std::uint64_t size = 0;

  bool operator==(const WebFile&) const = default;
};

// As fast as a scenario can name, in bytes a second; as good as no limit.
inline constexpr std::uint64_t kMostWebRate = 1'000'000'000;

// What one host serves.
struct WebSite {
  std::uint16_t port = 80;  // IANA "Service Name and Transport Protocol Port Number Registry"
  std::uint64_t rate = kMostWebRate;  // bytes of a file a second, of each answer by itself
  std::optional<WebStall> stall;      // in each answer that is longer
  std::vector<WebFile> files;         // at least one
};

// Sets what a key says. False when there is no such key. Throws std::invalid_argument with
// a sentence for a value that is none of its kind.
bool setWeb(WebSite& site, std::string_view key, std::string_view value);

// All keys: "port, rate, ...".
std::string webKeys();

}  // namespace veltrin::lab
