#include "machine/mounts.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <utility>

#include "machine/fact_text.h"

namespace veltrin {
namespace {

// Fields of a line of mountinfo (proc_pid_mountinfo(5)); behind the one that is "-"
// follow the type of the file system, its source and its options.
constexpr std::size_t kNumbers = 2;
constexpr std::size_t kPart = 3;
constexpr std::size_t kPlace = 4;

// The name that the kernel gives to a device without one of its own while it
// starts.
constexpr std::string_view kRoot = "/dev/root";

constexpr std::string_view kDevices = "/dev/";

std::string lastPartOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

// A line's file system; without a folder for a line of another form.
Mount mountOf(std::string_view line) {
  const auto fields = wordsOf(line);
  const auto dash = std::find(fields.begin(), fields.end(), "-");
  if (fields.end() - dash < 3 || dash - fields.begin() <= static_cast<std::ptrdiff_t>(kPlace)) {
    return {};
  }
  return {std::string(fields[kNumbers]),
          unescaped(fields[kPart]),
          unescaped(fields[kPlace]),
          std::string(dash[1]),
          unescaped(dash[2]),
          fields.end() - dash > 3 ? unescaped(dash[3]) : std::string()};
}

// Containers get single files of the system around them, such as /etc/hosts: parts of a file
// system on a device. Others are not looked at, as one of the network's may be out of reach.
bool isPlainFile(const FileTree& files, const Mount& mount) {
  return mount.part != "/" && mount.source.starts_with(kDevices) &&
         files.read(mount.folder, 0).has_value();
}

void dropHidden(std::vector<Mount>& mounts) {
  std::set<std::string_view> seen;
  std::vector<Mount> visible;
  for (auto mount = mounts.rbegin(); mount != mounts.rend(); ++mount) {
    if (seen.insert(mount->folder).second) {
      visible.push_back(*mount);
    }
  }
  std::reverse(visible.begin(), visible.end());
  mounts = std::move(visible);
}

// The name of the device with these numbers; empty when the kernel lists none.
std::string nameOf(const FileTree& files, const std::string& numbers) {
  return lastPartOf(files.linkTarget("/sys/dev/block/" + numbers));
}

// The device as it is named to a reader; empty when the file system lies on none.
std::string deviceOf(const FileTree& files, const Mount& mount) {
  if (mount.source != kRoot) {
    return mount.source.find('/') == std::string::npos ? "" : mount.source;
  }
  const std::string name = nameOf(files, mount.numbers);
  return name.empty() ? "" : std::string(kDevices) + name;
}

}  // namespace

std::vector<Mount> mountsOf(const FileTree& files) {
  std::vector<Mount> mounts;
  files.readLines("/proc/self/mountinfo", [&](std::string_view line) {
    Mount mount = mountOf(line);
    if (!mount.folder.empty() && !isPlainFile(files, mount)) {
      mounts.push_back(std::move(mount));
    }
  });
  dropHidden(mounts);
  return mounts;
}

// A file system that may span several devices, such as btrfs, has numbers of no device. It
// then goes by its source, which may be a link (/dev/mapper/...).
std::string blockDeviceOf(const FileTree& files, const Mount& mount) {
  if (std::string name = nameOf(files, mount.numbers); !name.empty()) {
    return name;
  }
  if (!mount.source.starts_with(kDevices)) {
    return "";
  }
  const std::string target = files.linkTarget(mount.source);
  std::string name = target.empty() ? mount.source.substr(kDevices.size()) : lastPartOf(target);
  // A slash in a name is an exclamation mark in /sys (drivers/base/core.c).
  std::replace(name.begin(), name.end(), '/', '!');
  return files.line("/sys/class/block/" + name + "/dev").empty() ? "" : name;
}

std::string bootDevice(const FileTree& files) {
  const std::vector<Mount> mounts = mountsOf(files);
  for (const std::string_view place : {"/boot", "/"}) {
    const auto found = std::find_if(mounts.begin(), mounts.end(),
                                    [&](const Mount& mount) { return mount.folder == place; });
    const std::string device = found == mounts.end() ? "" : deviceOf(files, *found);
    if (!device.empty()) {
      return printable(device);
    }
  }
  return "";
}

}  // namespace veltrin
