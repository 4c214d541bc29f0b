// Facts about the machine, asked for in the query language of WMI.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "text/loose.h"
#include "text/statement.h"

namespace veltrin {

// One object of an answer: its properties by name.
class WmiObject {
 public:
  std::map<std::string, Loose> properties;

  // Throws StatementFailed for a property that cannot be read.
  const Loose& value(const std::string& name) const {
    const auto found = properties.find(name);
    if (found == properties.end()) {
      throw StatementFailed("No such property", kInvalidProcedureCall);
    }
    return found->second;
  }
};

class Wmi {
 public:
  virtual ~Wmi() = default;

  // The objects that a query ("Select * from Win32_PhysicalMemory") finds. Throws
  // StatementFailed when the service does not answer it.
  virtual std::vector<WmiObject> ExecQuery(const std::string& query) = 0;
};

}  // namespace veltrin
