// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame/winsock.h"

#include <utility>

#include "forms/form.h"

namespace veltrin {

// The routine of an arrival on the stack. What came meanwhile is told behind it, even if a
// failure left it.
class Winsock::Arriving {
 public:
  explicit Arriving(Winsock& socket) : socket_(socket) { socket_.arriving_ = true; }
  ~Arriving() {
    socket_.arriving_ = false;
    if (socket_.untold_) socket_.postArrival();
  }
  Arriving(const Arriving&) = delete;
  Arriving& operator=(const Arriving&) = delete;

 private:
  Winsock& socket_;
};

Winsock::Winsock(Platform& platform)
    : platform_(platform),
      socket_(platform.sockets.makeTcpSocket({[this] { arrive(); },
                                              [this] { postOfThisUse([this] { raise(Closed); }); },
                                              [this](std::intptr_t request) {
                                                postOfThisUse([this, request] {
                                                  if (ConnectionRequest)
                                                    raise([&] { ConnectionRequest(request); });
                                                });
                                              }})) {}

void Winsock::Connect() {
  giveUp();
  socket_->connect(RemoteHost, static_cast<std::uint16_t>(RemotePort),
                   static_cast<std::uint16_t>(LocalPort));
}

void Winsock::Listen() {
  giveUp();
  socket_->listen(static_cast<std::uint16_t>(LocalPort));
}

void Winsock::Close() {
  giveUp();
  socket_->close();
}

void Winsock::SendData(const std::string& text) {
  if (!text.empty()) socket_->send(text);
}

void Winsock::giveUp() {
  ++use_;
  untold_ = false;
}

void Winsock::post(EventRoutine routine) {
  if (form() == nullptr) return;
  platform_.events.gate().post([window = form()->weak_from_this(), routine = std::move(routine)] {
    if (const auto alive = window.lock()) routine();
  });
}

void Winsock::postOfThisUse(EventRoutine routine) {
  post([this, use = use_, routine = std::move(routine)] {
    if (use == use_) routine();
  });
}

void Winsock::arrive() {
  if (std::exchange(untold_, true) || arriving_) return;
  postArrival();
}

void Winsock::postArrival() {
  post([this] { deliverArrival(); });
}

void Winsock::deliverArrival() {
  if (!std::exchange(untold_, false)) return;
  const Arriving arriving(*this);
  raise(DataArrival);
}

}  // namespace veltrin
