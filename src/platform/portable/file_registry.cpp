// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portable/file_registry.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "platform/portable/atomic_file.h"
#include "platform/portable/own_folder.h"
#include "platform/portable/registry_value.h"
#include "text/strings.h"

namespace veltrin {
namespace {

// Rights on values among the access bits of an open key.
constexpr std::uint32_t kQueryValue = 1;
constexpr std::uint32_t kSetValue = 2;

constexpr char kSeparator = '\\';
constexpr std::string_view kNamelessValue = "@";
constexpr std::string_view kTextMark = "sz:";
constexpr std::string_view kNumberMark = "dword:";
constexpr std::string_view kBytesMark = "hex(";
constexpr std::string_view kBytesOpened = "):";
constexpr std::size_t kNumberBytes = 4;

// Characters with a meaning in the lines of the file, beside control characters.
constexpr std::string_view kSpecialInNames = "%=;[]@";
constexpr std::string_view kSpecialInTexts = "%";

struct Value {
  std::uint32_t type = 0;
  std::string bytes;
};

void appendHex(std::string& text, unsigned char byte) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  text += kDigits[byte >> 4];
  text += kDigits[byte & 15];
}

// The bytes of a run of hexadecimal digits, or nothing when it is none.
std::optional<std::string> fromHex(std::string_view digits) {
  if (digits.size() % 2 != 0) return std::nullopt;
  std::string bytes;
  for (; !digits.empty(); digits.remove_prefix(2)) {
    unsigned char byte = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + 2, byte, 16);
    if (read.ec != std::errc() || read.ptr != digits.data() + 2) return std::nullopt;
    bytes += static_cast<char>(byte);
  }
  return bytes;
}

// Writes control characters, special ones and blanks at the ends as '%' and digits.
std::string escaped(std::string_view text, std::string_view special) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const bool blankAtAnEnd = text[i] == ' ' && (i == 0 || i + 1 == text.size());
    const bool control = byte < 0x20 || byte == 0x7F;
    if (control || blankAtAnEnd || special.find(text[i]) != std::string_view::npos) {
      result += '%';
      appendHex(result, byte);
    } else {
      result += text[i];
    }
  }
  return result;
}

std::optional<std::string> unescaped(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    if (text.front() != '%') {
      result += text.front();
      text.remove_prefix(1);
      continue;
    }
    const auto byte = text.size() < 3 ? std::nullopt : fromHex(text.substr(1, 2));
    if (!byte) return std::nullopt;
    result += *byte;
    text.remove_prefix(3);
  }
  return result;
}

std::string lineName(const std::string& name) {
  return name.empty() ? std::string(kNamelessValue) : escaped(name, kSpecialInNames);
}

std::string written(std::uint32_t type, const std::string& bytes) {
  if (type == kRegSz) return std::string(kTextMark) + escaped(bytes, kSpecialInTexts);
  std::string line;
  if (type == kRegDword && bytes.size() == kNumberBytes) {
    line = kNumberMark;
    // The system keeps numbers with the lowest byte first, people read the highest.
    for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte) {
      appendHex(line, static_cast<unsigned char>(*byte));
    }
    return line;
  }
  line = std::string(kBytesMark) + std::to_string(type) + std::string(kBytesOpened);
  for (const char byte : bytes) appendHex(line, static_cast<unsigned char>(byte));
  return line;
}

std::optional<Value> number(std::string_view digits) {
  const auto bytes = fromHex(digits);
  if (!bytes || bytes->size() != kNumberBytes) return std::nullopt;
  return Value{kRegDword, std::string(bytes->rbegin(), bytes->rend())};
}

std::optional<Value> plainBytes(std::string_view typeAndDigits) {
  const auto opened = typeAndDigits.find(kBytesOpened);
  if (opened == std::string_view::npos) return std::nullopt;
  Value value;
  const char* const end = typeAndDigits.data() + opened;
  const auto read = std::from_chars(typeAndDigits.data(), end, value.type);
  const auto bytes = fromHex(typeAndDigits.substr(opened + kBytesOpened.size()));
  if (read.ec != std::errc() || read.ptr != end || !bytes) return std::nullopt;
  value.bytes = *bytes;
  return value;
}

// A value from its line, or nothing when the line is no value.
std::optional<Value> parsed(std::string_view line) {
  const auto after = [line](std::string_view mark) { return line.substr(mark.size()); };
  const auto starts = [line](std::string_view mark) {
    return equalIgnoringCase(line.substr(0, mark.size()), mark);
  };
  if (starts(kNumberMark)) return number(after(kNumberMark));
  if (starts(kBytesMark)) return plainBytes(after(kBytesMark));
  if (!starts(kTextMark)) return std::nullopt;
  auto text = unescaped(after(kTextMark));
  if (!text) return std::nullopt;
  return Value{kRegSz, std::move(*text)};
}

