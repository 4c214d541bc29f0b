// SPDX-License-Identifier: GPL-3.0-or-later
// The settings of Xfce, as its service keeps them in a file for each channel.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace veltrin {

// The values of a channel's file by their paths, "/backdrop/screen0/monitor0/image-path". Lists
// are left out. What is not closed, or no such file at all, is read as far as it goes.
std::map<std::string, std::string> xfconfValues(std::string_view text);

}  // namespace veltrin
