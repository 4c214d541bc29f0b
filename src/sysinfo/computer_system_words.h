// SPDX-License-Identifier: GPL-3.0-or-later
// The words for the codes of Win32_ComputerSystem.
#pragma once

#include "sysinfo/device_word.h"

namespace veltrin {

// AdminPasswordStatus.
inline constexpr DeviceWord kAdminPasswordStates[] = {
    {0, "Disabled"},
    {1, "Enabled"},
    {2, "Not Implemented"},
    {3, "None"},
};

// KeyboardPasswordStatus, PowerOnPasswordStatus and FrontPanelResetStatus.
inline constexpr DeviceWord kHardwareSecurityStates[] = {
    {0, "Disabled"},
    {1, "Enabled"},
    {2, "Not Implemented"},
    {3, "Unknown"},
};

// ChassisBootupState and ThermalState.
inline constexpr DeviceWord kEnclosureStates[] = {
    {1, "Other"},   {2, "Unknown"},  {3, "Safe"},
    {4, "Warning"}, {5, "Critical"}, {6, "Non-recoverable"},
};

// PowerSupplyState. Its third word is another one than that of the enclosure.
inline constexpr DeviceWord kPowerSupplyStates[] = {
    {1, "Other"},   {2, "Unknown"},  {3, "Save"},
    {4, "Warning"}, {5, "Critical"}, {6, "Non-recoverable"},
};

// ResetCapability.
inline constexpr DeviceWord kResetCapabilities[] = {
    {1, "Other"}, {2, "Unknown"}, {3, "Disabled"}, {4, "Enabled"}, {5, "Non-recoverable"},
};

// PowerState.
inline constexpr DeviceWord kPowerStates[] = {
    {0, "Unknown"},
    {1, "Full Power"},
    {2, "Power Save - Low Power Mode"},
    {3, "Power Save - Standby"},
    {4, "Power Save - Unknown"},
    {5, "Power Cycle"},
    {6, "Power Off"},
    {7, "Power Save - Warning"},
};

// WakeUpType: what started the machine.
inline constexpr DeviceWord kWakeUpTypes[] = {
    {0, "Reserved"},     {1, "Other"},      {2, "Unknown"},
    {3, "APM Timer"},    {4, "Modem Ring"}, {5, "LAN Remote"},
    {6, "Power Switch"}, {7, "PCI PME#"},   {8, "AC Power Restored"},
};

}  // namespace veltrin
