// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/update_endpoint/accept_failure.h"

#include <cerrno>

namespace veltrin::endpoint {

AcceptFailure acceptFailureOf(int code) {
  switch (code) {
    case EAGAIN:
      return AcceptFailure::NobodyWaits;
    case EMFILE:
    case ENFILE:
    case ENOBUFS:
    case ENOMEM:
      return AcceptFailure::NothingLeft;
    case EBADF:
    case EFAULT:
    case EINVAL:
    case ENOTSOCK:
    case EOPNOTSUPP:
      return AcceptFailure::Broken;
    default:
      return AcceptFailure::CallerIsGone;
  }
}

}  // namespace veltrin::endpoint
