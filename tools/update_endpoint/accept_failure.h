// SPDX-License-Identifier: GPL-3.0-or-later
// What to make of an accept that failed.
#pragma once

namespace veltrin::endpoint {

enum class AcceptFailure {
  NobodyWaits,   // the queue is empty
  CallerIsGone,  // this caller failed; the next may not
  NothingLeft,   // no descriptor or no memory is left; the caller still waits
  Broken,        // the socket is not fit to accept, and never will be
};

// By errno. Linux hands what happened to a new connection on as a failure of accept
// (accept(2), "Error handling"); such a caller is gone, and that is all.
AcceptFailure acceptFailureOf(int code);

}  // namespace veltrin::endpoint
