// SPDX-License-Identifier: GPL-3.0-or-later
// Where the system looks for libraries.
#pragma once

namespace veltrin {

// From here on a library that is named without its folder is looked for neither in the current
// folder, which is whatever folder the program was started in, nor in those of PATH.
void leaveCurrentFolderOut();

}  // namespace veltrin
