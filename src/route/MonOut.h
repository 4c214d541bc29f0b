// SPDX-License-Identifier: GPL-3.0-or-later
// The Outage monitor: one echo every few seconds for as long as the user lets it run, a
// trace in each outage, and a log of both.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>

#include "forms/check_box.h"
#include "forms/combo_box.h"
#include "forms/command_button.h"
#include "forms/label.h"
#include "forms/line.h"
#include "forms/picture_box.h"
#include "forms/text_box.h"
#include "frame/program.h"
#include "frame/window_runner.h"
#include "route/outage_values.h"

namespace veltrin {

// The length of a time as text, such as "1 day 2 hrs 5 sec": its years, days, hours,
// minutes and seconds, each unless it is 0. The last letter is cut off with the blank
// behind it. Negative numbers where the end lies before the start.
std::string DateDiffEx(const DateTime& start, const DateTime& end);

class MonOut : public Form {
 public:
  explicit MonOut(Program& program);

  CommandButton Command3{"Start"};  // Start and Stop
  CommandButton Command2{"Full Report"};
  CommandButton Command1{"Quit"};
  ComboBox Combo1;  // scan time in seconds
  CheckBox Check1{"Show Logged Data"};
  PictureBox OGraph;
  Line Line1;  // quarters of the graph
  Line Line2;
  Line Line3;
  Label Label1;  // start of the run
  Label Label2;
  Label Label3;
  Label Label4;  // number of outages
  Label Label5;  // span of the graph
  Label Label6;  // last round trip, in ms
  Label Label7;  // running time
  Label Label8;  // address under test
  Label Label9;
  Label Label10;
  TextBox DosBox2;  // text of the ping that finds the address
  TextBox Text1;    // outages, and the traces in them
  TextBox dosbox;   // all events of the run

  // Watches the line until the user presses Stop; goes on when the window is closed.
  void DoTest();

 private:
  void Form_Load() override;
  void Form_Unload() override;

  void Command2_Click();
  void Command3_Click();
  void Check1_MouseUp();
  void objDOSM_ReceiveOutputs(const std::string& chunk);

  void ownControls();
  void start();
  void stop();
  void beginRun();
  bool findAddress();
  std::string pingedAddress();
  void scan();
  void probe();
  void beginOutage();
  void endOutage();
  void countQuietProbe();
  void showTimes();
  void pauseSince(std::int64_t began);
  void tell(const std::string& what);
  void log(const std::string& text);
  std::string logFolder() const;
  std::string lossLine() const;

  Program& program_;
  OutageValues& outage_;
  WindowRunner objDOSM;

  std::string logName_;  // with the separator before it
  std::string probeAddress_;
  DateTime startStamp_;
  int failStreak_ = 0;        // failed probes in a row
  bool inOutage_ = false;     // from the second of them to the next good one
  int lost_ = 0;              // failed probes of the run
  int sent_ = 0;              // all probes of the run
  bool tracing_ = false;      // while the trace of an outage runs
  int quietCount_ = 0;        // probes without an outage since the last loss line
  bool stopRequest_ = false;  // ends the loop
  std::string runTime_;
  double pause_ = 2000;  // ms to the next probe; kept while the scan time is no number
};

}  // namespace veltrin
