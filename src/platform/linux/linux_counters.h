// SPDX-License-Identifier: GPL-3.0-or-later
// The performance counters of Linux.
#pragma once

#include <memory>
#include <string>

#include "platform/linux/adapter_names.h"
#include "platform/portable/counter_service.h"

namespace veltrin {

// All objects that Linux has figures for, under the name of this computer. `procFolder`
// is where its process file system stands.
class LinuxCounters : public CounterService {
 public:
  explicit LinuxCounters(const std::string& procFolder = "/proc",
                         std::shared_ptr<AdapterNames> adapters = std::make_shared<AdapterNames>(),
                         Clock clock = std::chrono::steady_clock::now);
};

}  // namespace veltrin
