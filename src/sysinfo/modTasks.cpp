// SPDX-License-Identifier: GPL-3.0-or-later
#include "sysinfo/modTasks.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "sysinfo/frmSysInfo.h"
#include "text/strings.h"

namespace veltrin {
namespace {

constexpr std::int16_t kNoPicture = 0;
constexpr std::int16_t kProcesses = 13;
constexpr std::int16_t kPlainColour = 1;
constexpr std::int16_t kHeadingColour = 2;

constexpr std::size_t kTableEntries = 1024;
constexpr std::uint32_t kNameLength = 400;
const char* const kUnknown = "unknown";  // what a name is that nobody tells

// What ends the search in a module's path. The last three are its program's libraries.
constexpr std::string_view kProgram = ".exe";
constexpr std::array<std::string_view, 4> kEndings{kProgram, ".tmp", ".drv", ".dll"};
const char* const kBehindLibrary = "          ";

// The process list's handle, closed at the end.
class OpenHandle {
 public:
  OpenHandle(ProcessList& list, ProcessList::Handle handle) : list_(list), handle_(handle) {}
  OpenHandle(const OpenHandle&) = delete;
  OpenHandle& operator=(const OpenHandle&) = delete;
  ~OpenHandle() {
    if (handle_ != ProcessList::kNoHandle) list_.CloseHandle(handle_);
  }
  ProcessList::Handle get() const { return handle_; }

 private:
  ProcessList& list_;
  ProcessList::Handle handle_;
};

// Whether the first of the endings that a path holds, wherever it stands, is a program's:
// a folder of that name is taken for one, too.
bool isProgram(const std::string& path) {
  const std::string folded = LCase(path);
  std::size_t first = std::string::npos;
  bool found = false;
  for (const std::string_view ending : kEndings) {
    const std::size_t at = folded.find(ending);
    if (at >= first) continue;
    first = at;
    found = ending == kProgram;
  }
  return found;
}

class TaskListing {
 public:
  TaskListing(Program& program, frmSysInfo* window)
      : list_(program.platform.processList),
        counter_(program.shared<TaskValues>().ProcessCount),
        window_(window) {}

  void runningProcesses() {
    counter_ = 0;
    print("    ", kNoPicture, kPlainColour, false);
    print("Running Processes", kProcesses, kHeadingColour, true);
    const OpenHandle snapshot(list_, list_.CreateToolhelp32Snapshot(kSnapshotOfProcesses, 0));
    PROCESSENTRY32 entry;
    entry.dwSize = PROCESSENTRY32::kSize;
    for (bool found = list_.Process32First(snapshot.get(), entry); found;
         found = list_.Process32Next(snapshot.get(), entry)) {
      const std::string name = entry.szExeFile.substr(entry.szExeFile.rfind('\\') + 1);
      print(LCase(name), kNoPicture, kPlainColour, true);
      ++counter_;
    }
  }

  void userProcesses() {
    print("    ", kNoPicture, kPlainColour, false);
    print("    ", kNoPicture, kPlainColour, false);
    print("User Processes anf Threads", kProcesses, kHeadingColour, true);
    std::vector<std::uint32_t> ids(kTableEntries);
    std::uint32_t bytes = 0;
    if (!list_.EnumProcesses(ids, bytes)) return;
    ids.resize(std::min<std::size_t>(bytes / kTableEntry, ids.size()));
    for (const std::uint32_t id : ids) modulesOf(id);
  }

 private:
  // A process that has loaded more than the table holds has modules without a handle. Nobody
  // tells their names.
  void modulesOf(std::uint32_t id) {
    const OpenHandle process(list_, list_.OpenProcess(kQueryAndRead, false, id));
    std::vector<ProcessList::Module> modules(kTableEntries);
    std::uint32_t bytes = 0;
    if (!list_.EnumProcessModules(process.get(), modules, bytes)) return;
    modules.resize(bytes / kTableEntry);
    for (std::size_t index = 0; index < modules.size(); ++index) {
      std::string baseName = kUnknown;
      std::string path = kUnknown;
      if (index < kTableEntries) {
        list_.GetModuleBaseNameA(process.get(), modules[index], baseName, kNameLength);
        list_.GetModuleFileNameExA(process.get(), modules[index], path, kNameLength);
      }
      printModule(path);
    }
  }

  // The program is the head of its libraries.
  void printModule(const std::string& path) {
    if (isProgram(path)) {
      print(path, kNoPicture, kPlainColour, true);
    } else {
      print(path + kBehindLibrary, kNoPicture, kPlainColour, false);
    }
  }

  void print(const std::string& text, std::int16_t picture, std::int16_t colour, bool bold) {
    if (window_ != nullptr) window_->LogEvents(text, picture, colour, bold);
  }

  ProcessList& list_;
  std::int32_t& counter_;
  frmSysInfo* window_;
};

}  // namespace

void modTasks(Program& program, frmSysInfo* window) {
  TaskListing listing(program, window);
  listing.runningProcesses();
  listing.userProcesses();
}

}  // namespace veltrin
