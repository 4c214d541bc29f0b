// The performance counters of Linux.
#pragma once

#include <string>

#include "platform/portable/counter_service.h"

namespace veltrin {

// All objects that Linux has figures for, under the name of this computer. `procFolder`
// is where its process file system stands.
class LinuxCounters : public CounterService {
 public:
  explicit LinuxCounters(const std::string& procFolder = "/proc");
};

}  // namespace veltrin
