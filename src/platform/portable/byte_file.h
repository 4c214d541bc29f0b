// SPDX-License-Identifier: GPL-3.0-or-later
// Files that are written over in their place.
#pragma once

#include <memory>
#include <string>

#include "platform/files.h"

namespace veltrin {

// Opens the file at `path` (the system's own, in UTF-8) for writing bytes from its
// beginning on, and makes it when it is missing. What it holds behind these bytes stays.
// Nothing is kept back: bytes that were put are with the system. Throws StatementFailed.
std::unique_ptr<ByteStream> openInPlace(const std::string& path);

// Deletes the file at `path` (the system's own, in UTF-8). Throws StatementFailed,
// kFileNotFound where there is none.
void deleteFile(const std::string& path);

}  // namespace veltrin
