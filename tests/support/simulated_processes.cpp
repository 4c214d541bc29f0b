// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/simulated_processes.h"

#include <algorithm>

namespace veltrin {

bool SimulatedProcesses::CreatePipe(Handle& readEnd, Handle& writeEnd) {
  if (failPipes) return false;
  readEnd = make("read");
  writeEnd = make("write");
  pipes_[readEnd] = {};
  readEndOf_[writeEnd] = readEnd;
  return true;
}

int SimulatedProcesses::CreateProcess(const std::string& commandLine, Handle writeEnd,
                                      ProcessInformation& started) {
  note("run " + commandLine);
  starts.push_back({loop_.milliseconds(), commandLine});
  auto writes = tool ? tool(commandLine) : std::nullopt;
  if (!writes) return 0;
  std::int64_t moment = loop_.milliseconds();
  Pipe& pipe = pipes_[readEndOf_[writeEnd]];
  for (ToolWrite& write : *writes) {
    moment += write.delay;
    pipe.writes.push_back({moment, std::move(write.text)});
  }
  started.process = make("process");
  started.thread = make("thread");
  return 1;
}

// Like a real pipe: waits for the first byte or the end, then gives all that has
// been written by then, up to the grain.
bool SimulatedProcesses::ReadFile(Handle readEnd, std::array<char, kReadGrain>& buffer,
                                  std::size_t& count) {
  count = 0;
  if (readsBeforeError && (*readsBeforeError)-- <= 0) return false;
  auto& writes = pipes_[readEnd].writes;
  while (!writes.empty() && count == 0) {
    loop_.passUntil(writes.front().delay);
    while (!writes.empty() && writes.front().delay <= loop_.milliseconds() &&
           count < buffer.size()) {
      std::string& text = writes.front().text;
      const std::size_t taken = std::min(text.size(), buffer.size() - count);
      std::copy_n(text.begin(), taken, buffer.begin() + static_cast<std::ptrdiff_t>(count));
      count += taken;
      text.erase(0, taken);
      if (text.empty()) writes.pop_front();
    }
  }
  return count > 0;
}

void SimulatedProcesses::CloseHandle(Handle handle) {
  const auto found = handles_.find(handle);
  if (found == handles_.end()) {
    closed.push_back("unknown");
    return;
  }
  closed.push_back(found->second);
  pipes_.erase(handle);
  handles_.erase(found);
}

Processes::Handle SimulatedProcesses::make(const std::string& kind) {
  handles_[++last_] = kind;
  return last_;
}

}  // namespace veltrin
