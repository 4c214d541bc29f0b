// SPDX-License-Identifier: GPL-3.0-or-later
// Puts a platform and a program together and shows the first window.
#include <cstdio>
#include <cstdlib>
#include <exception>

#include <QApplication>
#include <QDir>
#include <QIcon>

#include "frame/starter.h"
#include "platform/qt/desktop_system.h"
#include "platform/qt/qt_text.h"
#include "toolbox/toolbox.h"
#include "view/appearance.h"
#include "view/window_catalogue.h"

namespace {

constexpr const char* kTitle = "Veltrin";

// The installation keeps the icon in several sizes; on Windows it lies in the program.
QIcon applicationIcon() {
  QIcon icon;
  const QDir sizes(QCoreApplication::applicationDirPath() + "/../share/icons/hicolor");
  for (const QString& size : sizes.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
    const QString file = sizes.filePath(size + "/apps/veltrin.png");
    if (QFile::exists(file)) icon.addFile(file);
  }
  return icon;
}

void runProgram() {
  const auto system = veltrin::makeDesktopSystem(
      veltrin::fromQt(QCoreApplication::applicationFilePath()), kTitle, veltrin::showInWindow);
  veltrin::Program program(system->platform());
  veltrin::provideTools(program);
  program.show<veltrin::starter>();
  system->run();
}

int failed(const char* what) {
  std::fprintf(stderr, "%s: %s\n", kTitle, what);
  return EXIT_FAILURE;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    QApplication application(argc, argv);
    QApplication::setApplicationName("veltrin");
    QApplication::setDesktopFileName("veltrin");
    QApplication::setWindowIcon(applicationIcon());
    veltrin::setAppearance();
    runProgram();
    return EXIT_SUCCESS;
  } catch (const veltrin::ProgramEnded&) {
    return EXIT_SUCCESS;
  } catch (const std::exception& failure) {
    return failed(failure.what());
  } catch (...) {
    return failed("stopped by an unknown failure");
  }
}
