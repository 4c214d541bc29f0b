// SPDX-License-Identifier: GPL-3.0-or-later
// The fsutil tool: tells facts of a drive and of the file system on it.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "console/output.h"
#include "machine/file_tree.h"
#include "machine/machine.h"
#include "machine/timed_questions.h"
#include "machine/timed_room.h"
#include "machine/volumes.h"

namespace veltrin {

// Exit codes of the tool.
inline constexpr int kFsUtilTold = 0;    // all was printed, or the usage was asked for
inline constexpr int kFsUtilFailed = 1;  // a mistake, a fact that nobody tells, or no reader

class FsUtil {
 public:
  // The place of a folder of this machine without links in its path; empty when there is no
  // such folder (realpath(3)). It may be asked on another thread, and longer than the tool runs.
  using Resolve = std::function<std::string(const std::string& folder)>;

  FsUtil(const FileTree& files, std::shared_ptr<const Machine> machine, Resolve resolve,
         Output& output, const TimedQuestions& questions = TimedQuestions())
      : files_(files),
        rooms_(files, std::move(machine), questions),
        resolve_(std::move(resolve)),
        questions_(questions),
        output_(output) {}

  // Runs the tool with its arguments, without the program's name, to the end.
  // Returns the exit code.
  int run(const std::vector<std::string>& arguments);

 private:
  struct Command;
  static Command readCommand(const std::vector<std::string>& arguments);

  std::string findVolume(const std::string& place);
  std::string findDrive(const std::string& drive);
  std::string findFolder(const std::string& folder);
  std::optional<std::string> resolveInTime(const std::string& folder) const;
  int print(const std::string& problem, const std::vector<std::string>& lines, bool usage);

  const FileTree& files_;
  TimedRoom rooms_;
  Resolve resolve_;
  TimedQuestions questions_;
  Output& output_;
  std::string place_;  // the drive or folder as it is shown
  Volume volume_;
};

}  // namespace veltrin
