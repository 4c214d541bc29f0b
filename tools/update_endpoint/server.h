// SPDX-License-Identifier: GPL-3.0-or-later
// The server: one thread that waits for whatever happens on any of its sockets.
//
// A caller is answered the moment it is accepted. What follows is courtesy: were the
// connection closed at once, with something in it that the caller sent and nobody read,
// the kernel would reset it, and a caller that is told of a reset may lose the answer
// that it has not read yet. So the server ends its own direction only, reads away what
// comes, and closes when the caller has closed or its time is over. As everybody who
// stands has been answered, whoever stands longest can be let go whenever room is
// needed, and nobody can keep others out by standing there.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <sys/epoll.h>
#include <vector>

#include "tools/update_endpoint/address.h"
#include "tools/update_endpoint/caller_book.h"
#include "tools/update_endpoint/descriptor.h"
#include "tools/update_endpoint/limits.h"
#include "tools/update_endpoint/listeners.h"

namespace veltrin::endpoint {

class Server {
 public:
  // `endSignals` becomes readable when the server is to end. Throws CannotServe.
  Server(std::string version, const Limits& limits, std::vector<Listener> listeners,
         Descriptor endSignals);

  // Serves until it is to end. Whoever waits in the queue of a listener that is the
  // server's alone is answered before it returns. Throws CannotServe when a listener
  // fails for good.
  void run();

 private:
  // Events taken from the kernel at a time.
  static constexpr std::size_t kBatch = 256;
  using Events = std::array<epoll_event, kBatch>;

  void watch(int descriptor, std::uint32_t events, std::uint64_t mark);
  int takeEvents(Events& events, int milliseconds);
  int millisecondsToWait() const;
  void handleCaller(const epoll_event& event);
  void handleListener(const epoll_event& event);
  bool acceptSome(const Listener& listener);
  void welcome(Descriptor socket, const Address& address);
  void enter(Descriptor socket, const Address& address);
  void read(CallerId caller);
  void stopReading(CallerId caller);
  void lookAtCallers();
  bool makeRoom();
  void letGo(CallerId caller);
  void letOverdueGo();
  void rest();
  void endRest();
  void armListeners(bool armed);
  void answerTheLast();

  std::string version_;
  CallerBook book_;
  std::vector<Listener> listeners_;
  Descriptor endSignals_;
  Descriptor epoll_;
  std::vector<Descriptor> sockets_;  // of the callers, by slot
  Moment now_;
  Moment restsUntil_;
  bool rests_ = false;  // whether accepting pauses
  bool ends_ = false;
};

}  // namespace veltrin::endpoint
