// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/library_search.h"

#include <windows.h>

namespace veltrin {

// What stays is the program's folder, the system's, and those that a library names by itself.
void leaveCurrentFolderOut() { SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_DEFAULT_DIRS); }

}  // namespace veltrin
