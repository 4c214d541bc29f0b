// SPDX-License-Identifier: GPL-3.0-or-later
// The files in which a system keeps its facts, below a root folder.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace veltrin {

// The bytes of a file that is mapped into memory; none when it cannot be. For a
// large file of which little is read, and which nobody shortens in its place.
class MappedFile {
 public:
  MappedFile() = default;
  explicit MappedFile(const std::string& path);
  ~MappedFile();

  MappedFile(MappedFile&& other) noexcept : bytes_(std::exchange(other.bytes_, {})) {}
  MappedFile& operator=(MappedFile&&) = delete;

  std::string_view bytes() const { return bytes_; }

 private:
  std::string_view bytes_;
};

// Reads files by their absolute paths, as if the root folder were "/". A test
// gives a folder of its own.
class FileTree {
 public:
  // The most that is read of a file, in bytes.
  static constexpr std::size_t kMostOfFile = std::size_t{4} << 20;

  explicit FileTree(std::string root = "") : root_(std::move(root)) {}

  // The start of a plain file, at most `most` bytes. Nothing when it is none, or
  // this user may not read it.
  std::optional<std::string> read(const std::string& path, std::size_t most = kMostOfFile) const;

  // The same, empty when it cannot be read.
  std::string text(const std::string& path) const { return read(path).value_or(""); }

  // Hands over the lines of a plain file of any length, without their ends; one that
  // is longer than 64 kB in parts. False when it cannot be read to its end.
  bool readLines(const std::string& path,
                 const std::function<void(std::string_view line)>& take) const;

  // What the first line holds, without blanks around it; empty when nothing.
  std::string line(const std::string& path) const;

  MappedFile map(const std::string& path) const { return MappedFile(root_ + path); }

  // The names in a folder, sorted; empty when there is no such folder.
  std::vector<std::string> names(const std::string& folder) const;

  // Where a symbolic link points to, as it is written; empty when it is none.
  std::string linkTarget(const std::string& path) const;

  // Where a path leads when its last part is a symbolic link, or a chain of them, as if the
  // root folder were "/"; the path itself when it is none, empty when the links have no end.
  std::string resolved(const std::string& path) const;

  // When a file was last written, in seconds since 1970; nothing when there is no
  // such file.
  std::optional<std::int64_t> written(const std::string& path) const;

  // The folder that stands for "/", empty when it is the real one: for libraries that open
  // files themselves.
  const std::string& root() const { return root_; }

 private:
  std::string root_;
};

}  // namespace veltrin
