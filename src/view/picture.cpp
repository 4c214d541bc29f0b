// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/picture.h"

#include <array>

#include <QFile>

#include "platform/qt/qt_text.h"

namespace veltrin {
namespace {

// The scales in percent at which the build draws each picture.
constexpr std::array<const char*, 3> kScales = {"100", "150", "200"};

}  // namespace

QIcon loadPicture(const Files& files, const std::string& name) {
  QIcon picture;
  for (const char* scale : kScales) {
    const QString file =
        toQt(files.native(files.programFolder() + "\\icons\\" + name + "-" + scale + ".png"));
    if (QFile::exists(file)) picture.addFile(file);
  }
  return picture;
}

}  // namespace veltrin
