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

// The kernel's list of sockets has those first that wait for connections, so the start of it is
// enough however many there are.
constexpr std::size_t kWaitingSockets = 65536;

// The port of SMB, and that of SMB over NetBIOS (RFC 1002 section 4.3), as the list writes them.
bool isSmb(std::string_view port) { return port == "01BD" || port == "008B"; }

// "0: 00000000:01BD 00000000:0000 0A ...": local address, remote address, state, which is 0A for
// a socket that waits (include/net/tcp_states.h).
bool waitsForSmb(std::string_view line) {
  const auto words = wordsOf(line);
  return words.size() > 3 && words[3] == "0A" && isSmb(words[1].substr(words[1].rfind(':') + 1));
}

bool hasSmbSocket(std::string_view list) {
  LineReader lines(list);
  for (std::string_view line; lines.next(line);) {
    if (waitsForSmb(line)) {
      return true;
    }
  }
  return false;
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

// The remote controls that speak by HDMI have no device here (drivers/media/rc/lirc_dev.c).
std::optional<bool> hasInfraredPort(const FileTree& files) {
  if (files.names("/sys/class").empty()) {
    return std::nullopt;
  }
  return !files.names("/sys/class/lirc").empty();
}

std::optional<bool> sharesFiles(const FileTree& files) {
  std::optional<bool> shares;
  for (const char* list : {"/proc/net/tcp", "/proc/net/tcp6"}) {
    if (const auto text = files.read(list, kWaitingSockets)) {
      shares = shares.value_or(false) || hasSmbSocket(*text);
    }
  }
  return shares;
}

std::string calledByOwner(const FileTree& files) {
  return printable(shellValue(files.text("/etc/machine-info"), "PRETTY_HOSTNAME"));
}

}  // namespace veltrin
