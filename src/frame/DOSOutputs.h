// SPDX-License-Identifier: GPL-3.0-or-later
// The console runner: starts one console tool and hands on what it prints.
#pragma once

#include <functional>
#include <string>

#include "platform/platform.h"

namespace veltrin {

class DOSOutputs {
 public:
  explicit DOSOutputs(Platform& platform) : platform_(platform) {}
  DOSOutputs(const DOSOutputs&) = delete;
  DOSOutputs& operator=(const DOSOutputs&) = delete;

  // Program and arguments in one text, as the operating system takes it.
  std::string CommandLine;

  // All text read so far in the current or last run.
  const std::string& Outputs() const { return outputs_; }

  // Called with each piece of text that one read returned, 0 to 256 bytes of the
  // pipe, before the next read starts. The last piece of a run is empty.
  std::function<void(const std::string& chunk)> ReceiveOutputs;

  // Runs a command to the end of its output and returns the whole of it, good until
  // the next run, or the empty text when it could not be started, with a message to
  // the user. An empty argument means CommandLine, another one replaces it. There is
  // no way to stop a run; one that is started inside another runs to its own end
  // first.
  const std::string& ExecuteCommand(const std::string& commandLine = {});

 private:
  void fail(const std::string& message);
  void readToEnd(Processes::Handle readEnd);

  Platform& platform_;
  std::string outputs_;
};

}  // namespace veltrin
