// SPDX-License-Identifier: GPL-3.0-or-later
// How a Linux system runs on its computer.
#pragma once

#include <optional>
#include <string>

#include "machine/file_tree.h"

namespace veltrin {

// Whether the system was started for repairs, with as little as it can: into the rescue or the
// emergency mode (kernel-command-line(7)). Nothing when the kernel does not tell how it was
// started.
std::optional<bool> startedForRescue(const FileTree& files);

// Whether the computer starts anew after the kernel failed (Documentation/admin-guide/sysctl/
// kernel.rst, panic). Nothing when that is not told.
std::optional<bool> restartsAfterFailure(const FileTree& files);

// Whether the computer has a port for infrared light: true when the kernel serves one, nothing
// else.
std::optional<bool> hasInfraredPort(const FileTree& files);

// Whether the computer serves its files to others by SMB: Samba's server or the kernel's own runs.
// Nothing when the system keeps no notes on what runs.
std::optional<bool> sharesFiles(const FileTree& files);

// By what its owner calls the computer, beside its name on the network (machine-info(5)); empty
// when it is called nothing.
std::string calledByOwner(const FileTree& files);

}  // namespace veltrin
