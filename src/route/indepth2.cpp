// SPDX-License-Identifier: GPL-3.0-or-later
#include "route/indepth2.h"

namespace veltrin {

indepth2::indepth2(Program& program) : indepth_window(WindowName::indepth2, program) {
  own("Label4", Label4);
  own("PingL", PingL);
  own("Label6", Label6);
  own("PingH", PingH);
  Label4.caption = "Low Ping";
  Label6.caption = "High Ping";
}

void indepth2::Form_Load() {
  indepth_window::Form_Load();
  Command1_Click();
}

void indepth2::loadValues() {
  if (run_.lastBadHop) Text1.text = run_.lastBadHop();
}

}  // namespace veltrin
