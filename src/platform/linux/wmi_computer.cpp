// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdint>
#include <optional>
#include <string>

#include "machine/computer_modes.h"
#include "machine/computer_states.h"
#include "machine/domain.h"
#include "machine/fact_text.h"
#include "machine/firmware.h"
#include "machine/operating_system.h"
#include "machine/smbios.h"
#include "platform/linux/wmi_classes.h"

namespace veltrin {
namespace {

using Number = std::optional<std::uint64_t>;
using Properties = decltype(WmiObject::properties);

// The class has codes of its own for a state that nobody tells. They are given instead of null
// where the report tells a state by a word: it prints the word of the line before for a null.
constexpr std::uint64_t kUnknownState = 2;    // of the enclosure, the reset and the wake-up
constexpr std::uint64_t kUnknownSetting = 3;  // of the hardware security
constexpr std::uint64_t kUnknownPower = 0;    // PowerState, which Windows tells of no machine

// A code of DSP0134 that the class has taken over, from `least` to `most`.
std::uint64_t stateOf(const Number& code, std::uint64_t least, std::uint64_t most) {
  return code && *code >= least && *code <= most ? *code : kUnknownState;
}

// ResetCapability, by the setting of the reset button: 3 disabled, 4 enabled, 5 for a computer
// that has none.
std::uint64_t resetCapability(const Number& frontPanelReset) {
  constexpr std::uint64_t kDisabled = 3;
  constexpr std::uint64_t kUnknown = 3;  // of the firmware
  const std::uint64_t setting = frontPanelReset.value_or(kUnknown);
  return setting == kUnknown ? kUnknownState : kDisabled + setting;
}

// Minutes as milliseconds, -1 for a number that the firmware does not know. A number of 64 bits,
// and so a text.
WmiValue pauseAfterReset(const Number& minutes) {
  constexpr std::uint64_t kUnknownMinutes = 0xFFFF;
  constexpr std::uint64_t kMilliseconds = 60'000;
  if (!minutes) {
    return {};
  }
  return *minutes == kUnknownMinutes ? "-1" : std::to_string(*minutes * kMilliseconds);
}

// BootupState.
WmiValue bootupState(const std::optional<bool>& forRescue) {
  if (!forRescue) {
    return {};
  }
  return *forRescue ? "Fail-safe boot" : "Normal boot";
}

// DSP0134 sections 7.2 (wake-up), 7.4 (enclosure), 7.24 (reset), 7.25 (security).
void addStates(Properties& properties, const ComputerStates& states) {
  constexpr std::uint64_t kNonRecoverable = 6;
  constexpr std::uint64_t kPowerRestored = 8;
  properties["WakeUpType"] = stateOf(states.wakeUp, 0, kPowerRestored);
  properties["ChassisBootupState"] = stateOf(states.enclosure, 1, kNonRecoverable);
  properties["PowerSupplyState"] = stateOf(states.powerSupply, 1, kNonRecoverable);
  properties["ThermalState"] = stateOf(states.thermal, 1, kNonRecoverable);
  properties["PowerOnPasswordStatus"] = states.powerOnPassword.value_or(kUnknownSetting);
  properties["KeyboardPasswordStatus"] = states.keyboardPassword.value_or(kUnknownSetting);
  properties["AdminPasswordStatus"] = states.administratorPassword.value_or(kUnknownSetting);
  properties["FrontPanelResetStatus"] = states.frontPanelReset.value_or(kUnknownSetting);
  properties["ResetCapability"] = resetCapability(states.frontPanelReset);
  properties["PauseAfterReset"] = pauseAfterReset(states.resetTimeout);
  properties["PowerState"] = kUnknownPower;
}

// A kernel that has the setting can restart the computer, whether or not it is to.
void addModes(Properties& properties, const FileTree& files, const ComputerStates& states) {
  const auto restarts = restartsAfterFailure(files);
  const auto capable = states.resetEnabled ? states.resetEnabled
                       : restarts          ? std::optional(true)
                                           : std::nullopt;
  properties["AutomaticResetBootOption"] = orNull(restarts);
  properties["AutomaticResetCapability"] = orNull(capable);
  properties["BootupState"] = bootupState(startedForRescue(files));
  properties["InfraredSupported"] = orNull(hasInfraredPort(files));
  properties["NetworkServerModeEnabled"] = orNull(sharesFiles(files));
}

void addNames(Properties& properties, const WmiSources& sources) {
  const Kernel kernel = sources.machine->kernel();
  const FirmwareFacts firmware = firmwareFacts(sources.files);
  const std::string name = printable(kernel.host);
  properties["Caption"] = orNull(name);
  properties["Name"] = orNull(name);
  properties["Description"] = orNull(calledByOwner(sources.files));
  properties["Domain"] = orNull(domainOf(sources.files, kernel.host));
  properties["PartOfDomain"] = orNull(isMemberOfDomain(sources.files));
  properties["Manufacturer"] = orNull(firmware.manufacturer);
  properties["Model"] = orNull(firmware.model);
  properties["SystemType"] = orNull(computerType(kernel.machine));
  // Where the firmware has a name, a ROM holds it, and the system was started from there.
  properties["BootROMSupported"] = firmware.bios.empty() ? WmiValue() : WmiValue(true);
}

}  // namespace

WmiAnswer win32ComputerSystem(const WmiSources& sources) {
  const ComputerStates states = statesIn(SmbiosTable(sources.files));
  WmiObject object;
  Properties& properties = object.properties;
  addNames(properties, sources);
  addStates(properties, states);
  addModes(properties, sources.files, states);
  const Machine& machine = *sources.machine;
  properties["CurrentTimeZone"] = machine.local(machine.now()).offset;
  // The menu of a boot loader is not read.
  properties["SystemStartupSetting"] = WmiValue();
  properties["SystemStartupOptions"] = WmiValue();
  return {object};
}

}  // namespace veltrin
