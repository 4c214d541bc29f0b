// SPDX-License-Identifier: GPL-3.0-or-later
// The summary of a Hop Stability Test, to read.
#pragma once

#include "forms/text_box.h"
#include "frame/program.h"

namespace veltrin {

class StabilitySUM : public Form {
 public:
  explicit StabilitySUM(Program& program);

  TextBox Text1;
};

}  // namespace veltrin
