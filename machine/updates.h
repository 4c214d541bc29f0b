// SPDX-License-Identifier: GPL-3.0-or-later
// The updates that a system has received.
//
// Linux knows no numbered updates of the whole system: what is mended is a package,
// and it comes as a newer version of it. So an update is an installed package whose
// present version has replaced another one, by the log of the package manager:
// dpkg's, of which the last and the one before are plain text, or pacman's, which
// goes back to the installation. Other package managers keep this where only root,
// or only their own library, can read it.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "machine/file_tree.h"

namespace veltrin {

// The packages that are in a version that replaced another one.
class ReplacedPackages {
 public:
  void add(std::string_view package, std::string_view version);
  void drop(std::string_view package);

  // "openssl:amd64 3.0.15-1", by the moment of the update, the oldest first.
  std::vector<std::string> texts() const;

 private:
  // The number of the update, and the version.
  std::map<std::string, std::pair<std::uint64_t, std::string>, std::less<>> packages_;
  std::uint64_t count_ = 0;
};

// Reads a log of dpkg line by line, the oldest first.
class DpkgLog {
 public:
  void take(std::string_view line);

  // The updates so far; nothing when no line was one of such a log.
  std::optional<std::vector<std::string>> updates() const;

 private:
  using Words = std::vector<std::string_view>;

  void takeAction(std::string_view action);
  void begin(const Words& words);
  void finish(const Words& words);
  void end(const Words& words);

  bool known_ = false;
  ReplacedPackages replaced_;
  // The versions to which upgrades have begun.
  std::map<std::string, std::string, std::less<>> begun_;
};

// The same for a log of pacman.
class PacmanLog {
 public:
  void take(std::string_view line);
  std::optional<std::vector<std::string>> updates() const;

 private:
  bool known_ = false;
  ReplacedPackages replaced_;
};

// The updates of this system; nothing when no log tells them.
std::optional<std::vector<std::string>> updatesOf(const FileTree& files);

}  // namespace veltrin
