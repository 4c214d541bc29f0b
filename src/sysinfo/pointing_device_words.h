// SPDX-License-Identifier: GPL-3.0-or-later
// The words for the codes of Win32_PointingDevice.
#pragma once

#include "sysinfo/device_word.h"

namespace veltrin {

// DeviceInterface: what the mouse is plugged into.
inline constexpr DeviceWord kDeviceInterfaces[] = {
    {1, "Other"},
    {2, "Unknown"},
    {3, "Serial"},
    {4, "PS/2"},
    {5, "Infrared"},
    {6, "HP-HIL"},
    {7, "Bus mouse"},
    {8, "ADB (Apple Desktop Bus)"},
    {160, "Bus mouse DB-9"},
    {161, "Bus mouse micro-DIN"},
    {162, "USB"},
};

}  // namespace veltrin
