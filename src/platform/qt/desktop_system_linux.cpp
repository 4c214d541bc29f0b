// SPDX-License-Identifier: GPL-3.0-or-later
#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

#include "platform/linux/linux_clock.h"
#include "platform/linux/linux_counters.h"
#include "platform/linux/linux_drives.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_files.h"
#include "platform/linux/linux_icmp.h"
#include "platform/linux/linux_interfaces.h"
#include "platform/linux/linux_process_list.h"
#include "platform/linux/linux_processes.h"
#include "platform/linux/linux_registry.h"
#include "platform/linux/linux_shell.h"
#include "platform/linux/linux_wmi.h"
#include "platform/portable/profile_file.h"
#include "platform/qt/desktop_system.h"
#include "platform/qt/qt_desktop.h"
#include "platform/qt/qt_downloads.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_printers.h"
#include "platform/qt/qt_sockets.h"
#include "platform/qt/qt_waitable_timers.h"
#include "platform/qt/silent_wait.h"

namespace veltrin {
namespace {

// Where the console tools stand: beside the program where it was built, and where programs
// belong that nobody calls by their names alone where it was installed.
std::string toolsFolder(const std::filesystem::path& executable) {
  const std::filesystem::path beside = executable.parent_path() / "console";
  std::error_code ignored;
  if (std::filesystem::is_directory(beside, ignored)) return beside.string();
  return (executable.parent_path().parent_path() / "libexec" / "veltrin").string();
}

class LinuxDesktopSystem : public DesktopSystem {
 public:
  LinuxDesktopSystem(const std::filesystem::path& executable, const std::string& applicationTitle,
                     FormLooks looks)
      : timers_(events_),
        files_(LinuxFiles::defaultFolders()),
        processes_(toolsFolder(executable),
                   [this](int pipe) { sleepUntilReadable(events_, pipe); }),
        profiles_([this](const std::string& path) { return files_.native(path); },
                  [this](const std::string& path) { return files_.pathToWrite(path); }),
        registry_(files_.pathToWrite(files_.programFolder() + "\\Files\\Registry.dat")),
        shell_(files_),
        icmp_(toolsFolder(executable),
              [this](int descriptor, int milliseconds) {
                sleepUntilReadable(events_, descriptor, milliseconds);
              }),
        desktop_(events_, files_, applicationTitle, std::move(looks)),
        platform_{events_,     timers_,   clock_,    desktop_,     files_,
                  processes_,  profiles_, registry_, shell_,       environment_,
                  sockets_,    counters_, wmi_,      icmp_,        downloads_,
                  interfaces_, printers_, drives_,   processList_, executable.stem().string()} {}

  Platform& platform() override { return platform_; }
  void run() override { events_.run(); }

 private:
  QtEventLoop events_;
  QtWaitableTimers timers_;
  LinuxClock clock_;
  LinuxFiles files_;
  LinuxProcesses processes_;
  ProfileFile profiles_;
  LinuxRegistry registry_;
  LinuxShell shell_;
  LinuxEnvironment environment_;
  QtSockets sockets_;
  std::shared_ptr<AdapterNames> adapters_ = std::make_shared<AdapterNames>();
  LinuxCounters counters_{"/proc", adapters_};
  LinuxIcmp icmp_;
  QtDownloads downloads_;
  LinuxInterfaces interfaces_{adapters_};
  QtPrinters printers_{events_};
  LinuxWmi wmi_{sourcesOfThisMachine([this] { return printers_.facts(); })};
  LinuxDrives drives_;
  LinuxProcessList processList_;
  QtDesktop desktop_;
  Platform platform_;
};

}  // namespace

std::unique_ptr<DesktopSystem> makeDesktopSystem(const std::string& executable,
                                                 const std::string& applicationTitle,
                                                 FormLooks looks) {
  return std::make_unique<LinuxDesktopSystem>(executable, applicationTitle, std::move(looks));
}

}  // namespace veltrin
