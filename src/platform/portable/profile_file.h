// SPDX-License-Identifier: GPL-3.0-or-later
// Profile files, read and written by the program itself.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/profile_store.h"

namespace veltrin {

// What the system's calls do with a profile file, wherever it is kept: as UTF-8, or as
// whatever bytes are in it. A file is read anew for every call, so that what other
// programs wrote is seen, and replaced as a whole by every write that changes it. A
// file that is missing reads as an empty one. As in the system's calls, a text ends at its first
// NUL, an empty list of keys reads as the fallback and an empty list of sections as nothing, and
// the fallback loses the blanks at its end. Sizes count characters, so that a value that is cut
// ends in a whole one.
class ProfileEngine : public ProfileStore {
 public:
  std::string read(const std::optional<std::string>& section, const std::optional<std::string>& key,
                   const std::string& fallback, std::size_t size, const std::string& path) override;

  // Also false for a section or key name with a line break in it, which no file
  // could give back. Deleting what is not there is a success and makes no file.
  bool write(const std::string& section, const std::optional<std::string>& key,
             const std::optional<std::string>& value, const std::string& path) override;

 protected:
  // The whole content of a file. Nothing for one that is there and cannot be read; the
  // empty text for one that is missing.
  virtual std::optional<std::string> load(const std::string& path) = 0;

  // Replaces a file as a whole, or leaves it as it was. Returns whether it was written.
  virtual bool store(const std::string& path, const std::string& content) = 0;
};

// Profile files on disk.
class ProfileFile : public ProfileEngine {
 public:
  // Turns a path of the program's into one of the system's.
  using NativePath = std::function<std::string(const std::string&)>;

  // `pathToWrite` tells where a file is replaced; empty when it may not be.
  explicit ProfileFile(NativePath nativePath, NativePath pathToWrite = {});

 protected:
  std::optional<std::string> load(const std::string& path) override;
  bool store(const std::string& path, const std::string& content) override;

 private:
  NativePath nativePath_;
  NativePath pathToWrite_;
};

}  // namespace veltrin
