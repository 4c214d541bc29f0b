// SPDX-License-Identifier: GPL-3.0-or-later
// Texts between UTF-8, which the program keeps, and those of Qt.
#pragma once

#include <string>
#include <string_view>

#include <QString>

namespace veltrin {

// Bytes that are no UTF-8 become the replacement character U+FFFD.
inline QString toQt(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

inline std::string fromQt(const QString& text) { return text.toStdString(); }

}  // namespace veltrin
