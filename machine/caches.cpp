// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/caches.h"

#include <array>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "machine/fact_text.h"

namespace veltrin {
namespace {

// Sizes of the structure come in units of 1 kB, or of 64 kB where the highest bit is set. One
// that does not fit into the first field has all its bits set, and stands behind.
constexpr std::uint64_t kLongUnit = 64;
constexpr std::uint64_t kSizeIsBehind = 0xFFFF;

// No cache is larger, in kB.
constexpr std::uint64_t kMostKilobytes = std::uint64_t{1} << 32;

// More than any processor has.
constexpr int kMostCaches = 16;

std::uint64_t inKilobytes(std::uint64_t field, unsigned bits) {
  const std::uint64_t unitBit = std::uint64_t{1} << (bits - 1);
  return (field & (unitBit - 1)) * ((field & unitBit) == 0 ? 1 : kLongUnit);
}

std::optional<std::uint64_t> maximumOf(const SmbiosStructure& cache) {
  const auto size = cache.number(0x07, 2);
  const auto behind = cache.number(0x13, 4);
  if (size == kSizeIsBehind && behind) {
    return inKilobytes(*behind, 32);
  }
  return size ? std::optional(inKilobytes(*size, 16)) : std::nullopt;
}

// What Documentation/ABI/testing/sysfs-devices-system-cpu tells of a cache.
struct ListedCache {
  std::uint64_t level = 0;
  std::string kind;
  std::optional<std::uint64_t> kilobytes;
  std::string sharedBy;  // "0-3,48": the processors that have it in common
};

std::optional<ListedCache> listedCache(const FileTree& files, const std::string& folder) {
  const auto level = wholeNumber(files.line(folder + "level"));
  if (!level) {
    return std::nullopt;
  }
  ListedCache cache;
  cache.level = *level;
  cache.kind = files.line(folder + "type");
  cache.sharedBy = files.line(folder + "shared_cpu_list");
  const std::string size = files.line(folder + "size");
  if (size.ends_with("K")) {
    cache.kilobytes = wholeNumber(std::string_view(size).substr(0, size.size() - 1));
  }
  return cache;
}

// Whether a list such as "0-3,48" holds a number.
bool holdsNumber(std::string_view list, std::uint64_t number) {
  while (!list.empty()) {
    const std::string_view range = list.substr(0, list.find(','));
    list.remove_prefix(range.size() == list.size() ? list.size() : range.size() + 1);
    const std::size_t dash = range.find('-');
    const auto first = wholeNumber(range.substr(0, dash));
    const auto last = dash == std::string_view::npos ? first : wholeNumber(range.substr(dash + 1));
    if (first && last && *first <= number && number <= *last) {
      return true;
    }
  }
  return false;
}

int placeOfKind(std::string_view kind) {
  constexpr std::array<std::string_view, 3> kKinds{"Data", "Instruction", "Unified"};
  int place = 0;
  for (const std::string_view each : kKinds) {
    if (each == kind) {
      break;
    }
    ++place;
  }
  return place;
}

// Sums up the caches of a package. Every one is read at the first of its processors only, as a
// large machine has hundreds of them.
class CacheSum {
 public:
  CacheSum(const FileTree& files, const std::vector<std::uint64_t>& processors)
      : files_(files), processors_(processors) {}

  void addThoseOf(std::uint64_t processor) {
    const std::string folder =
        "/sys/devices/system/cpu/cpu" + std::to_string(processor) + "/cache/index";
    for (int index = 0; index < kMostCaches; ++index) {
      if (counted_.contains({index, processor})) {
        continue;
      }
      const auto cache = listedCache(files_, folder + std::to_string(index) + "/");
      if (!cache) {
        break;
      }
      add(index, *cache);
    }
  }

  std::vector<CacheFacts> facts() const {
    std::vector<CacheFacts> facts;
    for (const auto& [place, kilobytes] : sums_) {
      facts.push_back({place.first, kilobytes, std::nullopt, std::nullopt});
    }
    return facts;
  }

 private:
  void add(int index, const ListedCache& cache) {
    for (const std::uint64_t other : processors_) {
      if (holdsNumber(cache.sharedBy, other)) {
        counted_.emplace(index, other);
      }
    }
    auto& sum = sums_[{cache.level, placeOfKind(cache.kind)}];
    if (cache.kilobytes && *cache.kilobytes <= kMostKilobytes) {
      sum = sum.value_or(0) + *cache.kilobytes;
    }
  }

  const FileTree& files_;
  const std::vector<std::uint64_t>& processors_;
  std::set<std::pair<int, std::uint64_t>> counted_;  // by index and processor
  std::map<std::pair<std::uint64_t, int>, std::optional<std::uint64_t>> sums_;
};

}  // namespace

std::vector<CacheFacts> cachesIn(const SmbiosTable& table) {
  std::vector<CacheFacts> caches;
  for (const SmbiosStructure& structure : table.all(SmbiosType::Cache)) {
    CacheFacts cache;
    if (const auto configuration = structure.number(0x05, 2)) {
      cache.level = (*configuration & 7) + 1;        // bits 2 to 0
      cache.location = *configuration >> 5 & 3;      // bits 6 and 5
      cache.enabled = (*configuration & 0x80) != 0;  // bit 7
    }
    cache.kilobytes = maximumOf(structure);
    caches.push_back(cache);
  }
  return caches;
}

std::vector<CacheFacts> cachesOf(const FileTree& files,
                                 const std::vector<std::uint64_t>& processors) {
  CacheSum sum(files, processors);
  for (const std::uint64_t processor : processors) {
    sum.addThoseOf(processor);
  }
  return sum.facts();
}

}  // namespace veltrin
