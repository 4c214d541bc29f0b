// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/memory_banks.h"

#include <map>
#include <utility>

#include "machine/fact_text.h"

namespace veltrin {
namespace {

// systemd's src/libsystemd/sd-device: the database of udev.
constexpr const char* kNotes = "/run/udev/data/+dmi:id";

constexpr std::uint64_t kMegabyte = std::uint64_t{1} << 20;

// The size of a module is a number of MB, or of kB where the highest bit is set, with these for
// none, for one that does not fit, and for an unknown one.
constexpr std::uint64_t kEmpty = 0;
constexpr std::uint64_t kSizeIsBehind = 0x7FFF;
constexpr std::uint64_t kUnknownSize = 0xFFFF;
constexpr std::uint64_t kInKilobytes = 0x8000;

// The same of a speed.
constexpr std::uint64_t kUnknownSpeed = 0;
constexpr std::uint64_t kSpeedIsBehind = 0xFFFF;

// A bit that stays free in the fields behind (sections 7.18.4 and 7.18.5).
constexpr std::uint64_t kLongField = 0x7FFFFFFF;

// How many bytes the module in a socket has, 0 in an empty one; nothing when nobody knows.
std::optional<std::uint64_t> sizeOf(const SmbiosStructure& device) {
  const auto size = device.number(0x0C, 2);
  if (!size || *size == kUnknownSize) {
    return std::nullopt;
  }
  if (*size == kSizeIsBehind) {
    if (const auto behind = device.number(0x1C, 4)) {
      return (*behind & kLongField) * kMegabyte;
    }
  }
  return (*size & kInKilobytes) == 0 ? *size * kMegabyte : (*size & ~kInKilobytes) * 1024;
}

std::optional<std::uint64_t> speedOf(const SmbiosStructure& device) {
  auto speed = device.number(0x15, 2);
  if (speed == kSpeedIsBehind) {
    const auto behind = device.number(0x54, 4);
    speed = behind ? std::optional(*behind & kLongField) : std::nullopt;
  }
  return speed == kUnknownSpeed ? std::nullopt : speed;
}

std::optional<std::uint64_t> unlessEmpty(std::uint64_t size) {
  return size == kEmpty ? std::nullopt : std::optional(size);
}

// What udev notes of one socket.
struct Note {
  MemoryBank bank;
  bool empty = false;
};

// The program writes these for a text that the table does not have.
std::string textIn(std::string_view value) {
  return value == "Not Specified" || value == "<BAD INDEX>" ? std::string() : printable(value);
}

void take(Note& note, std::string_view name, std::string_view value) {
  if (name == "LOCATOR") {
    note.bank.locator = textIn(value);
  } else if (name == "BANK_LOCATOR") {
    note.bank.bank = textIn(value);
  } else if (name == "SIZE") {
    note.bank.bytes = unlessEmpty(wholeNumber(value).value_or(0));
  } else if (name == "PRESENT") {
    note.empty = value == "0";
  } else if (name == "SPEED_MTS") {
    const auto speed = wholeNumber(value);
    note.bank.speed = speed == kUnknownSpeed || speed == kSpeedIsBehind ? std::nullopt : speed;
  }
}

}  // namespace

std::vector<MemoryBank> memoryBanks(const FileTree& files) {
  std::vector<MemoryBank> banks = banksIn(SmbiosTable(files));
  return banks.empty() ? banksInNotes(files.text(kNotes)) : banks;
}

std::vector<MemoryBank> banksIn(const SmbiosTable& table) {
  std::vector<MemoryBank> banks;
  for (const SmbiosStructure& device : table.all(SmbiosType::MemoryDevice)) {
    if (const auto size = sizeOf(device)) {
      banks.push_back({device.text(0x10), device.text(0x11), unlessEmpty(*size), speedOf(device)});
    }
  }
  return banks;
}

std::vector<MemoryBank> banksInNotes(std::string_view notes) {
  constexpr std::string_view kStart = "E:MEMORY_DEVICE_";
  std::map<std::uint64_t, Note> found;
  LineReader lines(notes);
  for (std::string_view line; lines.next(line);) {
    if (!line.starts_with(kStart)) {
      continue;
    }
    line.remove_prefix(kStart.size());
    const std::size_t sign = line.find('=');
    const std::size_t numberEnd = line.find('_');
    const auto number = wholeNumber(line.substr(0, numberEnd));
    if (number && sign != std::string_view::npos && numberEnd < sign) {
      take(found[*number], line.substr(numberEnd + 1, sign - numberEnd - 1), line.substr(sign + 1));
    }
  }
  std::vector<MemoryBank> banks;
  for (auto& [number, note] : found) {
    if (note.empty || note.bank.bytes) {
      banks.push_back(std::move(note.bank));
    }
  }
  return banks;
}

}  // namespace veltrin
