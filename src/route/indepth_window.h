// SPDX-License-Identifier: GPL-3.0-or-later
// What both InDepth windows are: a ping and a pathping to one destination, with their
// options, and their text as it comes.
#pragma once

#include <string>

#include "forms/animation.h"
#include "forms/check_box.h"
#include "forms/combo_box.h"
#include "forms/command_button.h"
#include "forms/label.h"
#include "forms/text_box.h"
#include "frame/program.h"
#include "frame/window_runner.h"
#include "route/route_values.h"

namespace veltrin {

class indepth_window : public Form {
 public:
  TextBox Text1;   // destination
  ComboBox text3;  // queries to each hop
  ComboBox text4;  // pause between queries in ms
  CheckBox Check1{"Do Not Resolve Address"};
  CheckBox Check2{"Test for RSVP Path"};
  CheckBox Check3{"Test if RSVP Aware"};
  CheckBox Check4{"Test Connectivity to each Hop, Layer 2 priority"};
  CheckBox Check5{"Force Using IP v4"};
  CheckBox Check6{"Force Using IP v6"};
  CommandButton Command1{"Test It"};
  CommandButton Command2{"Close"};
  CommandButton Command3{"Copy"};
  CommandButton Command4{"Save"};
  CommandButton Command5{"Info"};  // describes the tool; gone for good with the first test
  Label Label1;                    // captions of the destination, the queries, the pause
  Label Label2;
  Label Label3;
  TextBox dosbox;  // what the tools print, below an introduction
  TextBox info;    // what the control under the mouse is for
  Animation playit;

 protected:
  indepth_window(WindowName name, Program& program);

  void Form_Load() override;

  // Fills in the destination, the queries and the pause at load.
  virtual void loadValues() = 0;

  void Command1_Click();

  Program& program_;
  InDepthValues& run_;

 private:
  void ownControls();
  void wireHelp();
  void explain(Control& control, std::string LanguageTexts::*text);
  void Command3_Click();
  void Command4_Click();
  void Command5_Click();
  void objDOS6_ReceiveOutputs(const std::string& chunk);

  void beginTest();
  void endTest();
  void rememberValues();
  std::string options() const;
  double age() const;

  WindowRunner objDOS6;
};

}  // namespace veltrin
