// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/machine/smbios_table.h"
#include "wmi_answers.h"

namespace veltrin {
namespace {

using ::testing::IsEmpty;
using Texts = std::map<std::string, std::string>;

// --- Win32_BaseBoard ---

class Win32BaseBoard : public AskedMachine, public ::testing::Test {};

TEST_F(Win32BaseBoard, IsTheMainBoard) {
  tree.put("/sys/class/dmi/id/board_vendor", "Example Works\n");
  tree.put("/sys/class/dmi/id/board_name", "Board 7\n");
  EXPECT_EQ(properties("Win32_BaseBoard"), (Texts{{"Manufacturer", "Example Works"},
                                                  {"Product", "Board 7"},
                                                  {"Version", "null"},
                                                  {"SerialNumber", "null"}}));
}

TEST_F(Win32BaseBoard, IsNoneWhereNobodyTellsIt) { EXPECT_THAT(all("Win32_BaseBoard"), IsEmpty()); }

// --- Win32_SystemSlot ---

class Win32SystemSlot : public AskedMachine, public ::testing::Test {
 protected:
  // A property of a slot with this byte of the firmware's structure.
  std::string valueWith(std::size_t at, unsigned code, const char* property) {
    tree.put(kSmbiosFile, smbiosTable({SmbiosPart(9, 0x0D).number(at, code)}));
    const auto texts = values("Win32_SystemSlot", property);
    return texts.size() == 1 ? texts[0] : "no object";
  }

  std::string connectorOf(unsigned type) { return valueWith(0x05, type, "ConnectorType"); }
  std::string widthOf(unsigned code) { return valueWith(0x06, code, "MaxDataWidth"); }
  std::string voltagesOf(unsigned bits) { return valueWith(0x0B, bits, "VccMixedVoltageSupport"); }

