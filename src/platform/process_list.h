// SPDX-License-Identifier: GPL-3.0-or-later
// The processes that run, and what they have loaded.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace veltrin {

// What CreateToolhelp32Snapshot takes up: TH32CS_SNAPPROCESS.
inline constexpr std::uint32_t kSnapshotOfProcesses = 2;

// Rights to a process: PROCESS_QUERY_INFORMATION and PROCESS_VM_READ.
inline constexpr std::uint32_t kQueryAndRead = 1040;

// Bytes of an entry in the tables of the operations below.
inline constexpr std::uint32_t kTableEntry = 4;

// One process of a snapshot. Its size is set before the first is asked for: 296 bytes, of
// which the last 260 hold the file's name.
struct PROCESSENTRY32 {
  static constexpr std::uint32_t kSize = 296;

  std::uint32_t dwSize = 0;
  std::string szExeFile;  // the program's file, with or without its folder
};

// The operations of the operating system that list processes.
class ProcessList {
 public:
  using Handle = std::intptr_t;
  using Module = std::intptr_t;
  static constexpr Handle kNoHandle = 0;

  virtual ~ProcessList() = default;

  // Takes a picture of what `flags` name. kNoHandle when the system gives none.
  virtual Handle CreateToolhelp32Snapshot(std::uint32_t flags, std::uint32_t processId) = 0;

  // The first, then each further process of a snapshot. False behind the last, for a handle
  // that is none, and for a record of another size than the system's.
  virtual bool Process32First(Handle snapshot, PROCESSENTRY32& entry) = 0;
  virtual bool Process32Next(Handle snapshot, PROCESSENTRY32& entry) = 0;

  // Fills a table with the ids of all processes, as many as it holds. `bytes` is what it
  // was filled with, four for each.
  virtual bool EnumProcesses(std::span<std::uint32_t> ids, std::uint32_t& bytes) = 0;

  // A handle with these rights, or kNoHandle when the system refuses them.
  virtual Handle OpenProcess(std::uint32_t access, bool inherit, std::uint32_t processId) = 0;

  // Fills a table with what a process has loaded, its program first, as many as it holds.
  // `bytes` is what all of them would fill, four for each. False for a handle that is none.
  virtual bool EnumProcessModules(Handle process, std::span<Module> modules,
                                  std::uint32_t& bytes) = 0;

  // A module's file, without or with its folder, cut to `size` characters. The result is the
  // length; 0 when it fails, and then leaves the name as it was.
  virtual std::uint32_t GetModuleBaseNameA(Handle process, Module module, std::string& name,
                                           std::uint32_t size) = 0;
  virtual std::uint32_t GetModuleFileNameExA(Handle process, Module module, std::string& name,
                                             std::uint32_t size) = 0;

  // For any of the handles above.
  virtual void CloseHandle(Handle handle) = 0;
};

}  // namespace veltrin
