// SPDX-License-Identifier: GPL-3.0-or-later
// What a failure of the file system means to a statement of the program.
#pragma once

#include <system_error>

namespace veltrin {

// Throws StatementFailed with the number and the words that users of Basic know for it.
[[noreturn]] void failFile(std::error_code error);

}  // namespace veltrin