  std::string connectorAt(const std::string& speed) {
    tree.put("/sys/bus/pci/slots/1/max_bus_speed", speed + "\n");
    return values("Win32_SystemSlot", "ConnectorType").at(0);
  }
};

TEST_F(Win32SystemSlot, IsToldByTheFirmware) {
  tree.put(kSmbiosFile, smbiosTable({SmbiosPart(9, 0x0D)
                                         .text(0x04, "PCI Slot J11")
                                         .number(0x05, 0x06)
                                         .number(0x06, 0x05)
                                         .number(0x0B, 0x06)}));
  EXPECT_EQ(properties("Win32_SystemSlot"), (Texts{{"SlotDesignation", "PCI Slot J11"},
                                                   {"MaxDataWidth", "2"},
                                                   {"VccMixedVoltageSupport", "[3 2]"},
                                                   {"ConnectorType", "[43]"}}));
}

TEST_F(Win32SystemSlot, HasTheConnectorOfEachTypeBeforePciExpress) {
  const std::map<unsigned, std::string> connectors{
      {0x01, "[1]"},  {0x02, "[0]"},  {0x03, "[44]"}, {0x04, "[91]"}, {0x05, "[45]"},
      {0x06, "[43]"}, {0x07, "[47]"}, {0x08, "[46]"}, {0x09, "[76]"}, {0x0A, "[77]"},
      {0x0B, "[78]"}, {0x0C, "[79]"}, {0x0D, "[65]"}, {0x0E, "[80]"}, {0x0F, "[73]"},
      {0x10, "[81]"}, {0x11, "[82]"}, {0x12, "[88]"}, {0x13, "[99]"},
  };
  for (const auto& [type, connector] : connectors) {
    EXPECT_EQ(connectorOf(type), connector) << type;
  }
}

TEST_F(Win32SystemSlot, HasTheConnectorOfAllSlotsOfThePc98) {
  for (unsigned type = 0xA0; type <= 0xA4; ++type) {
    EXPECT_EQ(connectorOf(type), "[83]") << type;
  }
}

TEST_F(Win32SystemSlot, HasTheConnectorOfPciExpressInAllItsSizes) {
  for (unsigned type :
       {0x1F, 0x20, 0x21, 0x22, 0x23, 0x24, 0x25, 0xA5, 0xA6, 0xA7, 0xA8, 0xA9, 0xAA,
        0xAB, 0xAC, 0xAD, 0xAE, 0xAF, 0xB0, 0xB1, 0xB2, 0xB3, 0xB4, 0xB5, 0xB6, 0xB8,
        0xB9, 0xBA, 0xBB, 0xBC, 0xBD, 0xBE, 0xBF, 0xC0, 0xC1, 0xC2, 0xC3, 0xC4}) {
    EXPECT_EQ(connectorOf(type), "[100]") << type;
  }
}

TEST_F(Win32SystemSlot, HasAnotherConnectorWhereTheClassHasNoCode) {
  for (unsigned type : {0x00, 0x14, 0x17, 0x18, 0x1E, 0x26, 0x28, 0x30, 0x9F, 0xB7, 0xC5, 0xFF}) {
    EXPECT_EQ(connectorOf(type), "[1]") << type;
  }
}

TEST_F(Win32SystemSlot, HasTheCodeOfEachWidthInBits) {
  const std::map<unsigned, std::string> widths{
      {0x00, "null"}, {0x01, "null"}, {0x02, "null"}, {0x03, "0"},    {0x04, "1"},
      {0x05, "2"},    {0x06, "3"},    {0x07, "4"},    {0x08, "null"}, {0x09, "null"},
      {0x0A, "null"}, {0x0B, "null"}, {0x0C, "null"}, {0x0D, "null"}, {0x0E, "null"},
  };
  for (const auto& [code, width] : widths) {
    EXPECT_EQ(widthOf(code), width) << code;
  }
}

TEST_F(Win32SystemSlot, HasTheCodesOfItsVoltages) {
  EXPECT_EQ(voltagesOf(0x00), "[]");
  EXPECT_EQ(voltagesOf(0x01), "[0]");
  EXPECT_EQ(voltagesOf(0x02), "[3]");
  EXPECT_EQ(voltagesOf(0x04), "[2]");
  EXPECT_EQ(voltagesOf(0x06), "[3 2]");
  EXPECT_EQ(voltagesOf(0xF8), "[]");
}

TEST_F(Win32SystemSlot, IsNamedByTheKernelWithoutTheFirmware) {
  tree.put("/sys/bus/pci/slots/2-1/max_bus_speed", "8.0 GT/s PCIe\n");
  EXPECT_EQ(properties("Win32_SystemSlot"), (Texts{{"SlotDesignation", "2-1"},
                                                   {"MaxDataWidth", "null"},
                                                   {"VccMixedVoltageSupport", "null"},
                                                   {"ConnectorType", "[100]"}}));
}

TEST_F(Win32SystemSlot, HasTheConnectorOfTheBusThatTheKernelTells) {
  const std::map<std::string, std::string> connectors{
      {"33 MHz PCI", "[43]"},
      {"66 MHz PCI", "[80]"},
      {"66 MHz PCI-X", "[88]"},
      {"100 MHz PCI-X", "[88]"},
      {"133 MHz PCI-X 533", "[88]"},
      {"Unknown AGP", "[73]"},
      {"1x AGP", "[73]"},
      {"2x AGP", "[81]"},
      {"4x AGP", "[82]"},
      {"8x AGP", "[99]"},
      {"2.5 GT/s PCIe", "[100]"},
      {"64.0 GT/s PCIe", "[100]"},
      {"Unknown", "null"},
      {"", "null"},
  };
  for (const auto& [speed, connector] : connectors) {
    EXPECT_EQ(connectorAt(speed), connector) << speed;
  }
}

TEST_F(Win32SystemSlot, IsNoneWhereNobodyTellsIt) {
  EXPECT_THAT(all("Win32_SystemSlot"), IsEmpty());
}

}  // namespace
}  // namespace veltrin
