// SPDX-License-Identifier: GPL-3.0-or-later
// The window in which the user chooses the language.
#pragma once

#include "forms/command_button.h"
#include "frame/program.h"

namespace veltrin {

// English and Dutch have texts; the other buttons stand for languages to come.
class setlang : public Form {
 public:
  explicit setlang(Program& program);

  CommandButton Command1{"English"};
  CommandButton Command2{"Dutch"};
  CommandButton Command3{"German"};
  CommandButton Command4{"Spanish"};
  CommandButton Command5{"Italian"};
  CommandButton Command6{"French"};

 private:
  void choose(int language);

  Program& program_;
};

}  // namespace veltrin
