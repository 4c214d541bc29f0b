// SPDX-License-Identifier: GPL-3.0-or-later
// The report of the system in its shown window, on the real platform.
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <tuple>

#include <QApplication>
#include <QWidget>

#include "own_folder.h"
#include "platform/qt/desktop_system.h"
#include "sysinfo/frmSysInfo.h"
#include "view/window_catalogue.h"

namespace veltrin {

// One of these for each report, since the program ends with its last window.
class RealReport {
 public:
  // Which of the boxes are ticked, by their numbers.
  using Boxes = std::array<bool, std::tuple_size_v<decltype(frmSysInfo::Showme)>>;

  static Boxes allBoxes() {
    Boxes boxes{};
    boxes.fill(true);
    return boxes;
  }

  // The program's files, its settings among them, lie in `folder`: the first report there
  // writes all that it finds out into them, and later ones what has changed. `systemInfo` is our
  // tool of that name, beside which the program is taken to stand. With another `wmi` the report
  // is one of that machine.
  RealReport(const BenchFolder& folder, const std::filesystem::path& systemInfo, Wmi* wmi = nullptr)
      : files_(folder),
        system_(makeDesktopSystem(systemInfo.parent_path().parent_path() / "veltrin", "Veltrin",
                                  showInWindow)),
        platform_(with(system_->platform(), wmi)) {}

  Platform& platform() { return platform_; }

  // Opens the window, so that it is painted whole.
  void open() {
    window_ = program_.show<frmSysInfo>();
    paint();
  }

  // The boxes as they are ticked when the window opens.
  Boxes boxes() const {
    Boxes boxes{};
    for (std::size_t at = 0; at < boxes.size(); ++at)
      boxes[at] = window_->Showme[at].value == kChecked;
    return boxes;
  }
  std::string captionOf(std::size_t box) const { return window_->Showme[box].caption; }

  // Ticks these boxes, presses "Get Info", and returns when the report has been painted.
  void run(const Boxes& boxes) {
    for (std::size_t at = 0; at < boxes.size(); ++at) {
      window_->Showme[at].value = boxes[at] ? kChecked : kUnchecked;
    }
    platform_.events.gate().post([this] { window_->Command1.press(); });
    paint();
  }

  std::size_t lines() const { return window_->SYSView.ListView1.count(); }
  std::string line(std::size_t at) const { return window_->SYSView.ListView1.line(at).Text; }

 private:
  static Platform with(const Platform& real, Wmi* wmi) {
    return {real.events,
            real.timers,
            real.clock,
            real.desktop,
            real.files,
            real.processes,
            real.profiles,
            real.registry,
            real.shell,
            real.environment,
            real.sockets,
            real.counters,
            wmi == nullptr ? real.wmi : *wmi,
            real.icmp,
            real.downloads,
            real.interfaces,
            real.printers,
            real.drives,
            real.processList,
            real.executableName};
  }

  // Takes in what waits, and paints every shown window.
  void paint() {
    platform_.events.DoEvents();
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (window->isVisible()) window->repaint();
    }
    platform_.events.DoEvents();
  }

  ProgramFolder files_;
  std::unique_ptr<DesktopSystem> system_;
  Platform platform_;
  Program program_{platform_};
  std::shared_ptr<frmSysInfo> window_;
};

}  // namespace veltrin
