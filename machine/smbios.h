// SPDX-License-Identifier: GPL-3.0-or-later
// The table in which firmware describes the computer (SMBIOS, DSP0134).
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "machine/file_tree.h"

namespace veltrin {

// The types of structures that are read (section 7).
enum class SmbiosType : std::uint8_t {
  Bios = 0,
  System = 1,
  Board = 2,
  Enclosure = 3,
  Processor = 4,
  Cache = 7,
  Slot = 9,
  MemoryDevice = 17,
  SystemReset = 23,
  HardwareSecurity = 24,
  EndOfTable = 127,
};

// One structure: its fixed part, and its texts with a zero byte behind each. It sees the bytes of
// its table. Places are offsets into the fixed part, as the sections of DSP0134 list them.
class SmbiosStructure {
 public:
  SmbiosStructure(std::string_view fixed, std::string_view texts) : fixed_(fixed), texts_(texts) {}

  SmbiosType type() const { return static_cast<SmbiosType>(fixed_[0]); }

  // By what other structures refer to it.
  std::uint64_t handle() const { return number(2, 2).value_or(0); }

  // The number of `size` bytes, 1 to 8, at a place; nothing when the fixed part, which grew
  // from version to version, ends before it does.
  std::optional<std::uint64_t> number(std::size_t at, std::size_t size = 1) const;

  // The text whose number, counted from 1, stands at a place; empty when there is none.
  std::string text(std::size_t at) const;

 private:
  std::string_view fixed_;
  std::string_view texts_;
};

// The structures of a table up to its end or the first that does not hold together.
class SmbiosTable {
 public:
  explicit SmbiosTable(std::string bytes);

  // The table of the running system. It has no structures where this user may not read it.
  explicit SmbiosTable(const FileTree& files);

  SmbiosTable(const SmbiosTable&) = delete;
  SmbiosTable& operator=(const SmbiosTable&) = delete;

  // In the order of the table.
  std::vector<SmbiosStructure> all(SmbiosType type) const;

  // Of several the first counts; nothing when there is none.
  std::optional<SmbiosStructure> first(SmbiosType type) const;

 private:
  std::string bytes_;
  std::vector<SmbiosStructure> structures_;
};

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

SmbiosTexts smbiosTexts(const SmbiosTable& table);

}  // namespace veltrin
