// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as each of the lists, messages and logs in which a Linux machine keeps its facts: what
// is read can be printed on a line and stays within the bytes.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "machine/connections.h"
#include "machine/fact_text.h"
#include "machine/module_file.h"
#include "machine/moments.h"
#include "machine/mounts.h"
#include "machine/network_interfaces.h"
#include "machine/processor_fields.h"
#include "machine/updates.h"
#include "tests/fuzz/fact_checks.h"

namespace {

using veltrin::check;
using veltrin::checkPrintable;

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

// The kernel's list of mounts; in any other one parents may go in circles.
void readMounts(std::string_view bytes) {
  veltrin::MountTable table;
  std::size_t rows = 0;
  veltrin::LineReader lines(bytes);
  for (std::string_view line; lines.next(line); ++rows) {
    table.take(line);
  }
  const std::vector<veltrin::Mount> mounts = table.visible();
  check(mounts.size() <= rows);
  for (const veltrin::Mount& mount : mounts) {
    check(!mount.folder.empty() && mount.folder.size() <= bytes.size());
    check(!mount.type.empty() && mount.source.size() <= bytes.size());
  }
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
  readProcessors(bytes);
  readMessages(bytes);
  readLeases(bytes);
  readModule(bytes);
  readMounts(bytes);
  readLog<veltrin::DpkgLog>(bytes);
  readLog<veltrin::PacmanLog>(bytes);
  veltrin::momentInLog(bytes);
  checkPrintable(veltrin::printable(bytes));
  veltrin::shellValue(bytes, "ADDRESS");
  veltrin::sectionValue(bytes, "connection", "uuid");
  return 0;
}
