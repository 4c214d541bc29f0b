// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "platform/linux/setup_classes.h"

namespace veltrin {
namespace {

std::string nameOf(int kind, int subclass) {
  return std::to_string(kind) + "/" + std::to_string(subclass);
}

TEST(SetupClassOfPci, IsThatOfTheCode) {
  struct Row {
    int kind;
    int subclass;
    const char* setupClass;
  };
  constexpr Row kRows[] = {
      {0x00, 0x00, ""},
      {0x00, 0x01, "DISPLAY"},
      {0x01, 0x00, "SCSIADAPTER"},
      {0x01, 0x01, "HDC"},
      {0x01, 0x02, "FDC"},
      {0x01, 0x04, "SCSIADAPTER"},
      {0x01, 0x05, "HDC"},
      {0x01, 0x06, "HDC"},
      {0x01, 0x07, "SCSIADAPTER"},
      {0x01, 0x08, "SCSIADAPTER"},
      {0x01, 0x80, "SCSIADAPTER"},
      {0x02, 0x00, "NET"},
      {0x02, 0x80, "NET"},
      {0x03, 0x00, "DISPLAY"},
      {0x03, 0x80, "DISPLAY"},
      {0x04, 0x00, "MEDIA"},
      {0x04, 0x01, "MEDIA"},
      {0x04, 0x03, "MEDIA"},
      {0x05, 0x00, "SYSTEM"},
      {0x06, 0x00, "SYSTEM"},
      {0x06, 0x04, "SYSTEM"},
      {0x06, 0x05, "PCMCIA"},
      {0x06, 0x07, "PCMCIA"},
      {0x07, 0x00, "PORTS"},
      {0x07, 0x01, "PORTS"},
      {0x07, 0x02, "MULTIPORTSERIAL"},
      {0x07, 0x03, "MODEM"},
      {0x07, 0x05, "SMARTCARDREADER"},
      {0x07, 0x80, "SYSTEM"},
      {0x08, 0x00, "SYSTEM"},
      {0x08, 0x05, "SDHOST"},
      {0x09, 0x00, "KEYBOARD"},
      {0x09, 0x01, "HIDCLASS"},
      {0x09, 0x02, "MOUSE"},
      {0x0A, 0x00, "SYSTEM"},
      {0x0B, 0x40, "PROCESSOR"},
      {0x0C, 0x00, "1394"},
      {0x0C, 0x03, "USB"},
      {0x0C, 0x04, "SCSIADAPTER"},
      {0x0C, 0x05, "SYSTEM"},
      {0x0C, 0x06, ""},
      {0x0C, 0x07, "SYSTEM"},
      {0x0C, 0x80, "SYSTEM"},
      {0x0D, 0x00, "INFRARED"},
      {0x0D, 0x10, ""},
      {0x0D, 0x11, "BLUETOOTH"},
      {0x0D, 0x20, "NET"},
      {0x0D, 0x21, "NET"},
      {0x0D, 0x80, "NET"},
      {0x0E, 0x00, ""},
      {0x10, 0x00, ""},
      {0x11, 0x80, "SYSTEM"},
      {0x12, 0x00, "COMPUTEACCELERATOR"},
      {0xFF, 0x00, ""},
  };
  for (const Row& row : kRows) {
    EXPECT_EQ(setupClassOfPci(static_cast<std::uint8_t>(row.kind),
                              static_cast<std::uint8_t>(row.subclass)),
              row.setupClass)
        << nameOf(row.kind, row.subclass);
  }
}

TEST(SetupClassOfUsb, IsThatOfTheCode) {
  struct Row {
    UsbCode code;
    const char* setupClass;
  };
  constexpr Row kRows[] = {
      {{0x00, 0, 0}, ""},          {{0x01, 1, 0}, "MEDIA"},
      {{0x02, 2, 1}, "PORTS"},     {{0x02, 6, 0}, "NET"},
      {{0x02, 12, 7}, "NET"},      {{0x02, 13, 0}, "NET"},
      {{0x02, 14, 0}, "NET"},      {{0x02, 1, 0}, ""},
      {{0x03, 1, 2}, "HIDCLASS"},  {{0x05, 0, 0}, "HIDCLASS"},
      {{0x06, 1, 1}, "IMAGE"},     {{0x07, 1, 2}, "PRINTER"},
      {{0x08, 6, 80}, "USB"},      {{0x09, 0, 3}, "USB"},
      {{0x0A, 0, 0}, ""},          {{0x0B, 0, 0}, "SMARTCARDREADER"},
      {{0x0E, 1, 0}, "CAMERA"},    {{0x10, 1, 0}, "MEDIA"},
      {{0xE0, 1, 1}, "BLUETOOTH"}, {{0xE0, 1, 3}, "NET"},
      {{0xE0, 1, 2}, ""},          {{0xE0, 2, 1}, ""},
      {{0xEF, 4, 1}, "NET"},       {{0xEF, 2, 1}, ""},
      {{0xFE, 2, 0}, "INFRARED"},  {{0xFE, 1, 0}, ""},
      {{0xFF, 0, 0}, ""},
  };
  for (const Row& row : kRows) {
    EXPECT_EQ(setupClassOfUsb(row.code), row.setupClass)
        << nameOf(row.code.kind, row.code.subclass);
  }
}

TEST(SetupClassOfVirtio, IsThatOfTheType) {
  const std::pair<std::uint32_t, const char*> rows[] = {
      {1, "NET"},       {2, "SCSIADAPTER"}, {3, "SYSTEM"}, {4, "SYSTEM"},
      {5, "SYSTEM"},    {8, "SCSIADAPTER"}, {9, ""},       {16, "DISPLAY"},
      {18, "HIDCLASS"}, {19, "SYSTEM"},     {25, "MEDIA"}, {26, "SYSTEM"},
      {0, ""},          {0xFFFFFFFF, ""}};
  for (const auto& [type, setupClass] : rows) {
    EXPECT_EQ(setupClassOfVirtio(type), setupClass) << type;
  }
}

std::string known(const KnownDevice* device) {
  return device == nullptr
             ? "unknown"
             : std::string(device->description) + ": " + std::string(device->setupClass);
}

TEST(KnownPnpDevice, IsThatOfTheId) {
  const std::pair<const char*, const char*> rows[] = {
      {"ACPI0003", "AC adapter: BATTERY"},
      {"LNXPWRBN", "ACPI fixed feature button: SYSTEM"},
      {"MSFT0101", "Trusted Platform Module 2.0: SECURITYDEVICES"},
      {"PNP0000", "Programmable interrupt controller: SYSTEM"},
      {"PNP0100", "System timer: SYSTEM"},
      {"PNP0103", "High precision event timer: SYSTEM"},
      {"PNP0200", "Direct memory access controller: SYSTEM"},
      {"PNP0303", "Standard PS/2 Keyboard: KEYBOARD"},
      {"PNP0400", "Printer Port: PORTS"},
      {"PNP0401", "ECP Printer Port: PORTS"},
      {"PNP0500", "Communications Port: PORTS"},
      {"PNP0501", "Communications Port: PORTS"},
      {"PNP0600", "IDE controller: HDC"},
      {"PNP0700", "Standard floppy disk controller: FDC"},
      {"PNP0800", "System speaker: SYSTEM"},
      {"PNP0A03", "PCI bus: SYSTEM"},
      {"PNP0A08", "PCI Express root complex: SYSTEM"},
      {"PNP0B00", "System CMOS/real time clock: SYSTEM"},
      {"PNP0C01", "System board: SYSTEM"},
      {"PNP0C02", "Motherboard resources: SYSTEM"},
      {"PNP0C04", "Numeric data processor: SYSTEM"},
      {"PNP0C09", "ACPI embedded controller: SYSTEM"},
      {"PNP0C0A", "ACPI control method battery: BATTERY"},
      {"PNP0C0B", "ACPI fan: SYSTEM"},
      {"PNP0C0C", "ACPI power button: SYSTEM"},
      {"PNP0C0D", "ACPI lid: SYSTEM"},
      {"PNP0C0E", "ACPI sleep button: SYSTEM"},
      {"PNP0C14", "ACPI management interface: SYSTEM"},
      {"PNP0C31", "Trusted Platform Module 1.2: SECURITYDEVICES"},
      {"PNP0F03", "PS/2 mouse: MOUSE"},
      {"PNP0F13", "PS/2 mouse: MOUSE"},
      {"PNP0C0F", "unknown"},
      {"", "unknown"},
      {"PNP05010", "unknown"}};
  for (const auto& [id, device] : rows) {
    PnpDevice asked;
    asked.ids = {id};
    EXPECT_EQ(known(knownPnpDevice(asked)), device) << id;
  }
}

TEST(KnownPnpDevice, IsThatOfTheFirstKnownId) {
  PnpDevice device;
  device.ids = {"LEN0071", "PNP0303", "PNP0501"};
  EXPECT_EQ(known(knownPnpDevice(device)), "Standard PS/2 Keyboard: KEYBOARD");
  EXPECT_EQ(known(knownPnpDevice(PnpDevice())), "unknown");
}

TEST(KnownScsiDevice, IsThatOfTheType) {
  const std::pair<std::uint64_t, const char*> rows[] = {
      {0x00, "Disk drive: DISKDRIVE"},
      {0x01, "Tape drive: TAPEDRIVE"},
      {0x03, "unknown"},
      {0x04, "CD-ROM Drive: CDROM"},
      {0x05, "CD-ROM Drive: CDROM"},
      {0x06, "Scanner: IMAGE"},
      {0x07, "Disk drive: DISKDRIVE"},
      {0x08, "Medium changer: MEDIUMCHANGER"},
      {0x0D, "unknown"},
      {0x0E, "Disk drive: DISKDRIVE"},
      {0x14, "Disk drive: DISKDRIVE"},
      {0x1F, "unknown"},
  };
  for (const auto& [type, device] : rows) {
    EXPECT_EQ(known(knownScsiDevice(type)), device) << type;
  }
}

}  // namespace
}  // namespace veltrin
