// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame/About.h"

namespace veltrin {

About::About(Program& program) : Form(nameOf(WindowName::About), program), program_(program) {
  own("Label9", Label9);
  own("Label3", Label3);
  own("Label2", Label2);
  own("Label1", Label1);
  own("Label4", Label4);
  caption = "About";
  Label9.caption = "Veltrin";
  Label3.caption = "Designed to help you troubleshoot Internet issues.";
  Label2.caption = "Version: " + program.start.AppVersion + "  " + program.start.AppDate;
  Label1.caption = "System Info";
  Label1.enabled = program.tools.has(WindowName::frmSysInfo);
  click = [this] { unload(); };
  Label2.click = click;
  Label3.click = click;
  Label9.click = click;
  Label1.click = [this] { program_.tools.showModal(WindowName::frmSysInfo); };
}

}  // namespace veltrin
