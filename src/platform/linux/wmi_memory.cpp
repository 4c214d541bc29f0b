// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/memory_banks.h"
#include "platform/linux/wmi_classes.h"

namespace veltrin {

// An empty socket is an object without a capacity. Capacity is a number of 64 bits in bytes, and
// so a text; Speed counts the transfers, in millions, as the class does since modules transfer
// twice in a cycle.
WmiAnswer win32PhysicalMemory(const WmiSources& sources) {
  WmiAnswer answer;
  for (const MemoryBank& bank : memoryBanks(sources.files)) {
    WmiObject object;
    auto& properties = object.properties;
    properties["DeviceLocator"] = orNull(bank.locator);
    properties["BankLabel"] = orNull(bank.bank);
    properties["Capacity"] = bank.bytes ? WmiValue(std::to_string(*bank.bytes)) : WmiValue();
    properties["Speed"] = orNull(bank.speed);
    answer.push_back(std::move(object));
  }
  return answer;
}

}  // namespace veltrin
