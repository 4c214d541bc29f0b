// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/linux_interfaces.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>
#include <linux/if.h>
#include <linux/if_arp.h>
#include <string_view>
#include <utility>

#include "text/utf8.h"

namespace veltrin {
namespace {

// IANA's numbers of interface types (ianaiftype-mib).
enum IfType : std::uint32_t {
  kOther = 1,
  kEthernet = 6,
  kPpp = 23,
  kLoopback = 24,
  kWireless = 71,
  kTunnel = 131,
  kFirewire = 144,
  kInfiniband = 199,
  kMobile = 243,
};

// What Windows calls the states of an interface (INTERNAL_IF_OPER_STATUS in ipifcons.h).
enum OperStatus : std::uint32_t {
  kNonOperational = 0,
  kDisconnected = 2,
  kConnecting = 3,
  kOperational = 5,
};
constexpr std::uint32_t kAdminUp = 1;  // MIB_IF_ADMIN_STATUS_UP
constexpr std::uint32_t kAdminDown = 2;

constexpr std::uint64_t kBitsOfMegabit = 1'000'000;
constexpr std::string_view kDeviceFolder = "\\DEVICE\\TCPIP_";

std::uint32_t typeOf(unsigned arphrd, bool wireless) {
  if (wireless) return kWireless;
  if (isIpTunnel(arphrd)) return kTunnel;
  switch (arphrd) {
    case ARPHRD_ETHER:
      return kEthernet;
    case ARPHRD_LOOPBACK:
      return kLoopback;
    case ARPHRD_PPP:
      return kPpp;
    case ARPHRD_IEEE80211:
    case ARPHRD_IEEE80211_PRISM:
    case ARPHRD_IEEE80211_RADIOTAP:
      return kWireless;
    case ARPHRD_NONE:  // of a program that is the other end, or of encrypted packets
      return kTunnel;
    case ARPHRD_RAWIP:
      return kMobile;
    case ARPHRD_IEEE1394:
      return kFirewire;
    case ARPHRD_INFINIBAND:
      return kInfiniband;
    default:
      return kOther;
  }
}

// Drivers that do not tell a state leave it at unknown; such a device runs or does not.
std::uint32_t operStatusOf(const Link& link) {
  if ((link.flags & IFF_UP) == 0) return kNonOperational;
  switch (link.operState) {
    case IF_OPER_UP:
      return kOperational;
    case IF_OPER_UNKNOWN:
      return (link.flags & IFF_RUNNING) != 0 ? kOperational : kDisconnected;
    case IF_OPER_DORMANT:
      return kConnecting;
    case IF_OPER_DOWN:
    case IF_OPER_LOWERLAYERDOWN:
      return kDisconnected;
    default:
      return kNonOperational;
  }
}

// The kernel keeps bytes, which need not be UTF-8: each becomes one character.
void writeWide(std::array<std::uint8_t, 512>& wide, const std::string& text) {
  constexpr std::size_t kBytesOfOne = 2;
  const std::size_t count = std::min(text.size(), wide.size() / kBytesOfOne - 1);
  for (std::size_t i = 0; i < count; ++i) {
    wide[i * kBytesOfOne] = static_cast<std::uint8_t>(text[i]);
  }
}

template <std::size_t Size>
std::uint32_t copyInto(std::array<std::uint8_t, Size>& field, std::string_view bytes) {
  const std::size_t count = std::min(bytes.size(), Size);
  std::copy_n(bytes.begin(), count, field.begin());
  return static_cast<std::uint32_t>(count);
}

// As much of a text as fits without cutting a character.
std::string_view cutTo(std::string_view text, std::size_t bytes) {
  if (text.size() <= bytes) return text;
  while (bytes > 0 && isContinuation(text[bytes])) --bytes;
  return text.substr(0, bytes);
}

std::uint32_t cut(std::uint64_t counter) { return static_cast<std::uint32_t>(counter); }

// The kernel counts packets to groups within all that came.
void writeTraffic(MIB_IFROW& row, const rtnl_link_stats64& traffic) {
  row.dwInOctets = cut(traffic.rx_bytes);
  row.dwInUcastPkts = cut(traffic.rx_packets - std::min(traffic.multicast, traffic.rx_packets));
  row.dwInNUcastPkts = cut(traffic.multicast);
  row.dwInDiscards = cut(traffic.rx_dropped);
  row.dwInErrors = cut(traffic.rx_errors);
  row.dwInUnknownProtos = cut(traffic.rx_nohandler);
  row.dwOutOctets = cut(traffic.tx_bytes);
  row.dwOutUcastPkts = cut(traffic.tx_packets);
  row.dwOutDiscards = cut(traffic.tx_dropped);
  row.dwOutErrors = cut(traffic.tx_errors);
}

}  // namespace

LinuxInterfaces::LinuxInterfaces(std::shared_ptr<AdapterNames> adapters, std::string sysFolder,
                                 Links links)
    : adapters_(std::move(adapters)), sysFolder_(std::move(sysFolder)), links_(std::move(links)) {}

std::uint32_t LinuxInterfaces::GetIfTable(std::uint8_t* table, std::uint32_t& size, bool order) {
  std::vector<Link> links = links_();
  if (links.empty()) return kErrorNotSupported;
  const auto count = static_cast<std::uint32_t>(links.size());
  const auto wanted = static_cast<std::uint32_t>(sizeof count + links.size() * sizeof(MIB_IFROW));
  if (table == nullptr || size < wanted) {
    size = wanted;
    return kErrorInsufficientBuffer;
  }
  if (order) {
    std::sort(links.begin(), links.end(),
              [](const Link& left, const Link& right) { return left.index < right.index; });
  }
  std::vector<std::string> devices;
  devices.reserve(links.size());
  for (const Link& link : links) devices.push_back(link.name);
  const std::vector<std::string> names = adapters_->namesOf(devices);
  std::memcpy(table, &count, sizeof count);
  table += sizeof count;
  for (std::size_t i = 0; i < links.size(); ++i) {
    const MIB_IFROW row = rowOf(links[i], names[i]);
    std::memcpy(table + i * sizeof row, &row, sizeof row);
  }
  return 0;
}

MIB_IFROW LinuxInterfaces::rowOf(const Link& link, const std::string& adapter) const {
  MIB_IFROW row;
  writeWide(row.wszName, std::string(kDeviceFolder) + link.name);
  row.dwIndex = link.index;
  row.dwType = typeOf(link.type, isWireless(link.name));
  row.dwMtu = link.mtu;
  row.dwSpeed = speedOf(link.name);
  // The loopback's address is all zeros, which is none.
  if (row.dwType != kLoopback) row.dwPhysAddrLen = copyInto(row.bPhysAddr, link.address);
  row.dwAdminStatus = (link.flags & IFF_UP) != 0 ? kAdminUp : kAdminDown;
  row.dwOperStatus = operStatusOf(link);
  writeTraffic(row, link.traffic);
  row.dwDescrLen = copyInto(row.bDescr, cutTo(adapter, row.bDescr.size()));
  return row;
}

// "speed" holds megabits a second, -1 when the driver does not know; a device without such a
// thing lets nobody read it.
std::uint32_t LinuxInterfaces::speedOf(const std::string& device) const {
  std::ifstream file(sysFolder_ + "/class/net/" + device + "/speed");
  std::int64_t megabits = 0;
  if (!(file >> megabits) || megabits <= 0) return 0;
  constexpr std::uint64_t kMost = std::numeric_limits<std::uint32_t>::max();
  const auto bits = static_cast<std::uint64_t>(megabits);
  return bits > kMost / kBitsOfMegabit ? static_cast<std::uint32_t>(kMost)
                                       : static_cast<std::uint32_t>(bits * kBitsOfMegabit);
}

bool LinuxInterfaces::isWireless(const std::string& device) const {
  std::error_code ignored;
  return std::filesystem::exists(sysFolder_ + "/class/net/" + device + "/phy80211", ignored);
}

}  // namespace veltrin
