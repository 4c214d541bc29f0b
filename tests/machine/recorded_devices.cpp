// SPDX-License-Identifier: GPL-3.0-or-later
#include "recorded_devices.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "machine/fact_text.h"

namespace veltrin {
namespace {

struct Ids {
  std::string vendor;
  std::string device;
};

// The two halves of "8086:3e9b".
Ids idsIn(std::string_view word, std::size_t line) {
  if (word.size() != 9 || word[4] != ':') {
    throw RecordingMistake(line, "no IDs of maker and device: " + std::string(word));
  }
  return {std::string(word.substr(0, 4)), std::string(word.substr(5))};
}

std::string hexClass(std::string_view word, std::size_t digits, std::size_t line) {
  const bool isHex = std::all_of(word.begin(), word.end(), [](unsigned char character) {
    return std::isxdigit(character) != 0;
  });
  if (word.size() != digits || !isHex) {
    throw RecordingMistake(line, "no class of a device: " + std::string(word));
  }
  return std::string(word);
}

// The way up from a device's folder to /sys.
std::string upFrom(const std::string& path) {
  std::string up = "../";  // out of "devices"
  for (const char character : path) {
    if (character == '/') {
      up += "../";
    }
  }
  return up + "../";
}

// As udev(7) writes a number of a USB device: without zeros in front.
std::string withoutZeros(const std::string& digits) {
  const std::size_t first = digits.find_first_not_of('0');
  return first == std::string::npos ? "0" : digits.substr(first);
}

std::string_view wordAt(const std::vector<std::string_view>& words, std::size_t place) {
  return place < words.size() ? words[place] : std::string_view();
}

}  // namespace

bool RecordedDevices::isDevice(const RecordingSection& section) {
  constexpr std::array kKinds{"pci", "usb", "usb-interface", "block", "bus", "class"};
  return std::any_of(kKinds.begin(), kKinds.end(),
                     [&](const char* kind) { return section.kind == kind; });
}

std::string RecordedDevices::make(const RecordingSection& section) {
  const Words words = wordsOf(section.rest);
  const std::size_t least =
      section.kind == "class" || section.kind == "bus" || section.kind == "usb-interface" ? 2
      : section.kind == "usb"                                                             ? 4
                                                                                          : 3;
  if (words.size() < least) {
    throw RecordingMistake(section.line, "too little of a device: " + section.rest);
  }
  if (section.kind == "pci") return pci(words, section.line);
  if (section.kind == "usb") return usb(words, section.line);
  if (section.kind == "usb-interface") return usbInterface(words, section.line);
  if (section.kind == "block") return block(words, section.line);
  if (section.kind == "bus") return onBus(words, section.line);
  return ofClass(words, section.line);
}

RecordedDevices::Device RecordedDevices::deviceAt(std::string_view path, std::size_t line) {
  return {std::string(path), std::string(path.substr(path.rfind('/') + 1)), line};
}

void RecordedDevices::file(const Device& device, const std::string& name,
                           const std::string& content) const {
  making_.file("/sys/devices/" + device.path + "/" + name, content + "\n", device.line);
}

// Enters a device into the folder `listing` of its subsystem.
void RecordedDevices::place(const Device& device, const std::string& subsystem,
                            const std::string& listing) const {
  making_.link("/sys/devices/" + device.path + "/subsystem", upFrom(device.path) + subsystem,
               device.line);
  const auto depth = std::count(listing.begin(), listing.end(), '/') + 1;
  std::string up;
  for (std::ptrdiff_t i = 0; i < depth; ++i) {
    up += "../";
  }
  making_.link("/sys/" + listing + "/" + device.name, up + "devices/" + device.path, device.line);
}

void RecordedDevices::drive(const Device& device, const std::string& bus,
                            std::string_view driver) const {
  if (!driver.empty()) {
    making_.link("/sys/devices/" + device.path + "/driver",
                 upFrom(device.path) + "bus/" + bus + "/drivers/" + std::string(driver),
                 device.line);
    making_.link("/sys/bus/" + bus + "/drivers/" + std::string(driver) + "/" + device.name,
                 "../../../../devices/" + device.path, device.line);
  }
}

std::string RecordedDevices::pci(const Words& words, std::size_t line) {
  const Device device = deviceAt(words[0], line);
  const Ids ids = idsIn(words[1], line);
  const bool hasSubsystem = words[2].find(':') != std::string_view::npos;
  const Ids subsystem = hasSubsystem ? idsIn(words[2], line) : Ids{"0000", "0000"};
  const std::size_t at = hasSubsystem ? 3 : 2;
  const std::string code = hexClass(wordAt(words, at), 6, line);
  const std::string_view driver = wordAt(words, at + 1);
  const std::string modalias = "pci:v0000" + upperCase(ids.vendor) + "d0000" +
                               upperCase(ids.device) + "sv0000" + upperCase(subsystem.vendor) +
                               "sd0000" + upperCase(subsystem.device) + "bc" +
                               upperCase(code.substr(0, 2)) + "sc" + upperCase(code.substr(2, 2)) +
                               "i" + upperCase(code.substr(4));
  file(device, "vendor", "0x" + ids.vendor);
  file(device, "device", "0x" + ids.device);
  file(device, "subsystem_vendor", "0x" + subsystem.vendor);
  file(device, "subsystem_device", "0x" + subsystem.device);
  file(device, "class", "0x" + code);
  file(device, "modalias", modalias);
  file(device, "uevent",
       (driver.empty() ? "" : "DRIVER=" + std::string(driver) + "\n") +
           "PCI_CLASS=" + upperCase(withoutZeros(code)) + "\nPCI_ID=" + upperCase(ids.vendor) +
           ":" + upperCase(ids.device) + "\nPCI_SUBSYS_ID=" + upperCase(subsystem.vendor) + ":" +
           upperCase(subsystem.device) + "\nPCI_SLOT_NAME=" + device.name +
           "\nMODALIAS=" + modalias);
  place(device, "bus/pci", "bus/pci/devices");
  drive(device, "pci", driver);
  return "/sys/devices/" + device.path;
}

std::string RecordedDevices::usb(const Words& words, std::size_t line) {
  const Device device = deviceAt(words[0], line);
  const Ids ids = idsIn(words[1], line);
  const std::string code = hexClass(words[2], 2, line);
  const std::string_view driver = words.size() > 4 ? words[4] : "usb";
  usbIds_[device.path] = "usb:v" + upperCase(ids.vendor) + "p" + upperCase(ids.device) + "d0100dc" +
                         upperCase(code) + "dsc00dp00";
  file(device, "idVendor", ids.vendor);
  file(device, "idProduct", ids.device);
  file(device, "bcdDevice", "0100");
  file(device, "bDeviceClass", code);
  file(device, "bDeviceSubClass", "00");
  file(device, "bDeviceProtocol", "00");
  file(device, "speed", std::string(words[3]));
  file(device, "uevent",
       "DEVTYPE=usb_device\nDRIVER=" + std::string(driver) +
           "\nPRODUCT=" + withoutZeros(ids.vendor) + "/" + withoutZeros(ids.device) +
           "/100\nTYPE=" + std::to_string(*wholeNumber(code, 16)) + "/0/0");
  place(device, "bus/usb", "bus/usb/devices");
  drive(device, "usb", driver);
  return "/sys/devices/" + device.path;
}

std::string RecordedDevices::usbInterface(const Words& words, std::size_t line) {
  const Device device = deviceAt(words[0], line);
  const auto parent = usbIds_.find(device.path.substr(0, device.path.rfind('/')));
  if (parent == usbIds_.end()) {
    throw RecordingMistake(line, "an interface of no USB device: " + device.path);
  }
  const std::string code = hexClass(words[1], 6, line);
  const std::string number = device.name.substr(device.name.rfind('.') + 1);
  const std::string modalias = parent->second + "ic" + upperCase(code.substr(0, 2)) + "isc" +
                               upperCase(code.substr(2, 2)) + "ip" + upperCase(code.substr(4)) +
                               "in0" + number;
  file(device, "bInterfaceClass", code.substr(0, 2));
  file(device, "bInterfaceSubClass", code.substr(2, 2));
  file(device, "bInterfaceProtocol", code.substr(4));
  file(device, "bInterfaceNumber", "0" + number);
  file(device, "modalias", modalias);
  file(device, "uevent",
       "DEVTYPE=usb_interface\n" +
           (words.size() > 2 ? "DRIVER=" + std::string(words[2]) + "\n" : "") +
           "MODALIAS=" + modalias);
  place(device, "bus/usb", "bus/usb/devices");
  drive(device, "usb", wordAt(words, 2));
  return "/sys/devices/" + device.path;
}

std::string RecordedDevices::block(const Words& words, std::size_t line) {
  const Device device = deviceAt(words[0], line);
  const std::string number(words[1]);
  const std::size_t colon = number.find(':');
  const bool isPartition = wordAt(words, 3) == "partition";
  if (colon == std::string::npos || (words.size() > 3 && words.size() != 5)) {
    throw RecordingMistake(line, "no disk and no partition: " + device.path);
  }
  file(device, "dev", number);
  file(device, "size", std::string(words[2]));
  file(device, "ro", "0");
  file(device, "uevent",
       "MAJOR=" + number.substr(0, colon) + "\nMINOR=" + number.substr(colon + 1) +
           "\nDEVNAME=" + device.name + "\nDEVTYPE=" + (isPartition ? "partition" : "disk"));
  if (isPartition) {
    file(device, "partition", std::string(words[4]));
  } else {
    making_.link("/sys/block/" + device.name, "../devices/" + device.path, line);
  }
  place(device, "class/block", "class/block");
  making_.link("/sys/dev/block/" + number, "../../devices/" + device.path, line);
  return "/sys/devices/" + device.path;
}

std::string RecordedDevices::onBus(const Words& words, std::size_t line) {
  const Device device = deviceAt(words[1], line);
  const std::string bus(words[0]);
  place(device, "bus/" + bus, "bus/" + bus + "/devices");
  drive(device, bus, wordAt(words, 2));
  return "/sys/devices/" + device.path;
}

std::string RecordedDevices::ofClass(const Words& words, std::size_t line) {
  const Device device = deviceAt(words[1], line);
  const std::string name(words[0]);
  place(device, "class/" + name, "class/" + name);
  return "/sys/devices/" + device.path;
}

}  // namespace veltrin
