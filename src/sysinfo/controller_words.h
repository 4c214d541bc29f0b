// SPDX-License-Identifier: GPL-3.0-or-later
// The words for the codes of Win32_IDEController and Win32_FloppyController.
#pragma once

#include "sysinfo/device_word.h"

namespace veltrin {

// Availability. The words stand behind the number.
inline constexpr DeviceWord kAvailabilities[] = {
    {1, " (other)"},
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
    {21, " (quiesced)"},
};

// ConfigManagerErrorCode: what the device manager says of the device.
inline constexpr DeviceWord kConfigManagerErrors[] = {
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
     "Device is not present, not working properly, or does not have all of its drivers installed."},
    {25, "Windows is still setting up the device."},
    {26, "Windows is still setting up the device."},
    {27, "Device does not have valid log configuration."},
    {28, "Device drivers are not installed."},
    {29, "Device is disabled; the device firmware did not provide the required resources."},
    {30, "Device is using an IRQ resource that another device is using."},
    {31, "Device is not working properly; Windows cannot load the required device drivers."},
};

// PowerManagementCapabilities.
inline constexpr DeviceWord kPowerManagementCapabilities[] = {
    {0, "Unknown"},
    {1, "Not Supported"},
    {2, "Disabled"},
    {3, "Enabled"},
    {4, "Power Saving Modes Entered Automatically"},
    {5, "Power State Settable"},
    {6, "Power Cycling Supported"},
    {7, "Timed Power On Supported"},
};

// ProtocolSupported. ST506 has always stood at 49 and not at its own code, 39, which has
// no word.
inline constexpr DeviceWord kProtocols[] = {
    {1, "Other"},
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
    {49, "ST506"},
    {40, "DSSI"},
    {41, "QIC2"},
    {42, "Enhanced ATA/IDE"},
    {43, "AGP"},
    {44, "TWIRP (two-way infrared)"},
    {45, "FIR (fast infrared)"},
    {46, "SIR (serial infrared)"},
    {47, "IrBus"},
};

}  // namespace veltrin
