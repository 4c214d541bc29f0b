#include "machine/mounts.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "machine/fact_text.h"

namespace veltrin {
namespace {

// Fields of a line of mountinfo (proc_pid_mountinfo(5)); behind the one that is "-"
// follow the type of the file system and its source.
constexpr std::size_t kNumbers = 2;
constexpr std::size_t kPlace = 4;

// The name that the kernel gives to a device without one of its own while it
// starts.
constexpr std::string_view kRoot = "/dev/root";

// The device of a line; empty when its file system lies on none.
std::string deviceOf(const FileTree& files, const std::vector<std::string_view>& fields) {
  const auto dash = std::find(fields.begin(), fields.end(), "-");
  if (fields.end() - dash < 3) {
    return "";
  }
  const std::string source = unescaped(dash[2]);
  if (source != kRoot) {
    return source.find('/') == std::string::npos ? "" : source;
  }
  const std::string link = files.linkTarget("/sys/dev/block/" + std::string(fields[kNumbers]));
  const std::size_t slash = link.rfind('/');
  return slash == std::string::npos ? "" : "/dev" + link.substr(slash);
}

// What is mounted at a place last hides the rest.
std::string deviceAt(const FileTree& files, std::string_view mounts, std::string_view place) {
  std::string device;
  LineReader lines(mounts);
  for (std::string_view line; lines.next(line);) {
    const auto fields = wordsOf(line);
    if (fields.size() > kPlace && unescaped(fields[kPlace]) == place) {
      device = deviceOf(files, fields);
    }
  }
  return device;
}

}  // namespace

std::string bootDevice(const FileTree& files) {
  const std::string mounts = files.text("/proc/self/mountinfo");
  for (const std::string_view place : {"/boot", "/"}) {
    if (const std::string device = deviceAt(files, mounts, place); !device.empty()) {
      return printable(device);
    }
  }
  return "";
}

}  // namespace veltrin
