// SPDX-License-Identifier: GPL-3.0-or-later
// What people type and point with.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "machine/file_tree.h"

namespace veltrin {

// The buses that a device of input is told to be on (BUS_* of linux/input.h).
enum class InputBus : std::uint16_t {
  Pci = 0x01,
  Usb = 0x03,
  Hil = 0x04,
  Bluetooth = 0x05,
  Virtual = 0x06,  // made up by a program
  Isa = 0x10,
  I8042 = 0x11,  // the controller of PS/2 keyboards and mice
  XtKeyboard = 0x12,
  Rs232 = 0x13,
  Gameport = 0x14,
  ParallelPort = 0x15,
  Amiga = 0x16,
  Adb = 0x17,
  I2c = 0x18,
  Host = 0x19,
  Gsc = 0x1A,
  Atari = 0x1B,
  Spi = 0x1C,
  Rmi = 0x1D,
  Cec = 0x1E,
  IntelSensorHub = 0x1F,
};

// A set of numbered abilities as the kernel prints it: words of the size of its "long", in
// hexadecimal, the highest first.
class AbilitySet {
 public:
  AbilitySet() = default;
  explicit AbilitySet(std::string_view words);

  bool has(std::size_t number) const;
  std::size_t count(std::size_t first, std::size_t last) const;

 private:
  std::vector<std::uint64_t> words_;  // the lowest first
};

// A device of input with its abilities, whose numbers are those of linux/input-event-codes.h.
struct InputDevice {
  std::uint16_t bus = 0;  // an InputBus, or another number
  std::uint16_t vendor = 0;
  std::uint16_t product = 0;
  std::string name;        // as its driver calls it
  std::string folder;      // "/sys/devices/.../input/input3"; empty when it is not told
  AbilitySet properties;   // INPUT_PROP_*
  AbilitySet events;       // EV_*
  AbilitySet keys;         // KEY_*, BTN_*
  AbilitySet moves;        // REL_*
  AbilitySet coordinates;  // ABS_*
};

// All that /proc/bus/input/devices tells of, in the kernel's order, without those that a
// program made up.
std::vector<InputDevice> inputDevices(const FileTree& files);

// One with all the letters, which repeats keys that are held down. Power buttons, lids and the
// like are not.
bool isKeyboard(const InputDevice& device);

// A mouse, a pointing stick, a touchpad, or the mouse of a virtual machine, which tells places;
// neither a touch screen nor a pen nor a joystick.
bool isPointer(const InputDevice& device);

// The number of its mouse buttons.
std::size_t buttonsOf(const InputDevice& device);

}  // namespace veltrin
