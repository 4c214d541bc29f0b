// SPDX-License-Identifier: GPL-3.0-or-later
// The web server of the lab's web hosts: real sockets, a known rate, a pause at a known
// place.
#pragma once

#include <memory>
#include <thread>
#include <vector>

#include "lab/descriptor.h"
#include "lab/web_site.h"

namespace veltrin::lab {

// A listening socket, which never blocks, and what is served there.
struct WebDoor {
  Descriptor listener;
  WebSite site;
};

// Serves on a thread of its own for as long as it lives. Each answer has the rate of its
// site by itself, and its own pause. A client that leaves, stays silent or takes nothing
// keeps no other waiting.
class WebServer {
 public:
  // Throws CannotRun.
  explicit WebServer(std::vector<WebDoor> doors);
  ~WebServer();
  WebServer(const WebServer&) = delete;
  WebServer& operator=(const WebServer&) = delete;

 private:
  std::vector<WebDoor> doors_;
  Descriptor end_;  // readable when the thread is to end
  std::thread thread_;
};

}  // namespace veltrin::lab
