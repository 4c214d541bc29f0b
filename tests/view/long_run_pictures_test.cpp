// SPDX-License-Identifier: GPL-3.0-or-later
// Photographs of the windows whose tests take long: the Hop Stability Test, its summary
// and the Outage monitor.
#include <cmath>

#include "pictures.h"
#include "route/MonOut.h"
#include "route/Stability.h"
#include "route/StabilitySUM.h"

namespace veltrin {
namespace {

const char* const kPingText =
    "Reply from 198.51.100.17: bytes=32 time=18ms TTL=61\r\n\r\n"
    "Ping statistics for 198.51.100.17:\r\n"
    "    Packets: Sent = 1, Received = 1, Lost = 0 (0% loss),\r\n"
    "Approximate round trip times in milli-seconds:\r\n"
    "    Minimum = 18ms, Maximum = 18ms, Average = 18ms \r\n";

const char* const kTraceText =
    "\r\nTracing route to www.example.org [203.0.113.80]\r\nover a maximum of 30 hops:\r\n\r\n"
    "  1     1 ms    <1 ms    <1 ms  router.example [192.168.178.1] \r\n"
    "  2     8 ms     7 ms     8 ms  access.isp.example [198.51.100.1] \r\n"
    "  3     *        *        *     Request timed out.\r\n";

const char* const kSummary =
    "   1 Hop showed packet loss and will not be tested, indepth will be performed\r\n"
    "Results for IP: 192.168.178.1 Average Ping = 1   Low Ping = 1  High Ping = 4\r\n"
    "     Percent of Average Replies = 100%   Percent of High Returns = 0%   Percent of Low "
    "Returns = 0%\r\n"
    "Results for IP: 198.51.100.1 Average Ping = 62   Low Ping = 8  High Ping = 304\r\n"
    "     Percent of Average Replies = 38%   Percent of High Returns = 57%   Percent of Low "
    "Returns = 5%\r\n"
    "     This hop exibited a wide range of returns and may be causing an issue\r\n"
    "Results for IP: 203.0.113.80 Average Ping = 22   Low Ping = 21  High Ping = 29\r\n"
    "     Percent of Average Replies = 98%   Percent of High Returns = 2%   Percent of Low "
    "Returns = 0%\r\n";

// The times of a line that is mostly even, with a wave and a peak now and then.
std::int32_t timeOf(int number, int base, int peak) {
  const double wave = 0.12 * base * std::sin(number / 7.0);
  const int jitter = (number * number * 31 + number * 17) % 13;
  const bool isPeak = peak > 0 && number % 37 == 19;
  return base + static_cast<int>(wave) + jitter + (isPeak ? peak : 0);
}

class LongRunPictures : public Pictures {
 protected:
  std::shared_ptr<Stability> stability() {
    auto form = shown<Stability>();
    form->TestPoint.text = "www.example.org";
    return form;
  }

  // The run over so many hops, up to a number of pings to one of them.
  void run(Stability& form, std::size_t hops, int twips, std::size_t hop, int pings) {
    auto& graphs = program.shared<Graphit>();
    program.shared<StabilityValues>().Total = static_cast<double>(hops);
    form.height = twips;
    form.StartIt.enabled = false;
    form.Command2.enabled = false;
    for (std::size_t each = 0; each < form.PGraph.size(); ++each) {
      const bool isSeen = each < hops && each < 16;
      form.PGraph[each].visible = isSeen;
      form.Label2[each].visible = isSeen;
      const int base = 6 + 14 * static_cast<int>(each);
      const int past = each < hop ? 100 : each == hop ? pings : 0;
      for (int ping = 0; ping < past; ++ping) {
        graphs.DrawUsage(each, timeOf(ping, base, each % 3 == 1 ? 180 : 0), form.PGraph[each]);
      }
    }
    form.txtOutputs.text = "Testing Hop 3\r\n";
    form.txtOutputs.text += kPingText;
    form.Text1.text = "198.51.100.17";
    form.Label3.caption = "18";
  }

  static void complete(Stability& form) {
    form.StartIt.enabled = true;
    form.Command2.enabled = true;
    form.Label4.caption = "";
    form.Text1.text = "2183";
    form.txtOutputs.text += "******* Test is Complete ********* ";
  }

