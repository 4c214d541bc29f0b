// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as the firmware's table, and as what udev has noted of it: texts stay within the
// bytes and can be printed, numbers within what their places can hold.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "machine/caches.h"
#include "machine/computer_states.h"
#include "machine/memory_banks.h"
#include "machine/slots.h"
#include "machine/smbios.h"
#include "tests/fuzz/fact_checks.h"

namespace {

using veltrin::check;
using veltrin::checkWithin;

void checkBanks(const std::vector<veltrin::MemoryBank>& banks, std::string_view bytes) {
  for (const veltrin::MemoryBank& bank : banks) {
    checkWithin(bank.locator, bytes);
    checkWithin(bank.bank, bytes);
    check(bank.bytes != 0U && bank.speed != 0U);
  }
}

void checkStates(const veltrin::ComputerStates& states) {
  for (const auto& setting : {states.powerOnPassword, states.keyboardPassword,
                              states.administratorPassword, states.frontPanelReset}) {
    check(setting.value_or(0) <= 3);
  }
  for (const auto& code : {states.wakeUp, states.enclosure, states.powerSupply, states.thermal}) {
    check(code.value_or(0) <= 0xFF);
  }
  check(states.resetTimeout.value_or(0) <= 0xFFFF);
}

void readTable(std::string_view bytes) {
  const veltrin::SmbiosTable table{std::string(bytes)};
  const veltrin::SmbiosTexts texts = veltrin::smbiosTexts(table);
  for (const std::string& text :
       {texts.biosVendor, texts.biosVersion, texts.biosDate, texts.manufacturer, texts.product}) {
    checkWithin(text, bytes);
  }
  for (const veltrin::CacheFacts& cache : veltrin::cachesIn(table)) {
    check(cache.level.value_or(1) >= 1 && cache.level.value_or(1) <= 8);
    check(cache.location.value_or(0) <= 3);
    check(cache.kilobytes.value_or(0) <= std::uint64_t{64} << 31);
  }
  for (const veltrin::SlotFacts& slot : veltrin::slotsIn(table)) {
    checkWithin(slot.designation, bytes);
  }
  checkBanks(veltrin::banksIn(table), bytes);
  checkStates(veltrin::statesIn(table));
  for (const veltrin::SmbiosStructure& processor : table.all(veltrin::SmbiosType::Processor)) {
    checkWithin(processor.text(0x10), bytes);
    check(processor.handle() <= 0xFFFF);
  }
}

// Headers that are sound around the bytes, so that every input gets into a structure: the first
// byte chooses its type, and the second how much of the rest is its fixed part.
void readStructure(std::string_view bytes) {
  if (bytes.size() < 2) {
    return;
  }
  constexpr std::string_view kTypes = "\x01\x03\x04\x07\x09\x11\x17\x18";
  const char type = kTypes[static_cast<unsigned char>(bytes[0]) % kTypes.size()];
  const std::size_t most = std::min<std::size_t>(bytes.size() - 2, 251);
  const std::size_t length = 4 + static_cast<unsigned char>(bytes[1]) % (most + 1);
  const std::string header{type, static_cast<char>(length), '\x07', '\x00'};
  readTable(header + std::string(bytes.substr(2)) + std::string(2, '\0'));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  readTable(bytes);
  readStructure(bytes);
  checkBanks(veltrin::banksInNotes(bytes), bytes);
  return 0;
}
