// SPDX-License-Identifier: GPL-3.0-or-later
// What is asked of a machine beside its files: its kernel, clock, environment, network
// interfaces, file systems and screens.
//
// LinuxMachine is the real one; tests make up their own.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "machine/address.h"
#include "text/date_time.h"

namespace veltrin {

// What the kernel tells of itself (uname(2)).
struct Kernel {
  std::string host;     // this machine's name
  std::string release;  // "6.1.0-21-amd64"
  std::string version;  // "#1 SMP PREEMPT_DYNAMIC ..."
  std::string machine;  // "x86_64"
};

// A moment of the local calendar.
struct LocalMoment {
  DateTime time;
  int offset = 0;    // minutes ahead of UTC
  std::string zone;  // the abbreviation of the zone, "CET"
};

// An address of a network interface.
struct InterfaceAddress {
  Address address;
  // Stays until somebody takes it away; others run out unless they are renewed.
  bool lasting = true;
};

// A network interface other than the loopback one.
struct NetworkInterface {
  std::uint32_t index = 0;
  std::string name;
  std::string kind;      // "bridge", "veth"; empty for one that is no software
  bool running = false;  // switched on, and its medium is connected
  std::vector<InterfaceAddress> addresses;
};

// The size of a file system (statvfs(3)), in blocks of `block` bytes.
struct FileSystemRoom {
  std::uint64_t block = 0;
  std::uint64_t total = 0;
  std::uint64_t free = 0;
  std::uint64_t available = 0;    // to users who are not root
  std::uint64_t longestName = 0;  // of a file, in bytes; 0 where it is not told
  std::uint64_t files = 0;        // files and folders that it has room for; 0 the same
  std::uint64_t filesFree = 0;
};

// What a connector of a graphics card shows at present.
struct DisplayMode {
  std::string connector;    // "HDMI-A-1"
  std::uint32_t width = 0;  // pixels
  std::uint32_t height = 0;
  std::uint32_t refresh = 0;  // pictures in a second
  std::uint32_t depth = 0;    // bits of a pixel; 0 where it is not told
};

// An ID of 128 bits, the highest byte first.
using Id128 = std::array<std::uint8_t, 16>;

class Machine {
 public:
  virtual ~Machine() = default;

  virtual Kernel kernel() const = 0;

  // Seconds since 1970.
  virtual std::int64_t now() const = 0;

  // A moment in seconds since 1970 in the zone of this process.
  virtual LocalMoment local(std::int64_t seconds) const = 0;

  // A variable of the environment; empty when it is not set.
  virtual std::string environment(const std::string& name) const = 0;

  // When a file or folder was made, in seconds since 1970; nothing where the file
  // system does not keep it.
  virtual std::optional<std::int64_t> born(const std::string& path) const = 0;

  // The interfaces in the order of their indexes; nothing when the system does not
  // tell them.
  virtual std::optional<std::vector<NetworkInterface>> interfaces() const = 0;

  // The room of the file system that a folder lies in; nothing when it is not told.
  virtual std::optional<FileSystemRoom> room(const std::string& folder) const = 0;

  // The ID that stands for this installation before one program, whose own constant the
  // argument is (sd_id128_get_machine_app_specific(3)); nothing when the installation has none.
  virtual std::optional<Id128> applicationId(const Id128& application) const = 0;

  // What the connectors of a graphics card ("card0") show, in the card's order; empty where
  // nothing is shown, or this user may not ask.
  virtual std::vector<DisplayMode> displayModes(const std::string& card) const = 0;
};

}  // namespace veltrin
