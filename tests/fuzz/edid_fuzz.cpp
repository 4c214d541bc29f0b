// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as what a monitor tells of itself, as they are and with a sound start and checksum,
// so that every input gets to what lies between: what is read can be printed and can be.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "machine/edid.h"
#include "machine/fact_text.h"

namespace {

using namespace std::string_literals;

void check(bool holds) {
  if (!holds) {
    std::abort();
  }
}

bool isLetter(char character) { return character >= 'A' && character <= 'Z'; }

void checkFacts(const veltrin::EdidFacts& facts) {
  check(facts.maker.empty() ||
        (facts.maker.size() == 3 && std::all_of(facts.maker.begin(), facts.maker.end(), isLetter)));
  check(facts.name.size() <= 13 && veltrin::printable(facts.name) == facts.name);
  check(!facts.refresh || (facts.refresh->least > 0 && facts.refresh->most <= 510 &&
                           facts.refresh->least <= facts.refresh->most));
}

std::string madeSound(std::string_view bytes) {
  std::string block = "\x00\xFF\xFF\xFF\xFF\xFF\xFF\x00"s;
  block += bytes.substr(0, 119);
  block.resize(127);
  block[18] = 1;
  unsigned sum = 0;
  for (const char byte : block) {
    sum += static_cast<unsigned char>(byte);
  }
  block += static_cast<char>((256 - sum % 256) % 256);
  return block;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  if (const auto facts = veltrin::readEdid(bytes)) {
    checkFacts(*facts);
  }
  const auto facts = veltrin::readEdid(madeSound(bytes));
  check(facts.has_value());
  checkFacts(*facts);
  return 0;
}
