// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/side_call.h"

#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include <QTimer>

#include "platform/qt/later.h"
#include "text/statement.h"

namespace veltrin {

// Whoever has the lock may rely on the sleeper.
struct SideCall::State {
  std::mutex lock;
  bool hasReturned = false;
  Later* sleeper = nullptr;  // none: nobody waits

  void end() {
    const std::lock_guard<std::mutex> locked(lock);
    hasReturned = true;
    if (sleeper != nullptr) sleeper->call([] {});  // ends the sleep of the event loop
  }

  // Returns whether the call has returned.
  bool setSleeper(Later* later) {
    const std::lock_guard<std::mutex> locked(lock);
    sleeper = later;
    return hasReturned;
  }
};

SideCall::SideCall(std::function<void()> work) : state_(std::make_shared<State>()) {
  try {
    std::thread([state = state_, work = std::move(work)] {
      work();
      state->end();
    }).detach();
  } catch (const std::system_error& failure) {
    throw StatementFailed(failure.what());
  }
}

bool SideCall::wait(QtEventLoop& events, std::chrono::milliseconds longest) {
  Later wake;
  bool hasReturned = state_->setSleeper(&wake);
  bool isOver = longest <= std::chrono::milliseconds::zero();
  QTimer end;
  end.setSingleShot(true);
  end.setTimerType(Qt::PreciseTimer);
  end.callOnTimeout([&] { isOver = true; });
  if (!isOver) end.start(longest);
  while (!hasReturned && !isOver) {
    events.sleep();
    hasReturned = state_->setSleeper(&wake);
  }
  return state_->setSleeper(nullptr);
}

}  // namespace veltrin
