// SPDX-License-Identifier: GPL-3.0-or-later
// The devices of a recorded machine, as the kernel shows them below /sys.
#pragma once

#include <functional>
#include <map>
#include <string>

#include "recording_text.h"

namespace veltrin {

// Turns sections that tell of a device into its folder, and into the links by which the kernel's
// buses and classes lead to it. PATH is a folder below /sys/devices.
//
//   pci PATH 8086:3e9b [1043:1b1d] 030000 [DRIVER]   IDs of the device and of its subsystem, class
//   usb PATH 046d:c077 00 1.5 [DRIVER]               IDs, class, speed in Mbit/s
//   usb-interface PATH 030102 [DRIVER]               class, subclass and protocol; below its device
//   block PATH 259:0 SECTORS [partition 1]           a disk, or a partition below its disk
//   bus NAME PATH [DRIVER]                           a device of another bus, "virtio"
//   class NAME PATH                                  a device of a class, "net"
class RecordedDevices {
 public:
  // How files and links of the machine are made.
  struct Making {
    std::function<void(const std::string& path, const std::string& content, std::size_t line)> file;
    std::function<void(const std::string& path, const std::string& target, std::size_t line)> link;
  };
  explicit RecordedDevices(Making making) : making_(std::move(making)) {}

  // Whether a section tells of a device. The lines below it are not looked at.
  static bool isDevice(const RecordingSection& section);

  // Makes the device of a section; returns its folder.
  std::string make(const RecordingSection& section);

 private:
  struct Device {
    std::string path;  // below /sys/devices
    std::string name;
    std::size_t line = 0;
  };
  using Words = std::vector<std::string_view>;

  static Device deviceAt(std::string_view path, std::size_t line);
  void file(const Device& device, const std::string& name, const std::string& content) const;
  void place(const Device& device, const std::string& subsystem, const std::string& listing) const;
  void drive(const Device& device, const std::string& bus, std::string_view driver) const;

  std::string pci(const Words& words, std::size_t line);
  std::string usb(const Words& words, std::size_t line);
  std::string usbInterface(const Words& words, std::size_t line);
  std::string block(const Words& words, std::size_t line);
  std::string onBus(const Words& words, std::size_t line);
  std::string ofClass(const Words& words, std::size_t line);

  Making making_;
  std::map<std::string, std::string> usbIds_;  // what the modaliases of a device's parts begin with
};

}  // namespace veltrin
