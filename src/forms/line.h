// SPDX-License-Identifier: GPL-3.0-or-later
// A rule of the window's look.
#pragma once

#include "forms/control.h"

namespace veltrin {

class Line : public Control {};

}  // namespace veltrin
