// SPDX-License-Identifier: GPL-3.0-or-later
// The facts that WMI would tell, of a Linux machine.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "machine/desktop.h"
#include "machine/device_database.h"
#include "machine/file_tree.h"
#include "machine/machine.h"
#include "platform/printer_facts.h"
#include "platform/wmi.h"

namespace veltrin {

// Where the facts come from. Tests put a recorded machine here.
struct WmiSources {
  FileTree files;
  std::shared_ptr<const Machine> machine;
  std::function<std::vector<PrinterFacts>()> printers;  // in the system's order
  SettingOf setting = nullptr;                          // of GNOME and its kin
};

// Those of the machine that this program runs on.
WmiSources sourcesOfThisMachine(std::function<std::vector<PrinterFacts>()> printers);

// Answers "Select * from CLASS" for the classes of the list in linux_wmi.cpp. The names of
// classes and the words of a query ignore case. A class that is not there fails with the first
// object, as the service's semisynchronous answers do. The machine is looked at with the first
// object that is taken, anew for each query.
//
// Every object has all the properties that the report prints; what the machine does not tell is
// null. States of the computer that the report tells by a word have the code of their class for
// "unknown" instead.
class LinuxWmi : public Wmi {
 public:
  explicit LinuxWmi(WmiSources sources)
      : sources_(std::make_shared<const WmiSources>(std::move(sources))) {}

  // Throws StatementFailed for another machine than this one, which is ".", "localhost" or its
  // own name, and for another namespace than root\cimv2.
  std::unique_ptr<WmiService> connect(const std::string& moniker) override;

 private:
  std::shared_ptr<const WmiSources> sources_;
};

}  // namespace veltrin
