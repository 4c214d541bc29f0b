// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/host_lookup.h"

#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace veltrin {

// What the lookup and its thread both know. Whoever has the lock may rely on the
// receiver.
struct HostLookup::Wish {
  std::mutex lock;
  Later* receiver = nullptr;  // none: nobody wants the answer any more
  Answer answer;

  void fulfil(std::vector<std::string> addresses) {
    const std::lock_guard<std::mutex> locked(lock);
    if (receiver == nullptr) return;
    receiver->call([answer = answer, addresses = std::move(addresses)] { answer(addresses); });
  }
};

HostLookup::HostLookup(const Resolver& resolver, const std::string& host, Answer answer)
    : wish_(std::make_shared<Wish>()) {
  wish_->receiver = &receiver_;
  wish_->answer = std::move(answer);
  try {
    std::thread([wish = wish_, resolver, host] { wish->fulfil(resolver(host)); }).detach();
  } catch (const std::system_error&) {
    wish_->fulfil({});  // the system has no thread to give
  }
}

HostLookup::~HostLookup() {
  const std::lock_guard<std::mutex> locked(wish_->lock);
  wish_->receiver = nullptr;
}

}  // namespace veltrin
