// SPDX-License-Identifier: GPL-3.0-or-later
// A program on the simulated platform whose counters are those of this machine's kernel, and
// a line of the test's own: a device whose other end the test holds.
#pragma once

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>
#include <unistd.h>
#include <utility>

#include "frame/program.h"
#include "lab/interface.h"
#include "lab/rtnetlink.h"
#include "lab_packets.h"
#include "platform/linux/linux_counters.h"
#include "support/simulation.h"
#include "tests/platform/own_network.h"

namespace veltrin::lab {

constexpr const char* kDevice = "lab0";
constexpr const char* kHere = "192.0.2.1";
constexpr const char* kPeer = "192.0.2.2";  // as which the test sends
constexpr const char* kHereV6 = "2001:db8::1";
constexpr const char* kPeerV6 = "2001:db8::2";

// Of the line, in both directions. One more network is behind it, for what is forwarded.
constexpr const char* kBeyond = "198.51.100.7";
constexpr const char* kBeyondV6 = "2001:db8:9::7";

// Makes the device with its addresses, in a network of the test's own. IPv6 keeps silent: it
// announces nothing. Throws CannotRun.
inline Descriptor makeLine() {
  const std::string defaults = "/proc/sys/net/ipv6/conf/default/";
  writeSetting(defaults + "addr_gen_mode", "1");  // no address of the link's own
  writeSetting(defaults + "router_solicitations", "0");
  writeSetting(defaults + "mldv2_unsolicited_report_interval", "10");  // ms
  Descriptor line = makeInterface({});
  const unsigned index = if_nametoindex(kDevice);
  Rtnetlink kernel;
  for (const char* address : {kHere, "198.51.100.1"}) {
    kernel.addAddress(index, addressOf(address), 24);
  }
  if (access("/proc/net/snmp6", R_OK) == 0) {
    for (const char* address : {kHereV6, "2001:db8:9::1"}) {
      kernel.addAddress(index, addressOf(address), 64);
    }
  }
  return line;
}

// Carries out a routine in a network of its own over such a line; the test is skipped, with
// the reason, where there can be none.
template <class Routine>
void overALine(Routine routine) {
  inOwnNetwork([&] {
    Descriptor line;
    try {
      line = makeLine();
    } catch (const CannotRun& reason) {
      GTEST_SKIP() << reason.what();
    }
    routine(line.get());
  });
}

class MonitorProgram {
 public:
  // By another clock than the kernel's the rates are counted over that one's seconds.
  explicit MonitorProgram(CounterService::Clock clock = std::chrono::steady_clock::now)
      : counters("/proc", std::make_shared<AdapterNames>(), std::move(clock)) {
    std::array<char, 257> host{};
    gethostname(host.data(), host.size() - 1);
    program.start.HostName = host.data();
    EXPECT_EQ(counters.PdhOpenQuery(query_), 0);
    program.start.PdhQuery = query_;
  }

  Simulation simulation;
  LinuxCounters counters;
  Platform platform{
      simulation.loop,     simulation.loop,        simulation.clock,       simulation.desktop,
      simulation.files,    simulation.processes,   simulation.profiles,    simulation.registry,
      simulation.shell,    simulation.environment, simulation.sockets,     counters,
      simulation.wmi,      simulation.icmp,        simulation.downloads,   simulation.interfaces,
      simulation.printers, simulation.drives,      simulation.processList, "Veltrin"};
  Program program{platform};

  // Lets a second of the program pass, in which its windows tick once.
  void tick() { simulation.run(1000); }

 private:
  Counters::Query query_ = 0;
};

}  // namespace veltrin::lab
