#include "machine/product_id.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "machine/fact_text.h"
#include "machine/sha256.h"

namespace veltrin {
namespace {

// Drawn once by chance; this program's own.
constexpr std::array<std::uint8_t, 16> kApplication{0x7E, 0xEF, 0x91, 0xAA, 0x14, 0xB6, 0xB4, 0x9F,
                                                    0x29, 0x1D, 0x7F, 0x6D, 0xA4, 0xFE, 0xFC, 0x7D};

// Digits and letters of which none is taken for another.
constexpr std::string_view kSymbols = "0123456789ABCDEFGHJKMNPQRSTVWXYZ";
constexpr std::size_t kGroups = 4;
constexpr std::size_t kSymbolsOfGroup = 5;

// The 16 bytes that 32 hexadecimal digits stand for. Nothing for another text, and
// for the ID of zeros that is reserved for none.
std::optional<std::string> machineIdIn(std::string_view digits) {
  if (digits.size() != 32 || digits.find_first_not_of('0') == std::string_view::npos) {
    return std::nullopt;
  }
  std::string bytes;
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    const auto byte = wholeNumber(digits.substr(i, 2), 16);
    if (!byte) {
      return std::nullopt;
    }
    bytes += static_cast<char>(*byte);
  }
  return bytes;
}

// Five bits of the hash for each symbol, the highest first.
char symbolAt(const Sha256& hash, std::size_t index) {
  const std::size_t bit = index * 5;
  const unsigned pair = static_cast<unsigned>(hash[bit / 8]) << 8 | hash[bit / 8 + 1];
  return kSymbols[pair >> (11 - bit % 8) & 0x1F];
}

}  // namespace

std::string productId(const FileTree& files) {
  auto machine = machineIdIn(files.line("/etc/machine-id"));
  if (!machine) {
    machine = machineIdIn(files.line("/var/lib/dbus/machine-id"));
  }
  if (!machine) {
    return "";
  }
  const std::string_view application(reinterpret_cast<const char*>(kApplication.data()),
                                     kApplication.size());
  const Sha256 hash = keyedSha256(*machine, application);
  std::string id;
  for (std::size_t i = 0; i < kGroups * kSymbolsOfGroup; ++i) {
    if (i > 0 && i % kSymbolsOfGroup == 0) {
      id += '-';
    }
    id += symbolAt(hash, i);
  }
  return id;
}

}  // namespace veltrin
