// SPDX-License-Identifier: GPL-3.0-or-later
// The window in which the report of the system is chosen, run and read.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "controls/LVListBox.h"
#include "forms/check_box.h"
#include "forms/command_button.h"
#include "forms/image_list.h"
#include "forms/label.h"
#include "forms/menu_entry.h"
#include "forms/text_box.h"
#include "frame/program.h"
#include "sysinfo/report_values.h"

namespace veltrin {

class frmSysInfo : public Form {
 public:
  explicit frmSysInfo(Program& program);

  ImageList ImageList1;             // of the lines, which go before it
  LVListBox SYSView;                // the lines of the last report
  TextBox Text1;                    // the text of all reports since the window was opened
  std::array<CheckBox, 14> Showme;  // the sections that are wanted
  CommandButton Command1{"Get Info"};
  Label Label1;  // ticks all of them
  Label Label2;  // none
  MenuEntry mnuOpt{"Options"};
  MenuEntry mnuSave{"Save to Files"};
  MenuEntry mnuPrint{"Print"};
  MenuEntry mnuExit{"Exit"};

  // Adds one line to the report: `Icon` is a number in ImageList1, or 0, `Color` one from 1 to
  // 6; 0 is 1, and any other number black.
  void LogEvents(const std::string& Text, std::int16_t Icon, std::int16_t Color, bool Bold);

 private:
  void Form_Load() override;
  void Form_Unload() override;
  void Form_Resize();
  void Command1_Click();
  void mnuSave_Click();
  void mnuPrint_Click();
  void tickAll(int value);

  Program& program_;
  ReportValues& report_;
};

}  // namespace veltrin
