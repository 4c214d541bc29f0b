// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/module_file.h"

#include <cstddef>
#include <cstdint>
#include <optional>

#include "machine/fact_text.h"

namespace veltrin {
namespace {

using namespace std::string_view_literals;

// A number in the file: how far from the start of its structure, and of how many bytes.
struct Place {
  std::size_t at;
  std::size_t size;
};

// Where the numbers stand in the header of a file and in that of a section (elf(5), Elf64_Ehdr,
// Elf64_Shdr and their like of 32 bits).
struct Layout {
  Place sections;      // e_shoff
  Place sectionSize;   // e_shentsize
  Place sectionCount;  // e_shnum
  Place nameSection;   // e_shstrndx
  Place name;          // sh_name
  Place offset;        // sh_offset
  Place size;          // sh_size
};

constexpr Layout kLayout64{{0x28, 8}, {0x3A, 2}, {0x3C, 2}, {0x3E, 2},
                           {0, 4},    {0x18, 8}, {0x20, 8}};
constexpr Layout kLayout32{{0x20, 4}, {0x2E, 2}, {0x30, 2}, {0x32, 2},
                           {0, 4},    {0x10, 4}, {0x14, 4}};

// The start of a file of each width: EI_MAG, EI_CLASS, EI_DATA.
constexpr std::string_view kStart64 = "\177ELF\2\1"sv;
constexpr std::string_view kStart32 = "\177ELF\1\1"sv;

// The bytes from a place on, empty when the file ends before it.
std::string_view from(std::string_view file, std::uint64_t at) {
  return at < file.size() ? file.substr(at) : std::string_view();
}

class Sections {
 public:
  Sections(std::string_view file, const Layout& layout)
      : file_(file),
        layout_(layout),
        start_(number(file, layout.sections)),
        size_(number(file, layout.sectionSize)),
        count_(number(file, layout.sectionCount)),
        names_(content(number(file, layout.nameSection))) {}

  std::string_view find(std::string_view name) const {
    for (std::uint64_t index = 0; index < count_; ++index) {
      const std::string_view text = from(names_, number(header(index), layout_.name));
      if (text.substr(0, text.find('\0')) == name) {
        return content(index);
      }
    }
    return {};
  }

 private:
  static std::uint64_t number(std::string_view structure, Place place) {
    return littleEndian(structure, place.at, place.size).value_or(0);
  }

  // Both factors have 16 bits.
  std::string_view header(std::uint64_t index) const {
    return from(from(file_, start_), index * size_);
  }

  std::string_view content(std::uint64_t index) const {
    const std::string_view about = header(index);
    return from(file_, number(about, layout_.offset)).substr(0, number(about, layout_.size));
  }

  std::string_view file_;
  const Layout& layout_;
  std::uint64_t start_;
  std::uint64_t size_;
  std::uint64_t count_;
  std::string_view names_;  // of the sections, each ended by a zero byte
};

}  // namespace

std::string_view moduleValue(std::string_view list, std::string_view key) {
  while (!list.empty()) {
    const std::size_t end = list.find('\0');
    const std::string_view entry = list.substr(0, end);
    if (entry.size() > key.size() && entry.starts_with(key) && entry[key.size()] == '=') {
      return entry.substr(key.size() + 1);
    }
    list.remove_prefix(end == std::string_view::npos ? list.size() : end + 1);
  }
  return {};
}

std::string_view moduleInformation(std::string_view file) {
  if (file.starts_with(kStart64)) {
    return Sections(file, kLayout64).find(".modinfo");
  }
  if (file.starts_with(kStart32)) {
    return Sections(file, kLayout32).find(".modinfo");
  }
  return {};
}

}  // namespace veltrin
