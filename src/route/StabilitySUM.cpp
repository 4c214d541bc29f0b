// SPDX-License-Identifier: GPL-3.0-or-later
#include "route/StabilitySUM.h"

namespace veltrin {

StabilitySUM::StabilitySUM(Program& program) : Form(nameOf(WindowName::StabilitySUM), program) {
  own("Text1", Text1);
  caption = "Stability Summary";
}

}  // namespace veltrin
