// SPDX-License-Identifier: GPL-3.0-or-later
// Photographs of the Trace Route and the InDepth analysis.
#include <QMenu>

#include "pictures.h"
#include "route/indepth.h"
#include "route/indepth2.h"
#include "route/trace.h"

namespace veltrin {
namespace {

const char* const kPingText =
    "Pinging www.example.org [203.0.113.80] with 32 bytes of data:\r\n\r\n"
    "Reply from 203.0.113.80: bytes=32 time=23ms TTL=52\r\n"
    "Reply from 203.0.113.80: bytes=32 time=22ms TTL=52\r\n"
    "Reply from 203.0.113.80: bytes=32 time=22ms TTL=52\r\n"
    "Reply from 203.0.113.80: bytes=32 time=24ms TTL=52\r\n\r\n"
    "Ping statistics for 203.0.113.80:\r\n"
    "    Packets: Sent = 4, Received = 4, Lost = 0 (0% loss),\r\n"
    "Approximate round trip times in milli-seconds:\r\n"
    "    Minimum = 22ms, Maximum = 24ms, Average = 22ms\r\n";

const char* const kTraceText =
    "\r\nTracing route to www.example.org [203.0.113.80]\r\nover a maximum of 30 hops:\r\n\r\n"
    "  1     1 ms    <1 ms    <1 ms  router.example [192.168.178.1] \r\n"
    "  2     8 ms     7 ms     8 ms  access.isp.example [198.51.100.1] \r\n"
    "  3    11 ms    10 ms    12 ms  core-1.isp.example [198.51.100.17] \r\n"
    "  4     *        *        *     Request timed out.\r\n"
    "  5    18 ms    18 ms    19 ms  198.51.100.129 \r\n"
    "  6    22 ms    23 ms    22 ms  www.example.org [203.0.113.80] \r\n\r\nTrace complete.\r\n";

const char* const kPathText =
    "\r\nTracing route to www.example.org [203.0.113.80]\r\nover a maximum of 30 hops:\r\n"
    "  0  desktop [192.168.178.24] \r\n"
    "  1  router.example [192.168.178.1] \r\n"
    "  2  access.isp.example [198.51.100.1] \r\n"
    "  3  www.example.org [203.0.113.80] \r\n\r\n"
    "Computing statistics for 75 seconds...\r\n"
    "            Source to Here   This Node/Link\r\n"
    "Hop  RTT    Lost/Sent = Pct  Lost/Sent = Pct  Address\r\n"
    "  0                                           desktop [192.168.178.24] \r\n"
    "                                0/ 100 =  0%     Overall Loss/Congestion - Possibly Causing "
    "Redirect\r\n"
    "  1    1ms     0/ 100 =  0%     0/ 100 =  0%  router.example [192.168.178.1] \r\n"
    "                                2/ 100 =  2%     Overall Loss/Congestion - Possibly Causing "
    "Redirect\r\n"
    "  2    8ms     2/ 100 =  2%     0/ 100 =  0%  access.isp.example [198.51.100.1] \r\n"
    "                                0/ 100 =  0%     Overall Loss/Congestion - Possibly Causing "
    "Redirect\r\n"
    "  3   22ms     2/ 100 =  2%     0/ 100 =  0%  www.example.org [203.0.113.80] \r\n\r\n"
    "Trace complete.\r\n";

// Of a line that is away behind the router at home.
const char* const kSilentPingText =
    "\r\nPinging www.example.org [203.0.113.80] with 32 bytes of data:\r\n\r\n"
    "Request timed out.\r\n"
    "Request timed out.\r\n"
    "Request timed out.\r\n"
    "Request timed out.\r\n\r\n"
    "Ping statistics for 203.0.113.80:\r\n"
    "    Packets: Sent = 4, Received = 0, Lost = 4 (100% loss),\r\n";

const char* const kCutTraceText =
    "\r\nTracing route to www.example.org [203.0.113.80]\r\nover a maximum of 30 hops:\r\n\r\n"
    "  1     1 ms    <1 ms    <1 ms  router.example [192.168.178.1] \r\n"
    "  2     *        *        *     Request timed out.\r\n"
    "  3     *        *        *     Request timed out.\r\n"
    "  4     *        *        *     Request timed out.\r\n"
    "  5     *        *        *     Request timed out.\r\n"
    "  6     *        *        *     Request timed out.\r\n";

// Of a line that loses packets between the router at home and the provider, with a station
// farther on that is slow to answer for itself.
const char* const kLossyPathText =
    "\r\nTracing route to www.example.org [203.0.113.80]\r\nover a maximum of 30 hops:\r\n"
    "  0  desktop [192.168.178.24] \r\n"
    "  1  router.example [192.168.178.1] \r\n"
    "  2  access.isp.example [198.51.100.1] \r\n"
    "  3  core-1.isp.example [198.51.100.17] \r\n"
    "  4  198.51.100.129 \r\n"
    "  5  www.example.org [203.0.113.80] \r\n\r\n"
    "Computing statistics for 125 seconds...\r\n"
    "            Source to Here   This Node/Link\r\n"
    "Hop  RTT    Lost/Sent = Pct  Lost/Sent = Pct  Address\r\n"
    "  0                                           desktop [192.168.178.24] \r\n"
    "                                0/ 100 =  0%     Overall Loss/Congestion - Possibly Causing "
    "Redirect\r\n"
    "  1    1ms     0/ 100 =  0%     0/ 100 =  0%  router.example [192.168.178.1] \r\n"
    "                                9/ 100 =  9%     Overall Loss/Congestion - Possibly Causing "
    "Redirect\r\n"
    "  2    9ms     9/ 100 =  9%     0/ 100 =  0%  access.isp.example [198.51.100.1] \r\n"
    "                                0/ 100 =  0%     Overall Loss/Congestion - Possibly Causing "
    "Redirect\r\n"
    "  3   12ms    10/ 100 = 10%     1/ 100 =  1%  core-1.isp.example [198.51.100.17] \r\n"
    "                                0/ 100 =  0%     Overall Loss/Congestion - Possibly Causing "
    "Redirect\r\n"
    "  4   20ms    40/ 100 = 40%    31/ 100 = 31%  198.51.100.129 \r\n"
    "                                0/ 100 =  0%     Overall Loss/Congestion - Possibly Causing "
    "Redirect\r\n"
    "  5   23ms     9/ 100 =  9%     0/ 100 =  0%  www.example.org [203.0.113.80] \r\n\r\n"
    "Trace complete.\r\n";

class RoutePictures : public Pictures {
 protected:
  std::shared_ptr<trace> traceWindow() {
    auto form = shown<trace>();
    form->trace1.text = "www.example.org";
    return form;
  }

