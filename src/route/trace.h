// SPDX-License-Identifier: GPL-3.0-or-later
// The Trace Route: ping and tracert against up to five destinations, their text as it
// comes.
#pragma once

#include <array>
#include <string>

#include "forms/combo_box.h"
#include "forms/command_button.h"
#include "forms/label.h"
#include "forms/menu_entry.h"
#include "forms/text_box.h"
#include "frame/destinations.h"
#include "frame/program.h"
#include "frame/window_runner.h"
#include "route/route_values.h"

namespace veltrin {

class trace : public Form {
 public:
  explicit trace(Program& program);

  TextBox trace1;  // destinations
  TextBox trace2;
  TextBox trace3;
  TextBox trace4;
  TextBox trace5;
  ComboBox Combo1;  // number of passes
  CommandButton startit{"Start"};
  CommandButton copy1{"Copy"};
  CommandButton write1{"Save"};
  CommandButton Command1{"Exit"};
  TextBox txtOutputs;  // what the tools print, and the lines between
  TextBox Text1;       // command line being run
  MenuEntry menuclear{"Clear All"};
  MenuEntry menudef{"Apply Defaults"};
  Label Label1;  // numbers of the destinations, but the third, of the passes
  Label Label2;
  Label Label3;
  Label Label4;
  Label Label5;
  Label Label6;

 private:
  void Form_Load() override;

  void startit_Click();
  void copy1_Click();
  void write1_Click();
  void Command1_Click();
  void objDOS_ReceiveOutputs(const std::string& chunk);

  void enableButtons(bool enabled);
  void clearOldText();
  void runPasses();
  void runPass();
  void traceTo(const TextBox& destination);
  void runTool(const std::string& tool, const TextBox& destination);

  Program& program_;
  std::array<TextBox*, Destinations::kCount> boxes_;
  Destinations destinations_;
  RouteValues& run_;
  WindowRunner objDOS;
};

}  // namespace veltrin
