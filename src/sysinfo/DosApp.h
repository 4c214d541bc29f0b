// The full form of the summary of the machine, and the buffers in which it is read. The
// window is loaded and never shown.
#pragma once

#include <string>

#include "forms/list_box.h"
#include "forms/text_box.h"
#include "frame/program.h"
#include "frame/window_runner.h"

namespace veltrin {

class DosApp : public Form {
 public:
  explicit DosApp(Program& program);

  TextBox DosBox;  // the tool's text
  ListBox List1;   // its lines, with their indents
  ListBox List2;
  ListBox List3;  // names of the hotfixes; grows with each run
  ListBox List4;
  ListBox List5;
  ListBox List6;
  ListBox List7;
  ListBox List8;

  // A mark that the last text of the tool had less than 10 lines: 1, else 0.
  int ShortText = 0;

  // Collects the summary anew, and then looks at the Mode: "1" ends it, "3" looks for the
  // drives, and any other prints the report into the window that is loaded when it begins,
  // also when that one is closed meanwhile. Without a window there is no report.
  void SysInfo(const Loose& Mode);

  // Fills the summary's empty memory slots. Does nothing when the service that knows the
  // banks does not answer.
  void getmem();

  // Finds out which drives are on which disks. In brackets, as test programs know a macro of
  // that name.
  void(TEST)(const Loose& Mode);

 private:
  void objDOSB_ReceiveOutputs(const std::string& chunk);

  double collect();
  void runTool();
  void fillLines();
  std::string readLines();
  void adjustFields();

  Program& program_;
  WindowRunner objDOSB;
};

}  // namespace veltrin
