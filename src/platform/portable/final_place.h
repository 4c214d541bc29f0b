// SPDX-License-Identifier: GPL-3.0-or-later
// Where a file really lies. Each system follows its own kinds of link.
#pragma once

#include <filesystem>
#include <string>

namespace veltrin {

// The place of a native path behind all links on its way, comparable with other such places
// alone. What is missing counts as it is written: nothing can be made behind a folder that is
// not there. Empty for a circle of links, and where the system does not tell; on Windows for a
// link to nothing, too.
std::filesystem::path finalPlace(const std::string& path);

}  // namespace veltrin
