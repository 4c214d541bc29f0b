// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/adapter_names.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <linux/if_arp.h>
#include <linux/if_tun.h>
#include <string_view>
#include <tuple>
#include <utility>

#include "machine/adapter_id.h"
#include "machine/device_folder.h"
#include "machine/device_names.h"

namespace veltrin {
namespace {

bool exists(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::exists(path, ignored);
}

// Where a link leads to, all folders above being resolved; empty when nowhere.
std::string destination(const std::string& path) {
  std::error_code failed;
  const std::filesystem::path found = std::filesystem::canonical(path, failed);
  return failed ? std::string() : found.string();
}

std::string folderOf(const std::string& device) { return "/sys/class/net/" + device; }

constexpr int kDecimal = 10;
constexpr int kAnyBase = 0;  // by a prefix such as 0x

// Whoever reads the names passes over shorter ones.
constexpr std::size_t kShortest = 5;

struct Kind {
  std::string_view devtype;
  const char* words;
};
constexpr std::array kKinds{
    Kind{"wlan", "Wireless adapter"},       Kind{"bridge", "Bridge adapter"},
    Kind{"bond", "Bond adapter"},           Kind{"vlan", "VLAN adapter"},
    Kind{"vxlan", "VXLAN adapter"},         Kind{"wireguard", "WireGuard adapter"},
    Kind{"bluetooth", "Bluetooth adapter"}, Kind{"wwan", "Mobile broadband adapter"},
};

}  // namespace

std::string fullNameInDatabase(const std::string& modalias) {
  return DeviceNames(FileTree()).modelOf(modalias);
}

bool isIpTunnel(unsigned type) {
  return type == ARPHRD_TUNNEL || type == ARPHRD_TUNNEL6 || type == ARPHRD_SIT ||
         type == ARPHRD_IPGRE || type == ARPHRD_IP6GRE;
}

std::string instanceNameOf(std::string adapter) {
  for (char& c : adapter) {
    if (c == '(') c = '[';
    if (c == ')') c = ']';
    if (c == '#' || c == '/' || c == '\\') c = '_';
  }
  return adapter;
}

AdapterNames::AdapterNames(FileTree files, Database database)
    : files_(std::move(files)), database_(std::move(database)) {}

std::vector<std::string> AdapterNames::namesOf(const std::vector<std::string>& devices) {
  std::vector<std::string> fresh;
  for (const std::string& device : devices) {
    if (!names_.contains(device)) fresh.push_back(device);
  }
  // Whatever is new may have the name of what has gone.
  if (!fresh.empty() || names_.size() != devices.size()) forgetAllBut(devices);
  add(fresh);
  std::vector<std::string> names;
  names.reserve(devices.size());
  for (const std::string& device : devices) names.push_back(names_[device]);
  return names;
}

void AdapterNames::forgetAllBut(const std::vector<std::string>& devices) {
  std::erase_if(names_, [&](const auto& known) {
    return std::find(devices.begin(), devices.end(), known.first) == devices.end();
  });
}

// Cards are numbered by their places on the bus, so that they are the same after a restart.
void AdapterNames::add(const std::vector<std::string>& devices) {
  std::vector<Found> all;
  all.reserve(devices.size());
  for (const std::string& device : devices) all.push_back(find(device));
  std::sort(all.begin(), all.end(), [](const Found& left, const Found& right) {
    return std::tie(left.hardware, left.device) < std::tie(right.hardware, right.device);
  });
  for (const Found& found : all) {
    names_[found.device] =
        found.hardware.empty() ? found.name : numbered(found.name, found.hardware);
  }
}

// The name that this hardware has had before, else the first one that no other has. A second
// device of the same hardware is one more card.
std::string AdapterNames::numbered(const std::string& name, const std::string& hardware) {
  const auto isUsed = [](const std::map<std::string, std::string>& names,
                         const std::string& wanted) {
    return std::any_of(names.begin(), names.end(),
                       [&](const auto& each) { return each.second == wanted; });
  };
  const auto known = hardware_.find(hardware);
  if (known != hardware_.end() && !isUsed(names_, known->second)) return known->second;
  std::string free = name;
  for (int i = 2; isUsed(hardware_, free) || isUsed(names_, free); ++i) {
    free = name + " #" + std::to_string(i);
  }
  if (known == hardware_.end()) hardware_[hardware] = free;
  return free;
}

AdapterNames::Found AdapterNames::find(const std::string& device) const {
  const std::string id = adapterId(files_, device);
  const std::string name = id.empty() ? "" : database_(id);
  if (name.size() < kShortest) return {device, "", nameByKind(device)};
  // One piece of hardware may have several ports, and one place another card some day.
  const std::string folder = folderOf(device);
  const std::string port = files_.line(folder + "/dev_port");
  return {device, destination(files_.root() + folder + "/device") + " " + port + " " + name, name};
}

std::string AdapterNames::nameByKind(const std::string& device) const {
  const std::string folder = folderOf(device);
  const unsigned type = numberIn(folder + "/type", kDecimal);
  if (type == ARPHRD_LOOPBACK || device == "lo") return "Local Loopback " + device;
  if (isIpTunnel(type)) return "isatap " + device;
  // What the driver calls the kind of the device: "wlan", "bridge" and so on.
  const std::string devtype = eventValue(files_.text(folder + "/uevent"), "DEVTYPE");
  for (const Kind& kind : kKinds) {
    if (devtype == kind.devtype) return std::string(kind.words) + " " + device;
  }
  if (exists(files_.root() + folder + "/wireless")) return "Wireless adapter " + device;
  if (exists(files_.root() + folder + "/tun_flags")) {
    const bool tap = (numberIn(folder + "/tun_flags", kAnyBase) & IFF_TAP) != 0;
    return (tap ? "TAP adapter " : "TUN adapter ") + device;
  }
  if (type == ARPHRD_PPP) return "PPP adapter " + device;
  return "Ethernet adapter " + device;
}

unsigned AdapterNames::numberIn(const std::string& path, int base) const {
  return static_cast<unsigned>(std::strtoul(files_.line(path).c_str(), nullptr, base));
}

}  // namespace veltrin
