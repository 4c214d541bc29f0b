// SPDX-License-Identifier: GPL-3.0-or-later
// The file of a kernel module that a test makes up.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace veltrin {

// An ELF file whose section .modinfo holds this list; of 64 bits, or of 32.
inline std::string moduleImage(std::string_view list, bool wide = true) {
  const auto number = [](std::uint64_t value, int size) {
    std::string bytes;
    for (int i = 0; i < size; ++i) {
      bytes += static_cast<char>(value >> (8 * i) & 0xFF);
    }
    return bytes;
  };
  const int word = wide ? 8 : 4;
  const std::size_t header = wide ? 0x40 : 0x34;
  const std::size_t entry = wide ? 0x40 : 0x28;
  const std::string names = std::string("\0.text\0.modinfo\0.shstrtab\0", 26);
  const auto section = [&](std::size_t name, std::size_t offset, std::size_t size) {
    std::string bytes = number(name, 4) + number(1, 4) + number(0, word) + number(0, word) +
                        number(offset, word) + number(size, word);
    bytes.resize(entry);
    return bytes;
  };
  const std::size_t table = header + list.size() + names.size();
  std::string file = std::string("\177ELF") + (wide ? '\2' : '\1') + '\1' + '\1';
  file.resize(16);
  // Kind, machine and version; entry point, program headers, sections; flags and sizes.
  file += number(1, 2) + number(62, 2) + number(1, 4) + number(0, word) + number(0, word) +
          number(table, word) + number(0, 4) + number(header, 2) + number(0, 4) + number(entry, 2) +
          number(4, 2) + number(3, 2);
  file += list;
  file += names;
  file += section(0, 0, 0) + section(1, 0, 0) + section(7, header, list.size()) +
          section(16, header + list.size(), names.size());
  return file;
}

}  // namespace veltrin
