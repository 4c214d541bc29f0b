// SPDX-License-Identifier: GPL-3.0-or-later
// The texts of the machine's memory modules.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "platform/wmi.h"

namespace veltrin {

// Puts the text of each bank (objects of Win32_PhysicalMemory, those whose locator
// begins with "A") into the first empty slot. A filled slot is never written again, and
// a bank that finds none empty is dropped. A bank that does not tell what its text takes
// leaves its slot empty.
void fillMemorySlots(const std::vector<WmiObject>& banks, std::array<std::string, 4>& slots);

}  // namespace veltrin
