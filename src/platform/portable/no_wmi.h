// The facts of WMI while nothing answers for them.
#pragma once

#include <memory>
#include <string>

#include "platform/wmi.h"

namespace veltrin {

// No machine has a service that answers.
class NoWmi : public Wmi {
 public:
  std::unique_ptr<WmiService> connect(const std::string& moniker) override {
    throw StatementFailed("Nothing answers at " + moniker, kInvalidProcedureCall);
  }
};

}  // namespace veltrin
