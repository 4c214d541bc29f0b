// SPDX-License-Identifier: GPL-3.0-or-later
// The real program in the lab, with the real tools, each behind a script that keeps what it
// printed.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>

#include "desk/program_run.h"

namespace veltrin::desk {

class ToolRun : public ProgramRun {
 protected:
  static constexpr milliseconds kLongRun{120000};

  // A program folder of its own, whose tools keep their words.
  void SetUp() override {
    ProgramRun::SetUp();
    const std::filesystem::path program(VELTRIN_PROGRAM);
    const std::filesystem::path bin = data_ / "install" / "bin";
    std::filesystem::create_directories(bin / "console");
    std::filesystem::copy_file(program, bin / "veltrin");
    std::filesystem::create_directory_symlink(program.parent_path().parent_path() / "share",
                                              data_ / "install" / "share");
    for (const char* tool : {"ping", "tracert", "pathping", "systeminfo"}) {
      const std::filesystem::path script = bin / "console" / tool;
      const std::string real = (program.parent_path() / "console" / tool).string();
      std::ofstream(script) << "#!/bin/sh\nlog=" << data_.string() << "/run.$(ls " << data_.string()
                            << " | grep -c '^run')\n"
                            << "echo '" << tool << "' \"$@\" >$log.command\n'" << real
                            << "' \"$@\" 2>&1 | tee $log\n";
      std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    }
    programFile_ = (bin / "veltrin").string();
  }

  // Forgets what the tools have said so far, such as at a first start.
  void forgetRuns() const {
    for (const auto& entry : std::filesystem::directory_iterator(data_)) {
      if (entry.path().filename().string().rfind("run", 0) == 0) {
        std::filesystem::remove(entry.path());
      }
    }
  }

  // What the tool of that number, from 0, was called with and printed.
  std::string commandOf(int run) {
    std::string line = contentOf(data_ / ("run." + std::to_string(2 * run) + ".command"));
    return line.substr(0, line.find('\n'));
  }
  std::string textOf(int run) { return contentOf(data_ / ("run." + std::to_string(2 * run))); }

  void click(const std::string& button) { desk_->click(desk_->button(window_, button)); }

  void awaitEnabled(const std::string& button) {
    ASSERT_TRUE(eventually(kLongRun, [&] {
      const auto elements = elementsOf("veltrin");
      return std::any_of(elements.begin(), elements.end(), [&](const Element& element) {
        return element.showing && element.enabled && element.window == window_ &&
               element.role == "push button" && element.name == button;
      });
    }));
  }

  std::string window_;  // in which the test works
};

}  // namespace veltrin::desk
