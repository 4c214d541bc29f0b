// SPDX-License-Identifier: GPL-3.0-or-later
#include "lab/descriptor.h"

#include <cerrno>
#include <system_error>

namespace veltrin::lab {

void failWithErrno(const std::string& what) {
  const int code = errno;
  throw CannotRun(what + ": " + std::generic_category().message(code));
}

}  // namespace veltrin::lab
