// SPDX-License-Identifier: GPL-3.0-or-later
#include "lab/interface.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <linux/if_tun.h>
#include <net/if.h>
#include <string_view>
#include <sys/ioctl.h>

#include "lab/rtnetlink.h"

namespace veltrin::lab {
namespace {

constexpr const char* kDevice = "/dev/net/tun";
constexpr std::string_view kInterfaceName = "lab0";
constexpr const char* kLoopbackName = "lo";
constexpr const char* kIpv6Settings = "/proc/sys/net/ipv6/conf/default/disable_ipv6";

Descriptor openDevice() {
  Descriptor device(open(kDevice, O_RDWR | O_CLOEXEC | O_NONBLOCK));
  if (device.get() < 0) failWithErrno(std::string("cannot open ") + kDevice);
  ifreq request{};
  request.ifr_flags = IFF_TUN | IFF_NO_PI;
  std::copy(kInterfaceName.begin(), kInterfaceName.end(), std::begin(request.ifr_name));
  if (ioctl(device.get(), TUNSETIFF, &request) != 0) failWithErrno("cannot make a TUN device");
  return device;
}

// Some systems start every namespace with IPv6 switched off.
bool switchOnIpv6() {
  const Descriptor setting(open(kIpv6Settings, O_WRONLY | O_CLOEXEC));
  return setting.get() >= 0 && write(setting.get(), "0", 1) == 1;
}

unsigned indexOf(const char* name) {
  const unsigned index = if_nametoindex(name);
  if (index == 0) failWithErrno(std::string("cannot find the interface ") + name);
  return index;
}

}  // namespace

Descriptor makeInterface(const InterfacePlan& plan) {
  const bool ipv6 = switchOnIpv6();
  Descriptor device = openDevice();
  const unsigned index = indexOf(std::string(kInterfaceName).c_str());
  Rtnetlink kernel;
  kernel.bringUp(indexOf(kLoopbackName), std::nullopt);
  kernel.bringUp(index, plan.mtu);
  for (const MachineAddress& machine : plan.addresses) {
    const Family family = machine.address.family();
    if (family == Family::V6 && !ipv6) continue;
    kernel.addAddress(index, machine.address, machine.prefixLength);
  }
  for (const Family family : {Family::V4, Family::V6}) {
    const auto ofFamily = [&](const auto& each) { return each.family() == family; };
    const bool present = std::any_of(plan.addresses.begin(), plan.addresses.end(),
                                     [&](const auto& each) { return ofFamily(each.address); });
    if (!present || (family == Family::V6 && !ipv6)) continue;
    const auto gateway = std::find_if(plan.gateways.begin(), plan.gateways.end(), ofFamily);
    kernel.addDefaultRoute(index, family,
                           gateway == plan.gateways.end() ? std::nullopt : std::optional(*gateway));
  }
  return device;
}

}  // namespace veltrin::lab
