// SPDX-License-Identifier: GPL-3.0-or-later
// The processes of Windows.
#pragma once

#include <string>

#include "platform/process_list.h"

namespace veltrin {

class WindowsProcessList : public ProcessList {
 public:
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
};

}  // namespace veltrin
