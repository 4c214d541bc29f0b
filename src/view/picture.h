// SPDX-License-Identifier: GPL-3.0-or-later
// The pictures of the installation.
#pragma once

#include <string>

#include <QIcon>

#include "platform/files.h"

namespace veltrin {

// The name of the property by which a widget of a form names its picture.
inline constexpr const char* kPictureProperty = "picture";

// A picture by its name, in the sizes that the installation has for the scales of
// screens. Empty when it is not there.
QIcon loadPicture(const Files& files, const std::string& name);

}  // namespace veltrin
