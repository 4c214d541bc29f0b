// SPDX-License-Identifier: GPL-3.0-or-later
// The table of network interfaces of Linux.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "machine/route_socket.h"
#include "platform/interface_table.h"
#include "platform/linux/adapter_names.h"

namespace veltrin {

// Made from what the kernel tells of its network devices (rtnetlink(7)) at each call.
//
// wszName is "\DEVICE\TCPIP_" and the device's name, as Windows has it with an identifier in
// that place. The description is the adapter's name. Counters of 64 bits are cut to 32.
// dwSpeed is 0 when the device does not tell it and as high as it goes for more than that
// (RFC 2863, ifSpeed). Linux keeps neither the last change nor the packets sent to groups,
// nor does it tell the length of a device's queue; these fields are 0.
class LinuxInterfaces : public InterfaceTable {
 public:
  using Links = std::function<std::vector<Link>()>;

  // `sysFolder` is where the system's device file system stands.
  explicit LinuxInterfaces(std::shared_ptr<AdapterNames> adapters, std::string sysFolder = "/sys",
                           Links links = networkLinks);

  // kErrorNotSupported when the kernel does not tell its devices.
  std::uint32_t GetIfTable(std::uint8_t* table, std::uint32_t& size, bool order) override;

 private:
  MIB_IFROW rowOf(const Link& link, const std::string& adapter) const;
  std::uint32_t speedOf(const std::string& device) const;
  bool isWireless(const std::string& device) const;

  std::shared_ptr<AdapterNames> adapters_;
  std::string sysFolder_;
  Links links_;
};

}  // namespace veltrin
