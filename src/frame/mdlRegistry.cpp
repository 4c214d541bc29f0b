// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame/mdlRegistry.h"

#include <cstring>

#include "text/statement.h"

namespace veltrin {
namespace {

// Holds a key open for its lifetime.
class OpenKey {
 public:
  OpenKey(Registry& registry, std::uint32_t hive, const std::string& path) : registry_(registry) {
    open_ = registry_.open(hive, path, kKeyAccess, key_) == 0;
  }
  ~OpenKey() {
    if (open_) registry_.close(key_);
  }
  OpenKey(const OpenKey&) = delete;
  OpenKey& operator=(const OpenKey&) = delete;

  explicit operator bool() const { return open_; }
  Registry::Key get() const { return key_; }

 private:
  Registry& registry_;
  Registry::Key key_ = 0;
  bool open_ = false;
};

// A number as the 4 bytes of a double word; negative ones in two's complement.
std::string dwordBytes(double number) {
  if (!(number >= INT32_MIN && number <= UINT32_MAX)) {
    throw StatementFailed("The number does not fit a double word", kOverflow);
  }
  const auto value = static_cast<std::uint32_t>(static_cast<std::int64_t>(number));
  std::string bytes(sizeof value, '\0');
  std::memcpy(bytes.data(), &value, sizeof value);
  return bytes;
}

}  // namespace

Loose readRegistryValue(Registry& registry, std::uint32_t hive, const std::string& path,
                        const std::string& name) {
  const OpenKey key(registry, hive, path);
  if (!key) return {};
  std::uint32_t type = 0;
  std::uint32_t size = 0;
  if (registry.query(key.get(), name, type, size, nullptr) != 0) return {};
  if (type == kRegSz) {
    std::string text(size, '\0');
    if (registry.query(key.get(), name, type, size, text.data()) != 0) return {};
    return text.substr(0, size);
  }
  if (type == kRegDword) {
    std::int32_t number = 0;
    size = sizeof number;
    char bytes[sizeof number] = {};
    if (registry.query(key.get(), name, type, size, bytes) != 0) return {};
    std::memcpy(&number, bytes, sizeof number);
    return number;
  }
  return {};
}

void writeRegistryValue(Registry& registry, std::uint32_t hive, const std::string& path,
                        const std::string& name, const Loose& value, std::uint32_t type) {
  const OpenKey key(registry, hive, path);
  if (!key) return;
  if (type == kRegSz) registry.set(key.get(), name, type, value.text());
  if (type == kRegDword) registry.set(key.get(), name, type, dwordBytes(value.number()));
}

}  // namespace veltrin
