// Text boxes in which a running test prints.
#pragma once

#include "forms/text_box.h"
#include "frame/program.h"

namespace veltrin {

// What such a box does after each change: keeps the newest text in view and lets the
// program handle what has come in. Throws ProgramEnded.
inline void followText(Program& program, TextBox& box) {
  box.caretToEnd();
  program.platform.events.DoEvents();
}

}  // namespace veltrin
