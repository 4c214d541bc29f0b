// SPDX-License-Identifier: GPL-3.0-or-later
// A folder that stands for the root of a machine's files while a test runs.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <unistd.h>

#include "machine/file_tree.h"

namespace veltrin {

class TemporaryTree {
 public:
  TemporaryTree() : folder_(place() + "systeminfo-XXXXXX") {
    if (mkdtemp(folder_.data()) == nullptr) {
      ADD_FAILURE() << "no folder like " << folder_;
    }
  }

  ~TemporaryTree() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }

  TemporaryTree(const TemporaryTree&) = delete;
  TemporaryTree& operator=(const TemporaryTree&) = delete;

  // Its files as the tool sees them.
  FileTree files() const { return FileTree(folder_); }

  // Where a path of the machine really is.
  std::string real(const std::string& path) const { return folder_ + path; }

  // Writes a file, and makes the folders above it.
  void put(const std::string& path, std::string_view content) const {
    makeFolderOf(path);
    std::ofstream(real(path), std::ios::binary) << content;
  }

  void makeFolder(const std::string& path) const {
    std::filesystem::create_directories(real(path));
  }

  void link(const std::string& path, const std::string& target) const {
    makeFolderOf(path);
    std::filesystem::create_symlink(target, real(path));
  }

 private:
  // A tree of thousands of small files is made in no time in memory, and slowly on a disk.
  static std::string place() {
    constexpr const char* kMemory = "/dev/shm/";
    const bool isFree = std::getenv("TEST_TMPDIR") == nullptr && access(kMemory, W_OK | X_OK) == 0;
    return isFree ? kMemory : ::testing::TempDir();
  }

  void makeFolderOf(const std::string& path) const {
    std::filesystem::create_directories(std::filesystem::path(real(path)).parent_path());
  }

  std::string folder_;
};

}  // namespace veltrin
