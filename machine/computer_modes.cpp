// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/computer_modes.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "machine/fact_text.h"

namespace veltrin {
namespace {

constexpr std::array<std::string_view, 11> kRescueWords{
    "1",
    "s",
    "S",
    "single",
    "rescue",
    "emergency",
    "-b",
    "systemd.unit=rescue",
    "systemd.unit=rescue.target",
    "systemd.unit=emergency",
    "systemd.unit=emergency.target",
};

// Where a server notes the number of its process, and the name of that.
struct Server {
  const char* note;
  std::string_view name;
};

constexpr std::array kServers{
    Server{"/run/samba/smbd.pid", "smbd"},
    Server{"/run/smbd.pid", "smbd"},
    Server{"/run/ksmbd.lock", "ksmbd.mountd"},
};

// The number may be of a process that ended, and of another one meanwhile.
bool runs(const FileTree& files, const Server& server) {
  const auto number = wholeNumber(files.line(server.note));
  return number && files.line("/proc/" + std::to_string(*number) + "/comm") == server.name;
}

}  // namespace

std::optional<bool> startedForRescue(const FileTree& files) {
  const auto text = files.read("/proc/cmdline");
  if (!text) {
    return std::nullopt;
  }
  const auto words = wordsOf(trimmed(*text));
  return std::any_of(words.begin(), words.end(), [](std::string_view word) {
    return std::find(kRescueWords.begin(), kRescueWords.end(), word) != kRescueWords.end();
  });
}

std::optional<bool> restartsAfterFailure(const FileTree& files) {
  const std::string seconds = files.line("/proc/sys/kernel/panic");
  return seconds.empty() ? std::nullopt : std::optional(seconds != "0");
}

// The remote controls that speak by HDMI have no device here (drivers/media/rc/lirc_dev.c). Without
// a device the port may be there all the same, and its driver not loaded.
std::optional<bool> hasInfraredPort(const FileTree& files) {
  return files.names("/sys/class/lirc").empty() ? std::nullopt : std::optional(true);
}

std::optional<bool> sharesFiles(const FileTree& files) {
  if (files.names("/run").empty()) {
    return std::nullopt;
  }
  return std::any_of(kServers.begin(), kServers.end(),
                     [&](const Server& server) { return runs(files, server); });
}

std::string calledByOwner(const FileTree& files) {
  return printable(shellValue(files.text("/etc/machine-info"), "PRETTY_HOSTNAME"));
}

}  // namespace veltrin
