// SPDX-License-Identifier: GPL-3.0-or-later
// Makes messages as the kernel sends them about network devices (rtnetlink(7)).
#pragma once

#include <linux/if_addr.h>
#include <linux/if_link.h>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <string>

namespace veltrin {

template <class Structure>
std::string bytesOf(const Structure& structure) {
  return {reinterpret_cast<const char*>(&structure), sizeof structure};
}

inline std::string padded(std::string bytes) {
  bytes.resize(NLMSG_ALIGN(bytes.size()));
  return bytes;
}

inline std::string attribute(unsigned type, const std::string& content) {
  rtattr header{};
  header.rta_len = static_cast<unsigned short>(sizeof header + content.size());
  header.rta_type = static_cast<unsigned short>(type);
  return padded(bytesOf(header) + content);
}

inline std::string message(unsigned type, const std::string& body) {
  nlmsghdr header{};
  header.nlmsg_len = static_cast<unsigned>(sizeof header + body.size());
  header.nlmsg_type = static_cast<unsigned short>(type);
  return padded(bytesOf(header) + body);
}

inline std::string nameAttribute(const std::string& name) {
  return attribute(IFLA_IFNAME, name + '\0');
}

}  // namespace veltrin
