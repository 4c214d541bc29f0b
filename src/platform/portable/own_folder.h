// SPDX-License-Identifier: GPL-3.0-or-later
// Whether what is to be written stays in the folder that it is meant for.
#pragma once

#include <string>

namespace veltrin {

// Whether a native path, with all links on its way followed, names the folder itself or
// something below it. The folder's own path may have links in it: where it lies is its
// owner's choice. What the path names may be missing. False also for a circle of links, and
// where the system does not tell.
bool staysBelow(const std::string& folder, const std::string& path);

}  // namespace veltrin
