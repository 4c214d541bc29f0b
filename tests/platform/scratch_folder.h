// SPDX-License-Identifier: GPL-3.0-or-later
// A folder of a test's own that is gone when the test is over.
#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>

namespace veltrin {

class ScratchFolder {
 public:
  ScratchFolder() {
    std::random_device random;
    do {
      folder_ = std::filesystem::temp_directory_path() / ("veltrin-" + std::to_string(random()));
    } while (!std::filesystem::create_directory(folder_));
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }

  const std::filesystem::path& folder() const { return folder_; }

  // The system's path of a file in the folder.
  std::string path(const std::string& name) const { return (folder_ / name).string(); }

  void fill(const std::string& name, const std::string& content) const {
    std::ofstream(folder_ / name, std::ios::binary) << content;
  }

  // The bytes of a file; empty when there is none.
  std::string content(const std::string& name) const {
    std::ifstream file(folder_ / name, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
  }

  bool has(const std::string& name) const { return std::filesystem::exists(folder_ / name); }

  // How many entries stand in the folder.
  std::size_t count() const {
    std::size_t entries = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder_)) {
      ++entries;
    }
    return entries;
  }

 private:
  std::filesystem::path folder_;
};

}  // namespace veltrin
