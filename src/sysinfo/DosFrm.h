// SPDX-License-Identifier: GPL-3.0-or-later
// The short form of the summary of the machine, and the buffers in which it is read. The
// window is loaded and never shown.
#pragma once

#include <string>

#include "forms/label.h"
#include "forms/list_box.h"
#include "forms/text_box.h"
#include "frame/program.h"
#include "frame/window_runner.h"

namespace veltrin {

class DosFrm : public Form {
 public:
  explicit DosFrm(Program& program);

  TextBox dosbox;  // the tool's text
  ListBox Buffer;  // its lines without the blanks around them; grows with each run
  Label Label1;

  // Runs the tool to its end, reads the labelled lines into the program's summary and
  // stores them in the settings. A text of less than 11 lines changes nothing.
  void getinfo();

 private:
  void objDOS_ReceiveOutputs(const std::string& chunk);

  std::string toolPath() const;
  void fillBuffer();
  void readBuffer();

  Program& program_;
  WindowRunner objDOS;
};

}  // namespace veltrin
