// SPDX-License-Identifier: GPL-3.0-or-later
// A text file whose new content takes the old one's place when it is closed.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/files.h"

namespace veltrin {

// Turns UTF-8 text into the bytes that the file is to hold.
using TextEncoder = std::function<std::string(const std::string&)>;

// Opens the file at `path` (the system's own form, UTF-8) for writing. Text is
// kept until the stream is closed, then the file is replaced as a whole, so that
// a write that fails leaves the older file as it was. Appending starts from the
// older content. Without `encode` the bytes are written as they are.
//
// A missing file is made, empty, when it is opened with `create`. Throws
// StatementFailed when there is no such file or folder, when the user may not
// write there, and for the mode Reading.
std::unique_ptr<TextStream> openReplacing(const std::string& path, FileMode mode, bool create,
                                          TextEncoder encode = {});

}  // namespace veltrin
