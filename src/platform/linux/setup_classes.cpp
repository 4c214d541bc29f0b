// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/setup_classes.h"

#include <algorithm>
#include <iterator>

namespace veltrin {
namespace {

constexpr int kAny = -1;

// A row of a table of codes; the first that fits counts.
struct CodeClass {
  int kind;
  int subclass;
  int protocol;
  std::string_view setupClass;
};

template <std::size_t Size>
std::string_view classIn(const CodeClass (&table)[Size], int kind, int subclass, int protocol) {
  const auto fits = [](int wanted, int value) { return wanted == kAny || wanted == value; };
  const auto* row = std::find_if(std::begin(table), std::end(table), [&](const CodeClass& each) {
    return each.kind == kind && fits(each.subclass, subclass) && fits(each.protocol, protocol);
  });
  return row == std::end(table) ? std::string_view() : row->setupClass;
}

// The codes of the PCI Code and ID Assignment Specification. A controller of HD audio is the
// sound card here, as it is for the kernel.
constexpr CodeClass kPciClasses[] = {
    {0x00, 0x01, kAny, "DISPLAY"},
    {0x01, 0x01, kAny, "HDC"},  // IDE
    {0x01, 0x02, kAny, "FDC"},
    {0x01, 0x05, kAny, "HDC"},          // ATA
    {0x01, 0x06, kAny, "HDC"},          // SATA
    {0x01, kAny, kAny, "SCSIADAPTER"},  // SCSI, RAID, SAS, NVMe, others
    {0x02, kAny, kAny, "NET"},
    {0x03, kAny, kAny, "DISPLAY"},
    {0x04, kAny, kAny, "MEDIA"},
    {0x05, kAny, kAny, "SYSTEM"},  // memory
    {0x06, 0x05, kAny, "PCMCIA"},
    {0x06, 0x07, kAny, "PCMCIA"},  // CardBus
    {0x06, kAny, kAny, "SYSTEM"},  // other bridges
    {0x07, 0x00, kAny, "PORTS"},   // serial
    {0x07, 0x01, kAny, "PORTS"},   // parallel
    {0x07, 0x02, kAny, "MULTIPORTSERIAL"},
    {0x07, 0x03, kAny, "MODEM"},
    {0x07, 0x05, kAny, "SMARTCARDREADER"},
    {0x07, kAny, kAny, "SYSTEM"},
    {0x08, 0x05, kAny, "SDHOST"},
    {0x08, kAny, kAny, "SYSTEM"},  // interrupts, timers
    {0x09, 0x00, kAny, "KEYBOARD"},
    {0x09, 0x02, kAny, "MOUSE"},
    {0x09, kAny, kAny, "HIDCLASS"},
    {0x0A, kAny, kAny, "SYSTEM"},  // docking stations
    {0x0B, kAny, kAny, "PROCESSOR"},
    {0x0C, 0x00, kAny, "1394"},
    {0x0C, 0x03, kAny, "USB"},
    {0x0C, 0x04, kAny, "SCSIADAPTER"},  // Fibre Channel
    {0x0C, 0x05, kAny, "SYSTEM"},       // SMBus
    {0x0C, 0x07, kAny, "SYSTEM"},       // IPMI
    {0x0C, 0x80, kAny, "SYSTEM"},       // SPI and others
    {0x0D, 0x00, kAny, "INFRARED"},
    {0x0D, 0x11, kAny, "BLUETOOTH"},
    {0x0D, 0x20, kAny, "NET"},  // 802.11a
    {0x0D, 0x21, kAny, "NET"},  // 802.11b
    {0x0D, 0x80, kAny, "NET"},
    {0x11, kAny, kAny, "SYSTEM"},  // signal processing: heat, counters of performance
    {0x12, kAny, kAny, "COMPUTEACCELERATOR"},
};

// Cameras have had a class of their own since Windows 10; before, they were among the images.
constexpr CodeClass kUsbClasses[] = {
    {0x01, kAny, kAny, "MEDIA"},  // audio
    {0x02, 0x02, kAny, "PORTS"},  // a modem's line, "ACM"
    {0x02, 0x06, kAny, "NET"},    // Ethernet
    {0x02, 0x0C, kAny, "NET"},    // Ethernet emulation
    {0x02, 0x0D, kAny, "NET"},    // network control model
    {0x02, 0x0E, kAny, "NET"},    // mobile broadband
    {0x03, kAny, kAny, "HIDCLASS"},
    {0x05, kAny, kAny, "HIDCLASS"},  // physical
    {0x06, kAny, kAny, "IMAGE"},     // still pictures
    {0x07, kAny, kAny, "PRINTER"},
    {0x08, kAny, kAny, "USB"},  // storage; its disks are other devices
    {0x09, kAny, kAny, "USB"},  // hubs
    {0x0B, kAny, kAny, "SMARTCARDREADER"},
    {0x0E, kAny, kAny, "CAMERA"},
    {0x10, kAny, kAny, "MEDIA"},  // audio and video
    {0xE0, 0x01, 0x01, "BLUETOOTH"},
    {0xE0, 0x01, 0x03, "NET"},  // remote NDIS
    {0xEF, 0x04, 0x01, "NET"},  // remote NDIS over Ethernet
    {0xFE, 0x02, kAny, "INFRARED"},
};

// The type stands where the others have the class.
constexpr CodeClass kVirtioClasses[] = {
    {1, kAny, kAny, "NET"},         {2, kAny, kAny, "SCSIADAPTER"},  // block device
    {3, kAny, kAny, "SYSTEM"},                                       // console
    {4, kAny, kAny, "SYSTEM"},                                       // source of random numbers
    {5, kAny, kAny, "SYSTEM"},                                       // memory balloon
    {8, kAny, kAny, "SCSIADAPTER"},                                  // SCSI host
    {16, kAny, kAny, "DISPLAY"},    {18, kAny, kAny, "HIDCLASS"},    // input
    {19, kAny, kAny, "SYSTEM"},                                      // sockets
    {25, kAny, kAny, "MEDIA"},      {26, kAny, kAny, "SYSTEM"},      // file system
};

struct PnpId {
  std::string_view id;
  KnownDevice device;
};

// The IDs of devices that every maker builds alike, and what they are. Sorted.
constexpr PnpId kPnpIds[] = {
    {"ACPI0003", {"AC adapter", "BATTERY"}},
    {"LNXPWRBN", {"ACPI fixed feature button", "SYSTEM"}},
    {"MSFT0101", {"Trusted Platform Module 2.0", "SECURITYDEVICES"}},
    {"PNP0000", {"Programmable interrupt controller", "SYSTEM"}},
    {"PNP0100", {"System timer", "SYSTEM"}},
    {"PNP0103", {"High precision event timer", "SYSTEM"}},
    {"PNP0200", {"Direct memory access controller", "SYSTEM"}},
    {"PNP0303", {"Standard PS/2 Keyboard", "KEYBOARD"}},
    {"PNP0400", {"Printer Port", "PORTS"}},
    {"PNP0401", {"ECP Printer Port", "PORTS"}},
    {"PNP0500", {"Communications Port", "PORTS"}},
    {"PNP0501", {"Communications Port", "PORTS"}},
    {"PNP0600", {"IDE controller", "HDC"}},
    {"PNP0700", {"Standard floppy disk controller", "FDC"}},
    {"PNP0800", {"System speaker", "SYSTEM"}},
    {"PNP0A03", {"PCI bus", "SYSTEM"}},
    {"PNP0A08", {"PCI Express root complex", "SYSTEM"}},
    {"PNP0B00", {"System CMOS/real time clock", "SYSTEM"}},
    {"PNP0C01", {"System board", "SYSTEM"}},
    {"PNP0C02", {"Motherboard resources", "SYSTEM"}},
    {"PNP0C04", {"Numeric data processor", "SYSTEM"}},
    {"PNP0C09", {"ACPI embedded controller", "SYSTEM"}},
    {"PNP0C0A", {"ACPI control method battery", "BATTERY"}},
    {"PNP0C0B", {"ACPI fan", "SYSTEM"}},
    {"PNP0C0C", {"ACPI power button", "SYSTEM"}},
    {"PNP0C0D", {"ACPI lid", "SYSTEM"}},
    {"PNP0C0E", {"ACPI sleep button", "SYSTEM"}},
    {"PNP0C14", {"ACPI management interface", "SYSTEM"}},
    {"PNP0C31", {"Trusted Platform Module 1.2", "SECURITYDEVICES"}},
    {"PNP0F03", {"PS/2 mouse", "MOUSE"}},
    {"PNP0F13", {"PS/2 mouse", "MOUSE"}},
};

struct ScsiType {
  std::uint64_t type;
  KnownDevice device;
};

constexpr KnownDevice kDisk{"Disk drive", "DISKDRIVE"};
constexpr KnownDevice kCdRom{"CD-ROM Drive", "CDROM"};
constexpr KnownDevice kTape{"Tape drive", "TAPEDRIVE"};
constexpr KnownDevice kScanner{"Scanner", "IMAGE"};
constexpr KnownDevice kChanger{"Medium changer", "MEDIUMCHANGER"};

constexpr ScsiType kScsiTypes[] = {
    {0x00, kDisk},    {0x01, kTape},    {0x04, kCdRom},
    {0x05, kCdRom},   {0x06, kScanner}, {0x07, kDisk},  // magneto-optical
    {0x08, kChanger}, {0x0E, kDisk},                    // simplified
    {0x14, kDisk},                                      // with zones
};

}  // namespace

std::string_view setupClassOfPci(std::uint8_t kind, std::uint8_t subclass) {
  return classIn(kPciClasses, kind, subclass, kAny);
}

std::string_view setupClassOfUsb(const UsbCode& code) {
  return classIn(kUsbClasses, code.kind, code.subclass, code.protocol);
}

std::string_view setupClassOfVirtio(std::uint32_t type) {
  return classIn(kVirtioClasses, static_cast<int>(type), kAny, kAny);
}

const KnownDevice* knownPnpDevice(const PnpDevice& device) {
  for (const std::string& id : device.ids) {
    const auto* found = std::find_if(std::begin(kPnpIds), std::end(kPnpIds),
                                     [&](const PnpId& each) { return each.id == id; });
    if (found != std::end(kPnpIds)) {
      return &found->device;
    }
  }
  return nullptr;
}

const KnownDevice* knownScsiDevice(std::uint64_t type) {
  const auto* found = std::find_if(std::begin(kScsiTypes), std::end(kScsiTypes),
                                   [&](const ScsiType& each) { return each.type == type; });
  return found == std::end(kScsiTypes) ? nullptr : &found->device;
}

}  // namespace veltrin
