// SPDX-License-Identifier: GPL-3.0-or-later
// What the program is and which version of it this is.
#pragma once

#include "forms/label.h"
#include "frame/program.h"

namespace veltrin {

class About : public Form {
 public:
  explicit About(Program& program);

  Label Label1;  // way to the report of the system
  Label Label2;  // version and date
  Label Label3;  // purpose
  Label Label4;  // empty
  Label Label9;  // product

 private:
  Program& program_;
};

}  // namespace veltrin
