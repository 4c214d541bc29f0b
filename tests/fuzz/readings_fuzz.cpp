// SPDX-License-Identifier: GPL-3.0-or-later
// Feeds texts of `ping`, whole and broken, in chunks of any bounds to both
// readings, and checks what must hold for every chunk.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ping/pingmod.h"
#include "tests/support/characters.h"
#include "text/strings.h"

namespace {

using veltrin::Loose;

// Pieces of which texts are built. A byte of the input below their number stands
// for its piece.
constexpr std::array<std::string_view, 16> kPieces = {
    "\r\nPinging 192.0.2.7 with 32 bytes of data:\r\n",
    "Reply from 192.0.2.7: bytes=32 time=24ms TTL=56\r\n",
    "Request timed out.\r\n",
    "Approximate round trip times in milli-seconds:\r\n",
    "    Minimum = 24ms, Maximum = 24ms, Average = 24ms \r\n",
    "    Minimum = 0ms, Maximum = 0ms, Average = 0ms \r\n",
    "Average = ",
    "AVERAGE = ",
    "Aver",
    "age = ",
    "= ",
    "ms",
    " \r\n",
    "0",
    "124",
    "Mittelwert = 24ms\r\n",
};

constexpr std::uint8_t kChunkEnd = 0xFE;    // ends a chunk
constexpr std::size_t kLongestChunk = 256;  // bytes, as one read returns them

void check(bool holds) {
  if (!holds) std::abort();
}

// The chunks of a run, the empty one last.
std::vector<std::string> chunksOf(const std::uint8_t* data, std::size_t size) {
  std::vector<std::string> chunks(1);
  const auto append = [&chunks](char byte) {
    if (chunks.back().size() == kLongestChunk) chunks.emplace_back();
    chunks.back() += byte;
  };
  for (std::size_t at = 0; at < size; ++at) {
    if (data[at] == kChunkEnd) {
      chunks.emplace_back();
    } else if (data[at] < kPieces.size()) {
      for (const char byte : kPieces[data[at]]) append(byte);
    } else {
      append(static_cast<char>(data[at]));
    }
  }
  chunks.emplace_back();
  return chunks;
}

void checkChain(const std::string& chunk, Loose& time) {
  const std::string before = time.text();
  const std::string lower = veltrin::LCase(chunk);
  veltrin::readAverage(chunk, time);
  const std::string after = time.text();
  if (lower.find("average = ") == std::string::npos) {
    check(after == before);
    return;
  }
  check(veltrin::LCase(after).find("ms") == std::string::npos);
  check(after == "0" || after.substr(0, 1) != "0");
  check(after == "0" || chunk.find(after) != std::string::npos);
  if (lower.find("average = 0ms") != std::string::npos) check(after == "0");
  veltrin::readAverage(chunk, time);
  check(time.text() == after);
}

using Characters = std::vector<std::string>;

bool hasUnit(const Characters& chunk) {
  return chunk.size() >= 5 && chunk[chunk.size() - 5] == "m" && chunk[chunk.size() - 4] == "s";
}

// The unit in its place, with characters enough before it to be looked at.
bool hasTail(const Characters& chunk) { return chunk.size() > 11 && hasUnit(chunk); }

void checkTail(const std::string& chunk, Loose& time) {
  const std::string before = time.text();
  const Characters characters = veltrin::charactersOf(chunk);
  const std::optional<std::string> value = veltrin::readTail(chunk, time);
  const std::string after = time.text();
  if (value) {
    check(veltrin::charactersOf(*value).size() <= 5);
    check(after.find('=') != std::string::npos);
    check(after.find(*value) != std::string::npos);
  }
  if (hasTail(characters)) {
    const std::size_t start = characters.size() - 12;
    check(after == veltrin::joinedCharacters(characters, start, start + 9));
  } else {
    check(after == before);
    if (characters.size() >= 5 && !hasUnit(characters)) check(!value);
  }
  if (!value) return;
  check(veltrin::readTail("", time) == value);
  check(time.text() == after);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr int kSentinel = 99999;
  Loose chain = kSentinel;
  Loose tail = kSentinel;
  Loose shared = kSentinel;
  for (const std::string& chunk : chunksOf(data, size)) {
    checkChain(chunk, chain);
    checkTail(chunk, tail);
    checkChain(chunk, shared);
    checkTail(chunk, shared);
  }
  return 0;
}
