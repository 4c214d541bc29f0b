// SPDX-License-Identifier: GPL-3.0-or-later
#include "route/Stability.h"

#include <algorithm>

#include "frame/copy_text.h"
#include "frame/growing_text.h"
#include "frame/tool_tips.h"
#include "ping/pingmod.h"
#include "route/StabilitySUM.h"
#include "route/indepth2.h"
#include "route/tracert_reader.h"
#include "text/statement.h"
#include "text/strings.h"

namespace veltrin {
namespace {

const char* const kTitle = "Stability Test";
const char* const kSection = "Stability";
const char* const kUse = "Use";

constexpr std::int64_t kShortestUse = 6;  // characters of a remembered destination

constexpr int kTrials = 4;               // pings that tell whether the destination answers
constexpr int kPauseBehindTrial = 1000;  // ms
constexpr int kPauseBehindTrace = 50;
constexpr double kSlowestGood = 500;  // ms, mean of the trials

constexpr int kPings = 100;         // to each hop, so that counts are percents
constexpr std::int32_t kFloor = 5;  // ms, lowest value of a curve
constexpr double kStray = 5;        // ms from the average
constexpr double kWideRange = 50;   // high replies above low ones, of a hundred

constexpr std::size_t kPage = 16;  // hops on a page of graphs

constexpr int kSecond = 1000;  // ms
constexpr int kMinute = 60;    // s

// Of the window, in twips.
constexpr int kStripHeight = 2050;  // without graphs
constexpr int kOneRowHeight = 2970;

struct HeightOfHops {
  std::size_t above;
  int height;
};
constexpr std::array<HeightOfHops, 7> kHeights = {
    {{14, 7550}, {12, 6900}, {10, 6250}, {8, 5600}, {6, 4950}, {4, 4300}, {2, 3650}}};

// The pause behind a ping lets near hops be asked more often.
int pauseBehindPing(std::size_t hop) {
  if (hop < 2) return 200;
  return hop == 2 ? 500 : 1000;
}

// Seconds that a run over so many hops takes, with those pauses.
int estimateFor(std::size_t hops) {
  const int count = static_cast<int>(hops);
  if (count < 3) return 24 * count;
  if (count < 5) return (count - 2) * 54 + 48;
  return (count - 4) * 112 + 156;
}

int heightFor(std::size_t hops) {
  for (const HeightOfHops& step : kHeights) {
    if (hops > step.above) return step.height;
  }
  return kOneRowHeight;
}

std::string remainingTime(int seconds) {
  const std::string rest = std::to_string(seconds % kMinute);
  return std::to_string(seconds / kMinute) + ":" + (rest.size() < 2 ? "0" + rest : rest);
}

}  // namespace

Stability::Stability(Program& program)
    : Form(nameOf(WindowName::Stability), program),
      program_(program),
      pings_(program.shared<PingValues>()),
      route_(program.shared<RouteValues>()),
      inDepth_(program.shared<InDepthValues>()),
      run_(program.shared<StabilityValues>()),
      graphs_(program.shared<Graphit>()),
      objDOS(*this, program.platform,
             [this](const std::string& chunk) { objDOS_ReceiveOutputs(chunk); }) {
  ownControls();
  caption = kTitle;
  Label1.caption = "URL/IP";
  TestPoint.text = program.installation.ProbeHost;
  Command1.visible = false;
  Timer1.enabled = false;
  for (std::size_t hop = 0; hop < Graphit::kHops; ++hop) {
    Label2[hop].caption = std::to_string(hop + 1);
    PGraph[hop].scale = UserScale{Graphit::kTimes, Graphit::kHighest};
  }
  PGraph[0].toolTip = "Scale 0 - 50 ms";

  StartIt.click = [this] { StartIt_Click(); };
  Command1.click = [this] { Command1_Click(); };
  Command2.click = [this] { Command2_Click(); };
  Timer1.timer = [this] { Timer1_Timer(); };
  txtOutputs.change = [this] { followText(program_, txtOutputs); };
}

void Stability::ownControls() {
  own("Label1", Label1);
  own("TestPoint", TestPoint);
  own("StartIt", StartIt);
  own("Command2", Command2);
  own("Command1", Command1);
  own("Label3", Label3);
  own("Label4", Label4);
  own("Text1", Text1);
  own("txtOutputs", txtOutputs);
  own("Label2", Label2);
  own("PGraph", PGraph);
  own("Text2", Text2);
  own("dosbox", dosbox);
  own("TestIPs", TestIPs);
  own("results", results);
  own("BadHops", BadHops);
  own("Timer1", Timer1);
}

void Stability::Form_Load() {
  inDepth_.lastBadHop = [this] {
    return BadHops.count() == 0 ? std::string() : BadHops.item(BadHops.count() - 1);
  };
  height = kStripHeight;
  const std::string remembered = program_.readSetting(kSection, kUse);
  if (Len(remembered) >= kShortestUse) TestPoint.text = remembered;
  setToolTips(program_.LanguageId, *this);
}

void Stability::Form_Unload() { inDepth_.lastBadHop = {}; }

// Ended early, a run leaves both buttons disabled: the window has to be opened anew.
void Stability::StartIt_Click() {
  prepare();
  if (!isReachable()) return;
  traceRoute();
  if (!objDOS) return;
  listHops();
  startEstimate();
  reportHops();
  showGraphs();
  testHops();
  if (!objDOS) return;
  finish();
  if (objDOS) showResults();
}

void Stability::prepare() {
  StartIt.enabled = false;
  results.clear();
  BadHops.clear();
  HideAll();
  height = kStripHeight;
  Label4.caption = "";
  program_.writeSetting(kSection, kUse, TestPoint.text.get());
  Command2.enabled = false;
}

// A ping without a reply counts as the one before it, whichever tool sent that. Replies
// in under a millisecond look like none.
bool Stability::isReachable() {
  run_.ParseMode = 1;
  run_.Total = 0;
  for (int trial = 0; trial < kTrials; ++trial) {
    objDOS.run("ping " + TestPoint.text.get() + " -n 1");
    skip([&] { program_.Wait(kPauseBehindTrial); });
    if (!objDOS) break;
    run_.Total = Val(run_.Total) + Val(pings_.PingTime);
  }
  run_.ParseMode = 0;
  if (!objDOS) return false;
  if (Val(run_.Total) == 0) {
    program_.MsgBox("Destination IP is not valid or is unreachable", kMessageOk, kTitle);
    return false;
  }
  run_.Total = Format(Val(run_.Total) / kTrials, "#");
  if (Val(run_.Total) <= kSlowestGood) return true;
  return program_.MsgBox(
             "Destination may be unreachable or is invalid. Would you like to test as much of the "
             "path as possible?",
             kMessageYesNo, kTitle) <= kAnswerYes;
}

// The line names the pass that the counter of all route tools stands at.
void Stability::traceRoute() {
  dropIntroduction(txtOutputs);
  mousePointer = MousePointer::Hourglass;
  txtOutputs.text += program_.texts.TextTracePass + std::to_string(route_.RoutePass) + " to " +
                     TestPoint.text.get() + std::string(kLineBreak);
  Text1.text = "tracert " + TestPoint.text.get();
  objDOS.run(Text1.text);
  txtOutputs.text += "Calculating Test Points" + std::string(kLineBreak);
  skip([&] { program_.Wait(kPauseBehindTrace); });
}

// A silent hop leaves no gap in the list.
void Stability::listHops() {
  TestIPs.clear();
  run_.SilentHops = 0;
  for (const TracertEvent& event : readTracert(txtOutputs.text.get())) {
    if (event.line == TracertLine::SilentHop) ++run_.SilentHops;
    if (event.line == TracertLine::Hop) TestIPs.add(event.address);
  }
  txtOutputs.text += "Preparing to perform Stability Test on each hop" + std::string(kLineBreak);
  run_.Total = TestIPs.count();
}

void Stability::startEstimate() {
  run_.Estimate = estimateFor(hops());
  run_.Elapsed = 0;
  Timer1.interval = kSecond;
  Timer1.enabled = true;
}

void Stability::Timer1_Timer() {
  ++run_.Elapsed;
  const int remaining = run_.Estimate - run_.Elapsed;
  Label4.caption =
      remaining > 0 ? "Estimated Time Remaining " + remainingTime(remaining) : std::string();
}

void Stability::reportHops() {
  const std::string lineBreak(kLineBreak);
  const std::string silent = std::to_string(run_.SilentHops);
  txtOutputs.text += lineBreak + "Total Hops = " + std::to_string(hops()) + lineBreak;
  if (run_.SilentHops < 1) return;
  BadHops.add(silent);
  if (run_.SilentHops == 1) {
    report("   1 Hop showed packet loss and will not be tested, indepth will be performed" +
           lineBreak);
    return;
  }
  report("   " + silent +
         " Hops showed packet loss and will not be tested, indepth will be performed" + lineBreak +
         "   This may be an indication that the destination provider has blocked these test" +
         lineBreak);
}

void Stability::showGraphs() {
  height = heightFor(hops());
  showHops(0, std::min(hops(), kPage));
}

// The counter of all route tools ends up at the number of graphs.
void Stability::HideAll() {
  for (route_.RoutePass = 0; route_.RoutePass < static_cast<int>(Graphit::kHops);
       ++route_.RoutePass) {
    const auto hop = static_cast<std::size_t>(route_.RoutePass);
    Label2[hop].visible = false;
    PGraph[hop].visible = false;
  }
}

// Those from `first` up to `end`, as far as there are graphs.
void Stability::showHops(std::size_t first, std::size_t end) {
  for (std::size_t hop = first; hop < std::min(end, Graphit::kHops); ++hop) {
    Label2[hop].visible = true;
    PGraph[hop].visible = true;
  }
}

void Stability::testHops() {
  for (run_.HopIndex = 0; run_.HopIndex < hops() && objDOS; ++run_.HopIndex) {
    testHop(TestIPs.item(run_.HopIndex));
  }
}

// With the first hop of the second page the graphs go, until the run is over.
void Stability::testHop(const std::string& address) {
  txtOutputs.text = "";
  results.clear();
  Text1.text = address;
  txtOutputs.text += "Testing Hop " + std::to_string(run_.HopIndex + 1) + std::string(kLineBreak);
  if (run_.HopIndex == kPage) HideAll();
  for (run_.PingCount = 1; run_.PingCount <= kPings; ++run_.PingCount) {
    pingHop();
    if (!objDOS) return;
  }
  judgeHop(address);
}

// A lost reply repeats the last reply time.
void Stability::pingHop() {
  txtOutputs.text = "";
  objDOS.run("ping " + Text1.text.get() + " -n 1");
  skip([&] { program_.Wait(pauseBehindPing(run_.HopIndex)); });
  if (!objDOS) return;
  readAverage(txtOutputs.text.get(), pings_.PingTime);
  skip([&] { run_.GraphValue = toLong(pings_.PingTime.number()); });
  Label3.caption = std::to_string(run_.GraphValue);
  results.add(std::to_string(run_.GraphValue));
  run_.GraphValue = std::max(run_.GraphValue, kFloor);
  if (run_.HopIndex < Graphit::kHops) {
    graphs_.DrawUsage(run_.HopIndex, run_.GraphValue, PGraph[run_.HopIndex]);
  }
}

void Stability::judgeHop(const std::string& address) {
  const std::string lineBreak(kLineBreak);
  sumUp();
  report("Results for IP: " + address + "Average Ping = " + run_.HopAverage +
         "   Low Ping = " + toText(run_.Low) + "  High Ping = " + toText(run_.High) + lineBreak);
  countStrays();
  report("     Percent of Average Replies = " + toText(kPings - (run_.Low + run_.High)) +
         "%   Percent of High Returns = " + toText(run_.High) +
         "%   Percent of Low Returns = " + toText(run_.Low) + "%" + lineBreak);
  if (run_.Low + kWideRange < run_.High) {
    report("     This hop exibited a wide range of returns and may be causing an issue" +
           lineBreak);
  }
}

// Low and high become the lowest and the highest time of the hop.
void Stability::sumUp() {
  Text1.text = "0";
  run_.Low = run_.High = Val(results.item(0));
  for (std::size_t at = 0; at < results.count(); ++at) {
    const double time = Val(results.item(at));
    Text1.text = toText(time + Val(Text1.text));
    run_.Low = std::min(run_.Low, time);
    run_.High = std::max(run_.High, time);
  }
  run_.HopAverage = Format(Val(Text1.text) / kPings, "#");
}

// Low and high become the numbers of replies that lie further than a little below and
// above the average.
void Stability::countStrays() {
  const double average = Val(run_.HopAverage);
  run_.Low = run_.High = 0;
  for (std::size_t at = 0; at < results.count(); ++at) {
    const double time = Val(results.item(at));
    if (average - kStray > time) ++run_.Low;
    if (average + kStray < time) ++run_.High;
  }
}

void Stability::finish() {
  if (hops() > kPage) {
    HideAll();
    Command1.visible = true;
    showHops(0, kPage);
  }
  Timer1.enabled = false;
  Label4.caption = "";
  mousePointer = MousePointer::Default;
  txtOutputs.text += program_.texts.TextTestComplete;
  StartIt.enabled = true;
  Command2.enabled = true;
}

// The analysis comes into view when it is over, so that this window shows the wait.
void Stability::showResults() {
  if (BadHops.count() > 0) {
    mousePointer = MousePointer::Hourglass;
    program_.keep<indepth2>();
    mousePointer = MousePointer::Default;
    program_.showModal<indepth2>();
  }
  program_.keep<StabilitySUM>()->Text1.text = Text2.text.get();
  program_.showModal<StabilitySUM>();
}

// The caption tells the page on show, and not the one that a press brings.
void Stability::Command1_Click() {
  HideAll();
  if (Command1.caption == "Page 1") {
    showHops(kPage, hops());
    Command1.caption = "Page 2";
  } else {
    showHops(0, kPage);
    Command1.caption = "Page 1";
  }
}

void Stability::Command2_Click() { copyText(program_, txtOutputs.text, kTitle); }

void Stability::objDOS_ReceiveOutputs(const std::string& chunk) {
  txtOutputs.text += chunk;
  if (run_.ParseMode == 1 && readAverage(chunk, pings_.PingTime)) return;
  program_.platform.events.DoEvents();
}

void Stability::report(const std::string& text) {
  txtOutputs.text += text;
  Text2.text += text;
}

// The hops of the latest run; while its trials run, their times.
std::size_t Stability::hops() const {
  constexpr double kMost = 1e6;
  return static_cast<std::size_t>(std::clamp(Val(run_.Total), 0.0, kMost));
}

}  // namespace veltrin
