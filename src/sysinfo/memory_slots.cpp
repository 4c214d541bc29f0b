// SPDX-License-Identifier: GPL-3.0-or-later
#include "sysinfo/memory_slots.h"

#include <algorithm>

#include "text/numbers.h"
#include "text/statement.h"
#include "text/strings.h"

namespace veltrin {
namespace {

// Bytes of the units in which the summary tells memory: a mix of 1024 and 1000.
constexpr double kMegabyte = 1'024'000;
constexpr double kGigabyte = 1'024'000'000;
constexpr double kMostMegabytes = 1000;  // above these it tells gigabytes

// "4 GB  Speed: 1333 Mhz   (BANK 0)"
std::string sizeAndSpeed(const WmiObject& bank, double unit, const std::string& unitName) {
  return Format(bank.value("Capacity").number() / unit, "#,###") + unitName +
         "  Speed: " + bank.value("Speed").text() + " Mhz   (" + bank.value("BankLabel").text() +
         ")";
}

std::string slotText(const WmiObject& bank, const std::string& megabytes) {
  if (Val(megabytes) > kMostMegabytes) return sizeAndSpeed(bank, kGigabyte, " GB");
  if (megabytes.empty()) return "Empty     (" + bank.value("BankLabel").text() + ")";
  return sizeAndSpeed(bank, kMegabyte, " MB");
}

}  // namespace

void fillMemorySlots(const std::vector<WmiObject>& banks, std::array<std::string, 4>& slots) {
  std::string megabytes;  // a bank without a capacity is judged by that of the one before
  for (const WmiObject& bank : banks) {
    if (!holds([&] { return Left(bank.value("DeviceLocator").text(), 1) == "A"; })) continue;
    skip([&] { megabytes = Format(bank.value("Capacity").number() / kMegabyte, "#"); });
    const auto slot = std::find(slots.begin(), slots.end(), std::string());
    if (slot == slots.end()) continue;
    const std::string number = std::to_string(slot - slots.begin() + 1);
    skip([&] { *slot = "Slot " + number + ":   " + slotText(bank, megabytes); });
  }
}

}  // namespace veltrin
