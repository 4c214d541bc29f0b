// SPDX-License-Identifier: GPL-3.0-or-later
// The Ping Test: up to five destinations, one echo each in every pass.
#pragma once

#include <array>
#include <string>

#include "forms/animation.h"
#include "forms/chart.h"
#include "forms/combo_box.h"
#include "forms/command_button.h"
#include "forms/label.h"
#include "forms/list_box.h"
#include "forms/text_box.h"
#include "forms/timer.h"
#include "frame/destinations.h"
#include "frame/program.h"
#include "frame/window_runner.h"
#include "ping/ping_values.h"

namespace veltrin {

class pingtester : public Form {
 public:
  static constexpr std::size_t kRows = Destinations::kCount;

  explicit pingtester(Program& program);

  std::array<TextBox, kRows> url;       // destinations
  std::array<Label, kRows> pingcur;     // last time in ms
  std::array<Label, kRows> pinglow;     // lowest
  std::array<Label, kRows> pingav;      // average
  std::array<Label, kRows> pinghi;      // highest
  std::array<Label, kRows> packetloss;  // number of lost echoes
  std::array<ListBox, kRows> buff;      // every time of the row, in order of arrival
  ComboBox Combo1;                      // number of passes
  ComboBox Combo2;                      // bytes of an echo's data
  CommandButton Command1{"Stop/Done"};  // Start and Stop
  CommandButton Command2{"Copy"};
  CommandButton Command3{"Save"};
  CommandButton Command4{"Quit"};
  Timer Timer1;  // clock of the passes
  Label Label1;  // instruction
  Label Label2;  // captions of the passes and of the columns
  Label Label3;
  Label Label4;
  Label Label5;
  Label Label6;
  Label Label7;
  Label Label8;
  Label Label9;   // status of the run
  Label Label10;  // caption of the size
  TextBox data1;  // the report
  Animation playit;
  Chart PingChart;
  TextBox Text1;  // scale captions of the chart: upper and lower end
  TextBox Text2;

  // Builds the report of the run in data1.
  void gather();

  // Draws the samples of all rows in PingChart. Kept for a later use; nothing in
  // the window calls it.
  void Chartit();

 private:
  void Form_Load() override;

  void Command1_Click();
  void Command2_Click();
  void Command3_Click();
  void Command4_Click();
  void Timer1_Timer();
  void objDOS7_ReceiveOutputs(const std::string& chunk);

  void start();
  void stop();
  void complete();
  void stopAnimation();
  bool runPass();
  bool isOver() const;
  void ping(std::size_t row);
  void takeReading(std::size_t row);
  void updateFigures(std::size_t row);
  void appendSamples(std::size_t row);
  void setAxis();
  void plot(std::size_t columns);

  Program& program_;
  Destinations destinations_;
  PingValues& run_;
  WindowRunner objDOS7;
};

}  // namespace veltrin
