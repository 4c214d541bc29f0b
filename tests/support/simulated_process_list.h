// SPDX-License-Identifier: GPL-3.0-or-later
// Processes and their modules as a test tells them.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/process_list.h"

namespace veltrin {

class SimulatedProcessList : public ProcessList {
 public:
  struct Process {
    std::uint32_t id = 0;
    std::string exeFile;
    std::vector<std::string> modules;  // full paths; an empty one has no name to give
    bool refuses = false;              // to be opened
    bool hidesModules = false;         // once it is open
  };
  std::vector<Process> processes;
  bool refusesSnapshot = false;
  std::size_t snapshotEnd = static_cast<std::size_t>(-1);  // the entry that fails, from 0
  bool refusesEnumeration = false;

  std::vector<std::string> calls;  // with their arguments; not those of modules and entries
  int openHandles = 0;

  Handle CreateToolhelp32Snapshot(std::uint32_t flags, std::uint32_t processId) override;
  bool Process32First(Handle snapshot, PROCESSENTRY32& entry) override;
  bool Process32Next(Handle snapshot, PROCESSENTRY32& entry) override;
  bool EnumProcesses(std::span<std::uint32_t> ids, std::uint32_t& bytes) override;
  Handle OpenProcess(std::uint32_t access, bool inherit, std::uint32_t processId) override;
  bool EnumProcessModules(Handle process, std::span<Module> modules, std::uint32_t& bytes) override;
  std::uint32_t GetModuleBaseNameA(Handle process, Module module, std::string& name,
                                   std::uint32_t size) override;
  std::uint32_t GetModuleFileNameExA(Handle process, Module module, std::string& name,
                                     std::uint32_t size) override;
  void CloseHandle(Handle handle) override;

 private:
  const Process* open(Handle handle) const;
  const std::string* path(Handle process, Module module) const;

  std::size_t next_ = 0;  // entry of the snapshot
};

}  // namespace veltrin
