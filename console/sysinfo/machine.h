// What systeminfo needs of a machine beside its files: its kernel, clock,
// environment and network interfaces.
//
// LinuxMachine is the real one; tests make up their own.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "console/address.h"
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
};

}  // namespace veltrin
