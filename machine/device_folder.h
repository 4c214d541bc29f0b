// SPDX-License-Identifier: GPL-3.0-or-later
// The folder that the kernel keeps of a device, below /sys.
#pragma once

#include <string>
#include <string_view>

#include "machine/file_tree.h"

namespace veltrin {

// The value of KEY=VALUE in the text of a file "uevent", as it stands there; empty without.
std::string eventValue(std::string_view uevent, std::string_view key);

// The name of the driver that is bound to a device, by the link in its folder; empty when
// none is.
std::string driverIn(const FileTree& files, const std::string& folder);

// Two texts with a blank between them, if there are two.
std::string joinedWords(const std::string& left, const std::string& right);

}  // namespace veltrin
