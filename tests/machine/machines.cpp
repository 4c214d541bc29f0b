// SPDX-License-Identifier: GPL-3.0-or-later
#include "machines.h"

#include <vector>

#include "hardware_database_file.h"
#include "machine/product_id.h"

namespace veltrin {
namespace {

void makeCard(const TemporaryTree& tree, const std::string& interface,
              const std::string& modalias) {
  const std::string folder = "/sys/devices/pci0000:00/" + interface;
  tree.put(folder + "/modalias", modalias + "\n");
  tree.link(folder + "/driver", "../../../bus/pci/drivers/example_net");
  tree.link("/sys/class/net/" + interface + "/device", "../../../devices/pci0000:00/" + interface);
}

std::string processor(int number, int package) {
  return "processor\t: " + std::to_string(number) +
         "\nvendor_id\t: GenuineIntel\ncpu family\t: 6\nmodel\t\t: 37\nstepping\t: 5\n"
         "cpu MHz\t\t: 1199.000\nphysical id\t: " +
         std::to_string(package) + "\n\n";
}

void putFirmware(const TemporaryTree& tree) {
  const std::string folder = "/sys/class/dmi/id/";
  tree.put(folder + "sys_vendor", "Example Works\n");
  tree.put(folder + "product_name", "Notebook 7\n");
  tree.put(folder + "bios_vendor", "Example Firmware\n");
  tree.put(folder + "bios_version", "F.20\n");
  tree.put(folder + "bios_date", "08/10/2025\n");
}

void putSettings(const TemporaryTree& tree) {
  tree.put("/etc/os-release",
           "PRETTY_NAME=\"Example Linux 7\"\nVENDOR_NAME=\"Example Project\"\n"
           "VARIANT=\"Workstation Edition\"\n");
  tree.put("/etc/locale.conf", "LANG=en_US.UTF-8\n");
  tree.put("/usr/share/zoneinfo/iso3166.tab", "US\tUnited States\n");
  tree.put("/etc/default/keyboard", "XKBLAYOUT=us\n");
  tree.put("/usr/share/X11/xkb/rules/base.lst", "! layout\n  us  English (US)\n");
  tree.link("/etc/localtime", "/usr/share/zoneinfo/Europe/Berlin");
  tree.put("/etc/hosts", "127.0.1.1 mypc.example.net mypc\n");
}

void putKernelFiles(const TemporaryTree& tree) {
  tree.put("/proc/stat", "cpu 0\nbtime 1770027672\n");
  tree.put("/proc/self/mountinfo", "25 1 259:2 / / rw - ext4 /dev/nvme0n1p2 rw\n");
  tree.put("/proc/swaps", "Filename Type Size Used Priority\n/dev/nvme0n1p3 partition 1 0 -2\n");
  tree.put("/proc/meminfo",
           "MemTotal: 4051968 kB\nMemAvailable: 2095104 kB\n"
           "SwapTotal: 4049920 kB\nSwapFree: 3644416 kB\n");
}

std::string updates() {
  std::string log;
  for (const std::string package : {"openssl:amd64", "tzdata:all"}) {
    log += "2026-02-01 10:00:00 upgrade " + package + " 1.0-1 1.0-2\n";
    log += "2026-02-01 10:00:01 status installed " + package + " 1.0-2\n";
  }
  return log;
}

}  // namespace

void makeLaptop(const TemporaryTree& tree, FakeMachine& machine) {
  machine.kernelFacts = {"mypc", "6.1.0-21-amd64", "#1 SMP PREEMPT_DYNAMIC Example 6.1.90-1",
                         "x86_64"};
  machine.time = 1770030000;
  machine.offset = 60;
  machine.zone = "CET";
  machine.rootBorn = 1769786571;
  machine.ids[kProductApplication] = {0x00, 0x11, 0x22, 0x33, 0x44, 0x55, 0x46, 0x77,
                                      0x88, 0x99, 0xAA, 0xBB, 0xCC, 0xDD, 0xEE, 0xFF};
  putFirmware(tree);
  putSettings(tree);
  putKernelFiles(tree);
  tree.put("/proc/cpuinfo", processor(0, 0) + processor(1, 0));
  tree.put("/sys/devices/system/cpu/cpu0/cpufreq/base_frequency", "2667000\n");
  tree.put("/var/log/dpkg.log", updates());
  tree.put("/usr/lib/udev/hwdb.bin",
           databaseFile({{"pci:v00008086*", " ID_VENDOR_FROM_DATABASE", "Example Corporation"},
                         {"pci:v00008086d000015F3*", " ID_MODEL_FROM_DATABASE", "Gigabit 7"}}));
  makeCard(tree, "eth0", "pci:v00008086d000015F3sv00001028sd00000A5Dbc02sc00i00");
  makeCard(tree, "wlan0", "pci:v0000FFFFd00000001sv00000000sd00000000bc02sc80i00");
  tree.put("/run/systemd/netif/leases/2", "ADDRESS=198.51.100.20\nSERVER_ADDRESS=198.51.100.1\n");
  NetworkInterface wireless = makeInterface(3, "wlan0");
  wireless.running = false;
  machine.network = std::vector<NetworkInterface>{
      withAddress(withAddress(makeInterface(2, "eth0"), "198.51.100.20", false), "fe80::1"),
      wireless};
}

void makeServer(const TemporaryTree& tree, FakeMachine& machine, std::size_t cards) {
  machine.kernelFacts = {"server.example.net", "6.1.0-21-amd64", "#1 SMP Example 6.1.90-1",
                         "x86_64"};
  tree.put("/proc/cpuinfo", processor(0, 0) + processor(1, 1));
  machine.network.emplace();
  for (std::size_t i = 0; i < cards; ++i) {
    const std::string name = "eth" + std::to_string(i);
    makeCard(tree, name, "");
    machine.network->push_back(withAddress(makeInterface(static_cast<std::uint32_t>(i) + 2, name),
                                           "192.0.2." + std::to_string(i + 1)));
  }
}

void fillEveryFile(const TemporaryTree& tree, std::string_view bytes) {
  for (const char* path : {"/etc/os-release",
                           "/etc/dpkg/origins/default",
                           "/etc/locale.conf",
                           "/etc/default/locale",
                           "/etc/default/keyboard",
                           "/etc/vconsole.conf",
                           "/etc/X11/xorg.conf.d/00-keyboard.conf",
                           "/usr/share/X11/xkb/rules/base.lst",
                           "/usr/share/zoneinfo/iso3166.tab",
                           "/etc/timezone",
                           "/etc/localtime",
                           "/etc/hosts",
                           "/etc/samba/smb.conf",
                           "/etc/network/interfaces",
                           "/etc/network/interfaces.d/a",
                           "/proc/stat",
                           "/proc/cpuinfo",
                           "/proc/meminfo",
                           "/proc/swaps",
                           "/proc/self/mountinfo",
                           "/proc/sys/kernel/domainname",
                           "/sys/class/dmi/id/sys_vendor",
                           "/sys/class/dmi/id/product_name",
                           "/sys/class/dmi/id/bios_vendor",
                           "/sys/class/dmi/id/bios_version",
                           "/sys/class/dmi/id/bios_date",
                           "/sys/firmware/dmi/tables/DMI",
                           "/sys/firmware/devicetree/base/model",
                           "/sys/firmware/devicetree/base/compatible",
                           "/sys/devices/system/cpu/cpu0/topology/physical_package_id",
                           "/sys/devices/system/cpu/cpu0/cpufreq/base_frequency",
                           "/sys/class/net/eth0/device/modalias",
                           "/sys/class/net/eth0/device/driver",
                           "/usr/lib/udev/hwdb.bin",
                           "/var/log/dpkg.log",
                           "/var/log/dpkg.log.1",
                           "/var/log/pacman.log",
                           "/run/network/ifstate",
                           "/run/systemd/netif/leases/2",
                           "/run/systemd/netif/links/2",
                           "/run/NetworkManager/devices/2",
                           "/run/NetworkManager/system-connections/a",
                           "/var/lib/dhcp/dhclient.leases",
                           "/var/lib/NetworkManager/internal-a-eth0.lease",
                           "/var/lib/dhcpcd/eth0.lease"}) {
    tree.put(path, bytes);
  }
}

}  // namespace veltrin
