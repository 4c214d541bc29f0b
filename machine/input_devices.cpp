// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/input_devices.h"

#include <linux/input-event-codes.h>
#include <optional>
#include <utility>

#include "machine/fact_text.h"

namespace veltrin {
namespace {

// The kernel prints words of the size that the process which reads them has.
constexpr std::size_t kWordBits = sizeof(long) * 8;

// No set has more abilities than there are keys.
constexpr std::size_t kMostWords = KEY_CNT / 32;

std::uint16_t hexIn(std::string_view line, std::string_view key) {
  for (const std::string_view word : wordsOf(line)) {
    if (word.starts_with(key)) {
      const auto number = wholeNumber(word.substr(key.size()), 16);
      return number && *number <= 0xFFFF ? static_cast<std::uint16_t>(*number) : 0;
    }
  }
  return 0;
}

// What is told in one line of a device, "N: Name="AT Translated Set 2 keyboard"".
void readLine(std::string_view line, InputDevice& device) {
  const auto behind = [&](std::string_view start) {
    return line.starts_with(start) ? std::optional(line.substr(start.size())) : std::nullopt;
  };
  if (behind("I: ")) {
    device.bus = hexIn(line, "Bus=");
    device.vendor = hexIn(line, "Vendor=");
    device.product = hexIn(line, "Product=");
  } else if (const auto name = behind("N: Name=\"")) {
    device.name = printable(name->substr(0, name->rfind('"')));
  } else if (const auto folder = behind("S: Sysfs=/"); folder && !folder->empty()) {
    device.folder = "/sys/" + std::string(*folder);
  } else if (const auto properties = behind("B: PROP=")) {
    device.properties = AbilitySet(*properties);
  } else if (const auto events = behind("B: EV=")) {
    device.events = AbilitySet(*events);
  } else if (const auto keys = behind("B: KEY=")) {
    device.keys = AbilitySet(*keys);
  } else if (const auto moves = behind("B: REL=")) {
    device.moves = AbilitySet(*moves);
  } else if (const auto coordinates = behind("B: ABS=")) {
    device.coordinates = AbilitySet(*coordinates);
  }
}

bool hasAll(const AbilitySet& set, std::size_t first, std::size_t last) {
  return set.count(first, last) == last - first + 1;
}

}  // namespace

AbilitySet::AbilitySet(std::string_view words) {
  const std::vector<std::string_view> pieces = wordsOf(words);
  for (auto piece = pieces.rbegin(); piece != pieces.rend() && words_.size() < kMostWords;
       ++piece) {
    words_.push_back(wholeNumber(*piece, 16).value_or(0));
  }
}

bool AbilitySet::has(std::size_t number) const {
  const std::size_t word = number / kWordBits;
  return word < words_.size() && (words_[word] >> (number % kWordBits) & 1) != 0;
}

std::size_t AbilitySet::count(std::size_t first, std::size_t last) const {
  std::size_t found = 0;
  for (std::size_t number = first; number <= last; ++number) {
    found += has(number) ? 1 : 0;
  }
  return found;
}

std::vector<InputDevice> inputDevices(const FileTree& files) {
  std::vector<InputDevice> devices;
  bool inside = false;
  files.readLines("/proc/bus/input/devices", [&](std::string_view line) {
    if (line.starts_with("I: ")) {
      devices.emplace_back();
      inside = true;
    }
    if (inside) {
      readLine(line, devices.back());
    }
  });
  std::erase_if(devices, [](const InputDevice& device) {
    return device.bus == static_cast<std::uint16_t>(InputBus::Virtual);
  });
  return devices;
}

// The letters lie in three rows; KEY_Q to KEY_P and so on have numbers one behind the other.
bool isKeyboard(const InputDevice& device) {
  return device.events.has(EV_KEY) && device.events.has(EV_REP) &&
         hasAll(device.keys, KEY_Q, KEY_P) && hasAll(device.keys, KEY_A, KEY_L) &&
         hasAll(device.keys, KEY_Z, KEY_M);
}

bool isPointer(const InputDevice& device) {
  if (!device.events.has(EV_KEY) || device.properties.has(INPUT_PROP_DIRECT)) {
    return false;
  }
  const bool moves =
      device.events.has(EV_REL) && device.moves.has(REL_X) && device.moves.has(REL_Y);
  const bool places =
      device.events.has(EV_ABS) && device.coordinates.has(ABS_X) && device.coordinates.has(ABS_Y);
  const bool left = device.keys.has(BTN_LEFT);
  const bool touchpad = device.keys.has(BTN_TOOL_FINGER) && device.keys.has(BTN_TOUCH);
  return (moves && left) || (places && !device.keys.has(BTN_TOOL_PEN) && (left || touchpad));
}

std::size_t buttonsOf(const InputDevice& device) { return device.keys.count(BTN_LEFT, BTN_TASK); }

}  // namespace veltrin
