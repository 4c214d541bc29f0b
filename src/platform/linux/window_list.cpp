// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/window_list.h"

#include <algorithm>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "platform/portable/atomic_file.h"

namespace veltrin {
namespace {

constexpr const char* kTitles = ".titles";  // end of the name of a file of titles
constexpr char kEndOfTitle = '\0';
constexpr mode_t kForUserAlone = 0700;
constexpr mode_t kFileForUserAlone = 0600;
constexpr int kMostCopiesInProcess = 10;

bool isOwnFolder(const std::string& folder) {
  struct stat status {};
  return lstat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
         status.st_uid == geteuid() && (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

// Makes a folder and those above it. False when it or the one above it is not the
// user's own.
bool makeOwnFolder(const std::string& folder) {
  for (std::size_t end = folder.find('/', 1); end != std::string::npos;
       end = folder.find('/', end + 1)) {
    mkdir(folder.substr(0, end).c_str(), kForUserAlone);
  }
  mkdir(folder.c_str(), kForUserAlone);
  return isOwnFolder(folder) && isOwnFolder(folder.substr(0, folder.rfind('/')));
}

// Whether an open file is still the one under its name.
bool isStillThere(int file, const std::string& path) {
  struct stat open {};
  struct stat named {};
  return fstat(file, &open) == 0 && stat(path.c_str(), &named) == 0 &&
         open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

std::vector<std::string> namesIn(const std::string& folder) {
  const std::unique_ptr<DIR, int (*)(DIR*)> listing(opendir(folder.c_str()), closedir);
  std::vector<std::string> names;
  if (listing == nullptr) return names;
  while (const dirent* entry = readdir(listing.get())) names.emplace_back(entry->d_name);
  return names;
}

// The number at the start of a lock's name; 0 for the names of other files.
std::uint32_t processOf(const std::string& name) {
  if (name.empty() || name.find_first_not_of("0123456789-") != std::string::npos) return 0;
  return static_cast<std::uint32_t>(std::strtoul(name.c_str(), nullptr, 10));
}

}  // namespace

std::string WindowList::defaultFolder() {
  const char* runtime = std::getenv("XDG_RUNTIME_DIR");
  if (runtime != nullptr && runtime[0] == '/') return std::string(runtime) + "/veltrin/windows";
  return "/tmp/veltrin-" + std::to_string(geteuid()) + "/windows";
}

WindowList::WindowList(std::string folder) : folder_(std::move(folder)) {
  if (makeOwnFolder(folder_)) takeLock();
}

// The titles go first: a lock without titles is a copy that shows nothing.
WindowList::~WindowList() {
  if (lock_ < 0) return;
  unlink(path(name_ + kTitles).c_str());
  unlink(path(name_).c_str());
  close(lock_);
}

// Several lists in one process have names of their own. Another copy may take the file
// for that of one that has gone and remove it just before it is locked: then once more.
void WindowList::takeLock() {
  const std::string process = std::to_string(getpid());
  for (int copy = 0; copy < kMostCopiesInProcess; ++copy) {
    const std::string name = copy == 0 ? process : process + "-" + std::to_string(copy);
    const int file =
        open(path(name).c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, kFileForUserAlone);
    if (file < 0) return;
    if (flock(file, LOCK_EX | LOCK_NB) == 0 && isStillThere(file, path(name))) {
      lock_ = file;
      name_ = name;
      unlink(path(name + kTitles).c_str());  // of an earlier process of this number
      return;
    }
    close(file);
  }
}

void WindowList::publish(std::vector<std::string> titles) {
  titles_ = std::move(titles);
  if (lock_ < 0) return;
  std::string text;
  for (const std::string& title : titles_) text += title + kEndOfTitle;
  replaceFile(path(name_ + kTitles), text);
}

std::uint32_t WindowList::find(const std::string& title) const {
  const auto holds = [&title](const std::vector<std::string>& titles) {
    return std::find(titles.begin(), titles.end(), title) != titles.end();
  };
  if (holds(titles_)) return static_cast<std::uint32_t>(getpid());
  if (lock_ < 0) return 0;
  for (const std::string& name : namesIn(folder_)) {
    const std::uint32_t process = processOf(name);
    if (process == 0 || name == name_ || !isLive(name)) continue;
    if (holds(titlesOf(name))) return process;
  }
  return 0;
}

// A lock that can be had is one that nobody holds.
bool WindowList::isLive(const std::string& name) const {
  const int file = open(path(name).c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW);
  if (file < 0) return false;
  const bool stale = flock(file, LOCK_EX | LOCK_NB) == 0;
  if (stale && isStillThere(file, path(name))) {
    unlink(path(name + kTitles).c_str());
    unlink(path(name).c_str());
  }
  close(file);
  return !stale;
}

std::vector<std::string> WindowList::titlesOf(const std::string& name) const {
  std::string text;
  std::vector<std::string> titles;
  if (readWholeFile(path(name + kTitles), text)) return titles;
  std::size_t start = 0;
  for (std::size_t end = text.find(kEndOfTitle); end != std::string::npos;
       end = text.find(kEndOfTitle, start)) {
    titles.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  return titles;
}

}  // namespace veltrin
