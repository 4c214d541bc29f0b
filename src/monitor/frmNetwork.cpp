// SPDX-License-Identifier: GPL-3.0-or-later
#include "monitor/frmNetwork.h"

#include "frame/mainmod.h"
#include "frame/startup.h"
#include "frame/tool_tips.h"
#include "monitor/CounterNetwork.h"
#include "text/statement.h"

namespace veltrin {
namespace {

constexpr int kInterval = 1000;      // ms
constexpr int kFromMenu = -1000;     // twips from the menu's corner, both ways
constexpr double kKilobyte = 1000;   // bytes
constexpr double kSmallRange = 950;  // KB per second, from which on the next dial is shown
constexpr double kMediumRange = 9500;
constexpr int kClosing = 515;    // places of the mouse, in twips, that close the window
constexpr int kOpening = 517;    // and open its menu
constexpr double kRadius = 480;  // twips

// What the dials have in common.
PropertyBag designOf(std::int32_t top) {
  PropertyBag bag;
  bag.WriteProperty("Max", top);
  bag.WriteProperty("Value", std::int32_t{0});
  bag.WriteProperty("OffsetAngle", std::int32_t{210});
  bag.WriteProperty("Span", std::int32_t{302});
  bag.WriteProperty("Radius", kRadius);
  bag.WriteProperty("BackColor", ColourCode{0x95B7BD});
  bag.WriteProperty("MidColor", ColourCode{0xC0});
  bag.WriteProperty("EndColor", ColourCode{0xFF});
  bag.WriteProperty("NeedleColor", ColourCode{0xC0});
  bag.WriteProperty("ShowNeedle", true);
  return bag;
}

std::string kilobytes(double bytes) { return Format(bytes / kKilobyte, "0"); }

}  // namespace

frmNetwork::frmNetwork(Program& program)
    : Form(nameOf(WindowName::frmNetwork), program),
      program_(program),
      counters_(program.shared<CounterValues>()) {
  ownControls();
  caption = "NETWORK BANDWIDTH";
  Label1.caption = "NETWORK BANDWIDTH";
  for (Gauge* small : {&NetRec1, &NetSend1, &NetTotal1}) {
    small->front().ReadProperties(designOf(1000));
  }
  for (Gauge* medium : {&NetRec2, &NetSend2, &NetTotal2}) {
    medium->front().ReadProperties(designOf(10000));
    medium->front().visible = false;
  }
  for (Gauge* large : {&NetRec3, &NetSend3, &NetTotal3}) {
    large->front().ReadProperties(designOf(100000));
    large->front().visible = false;
  }
  mnuopt.visible = false;

  Timer1.timer = [this] { Timer1_Timer(); };
  mouseDown = [this](MouseButton button) { Form_MouseDown(button, mouseX()); };
  mouseMove = [this](MouseButton button) { Form_MouseMove(button, mouseX()); };
  mouseUp = [this](MouseButton button) { Form_MouseUp(button); };
  Logo.mouseDown = [this](MouseButton button) { Form_MouseDown(button, Logo.mouseX()); };
  Logo.mouseMove = [this](MouseButton button) { Form_MouseMove(button, Logo.mouseX()); };
  Logo.mouseUp = [this](MouseButton button) { Form_MouseUp(button); };
  NotOnTOP.click = [this] { stayOnTop(false); };
  OnTopALL.click = [this] { stayOnTop(true); };
  mnucloseme.click = [this] { mnucloseme_Click(); };
}

void frmNetwork::ownControls() {
  own("Label1", Label1);
  own("NetRec1", NetRec1);
  own("NetRec2", NetRec2);
  own("NetRec3", NetRec3);
  own("NetSend1", NetSend1);
  own("NetSend2", NetSend2);
  own("NetSend3", NetSend3);
  own("NetTotal1", NetTotal1);
  own("NetTotal2", NetTotal2);
  own("NetTotal3", NetTotal3);
  own("Logo", Logo);
  own("NotOnTOP", NotOnTOP);
  own("OnTopALL", OnTopALL);
  own("Timer1", Timer1);
  own("mnuopt", mnuopt);
  own("mnucloseme", mnucloseme);
}

// Events run while counters are added: a second press in the menu shows the window before
// its time, and its user may close it.
void frmNetwork::Form_Load() {
  Desktop& desktop = program_.platform.desktop;
  if (program_.isLoaded<startup>()) {
    desktop.placeBeside(*this, *program_.keep<startup>(), kFromMenu, kFromMenu);
  }
  EnumNetworkInterfaces(program_);
  AddNetworkCounters(program_);
  if (!isLoaded()) return;
  stayOnTop(true);
  desktop.show(*this);
  setToolTips(program_.LanguageId, *this);
  Timer1_Timer();
  Timer1.interval = kInterval;
}

void frmNetwork::Timer1_Timer() {
  ReadNetworkCounters(program_);
  addUp();
  show(RecKb_, NetRec1[0], NetRec2[0], NetRec3[0]);
  show(SendKb_, NetSend1[0], NetSend2[0], NetSend3[0]);
  show(TotalKb_, NetTotal1[0], NetTotal2[0], NetTotal3[0]);
}

// Interfaces without a place in the tables do not count.
void frmNetwork::addUp() {
  double total = 0;
  double received = 0;
  double sent = 0;
  const auto add = [this](double& sum, const CounterValues::InterfaceValues& values, int i) {
    skip([&] { sum += elementOf(values, i); });
    program_.platform.events.DoEvents();
  };
  for (int i = 0; i < counters_.NetInterfaceCount; ++i) {
    add(total, counters_.TotalValue, i);
    add(received, counters_.ReceivedValue, i);
    add(sent, counters_.SentValue, i);
  }
  TotalKb_ = kilobytes(total);
  RecKb_ = kilobytes(received);
  SendKb_ = kilobytes(sent);
}

// The dial that comes up has its value before the others go.
void frmNetwork::show(const std::string& speed, bkCProg& small, bkCProg& medium, bkCProg& large) {
  const double number = Val(speed);
  bkCProg& shown = number < kSmallRange ? small : number < kMediumRange ? medium : large;
  shown.visible = true;
  skip([&] { shown.Value = toLong(number); });
  for (bkCProg* other : {&small, &medium, &large}) {
    if (other != &shown) other->visible = false;
  }
}

void frmNetwork::Form_MouseDown(MouseButton button, int x) {
  if (button == MouseButton::Right) popUp();
  if (button != MouseButton::Left || drag_.Dragging || x == kClosing) return;
  drag_.begin(program_.platform.desktop, *this);
}

void frmNetwork::Form_MouseMove(MouseButton button, int x) {
  if (button == MouseButton::Left && drag_.Dragging) return drag();
  if (inMouseMove_) return;
  inMouseMove_ = true;
  if (x == kClosing) {
    mnucloseme.Tag = "-1";
    mnucloseme_Click();
  }
  if (x == kOpening) popUp();
  inMouseMove_ = false;
}

void frmNetwork::Form_MouseUp(MouseButton button) {
  if (button == MouseButton::Left) drag_.Dragging = false;
}

void frmNetwork::drag() {
  Desktop& desktop = program_.platform.desktop;
  desktop.moveWindow(*this, drag_.place(desktop));
  program_.platform.events.DoEvents();
}

void frmNetwork::popUp() { program_.platform.desktop.popupMenu(*this, {&mnucloseme}, &mnucloseme); }

void frmNetwork::mnucloseme_Click() { unload(); }

void frmNetwork::stayOnTop(bool flag) { onTop(program_.platform.desktop, *this, flag ? -1 : 0); }

}  // namespace veltrin
