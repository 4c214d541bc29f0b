// SPDX-License-Identifier: GPL-3.0-or-later
// Starts the tests of the windows with an application that draws off the screen.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <QApplication>

#include "gtest/gtest.h"
#include "runner/run_tests.h"
#include "view/appearance.h"

namespace {

// A folder of this run's own, for what running copies of the program tell each other.
class RuntimeFolder {
 public:
  RuntimeFolder() : path_(std::filesystem::temp_directory_path() / "view-tests-XXXXXX") {
    std::string pattern = path_.string();
    if (mkdtemp(pattern.data()) != nullptr) path_ = pattern;
    setenv("XDG_RUNTIME_DIR", path_.c_str(), 1);
  }
  ~RuntimeFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  RuntimeFolder(const RuntimeFolder&) = delete;
  RuntimeFolder& operator=(const RuntimeFolder&) = delete;

 private:
  std::filesystem::path path_;
};

// The remarks on what a screen that nobody sees cannot do are left out.
void printMessage(QtMsgType, const QMessageLogContext&, const QString& message) {
  if (!message.startsWith("This plugin does not support")) {
    std::fprintf(stderr, "%s\n", qUtf8Printable(message));
  }
}

}  // namespace

int main(int argc, char** argv) {
  const RuntimeFolder folder;
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  testing::InitGoogleTest(&argc, argv);
  qInstallMessageHandler(printMessage);
  const QApplication application(argc, argv);
  veltrin::setAppearance();
  return veltrin::runTests();
}
