// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame/setlang.h"

namespace veltrin {

setlang::setlang(Program& program) : Form(nameOf(WindowName::setlang), program), program_(program) {
  own("Command1", Command1);
  own("Command2", Command2);
  own("Command3", Command3);
  own("Command4", Command4);
  own("Command5", Command5);
  own("Command6", Command6);
  caption = "Set Language";
  Command1.click = [this] { choose(kEnglish); };
  Command2.click = [this] { choose(kDutch); };
}

void setlang::choose(int language) {
  program_.LanguageId = language;
  chooseLanguage(program_.LanguageId, program_.texts);
  program_.writeSetting("Settings", "Lang", program_.LanguageId);
  unload();
}

}  // namespace veltrin
