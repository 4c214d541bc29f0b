// SPDX-License-Identifier: GPL-3.0-or-later
#include "route/indepth.h"

#include "frame/browser.h"

namespace veltrin {

indepth::indepth(Program& program) : indepth_window(WindowName::indepth, program) {
  own("Label4", Label4);
  Label4.caption = "How to Read";
  Label4.click = [this] { openHelpPage(program_); };
}

// The pause without a remembered one is shorter than any that the list offers.
void indepth::loadValues() {
  const auto remembered = [this](const char* key, const std::string& otherwise) {
    const std::string value = program_.readSetting("InDepth", key);
    return value.empty() ? otherwise : value;
  };
  Text1.text = remembered("Source", program_.installation.ProbeHost);
  text3.text = remembered("Queries", "100");
  text4.text = remembered("Period", "25");
}

}  // namespace veltrin
