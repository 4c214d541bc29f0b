// SPDX-License-Identifier: GPL-3.0-or-later
// Reading a file as a whole, and replacing one so that there is never half of it.
#pragma once

#include <string>
#include <string_view>
#include <system_error>

namespace veltrin {

// Reads a file into `content`. `path` is the system's own, in UTF-8. Gives the
// system's error, no_such_file_or_directory when there is no such file; `content`
// is then of no use.
std::error_code readWholeFile(const std::string& path, std::string& content);

// Makes `content` the content of the file at `path` (the system's own, in UTF-8):
// writes it to a new file in the same folder, brings that to the disk and puts it in
// the place of the old one in one step. Whatever goes wrong, a full disk or the
// computer switched off, the old file stays whole. Gives the system's error; the new
// file is then gone again. A missing file is made; its folder has to exist. The
// mode and, where allowed, the owner of the old file are kept. Where the path is a
// symbolic link, the file that it leads to is replaced and the link stays. A file
// that the user may not write and whatever is no regular file is refused.
std::error_code replaceFile(const std::string& path, std::string_view content);

}  // namespace veltrin
