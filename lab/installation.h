// SPDX-License-Identifier: GPL-3.0-or-later
// The settings of the program that runs inside, as a scenario has them.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "lab/scenario.h"

namespace veltrin::lab {

// The text of an installation.ini in which the settings stand in place of those that are
// named alike, in any case of letters. All else stays, line by line.
std::string withSettings(std::string_view text, std::span<const Setting> settings);

}  // namespace veltrin::lab
