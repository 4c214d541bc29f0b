// SPDX-License-Identifier: GPL-3.0-or-later
// What moves in the rows of the Protocol monitor when packets of one kind come or go: that
// kind's row and those that count the same packets, and no other, of either protocol.
#include <array>
#include <chrono>
#include <cstring>
#include <gtest/gtest.h>
#include <linux/netlink.h>
#include <linux/pkt_sched.h>
#include <linux/rtnetlink.h>
#include <map>
#include <netinet/in.h>
#include <string>
#include <sys/socket.h>
#include <thread>
#include <vector>

#include "monitor/frmIP.h"
#include "monitor_line.h"
#include "platform/linux/protocol_counters.h"

namespace veltrin::lab {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

// Rows of the window, from 0.
enum Row {
  kDatagrams,
  kReceived,
  kHeaderErrors,
  kAddressErrors,
  kForwarded,
  kUnknownProtocol,
  kInDiscarded,
  kDelivered,
  kSent,
  kOutDiscarded,
  kNoRoute,
  kFragmentsReceived,
  kReassembled,
  kReassemblyFailures,
  kFragmented,
  kFragmentationFailures,
  kFragmentsCreated,
  kRows
};

constexpr std::uint8_t kKnown = 253;  // protocols for experiments (RFC 3692)
constexpr std::uint8_t kUnknown = 254;
constexpr std::size_t kMoreFragments = 0x2000;  // flags of IPv4
constexpr std::size_t kDoNotFragment = 0x4000;
constexpr std::uint8_t kFragmentHeader = 44;  // of IPv6
const Packet kPayload(64, 'x');
const Packet kTooLong(2000, 'x');

// What a test does on the line.
class Line {
 public:
  explicit Line(int line) : line_(line), four_(receiver(AF_INET)), six_(receiver(AF_INET6)) {
    writeSetting("/proc/sys/net/ipv4/icmp_ratelimit", "0");
    writeSetting("/proc/sys/net/ipv6/icmp/ratelimit", "0");
    writeSetting("/proc/sys/net/ipv4/conf/all/send_redirects", "0");
    writeSetting(std::string("/proc/sys/net/ipv4/conf/") + kDevice + "/send_redirects", "0");
  }

  void arrive(const Packet& packet) const {
    ASSERT_EQ(write(line_, packet.data(), packet.size()), static_cast<ssize_t>(packet.size()));
  }

