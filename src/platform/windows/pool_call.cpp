// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/pool_call.h"

#include <memory>
#include <utility>
#include <windows.h>

namespace veltrin {
namespace {

// The thread and its starter share it, so that it outlives whichever is done first.
struct PoolCall {
  PoolCall(std::function<void()> toDo, HANDLE event) : work(std::move(toDo)), done(event) {}
  ~PoolCall() { CloseHandle(done); }
  PoolCall(const PoolCall&) = delete;
  PoolCall& operator=(const PoolCall&) = delete;

  std::function<void()> work;
  HANDLE done;
};

DWORD CALLBACK run(void* share) {
  const std::unique_ptr<std::shared_ptr<PoolCall>> owned(
      static_cast<std::shared_ptr<PoolCall>*>(share));
  (*owned)->work();
  SetEvent((*owned)->done);
  return 0;
}

}  // namespace

bool callInPool(std::function<void()> work, const WhileSilent& whileSilent) {
  const HANDLE done = CreateEventA(nullptr, TRUE, FALSE, nullptr);
  if (done == nullptr) return false;
  const auto call = std::make_shared<PoolCall>(std::move(work), done);
  auto share = std::make_unique<std::shared_ptr<PoolCall>>(call);
  if (QueueUserWorkItem(run, share.get(), WT_EXECUTELONGFUNCTION) == FALSE) return false;
  static_cast<void>(share.release());  // now the thread's
  whileSilent(done);
  WaitForSingleObject(done, INFINITE);
  return true;
}

}  // namespace veltrin
