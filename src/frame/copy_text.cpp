// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame/copy_text.h"

namespace veltrin {

void copyText(Program& program, const std::string& text, const std::string& title) {
  program.platform.desktop.clearClipboard();
  program.platform.desktop.setClipboardText(text);
  program.MsgBox(program.texts.TextCopied, kMessageOk, title);
}

}  // namespace veltrin
