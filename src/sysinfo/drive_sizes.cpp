// SPDX-License-Identifier: GPL-3.0-or-later
#include "sysinfo/drive_sizes.h"

#include <algorithm>
#include <array>

#include "text/numbers.h"

namespace veltrin {
namespace {

struct Unit {
  double above;  // bytes; the unit is taken for more than these
  double bytes;
  const char* name;
};

// The last is for all others.
constexpr std::array<Unit, 3> kUnits{{
    {999'999'999'999, 1e12, " TB"},
    {999'999'999, 1e9, " GB"},
    {-1, 1e6, " MB"},
}};
constexpr std::array<Unit, 4> kShortUnits{{
    {2'000'000'000'000, 1e12, " TB"},
    {2'000'000'000, 1e9, " GB"},
    {10'000'000, 1e6, " MB"},
    {-1, 1e3, " KB"},
}};
constexpr double kMostBytesAlone = 999'999;

template <class Units>
const Unit& unitFor(const Units& units, double bytes) {
  const auto found = std::find_if(units.begin(), units.end(),
                                  [&](const Unit& unit) { return bytes > unit.above; });
  return found == units.end() ? units.back() : *found;
}

std::string inUnit(double bytes, const Unit& unit) {
  return Format(bytes / unit.bytes, "0") + unit.name;
}

}  // namespace

std::string sizeText(double bytes) {
  return inUnit(bytes, unitFor(kUnits, bytes)) + "   (" + FormatNumber(bytes) + " Bytes)";
}

std::string longSizeText(double bytes) {
  return bytes > kMostBytesAlone ? sizeText(bytes) : FormatNumber(bytes) + " Bytes";
}

ShortSizes shortSizes(double free, double total) {
  const Unit& unit = unitFor(kShortUnits, free);
  return {inUnit(free, unit), inUnit(total, unit)};
}

}  // namespace veltrin
