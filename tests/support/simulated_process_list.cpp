// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/simulated_process_list.h"

#include <algorithm>

namespace veltrin {
namespace {

constexpr ProcessList::Handle kSnapshot = 1;
constexpr ProcessList::Handle kFirstProcess = 2;  // handles of processes go by their places

}  // namespace

ProcessList::Handle SimulatedProcessList::CreateToolhelp32Snapshot(std::uint32_t flags,
                                                                   std::uint32_t processId) {
  calls.push_back("CreateToolhelp32Snapshot " + std::to_string(flags) + " " +
                  std::to_string(processId));
  if (refusesSnapshot) return kNoHandle;
  ++openHandles;
  return kSnapshot;
}

bool SimulatedProcessList::Process32First(Handle snapshot, PROCESSENTRY32& entry) {
  next_ = 0;
  return Process32Next(snapshot, entry);
}

bool SimulatedProcessList::Process32Next(Handle snapshot, PROCESSENTRY32& entry) {
  if (snapshot != kSnapshot || entry.dwSize != PROCESSENTRY32::kSize) return false;
  if (next_ == std::min(snapshotEnd, processes.size())) return false;
  entry.szExeFile = processes[next_++].exeFile;
  return true;
}

bool SimulatedProcessList::EnumProcesses(std::span<std::uint32_t> ids, std::uint32_t& bytes) {
  calls.push_back("EnumProcesses " + std::to_string(ids.size() * kTableEntry));
  if (refusesEnumeration) return false;
  const std::size_t count = std::min(ids.size(), processes.size());
  for (std::size_t index = 0; index < count; ++index) ids[index] = processes[index].id;
  bytes = static_cast<std::uint32_t>(count) * kTableEntry;
  return true;
}

ProcessList::Handle SimulatedProcessList::OpenProcess(std::uint32_t access, bool inherit,
                                                      std::uint32_t processId) {
  calls.push_back("OpenProcess " + std::to_string(access) + " " + std::to_string(inherit) + " " +
                  std::to_string(processId));
  const auto found = std::find_if(processes.begin(), processes.end(),
                                  [&](const Process& process) { return process.id == processId; });
  if (found == processes.end() || found->refuses) return kNoHandle;
  ++openHandles;
  return kFirstProcess + (found - processes.begin());
}

bool SimulatedProcessList::EnumProcessModules(Handle process, std::span<Module> modules,
                                              std::uint32_t& bytes) {
  const Process* opened = open(process);
  if (opened == nullptr || opened->hidesModules) return false;
  const std::size_t count = std::min(modules.size(), opened->modules.size());
  for (std::size_t index = 0; index < count; ++index) {
    modules[index] = static_cast<Module>(index) + 1;
  }
  bytes = static_cast<std::uint32_t>(opened->modules.size()) * kTableEntry;
  return true;
}

std::uint32_t SimulatedProcessList::GetModuleBaseNameA(Handle process, Module module,
                                                       std::string& name, std::uint32_t size) {
  const std::string* found = path(process, module);
  if (found == nullptr || found->empty()) return 0;
  name = found->substr(found->rfind('\\') + 1).substr(0, size);
  return static_cast<std::uint32_t>(name.size());
}

std::uint32_t SimulatedProcessList::GetModuleFileNameExA(Handle process, Module module,
                                                         std::string& name, std::uint32_t size) {
  const std::string* found = path(process, module);
  if (found == nullptr || found->empty()) return 0;
  name = found->substr(0, size);
  return static_cast<std::uint32_t>(name.size());
}

void SimulatedProcessList::CloseHandle(Handle handle) {
  calls.push_back("CloseHandle " + std::to_string(handle));
  --openHandles;
}

const SimulatedProcessList::Process* SimulatedProcessList::open(Handle handle) const {
  const auto place = static_cast<std::size_t>(handle - kFirstProcess);
  return handle >= kFirstProcess && place < processes.size() ? &processes[place] : nullptr;
}

const std::string* SimulatedProcessList::path(Handle process, Module module) const {
  const Process* opened = open(process);
  const auto place = static_cast<std::size_t>(module - 1);
  if (opened == nullptr || module < 1 || place >= opened->modules.size()) return nullptr;
  return &opened->modules[place];
}

}  // namespace veltrin
