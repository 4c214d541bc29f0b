// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/output.h"

#include <cerrno>
#include <ctime>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace veltrin {
namespace {

// A reader that is awake empties the pipe within a few of these; the pauses are
// the 50 ms and somewhat more that an idle one is waited for.
constexpr int kYields = 20;
constexpr int kPauses = 500;
constexpr timespec kPause{0, 100'000};

}  // namespace

bool FileOutput::write(std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(file_, text.data(), text.size());
    if (written < 0) {
      if (errno == EINTR) {
        continue;
      }
      return false;
    }
    text.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

void FileOutput::letReaderCatchUp() {
  struct stat kind {};
  if (fstat(file_, &kind) != 0 || !S_ISFIFO(kind.st_mode)) {
    return;
  }
  for (int round = 0; round < kYields + kPauses; ++round) {
    int unread = 0;
    if (ioctl(file_, FIONREAD, &unread) != 0 || unread == 0) {
      return;
    }
    if (round < kYields) {
      sched_yield();
    } else {
      nanosleep(&kPause, nullptr);
    }
  }
}

}  // namespace veltrin
