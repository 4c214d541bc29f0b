// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/linux_process_list.h"

#include <algorithm>
#include <charconv>
#include <set>
#include <string_view>
#include <system_error>

#include "machine/fact_text.h"
#include "text/strings.h"

namespace veltrin {
namespace {

// The number that a folder's name is, if it is one.
std::optional<std::uint32_t> numberOf(const std::string& name) {
  std::uint32_t number = 0;
  const auto read = std::from_chars(name.data(), name.data() + name.size(), number);
  if (read.ec != std::errc() || read.ptr != name.data() + name.size()) return std::nullopt;
  return number;
}

std::string behindLastSlash(const std::string& path) { return path.substr(path.rfind('/') + 1); }

// The kernel keeps no more of a process's word (TASK_COMM_LEN without its end).
constexpr std::size_t kLongestWord = 15;

// More of the words that a process was started with is not looked at: its program's path.
constexpr std::size_t kMostOfWords = 4096;

std::string folderOf(std::uint32_t id) { return "/proc/" + std::to_string(id); }

// The path of a file, without the mark that the kernel puts behind one that was deleted since.
std::string withoutMark(std::string path) {
  const std::string mark = " (deleted)";
  if (path.ends_with(mark)) path.erase(path.size() - mark.size());
  return path;
}

// The file of a line of the maps from which code is run: what stands behind the five fields of
// the mapping (proc(5)), when it begins with a slash. Memory without a file has no such text, or
// one in brackets; mapped data is no module.
std::string fileOf(std::string_view line) {
  const std::size_t start = line.find('/');
  const std::size_t bracket = line.find('[');
  if (start == std::string_view::npos || bracket < start) return {};
  const std::size_t rights = line.find(' ') + 1;
  if (line.substr(rights, 4).find('x') == std::string_view::npos) return {};
  return withoutMark(std::string(line.substr(start)));
}

std::uint32_t give(const std::string& text, std::string& name, std::uint32_t size) {
  name = Left(text, size);
  return static_cast<std::uint32_t>(Len(name));
}

}  // namespace

ProcessList::Handle LinuxProcessList::CreateToolhelp32Snapshot(std::uint32_t flags,
                                                               std::uint32_t /*processId*/) {
  if (flags != kSnapshotOfProcesses) return kNoHandle;
  Snapshot snapshot;
  for (const std::uint32_t id : ids()) {
    if (auto name = nameOf(id)) snapshot.names.push_back(std::move(*name));
  }
  snapshots_[++last_] = std::move(snapshot);
  return last_;
}

bool LinuxProcessList::Process32First(Handle snapshot, PROCESSENTRY32& entry) {
  const auto found = snapshots_.find(snapshot);
  if (found == snapshots_.end()) return false;
  found->second.next = 0;
  return Process32Next(snapshot, entry);
}

bool LinuxProcessList::Process32Next(Handle snapshot, PROCESSENTRY32& entry) {
  const auto found = snapshots_.find(snapshot);
  if (found == snapshots_.end() || entry.dwSize != PROCESSENTRY32::kSize) return false;
  Snapshot& taken = found->second;
  if (taken.next == taken.names.size()) return false;
  entry.szExeFile = taken.names[taken.next++];
  return true;
}

bool LinuxProcessList::EnumProcesses(std::span<std::uint32_t> ids, std::uint32_t& bytes) {
  const std::vector<std::uint32_t> all = this->ids();
  if (all.empty()) return false;
  const std::size_t count = std::min(ids.size(), all.size());
  std::copy_n(all.begin(), count, ids.begin());
  bytes = static_cast<std::uint32_t>(count) * kTableEntry;
  return true;
}

ProcessList::Handle LinuxProcessList::OpenProcess(std::uint32_t /*access*/, bool /*inherit*/,
                                                  std::uint32_t processId) {
  Modules modules;
  std::set<std::string> seen;
  const auto add = [&](const std::string& path) {
    if (!path.empty() && seen.insert(path).second) modules.push_back(printable(path));
  };
  add(programOf(processId));
  if (!files_.readLines(folderOf(processId) + "/maps",
                        [&](std::string_view line) { add(fileOf(line)); })) {
    return kNoHandle;
  }
  processes_[++last_] = std::move(modules);
  return last_;
}

bool LinuxProcessList::EnumProcessModules(Handle process, std::span<Module> modules,
                                          std::uint32_t& bytes) {
  const auto found = processes_.find(process);
  if (found == processes_.end()) return false;
  const std::size_t count = std::min(modules.size(), found->second.size());
  for (std::size_t index = 0; index < count; ++index) {
    modules[index] = static_cast<Module>(index) + 1;
  }
  bytes = static_cast<std::uint32_t>(found->second.size()) * kTableEntry;
  return true;
}

std::uint32_t LinuxProcessList::GetModuleBaseNameA(Handle process, Module module, std::string& name,
                                                   std::uint32_t size) {
  const std::string* path = pathOf(process, module);
  return path == nullptr ? 0 : give(behindLastSlash(*path), name, size);
}

std::uint32_t LinuxProcessList::GetModuleFileNameExA(Handle process, Module module,
                                                     std::string& name, std::uint32_t size) {
  const std::string* path = pathOf(process, module);
  return path == nullptr ? 0 : give(*path, name, size);
}

void LinuxProcessList::CloseHandle(Handle handle) {
  snapshots_.erase(handle);
  processes_.erase(handle);
}

std::vector<std::uint32_t> LinuxProcessList::ids() const {
  std::vector<std::uint32_t> ids;
  for (const std::string& name : files_.names("/proc")) {
    if (const auto id = numberOf(name)) ids.push_back(*id);
  }
  std::sort(ids.begin(), ids.end());
  return ids;
}

// Empty for the kernel's own, and for those of others.
std::string LinuxProcessList::programOf(std::uint32_t id) const {
  return withoutMark(files_.linkTarget(folderOf(id) + "/exe"));
}

// Nothing when it has ended meanwhile, or the system hides it from this user.
std::optional<std::string> LinuxProcessList::nameOf(std::uint32_t id) const {
  const std::string program = programOf(id);
  if (!program.empty()) return printable(behindLastSlash(program));
  auto word = files_.read(folderOf(id) + "/comm");
  if (!word) return std::nullopt;
  if (word->ends_with('\n')) word->pop_back();
  if (word->empty() || word->size() == kLongestWord) {
    const std::string words = files_.read(folderOf(id) + "/cmdline", kMostOfWords).value_or("");
    const std::string first = behindLastSlash(words.substr(0, words.find('\0')));
    if (first.starts_with(*word)) return printable(first);
  }
  return printable(*word);
}

const std::string* LinuxProcessList::pathOf(Handle process, Module module) const {
  const auto found = processes_.find(process);
  if (found == processes_.end() || module < 1) return nullptr;
  const auto place = static_cast<std::size_t>(module - 1);
  return place < found->second.size() ? &found->second[place] : nullptr;
}

}  // namespace veltrin
