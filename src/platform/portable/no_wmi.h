// The facts of WMI while nothing answers for them.
#pragma once

#include <string>
#include <vector>

#include "platform/wmi.h"

namespace veltrin {

// A service that does not answer: every query fails.
class NoWmi : public Wmi {
 public:
  std::vector<WmiObject> ExecQuery(const std::string& query) override {
    throw StatementFailed("Nothing answers the query: " + query, kInvalidProcedureCall);
  }
};

}  // namespace veltrin
