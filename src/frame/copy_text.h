// SPDX-License-Identifier: GPL-3.0-or-later
// The one way in which a window copies its result.
#pragma once

#include <string>

#include "frame/program.h"

namespace veltrin {

// Puts a text on the clipboard in the place of what it held, and tells the user what
// to do with it, in a message under a title.
void copyText(Program& program, const std::string& text, const std::string& title);

}  // namespace veltrin
