// SPDX-License-Identifier: GPL-3.0-or-later
// Text boxes in which a running test prints.
#pragma once

#include "forms/text_box.h"
#include "frame/program.h"
#include "text/strings.h"

namespace veltrin {

// What such a box does after each change: keeps the newest text in view and lets the
// program handle what has come in. Throws ProgramEnded.
inline void followText(Program& program, TextBox& box) {
  box.caretToEnd();
  program.platform.events.DoEvents();
}

// What a run does before it prints: takes a text away that is none of a run, but tells
// what the tool is for, and so begins with "This".
inline void dropIntroduction(TextBox& box) {
  constexpr std::string_view kFirstWord = "This";
  if (Left(box.text.get(), Len(kFirstWord)) == kFirstWord) box.text = "";
}

}  // namespace veltrin
