// SPDX-License-Identifier: GPL-3.0-or-later
// Photographs of the network monitors.
#include "monitor/frmIP.h"
#include "monitor/frmNetwork.h"
#include "pictures.h"

namespace veltrin {
namespace {

class MonitorPictures : public Pictures {
 protected:
  // Sets the figures of a card, in KB per second, and ticks once.
  void traffic(frmNetwork& form, double received, double sent) {
    const std::string card = "\\\\MYPC\\Network Interface(Card One)\\Bytes ";
    counters.values[card + "Received/sec"] = received * 1000;
    counters.values[card + "Sent/sec"] = sent * 1000;
    counters.values[card + "Total/sec"] = (received + sent) * 1000;
    form.Timer1.tick();
  }

  std::shared_ptr<frmNetwork> network() {
    program.start.HostName = "MYPC";
    program.start.PdhQuery = 1;
    counters.instances = {"Card One"};
    return shown<frmNetwork>();
  }
};

TEST_F(MonitorPictures, BandwidthOfAnIdleLine) {
  network();
  photograph("network-idle");
}

TEST_F(MonitorPictures, BandwidthOfASlowLine) {
  traffic(*network(), 612, 88);
  photograph("network-slow");
}

TEST_F(MonitorPictures, BandwidthInAllThreeRanges) {
  traffic(*network(), 8600, 420);
  photograph("network-mixed");
}

TEST_F(MonitorPictures, BandwidthOfAFastLine) {
  traffic(*network(), 62'000, 31'500);
  photograph("network-fast");
}

TEST_F(MonitorPictures, BandwidthWithItsKeyboardOnAButton) {
  traffic(*network(), 8600, 420);
  widget("OnTopALL")->setFocus(Qt::TabFocusReason);
  photograph("network-keyboard");
}

TEST_F(MonitorPictures, Protocols) {
  program.start.HostName = "MYPC";
  program.start.PdhQuery = 1;
  const auto form = shown<frmIP>();
  double value = 3;
  for (const std::string& path : counters.paths) {
    counters.values[path] = path.ends_with("/sec") ? value : 0;
    value = value > 3000 ? 7 : value * 1.9;
  }
  counters.values["\\\\MYPC\\IPv4\\Datagrams Received Discarded"] = 1234567;
  counters.values["\\\\MYPC\\IPv6\\Datagrams Outbound No Route"] = 4294967295;
  form->Timer1.tick();
  photograph("protocols");
}

// A page is loading, by both versions.
TEST_F(MonitorPictures, ProtocolsOfAnOrdinaryLine) {
  program.start.HostName = "MYPC";
  program.start.PdhQuery = 1;
  const auto form = shown<frmIP>();
  const auto count = [&](const std::string& name, double version4, double version6) {
    counters.values["\\\\MYPC\\IPv4\\" + name] = version4;
    counters.values["\\\\MYPC\\IPv6\\" + name] = version6;
  };
  for (const std::string& path : counters.paths) counters.values[path] = 0;
  count("Datagrams/sec", 412, 1380);
  count("Datagrams Received/sec", 287, 961);
  count("Datagrams Received Delivered/sec", 287, 961);
  count("Datagrams Sent/sec", 125, 419);
  count("Datagrams Received Address Errors", 4, 0);
  count("Datagrams Received Discarded", 0, 12);
  count("Datagrams Outbound No Route", 38, 7);
  form->Timer1.tick();
  photograph("protocols-line");
}

}  // namespace
}  // namespace veltrin
