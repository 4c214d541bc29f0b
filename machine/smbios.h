// The table in which firmware describes the computer (SMBIOS, DSP0134).
#pragma once

#include <string>
#include <string_view>

namespace veltrin {

// Texts of the structures BIOS Information and System Information; empty where the
// table has none.
struct SmbiosTexts {
  std::string biosVendor;
  std::string biosVersion;
  std::string biosDate;  // mm/dd/yyyy
  std::string manufacturer;
  std::string product;

  bool operator==(const SmbiosTexts&) const = default;
};

// Reads the structures of a table up to its end or the first that does not hold
// together. Of several of one type the first counts.
SmbiosTexts readSmbios(std::string_view table);

}  // namespace veltrin
