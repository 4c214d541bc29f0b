// A system without printers.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/printers.h"
#include "text/statement.h"

namespace veltrin {

class NoPrinters : public Printers {
 public:
  std::vector<std::string> deviceNames() override { return {}; }
  std::string defaultDeviceName() override { return {}; }
  std::unique_ptr<Printer> open(const std::string& deviceName) override {
    throw StatementFailed("No such printer: " + deviceName);
  }
};

}  // namespace veltrin
