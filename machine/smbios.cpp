// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/smbios.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "machine/fact_text.h"

namespace veltrin {
namespace {

using namespace std::string_view_literals;

// drivers/firmware/dmi_scan.c of the kernel; root's alone on most systems.
constexpr const char* kTable = "/sys/firmware/dmi/tables/DMI";

// Every structure begins with its type, the length of its fixed part and a handle
// of two bytes (section 6.1.2).
constexpr std::size_t kHeader = 4;

// Takes the first structure off a table; nothing when none holds together there.
std::optional<SmbiosStructure> takeStructure(std::string_view& table) {
  if (table.size() < kHeader) {
    return std::nullopt;
  }
  const std::size_t length = static_cast<unsigned char>(table[1]);
  if (length < kHeader || length > table.size()) {
    return std::nullopt;
  }
  // Two zero bytes close the texts, also when there are none (section 6.1.3).
  const std::size_t end = table.find("\0\0"sv, length);
  if (end == std::string_view::npos) {
    return std::nullopt;
  }
  const SmbiosStructure structure(table.substr(0, length), table.substr(length, end - length));
  table.remove_prefix(end + 2);
  return structure;
}

}  // namespace

std::optional<std::uint64_t> SmbiosStructure::number(std::size_t at, std::size_t size) const {
  return littleEndian(fixed_, at, size);
}

std::string SmbiosStructure::text(std::size_t at) const {
  const std::uint64_t wanted = number(at).value_or(0);
  std::string_view rest = texts_;
  for (std::uint64_t i = 1; i < wanted && !rest.empty(); ++i) {
    const std::size_t end = rest.find('\0');
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
  }
  return wanted == 0 ? std::string() : printable(rest.substr(0, rest.find('\0')));
}

SmbiosTable::SmbiosTable(std::string bytes) : bytes_(std::move(bytes)) {
  std::string_view rest = bytes_;
  while (const auto structure = takeStructure(rest)) {
    if (structure->type() == SmbiosType::EndOfTable) {
      break;
    }
    structures_.push_back(*structure);
  }
}

SmbiosTable::SmbiosTable(const FileTree& files) : SmbiosTable(files.text(kTable)) {}

std::vector<SmbiosStructure> SmbiosTable::all(SmbiosType type) const {
  std::vector<SmbiosStructure> found;
  std::copy_if(structures_.begin(), structures_.end(), std::back_inserter(found),
               [type](const SmbiosStructure& each) { return each.type() == type; });
  return found;
}

std::optional<SmbiosStructure> SmbiosTable::first(SmbiosType type) const {
  const auto found =
      std::find_if(structures_.begin(), structures_.end(),
                   [type](const SmbiosStructure& each) { return each.type() == type; });
  return found == structures_.end() ? std::nullopt : std::optional(*found);
}

// Sections 7.1 and 7.2.
SmbiosTexts smbiosTexts(const SmbiosTable& table) {
  SmbiosTexts texts;
  if (const auto bios = table.first(SmbiosType::Bios)) {
    texts.biosVendor = bios->text(0x04);
    texts.biosVersion = bios->text(0x05);
    texts.biosDate = bios->text(0x08);
  }
  if (const auto system = table.first(SmbiosType::System)) {
    texts.manufacturer = system->text(0x04);
    texts.product = system->text(0x05);
  }
  return texts;
}

}  // namespace veltrin
