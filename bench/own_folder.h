// Folders of a benchmark's own for a program with its real platform.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>
#include <unistd.h>

namespace veltrin {

// The program's files, and what tells running copies of it from each other, below a
// folder that goes with this object. A program that runs beside is so not taken for a copy
// of this one, whose start would end at a message about it.
class OwnFolder {
 public:
  explicit OwnFolder(const std::string& name)
      : path_(std::filesystem::temp_directory_path() / (name + "." + std::to_string(getpid()))) {
    std::filesystem::remove_all(path_);
    std::filesystem::create_directories(path_);
    // The system keeps its sockets only where nobody else may look.
    std::filesystem::permissions(path_, std::filesystem::perms::owner_all);
    setenv("XDG_DATA_HOME", path_.c_str(), 1);
    setenv("XDG_RUNTIME_DIR", path_.c_str(), 1);
  }
  ~OwnFolder() { std::filesystem::remove_all(path_); }
  OwnFolder(const OwnFolder&) = delete;
  OwnFolder& operator=(const OwnFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace veltrin
