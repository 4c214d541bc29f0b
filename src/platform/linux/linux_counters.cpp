#include "platform/linux/linux_counters.h"

#include <array>
#include <unistd.h>

#include "platform/linux/processor_counters.h"

namespace veltrin {
namespace {

// POSIX allows a name of 255 bytes; the last byte here stays 0 whatever comes.
std::string hostName() {
  std::array<char, 257> name{};
  gethostname(name.data(), name.size() - 1);
  return name.data();
}

CounterService::Sources sourcesIn(const std::string& procFolder) {
  CounterService::Sources sources;
  sources.push_back(std::make_unique<ProcessorCounters>(procFolder));
  return sources;
}

}  // namespace

LinuxCounters::LinuxCounters(const std::string& procFolder)
    : CounterService(hostName(), sourcesIn(procFolder)) {}

}  // namespace veltrin
