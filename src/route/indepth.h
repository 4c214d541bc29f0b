// SPDX-License-Identifier: GPL-3.0-or-later
// The InDepth analysis that the user opens and starts.
#pragma once

#include "route/indepth_window.h"

namespace veltrin {

class indepth : public indepth_window {
 public:
  explicit indepth(Program& program);

  Label Label4;  // opens the page that explains the results

 private:
  void loadValues() override;
};

}  // namespace veltrin
