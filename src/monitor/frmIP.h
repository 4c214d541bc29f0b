// SPDX-License-Identifier: GPL-3.0-or-later
// The Protocol monitor: the counters of both versions of the Internet protocol, side by
// side, once a second.
#pragma once

#include <array>
#include <string>

#include "forms/label.h"
#include "forms/menu_entry.h"
#include "forms/timer.h"
#include "frame/program.h"
#include "monitor/counter_values.h"

namespace veltrin {

class frmIP : public Form {
 public:
  using Column = std::array<Label, CounterValues::kProtocolCounters>;

  explicit frmIP(Program& program);

  Label Label1;  // heading of both sides
  Column LeftCap;
  Column LeftVal;  // version 4
  Column RightCap;
  Column RightVal;  // version 6
  Timer Timer1;

  // A menu that nothing opens, with entries that do nothing.
  MenuEntry mnuopt{"Options"};
  MenuEntry mnuset{"Preferences"};
  MenuEntry mnuhide{"Hide ME"};
  MenuEntry mnucloseme{"Close ME"};
  MenuEntry mnusp1{"-"};
  MenuEntry mnuquit{"Close ALL"};

  int CounterTotal = 0;  // on both sides
  int RowCount = 0;      // on the left
  int RowsRight = 0;
  std::string FormName;
  int ValueColumn = 0;

 private:
  void Form_Load() override;
  void Timer1_Timer();

  void LayoutRows();
  void addRow(Column& captions, Column& values, int row);
  void showValue(Label& label, double value, std::size_t row);

  Program& program_;
  CounterValues& counters_;
};

}  // namespace veltrin
