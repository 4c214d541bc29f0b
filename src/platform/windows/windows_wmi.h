// SPDX-License-Identifier: GPL-3.0-or-later
// Facts about the machine from the service of Windows.
#pragma once

#include <memory>
#include <string>

#include "platform/windows/com_thread.h"
#include "platform/wmi.h"

namespace veltrin {

// The service of this machine, or of any other that the user may ask. What it refuses fails
// with its own number (an HRESULT) and its own words. A machine that is silent is given up
// after two minutes, as the service does at the latest; a query has the time that it takes. While
// one hangs the program cannot be ended, as the routine that asked never returns.
class WindowsWmi : public Wmi {
 public:
  // `whileSilent` is called while the service has not answered. Without it calls block.
  explicit WindowsWmi(WhileSilent whileSilent = {});

  std::unique_ptr<WmiService> connect(const std::string& moniker) override;

 private:
  WhileSilent whileSilent_;

  // Started with the first connection. Its connections and answers share it.
  std::shared_ptr<ComThread> thread_;
};

}  // namespace veltrin
