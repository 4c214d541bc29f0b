// SPDX-License-Identifier: GPL-3.0-or-later
// Other programs that are started for the user to see, on Linux.
#pragma once

#include <string>
#include <vector>

#include "platform/files.h"
#include "platform/shell.h"

namespace veltrin {

// Starts programs in a session of their own, and hands documents and pages to the
// desktop's own opener, xdg-open in PATH. What is started gets a list of arguments, no
// shell sees it, and nobody waits for it. How a window comes up is its program's own
// affair.
class LinuxShell : public Shell {
 public:
  // `files` has to live longer.
  explicit LinuxShell(const Files& files) : files_(files) {}

  // The verb is "open" or empty. A file that can be executed is started; another one is
  // opened, and so is a file that is an address of http, https or file. A file IEXPLORE.EXE
  // (in any folder and case) stands for the opener: the first such address among its
  // parameters is opened. A name without a folder is looked for in PATH as well.
  // False for anything else, and for a file or working folder that is not there.
  bool execute(const std::string& verb, const std::string& file, const std::string& parameters,
               const std::string& folder, int show) override;

  // A program without quotes may hold blanks: it is the shortest piece up to a blank that
  // is a program. A program NOTEPAD.EXE (in any folder and case) stands for the opener too,
  // and all that follows it for one file, which may hold blanks. Throws StatementFailed 53 when
  // there is none, 5 for a line that is empty, too long or holds a NUL.
  void run(const std::string& commandLine, int show) override;

 private:
  bool startPiece(const std::string& program, const std::string& rest) const;
  std::string locate(const std::string& file) const;

  const Files& files_;
};

}  // namespace veltrin
