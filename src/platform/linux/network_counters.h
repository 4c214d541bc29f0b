// SPDX-License-Identifier: GPL-3.0-or-later
// The counters of the object "Network Interface".
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/adapter_names.h"
#include "platform/portable/counter_source.h"

namespace veltrin {

// The instances are the network devices that there are, under the names of their adapters.
// What they have sent and received is told in bytes of their own frames.
class NetworkCounters : public CounterSource {
 public:
  NetworkCounters(std::string procFolder, std::shared_ptr<AdapterNames> adapters)
      : procFolder_(std::move(procFolder)), adapters_(std::move(adapters)) {}

  std::string object() const override { return "Network Interface"; }
  std::vector<CounterName> counters() const override;

  // From the file "net/dev", a line for each device (proc_pid_net(5)).
  std::vector<CounterInstance> read() const override;

 private:
  std::string procFolder_;
  std::shared_ptr<AdapterNames> adapters_;
};

}  // namespace veltrin