std::optional<std::string> hiveName(std::uint32_t hive) {
  if (hive == kHkeyCurrentUser) return "HKEY_CURRENT_USER";
  if (hive == kHkeyLocalMachine) return "HKEY_LOCAL_MACHINE";
  return std::nullopt;
}

// The sections of a hive's key and of all keys on the way to it, outermost first and
// the hive itself left out. Empty parts of the path do not count.
std::vector<std::string> sectionsOnTheWay(const std::string& hive, const std::string& path) {
  std::vector<std::string> sections;
  std::string section = hive;
  std::string_view rest = path;
  while (!rest.empty()) {
    const auto length = std::min(rest.find(kSeparator), rest.size());
    if (length > 0) {
      section += kSeparator + escaped(rest.substr(0, length), kSpecialInNames);
      sections.push_back(section);
    }
    rest.remove_prefix(std::min(length + 1, rest.size()));
  }
  return sections;
}

bool isBadPath(const std::string& path) { return !path.empty() && path.front() == kSeparator; }

}  // namespace

FileRegistry::FileRegistry(std::string file) : file_(std::move(file)) {}

std::int32_t FileRegistry::createKey(std::uint32_t hive, const std::string& path) {
  const auto root = hiveName(hive);
  if (!root) return kRegistryInvalidHandle;
  if (isBadPath(path)) return kRegistryBadPath;
  ProfileText file;
  if (const auto error = load(file)) return error;
  bool isComplete = true;
  for (const auto& section : sectionsOnTheWay(*root, path)) {
    if (file.hasSection(section)) continue;
    file.addSection(section);
    isComplete = false;
  }
  return isComplete ? kRegistrySuccess : store(file);
}

std::int32_t FileRegistry::open(std::uint32_t hive, const std::string& path, std::uint32_t access,
                                Key& key) {
  const auto root = hiveName(hive);
  if (!root) return kRegistryInvalidHandle;
  if (isBadPath(path)) return kRegistryBadPath;
  const auto sections = sectionsOnTheWay(*root, path);
  const bool isHive = sections.empty();
  ProfileText file;
  if (const auto error = load(file)) return error;
  if (!isHive && !file.hasSection(sections.back())) return kRegistryNotFound;
  key = next_++;
  open_[key] = {isHive ? *root : sections.back(), access, isHive};
  return kRegistrySuccess;
}

std::int32_t FileRegistry::query(Key key, const std::string& name, std::uint32_t& type,
                                 std::uint32_t& size, char* data) {
  OpenKey opened;
  ProfileText file;
  if (const auto error = use(key, kQueryValue, opened, file)) return error;
  const auto line = file.value(opened.section, lineName(name));
  if (!line) return kRegistryNotFound;
  const auto value = parsed(*line);
  if (!value) return kRegistryInvalidData;
  type = value->type;
  return handOver(value->bytes, size, data);
}

std::int32_t FileRegistry::set(Key key, const std::string& name, std::uint32_t type,
                               const std::string& data) {
  OpenKey opened;
  ProfileText file;
  if (const auto error = use(key, kSetValue, opened, file)) return error;
  file.set(opened.section, lineName(name), written(type, data));
  return store(file);
}

void FileRegistry::close(Key key) { open_.erase(key); }

std::int32_t FileRegistry::use(Key key, std::uint32_t right, OpenKey& opened,
                               ProfileText& file) const {
  const auto found = open_.find(key);
  if (found == open_.end()) return kRegistryInvalidHandle;
  opened = found->second;
  if ((opened.access & right) == 0) return kRegistryAccessDenied;
  if (const auto error = load(file)) return error;
  const bool exists = opened.isHive || file.hasSection(opened.section);
  return exists ? kRegistrySuccess : kRegistryKeyDeleted;
}

std::int32_t FileRegistry::load(ProfileText& file) const {
  std::string content;
  const auto error = readWholeFile(file_, content);
  if (error && error != std::errc::no_such_file_or_directory) return kRegistryIoFailed;
  file = ProfileText(error ? std::string() : std::move(content));
  return kRegistrySuccess;
}

std::int32_t FileRegistry::store(const ProfileText& file) const {
  const std::string folder = file_.substr(0, file_.find_last_of("/\\") + 1);
  if (!staysBelow(folder.empty() ? "." : folder, file_)) return kRegistryAccessDenied;
  const auto error = replaceFile(file_, file.text());
  if (!error) return kRegistrySuccess;
  if (error == std::errc::no_space_on_device) return kRegistryDiskFull;
  if (error == std::errc::permission_denied) return kRegistryAccessDenied;
  return kRegistryIoFailed;
}

}  // namespace veltrin