  std::shared_ptr<MonOut> monitor(int probes) {
    auto form = shown<MonOut>();
    auto& graph = program.shared<OutageValues>().graph;
    for (int probe = 0; probe < probes; ++probe) {
      const bool isLost = probe % 611 > 590;
      graph.DrawUsage(isLost ? 698 : timeOf(probe, 31, probe % 5 == 0 ? 240 : 0), form->OGraph, 700,
                      Colour{255, 255, 255});
    }
    form->Label4.caption = "2";
    form->Label1.caption = "07 Mar 26 at 09:05:00";
    form->Label7.caption = "Run Time: 2 hrs 14 mins 7 sec";
    form->Label8.caption = "Testing to IP: 203.0.113.80";
    form->Label6.caption = "34";
    form->Label5.caption = "Last 2 Hours";
    form->Command3.caption = "Stop";
    form->Command1.enabled = false;
    form->Command2.enabled = false;
    return form;
  }

  static void inOutage(MonOut& form) {
    form.Label4.caption = "3";
    form.Label6.caption = "698";
    form.Text1.text = "Outage Detected at: 10:12:44 on 07 Mar 26\r\n";
    form.Text1.text += kTraceText;
  }
};

TEST_F(LongRunPictures, StabilityAtRest) {
  stability();
  photograph("stability-idle");
}

TEST_F(LongRunPictures, StabilityTracesTheRoute) {
  const auto form = stability();
  form->StartIt.enabled = false;
  form->Command2.enabled = false;
  form->Text1.text = "tracert www.example.org";
  form->txtOutputs.text = "Performing Trace Route - Pass 1 to www.example.org\r\n";
  form->txtOutputs.text += kTraceText;
  form->mousePointer = MousePointer::Hourglass;
  photograph("stability-trace");
}

TEST_F(LongRunPictures, StabilityOfTwoHops) {
  const auto form = stability();
  run(*form, 2, 2970, 1, 40);
  form->Label4.caption = "Estimated Time Remaining 0:14";
  photograph("stability-2");
}

TEST_F(LongRunPictures, StabilityOfNineHops) {
  const auto form = stability();
  run(*form, 9, 5600, 6, 63);
  form->Label4.caption = "Estimated Time Remaining 4:38";
  photograph("stability-9");
}

TEST_F(LongRunPictures, StabilityOfSixteenHops) {
  const auto form = stability();
  run(*form, 16, 7550, 12, 80);
  form->Label4.caption = "Estimated Time Remaining 7:03";
  photograph("stability-16");
}

TEST_F(LongRunPictures, StabilityOfEighteenHopsOnBothPages) {
  const auto form = stability();
  run(*form, 18, 7550, 18, 0);
  complete(*form);
  form->Command1.visible = true;
  photograph("stability-18-page-1");

  form->Command1.press();
  photograph("stability-18-page-2");
}

TEST_F(LongRunPictures, Summary) {
  const auto form = shown<StabilitySUM>();
  form->Text1.text = kSummary;
  window->resize(800, 180);
  photograph("stability-summary");
}

TEST_F(LongRunPictures, OutageMonitorAtRest) {
  shown<MonOut>();
  photograph("outage-idle");
}

TEST_F(LongRunPictures, OutageMonitorRunning) {
  monitor(1300);
  photograph("outage-running");
}

TEST_F(LongRunPictures, OutageMonitorInAnOutage) {
  const auto form = monitor(2427);
  inOutage(*form);
  form->height = 6700;
  photograph("outage-outage");
}

TEST_F(LongRunPictures, OutageMonitorShowsItsData) {
  const auto form = monitor(2400);
  form->Check1.value = kChecked;
  form->height = 5410;
  form->DosBox2.text = "\r\nPinging www.example.org [203.0.113.80] with 32 bytes of data:\r\n";
  form->DosBox2.text += "Reply from 203.0.113.80: bytes=32 time=23ms TTL=52\r\n";
  photograph("outage-data");
}

TEST_F(LongRunPictures, OutageMonitorOfAYear) {
  const auto form = monitor(1800);
  form->Label4.caption = "99999";
  form->Label7.caption = "Run Time: 1 year 364 days 23 hrs 59 mins 59 sec";
  form->Label8.caption = "Testing to IP: 255.255.255.255";
  photograph("outage-year");
}

}  // namespace
}  // namespace veltrin
