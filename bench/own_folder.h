// SPDX-License-Identifier: GPL-3.0-or-later
// Folders of a benchmark's own for a program with its real platform.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <unistd.h>

namespace veltrin {

// A variable of the environment that has another value for a while.
class OtherVariable {
 public:
  OtherVariable(const char* name, const std::string& value) : name_(name) {
    if (const char* now = std::getenv(name)) before_ = now;
    setenv(name, value.c_str(), 1);
  }
  ~OtherVariable() {
    if (before_) {
      setenv(name_, before_->c_str(), 1);
    } else {
      unsetenv(name_);
    }
  }
  OtherVariable(const OtherVariable&) = delete;
  OtherVariable& operator=(const OtherVariable&) = delete;

 private:
  const char* name_;
  std::optional<std::string> before_;
};

// A folder that goes with this object, and that nobody else may look into: the system keeps
// its sockets in none that is open to others.
class BenchFolder {
 public:
  explicit BenchFolder(const std::string& name)
      : path_(std::filesystem::temp_directory_path() / (name + "." + std::to_string(getpid()))) {
    std::filesystem::remove_all(path_);
    std::filesystem::create_directories(path_);
    std::filesystem::permissions(path_, std::filesystem::perms::owner_all);
  }
  ~BenchFolder() { std::filesystem::remove_all(path_); }
  BenchFolder(const BenchFolder&) = delete;
  BenchFolder& operator=(const BenchFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

// As long as this lives, the program's files, and what tells running copies of it from each
// other, lie in such a folder. A program that runs beside is so not taken for a copy of this
// one, whose start would end at a message about it.
class ProgramFolder {
 public:
  explicit ProgramFolder(const BenchFolder& folder)
      : data_("XDG_DATA_HOME", folder.path()), running_("XDG_RUNTIME_DIR", folder.path()) {}

 private:
  OtherVariable data_;
  OtherVariable running_;
};

// A folder of its own for the program.
class OwnFolder {
 public:
  explicit OwnFolder(const std::string& name) : folder_(name) {}

  const std::filesystem::path& path() const { return folder_.path(); }

 private:
  BenchFolder folder_;
  ProgramFolder program_{folder_};
};

}  // namespace veltrin
