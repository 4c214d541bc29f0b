// SPDX-License-Identifier: GPL-3.0-or-later
// Small services for windows.
#pragma once

#include <cstdint>

#include "platform/desktop.h"

namespace veltrin {

// Keeps a window above all others for a flag other than 0, ends that for 0.
inline void onTop(Desktop& desktop, Form& form, std::int16_t flag) {
  desktop.setTopmost(form, flag != 0);
}

}  // namespace veltrin
