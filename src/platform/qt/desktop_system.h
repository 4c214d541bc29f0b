// SPDX-License-Identifier: GPL-3.0-or-later
// All that the operating system supplies to the program with windows.
#pragma once

#include <memory>
#include <string>

#include "platform/platform.h"
#include "platform/qt/shown_form.h"

namespace veltrin {

// Owns the parts of a platform.
class DesktopSystem {
 public:
  virtual ~DesktopSystem() = default;
  virtual Platform& platform() = 0;

  // The resting main loop.
  virtual void run() = 0;
};

// That of the system the program runs on. Needs the application object. `executable`
// is the program's file, and `looks` gives the forms their windows.
std::unique_ptr<DesktopSystem> makeDesktopSystem(const std::string& executable,
                                                 const std::string& applicationTitle,
                                                 FormLooks looks);

}  // namespace veltrin
