// SPDX-License-Identifier: GPL-3.0-or-later
// What the Bandwidth monitor shows of traffic of known speeds, by the kernel's own counters
// and the clock on the wall, beside what the device says that it has carried.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <set>
#include <string>
#include <sys/socket.h>
#include <thread>
#include <vector>

#include "machine/route_socket.h"
#include "monitor/frmNetwork.h"
#include "monitor_line.h"

namespace veltrin::lab {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using std::chrono::steady_clock;

constexpr double kDeviation = 0.05;
constexpr double kHalf = 0.5;          // KB/s that the rounding of a figure may take away
constexpr std::size_t kLength = 1250;  // bytes of a packet
constexpr std::size_t kHeaders = 28;   // of IPv4 and UDP
constexpr std::uint16_t kPort = 9;

sockaddr_in placeOf(const char* address) {
  sockaddr_in place{};
  place.sin_family = AF_INET;
  place.sin_port = htons(kPort);
  const IpAddress parsed = addressOf(address);
  std::memcpy(&place.sin_addr, parsed.bytes().data(), sizeof place.sin_addr);
  return place;
}

// Calls a routine that sends a packet as often as a speed asks for, on a thread of its own.
class Pacer {
 public:
  explicit Pacer(std::function<void()> send)
      : thread_([this, send = std::move(send)](const std::stop_token& stop) { work(stop, send); }) {
  }

  std::atomic<double> speed = 0;  // bytes/s

 private:
  void work(const std::stop_token& stop, const std::function<void()>& send) const {
    double owed = 0;
    for (auto last = steady_clock::now(); !stop.stop_requested();) {
      std::this_thread::sleep_for(milliseconds(2));
      const auto now = steady_clock::now();
      owed += speed * std::chrono::duration<double>(now - last).count();
      last = now;
      while (owed >= kLength) {
        send();
        owed -= kLength;
      }
    }
  }

  std::jthread thread_;
};

// Traffic through the device in both directions, and through the loopback.
class Traffic {
 public:
  explicit Traffic(int line)
      : line_(line),
        socket_(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0)),
        arriving_(makeV4(kPeer, kHere, kProtocolUdp, datagram())),
        reader_([this](const std::stop_token& stop) { drain(stop); }),
        in([this] { [[maybe_unused]] const auto n = write(line_, arriving_.data(), kLength); }),
        out([this] { send(toPeer_); }),
        loopback([this] { send(toItself_); }) {
    sockaddr_in any{};  // where packets wait in vain, rather than be refused
    any.sin_family = AF_INET;
    any.sin_port = htons(kPort);
    EXPECT_EQ(bind(socket_.get(), reinterpret_cast<sockaddr*>(&any), sizeof any), 0);
  }

 private:
  static Packet datagram() {
    Packet whole(kLength - 20);
    putNumber(whole, 2, kPort);
    putNumber(whole, 4, whole.size());
    return whole;
  }

  void send(const sockaddr_in& to) const {
    sendto(socket_.get(), data_.data(), data_.size(), 0, reinterpret_cast<const sockaddr*>(&to),
           sizeof to);
  }

  // The device counts what it has sent once that is read.
  void drain(const std::stop_token& stop) const {
    std::vector<char> packet(kLength);
    while (!stop.stop_requested()) {
      pollfd ready{line_, POLLIN, 0};
      poll(&ready, 1, 50);
      while (read(line_, packet.data(), packet.size()) > 0) {
      }
    }
  }

  int line_;
  Descriptor socket_;
  Packet arriving_;
  std::string data_ = std::string(kLength - kHeaders, 'x');
  sockaddr_in toPeer_ = placeOf(kPeer);
  sockaddr_in toItself_ = placeOf("127.0.0.1");
  std::jthread reader_;

 public:
  Pacer in;
  Pacer out;
  Pacer loopback;
};

// What the device has carried by a moment, as the kernel's tables of devices have it.
struct Carried {
  steady_clock::time_point moment;
  double received = 0;  // bytes
  double sent = 0;
};

Carried carried() {
  const std::vector<Link> links = networkLinks();
  const auto link = std::ranges::find(links, kDevice, &Link::name);
  if (link == links.end()) {
    ADD_FAILURE() << "there is no device " << kDevice;
    return {};
  }
  return {steady_clock::now(), static_cast<double>(link->traffic.rx_bytes),
          static_cast<double>(link->traffic.tx_bytes)};
}

struct Speeds {
  double received = 0;  // KB/s
  double sent = 0;
};

Speeds between(const Carried& before, const Carried& after) {
  const double ms = std::chrono::duration<double, std::milli>(after.moment - before.moment).count();
  return {(after.received - before.received) / ms, (after.sent - before.sent) / ms};
}

