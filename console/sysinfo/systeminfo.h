// SPDX-License-Identifier: GPL-3.0-or-later
// The systeminfo tool: prints what the machine is made of and how it is set up.
#pragma once

#include <string>
#include <vector>

#include "console/output.h"
#include "machine/file_tree.h"
#include "machine/machine.h"

namespace veltrin {

// Exit codes of the tool.
inline constexpr int kSystemInfoTold = 0;    // all was printed, or the usage was asked for
inline constexpr int kSystemInfoFailed = 1;  // a mistake, or nobody reads any more

class SystemInfo {
 public:
  SystemInfo(const FileTree& files, const Machine& machine, Output& output)
      : files_(files), machine_(machine), output_(output) {}

  // Runs the tool with its arguments, without the program's name, to the end.
  // Returns the exit code.
  int run(const std::vector<std::string>& arguments);

 private:
  int tell();

  const FileTree& files_;
  const Machine& machine_;
  Output& output_;
};

}  // namespace veltrin
