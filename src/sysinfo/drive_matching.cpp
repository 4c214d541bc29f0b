// SPDX-License-Identifier: GPL-3.0-or-later
#include "sysinfo/drive_matching.h"

#include <algorithm>

#include "text/strings.h"

namespace veltrin {
namespace {

double told(const std::optional<double>& bytes) {
  if (!bytes) throw StatementFailed("The disk does not tell its size", kInvalidProcedureCall);
  return *bytes;
}

}  // namespace

DriveMatch DriveMatching::match(const WmiObject& disk, const std::vector<int>& candidates) {
  Search search{disk, candidates, std::nullopt};
  skip([&] { search.bytes = Val(disk.value("Size").text()); });
  Slots slots = bySize(search);
  if (!slots.empty()) return {std::move(slots), 0, triedLast_};
  if (candidates.size() == 1) return {{}, candidates.front(), triedLast_};
  slots = near(search);
  return {std::move(slots), 0, triedLast_};
}

DriveMatching::Slots DriveMatching::bySize(const Search& search) {
  Slots found;
  if (hasPartitions(search, 1)) {
    found = single(search, &DriveSlot::DriveSize);
    if (found.empty()) found = single(search, &DriveSlot::DriveSizeLess1);
  }
  if (found.empty() && hasPartitions(search, 2)) {
    found = several(search, 2, &DriveSlot::DriveSize);
    if (found.empty()) found = several(search, 2, &DriveSlot::DriveSizeLess1);
  }
  for (int count = 3; count <= mostPartitions_; ++count) {
    if (!found.empty() || !hasPartitions(search, count)) continue;
    found = several(search, static_cast<std::size_t>(count), &DriveSlot::DriveSize);
  }
  return found;
}

bool DriveMatching::hasPartitions(const Search& search, int count) const {
  return guard_.test([&] { return search.disk.value("Partitions").equals(count); });
}

// One drive is compared by the texts of the sizes. A disk that knows no size has none.
DriveMatching::Slots DriveMatching::single(const Search& search, Size size) {
  for (const int number : search.candidates) {
    triedLast_ = number;
    const auto isOfSize = [&] {
      const WmiValue& whole = search.disk.value("Size");
      return !whole.isNull() && Trim(whole.text()) == Trim((table_.slot(number).*size).text());
    };
    if (guard_.test(isOfSize)) return {number};
  }
  return {};
}

DriveMatching::Slots DriveMatching::several(const Search& search, std::size_t count, Size size) {
  Slots chosen;
  if (!complete(search, count, size, chosen)) chosen.clear();
  return chosen;
}

// Tries each candidate behind those that were chosen, until so many add up to the disk.
bool DriveMatching::complete(const Search& search, std::size_t count, Size size, Slots& chosen) {
  if (chosen.size() == count) {
    return guard_.test([&] { return addsUp(search, chosen, size); });
  }
  for (const int number : search.candidates) {
    if (std::find(chosen.begin(), chosen.end(), number) != chosen.end()) continue;
    if (chosen.empty()) triedLast_ = number;
    chosen.push_back(number);
    if (complete(search, count, size, chosen)) return true;
    chosen.pop_back();
  }
  return false;
}

// A drive whose size is unknown makes up nothing.
bool DriveMatching::addsUp(const Search& search, const Slots& chosen, Size size) const {
  double sum = 0;
  for (const int number : chosen) {
    const double part = (table_.slot(number).*size).number();
    if (part == 0) return false;
    sum += part;
  }
  return sum == told(search.bytes);
}

DriveMatching::Slots DriveMatching::near(const Search& search) {
  for (const int number : search.candidates) {
    triedLast_ = number;
    const auto isWithinFive = [&] {
      const DriveSlot& slot = table_.slot(number);
      return slot.DriveSizeLess5.number() < told(search.bytes) &&
             slot.DriveSizePlus5.number() > told(search.bytes);
    };
    if (guard_.test(isWithinFive)) return {number};
  }
  return {};
}

}  // namespace veltrin
