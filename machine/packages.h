// SPDX-License-Identifier: GPL-3.0-or-later
// The software that the package manager of a system has installed.
//
// Read are the databases of dpkg, pacman and apk, which are plain text. That of rpm is known to
// its own library alone.
#pragma once

#include <string>
#include <vector>

#include "machine/file_tree.h"

namespace veltrin {

struct PackageFacts {
  // "libc6"; "libc6:i386" for one of an architecture that is not the system's own.
  std::string name;
  std::string version;  // "2.36-9"; empty when it is not told
};

// The installed packages, by their names and versions in the order of their bytes. One that is
// only unpacked, or of which nothing but settings is left, is not installed. Of a database that
// ends in the middle of a package, those before it.
std::vector<PackageFacts> installedPackages(const FileTree& files);

}  // namespace veltrin