  // A UDP datagram of so many bytes to an address; answers whether the kernel took it.
  static bool send(const char* address, std::size_t bytes) {
    const IpAddress to = addressOf(address);
    const bool isSix = to.family() == Family::V6;
    const Descriptor any(socket(isSix ? AF_INET6 : AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    sockaddr_in four{};
    sockaddr_in6 six{};
    four.sin_family = AF_INET;
    six.sin6_family = AF_INET6;
    four.sin_port = six.sin6_port = htons(9);
    std::memcpy(isSix ? static_cast<void*>(&six.sin6_addr) : &four.sin_addr, to.bytes().data(),
                to.bytes().size());
    const auto* place =
        isSix ? reinterpret_cast<const sockaddr*>(&six) : reinterpret_cast<const sockaddr*>(&four);
    const std::string data(bytes, 'x');
    return sendto(any.get(), data.data(), bytes, 0, place, isSix ? sizeof six : sizeof four) ==
           static_cast<ssize_t>(bytes);
  }

  // The queue of the device takes nothing more. Not every kernel has such a queue.
  static bool closeTheQueue() {
    struct Request {
      nlmsghdr header{};
      tcmsg about{};
      rtattr kind{};
      std::array<char, 8> name{"bfifo"};
      rtattr options{};
      tc_fifo_qopt limit{};
    } request;
    static_assert(sizeof request == NLMSG_LENGTH(sizeof(tcmsg)) + RTA_LENGTH(8) + RTA_LENGTH(4));
    request.header.nlmsg_len = sizeof request;
    request.header.nlmsg_type = RTM_NEWQDISC;
    request.header.nlmsg_flags = NLM_F_REQUEST | NLM_F_CREATE | NLM_F_REPLACE | NLM_F_ACK;
    request.about.tcm_ifindex = static_cast<int>(if_nametoindex(kDevice));
    request.about.tcm_parent = TC_H_ROOT;
    request.kind.rta_len = RTA_LENGTH(6);
    request.kind.rta_type = TCA_KIND;
    request.options.rta_len = RTA_LENGTH(4);
    request.options.rta_type = TCA_OPTIONS;
    request.limit.limit = 1;  // byte
    struct {
      nlmsghdr header;
      nlmsgerr error;
      std::array<char, 4096> rest;
    } answer{};
    const Descriptor kernel(socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_ROUTE));
    return ::send(kernel.get(), &request, sizeof request, 0) == sizeof request &&
           recv(kernel.get(), &answer, sizeof answer, 0) > 0 && answer.error.error == 0;
  }

 private:
  // Takes all packets of the known protocol.
  static Descriptor receiver(int family) {
    return Descriptor(socket(family, SOCK_RAW | SOCK_CLOEXEC, kKnown));
  }

  int line_;
  Descriptor four_;
  Descriptor six_;
};

struct Event {
  const char* name;
  void (*prepare)(Line& line);
  void (*happen)(Line& line, int time);  // the times are counted from 0
  std::map<int, int> moves;              // rows, and by how much for each time
  int mayMove = kRows;                   // a row that some kernels count with it, once
};

void PrintTo(const Event& event, std::ostream* out) { *out << event.name; }

constexpr int kTimes = 5;

// What the kernel counts of both protocols now.
std::vector<double> kernelCounts() {
  std::vector<double> counts;
  const IPv4Counters four("/proc");
  const IPv6Counters six("/proc");
  for (const ProtocolCounters* each : std::initializer_list<const ProtocolCounters*>{&four, &six}) {
    for (const CounterInstance& instance : each->read()) {
      for (const CounterReading& reading : instance.readings) counts.push_back(reading.amount);
    }
  }
  return counts;
}

// Until nothing has been counted for a time; answers what has.
std::vector<double> awaitQuiet() {
  std::vector<double> counts = kernelCounts();
  const auto end = steady_clock::now() + std::chrono::seconds(5);
  for (auto since = steady_clock::now(); steady_clock::now() - since < milliseconds(100);) {
    std::this_thread::sleep_for(milliseconds(5));
    std::vector<double> now = kernelCounts();
    if (now != counts) since = steady_clock::now();
    counts = std::move(now);
    if (steady_clock::now() > end) {
      ADD_FAILURE() << "the network does not come to rest";
      break;
    }
  }
  return counts;
}

// What a label shows, and whether it is a rate.
struct Shown {
  int number = 0;
  bool isRate = false;
};

Shown shownBy(const Label& label) {
  const std::string text = label.caption;
  return {std::stoi(text), text.ends_with(" sec")};
}

std::array<std::vector<Shown>, 2> shownBy(const frmIP& window) {
  std::array<std::vector<Shown>, 2> all;
  for (const Label& label : window.LeftVal) all[0].push_back(shownBy(label));
  for (const Label& label : window.RightVal) all[1].push_back(shownBy(label));
  return all;
}

// A kernel that keeps no other count of what it transmits counts what it forwards as sent.
bool countsForwardedAsSent(bool isSix) {
  std::ifstream file(isSix ? "/proc/net/snmp6" : "/proc/net/snmp");
  const std::string all{std::istreambuf_iterator<char>(file), {}};
  return all.find("OutTransmits") == std::string::npos;
}

// One second with nothing, and one in which the event happens some times. Seconds pass as
// the test says, so that a rate is just what was counted.
void expectRows(int device, const Event& event, bool isSix) {
  if (isSix && access("/proc/net/snmp6", R_OK) != 0) GTEST_SKIP() << "this kernel has no IPv6";
  CounterService::Moment now;
  MonitorProgram monitor([&now] { return now; });
  Line line(device);
  const auto window = monitor.program.show<frmIP>();
  if (event.prepare != nullptr) event.prepare(line);
  if (testing::Test::IsSkipped()) return;
  const auto tick = [&] {
    awaitQuiet();
    now += std::chrono::seconds(1);
    monitor.tick();
    return shownBy(*window);
  };
  tick();
  const auto before = tick();
  for (int time = 0; time < kTimes; ++time) event.happen(line, time);
  const auto after = tick();

  std::map<int, int> moves = event.moves;
  if (moves.contains(kForwarded) && countsForwardedAsSent(isSix)) {
    moves[kSent] += moves[kForwarded];
    moves[kDatagrams] += moves[kForwarded];
  }
  for (const bool side : {false, true}) {
    for (int row = 0; row < kRows; ++row) {
      SCOPED_TRACE(std::string(side ? "IPv6: " : "IPv4: ") + window->LeftCap[row].caption.get());
      const Shown was = before[side][row];
      const Shown is = after[side][row];
      const int expected = side == isSix && moves.contains(row) ? kTimes * moves.at(row) : 0;
      if (is.isRate) EXPECT_EQ(was.number, 0);
      const int moved = is.isRate ? is.number : is.number - was.number;
      if (side == isSix && row == event.mayMove && moved == kTimes) continue;
      EXPECT_EQ(moved, expected);
    }
  }
}

class ProtocolRows : public testing::TestWithParam<Event> {};

std::string nameOfEvent(const testing::TestParamInfo<Event>& info) { return info.param.name; }

void closeTheQueue(Line& /*line*/) {
  if (!Line::closeTheQueue()) GTEST_SKIP() << "this kernel has no queue that can be closed";
}

// --- IPv4 ---

Packet piece(int of, std::size_t first, std::size_t bytes, bool more) {
  return makeV4(kPeer, kHere, kKnown, Packet(bytes, 'x'), 64,
                (more ? kMoreFragments : 0) | first / 8, 0x100 + static_cast<std::size_t>(of));
}

void forwardV4(Line& /*line*/) { writeSetting("/proc/sys/net/ipv4/ip_forward", "1"); }

class IPv4Rows : public ProtocolRows {};

TEST_P(IPv4Rows, MoveWithTheirPacketsAlone) {
  overALine([](int line) { expectRows(line, GetParam(), false); });
}

INSTANTIATE_TEST_SUITE_P(
    Monitor, IPv4Rows,
    testing::Values(
        Event{"Delivered",
              nullptr,
              [](Line& line, int) { line.arrive(makeV4(kPeer, kHere, kKnown, kPayload)); },
              {{kDatagrams, 1}, {kReceived, 1}, {kDelivered, 1}}},
        Event{"HeaderError",
              nullptr,
              [](Line& line, int) {
                Packet packet = makeV4(kPeer, kHere, kKnown, kPayload);
                packet[10] ^= 0xFF;  // of the checksum
                line.arrive(packet);
              },
              {{kDatagrams, 1}, {kReceived, 1}, {kHeaderErrors, 1}}},
        Event{"AddressError",
              nullptr,
              [](Line& line, int) { line.arrive(makeV4(kPeer, "203.0.113.9", kKnown, kPayload)); },
              {{kDatagrams, 1}, {kReceived, 1}, {kAddressErrors, 1}}},
        Event{"Forwarded",
              forwardV4,
              [](Line& line, int) { line.arrive(makeV4(kPeer, kBeyond, kKnown, kPayload)); },
              {{kDatagrams, 1}, {kReceived, 1}, {kForwarded, 1}}},
        // Who sent it is told so.
        Event{"UnknownProtocol",
              nullptr,
              [](Line& line, int) { line.arrive(makeV4(kPeer, kHere, kUnknown, kPayload)); },
              {{kDatagrams, 2}, {kReceived, 1}, {kUnknownProtocol, 1}, {kSent, 1}}},
        Event{"Sent",
              nullptr,
              [](Line&, int) { EXPECT_TRUE(Line::send(kPeer, 100)); },
              {{kDatagrams, 1}, {kSent, 1}}},
        Event{"OutboundDiscarded",
              closeTheQueue,
              [](Line&, int) { Line::send(kPeer, 100); },
              {{kDatagrams, 1}, {kSent, 1}, {kOutDiscarded, 1}}},
        Event{"NoRoute",
              nullptr,
              [](Line&, int) { EXPECT_FALSE(Line::send("203.0.113.9", 100)); },
              {{kNoRoute, 1}}},
        Event{"Reassembled",
              nullptr,
              [](Line& line, int time) {
                line.arrive(piece(time, 0, 64, true));
                line.arrive(piece(time, 64, 32, true));
                line.arrive(piece(time, 96, 10, false));
              },
              {{kDatagrams, 3},
               {kReceived, 3},
               {kDelivered, 1},
               {kFragmentsReceived, 3},
               {kReassembled, 1}}},
        // The second piece lies over an end of the first.
        Event{"ReassemblyFailure",
              nullptr,
              [](Line& line, int time) {
                line.arrive(piece(time, 0, 64, true));
                line.arrive(piece(time, 32, 64, false));
              },
              {{kDatagrams, 2}, {kReceived, 2}, {kFragmentsReceived, 2}, {kReassemblyFailures, 1}}},
        Event{"Fragmented",
              nullptr,
              [](Line&, int) { EXPECT_TRUE(Line::send(kPeer, 4000)); },
              {{kDatagrams, 1}, {kSent, 1}, {kFragmented, 1}, {kFragmentsCreated, 3}}},
        // Who sent it is told how long a packet may be. Newer kernels count it as forwarded
        // before they look at its length.
        Event{"FragmentationFailure",
              forwardV4,
              [](Line& line, int) {
                line.arrive(makeV4(kPeer, kBeyond, kKnown, kTooLong, 64, kDoNotFragment));
              },
              {{kDatagrams, 2}, {kReceived, 1}, {kSent, 1}, {kFragmentationFailures, 1}},
              kForwarded}),
    nameOfEvent);

// --- IPv6 ---

Packet pieceV6(int of, std::size_t first, std::size_t bytes, bool more) {
  Packet body(8 + bytes, 'x');
  body[0] = kKnown;
  body[1] = 0;
  putNumber(body, 2, first | (more ? 1 : 0));
  putNumber(body, 4, 0);
  putNumber(body, 6, 0x100 + static_cast<std::size_t>(of));
  return makeV6(kPeerV6, kHereV6, kFragmentHeader, body);
}

void forwardV6(Line& /*line*/) { writeSetting("/proc/sys/net/ipv6/conf/all/forwarding", "1"); }

void switchOffV6(Line& /*line*/) {
  writeSetting(std::string("/proc/sys/net/ipv6/conf/") + kDevice + "/disable_ipv6", "1");
}

class IPv6Rows : public ProtocolRows {};

TEST_P(IPv6Rows, MoveWithTheirPacketsAlone) {
  overALine([](int line) { expectRows(line, GetParam(), true); });
}

INSTANTIATE_TEST_SUITE_P(
    Monitor, IPv6Rows,
    testing::Values(
        Event{"Delivered",
              nullptr,
              [](Line& line, int) { line.arrive(makeV6(kPeerV6, kHereV6, kKnown, kPayload)); },
              {{kDatagrams, 1}, {kReceived, 1}, {kDelivered, 1}}},
        // No packet comes from a group.
        Event{"HeaderError",
              nullptr,
              [](Line& line, int) { line.arrive(makeV6("ff02::1", kHereV6, kKnown, kPayload)); },
              {{kDatagrams, 1}, {kReceived, 1}, {kHeaderErrors, 1}}},
        Event{"AddressError",
              nullptr,
              [](Line& line, int) { line.arrive(makeV6(kPeerV6, kBeyondV6, kKnown, kPayload)); },
              {{kDatagrams, 1}, {kReceived, 1}, {kAddressErrors, 1}}},
        Event{"Forwarded",
              forwardV6,
              [](Line& line, int) { line.arrive(makeV6(kPeerV6, kBeyondV6, kKnown, kPayload)); },
              {{kDatagrams, 1}, {kReceived, 1}, {kForwarded, 1}}},
        Event{"UnknownProtocol",
              nullptr,
              [](Line& line, int) { line.arrive(makeV6(kPeerV6, kHereV6, kUnknown, kPayload)); },
              {{kDatagrams, 2}, {kReceived, 1}, {kUnknownProtocol, 1}, {kSent, 1}}},
        // Of IPv4 the kernel discards a sound packet for want of memory alone.
        Event{"Discarded",
              switchOffV6,
              [](Line& line, int) { line.arrive(makeV6(kPeerV6, kHereV6, kKnown, kPayload)); },
              {{kDatagrams, 1}, {kReceived, 1}, {kInDiscarded, 1}}},
        Event{"Sent",
              nullptr,
              [](Line&, int) { EXPECT_TRUE(Line::send(kPeerV6, 100)); },
              {{kDatagrams, 1}, {kSent, 1}}},
        Event{"OutboundDiscarded",
              closeTheQueue,
              [](Line&, int) { Line::send(kPeerV6, 100); },
              {{kDatagrams, 1}, {kSent, 1}, {kOutDiscarded, 1}}},
        Event{"NoRoute",
              nullptr,
              [](Line&, int) { EXPECT_FALSE(Line::send("2001:db8:ffff::9", 100)); },
              {{kNoRoute, 1}}},
        Event{"Reassembled",
              nullptr,
              [](Line& line, int time) {
                line.arrive(pieceV6(time, 0, 64, true));
                line.arrive(pieceV6(time, 64, 32, true));
                line.arrive(pieceV6(time, 96, 10, false));
              },
              {{kDatagrams, 3},
               {kReceived, 3},
               {kDelivered, 1},
               {kFragmentsReceived, 3},
               {kReassembled, 1}}},
        Event{"ReassemblyFailure",
              nullptr,
              [](Line& line, int time) {
                line.arrive(pieceV6(time, 0, 64, true));
                line.arrive(pieceV6(time, 32, 64, false));
              },
              {{kDatagrams, 2}, {kReceived, 2}, {kFragmentsReceived, 2}, {kReassemblyFailures, 1}}},
        Event{"Fragmented",
              nullptr,
              [](Line&, int) { EXPECT_TRUE(Line::send(kPeerV6, 4000)); },
              {{kDatagrams, 1}, {kSent, 1}, {kFragmented, 1}, {kFragmentsCreated, 3}}},
        Event{"FragmentationFailure",
              forwardV6,
              [](Line& line, int) { line.arrive(makeV6(kPeerV6, kBeyondV6, kKnown, kTooLong)); },
              {{kDatagrams, 2}, {kReceived, 1}, {kSent, 1}, {kFragmentationFailures, 1}},
              kForwarded}),
    nameOfEvent);

}  // namespace
}  // namespace veltrin::lab
