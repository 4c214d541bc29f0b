// SPDX-License-Identifier: GPL-3.0-or-later
// Printers whose paper a test reads.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/printers.h"
#include "support/journal.h"

namespace veltrin {

class SimulatedPrinters : public Printers, public Journalled {
 public:
  using Journalled::note;

  struct Job {
    std::string deviceName;
    PrinterProperties properties;  // when its text was printed
    std::string text;
    friend bool operator==(const Job&, const Job&) = default;
  };

  std::vector<std::string> names{"Laser", "Ink"};
  std::string defaultName = "Ink";
  bool tellsNothing = false;  // the system fails to name its printers
  int jobsUntilRefusal = -1;  // the printer takes so many more jobs, and refuses the next
  std::vector<Job> jobs;
  int refusals = 0;  // of pages, and of printers that are not there

  std::vector<std::string> deviceNames() override;
  std::string defaultDeviceName() override;
  std::unique_ptr<Printer> open(const std::string& deviceName) override;
};

}  // namespace veltrin
