// SPDX-License-Identifier: GPL-3.0-or-later
#include "mtu/setmtu.h"

#include <array>

#include "frame/busy_clip.h"
#include "mtu/pingit.h"
#include "ping/pingmod.h"
#include "text/statement.h"
#include "text/strings.h"

namespace veltrin {
namespace {

constexpr int kStepTime = 5000;  // ms
constexpr int kPauseBehindProbe = 2000;
constexpr int kPauseAtEnd = 500;

constexpr int kSystemSeparator = 5;  // position of the line above the close command

// Bytes of data in a ping; those from 1473 on are stored as if they counted the headers.
constexpr std::array<const char*, 7> kCoarseSizes = {"576",  "1400", "1420", "1440",
                                                     "1460", "1480", "1500"};
constexpr double kFirstWithoutHeaders = 1473;
constexpr double kHeaders = 28;  // of IPv4 and ICMP

constexpr Colour kBad{0xFF, 0x00, 0x00};
constexpr Colour kCoarseGood{0x00, 0x80, 0x00};
constexpr Colour kFineGood{0x00, 0xC0, 0x00};

// The table's entry of a step from 1; `otherwise` for a step that has none.
Loose coarseSize(int step, const Loose& otherwise) {
  const bool isInTable = step >= 1 && step <= static_cast<int>(kCoarseSizes.size());
  return isInTable ? Loose(kCoarseSizes[static_cast<std::size_t>(step - 1)]) : otherwise;
}

}  // namespace

std::int64_t fragPosition(const std::string& text) {
  return InStr(1, text, "frag", Compare::IgnoreCase);
}

setmtu::setmtu(Program& program)
    : Form(nameOf(WindowName::setmtu), program),
      program_(program),
      mtu_(program.shared<MtuValues>()),
      pings_(program.shared<PingValues>()),
      objDOS3(*this, program.platform,
              [this](const std::string& chunk) { objDOS3_ReceiveOutputs(chunk); }) {
  own("playit", playit);
  own("testmtu", testmtu);
  own("results", results);
  own("Label1", Label1);
  own("txtOutputs", txtOutputs);
  own("txtping", txtping);
  own("Timer1", Timer1);
  caption = "Veltrin (MTU Test) ";
  txtping.visible = false;
  playit.visible = false;
  Timer1.timer = [this] { runmtu(); };
  txtOutputs.change = [this] { txtOutputs.caretToEnd(); };
}

void setmtu::Form_Load() {
  DisableWinClose3();
  mtu_.OriginalMtu = readMtu(program_);
  playBusyClip(program_, playit);
  playit.visible = true;
  program_.showInLoad(*this);
  program_.platform.events.DoEvents();
  Timer1.interval = kStepTime;
  testmtu.caption = "Testing will start in 5 Seconds";
}

// A search that is left half-way would leave the user without a value.
void setmtu::DisableWinClose3() {
  Desktop& desktop = program_.platform.desktop;
  desktop.removeFromSystemMenu(*this, kCloseCommand, kByCommand);
  desktop.removeFromSystemMenu(*this, kSystemSeparator, kByPosition);
}

void setmtu::objDOS3_ReceiveOutputs(const std::string& chunk) {
  if (const auto read = readTail(chunk, pings_.PingTime)) Label1.caption = *read + " ms";
  txtOutputs.text += chunk;
}

void setmtu::runmtu() {
  if (MtuPhase == 0) {
    testCoarse();
  } else {
    testFine();
  }
}

// The first bad size leads to the byte behind the good one before it. When even the
// smallest is bad, the byte behind that one is as good a place to begin as any.
void setmtu::testCoarse() {
  caption = "SpeedTest (MTU) Course Test";
  ++MtuStep;
  MtuCoarseSize = coarseSize(MtuStep, MtuCoarseSize);
  const std::string size = MtuCoarseSize.text();
  testmtu.caption = "Test MTU setting of " + size;
  if (!probe(size)) {
    --MtuStep;
    MtuPhase = 1;
    results.foreColour = kBad;
    results.caption = "Course Test of MTU " + size + " test Bad";
    MtuCoarseSize = coarseSize(MtuStep, MtuCoarseSize);
    MtuStep = 0;
    return;
  }
  results.foreColour = kCoarseGood;
  results.caption = "MTU of " + size + " test Good";
  MtuFinal = size;
  if (MtuStep != static_cast<int>(kCoarseSizes.size())) return;
  Timer1.enabled = false;
  playit.visible = false;
  playit.stop();
  store();
}

void setmtu::testFine() {
  caption = "SpeedTest (MTU) Fine Test";
  ++MtuStep;
  MtuFineSize = MtuStep + Val(MtuCoarseSize);
  const std::string size = MtuFineSize.text();
  testmtu.caption = "Fine Test of MTU setting of " + size;
  if (!probe(size)) return finishFine();
  results.foreColour = kFineGood;
  results.caption = "Fine Test of MTU setting of " + size + " test Good";
}

// Whether a size passes: nothing in the tool's text tells of fragments. A tool that fails
// tells of none either.
bool setmtu::probe(const Loose& size) {
  txtping.text = "ping -f -n 2 -l " + size.text() + " " + MtuHost.text();
  txtOutputs.text = "";
  objDOS3.run(txtping.text);
  skip([&] { program_.Wait(kPauseBehindProbe); });
  MtuFragPos = fragPosition(txtOutputs.text);
  return Val(MtuFragPos) <= 0;
}

void setmtu::finishFine() {
  Timer1.enabled = false;
  testmtu.foreColour = kBad;
  testmtu.caption = "Course Test of MTU " + MtuFineSize.text() + " test Bad";
  MtuFineSize = Val(MtuFineSize) - 1;
  results.caption = "Highest MTU for your system is " + MtuFineSize.text();
  if (Val(MtuFineSize) < kFirstWithoutHeaders) MtuFineSize = Val(MtuFineSize) + kHeaders;
  skip([&] { program_.Wait(kPauseAtEnd); });
  MtuFinal = MtuFineSize;
  store();
}

void setmtu::store() {
  writeMtu(program_, MtuFinal);
  program_.writeSetting(kMtuSection, kMtuDone, "1");
  program_.MsgBox("MTU Test complete, MTU Value set to " + MtuFinal.text() + "  Original MTU was " +
                      mtu_.OriginalMtu.text(),
                  kMessageOk, kMtuTitle);
  program_.unload<setmtu>();
  program_.unload<pingit>();
}

}  // namespace veltrin
