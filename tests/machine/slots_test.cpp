// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/slots.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "smbios_table.h"
#include "temporary_tree.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

SlotFacts kernelSlot(const std::string& name, const std::string& speed) {
  return {name, std::nullopt, std::nullopt, std::nullopt, speed};
}

const std::string kTable = smbiosTable(
    {SmbiosPart(9, 0x0D).text(0x04, "PCI 1").number(0x05, 6).number(0x06, 5).number(0x0B, 0x06),
     SmbiosPart(9, 0x0B).text(0x04, "OLD").number(0x05, 3).number(0x06, 4)});

const SlotFacts kPci{"PCI 1", 6, 5, 6, ""};
const SlotFacts kOld{"OLD", 3, 4, std::nullopt, ""};

TEST(Slots, AreReadFromTheTableInItsOrder) {
  EXPECT_THAT(slotsIn(SmbiosTable(kTable)), ElementsAre(kPci, kOld));
}

TEST(Slots, AreTakenFromTheTableWhereItMayBeRead) {
  const TemporaryTree tree;
  tree.put(kSmbiosFile, kTable);
  tree.put("/sys/bus/pci/slots/1/max_bus_speed", "8.0 GT/s PCIe\n");
  EXPECT_THAT(boardSlots(tree.files()), ElementsAre(kPci, kOld));
}

TEST(Slots, AreThoseThatTheKernelNamesElse) {
  const TemporaryTree tree;
  tree.put("/sys/bus/pci/slots/10/max_bus_speed", "8.0 GT/s PCIe\n");
  tree.put("/sys/bus/pci/slots/2/max_bus_speed", "33 MHz PCI\n");
  tree.makeFolder("/sys/bus/pci/slots/2-1");
  tree.makeFolder("/sys/bus/pci/slots/\xFFslot");
  EXPECT_THAT(boardSlots(tree.files()),
              ElementsAre(kernelSlot("2", "33 MHz PCI"), kernelSlot("10", "8.0 GT/s PCIe"),
                          kernelSlot("2-1", ""), kernelSlot("?slot", "")));
}

TEST(Slots, AreNoneWhereNobodyTellsThem) {
  EXPECT_THAT(boardSlots(TemporaryTree().files()), IsEmpty());
}

}  // namespace
}  // namespace veltrin
