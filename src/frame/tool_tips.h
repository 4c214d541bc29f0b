// SPDX-License-Identifier: GPL-3.0-or-later
// The tool tips of all windows, which exist in English only.
#pragma once

#include "forms/form.h"
#include "text/loose.h"

namespace veltrin {

// Sets the tips of a window's controls when the program speaks English, and
// leaves the tips of its design in every other language. Called at the end of
// the window's load.
void setToolTips(const Loose& LanguageId, Form& form);

}  // namespace veltrin
