// SPDX-License-Identifier: GPL-3.0-or-later
// The InDepth analysis that follows a Hop Stability Test with silent hops.
#pragma once

#include "route/indepth_window.h"

namespace veltrin {

// Tests the last item of the list of silent hops, and starts by itself: the window
// comes into view when its test is over.
class indepth2 : public indepth_window {
 public:
  explicit indepth2(Program& program);

  Label Label4;  // caption of the lowest time, which nothing fills in
  Label PingL;
  Label Label6;  // the same of the highest one
  Label PingH;

 private:
  void Form_Load() override;
  void loadValues() override;
};

}  // namespace veltrin
