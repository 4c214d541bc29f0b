// Downloads while nothing fetches them.
#pragma once

#include <memory>
#include <string>

#include "platform/downloads.h"
#include "text/statement.h"

namespace veltrin {

// Every read fails at once.
class NoDownloads : public Downloads {
 public:
  std::unique_ptr<Read> AsyncRead(const std::string& target, int /*asyncType*/,
                                  const std::string& /*propertyName*/, int /*options*/,
                                  Routines /*routines*/) override {
    throw StatementFailed("Nothing fetches " + target, kInvalidProcedureCall);
  }
};

}  // namespace veltrin
