// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/com_thread.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <objbase.h>
#include <system_error>
#include <thread>
#include <windows.h>

#include "text/statement.h"

namespace veltrin {
namespace {

// Signalled when a call has returned; the thread and the caller share it.
class Returned {
 public:
  Returned() : event_(CreateEventA(nullptr, TRUE, FALSE, nullptr)) {
    if (event_ == nullptr) throw StatementFailed("The system has no event to give");
  }
  ~Returned() { CloseHandle(event_); }
  Returned(const Returned&) = delete;
  Returned& operator=(const Returned&) = delete;

  HANDLE event() const { return event_; }

 private:
  HANDLE event_;
};

// COM on this thread, as long as this lives.
class Apartment {
 public:
  Apartment() : result_(CoInitializeEx(nullptr, COINIT_MULTITHREADED)) {}
  ~Apartment() {
    if (SUCCEEDED(result_)) CoUninitialize();
  }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;

 private:
  HRESULT result_;
};

}  // namespace

struct ComThread::State {
  std::mutex lock;
  std::condition_variable changed;
  std::deque<std::function<void()>> works;
  bool isEnding = false;  // no more work comes
  bool hasEnded = false;

  // Nothing when all is done and no more comes.
  std::function<void()> nextWork() {
    std::unique_lock<std::mutex> locked(lock);
    changed.wait(locked, [this] { return !works.empty() || isEnding; });
    if (works.empty()) return nullptr;
    std::function<void()> work = std::move(works.front());
    works.pop_front();
    return work;
  }

  void run() {
    {
      const Apartment apartment;
      while (const std::function<void()> work = nextWork()) work();
    }
    const std::lock_guard<std::mutex> locked(lock);
    hasEnded = true;
    changed.notify_all();
  }
};

ComThread::ComThread(WhileSilent whileSilent, std::chrono::milliseconds longestEnd)
    : whileSilent_(std::move(whileSilent)),
      longestEnd_(longestEnd),
      state_(std::make_shared<State>()) {
  try {
    std::thread([state = state_] { state->run(); }).detach();
  } catch (const std::system_error& failure) {
    throw StatementFailed(failure.what());
  }
}

ComThread::~ComThread() {
  std::unique_lock<std::mutex> locked(state_->lock);
  state_->isEnding = true;
  state_->changed.notify_all();
  state_->changed.wait_for(locked, longestEnd_, [this] { return state_->hasEnded; });
}

void ComThread::post(std::function<void()> work) {
  const std::lock_guard<std::mutex> locked(state_->lock);
  state_->works.push_back(std::move(work));
  state_->changed.notify_all();
}

void ComThread::postAndWait(std::function<void()> work) {
  const auto returned = std::make_shared<Returned>();
  post([work = std::move(work), returned] {
    work();
    SetEvent(returned->event());
  });
  if (whileSilent_) whileSilent_(returned->event());
  WaitForSingleObject(returned->event(), INFINITE);
}

}  // namespace veltrin
