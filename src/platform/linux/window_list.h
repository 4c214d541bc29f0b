// SPDX-License-Identifier: GPL-3.0-or-later
// The titles of the windows that all running copies of the program have on the screen.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace veltrin {

// Every running copy keeps two files in one folder of the user's: a lock, named by the
// number of its process and locked as long as it lives, and beside it its titles. A
// lock that nobody holds belongs to a copy that has gone; its files are removed by
// whoever comes upon them. Without a usable folder a copy sees its own titles alone.
class WindowList {
 public:
  // veltrin/windows below $XDG_RUNTIME_DIR, or where that is not set, a folder of the
  // user's in /tmp.
  static std::string defaultFolder();

  // Makes the folder, for the user alone, when it is missing. One that others may
  // write to is not used.
  explicit WindowList(std::string folder = defaultFolder());
  ~WindowList();
  WindowList(const WindowList&) = delete;
  WindowList& operator=(const WindowList&) = delete;

  // Replaces this copy's titles.
  void publish(std::vector<std::string> titles);

  // The number of a process that has a window of exactly that title, this one first;
  // 0 when there is none.
  std::uint32_t find(const std::string& title) const;

 private:
  void takeLock();
  std::vector<std::string> titlesOf(const std::string& name) const;
  bool isLive(const std::string& name) const;
  std::string path(const std::string& name) const { return folder_ + "/" + name; }

  std::string folder_;
  std::string name_;  // of this copy's lock; empty when it has none
  int lock_ = -1;
  std::vector<std::string> titles_;
};

}  // namespace veltrin
