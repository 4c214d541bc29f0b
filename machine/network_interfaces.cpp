// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/network_interfaces.h"

#include <algorithm>
#include <linux/if_addr.h>
#include <net/if.h>
#include <utility>

namespace veltrin {
namespace {

NetworkInterface interfaceOf(const Link& link) {
  NetworkInterface interface;
  interface.index = link.index;
  interface.name = link.name;
  interface.kind = link.kind;
  interface.running = (link.flags & IFF_UP) != 0 && (link.flags & IFF_RUNNING) != 0;
  return interface;
}

}  // namespace

std::vector<NetworkInterface> networkInterfaces(const LinkDump& dump) {
  std::vector<NetworkInterface> interfaces;
  for (const Link& link : dump.links()) {
    if ((link.flags & IFF_LOOPBACK) == 0) {
      interfaces.push_back(interfaceOf(link));
    }
  }
  const auto index = &NetworkInterface::index;
  std::ranges::stable_sort(interfaces, {}, index);
  const auto sameIndex = [](const NetworkInterface& left, const NetworkInterface& right) {
    return left.index == right.index;
  };
  interfaces.erase(std::unique(interfaces.begin(), interfaces.end(), sameIndex), interfaces.end());
  for (const LinkAddress& told : dump.addresses()) {
    const auto owner = std::ranges::lower_bound(interfaces, told.index, {}, index);
    if (owner != interfaces.end() && owner->index == told.index) {
      owner->addresses.push_back({told.address, (told.flags & IFA_F_PERMANENT) != 0});
    }
  }
  return interfaces;
}

}  // namespace veltrin
