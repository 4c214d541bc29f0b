// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/linux_counters.h"

#include <array>
#include <unistd.h>
#include <utility>

#include "platform/linux/network_counters.h"
#include "platform/linux/processor_counters.h"
#include "platform/linux/protocol_counters.h"

namespace veltrin {
namespace {

// POSIX allows a name of 255 bytes; the last byte here stays 0 whatever comes.
std::string hostName() {
  std::array<char, 257> name{};
  gethostname(name.data(), name.size() - 1);
  return name.data();
}

CounterService::Sources sourcesIn(const std::string& procFolder,
                                  std::shared_ptr<AdapterNames> adapters) {
  CounterService::Sources sources;
  sources.push_back(std::make_unique<ProcessorCounters>(procFolder));
  sources.push_back(std::make_unique<NetworkCounters>(procFolder, std::move(adapters)));
  sources.push_back(std::make_unique<IPv4Counters>(procFolder));
  sources.push_back(std::make_unique<IPv6Counters>(procFolder));
  return sources;
}

}  // namespace

LinuxCounters::LinuxCounters(const std::string& procFolder, std::shared_ptr<AdapterNames> adapters,
                             Clock clock)
    : CounterService(hostName(), sourcesIn(procFolder, std::move(adapters)), std::move(clock)) {}

}  // namespace veltrin
