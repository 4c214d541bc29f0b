// A text that the user reads.
#pragma once

#include "forms/control.h"

namespace veltrin {

class Label : public Control {
 public:
  Property<std::string> caption;
};

}  // namespace veltrin
