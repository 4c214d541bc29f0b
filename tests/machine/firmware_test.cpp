// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/firmware.h"

#include <gtest/gtest.h>

#include "temporary_tree.h"

namespace veltrin {
namespace {

using namespace std::string_literals;

// BIOS Information and System Information of a table.
const std::string kTable =
    "\x00\x09\x00\x00\x01\x02\x00\xE0\x03Table Firmware\0T.1\0"s
    "01/02/2024\0\0"s
    "\x01\x06\x01\x00\x01\x02Table Works\0Table Model\0\0"s;

TEST(Firmware, IsReadFromTheKernelsTexts) {
  const TemporaryTree tree;
  tree.put("/sys/class/dmi/id/sys_vendor", "Example Works\n");
  tree.put("/sys/class/dmi/id/product_name", "Model 7 \n");
  tree.put("/sys/class/dmi/id/bios_vendor", "Example Firmware\n");
  tree.put("/sys/class/dmi/id/bios_version", "F.20\n");
  tree.put("/sys/class/dmi/id/bios_date", "08/10/2025\n");
  tree.put("/sys/firmware/dmi/tables/DMI", kTable);
  const FirmwareFacts facts = firmwareFacts(tree.files());
  EXPECT_EQ(facts.manufacturer, "Example Works");
  EXPECT_EQ(facts.model, "Model 7");
  EXPECT_EQ(facts.bios, "Example Firmware F.20, 8/10/2025");
}

TEST(Firmware, IsReadFromTheTableWhereThereAreNoTexts) {
  const TemporaryTree tree;
  tree.put("/sys/firmware/dmi/tables/DMI", kTable);
  const FirmwareFacts facts = firmwareFacts(tree.files());
  EXPECT_EQ(facts.manufacturer, "Table Works");
  EXPECT_EQ(facts.model, "Table Model");
  EXPECT_EQ(facts.bios, "Table Firmware T.1, 1/2/2024");
}

TEST(Firmware, IsUnknownWhereNothingMayBeRead) {
  const TemporaryTree tree;
  // Not a plain file stands for one that may not be read, also when root tests.
  tree.makeFolder("/sys/firmware/dmi/tables/DMI");
  tree.makeFolder("/sys/class/dmi/id/sys_vendor");
  const FirmwareFacts facts = firmwareFacts(tree.files());
  EXPECT_EQ(facts.manufacturer, "");
  EXPECT_EQ(facts.model, "");
  EXPECT_EQ(facts.bios, "");
}

TEST(Firmware, OfADeviceTreeNamesTheModelAndItsVendor) {
  const TemporaryTree tree;
  tree.put("/sys/firmware/devicetree/base/model", "Example Board 4 Rev 1.4\0"s);
  tree.put("/sys/firmware/devicetree/base/compatible", "example,board-4\0example,soc\0"s);
  const FirmwareFacts facts = firmwareFacts(tree.files());
  EXPECT_EQ(facts.manufacturer, "example");
  EXPECT_EQ(facts.model, "Example Board 4 Rev 1.4");
  EXPECT_EQ(facts.bios, "");
}

std::string biosOf(const std::string& vendor, const std::string& version, const std::string& date) {
  const TemporaryTree tree;
  tree.put("/sys/class/dmi/id/bios_vendor", vendor);
  tree.put("/sys/class/dmi/id/bios_version", version);
  tree.put("/sys/class/dmi/id/bios_date", date);
  return firmwareFacts(tree.files()).bios;
}

TEST(Firmware, JoinsWhatIsKnownOfTheBios) {
  EXPECT_EQ(biosOf("Vendor\n", "\n", "12/31/2024\n"), "Vendor, 12/31/2024");
  EXPECT_EQ(biosOf("\n", "1.0\n", "\n"), "1.0");
  EXPECT_EQ(biosOf("\n", "\n", "10/05/2024\n"), "10/5/2024");
}

TEST(Firmware, KeepsADateOfAnotherFormAsItIs) {
  EXPECT_EQ(biosOf("V", "1", "2024-05-01\n"), "V 1, 2024-05-01");
  EXPECT_EQ(biosOf("V", "1", "05/2024\n"), "V 1, 05/2024");
}

}  // namespace
}  // namespace veltrin
