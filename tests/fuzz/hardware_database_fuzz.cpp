// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as udev's compiled hardware database, and as a text with a pattern.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "machine/hardware_database.h"
#include "tests/fuzz/fact_checks.h"

namespace {

using veltrin::check;

// A header that is sound around the bytes, so that every input gets into the tree.
void readDatabase(std::string_view bytes) {
  veltrin::HardwareDatabase(bytes).properties("pci:v00008086d000015F3");
  const auto number = [](std::uint64_t value) {
    std::string text;
    for (int i = 0; i < 8; ++i) {
      text += static_cast<char>(value >> (8 * i) & 0xFF);
    }
    return text;
  };
  const std::uint64_t root = bytes.empty() ? 0 : static_cast<unsigned char>(bytes[0]);
  const std::string file = "KSLPHHRH" + number(0) + number(80 + bytes.size()) + number(80) +
                           number(24) + number(16) + number(bytes.size() % 2 == 0 ? 32 : 16) +
                           number(80 + root) + number(0) + number(0) + std::string(bytes);
  for (const auto& [name, value] : veltrin::HardwareDatabase(file).properties("pci:v0")) {
    check(value.size() < file.size());
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  readDatabase(bytes);
  const std::size_t middle = size / 2;
  veltrin::fitsPattern(bytes.substr(0, middle), bytes.substr(middle));
  return 0;
}
