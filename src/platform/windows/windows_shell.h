// SPDX-License-Identifier: GPL-3.0-or-later
// Other programs that are started for the user to see, on Windows.
#pragma once

#include <string>

#include "platform/shell.h"

namespace veltrin {

// ShellExecuteA and CreateProcessA, with texts in UTF-8 on this side.
class WindowsShell : public Shell {
 public:
  // False also for texts that hold a NUL.
  bool execute(const std::string& verb, const std::string& file, const std::string& parameters,
               const std::string& folder, int show) override;

  // Throws StatementFailed 53 when there is no such program, 5 when the system refuses
  // it for another reason, and for a line that is empty, too long or holds a NUL.
  void run(const std::string& commandLine, int show) override;
};

}  // namespace veltrin
