// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/update_endpoint/accept_failure.h"

#include <cerrno>
#include <gtest/gtest.h>

namespace veltrin::endpoint {
namespace {

TEST(AcceptFailure, OfAnEmptyQueueMeansThatNobodyWaits) {
  EXPECT_EQ(acceptFailureOf(EAGAIN), AcceptFailure::NobodyWaits);
}

TEST(AcceptFailure, OfOneCallerSaysNothingAboutTheNext) {
  for (const int code : {ECONNABORTED, EINTR, EPROTO, EPERM, ENETDOWN, ENOPROTOOPT, EHOSTDOWN,
                         ENONET, EHOSTUNREACH, ENETUNREACH, ETIMEDOUT}) {
    EXPECT_EQ(acceptFailureOf(code), AcceptFailure::CallerIsGone) << code;
  }
}

TEST(AcceptFailure, ForWantOfDescriptorsOrMemoryLeavesTheCallerWaiting) {
  for (const int code : {EMFILE, ENFILE, ENOBUFS, ENOMEM}) {
    EXPECT_EQ(acceptFailureOf(code), AcceptFailure::NothingLeft) << code;
  }
}

TEST(AcceptFailure, OfTheSocketItselfIsForGood) {
  for (const int code : {EBADF, EINVAL, ENOTSOCK, EOPNOTSUPP, EFAULT}) {
    EXPECT_EQ(acceptFailureOf(code), AcceptFailure::Broken) << code;
  }
}

}  // namespace
}  // namespace veltrin::endpoint
