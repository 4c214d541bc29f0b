// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/library_search.h"

#include <windows.h>

namespace veltrin {

// The empty name stands for no folder at all, in the current one's place.
void leaveCurrentFolderOut() { SetDllDirectoryA(""); }

}  // namespace veltrin
