// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/simulated_printers.h"

#include <algorithm>
#include <utility>

#include "text/statement.h"

namespace veltrin {
namespace {

// What is printed becomes a job at the EndDoc behind it.
class SimulatedPrinter : public Printer {
 public:
  SimulatedPrinter(SimulatedPrinters& printers, std::string deviceName)
      : printers_(printers), deviceName_(std::move(deviceName)) {}

  void setProperties(const PrinterProperties& properties) override {
    printers_.note("set " + properties.FontName + " " + std::to_string(properties.Copies) + " " +
                   std::to_string(static_cast<int>(properties.FontSize)) + " " +
                   std::to_string(properties.Orientation));
    properties_ = properties;
  }

  void Print(const std::string& text) override {
    printers_.note("print");
    if (printers_.jobsUntilRefusal == 0) {
      ++printers_.refusals;
      throw StatementFailed("Printer error");
    }
    text_ += text;
    hasPrinted_ = true;
  }

  void EndDoc() override {
    printers_.note("end");
    if (!std::exchange(hasPrinted_, false)) return;
    if (printers_.jobsUntilRefusal > 0) --printers_.jobsUntilRefusal;
    printers_.jobs.push_back({deviceName_, properties_, std::exchange(text_, {})});
  }

 private:
  SimulatedPrinters& printers_;
  std::string deviceName_;
  PrinterProperties properties_;
  std::string text_;
  bool hasPrinted_ = false;
};

}  // namespace

std::vector<std::string> SimulatedPrinters::deviceNames() {
  if (tellsNothing) throw StatementFailed("No answer");
  return names;
}

std::string SimulatedPrinters::defaultDeviceName() {
  if (tellsNothing) throw StatementFailed("No answer");
  return defaultName;
}

std::unique_ptr<Printer> SimulatedPrinters::open(const std::string& deviceName) {
  note("open " + deviceName);
  if (std::find(names.begin(), names.end(), deviceName) == names.end()) {
    ++refusals;
    throw StatementFailed("No such printer: " + deviceName);
  }
  return std::make_unique<SimulatedPrinter>(*this, deviceName);
}

}  // namespace veltrin
