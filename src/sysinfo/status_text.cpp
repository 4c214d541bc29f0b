// SPDX-License-Identifier: GPL-3.0-or-later
#include "sysinfo/status_text.h"

#include <algorithm>
#include <span>
#include <string_view>

#include "sysinfo/cache_memory_words.h"
#include "sysinfo/computer_system_words.h"
#include "sysinfo/controller_words.h"
#include "sysinfo/device_word.h"
#include "sysinfo/pointing_device_words.h"
#include "sysinfo/system_slot_words.h"

namespace veltrin {
namespace {

using Words = std::span<const DeviceWord>;

// The word of a code; null when the value is none.
const DeviceWord* find(Words words, const WmiValue& value) {
  const auto found = std::find_if(words.begin(), words.end(), [&value](const DeviceWord& word) {
    return value.equals(word.code);
  });
  return found == words.end() ? nullptr : &*found;
}

void replace(std::string& text, Words words, const WmiValue& value) {
  if (const DeviceWord* word = find(words, value)) text = word->text;
}

void append(std::string& text, Words words, const WmiValue& value) {
  if (const DeviceWord* word = find(words, value)) text += word->text;
}

void putBehindValue(std::string& text, Words words, const WmiValue& value) {
  text = value.text();
  append(text, words, value);
}

}  // namespace

void StatusText::Location(const WmiValue& value) { putBehindValue(text, kCacheLocations, value); }

void StatusText::Level(const WmiValue& value) { putBehindValue(text, kCacheLevels, value); }

void StatusText::MaxDataWidth(const WmiValue& value) { replace(text, kDataWidths, value); }

void StatusText::VccMixedVoltageSupport(const WmiValue& value) {
  text.clear();
  for (const Loose& element : value.elements()) append(text, kSlotVoltages, element);
}

void StatusText::ConnectorType(const WmiValue& value) {
  text.clear();
  for (const Loose& element : value.elements()) replace(text, kConnectorTypes, element);
}

void StatusText::Availability(const WmiValue& value) {
  putBehindValue(text, kAvailabilities, value);
}

void StatusText::ConfigManagerErrorCode(const WmiValue& value) {
  replace(text, kConfigManagerErrors, value);
}

void StatusText::PowerManagementCapabilities(const WmiValue& value) {
  replace(text, kPowerManagementCapabilities, value);
}

void StatusText::ProtocolSupported(const WmiValue& value) { replace(text, kProtocols, value); }

void StatusText::DeviceInterface(const WmiValue& value) { replace(text, kDeviceInterfaces, value); }

void StatusText::AdminPasswordStatus(const WmiValue& value) {
  replace(text, kAdminPasswordStates, value);
}

void StatusText::KeyboardPasswordStatus(const WmiValue& value) {
  replace(text, kHardwareSecurityStates, value);
}

void StatusText::PowerOnPasswordStatus(const WmiValue& value) {
  replace(text, kHardwareSecurityStates, value);
}

void StatusText::FrontPanelResetStatus(const WmiValue& value) {
  replace(text, kHardwareSecurityStates, value);
}

void StatusText::ChassisBootupState(const WmiValue& value) {
  replace(text, kEnclosureStates, value);
}

void StatusText::ThermalState(const WmiValue& value) { replace(text, kEnclosureStates, value); }

void StatusText::PowerSupplyState(const WmiValue& value) {
  replace(text, kPowerSupplyStates, value);
}

void StatusText::ResetCapability(const WmiValue& value) {
  replace(text, kResetCapabilities, value);
}

void StatusText::PowerState(const WmiValue& value) { replace(text, kPowerStates, value); }

void StatusText::WakeUpType(const WmiValue& value) { replace(text, kWakeUpTypes, value); }

}  // namespace veltrin
