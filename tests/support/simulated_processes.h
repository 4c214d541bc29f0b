// SPDX-License-Identifier: GPL-3.0-or-later
// Console tools of the simulated platform: their text arrives at given times.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/processes.h"
#include "support/journal.h"
#include "support/simulated_loop.h"

namespace veltrin {

// One write of a tool, some time after the write before it (the first: after the
// start).
struct ToolWrite {
  std::int64_t delay = 0;  // ms
  std::string text;
};

class SimulatedProcesses : public Processes, public Journalled {
 public:
  explicit SimulatedProcesses(SimulatedLoop& loop) : loop_(loop) {}

  // What answers a command line: the tool's writes, or nothing when there is no
  // such program. Set by the test.
  std::function<std::optional<std::vector<ToolWrite>>(const std::string& commandLine)> tool;

  // Makes CreatePipe fail.
  bool failPipes = false;

  // Makes every read after so many report an error, from now on.
  std::optional<int> readsBeforeError;

  // All command lines that were started, and when.
  struct Start {
    std::int64_t moment = 0;  // ms
    std::string commandLine;
  };
  std::vector<Start> starts;

  // Handles that were made and not closed, and the order in which others were
  // closed ("write", "process", "thread", "read").
  std::size_t openHandles() const { return handles_.size(); }
  std::vector<std::string> closed;

  bool CreatePipe(Handle& readEnd, Handle& writeEnd) override;
  int CreateProcess(const std::string& commandLine, Handle writeEnd,
                    ProcessInformation& started) override;
  bool ReadFile(Handle readEnd, std::array<char, kReadGrain>& buffer, std::size_t& count) override;
  void CloseHandle(Handle handle) override;

 private:
  struct Pipe {
    std::deque<ToolWrite> writes;  // delays turned into moments
  };

  Handle make(const std::string& kind);

  SimulatedLoop& loop_;
  Handle last_ = 0;
  std::map<Handle, std::string> handles_;
  std::map<Handle, Pipe> pipes_;        // by read end
  std::map<Handle, Handle> readEndOf_;  // by write end
};

}  // namespace veltrin
