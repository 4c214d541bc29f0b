#include "frame/winsock.h"

#include <utility>

#include "forms/form.h"
#include "text/statement.h"

namespace veltrin {
namespace {

// Marks that a routine is on the stack, also when it is left by a failure.
class OnStack {
 public:
  explicit OnStack(bool& mark) : mark_(mark) { mark_ = true; }
  ~OnStack() { mark_ = false; }
  OnStack(const OnStack&) = delete;
  OnStack& operator=(const OnStack&) = delete;

 private:
  bool& mark_;
};

}  // namespace

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
  untold_ = true;
  if (arrivalPosted_ || arriving_) return;
  arrivalPosted_ = true;
  post([this] { deliverArrival(); });
}

// What came meanwhile is told behind the routine, even if that was left by a failure.
void Winsock::deliverArrival() {
  arrivalPosted_ = false;
  if (!untold_) return;
  untold_ = false;
  try {
    const OnStack arriving(arriving_);
    raise(DataArrival);
  } catch (const StatementFailed&) {
    if (untold_) arrive();
    throw;
  }
  if (untold_) arrive();
}

}  // namespace veltrin
