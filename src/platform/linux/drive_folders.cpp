#include "platform/linux/drive_folders.h"

#include <algorithm>
#include <cstddef>
#include <sstream>
#include <utility>

#include "text/strings.h"

namespace veltrin {
namespace {

constexpr char kFirstLetter = 'C';
constexpr std::size_t kMostDrives = 'Z' - kFirstLetter + 1;

bool startsWith(const std::string& text, const std::string& start) {
  return text.compare(0, start.size(), start) == 0;
}

bool isOctal(char c) { return c >= '0' && c <= '7'; }

// Blanks, tabs, line feeds and backslashes stand in the table as three octal digits behind
// a backslash.
std::string unescaped(const std::string& field) {
  std::string plain;
  for (std::size_t at = 0; at < field.size(); ++at) {
    const bool isEscape = field[at] == '\\' && at + 3 < field.size() &&
                          std::all_of(field.begin() + static_cast<std::ptrdiff_t>(at) + 1,
                                      field.begin() + static_cast<std::ptrdiff_t>(at) + 4, isOctal);
    plain +=
        isEscape ? static_cast<char>(std::stoi(field.substr(at + 1, 3), nullptr, 8)) : field[at];
    if (isEscape) at += 3;
  }
  return plain;
}

struct Mount {
  std::string device;
  std::string folder;
};

// Those of devices, in the table's order.
std::vector<Mount> mountsIn(const std::string& table) {
  std::vector<Mount> mounts;
  std::istringstream lines(table);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream fields(line);
    Mount mount;
    fields >> mount.device >> mount.folder;
    if (!startsWith(mount.device, "/dev/") || startsWith(mount.device, "/dev/loop")) continue;
    mount.folder = unescaped(mount.folder);
    mounts.push_back(std::move(mount));
  }
  return mounts;
}

}  // namespace

// The device of the root is that of C wherever else it is mounted.
std::vector<std::string> driveFolders(const std::string& mounts) {
  const std::vector<Mount> all = mountsIn(mounts);
  std::vector<std::string> folders{"/"};
  std::vector<std::string> devices;
  for (const Mount& mount : all) {
    if (mount.folder == "/") devices.push_back(mount.device);
  }
  for (const Mount& mount : all) {
    if (folders.size() == kMostDrives) break;
    if (std::find(devices.begin(), devices.end(), mount.device) != devices.end()) continue;
    devices.push_back(mount.device);
    folders.push_back(mount.folder);
  }
  return folders;
}

std::string folderOfDrive(const std::string& root, const std::vector<std::string>& folders) {
  if (root.size() < 2 || root.size() > 3 || root[1] != ':') return {};
  if (root.size() == 3 && root[2] != '\\') return {};
  const int place = UCase(root)[0] - kFirstLetter;
  if (place < 0 || place >= static_cast<int>(folders.size())) return {};
  return folders[static_cast<std::size_t>(place)];
}

}  // namespace veltrin
