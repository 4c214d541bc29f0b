// SPDX-License-Identifier: GPL-3.0-or-later
// Reads of URLs by Qt's sockets.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "platform/downloads.h"
#include "platform/portable/host_addresses.h"
#include "platform/qt/host_lookup.h"

namespace veltrin {

// No call waits, and every routine is told from the event loop; neither a read that is given
// up nor the end of the program waits for anybody. A read may outlive this object.
//
// A body is what an answer of the status 200 to 299 brings, as it comes. An answer of any
// other status fails the read at once and brings no bytes, but for one that tells another
// place to look at, up to 20 times. A head of more than 256 KB fails the read, too, and so
// does a body for which there is no memory. A server that is silent is waited for without an
// end. The user and the password of a URL are told to nobody.
class QtDownloads : public Downloads {
 public:
  explicit QtDownloads(HostLookup::Resolver resolver = addressesOf)
      : resolver_(std::move(resolver)) {}

  std::unique_ptr<Read> AsyncRead(const std::string& target, int asyncType,
                                  const std::string& propertyName, int options,
                                  Routines routines) override;

 private:
  HostLookup::Resolver resolver_;
};

}  // namespace veltrin
