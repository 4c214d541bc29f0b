// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/memory.h"

#include <limits>
#include <string_view>

#include "machine/fact_text.h"

namespace veltrin {
namespace {

// Kilobytes of a line of /proc/meminfo: "MemTotal:       24684084 kB".
std::optional<std::uint64_t> kilobytes(std::string_view text, std::string_view name) {
  LineReader lines(text);
  for (std::string_view line; lines.next(line);) {
    const auto words = wordsOf(line);
    if (words.size() == 3 && words[0] == name && words[2] == "kB") {
      return wholeNumber(words[1]);
    }
  }
  return std::nullopt;
}

std::optional<std::uint64_t> sum(std::optional<std::uint64_t> left,
                                 std::optional<std::uint64_t> right) {
  if (!left || !right || *left > std::numeric_limits<std::uint64_t>::max() - *right) {
    return std::nullopt;
  }
  return *left + *right;
}

std::optional<std::uint64_t> megabytes(std::optional<std::uint64_t> kilobytes) {
  return kilobytes ? std::optional(*kilobytes / 1024) : std::nullopt;
}

}  // namespace

MemoryFacts memoryFacts(const FileTree& files) {
  const std::string text = files.text("/proc/meminfo");
  const auto total = kilobytes(text, "MemTotal:");
  const auto available = kilobytes(text, "MemAvailable:");
  MemoryFacts facts;
  facts.total = megabytes(total);
  facts.available = megabytes(available);
  facts.virtualTotal = megabytes(sum(total, kilobytes(text, "SwapTotal:")));
  facts.virtualAvailable = megabytes(sum(available, kilobytes(text, "SwapFree:")));
  return facts;
}

std::vector<std::string> swapPlaces(const FileTree& files) {
  const std::string text = files.text("/proc/swaps");
  std::vector<std::string> places;
  LineReader lines(text);
  for (std::string_view line; lines.next(line);) {
    const auto words = wordsOf(line);
    if (!words.empty() && words[0].starts_with("/")) {
      places.push_back(printable(unescaped(words[0])));
    }
  }
  return places;
}

}  // namespace veltrin
