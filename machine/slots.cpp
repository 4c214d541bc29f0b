// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/slots.h"

#include <algorithm>

#include "machine/fact_text.h"

namespace veltrin {
namespace {

// Documentation/ABI/testing/sysfs-bus-pci and drivers/pci/slot.c of the kernel.
constexpr const char* kSlots = "/sys/bus/pci/slots/";

// "2" before "10".
bool comesBefore(const std::string& left, const std::string& right) {
  const auto leftNumber = wholeNumber(left);
  const auto rightNumber = wholeNumber(right);
  if (leftNumber && rightNumber && *leftNumber != *rightNumber) {
    return *leftNumber < *rightNumber;
  }
  return leftNumber.has_value() != rightNumber.has_value() ? leftNumber.has_value() : left < right;
}

std::vector<SlotFacts> slotsOfKernel(const FileTree& files) {
  std::vector<std::string> names = files.names(kSlots);
  std::sort(names.begin(), names.end(), comesBefore);
  std::vector<SlotFacts> slots;
  for (const std::string& name : names) {
    SlotFacts slot;
    slot.designation = printable(name);
    slot.speed = printable(files.line(kSlots + name + "/max_bus_speed"));
    slots.push_back(slot);
  }
  return slots;
}

}  // namespace

std::vector<SlotFacts> boardSlots(const FileTree& files) {
  std::vector<SlotFacts> slots = slotsIn(SmbiosTable(files));
  return slots.empty() ? slotsOfKernel(files) : slots;
}

std::vector<SlotFacts> slotsIn(const SmbiosTable& table) {
  std::vector<SlotFacts> slots;
  for (const SmbiosStructure& structure : table.all(SmbiosType::Slot)) {
    slots.push_back({structure.text(0x04), structure.number(0x05), structure.number(0x06),
                     structure.number(0x0B), ""});
  }
  return slots;
}

}  // namespace veltrin
