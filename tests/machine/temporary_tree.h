// A folder that stands for the root of a machine's files while a test runs.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "machine/file_tree.h"

namespace veltrin {

class TemporaryTree {
 public:
  TemporaryTree() : folder_(::testing::TempDir() + "systeminfo-XXXXXX") {
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
  void makeFolderOf(const std::string& path) const {
    std::filesystem::create_directories(std::filesystem::path(real(path)).parent_path());
  }

  std::string folder_;
};

}  // namespace veltrin