// The end of the scale of the dial that is for a speed in KB/s.
int scaleFor(double speed) { return speed < 950 ? 1000 : speed < 9500 ? 10000 : 100000; }

// Whether a speed is so near to a change of dials that either may be right.
bool isNearAChange(double speed) {
  return std::abs(speed - 950) < 950 * kDeviation || std::abs(speed - 9500) < 9500 * kDeviation;
}

class BandwidthOverALine {
 public:
  explicit BandwidthOverALine(int line)
      : traffic(line), window_(monitor_.program.show<frmNetwork>()), last_(carried()) {
    nextTick_ = steady_clock::now();
  }

  // Lets the window tick each second of the wall's clock until a tick and the one before it
  // were in time, as the window takes what lies between them for a second's; answers what the
  // device carried meanwhile.
  Speeds second() {
    constexpr int kMostAttempts = 10;
    for (int attempt = 1;; ++attempt) {
      const bool wasInTime = isInTime_;
      const Speeds speeds = tick();
      if ((wasInTime && isInTime_) || attempt == kMostAttempts) return speeds;
    }
  }

  void expectShown(const Speeds& speeds) {
    expectRow("received", {&window_->NetRec1, &window_->NetRec2, &window_->NetRec3},
              speeds.received);
    expectRow("sent", {&window_->NetSend1, &window_->NetSend2, &window_->NetSend3}, speeds.sent);
    expectRow("total", {&window_->NetTotal1, &window_->NetTotal2, &window_->NetTotal3},
              speeds.received + speeds.sent);
  }

  Traffic traffic;
  std::set<int> scales;  // of the dials that were seen

 private:
  Speeds tick() {
    constexpr milliseconds kLatest{20};
    nextTick_ += seconds(1);
    std::this_thread::sleep_until(nextTick_);
    const Carried now = carried();
    monitor_.tick();
    isInTime_ = steady_clock::now() - nextTick_ <= kLatest;
    return between(std::exchange(last_, now), now);
  }

  void expectRow(const char* row, std::array<const frmNetwork::Gauge*, 3> dials, double speed) {
    SCOPED_TRACE(std::string(row) + ", " + std::to_string(speed) + " KB/s");
    std::vector<const bkCProg*> seen;
    for (const auto* dial : dials) {
      if (dial->front().visible) seen.push_back(&dial->front());
    }
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_NEAR(seen[0]->Value, speed, speed * kDeviation + kHalf);
    if (!isNearAChange(speed)) {
      EXPECT_EQ(seen[0]->Max, scaleFor(speed));
      scales.insert(seen[0]->Max);
    }
    std::printf("%-8s %9.1f KB/s carried, dial of %6d shows %6d\n", row, speed,
                static_cast<int>(seen[0]->Max), static_cast<int>(seen[0]->Value));
  }

  MonitorProgram monitor_;
  std::shared_ptr<frmNetwork> window_;
  Carried last_;
  bool isInTime_ = true;  // the last tick
  steady_clock::time_point nextTick_;
};

constexpr double kSlow = 100'000;  // bytes/s
constexpr double kMedium = 2'000'000;
constexpr double kFast = 20'000'000;

// Other speeds in each direction, so that no row can be taken for another. What the loopback
// carries is in none.
void showThreeSpeeds(int line) {
  BandwidthOverALine monitor(line);
  monitor.traffic.loopback.speed = 500'000;
  for (const auto& [in, out] : {std::pair{kMedium, kSlow}, {kFast, kMedium}, {kSlow, kFast}}) {
    monitor.traffic.in.speed = in;
    monitor.traffic.out.speed = out;
    for (int tick = 1; tick <= 5; ++tick) {
      const Speeds speeds = monitor.second();
      if (tick >= 3) monitor.expectShown(speeds);
    }
  }
  EXPECT_EQ(monitor.scales, (std::set<int>{1000, 10000, 100000}));
}

TEST(BandwidthOnALine, ShowsThreeSpeedsOfEachDirectionAsTheDeviceCountsThem) {
  overALine(showThreeSpeeds);
}

// From one side of each change of dials to the other, and back down.
void changeDials(int line) {
  BandwidthOverALine monitor(line);
  for (const double speed : {850e3, 1050e3, 8500e3, 10500e3, 8500e3, 850e3}) {
    monitor.traffic.out.speed = speed;
    monitor.second();
    monitor.expectShown(monitor.second());
  }
  EXPECT_EQ(monitor.scales, (std::set<int>{1000, 10000, 100000}));
}

TEST(BandwidthOnALine, ChangesItsDialsAtNineteenTwentiethsOfTheirScales) { overALine(changeDials); }

}  // namespace
}  // namespace veltrin::lab
