// The machine that this program runs on.
#pragma once

#include "console/sysinfo/machine.h"

namespace veltrin {

class LinuxMachine : public Machine {
 public:
  Kernel kernel() const override;
  std::int64_t now() const override;
  LocalMoment local(std::int64_t seconds) const override;
  std::string environment(const std::string& name) const override;
  std::optional<std::int64_t> born(const std::string& path) const override;
  std::optional<std::vector<NetworkInterface>> interfaces() const override;
};

}  // namespace veltrin
