// Any bytes as each of the tables, messages and logs that systeminfo reads: what is
// read can be printed on a line and stays within the bytes.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "machine/caches.h"
#include "machine/computer_states.h"
#include "machine/connections.h"
#include "machine/fact_text.h"
#include "machine/hardware_database.h"
#include "machine/memory_banks.h"
#include "machine/module_file.h"
#include "machine/moments.h"
#include "machine/network_interfaces.h"
#include "machine/processor_fields.h"
#include "machine/slots.h"
#include "machine/smbios.h"
#include "machine/updates.h"

namespace {

void check(bool holds) {
  if (!holds) {
    std::abort();
  }
}

void checkPrintable(const std::string& text) {
  check(std::none_of(text.begin(), text.end(),
                     [](char character) { return character >= 0 && character < ' '; }));
  check(veltrin::printable(text) == text);
}

void checkWithin(const std::string& text, std::string_view bytes) {
  checkPrintable(text);
  check(text.size() <= bytes.size());
}

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

// The kernel's list of processors.
void readProcessors(std::string_view bytes) {
  for (const char* machine : {"x86_64", "aarch64", ""}) {
    veltrin::Kernel kernel;
    kernel.machine = machine;
    for (const auto& [number, fields] : veltrin::processorsIn(bytes)) {
      const veltrin::ProcessorIdentity identity = veltrin::identityOf(fields, kernel);
      checkPrintable(identity.text);
      checkPrintable(identity.maker);
      check(!identity.text.empty() && identity.revision.value_or(0) <= 0xFFFF);
    }
  }
}

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

void readMessages(std::string_view bytes) {
  veltrin::LinkDump dump;
  const std::size_t half = bytes.size() / 2 / 4 * 4;
  dump.take(bytes.substr(0, half));
  dump.take(bytes.substr(half));
  std::uint32_t last = 0;
  for (const veltrin::NetworkInterface& interface : veltrin::networkInterfaces(dump)) {
    check(interface.index > last && !interface.name.empty());
    last = interface.index;
  }
}

void readLeases(std::string_view bytes) {
  veltrin::NetworkInterface interface;
  interface.name = "eth0";
  interface.addresses.push_back({*veltrin::Address::parse("192.0.2.7"), true});
  if (const auto lease = veltrin::leaseOfDhclient(bytes, interface)) {
    check(lease->address == interface.addresses[0].address);
  }
  if (const auto lease = veltrin::leaseInMessage(bytes)) {
    check(lease->address.has_value());
  }
  const std::string message = std::string(236, '\0') + "\x63\x82\x53\x63" + std::string(bytes);
  check(veltrin::leaseInMessage(message).has_value());
}

// Behind the start of a file of each width too, so that every input gets into the sections.
void readModule(std::string_view bytes) {
  using namespace std::string_view_literals;
  for (const std::string_view start : {""sv, "\177ELF\2\1"sv, "\177ELF\1\1"sv}) {
    const std::string file = std::string(start) + std::string(bytes);
    const std::string_view list = veltrin::moduleInformation(file);
    check(list.size() <= file.size());
    check(veltrin::moduleValue(list, "description").size() <= list.size());
  }
  check(veltrin::moduleValue(bytes, "").size() <= bytes.size());
}

template <typename Log>
void readLog(std::string_view bytes) {
  Log log;
  veltrin::LineReader lines(bytes);
  for (std::string_view line; lines.next(line);) {
    log.take(line);
  }
  for (const std::string& text : log.updates().value_or(std::vector<std::string>())) {
    checkPrintable(text);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  readTable(bytes);
  readStructure(bytes);
  checkBanks(veltrin::banksInNotes(bytes), bytes);
  readProcessors(bytes);
  readDatabase(bytes);
  readMessages(bytes);
  readLeases(bytes);
  readModule(bytes);
  readLog<veltrin::DpkgLog>(bytes);
  readLog<veltrin::PacmanLog>(bytes);
  veltrin::momentInLog(bytes);
  checkPrintable(veltrin::printable(bytes));
  const std::size_t middle = size / 2;
  veltrin::fitsPattern(bytes.substr(0, middle), bytes.substr(middle));
  veltrin::shellValue(bytes, "ADDRESS");
  veltrin::sectionValue(bytes, "connection", "uuid");
  return 0;
}
