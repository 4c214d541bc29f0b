// SPDX-License-Identifier: GPL-3.0-or-later
// The machine that this program runs on.
#pragma once

#include "machine/machine.h"

namespace veltrin {

class LinuxMachine : public Machine {
 public:
  Kernel kernel() const override;
  std::int64_t now() const override;
  LocalMoment local(std::int64_t seconds) const override;
  std::string environment(const std::string& name) const override;
  std::optional<std::int64_t> born(const std::string& path) const override;
  std::optional<std::vector<NetworkInterface>> interfaces() const override;
  std::optional<FileSystemRoom> room(const std::string& folder) const override;
  std::optional<Id128> applicationId(const Id128& application) const override;
  std::vector<DisplayMode> displayModes(const std::string& card) const override;
};

}  // namespace veltrin
