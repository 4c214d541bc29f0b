// SPDX-License-Identifier: GPL-3.0-or-later
#include "route/MonOut.h"

#include <algorithm>
#include <limits>

#include "frame/result_file.h"
#include "frame/tool_tips.h"
#include "ping/pingmod.h"
#include "text/statement.h"
#include "text/strings.h"

namespace veltrin {
namespace {

constexpr std::uint32_t kSlowestReply = 697;  // ms
constexpr std::int32_t kFailedProbe = 698;    // stands in the graph for no reply
constexpr int kProbesToOutage = 2;            // failed ones in a row
constexpr int kQuietProbes = 300;             // between two loss lines
constexpr int kShortestPause = 50;            // ms; a shorter one is none
constexpr double kLongestPause = std::numeric_limits<std::int32_t>::max();
constexpr int kOverhead = 2;         // ms of a scan that no clock tells
constexpr int kMilliseconds = 1000;  // of a second

constexpr int kAttempts = 5;               // to find the address
constexpr int kPauseOfAttempts = 1000;     // ms
constexpr std::int64_t kAddressRoom = 20;  // characters behind the bracket
constexpr std::int64_t kShortestAddress = 6;

constexpr double kGraphHeight = 700;  // ms
constexpr Colour kWhite{255, 255, 255};
constexpr Colour kGround{0x53, 0x39, 0x04};

// Of the window, in twips: the graph and its labels, the box below, the top of the next.
constexpr int kGraphSeen = 3775;
constexpr int kDataSeen = 5410;
constexpr int kTracesSeen = 6700;

const char* const kScanTime = "Out Scan Time";
const std::string kDefaultScanTime = "2";

struct Span {
  const char* scanTime;
  const char* name;
};
constexpr std::array<Span, 4> kSpans = {{{"1", "Last 60 Minutes"},
                                         {"2", "Last 2 Hours"},
                                         {"5", "Last 5 Hours"},
                                         {"10", "Last 10 Hours"}}};

const std::string kBreak(kLineBreak);

// "09:05:00 on 07 Mar 26".
std::string timeAndDay(const DateTime& moment) {
  return Format(moment, "hh:mm:ss") + " on " + Format(moment, "dd mmm yy");
}

std::string dayAndTime(const DateTime& moment) {
  return Format(moment, "dd mmm yy") + " at " + Format(moment, "hh:mm:ss");
}

// The text of the tool's first line between its brackets. A text without brackets is taken
// as it is.
std::string betweenBrackets(std::string text) {
  const std::int64_t opening = InStr(1, text, "[");
  if (opening > 0) text = Mid(text, opening + 1, kAddressRoom);
  const std::int64_t closing = InStr(1, text, "]");
  return closing > 0 ? Left(text, closing - 1) : text;
}

std::string piece(std::int64_t count, const char* unit) {
  if (count == 0) return {};
  return std::to_string(count) + " " + unit + (count == 1 ? " " : "s ");
}

}  // namespace

std::string DateDiffEx(const DateTime& start, const DateTime& end) {
  constexpr std::int64_t kMinute = 60;  // s
  constexpr std::int64_t kHour = 60 * kMinute;
  constexpr std::int64_t kDay = 24 * kHour;
  constexpr std::int64_t kYear = 365;  // days
  constexpr std::int64_t kCut = 2;     // characters
  const std::int64_t seconds = wholeSeconds(start, end);
  const std::string text = piece(seconds / kDay / kYear, "year") +
                           piece(seconds / kDay % kYear, "day") +
                           piece(seconds / kHour % 24, "hr") +
                           piece(seconds / kMinute % 60, "min") + piece(seconds % kMinute, "sec");
  return text.empty() ? text : Left(text, Len(text) - kCut);
}

MonOut::MonOut(Program& program)
    : Form(nameOf(WindowName::MonOut), program),
      program_(program),
      outage_(program.shared<OutageValues>()),
      objDOSM(*this, program.platform,
              [this](const std::string& chunk) { objDOSM_ReceiveOutputs(chunk); }) {
  ownControls();
  caption = "Monitor for Outage";
  Label2.caption = "Started";
  Label3.caption = "Outages Detected";
  Label4.caption = "0";
  Label5.caption = "Last 60 Minutes";
  Label9.caption = "Scan Time";
  Label10.caption = "Sec";
  OGraph.scale = UserScale{static_cast<double>(OutageValues::kProbes), kGraphHeight};
  OGraph.backColour = kGround;

  Command1.click = [this] { unload(); };
  Command2.click = [this] { Command2_Click(); };
  Command3.click = [this] { Command3_Click(); };
  Check1.click = [this] { Check1_MouseUp(); };
  Check1.mouseUp = [this](MouseButton) { Check1_MouseUp(); };
  for (TextBox* box : {&DosBox2, &Text1, &dosbox}) {
    box->change = [box] { box->caretToEnd(); };
  }
}

void MonOut::ownControls() {
  own("Label2", Label2);
  own("Label1", Label1);
  own("Label3", Label3);
  own("Label4", Label4);
  own("Label6", Label6);
  own("OGraph", OGraph);
  own("Line1", Line1);
  own("Line2", Line2);
  own("Line3", Line3);
  own("Label5", Label5);
  own("Label7", Label7);
  own("Label8", Label8);
  own("Command3", Command3);
  own("Command2", Command2);
  own("Label9", Label9);
  own("Combo1", Combo1);
  own("Label10", Label10);
  own("Check1", Check1);
  own("Command1", Command1);
  own("DosBox2", DosBox2);
  own("Text1", Text1);
  own("dosbox", dosbox);
}

void MonOut::Form_Load() {
  height = kGraphSeen;
  const DateTime now = program_.platform.clock.now();
  logName_ = "\\Outage Log " + Format(now, "dd mmm yy") + " " + Format(now, "hhmm") + ".txt";
  Combo1.items = {"1", "2", "5", "10"};
  const std::string remembered = program_.readSetting("Settings", kScanTime);
  Combo1.text = remembered.empty() ? kDefaultScanTime : remembered;
  setToolTips(program_.LanguageId, *this);
}

void MonOut::Form_Unload() { program_.writeSetting("Settings", kScanTime, Combo1.text.get()); }

void MonOut::Check1_MouseUp() { height = Check1.value == kChecked ? kDataSeen : kGraphSeen; }

// The path is one argument to Notepad, blanks and all.
void MonOut::Command2_Click() {
  const std::string file = logFolder() + logName_;
  if (!program_.platform.files.exists(file)) return;
  skip([&] {
    program_.platform.shell.run(
        program_.platform.environment.variable("windir") + "\\notepad.exe " + file, kShowNormal);
  });
}

void MonOut::Command3_Click() {
  if (Command3.caption == "Start") {
    start();
  } else {
    stop();
  }
}

void MonOut::start() {
  Command3.caption = "Stop";
  Command1.enabled = false;
  Command2.enabled = false;
  stopRequest_ = false;
  DoTest();
}

// Runs inside one of the loop's pauses, before the loop knows of it.
void MonOut::stop() {
  Command3.caption = "Start";
  stopRequest_ = true;
  Command1.enabled = true;
  Command2.enabled = true;
  const std::string report = "Total Test Time: " + runTime_ + kBreak +
                             "Total Test Completed: " + std::to_string(sent_) + kBreak +
                             "Total Outages: " + Label4.caption.get() + kBreak + lossLine();
  log(kBreak + report + kBreak + kBreak);
  dosbox.text += report;
}

void MonOut::DoTest() {
  beginRun();
  if (!findAddress()) return;
  Label8.caption = "Testing to IP: " + probeAddress_;
  do {
    scan();
  } while (!stopRequest_);
}

void MonOut::beginRun() {
  failStreak_ = sent_ = lost_ = quietCount_ = 0;
  inOutage_ = false;
  Label4.caption = "0";
  startStamp_ = program_.platform.clock.now();
  Label1.caption = dayAndTime(startStamp_);
  const std::string& seen = program_.start.PublicIp;
  const std::string started = "Outage Test Started: " + Label1.caption.get() + kBreak;
  const std::string own = "For IP: " + (seen.empty() ? program_.start.LocalIp : seen) + kBreak;
  log(started + kBreak + own);
  dosbox.text = started;
  dosbox.text += own;
}

// A remembered address stands in while the tool prints nothing at all. Without a runner the
// tool has nothing more to say.
bool MonOut::findAddress() {
  for (int attempt = 0; objDOSM;) {
    const std::string found = pingedAddress();
    if (!found.empty()) {
      probeAddress_ = found;
      program_.writeSetting("Monitor", "UseP", found);
      return true;
    }
    const std::string remembered = program_.readSetting("Monitor", "UseP");
    if (Len(remembered) >= kShortestAddress) {
      probeAddress_ = remembered;
      return true;
    }
    if (++attempt == kAttempts) {
      program_.MsgBox("Unable to Ping " + program_.installation.ProbeHost +
                      ", check your internet connection");
      return false;
    }
    skip([&] { program_.Wait(kPauseOfAttempts); });
  }
  return false;
}

std::string MonOut::pingedAddress() {
  DosBox2.text = "";
  objDOSM.run("ping " + program_.installation.ProbeHost);
  std::string found = betweenBrackets(DosBox2.text);
  DosBox2.text = "";
  return found;
}

void MonOut::scan() {
  const std::int64_t began = program_.platform.events.milliseconds();
  probe();
  if (failStreak_ == kProbesToOutage) beginOutage();
  if (failStreak_ == 0 && inOutage_) endOutage();
  if (!inOutage_) countQuietProbe();
  showTimes();
  pauseSince(began);
}

void MonOut::probe() {
  Ping(program_, probeAddress_, outage_.reply);
  const std::uint32_t time = outage_.reply.RoundTripTime;
  const bool failed = time > kSlowestReply;
  const std::int32_t value = failed ? kFailedProbe : static_cast<std::int32_t>(time);
  failStreak_ = failed ? failStreak_ + 1 : 0;
  if (failed) ++lost_;
  Label6.caption = std::to_string(value);
  program_.platform.events.DoEvents();
  outage_.graph.DrawUsage(value, OGraph, kGraphHeight, kWhite);
  ++sent_;
}

// The loop stands still until the trace has ended. The streak only goes past an outage's
// beginning once, so that each outage has one trace.
void MonOut::beginOutage() {
  Label4.caption = toText(Val(Label4.caption) + 1);
  inOutage_ = true;
  tell("Outage Detected at: ");
  if (height == kGraphSeen) height = kTracesSeen;
  tracing_ = true;
  objDOSM.run("tracert " + program_.installation.ProbeHost);
  tracing_ = false;
}

void MonOut::endOutage() {
  inOutage_ = false;
  tell("\tOutage Over at: ");
}

// What happens now, in the log and in both boxes.
void MonOut::tell(const std::string& what) {
  const std::string line = what + timeAndDay(program_.platform.clock.now()) + kBreak;
  log(line);
  dosbox.text += line;
  Text1.text += line;
}

void MonOut::countQuietProbe() {
  if (++quietCount_ < kQuietProbes) return;
  quietCount_ = 0;
  dosbox.text += lossLine();
}

void MonOut::showTimes() {
  runTime_ = DateDiffEx(startStamp_, program_.platform.clock.now());
  Label7.caption = "Run Time: " + runTime_;
  for (const Span& span : kSpans) {
    if (Combo1.text == span.scanTime) Label5.caption = span.name;
  }
}

// What the probe took counts, so that probes keep their times. A scan time that is no
// number leaves the pause as it was.
void MonOut::pauseSince(std::int64_t began) {
  skip([&] {
    const double wanted = toNumber(Combo1.text.get()) * kMilliseconds - kOverhead;
    pause_ = wanted - static_cast<double>(program_.platform.events.milliseconds() - began);
  });
  program_.platform.events.DoEvents();
  if (pause_ <= kShortestPause) return;
  skip([&] { program_.Wait(toLong(std::min(pause_, kLongestPause))); });
}

void MonOut::objDOSM_ReceiveOutputs(const std::string& chunk) {
  if (tracing_) {
    dosbox.text += chunk;
    Text1.text += chunk;
  } else {
    DosBox2.text += chunk;
  }
  program_.platform.events.DoEvents();
}

// The file is closed behind each text, so that a crash loses nothing that was written.
void MonOut::log(const std::string& text) {
  std::unique_ptr<TextStream> stream;
  writeFile(program_.platform.files, stream, logFolder(), logName_, FileMode::Appending, text);
}

std::string MonOut::logFolder() const { return program_.programFolder + "\\Files"; }

std::string MonOut::lossLine() const {
  return "Packets Loss: " + std::to_string(lost_) + " of " + std::to_string(sent_) + kBreak;
}

}  // namespace veltrin
