// SPDX-License-Identifier: GPL-3.0-or-later
#include "hardware_database_file.h"

#include <algorithm>
#include <map>
#include <utility>

namespace veltrin {
namespace {

constexpr std::size_t kHeader = 80;

std::string number(std::uint64_t value, int size) {
  std::string bytes;
  for (int i = 0; i < size; ++i) {
    bytes += static_cast<char>(value >> (8 * i) & 0xFF);
  }
  return bytes;
}

class Builder {
 public:
  explicit Builder(bool ranks) : ranks_(ranks) {}

  std::string build(const std::vector<DatabaseEntry>& entries) {
    const std::size_t root = addNode(entries, 0);
    std::string header = "KSLPHHRH";
    for (const std::uint64_t value :
         {std::uint64_t{252}, std::uint64_t{kHeader + body_.size()}, std::uint64_t{kHeader},
          std::uint64_t{24}, std::uint64_t{16}, std::uint64_t{ranks_ ? 32U : 16U},
          std::uint64_t{root}, std::uint64_t{0}, std::uint64_t{0}}) {
      header += number(value, 8);
    }
    return header + body_;
  }

 private:
  // Adds what stands behind the first `from` characters, which all patterns share,
  // and returns its place. Texts and nodes lie in one area, children before their
  // parents.
  std::size_t addNode(const std::vector<DatabaseEntry>& entries, std::size_t from) {
    const std::size_t shared = sharedLength(entries, from);
    std::map<char, std::vector<DatabaseEntry>> behind;
    std::string values;
    std::size_t valueCount = 0;
    for (const DatabaseEntry& entry : entries) {
      if (entry.pattern.size() == shared) {
        values += valueOf(entry);
        ++valueCount;
      } else {
        behind[entry.pattern[shared]].push_back(entry);
      }
    }
    std::string children;
    for (const auto& [character, rest] : behind) {
      children += number(static_cast<unsigned char>(character), 8);
      children += number(addNode(rest, shared + 1), 8);
    }
    const std::string text = entries.empty() ? "" : entries[0].pattern.substr(from, shared - from);
    const std::size_t textPlace = addText(text);
    return add(number(textPlace, 8) + number(behind.size(), 8) + number(valueCount, 8) + children +
               values);
  }

  static std::size_t sharedLength(const std::vector<DatabaseEntry>& entries, std::size_t from) {
    std::size_t shared = entries.empty() ? from : entries[0].pattern.size();
    for (const DatabaseEntry& entry : entries) {
      const auto [left, right] =
          std::mismatch(entry.pattern.begin(), entry.pattern.end(), entries[0].pattern.begin(),
                        entries[0].pattern.end());
      shared = std::min(shared, static_cast<std::size_t>(left - entry.pattern.begin()));
    }
    return shared;
  }

  std::string valueOf(const DatabaseEntry& entry) {
    std::string bytes = number(addText(entry.name), 8);
    bytes += number(addText(entry.value), 8);
    if (ranks_) {
      bytes += number(addText("test.hwdb"), 8);
      bytes += number(entry.line, 4) + number(entry.rank, 2) + number(0, 2);
    }
    return bytes;
  }

  std::size_t addText(const std::string& text) { return add(text + '\0'); }

  std::size_t add(const std::string& bytes) {
    const std::size_t place = kHeader + body_.size();
    body_ += bytes;
    return place;
  }

  bool ranks_;
  std::string body_;
};

}  // namespace

std::string databaseFile(const std::vector<DatabaseEntry>& entries, bool ranks) {
  return Builder(ranks).build(entries);
}

}  // namespace veltrin
