// SPDX-License-Identifier: GPL-3.0-or-later
// A program with real windows, the real event loop and real child processes, and a
// store in memory.
#pragma once

#include <algorithm>
#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include <QPushButton>
#include <QTimer>
#include <QWidget>
#include <QWindow>
#include <QtTest/QTest>

#include "frame/program.h"
#include "frame/setlang.h"
#include "gmock/gmock.h"
#include "gtest/gtest.h"
#include "ping/pingtester.h"
#include "platform/qt/qt_desktop.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_text.h"
#include "support/simulated_downloads.h"
#include "support/simulated_drives.h"
#include "support/simulated_printers.h"
#include "support/simulated_process_list.h"
#include "support/simulated_store.h"
#include "support/simulated_system.h"
#include "system_parts.h"
#include "view/window_catalogue.h"

namespace veltrin {

// The clips and pictures lie where the build put them.
class FilesOfBuild : public SimulatedFiles {
 public:
  std::string native(const std::string& path) const override {
    if (!path.starts_with(programFolder())) return path;
    std::string file = SHARE_FOLDER + path.substr(programFolder().size());
    std::replace(file.begin(), file.end(), '\\', '/');
    return std::filesystem::exists(file) ? file : path;
  }
};

// The settings of an installation that has a file for the download test.
class ProfilesOfInstallation : public SimulatedProfiles {
 public:
  ProfilesOfInstallation() {
    constexpr int kFiles = 6;
    std::string& settings = contents["C:\\Program Files\\Veltrin\\installation.ini"];
    settings = "[Installation]\r\n";
    for (int number = 1; number <= kFiles; ++number) {
      settings += "DownloadTestUrl" + std::to_string(number) + "=http://files.example/large\r\n";
    }
  }
};

class ViewTest : public testing::Test {
 protected:
  // Speaks that language from the start.
  void speak(int language) {
    program.LanguageId = language;
    chooseLanguage(program.LanguageId, program.texts);
  }

  // Shows a window and gives it the keyboard.
  template <class Kind>
  std::shared_ptr<Kind> shown() {
    auto form = program.show<Kind>();
    window = desktop.windowOf(*form);
    EXPECT_TRUE(QTest::qWaitForWindowActive(window));
    events.DoEvents();
    return form;
  }

  template <class Kind = QWidget>
  Kind* widget(const char* name) const {
    return window->findChild<Kind*>(QString::fromLatin1(name));
  }

  // Clicks where a widget is, as the window system tells it.
  static void clickAt(QWidget* target) {
    QWidget* top = target->window();
    QTest::mouseClick(top->windowHandle(), Qt::LeftButton, {},
                      target->mapTo(top, target->rect().center()));
  }

  void type(const char* text) const {
    for (const char* letter = text; *letter != '\0'; ++letter) {
      QTest::keyClick(window->windowHandle(), *letter);
    }
  }

  // What happens at the next chance that the system has.
  void soon(std::function<void()> routine) {
    later.push_back(std::move(routine));
    chance.start(0);
  }

  // What a user does in the resting main loop.
  template <class Action>
  void atRest(Action action) {
    {
      const EventGate::Opening opening(events.gate());
      action();
    }
    if (!events.gate().hasEnded()) events.DoEvents();
  }

  QtEventLoop events;
  SystemTimers timers{events};
  SimulatedLoop calendar;
  SimulatedClock clock{calendar};
  FilesOfBuild files;
  SystemProcesses processes{events};
  ProfilesOfInstallation profiles;
  SimulatedRegistry registry;
  SimulatedShell shell;
  SimulatedEnvironment environment;
  SimulatedSockets sockets{calendar};
  SimulatedCounters counters;
  SimulatedWmi wmi;
  SimulatedIcmp icmp{calendar};
  SimulatedDownloads downloads;
  SimulatedInterfaces interfaces;
  SimulatedPrinters printers;
  SimulatedDrives drives;
  SimulatedProcessList processList;
  QtDesktop desktop{events, files, "Veltrin", showInWindow};
  Platform platform{events,    timers,     clock,       desktop, files,       processes, profiles,
                    registry,  shell,      environment, sockets, counters,    wmi,       icmp,
                    downloads, interfaces, printers,    drives,  processList, "veltrin"};
  Program program{platform};
  QWidget* window = nullptr;
  std::deque<std::function<void()>> later;
  QTimer chance;

  void SetUp() override {
    speak(kEnglish);
    chance.setSingleShot(true);
    chance.callOnTimeout([this] {
      while (!later.empty()) {
        const auto routine = std::move(later.front());
        later.pop_front();
        routine();
      }
    });
  }
};

}  // namespace veltrin
