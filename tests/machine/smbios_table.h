// SPDX-License-Identifier: GPL-3.0-or-later
// Tables of firmware (SMBIOS) that a test makes up.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace veltrin {

// One structure: SmbiosPart(9, 0x0D).text(0x04, "PCIEX16_1").number(0x05, 0xAA). What is not put
// into its fixed part is zero.
class SmbiosPart {
 public:
  // The length is that of the whole fixed part, from 4 to 255.
  SmbiosPart(unsigned type, std::size_t length);

  // By what other structures refer to it. Without, the table numbers it.
  SmbiosPart& handle(unsigned number);

  // Puts a number of `size` bytes at a place of the fixed part, which must hold it.
  SmbiosPart& number(std::size_t at, std::uint64_t value, std::size_t size = 1);

  // Adds a text, which must not be empty, and puts its number at a place.
  SmbiosPart& text(std::size_t at, const std::string& text);

  std::string bytes() const;

 private:
  friend std::string smbiosTable(std::vector<SmbiosPart> parts);

  bool hasHandle_ = false;
  std::string fixed_;
  std::string texts_;
  unsigned textCount_ = 0;
};

// A table of structures, and the one that ends it.
std::string smbiosTable(std::vector<SmbiosPart> parts);

// Where the system keeps it.
inline constexpr const char* kSmbiosFile = "/sys/firmware/dmi/tables/DMI";

}  // namespace veltrin
