// SPDX-License-Identifier: GPL-3.0-or-later
#include <utility>

#include "platform/qt/desktop_system.h"
#include "platform/qt/qt_desktop.h"
#include "platform/qt/qt_downloads.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_printers.h"
#include "platform/qt/qt_sockets.h"
#include "platform/qt/silent_wait.h"
#include "platform/windows/library_search.h"
#include "platform/windows/windows_clock.h"
#include "platform/windows/windows_counters.h"
#include "platform/windows/windows_drives.h"
#include "platform/windows/windows_environment.h"
#include "platform/windows/windows_files.h"
#include "platform/windows/windows_icmp.h"
#include "platform/windows/windows_interfaces.h"
#include "platform/windows/windows_process_list.h"
#include "platform/windows/windows_processes.h"
#include "platform/windows/windows_profile_store.h"
#include "platform/windows/windows_registry.h"
#include "platform/windows/windows_shell.h"
#include "platform/windows/windows_waitable_timers.h"
#include "platform/windows/windows_wmi.h"

namespace veltrin {
namespace {

// The file's name without folder and ending.
std::string stemOf(const std::string& executable) {
  const std::size_t folder = executable.find_last_of("/\\");
  const std::string name = folder == std::string::npos ? executable : executable.substr(folder + 1);
  return name.substr(0, name.rfind('.'));
}

class WindowsDesktopSystem : public DesktopSystem {
 public:
  WindowsDesktopSystem(const std::string& executable, const std::string& applicationTitle,
                       FormLooks looks)
      : timers_(events_.gate()),
        processes_([this](void* event) { sleepUntilSignalled(events_, event); }),
        profiles_([this](const std::string& path) { return files_.native(path); },
                  [this](const std::string& path) { return files_.mayWrite(path); }),
        wmi_([this](void* event) { sleepUntilSignalled(events_, event); }),
        icmp_([this](void* event) { sleepUntilSignalled(events_, event); }),
        desktop_(events_, files_, applicationTitle, std::move(looks)),
        platform_{events_,     timers_,   clock_,    desktop_,     files_,
                  processes_,  profiles_, registry_, shell_,       environment_,
                  sockets_,    counters_, wmi_,      icmp_,        downloads_,
                  interfaces_, printers_, drives_,   processList_, stemOf(executable)} {}

  Platform& platform() override { return platform_; }
  void run() override { events_.run(); }

 private:
  QtEventLoop events_;
  WindowsWaitableTimers timers_;
  WindowsClock clock_;
  WindowsFiles files_;
  WindowsProcesses processes_;
  WindowsProfileStore profiles_;
  WindowsRegistry registry_;
  WindowsShell shell_;
  WindowsEnvironment environment_;
  QtSockets sockets_;
  WindowsCounters counters_;
  WindowsWmi wmi_;
  WindowsIcmp icmp_;
  QtDownloads downloads_;
  WindowsInterfaces interfaces_;
  QtPrinters printers_{events_};
  WindowsDrives drives_;
  WindowsProcessList processList_;
  QtDesktop desktop_;
  Platform platform_;
};

}  // namespace

std::unique_ptr<DesktopSystem> makeDesktopSystem(const std::string& executable,
                                                 const std::string& applicationTitle,
                                                 FormLooks looks) {
  leaveCurrentFolderOut();
  return std::make_unique<WindowsDesktopSystem>(executable, applicationTitle, std::move(looks));
}

}  // namespace veltrin
