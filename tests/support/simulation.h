// SPDX-License-Identifier: GPL-3.0-or-later
// A whole program on the simulated platform.
#pragma once

#include "frame/program.h"
#include "support/simulated_desktop.h"
#include "support/simulated_downloads.h"
#include "support/simulated_drives.h"
#include "support/simulated_loop.h"
#include "support/simulated_printers.h"
#include "support/simulated_process_list.h"
#include "support/simulated_processes.h"
#include "support/simulated_store.h"
#include "support/simulated_system.h"

namespace veltrin {

class Simulation {
 public:
  // Parts of the platform that a test has of its own; where there is none, the simulated one.
  struct OwnParts {
    Wmi* wmi = nullptr;
    Drives* drives = nullptr;
    ProcessList* processList = nullptr;
  };

  Simulation() = default;
  explicit Simulation(const OwnParts& parts) : own_(parts) {}

 private:
  template <class Part>
  static Part& chosen(Part* own, Part& simulated) {
    return own == nullptr ? simulated : *own;
  }

  OwnParts own_;

 public:
  SimulatedLoop loop;
  SimulatedDesktop desktop{loop};
  SimulatedClock clock{loop};
  SimulatedFiles files;
  SimulatedProcesses processes{loop};
  SimulatedProfiles profiles;
  SimulatedRegistry registry;
  SimulatedShell shell;
  SimulatedEnvironment environment;
  SimulatedSockets sockets{loop};
  SimulatedCounters counters;
  SimulatedWmi wmi;
  SimulatedIcmp icmp{loop};
  SimulatedDownloads downloads;
  SimulatedInterfaces interfaces;
  SimulatedPrinters printers;
  SimulatedDrives drives;
  SimulatedProcessList processList;
  Platform platform{loop,
                    loop,
                    clock,
                    desktop,
                    files,
                    processes,
                    profiles,
                    registry,
                    shell,
                    environment,
                    sockets,
                    counters,
                    chosen<Wmi>(own_.wmi, wmi),
                    icmp,
                    downloads,
                    interfaces,
                    printers,
                    chosen<Drives>(own_.drives, drives),
                    chosen<ProcessList>(own_.processList, processList),
                    "Veltrin"};

  // Keeps what the program asks of all parts of the platform from now on, in one order.
  void keepJournal();
  Journal journal;

  // The program, made on first use so that a test can prepare what it reads at
  // its start. It speaks English.
  Program& program();

  // Lets the program run for a time in ms.
  void run(std::int64_t duration) { loop.run(loop.milliseconds() + duration); }

  // Text of the settings file.
  std::string settings();

 private:
  std::unique_ptr<Program> program_;
};

// The text that `ping` prints for one echo of 32 bytes that took so long.
std::string pingReply(int milliseconds, const std::string& host = "192.0.2.7");

// The text that it prints when no reply came.
std::string pingTimeout(const std::string& host = "192.0.2.7");

}  // namespace veltrin
