// SPDX-License-Identifier: GPL-3.0-or-later
// The words of the report for the codes of devices.
#include "sysinfo/status_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>

#include "text/statement.h"

namespace veltrin {
namespace {

using Lookup = void (StatusText::*)(const WmiValue&);
using Words = std::map<int, std::string>;

// What the text is behind a lookup, when it was `before`.
std::string after(Lookup lookup, const WmiValue& value, const std::string& before = "before") {
  StatusText words;
  words.text = before;
  (words.*lookup)(value);
  return words.text;
}

std::string afterFailed(Lookup lookup, const WmiValue& value) {
  StatusText words;
  words.text = "before";
  EXPECT_THROW((words.*lookup)(value), StatementFailed);
  return words.text;
}

WmiValue array(std::vector<Loose> elements) { return {std::move(elements)}; }

// All codes of eight bits, with and without a sign, and some on both sides.
constexpr int kFirst = -140;
constexpr int kLast = 400;

// What a lookup makes of the codes that change the text.
Words wordsOf(Lookup lookup) {
  Words words;
  for (int code = kFirst; code <= kLast; ++code) {
    if (const std::string text = after(lookup, code); text != "before") words[code] = text;
  }
  return words;
}

// What stands behind the number, for a lookup that puts the value first.
Words wordsBehind(Lookup lookup) {
  Words words;
  for (int code = kFirst; code <= kLast; ++code) {
    const std::string text = after(lookup, code);
    const std::string number = std::to_string(code);
    EXPECT_EQ(text.substr(0, number.size()), number);
    if (text != number) words[code] = text.substr(number.size());
  }
  return words;
}

// The same for the elements of an array, one at a time.
Words wordsOfElements(Lookup lookup) {
  Words words;
  for (int code = kFirst; code <= kLast; ++code) {
    const std::string text = after(lookup, array({code}));
    if (!text.empty()) words[code] = text;
  }
  return words;
}

TEST(StatusTextTables, Location) {
  EXPECT_EQ(wordsBehind(&StatusText::Location),
            (Words{{0, " (internal)"}, {1, " (external)"}, {2, " (reserved)"}, {3, " (unknown)"}}));
}

TEST(StatusTextTables, Level) {
  EXPECT_EQ(wordsBehind(&StatusText::Level), (Words{{1, " (other)"},
                                                    {2, " (unknown)"},
                                                    {3, " (primary)"},
                                                    {4, " (secondary)"},
                                                    {5, " (tertiary)"}}));
}

TEST(StatusTextTables, MaxDataWidth) {
  EXPECT_EQ(wordsOf(&StatusText::MaxDataWidth),
            (Words{{0, "8"}, {1, "16"}, {2, "32"}, {3, "64"}, {4, "128"}}));
}

TEST(StatusTextTables, VccMixedVoltageSupport) {
  EXPECT_EQ(wordsOfElements(&StatusText::VccMixedVoltageSupport),
            (Words{{0, "Unknown  "}, {1, "Other  "}, {2, "3.3v  "}, {3, "5v  "}}));
}

TEST(StatusTextTables, ConnectorType) {
  const Words expected{{0, " Unknown"},
                       {1, " Other"},
                       {2, " Male"},
                       {3, " Female"},
                       {4, " Shielded"},
                       {5, " Unshielded"},
                       {6, " SCSI (A) High-Density (50 pins)"},
                       {7, " SCSI (A) Low-Density (50 pins)"},
                       {8, " SCSI (P) High-Density (68 pins)"},
                       {9, " SCSI SCA-I (80 pins)"},
                       {10, "SCSI SCA-II (80 pins)"},
                       {11, "SCSI Fibre Channel (DB-9, Copper)"},
                       {12, "SCSI Fibre Channel (Fibre)"},
                       {13, "SCSI Fibre Channel SCA-II (40 pins)"},
                       {14, "SCSI Fibre Channel SCA-II (20 pins)"},
                       {15, "SCSI Fibre Channel BNC"},
                       {16, "ATA 3-1/2 Inch (40 pins)"},
                       {17, "ATA 2-1/2 Inch (44 pins)"},
                       {18, "ATA-2"},
                       {19, "ATA-3"},
                       {20, "ATA/66"},
                       {21, "DB-9"},
                       {22, "DB-15"},
                       {23, "DB-25"},
                       {24, "DB-36"},
                       {25, "RS-232C"},
                       {26, "RS-422"},
                       {27, "RS-423"},
                       {28, "RS-485"},
                       {29, "RS-449"},
                       {30, "V.35"},
                       {31, "X.21"},
                       {32, "IEEE-488"},
                       {33, "AUI"},
                       {34, "UTP Category 3"},
                       {35, "UTP Category 4"},
                       {36, "UTP Category 5"},
                       {37, "BNC"},
                       {38, "RJ11"},
                       {39, "RJ45"},
                       {40, "Fiber MIC"},
                       {41, "Apple AUI"},
                       {42, "Apple GeoPort"},
                       {43, "PCI"},
                       {44, "ISA"},
                       {45, "EISA"},
                       {46, "VESA"},
                       {47, "PCMCIA"},
                       {48, "PCMCIA Type I"},
                       {49, "PCMCIA Type II"},
                       {50, "PCMCIA Type III"},
                       {51, "ZV Port"},
                       {52, "CardBus"},
                       {53, "USB"},
                       {54, "IEEE 1394"},
                       {55, "HIPPI"},
                       {56, "HSSDC (6 pins)"},
                       {57, "GBIC"},
                       {58, "DIN"},
                       {59, "Mini-DIN"},
                       {60, "Micro-DIN"},
                       {61, "PS/2"},
                       {62, "Infrared"},
                       {63, "HP-HIL"},
                       {64, "Access.bus"},
                       {65, "NuBus"},
                       {66, "Centronics"},
                       {67, "Mini-Centronics"},
                       {68, "Mini-Centronics Type-14"},
                       {69, "Mini-Centronics Type-20"},
                       {70, "Mini-Centronics Type-26"},
                       {71, "Bus Mouse"},
                       {72, "ADB"},
                       {73, "AGP"},
                       {74, "VME Bus"},
                       {75, "VME64"},
                       {76, "Proprietary"},
                       {77, "Proprietary Processor Card Slot"},
                       {78, "Proprietary Memory Card Slot"},
                       {79, "Proprietary I/O Riser Slot"},
                       {80, "PCI-66MHZ"},
                       {81, "AGP2X"},
                       {82, "AGP4X"}};
  EXPECT_EQ(wordsOfElements(&StatusText::ConnectorType), expected);
}

TEST(StatusTextTables, Availability) {
  const Words expected{{1, " (other)"},
                       {2, " (unknown)"},
                       {3, " (on/full pwr)"},
                       {4, " (warning)"},
                       {5, " (in test)"},
                       {6, " (not applicable)"},
                       {7, " (pwr off)"},
                       {8, " (off line)"},
                       {9, " (off duty)"},
                       {10, " (degraded)"},
                       {11, " (not installed)"},
                       {12, " (Install Error)"},
                       {13, " (pwr save - unknown)"},
                       {14, " (pwr save - low pwr mode)"},
                       {15, " (pwr save - standby)"},
                       {16, " (pwr cycle)"},
                       {17, " (pwr save - warning)"},
                       {18, " (paused)"},
                       {19, " (not ready)"},
                       {20, " (not configured)"},
                       {21, " (quiesced)"}};
  EXPECT_EQ(wordsBehind(&StatusText::Availability), expected);
}

TEST(StatusTextTables, ConfigManagerErrorCode) {
  const Words expected{
      {0, "Device is working properly."},
      {1, "Device is not configured correctly."},
      {2, "Windows cannot load the driver for this device."},
      {3,
       "Driver for this device might be corrupted, or the system may be low on memory or other "
       "resources."},
      {4, "Device is not working properly. One of its drivers or the registry might be corrupted."},
      {5, "Driver for the device requires a resource that Windows cannot manage."},
      {6, "Boot configuration for the device conflicts with other devices."},
      {7, "Cannot filter."},
      {8, "Driver loader for the device is missing."},
      {9,
       "Device is not working properly; the controlling firmware is incorrectly reporting the "
       "resources for the device."},
      {10, "Device cannot start."},
      {11, "Device failed."},
      {12, "Device cannot find enough free resources to use."},
      {13, "Windows cannot verify the device's resources."},
      {14, "Device cannot work properly until the computer is restarted."},
      {15, "Device is not working properly due to a possible re-enumeration problem."},
      {16, "Windows cannot identify all of the resources that the device uses."},
      {17, "Device is requesting an unknown resource type."},
      {18, "Device drivers need to be reinstalled."},
      {19, "Failure using the VxD loader."},
      {20, "Registry might be corrupted."},
      {21,
       "System failure. If changing the device driver is ineffective, see the hardware "
       "documentation. Windows is removing the device."},
      {22, "Device is disabled."},
      {23,
       "System failure. If changing the device driver is ineffective, see the hardware "
       "documentation."},
      {24,
       "Device is not present, not working properly, or does not have all of its drivers "
       "installed."},
      {25, "Windows is still setting up the device."},
      {26, "Windows is still setting up the device."},
      {27, "Device does not have valid log configuration."},
      {28, "Device drivers are not installed."},
      {29, "Device is disabled; the device firmware did not provide the required resources."},
      {30, "Device is using an IRQ resource that another device is using."},
      {31, "Device is not working properly; Windows cannot load the required device drivers."}};
  EXPECT_EQ(wordsOf(&StatusText::ConfigManagerErrorCode), expected);
}

TEST(StatusTextTables, PowerManagementCapabilities) {
  EXPECT_EQ(wordsOf(&StatusText::PowerManagementCapabilities),
            (Words{{0, "Unknown"},
                   {1, "Not Supported"},
                   {2, "Disabled"},
                   {3, "Enabled"},
                   {4, "Power Saving Modes Entered Automatically"},
                   {5, "Power State Settable"},
                   {6, "Power Cycling Supported"},
                   {7, "Timed Power On Supported"}}));
}

TEST(StatusTextTables, ProtocolSupported) {
  const Words expected{{1, "Other"},
                       {2, "Unknown"},
                       {3, "EISA"},
                       {4, "ISA"},
                       {5, "PCI"},
                       {6, "ATA / ATAPI"},
                       {7, "Flexible Diskette"},
                       {8, "1496"},
                       {9, "SCSI Parallel Interface"},
                       {10, "SCSI Fibre Channel Protocol"},
                       {11, "SCSI Serial Bus Protocol"},
                       {12, "SCSI Serial Bus Protocol-2 (1394)"},
                       {13, "SCSI Serial Storage Architecture"},
                       {14, "VESA"},
                       {15, "PCMCIA"},
                       {16, "Universal Serial Bus"},
                       {17, "Parallel Protocol"},
                       {18, "ESCON"},
                       {19, "Diagnostic"},
                       {20, "I2C"},
                       {21, "Power"},
                       {22, "HIPPI"},
                       {23, "MultiBus"},
                       {24, "VME"},
                       {25, "IPI"},
                       {26, "IEEE - 488"},
                       {27, "RS232"},
                       {28, "IEEE 802.3 10BASE5"},
                       {29, "IEEE 802.3 10BASE2"},
                       {30, "IEEE 802.3 1BASE5"},
                       {31, "IEEE 802.3 10BROAD36"},
                       {32, "IEEE 802.3 100BASEVG"},
                       {33, "IEEE 802.5 Token-Ring"},
                       {34, "ANSI X3T9.5 FDDI"},
                       {35, "MCA"},
                       {36, "ESDI"},
                       {37, "IDE"},
                       {38, "CMD"},
                       {40, "DSSI"},
                       {41, "QIC2"},
                       {42, "Enhanced ATA/IDE"},
                       {43, "AGP"},
                       {44, "TWIRP (two-way infrared)"},
                       {45, "FIR (fast infrared)"},
                       {46, "SIR (serial infrared)"},
                       {47, "IrBus"},
                       {49, "ST506"}};
  EXPECT_EQ(wordsOf(&StatusText::ProtocolSupported), expected);
}

TEST(StatusTextTables, DeviceInterface) {
  EXPECT_EQ(wordsOf(&StatusText::DeviceInterface), (Words{{1, "Other"},
                                                          {2, "Unknown"},
                                                          {3, "Serial"},
                                                          {4, "PS/2"},
                                                          {5, "Infrared"},
                                                          {6, "HP-HIL"},
                                                          {7, "Bus mouse"},
                                                          {8, "ADB (Apple Desktop Bus)"},
                                                          {160, "Bus mouse DB-9"},
                                                          {161, "Bus mouse micro-DIN"},
                                                          {162, "USB"}}));
}

TEST(StatusTextTables, AdminPasswordStatus) {
  EXPECT_EQ(wordsOf(&StatusText::AdminPasswordStatus),
            (Words{{0, "Disabled"}, {1, "Enabled"}, {2, "Not Implemented"}, {3, "None"}}));
}

TEST(StatusTextTables, TheOtherPasswordsAndTheResetOfTheFrontPanel) {
  const Words expected{{0, "Disabled"}, {1, "Enabled"}, {2, "Not Implemented"}, {3, "Unknown"}};
  EXPECT_EQ(wordsOf(&StatusText::KeyboardPasswordStatus), expected);
  EXPECT_EQ(wordsOf(&StatusText::PowerOnPasswordStatus), expected);
  EXPECT_EQ(wordsOf(&StatusText::FrontPanelResetStatus), expected);
}

TEST(StatusTextTables, ChassisBootupStateAndThermalState) {
  const Words expected{{1, "Other"},   {2, "Unknown"},  {3, "Safe"},
                       {4, "Warning"}, {5, "Critical"}, {6, "Non-recoverable"}};
  EXPECT_EQ(wordsOf(&StatusText::ChassisBootupState), expected);
  EXPECT_EQ(wordsOf(&StatusText::ThermalState), expected);
}

TEST(StatusTextTables, PowerSupplyState) {
  EXPECT_EQ(wordsOf(&StatusText::PowerSupplyState), (Words{{1, "Other"},
                                                           {2, "Unknown"},
                                                           {3, "Save"},
                                                           {4, "Warning"},
                                                           {5, "Critical"},
                                                           {6, "Non-recoverable"}}));
}

TEST(StatusTextTables, ResetCapability) {
  EXPECT_EQ(
      wordsOf(&StatusText::ResetCapability),
      (Words{
          {1, "Other"}, {2, "Unknown"}, {3, "Disabled"}, {4, "Enabled"}, {5, "Non-recoverable"}}));
}

TEST(StatusTextTables, PowerState) {
  EXPECT_EQ(wordsOf(&StatusText::PowerState), (Words{{0, "Unknown"},
                                                     {1, "Full Power"},
                                                     {2, "Power Save - Low Power Mode"},
                                                     {3, "Power Save - Standby"},
                                                     {4, "Power Save - Unknown"},
                                                     {5, "Power Cycle"},
                                                     {6, "Power Off"},
                                                     {7, "Power Save - Warning"}}));
}

TEST(StatusTextTables, WakeUpType) {
  EXPECT_EQ(wordsOf(&StatusText::WakeUpType), (Words{{0, "Reserved"},
                                                     {1, "Other"},
                                                     {2, "Unknown"},
                                                     {3, "APM Timer"},
                                                     {4, "Modem Ring"},
                                                     {5, "LAN Remote"},
                                                     {6, "Power Switch"},
                                                     {7, "PCI PME#"},
                                                     {8, "AC Power Restored"}}));
}

TEST(StatusText, ProtocolThirtyNineLeavesWhatWasThereBefore) {
  StatusText words;
  words.text = "line before";
  words.PowerManagementCapabilities(array({3}));
  words.ProtocolSupported(39);
  EXPECT_EQ(words.text, "line before");

  words.PowerManagementCapabilities(3);
  words.ProtocolSupported(39);
  EXPECT_EQ(words.text, "Enabled");
}

TEST(StatusText, ProtocolFortyNineIsST506InPlaceOfThePowerManagement) {
  StatusText words;
  words.PowerManagementCapabilities(3);
  words.ProtocolSupported(49);
  EXPECT_EQ(words.text, "ST506");
}

TEST(StatusText, ThreeIsSaveOfThePowerSupplyAndSafeOfTheHeat) {
  EXPECT_EQ(after(&StatusText::PowerSupplyState, 3), "Save");
  EXPECT_EQ(after(&StatusText::ThermalState, 3), "Safe");
}

TEST(StatusText, TwoConnectorsHaveTheWordOfTheSecond) {
  EXPECT_EQ(after(&StatusText::ConnectorType, array({2, 43})), "PCI");
}

TEST(StatusText, AnAvailabilityOfThreeIsTheNumberAndItsWord) {
  EXPECT_EQ(after(&StatusText::Availability, 3), "3 (on/full pwr)");
}

TEST(StatusText, ACodeMayBeAText) {
  EXPECT_EQ(after(&StatusText::Level, "4"), "4 (secondary)");
  EXPECT_EQ(after(&StatusText::MaxDataWidth, "2"), "32");
  EXPECT_EQ(after(&StatusText::ConnectorType, array({"43"})), "PCI");
}

TEST(StatusText, AValueThatIsNoCodeStandsAloneWhereItComesFirst) {
  EXPECT_EQ(after(&StatusText::Location, 4), "4");
  EXPECT_EQ(after(&StatusText::Level, "L2"), "L2");
  EXPECT_EQ(after(&StatusText::Availability, -1), "-1");
}

TEST(StatusText, NullIsEmptyWhereTheValueComesFirst) {
  EXPECT_EQ(after(&StatusText::Location, WmiValue()), "");
  EXPECT_EQ(after(&StatusText::Level, WmiValue()), "");
  EXPECT_EQ(after(&StatusText::Availability, WmiValue()), "");
}

TEST(StatusText, AnArrayFailsWhereTheValueComesFirstAndLeavesTheText) {
  EXPECT_EQ(afterFailed(&StatusText::Location, array({1})), "before");
  EXPECT_EQ(afterFailed(&StatusText::Level, array({1})), "before");
  EXPECT_EQ(afterFailed(&StatusText::Availability, array({1})), "before");
}

// Lookups that leave the text when the value is no code.
constexpr Lookup kReplacing[] = {
    &StatusText::MaxDataWidth,
    &StatusText::ConfigManagerErrorCode,
    &StatusText::ProtocolSupported,
    &StatusText::PowerManagementCapabilities,
    &StatusText::DeviceInterface,
    &StatusText::AdminPasswordStatus,
    &StatusText::PowerOnPasswordStatus,
    &StatusText::KeyboardPasswordStatus,
    &StatusText::FrontPanelResetStatus,
    &StatusText::ChassisBootupState,
    &StatusText::ThermalState,
    &StatusText::PowerSupplyState,
    &StatusText::ResetCapability,
    &StatusText::PowerState,
    &StatusText::WakeUpType,
};

TEST(StatusText, NullLeavesTheTextElsewhere) {
  for (const Lookup lookup : kReplacing) EXPECT_EQ(after(lookup, WmiValue()), "before");
}

TEST(StatusText, AnArrayIsNoCodeElsewhere) {
  for (const Lookup lookup : kReplacing) EXPECT_EQ(after(lookup, array({1})), "before");
}

TEST(StatusText, AFlagIsNoCode) { EXPECT_EQ(after(&StatusText::PowerState, true), "before"); }

TEST(StatusText, VoltagesStandOneBehindTheOther) {
  EXPECT_EQ(after(&StatusText::VccMixedVoltageSupport, array({3, 2, 3})), "5v  3.3v  5v  ");
}

TEST(StatusText, AVoltageWithoutAWordIsLeftOut) {
  EXPECT_EQ(after(&StatusText::VccMixedVoltageSupport, array({2, 4, Loose(), 3})), "3.3v  5v  ");
}

TEST(StatusText, AConnectorWithoutAWordLeavesThatOfTheOneBefore) {
  EXPECT_EQ(after(&StatusText::ConnectorType, array({43, 83})), "PCI");
}

TEST(StatusText, ConnectorsWithoutAWordAreEmpty) {
  EXPECT_EQ(after(&StatusText::ConnectorType, array({83, -1})), "");
}

TEST(StatusText, ArraysWithoutElementsAreEmpty) {
  EXPECT_EQ(after(&StatusText::VccMixedVoltageSupport, array({})), "");
  EXPECT_EQ(after(&StatusText::ConnectorType, array({})), "");
}

TEST(StatusText, WhatIsNoArrayFailsWhereOneIsNeededAndLeavesTheTextEmpty) {
  EXPECT_EQ(afterFailed(&StatusText::VccMixedVoltageSupport, WmiValue()), "");
  EXPECT_EQ(afterFailed(&StatusText::VccMixedVoltageSupport, 2), "");
  EXPECT_EQ(afterFailed(&StatusText::ConnectorType, WmiValue()), "");
  EXPECT_EQ(afterFailed(&StatusText::ConnectorType, 2), "");
}

}  // namespace
}  // namespace veltrin
