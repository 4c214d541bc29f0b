// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame/DOSOutputs.h"

namespace veltrin {
namespace {

const std::string kNothing;

// Closes the handles of a run in their order, also when the run is unwound.
class RunHandles {
 public:
  RunHandles(Processes& processes, const Processes::ProcessInformation& started,
             Processes::Handle readEnd)
      : processes_(processes), started_(started), readEnd_(readEnd) {}
  ~RunHandles() {
    processes_.CloseHandle(started_.process);
    processes_.CloseHandle(started_.thread);
    processes_.CloseHandle(readEnd_);
  }
  RunHandles(const RunHandles&) = delete;
  RunHandles& operator=(const RunHandles&) = delete;

 private:
  Processes& processes_;
  Processes::ProcessInformation started_;
  Processes::Handle readEnd_;
};

}  // namespace

const std::string& DOSOutputs::ExecuteCommand(const std::string& commandLine) {
  if (!commandLine.empty()) CommandLine = commandLine;
  if (CommandLine.empty()) {
    fail("Command Line empty");
    return kNothing;
  }
  Processes& processes = platform_.processes;
  Processes::Handle readEnd = Processes::kNoHandle;
  Processes::Handle writeEnd = Processes::kNoHandle;
  if (!processes.CreatePipe(readEnd, writeEnd)) return kNothing;
  Processes::ProcessInformation started;
  // A pipe whose child could not be started is left open to the end of the program.
  if (processes.CreateProcess(CommandLine, writeEnd, started) != 1) {
    fail("File or command not found");
    return kNothing;
  }
  processes.CloseHandle(writeEnd);
  const RunHandles handles(processes, started, readEnd);
  outputs_.clear();
  readToEnd(readEnd);
  return outputs_;
}

void DOSOutputs::readToEnd(Processes::Handle readEnd) {
  std::array<char, kReadGrain> buffer{};
  std::string chunk;
  bool more = true;
  while (more) {
    std::size_t count = 0;
    more = platform_.processes.ReadFile(readEnd, buffer, count);
    chunk.assign(buffer.data(), count);
    platform_.processes.fromCodePage(chunk);
    outputs_ += chunk;
    if (ReceiveOutputs) ReceiveOutputs(chunk);
  }
}

void DOSOutputs::fail(const std::string& message) {
  platform_.desktop.messageBox(message, kMessageCritical, "");
}

}  // namespace veltrin
