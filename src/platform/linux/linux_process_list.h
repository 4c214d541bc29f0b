// SPDX-License-Identifier: GPL-3.0-or-later
// The processes of Linux.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "machine/file_tree.h"
#include "platform/process_list.h"

namespace veltrin {

// Reads the process file system (proc(5)). A process is named by the file that it runs, or, as
// another user's is not to be read, by the word that the kernel keeps for it; that has room for 15
// bytes, and is made whole by the words the process was started with where they begin alike.
// One that has taken itself that word, too, has no name, but is listed as every other.
//
// The modules of a process are the files whose code is mapped into it, each once, in the order
// of their addresses but its program first. Processes whose maps the user may not read refuse to
// be opened. Names and paths are printable().
class LinuxProcessList : public ProcessList {
 public:
  explicit LinuxProcessList(FileTree files = FileTree()) : files_(std::move(files)) {}

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
  struct Snapshot {
    std::vector<std::string> names;
    std::size_t next = 0;
  };
  using Modules = std::vector<std::string>;  // full paths

  std::vector<std::uint32_t> ids() const;
  std::string programOf(std::uint32_t id) const;
  std::optional<std::string> nameOf(std::uint32_t id) const;
  const std::string* pathOf(Handle process, Module module) const;

  FileTree files_;
  std::map<Handle, Snapshot> snapshots_;
  std::map<Handle, Modules> processes_;
  Handle last_ = kNoHandle;
};

}  // namespace veltrin
