// SPDX-License-Identifier: GPL-3.0-or-later
// Reads of URLs in the background.
#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace veltrin {

// Of AsyncRead: the body is wanted as bytes (vbAsyncTypeByteArray), and no copy of it that
// a cache holds (vbAsyncReadForceUpdate).
inline constexpr int kAsyncTypeByteArray = 2;
inline constexpr int kAsyncReadForceUpdate = 16;

// A count of bytes as a field of 32 bits takes it up: one that is too large is the largest,
// 2147483647, so that a large body never looks like none.
constexpr std::int32_t countIn32Bits(std::int64_t bytes) {
  constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(bytes < most ? bytes : most);
}

// What is told of a read under way, or of its end.
struct AsyncProperty {
  std::string PropertyName;  // the name that the read was given

  // Bytes that have come, as countIn32Bits.
  std::int32_t BytesRead = 0;

  // The size of the whole, as countIn32Bits. Under way it is what the server announced, 0
  // as long as that is nothing. At the end it is what has come, and 0 for an empty body and
  // for a read that failed: no such host, an answer that tells of an error, a body that broke
  // off.
  std::int32_t BytesMax = 0;

  // At the end of a read that did not fail: the body, in pieces, in order.
  std::vector<std::string> Value;

  // Bytes that have come, whatever became of the read.
  std::int64_t arrived = 0;
};

class Downloads {
 public:
  // A read under way, or at its end. Destroying it gives it up: its connection is closed,
  // and nothing more is told of it.
  class Read {
   public:
    virtual ~Read() = default;
  };

  // Told from the pump and never from within a call of this class; a routine may destroy
  // the read. What has come since the last progress is told as one.
  struct Routines {
    std::function<void(const AsyncProperty&)> progress;
    std::function<void(AsyncProperty)> complete;  // once, behind all progress
  };

  virtual ~Downloads() = default;

  // Starts a read of an http or https URL. Redirections are followed, but never from https
  // to http; a body is taken as it comes, unpacked by nobody. It lies in memory once, and
  // takes no memory for what has not come. Any number of reads may run at a time, also
  // under one name. Throws StatementFailed (5) for a text that is no such URL.
  virtual std::unique_ptr<Read> AsyncRead(const std::string& target, int asyncType,
                                          const std::string& propertyName, int options,
                                          Routines routines) = 0;
};

}  // namespace veltrin
