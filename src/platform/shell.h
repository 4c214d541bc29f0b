// SPDX-License-Identifier: GPL-3.0-or-later
// Other programs that are started for the user to see.
#pragma once

#include <string>

namespace veltrin {

// How the window of a started program comes up, by the numbers of the system.
inline constexpr int kShowNormal = 1;
inline constexpr int kShowMaximized = 3;

class Shell {
 public:
  virtual ~Shell() = default;

  // ShellExecuteA: carries out a verb ("open") on a file, with parameters and a working
  // folder, which may be empty. The file is one of the program's paths or the system's
  // own. False when the system refuses it. On a system without the browser that the
  // file names, its parameters are a page for the desktop's own opener.
  virtual bool execute(const std::string& verb, const std::string& file,
                       const std::string& parameters, const std::string& folder, int show) = 0;

  // Shell: starts a command line. Throws StatementFailed when there is no such program.
  virtual void run(const std::string& commandLine, int show) = 0;
};

}  // namespace veltrin
