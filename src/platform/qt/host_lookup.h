// SPDX-License-Identifier: GPL-3.0-or-later
// Looks up a name without holding up anybody.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/qt/later.h"

namespace veltrin {

// One lookup on a thread of its own. When the lookup goes before its answer has come,
// the answer is dropped: neither that nor the end of the program waits for a resolver
// that never answers.
class HostLookup {
 public:
  // Finds the addresses of a host, in numbers; runs on the lookup's thread.
  using Resolver = std::function<std::vector<std::string>(const std::string& host)>;
  using Answer = std::function<void(const std::vector<std::string>& addresses)>;

  // Starts at once. `answer` is called from the event loop, with no addresses when there
  // are none; it may destroy the lookup.
  HostLookup(const Resolver& resolver, const std::string& host, Answer answer);
  ~HostLookup();
  HostLookup(const HostLookup&) = delete;
  HostLookup& operator=(const HostLookup&) = delete;

 private:
  struct Wish;

  std::shared_ptr<Wish> wish_;  // shared with the thread
  Later receiver_;
};

}  // namespace veltrin
