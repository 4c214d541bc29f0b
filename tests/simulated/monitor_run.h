// SPDX-License-Identifier: GPL-3.0-or-later
// The network monitors on the simulated platform, with counters whose values a test sets.
#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "frame/setlang.h"
#include "monitor/counter_values.h"
#include "support/simulation.h"

namespace veltrin {

// The counters of a protocol, in the order of the tables.
inline const std::vector<std::string> kProtocolNames = {"Datagrams/sec",
                                                        "Datagrams Received/sec",
                                                        "Datagrams Received Header Errors",
                                                        "Datagrams Received Address Errors",
                                                        "Datagrams Forwarded/sec",
                                                        "Datagrams Received Unknown Protocol",
                                                        "Datagrams Received Discarded",
                                                        "Datagrams Received Delivered/sec",
                                                        "Datagrams Sent/sec",
                                                        "Datagrams Outbound Discarded",
                                                        "Datagrams Outbound No Route",
                                                        "Fragments Received/sec",
                                                        "Fragments Re-assembled/sec",
                                                        "Fragment Re-assembly Failures",
                                                        "Fragmented Datagrams/sec",
                                                        "Fragmentation Failures",
                                                        "Fragments Created/sec"};

class MonitorRun : public ::testing::Test {
 protected:
  MonitorRun() {
    simulation.program().start.HostName = "MYPC";
    simulation.program().start.PdhQuery = 1;
  }

  Program& program() { return simulation.program(); }
  CounterValues& counters() { return program().shared<CounterValues>(); }

  // Another window, so that the program goes on when the one under test is closed.
  void keepTheProgramRunning() { program().show<setlang>(); }

  // Bytes per second through an interface from now on.
  void traffic(const std::string& interface, double received, double sent, double total) {
    auto& values = simulation.counters.values;
    const std::string path = "\\\\MYPC\\Network Interface(" + interface + ")\\Bytes ";
    values[path + "Received/sec"] = received;
    values[path + "Sent/sec"] = sent;
    values[path + "Total/sec"] = total;
  }

  // A figure of a protocol, "IPv4" or "IPv6", from now on.
  void figure(const std::string& protocol, const std::string& counter, double value) {
    simulation.counters.values["\\\\MYPC\\" + protocol + "\\" + counter] = value;
  }

  // Enters in the journal when events run, as often as the counters were called before.
  void noteEvents() {
    simulation.counters.onCall = [this] {
      simulation.loop.after(0, [this] { simulation.journal.push_back("events"); });
    };
    simulation.keepJournal();
  }

  void TearDown() override { EXPECT_EQ(simulation.loop.gate().escapedFailures(), 0); }

  Simulation simulation;
};

}  // namespace veltrin
