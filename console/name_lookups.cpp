// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/name_lookups.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <deque>
#include <mutex>
#include <netdb.h>
#include <string_view>
#include <sys/eventfd.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

#include "console/socket_addresses.h"

namespace veltrin {
namespace {

// A path's hops are all looked up at once; a longer path's last ones wait a little.
constexpr int kMostThreads = 32;

}  // namespace

struct NameLookups::Shared {
  Shared() = default;
  Shared(const Shared&) = delete;
  Shared& operator=(const Shared&) = delete;
  ~Shared() {
    if (signal >= 0) {
      close(signal);
    }
  }

  // Counts the answers that nobody has taken yet.
  const int signal = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK | EFD_SEMAPHORE);
  std::mutex guard;  // of all below
  std::deque<Address> asked;
  std::deque<NameAnswer> ended;
  int threads = 0;
};

bool isHostName(std::string_view text) {
  constexpr std::string_view kSigns = "-._";
  return !text.empty() && std::all_of(text.begin(), text.end(), [kSigns](char c) {
    const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    return isLetter || (c >= '0' && c <= '9') || kSigns.find(c) != std::string_view::npos;
  });
}

std::optional<std::string> lookUpName(const Address& address) {
  const SocketAddress form = toSocketAddress(address);
  std::array<char, NI_MAXHOST> name{};
  if (getnameinfo(&form.any, sizeOf(address.family), name.data(), name.size(), nullptr, 0,
                  NI_NAMEREQD) != 0) {
    return std::nullopt;
  }
  return isHostName(name.data()) ? std::optional<std::string>(name.data()) : std::nullopt;
}

void NameLookups::begin(const Address& address) {
  if (!shared_) {
    shared_ = std::make_shared<Shared>();
  }
  const std::lock_guard lock(shared_->guard);
  shared_->asked.push_back(address);
  if (shared_->threads == kMostThreads) {
    return;
  }
  try {
    std::thread([shared = shared_] { work(shared); }).detach();
    ++shared_->threads;
  } catch (const std::system_error&) {
    // No room for one more: those that run take it, or the address goes unnamed.
  }
}

// Looks names up until none is asked for.
void NameLookups::work(const std::shared_ptr<Shared>& shared) {
  std::unique_lock lock(shared->guard);
  while (!shared->asked.empty()) {
    const Address address = shared->asked.front();
    shared->asked.pop_front();
    lock.unlock();
    NameAnswer answer{address, lookUpName(address)};
    lock.lock();
    shared->ended.push_back(std::move(answer));
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = write(shared->signal, &one, sizeof one);
  }
  --shared->threads;
}

std::optional<NameAnswer> NameLookups::take() {
  if (!shared_) {
    return std::nullopt;
  }
  const std::lock_guard lock(shared_->guard);
  if (shared_->ended.empty()) {
    return std::nullopt;
  }
  std::uint64_t count = 0;
  [[maybe_unused]] const ssize_t taken = read(shared_->signal, &count, sizeof count);
  NameAnswer answer = std::move(shared_->ended.front());
  shared_->ended.pop_front();
  return answer;
}

int NameLookups::file() const { return shared_ ? shared_->signal : -1; }

}  // namespace veltrin