  // With one destination, whose trace the photograph shows to its end.
  std::shared_ptr<trace> traceOfOne() {
    auto form = traceWindow();
    for (TextBox* box : {&form->trace2, &form->trace3, &form->trace4, &form->trace5}) {
      box->text = "";
    }
    return form;
  }

  template <class Kind>
  static void run(Kind& form, const char* path = kPathText) {
    form.Command3.enabled = true;
    form.Command4.enabled = true;
    form.Command5.visible = false;
    form.Text1.text = "www.example.org";
    form.dosbox.text =
        "This provides detailed information on internet latency and loss\r\n"
        "This test can take up to 10 minutes or longer depending on total hops "
        "and queries\r\nTest Started at 9:05:00\r\n";
    form.dosbox.text += kPingText;
    form.dosbox.text += path;
  }
};

TEST_F(RoutePictures, TraceAtRest) {
  traceWindow();
  photograph("trace-idle");
}

TEST_F(RoutePictures, TraceRunning) {
  const auto form = traceWindow();
  for (CommandButton* button : {&form->startit, &form->copy1, &form->write1, &form->Command1}) {
    button->enabled = false;
  }
  form->txtOutputs.text += "2 passes will be run";
  form->txtOutputs.text += kPingText;
  form->txtOutputs.text += "Performing Trace Route - Pass 1 to www.example.org\r\n";
  form->Text1.text = "tracert www.example.org";
  photograph("trace-running");
}

TEST_F(RoutePictures, TraceComplete) {
  const auto form = traceOfOne();
  form->Combo1.text = "2";
  form->txtOutputs.text += "2 passes will be run";
  for (const char* pass : {"1", "2"}) {
    form->txtOutputs.text += kPingText;
    form->txtOutputs.text +=
        "Performing Trace Route - Pass " + std::string(pass) + " to www.example.org\r\n";
    form->txtOutputs.text += kTraceText;
  }
  form->txtOutputs.text += "******* Test is Complete ********* ";
  form->Text1.text = "tracert www.example.org";
  photograph("trace-complete");
}

TEST_F(RoutePictures, TraceOfALineThatIsAway) {
  const auto form = traceOfOne();
  form->txtOutputs.text += "1 passes will be run";
  form->txtOutputs.text += kSilentPingText;
  form->txtOutputs.text += "Performing Trace Route - Pass 1 to www.example.org\r\n";
  form->txtOutputs.text += kCutTraceText;
  form->Text1.text = "tracert www.example.org";
  for (CommandButton* button : {&form->startit, &form->copy1, &form->write1, &form->Command1}) {
    button->enabled = false;
  }
  photograph("trace-away");
}

TEST_F(RoutePictures, TraceAtItsSmallest) {
  const auto form = traceWindow();
  form->txtOutputs.text += kTraceText;
  window->resize(1, 1);
  photograph("trace-smallest");
}

TEST_F(RoutePictures, TraceWithItsMenu) {
  traceWindow();
  auto* menu = window->findChild<QMenu*>("decorMenu");
  menu->setActiveAction(menu->actions().front());
  menu->popup(window->mapToGlobal(QPoint(8, 24)));
  window = menu;
  photograph("trace-menu");
  menu->close();
}

TEST_F(RoutePictures, InDepthAtRest) {
  shown<indepth>();
  photograph("indepth-idle");
}

TEST_F(RoutePictures, InDepthExplainsAnOption) {
  const auto form = shown<indepth>();
  form->playit.open(program.programFolder + "\\files\\ping.avi");
  form->info.text = program.texts.TipPriorityTag;
  form->dosbox.text = program.texts.TextInDepthAbout;
  photograph("indepth-hover");
}

TEST_F(RoutePictures, InDepthRunning) {
  const auto form = shown<indepth>();
  run(*form);
  form->info.visible = false;
  form->playit.open(program.programFolder + "\\files\\ping.avi");
  photograph("indepth-running");
}

TEST_F(RoutePictures, InDepthComplete) {
  const auto form = shown<indepth>();
  form->text4.text = "250";
  run(*form);
  photograph("indepth-complete");
}

TEST_F(RoutePictures, InDepthOfALossyLine) {
  const auto form = shown<indepth>();
  form->text4.text = "250";
  run(*form, kLossyPathText);
  photograph("indepth-lossy");
}

TEST_F(RoutePictures, InDepthOnALaterSystem) {
  program.menu.PostVistaOs = 1;
  shown<indepth>();
  photograph("indepth-later");
}

TEST_F(RoutePictures, InDepthAtItsSmallest) {
  shown<indepth>();
  window->resize(1, 1);
  photograph("indepth-smallest");
}

TEST_F(RoutePictures, InDepthAfterAHopStabilityTest) {
  const auto form = look<indepth2>();
  form->text3.text = "100";
  form->text4.text = "250";
  run(*form);
  form->Text1.text = "2";
  photograph("indepth2");
}

}  // namespace
}  // namespace veltrin
