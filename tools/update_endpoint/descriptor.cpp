// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/update_endpoint/descriptor.h"

#include <cerrno>
#include <system_error>
#include <unistd.h>

namespace veltrin::endpoint {

void Descriptor::reset() {
  if (number_ >= 0) close(number_);
  number_ = -1;
}

void failWithErrno(const std::string& what) {
  const int code = errno;
  throw CannotServe(what + ": " + std::generic_category().message(code));
}

Descriptor opened(int number, const std::string& what) {
  if (number < 0) failWithErrno(what);
  return Descriptor(number);
}

}  // namespace veltrin::endpoint
