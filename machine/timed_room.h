// SPDX-License-Identifier: GPL-3.0-or-later
// The room of file systems, some of which may be out of reach.
#pragma once

#include <memory>
#include <optional>
#include <utility>

#include "machine/file_tree.h"
#include "machine/machine.h"
#include "machine/timed_questions.h"
#include "machine/volumes.h"

namespace veltrin {

// What roomOf() tells; of what is served by others, in time or not at all.
class TimedRoom {
 public:
  TimedRoom(FileTree files, std::shared_ptr<const Machine> machine, TimedQuestions questions)
      : files_(std::move(files)), machine_(std::move(machine)), questions_(std::move(questions)) {}

  // Nothing when the system does not tell, and while it gives no answer.
  std::optional<FileSystemRoom> of(const Volume& volume) const;

 private:
  FileTree files_;
  std::shared_ptr<const Machine> machine_;
  TimedQuestions questions_;
};

}  // namespace veltrin
