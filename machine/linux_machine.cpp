#include "machine/linux_machine.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <string_view>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/utsname.h>
#include <unistd.h>

#include "machine/interface_dump.h"

namespace veltrin {
namespace {

// The kernel fills no datagram of a dump further (NLMSG_GOODSIZE and max_recvmsg_len
// in net/netlink/af_netlink.c).
constexpr std::size_t kLargestDatagram = 65536;

// A conversation with the kernel about its network interfaces.
class RouteSocket {
 public:
  RouteSocket() : socket_(socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_ROUTE)) {}

  ~RouteSocket() {
    if (socket_ >= 0) {
      close(socket_);
    }
  }

  RouteSocket(const RouteSocket&) = delete;
  RouteSocket& operator=(const RouteSocket&) = delete;

  // Asks for all objects of a kind and hands the answer to a dump. False when the
  // kernel does not give it whole.
  bool ask(std::uint16_t kind, InterfaceDump& dump) {
    struct Request {
      nlmsghdr header;
      rtgenmsg about;
    } request{};
    request.header.nlmsg_len = NLMSG_LENGTH(sizeof(rtgenmsg));
    request.header.nlmsg_type = kind;
    request.header.nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
    request.about.rtgen_family = AF_UNSPEC;
    if (socket_ < 0 || send(socket_, &request, request.header.nlmsg_len, 0) < 0) {
      return false;
    }
    auto state = InterfaceDump::State::More;
    while (state == InterfaceDump::State::More) {
      state = takeOne(dump);
    }
    return state == InterfaceDump::State::Done;
  }

 private:
  InterfaceDump::State takeOne(InterfaceDump& dump) {
    const ssize_t size = recv(socket_, bytes_.data(), bytes_.size(), MSG_TRUNC);
    if (size < 0 && errno == EINTR) {
      return InterfaceDump::State::More;
    }
    if (size <= 0 || static_cast<std::size_t>(size) > bytes_.size()) {
      return InterfaceDump::State::Failed;
    }
    return dump.take({bytes_.data(), static_cast<std::size_t>(size)});
  }

  int socket_;
  std::array<char, kLargestDatagram> bytes_{};
};

}  // namespace

Kernel LinuxMachine::kernel() const {
  utsname facts{};
  uname(&facts);
  return {facts.nodename, facts.release, facts.version, facts.machine};
}

std::int64_t LinuxMachine::now() const { return time(nullptr); }

LocalMoment LinuxMachine::local(std::int64_t seconds) const {
  const time_t moment = seconds;
  tm parts{};
  tzset();
  localtime_r(&moment, &parts);
  LocalMoment local;
  local.time = {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday,
                parts.tm_hour,        parts.tm_min,     parts.tm_sec};
  local.offset = static_cast<int>(parts.tm_gmtoff / 60);
  local.zone = parts.tm_zone != nullptr ? parts.tm_zone : "";
  return local;
}

std::string LinuxMachine::environment(const std::string& name) const {
  const char* value = getenv(name.c_str());
  return value != nullptr ? value : "";
}

std::optional<std::int64_t> LinuxMachine::born(const std::string& path) const {
  struct statx facts {};
  if (statx(AT_FDCWD, path.c_str(), AT_STATX_SYNC_AS_STAT, STATX_BTIME, &facts) != 0 ||
      (facts.stx_mask & STATX_BTIME) == 0) {
    return std::nullopt;
  }
  return facts.stx_btime.tv_sec;
}

std::optional<std::vector<NetworkInterface>> LinuxMachine::interfaces() const {
  RouteSocket kernel;
  InterfaceDump dump;
  if (!kernel.ask(RTM_GETLINK, dump) || !kernel.ask(RTM_GETADDR, dump)) {
    return std::nullopt;
  }
  return dump.interfaces();
}

std::optional<FileSystemRoom> LinuxMachine::room(const std::string& folder) const {
  struct statvfs told {};
  if (statvfs(folder.c_str(), &told) != 0) {
    return std::nullopt;
  }
  return FileSystemRoom{told.f_frsize,  told.f_blocks, told.f_bfree, told.f_bavail,
                        told.f_namemax, told.f_files,  told.f_ffree};
}

std::vector<DisplayMode> LinuxMachine::displayModes(const std::string& /*card*/) const {
  return {};
}

}  // namespace veltrin
