// SPDX-License-Identifier: GPL-3.0-or-later
// The Bandwidth monitor: received, sent and total traffic of all interfaces on dials, in a
// small window that stays above all others.
#pragma once

#include <array>
#include <string>

#include "controls/bkCProg.h"
#include "forms/label.h"
#include "forms/menu_entry.h"
#include "forms/timer.h"
#include "frame/program.h"
#include "frame/window_drag.h"
#include "monitor/counter_values.h"

namespace veltrin {

class frmNetwork : public Form {
 public:
  using Gauge = std::array<bkCProg, 1>;

  explicit frmNetwork(Program& program);

  Label Label1;  // title

  // Dials of three ranges at the same place; one of them is seen.
  Gauge NetRec1;
  Gauge NetRec2;
  Gauge NetRec3;
  Gauge NetSend1;
  Gauge NetSend2;
  Gauge NetSend3;
  Gauge NetTotal1;
  Gauge NetTotal2;
  Gauge NetTotal3;

  Label Logo;  // moves the window, as the window itself does
  Label NotOnTOP;
  Label OnTopALL;
  Timer Timer1;
  MenuEntry mnuopt{"Options"};  // opened by the right button of the mouse alone
  MenuEntry mnucloseme{"Exit"};

 private:
  void Form_Load() override;

  void Timer1_Timer();
  void addUp();
  void show(const std::string& speed, bkCProg& small, bkCProg& medium, bkCProg& large);

  void Form_MouseDown(MouseButton button, int x);
  void Form_MouseMove(MouseButton button, int x);
  void Form_MouseUp(MouseButton button);
  void mnucloseme_Click();

  void ownControls();
  void stayOnTop(bool flag);
  void popUp();
  void drag();

  Program& program_;
  CounterValues& counters_;

  // Of all interfaces, in kilobytes of 1000 bytes per second.
  std::string TotalKb_;
  std::string RecKb_;
  std::string SendKb_;

  WindowDrag drag_;
  bool inMouseMove_ = false;  // keeps the menu from opening inside itself
};

}  // namespace veltrin
