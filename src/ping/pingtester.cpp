// SPDX-License-Identifier: GPL-3.0-or-later
#include "ping/pingtester.h"

#include "frame/busy_clip.h"
#include "frame/copy_text.h"
#include "frame/result_file.h"
#include "frame/tool_tips.h"
#include "ping/pingmod.h"
#include "text/statement.h"
#include "text/strings.h"

namespace veltrin {
namespace {

constexpr int kPassInterval = 1000;   // ms from one pass to the next
constexpr int kEchoPause = 1000;      // ms behind each echo
constexpr int kNoReply = 99999;       // what PingTime holds when no reply was read
constexpr double kLostAbove = 10000;  // ms; a higher reading is a lost echo
constexpr std::size_t kSamplesPerLine = 20;
constexpr std::size_t kBrokenSamples = 80;  // behind these the report breaks no line

const std::vector<std::string> kPasses = {"1", "5", "10", "15", "20", "25", "50", "75", "100"};
const std::vector<std::string> kSizes = {"16",  "32",   "64",   "128", "256",
                                         "512", "1024", "2048", "4096"};

const char* const kSection = "Ping";

}  // namespace

pingtester::pingtester(Program& program)
    : Form(nameOf(WindowName::pingtester), program),
      program_(program),
      destinations_(program, kSection, "Pingit ", {&url[0], &url[1], &url[2], &url[3], &url[4]}),
      run_(program.shared<PingValues>()),
      objDOS7(*this, program.platform,
              [this](const std::string& chunk) { objDOS7_ReceiveOutputs(chunk); }) {
  own("url", url);
  own("pingcur", pingcur);
  own("pinglow", pinglow);
  own("pingav", pingav);
  own("pinghi", pinghi);
  own("packetloss", packetloss);
  own("buff", buff);
  own("Combo1", Combo1);
  own("Combo2", Combo2);
  own("Command1", Command1);
  own("Command2", Command2);
  own("Command3", Command3);
  own("Command4", Command4);
  own("Timer1", Timer1);
  own("Label1", Label1);
  own("Label2", Label2);
  own("Label3", Label3);
  own("Label4", Label4);
  own("Label5", Label5);
  own("Label6", Label6);
  own("Label7", Label7);
  own("Label8", Label8);
  own("Label9", Label9);
  own("Label10", Label10);
  own("data1", data1);
  own("playit", playit);
  own("PingChart", PingChart);
  own("Text1", Text1);
  own("Text2", Text2);

  caption = "Ping Test";
  destinations_.setDefaults();
  for (std::size_t row = 0; row < kRows; ++row) {
    url[row].toolTip = "Db lClick to Clear";
    url[row].dblClick = [this, row] { url[row].text = ""; };
    buff[row].visible = false;
  }
  Command2.enabled = false;
  Command3.enabled = false;
  Label10.caption = "Size";
  data1.visible = false;
  playit.visible = false;

  Command1.click = [this] { Command1_Click(); };
  Command2.click = [this] { Command2_Click(); };
  Command3.click = [this] { Command3_Click(); };
  Command4.click = [this] { Command4_Click(); };
  Timer1.timer = [this] { Timer1_Timer(); };
}

void pingtester::Form_Load() {
  Command1.caption = "Start";
  const auto remembered = [this](const char* key, const char* otherwise) {
    const std::string value = program_.readSetting(kSection, key);
    return value.empty() || value == "0" ? std::string(otherwise) : value;
  };
  Combo1.items = kPasses;
  Combo1.text = remembered("Passes", "25");
  Combo2.items = kSizes;
  Combo2.text = remembered("Packet", "32");
  PingChart.visible = false;
  Label1.caption = program_.texts.TextTestUrls;
  Label2.caption = program_.texts.CaptionTests;
  Label3.caption = program_.texts.CaptionUrl;
  Label4.caption = program_.texts.CaptionCurrent;
  Label5.caption = program_.texts.CaptionLow;
  Label6.caption = program_.texts.CaptionAverage;
  Label7.caption = program_.texts.CaptionHigh;
  Label8.caption = program_.texts.CaptionLoss;
  destinations_.recall();
  setToolTips(program_.LanguageId, *this);
}

void pingtester::Command1_Click() {
  if (Command1.caption == "Start") {
    start();
  } else {
    stop();
  }
}

void pingtester::start() {
  playBusyClip(program_, playit);
  playit.visible = true;
  data1.text = "";
  run_.PingPasses = Combo1.text.get();
  run_.PingPassNo = 0;
  Command1.caption = "Stop";
  run_.PingStop = 0;
  for (std::size_t row = 0; row < kRows; ++row) {
    buff[row].clear();
    packetloss[row].caption = "0";
    pingcur[row].caption = "";
    pinglow[row].caption = "";
    pingav[row].caption = "";
    pinghi[row].caption = "";
  }
  Timer1.interval = kPassInterval;
  Timer1.enabled = true;
}

void pingtester::stop() {
  Timer1.enabled = false;
  Command1.caption = "Start";
  run_.PingStop = 1;
  mousePointer = MousePointer::Default;
  stopAnimation();
}

void pingtester::stopAnimation() {
  playit.visible = false;
  playit.stop();
}

void pingtester::Command2_Click() {
  gather();
  copyText(program_, data1.text, "Ping Test");
}

// The file holds the report of the last copy: saving builds none of its own.
void pingtester::Command3_Click() {
  saveResult(program_, {"\\PingTest", "", "PingTest", "File created: "}, data1.text);
}

void pingtester::Command4_Click() {
  destinations_.remember();
  program_.writeSetting(kSection, "Packet", Combo2.text.get());
  program_.writeSetting(kSection, "Passes", Combo1.text.get());
  Timer1.enabled = false;
  unload();
}

void pingtester::Timer1_Timer() {
  mousePointer = MousePointer::Hourglass;
  if (!(Val(run_.PingPasses) > run_.PingPassNo)) {
    complete();
    return;
  }
  ++run_.PingPassNo;
  skip([&] {
    const double remaining = run_.PingPasses.number() + 1 - run_.PingPassNo;
    Label9.caption = "Test Remaining = " + toText(remaining);
  });
  if (runPass()) mousePointer = MousePointer::Default;
}

void pingtester::complete() {
  Timer1.enabled = false;
  Command1.caption = "Start";
  Label9.caption = "Complete";
  Command2.enabled = true;
  Command3.enabled = true;
  stopAnimation();
  mousePointer = MousePointer::Default;
}

// One echo to each destination. False when the user stopped it or closed the window; an
// echo that was under way then is not counted. The row is one of the run and not of the
// pass: a start during the pause of a stopped pass lets that pass go on inside the new run.
bool pingtester::runPass() {
  for (run_.PingRow = 0; run_.PingRow < static_cast<int>(kRows); ++run_.PingRow) {
    const auto row = static_cast<std::size_t>(run_.PingRow);
    if (isOver()) return false;
    if (url[row].text == "") continue;
    ping(row);
    if (isOver()) return false;
    skip([&] { program_.Wait(kEchoPause); });
    if (isOver()) return false;
    takeReading(row);
  }
  return true;
}

bool pingtester::isOver() const { return run_.PingStop == 1 || !objDOS7; }

void pingtester::ping(std::size_t row) {
  run_.PingTime = kNoReply;
  objDOS7.run("ping " + url[row].text.get() + " -n 1 -l " + Combo2.text.get());
}

void pingtester::objDOS7_ReceiveOutputs(const std::string& chunk) {
  readAverage(chunk, run_.PingTime);
}

void pingtester::takeReading(std::size_t row) {
  const std::string reading = run_.PingTime.text();
  pingcur[row].caption = reading;
  buff[row].add(reading);
  if (run_.PingPassNo == 1) {
    pinglow[row].caption = reading;
    pingav[row].caption = reading;
    pinghi[row].caption = reading;
  } else {
    updateFigures(row);
  }
  if (Val(run_.PingTime) > kLostAbove) {
    packetloss[row].caption = toText(Loose(packetloss[row].caption.get()).number() + 1);
  }
}

// A lost echo counts as a sample of 99999 in all figures.
void pingtester::updateFigures(std::size_t row) {
  const double reading = Val(run_.PingTime);
  if (Val(pinglow[row].caption) > reading) pinglow[row].caption = run_.PingTime.text();
  if (Val(pinghi[row].caption) < reading) pinghi[row].caption = run_.PingTime.text();
  run_.PingSum = 0;
  const std::size_t count = buff[row].count();
  for (run_.PingItem = 0; run_.PingItem <= count; ++run_.PingItem) {
    run_.PingSum += Val(buff[row].item(run_.PingItem));
  }
  pingav[row].caption = Format(run_.PingSum / static_cast<double>(count), "###");
}

void pingtester::gather() {
  const Clock& clock = program_.platform.clock;
  const std::string lineBreak(kLineBreak);
  data1.text = "Ping Test   -   Date: " + Format(clock.now(), "dd mmm yyyy") + "  at  " +
               clock.shortTime() + lineBreak + lineBreak;
  for (std::size_t row = 0; row < kRows; ++row) {
    data1.text += url[row].text.get() + "   " + pinglow[row].caption.get() + " (Low)     " +
                  pingav[row].caption.get() + " (Aver)     " + pinghi[row].caption.get() +
                  " (High)     " + packetloss[row].caption.get() + " (PacketLoss)" + lineBreak;
    appendSamples(row);
    data1.text += lineBreak;
  }
}

void pingtester::appendSamples(std::size_t row) {
  std::string line;
  for (std::size_t index = 0; index < buff[row].count(); ++index) {
    line += buff[row].item(index) + " | ";
    const std::size_t taken = index + 1;
    if (taken % kSamplesPerLine != 0 || taken > kBrokenSamples) continue;
    data1.text += line + std::string(kLineBreak);
    line.clear();
  }
  if (!line.empty()) data1.text += line + std::string(kLineBreak);
}

}  // namespace veltrin
