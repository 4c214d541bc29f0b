#include "machine/smbios.h"

#include <cstdint>
#include <optional>

#include "machine/fact_text.h"

namespace veltrin {
namespace {

using namespace std::string_view_literals;

// Every structure begins with its type, the length of its fixed part and a handle
// of two bytes (section 6.1.2).
constexpr std::size_t kHeader = 4;

// Types (section 7).
constexpr unsigned kBiosInformation = 0;
constexpr unsigned kSystemInformation = 1;
constexpr unsigned kEndOfTable = 127;

// One structure: its fixed part, and its texts with a zero byte behind each.
class Structure {
 public:
  Structure(std::string_view fixed, std::string_view texts) : fixed_(fixed), texts_(texts) {}

  unsigned type() const { return static_cast<unsigned char>(fixed_[0]); }

  // The text whose number, counted from 1, stands at a place of the fixed part;
  // empty when there is none.
  std::string text(std::size_t at) const {
    const unsigned number = at < fixed_.size() ? static_cast<unsigned char>(fixed_[at]) : 0;
    std::string_view rest = texts_;
    for (unsigned i = 1; i < number && !rest.empty(); ++i) {
      const std::size_t end = rest.find('\0');
      rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    }
    return number == 0 ? std::string() : printable(rest.substr(0, rest.find('\0')));
  }

 private:
  std::string_view fixed_;
  std::string_view texts_;
};

// Takes the first structure off a table; nothing when none holds together there.
std::optional<Structure> takeStructure(std::string_view& table) {
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
  const Structure structure(table.substr(0, length), table.substr(length, end - length));
  table.remove_prefix(end + 2);
  return structure;
}

}  // namespace

SmbiosTexts readSmbios(std::string_view table) {
  SmbiosTexts texts;
  bool bios = false;
  bool system = false;
  while (const auto structure = takeStructure(table)) {
    if (structure->type() == kEndOfTable) {
      break;
    }
    if (structure->type() == kBiosInformation && !bios) {
      bios = true;
      texts.biosVendor = structure->text(0x04);
      texts.biosVersion = structure->text(0x05);
      texts.biosDate = structure->text(0x08);
    }
    if (structure->type() == kSystemInformation && !system) {
      system = true;
      texts.manufacturer = structure->text(0x04);
      texts.product = structure->text(0x05);
    }
  }
  return texts;
}

}  // namespace veltrin
