// SPDX-License-Identifier: GPL-3.0-or-later
// Each of these stands on the one before. Version 1 keeps the operations' own names.
// clang-format off
#define PSAPI_VERSION 1
#include <windows.h>
#include <psapi.h>
#include <tlhelp32.h>
// clang-format on

#include "platform/windows/windows_process_list.h"

#include <algorithm>
#include <vector>

#include "platform/windows/code_page.h"
#include "text/strings.h"

namespace veltrin {
namespace {

static_assert(kSnapshotOfProcesses == TH32CS_SNAPPROCESS);
static_assert(kQueryAndRead == (PROCESS_QUERY_INFORMATION | PROCESS_VM_READ));

HANDLE systemHandle(ProcessList::Handle handle) { return reinterpret_cast<HANDLE>(handle); }
HMODULE systemModule(ProcessList::Module module) { return reinterpret_cast<HMODULE>(module); }

// Both steps of a snapshot: only the system's operation is another.
bool step(BOOL(WINAPI* operation)(HANDLE, PROCESSENTRY32W*), ProcessList::Handle snapshot,
          PROCESSENTRY32& entry) {
  if (entry.dwSize != PROCESSENTRY32::kSize) return false;
  PROCESSENTRY32W found{};
  found.dwSize = sizeof found;
  if (!operation(systemHandle(snapshot), &found)) return false;
  entry.szExeFile = fromWide(static_cast<const wchar_t*>(found.szExeFile));
  return true;
}

// Both names of a module.
std::uint32_t nameOf(DWORD(WINAPI* operation)(HANDLE, HMODULE, LPWSTR, DWORD),
                     ProcessList::Handle process, ProcessList::Module module, std::string& name,
                     std::uint32_t size) {
  std::vector<wchar_t> buffer(size + 1);
  const DWORD length = operation(systemHandle(process), systemModule(module), buffer.data(),
                                 static_cast<DWORD>(buffer.size()));
  if (length == 0) return 0;
  name = Left(fromWide({buffer.data(), std::min<std::size_t>(length, size)}), size);
  return static_cast<std::uint32_t>(Len(name));
}

}  // namespace

ProcessList::Handle WindowsProcessList::CreateToolhelp32Snapshot(std::uint32_t flags,
                                                                 std::uint32_t processId) {
  const HANDLE snapshot = ::CreateToolhelp32Snapshot(flags, processId);
  return snapshot == INVALID_HANDLE_VALUE ? kNoHandle : reinterpret_cast<Handle>(snapshot);
}

bool WindowsProcessList::Process32First(Handle snapshot, PROCESSENTRY32& entry) {
  return step(::Process32FirstW, snapshot, entry);
}

bool WindowsProcessList::Process32Next(Handle snapshot, PROCESSENTRY32& entry) {
  return step(::Process32NextW, snapshot, entry);
}

bool WindowsProcessList::EnumProcesses(std::span<std::uint32_t> ids, std::uint32_t& bytes) {
  std::vector<DWORD> found(ids.size());
  DWORD filled = 0;
  if (!::EnumProcesses(found.data(), static_cast<DWORD>(found.size() * sizeof(DWORD)), &filled)) {
    return false;
  }
  static_assert(sizeof(DWORD) == kTableEntry);
  std::copy(found.begin(), found.end(), ids.begin());
  bytes = filled;
  return true;
}

ProcessList::Handle WindowsProcessList::OpenProcess(std::uint32_t access, bool inherit,
                                                    std::uint32_t processId) {
  return reinterpret_cast<Handle>(::OpenProcess(access, inherit ? TRUE : FALSE, processId));
}

// The system's table has wider entries than the one that its size is told for.
bool WindowsProcessList::EnumProcessModules(Handle process, std::span<Module> modules,
                                            std::uint32_t& bytes) {
  std::vector<HMODULE> found(modules.size());
  DWORD needed = 0;
  if (!::EnumProcessModules(systemHandle(process), found.data(),
                            static_cast<DWORD>(found.size() * sizeof(HMODULE)), &needed)) {
    return false;
  }
  std::transform(found.begin(), found.end(), modules.begin(),
                 [](HMODULE module) { return reinterpret_cast<Module>(module); });
  bytes = static_cast<std::uint32_t>(needed / sizeof(HMODULE)) * kTableEntry;
  return true;
}

std::uint32_t WindowsProcessList::GetModuleBaseNameA(Handle process, Module module,
                                                     std::string& name, std::uint32_t size) {
  return nameOf(::GetModuleBaseNameW, process, module, name, size);
}

std::uint32_t WindowsProcessList::GetModuleFileNameExA(Handle process, Module module,
                                                       std::string& name, std::uint32_t size) {
  return nameOf(::GetModuleFileNameExW, process, module, name, size);
}

void WindowsProcessList::CloseHandle(Handle handle) { ::CloseHandle(systemHandle(handle)); }

}  // namespace veltrin
