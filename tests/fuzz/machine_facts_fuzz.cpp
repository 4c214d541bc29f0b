// Any bytes as each of the tables, messages and logs that systeminfo reads: what is
// read can be printed on a line and stays within the bytes.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "machine/connections.h"
#include "machine/fact_text.h"
#include "machine/hardware_database.h"
#include "machine/module_file.h"
#include "machine/moments.h"
#include "machine/network_interfaces.h"
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

void readTable(std::string_view bytes) {
  const veltrin::SmbiosTexts texts = veltrin::readSmbios(bytes);
  for (const std::string& text :
       {texts.biosVendor, texts.biosVersion, texts.biosDate, texts.manufacturer, texts.product}) {
    checkPrintable(text);
    check(text.size() <= bytes.size());
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
