// SPDX-License-Identifier: GPL-3.0-or-later
// What the file of a kernel module tells of it.
#pragma once

#include <string>
#include <string_view>

namespace veltrin {

// The value of a key ("description") in a list of KEY=VALUE, each ended by a zero byte, as the
// kernel's modules have it; the first one when there are several, empty when there is none.
std::string_view moduleValue(std::string_view list, std::string_view key);

// Such a list of a module, out of the section .modinfo of its file (ELF-64 and ELF-32 object
// file formats, the lowest byte first). Empty for other bytes, also for a compressed module.
std::string_view moduleInformation(std::string_view file);

}  // namespace veltrin
