// The drives of Linux: folders on which file systems are mounted, each under a letter.
#pragma once

#include <string>
#include <vector>

namespace veltrin {

// The folders of the drives from C on: the root first, then those on which other devices are
// mounted, each device once and in the kernel's order, up to Z. Images of packages (loop
// devices) are none. `mounts` is the text of /proc/self/mounts (proc_pid_mounts(5)).
std::vector<std::string> driveFolders(const std::string& mounts);

// The folder of a drive ("C:", or "C:\"), in any case; empty when there is no such drive.
std::string folderOfDrive(const std::string& root, const std::vector<std::string>& folders);

}  // namespace veltrin
